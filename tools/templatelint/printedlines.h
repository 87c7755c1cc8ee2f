#pragma once

#include <QList>
#include <QStringList>
#include <QVector>

#include "printerdocs/documentblock.h"
#include "printerdocs/printerdocument.h"

namespace templatelint {

/// Where what is printed stands in the template: its line, from 1, for each text line and each code
/// of the document that the library makes of them, in their order. Of what stands nowhere it is 0.
/// Nothing where that can't be told.
QVector<int> printedLinesOf(const QStringList &lines, const PrinterDocument &document);

/// The same for a template that a client cuts at its fiscal markers, with a line for each section.
QVector<int> printedLinesOfPieces(const QStringList &lines, const PrinterDocument &document);

/// The same for a text without attributes, of which only the line markup is read.
QVector<int> printedLinesOfText(const QStringList &lines);

/// The same for a text in BBCode, of which these are the blocks. It is found by what is printed, so
/// that a rule and a line of blanks have none.
QVector<int> printedLinesOfBbCode(const QStringList &lines, const QList<DocumentBlock> &blocks);

}  // namespace templatelint
