#pragma once

#include <QString>

#include "printerdocs/etextalignment.h"

constexpr QChar blank = QLatin1Char(' ');
/// Stands between the parts of a justified line.
constexpr QChar tab = QLatin1Char('\t');

/// The line as it is printed in this width, in characters: at its edge, or with its tabs widened.
/// A longer line is not cut; padding that would make a line of more than 16 Mi characters is left
/// out.
QString paddedLine(const QString &line, ETextAlignment alignment, int width);
