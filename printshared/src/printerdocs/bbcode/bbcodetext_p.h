#pragma once

#include <QString>
#include <QStringView>
#include <QtGlobal>

#include "printerdocs/etextalignment.h"

/// What BbCodeParser does with a piece of text before it joins the block.
namespace bbcodetext {

/// Most characters that the padding of columns and fields may add to one text. A receipt has some
/// hundreds; it keeps a few megabytes of line ends from becoming gigabytes.
constexpr int mostPadding = 1 << 24;

/// The text with a question mark for each half of a character that has lost its other half, as
/// every way through UTF-8 gives it.
QString withoutBrokenSurrogates(QString text);

/// One kind of line end, and ASCII for the quotation marks and dashes that no receipt font has.
QString normalized(const QString &text);

/// The text as a whole number with at least this many digits; what is no number is 0. The sign
/// isn't counted.
QString zeroFilled(const QString &text, int digits);

/// The text with blanks up to a width: in front, on both sides, or else behind.
QString padded(const QString &text, int width, ETextAlignment align);
/// How many blanks that adds.
qint64 blanksToPad(const QString &text, int width);

/// The text with each of its lines padded so.
QString paddedLines(const QString &text, int width, ETextAlignment align);
/// How many blanks that adds.
qint64 blanksToPadLines(const QString &text, int width);

/// The text without the line end that a tag's own line leaves in front of it.
QStringView withoutLeadingLineEnd(QStringView text);

/// Whether the two would be glued together without a blank.
bool needsBlankBetween(const QString &before, const QString &after);

}  // namespace bbcodetext
