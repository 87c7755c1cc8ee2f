#pragma once

#include <QString>

#include "printerdocs/etextalignment.h"
#include "printerdocs/template/textbuffer_p.h"

namespace documents {

constexpr QChar blank = QLatin1Char(' ');
/// Stands between the parts of a justified line.
constexpr QChar tab = QLatin1Char('\t');

/// Longest line, in characters, that padding may make. No printer comes near it; it keeps a wild
/// width from taking the machine's memory.
constexpr int longestPaddedLine = 1 << 24;

/// The line as it is printed in this width, in characters: at its edge, or with its tabs widened.
/// A longer line is not cut; padding that would make a longer one than longestPaddedLine is left
/// out.
QString paddedLine(const QString &line, ETextAlignment alignment, int width);

/// The same in its place, of a line whose only tab is there; -1: it has none.
void padLine(valueformat::TextBuffer &line, int tabPlace, ETextAlignment alignment, int width);

}  // namespace documents
