#pragma once

#include <QVector>
#include <optional>

#include "markup.h"
#include "printerdocs/printerdocument.h"
#include "progress.h"
#include "substitution.h"
#include "templatelint.h"
#include "text.h"

namespace templatelint {

/// From one place of the template through another.
struct Range
{
    int first;
    int last;
};

/// What becomes of a piece of a template on its road to the paper.
struct Road
{
    QVector<Text> prepared;   ///< the lines that the markup gets
    QVector<Printed> lines;   ///< what it makes of those that aren't empty
    QVector<Range> removed;   ///< parts of the template that never print
    QVector<Range> payloads;  ///< data of QR codes
    QVector<Text> codes;      ///< the same as texts, with the tag in front
    QVector<int> hidden;      ///< offsets of tags that a removed group made stay
    QVector<int> openFormats;
    QVector<BadCode> badCodes;
    std::optional<Endless> endless;  ///< if there is one, the rest is missing
};

/// The pieces of text that are left of a template when a client cuts it at its fiscal markers.
QVector<QVector<Text>> fiscalPieces(const QVector<Text> &lines);

/// The lines with the entries, which are one text, in place of the tags for them.
QVector<Text> withEntries(const QVector<Text> &lines, const QString &text);

/// The lines with a document's entries, and with the mark of a copy if it is one.
QVector<Text> unpackedLines(const QVector<Text> &lines, const PrinterDocument &document);

/// The road of a piece by the engine's own rules.
/// @param valueOf  gives the document's values
/// @param progress two steps for each line; may be null
Road travel(const QVector<Text> &lines, const PrinterDocument &document, const ValueOf &valueOf,
            Form form, Progress *progress = nullptr);

QStringList charactersOf(const QVector<Text> &lines);

/// What the library itself prepares of a piece; a road that is right has come by the same lines.
QStringList preparedByEngine(const QStringList &lines, const PrinterDocument &document);

/// A tag of the template that stays as text on the paper.
struct Leftover
{
    int offset;
    QString inner;
    bool hasTab;  ///< on a line with <S>
};
QVector<Leftover> leftoversOf(const Road &road);

}  // namespace templatelint
