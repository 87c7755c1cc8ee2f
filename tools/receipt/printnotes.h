#pragma once

#include <printerslib/drivers/printlayout.h>

#include <QString>
#include <QVector>
#include <functional>

#include "printerdocs/textprinterdocument.h"

namespace tool {

/// The line of a template, from 1, in which a line of a document's block stands; 0: nobody knows.
/// @param block, line from 1; line 0: the whole block
using LineOfBlock = std::function<int(int block, int line)>;

/// @param printedLines for each text line and each code of the document its line in the template;
///                     called when a line is asked for first
LineOfBlock linesOfBlocks(const TextPrinterDocument &document,
                          const std::function<QVector<int>()> &printedLines);

/// "line 14", or "block 3, line 2" where nobody knows that line.
QString placeText(const LineOfBlock &lineOf, int block, int line);
/// A message that begins with a place in the document, with that in the template.
QString withLine(const LineOfBlock &lineOf, const QString &message);

/// What is told of a layout besides its own notes, all in the order of the document: lines that are
/// too long for the paper.
QVector<printerslib::drivers::PrintNote> notesOf(const printerslib::drivers::PrintLayout &layout,
                                                 const TextPrinterDocument &document);

}  // namespace tool
