#pragma once

#include <QByteArray>

namespace printerslib::drivers::codes {

/// What readers give for the function character FNC1.
constexpr char fnc1 = '\x1D';

/// The elements of a GS1 code with their identifiers in brackets, as zint wants them. Each stands
/// there by as many of its digits as it takes to know whether it ends at a known length.
/// @param payload elements as they stand, with FNC1 behind those of no known length; or with
///                identifiers in parentheses
QByteArray bracketedElements(const QByteArray &payload);

/// The 6 digits, in front of them the 0, of a UPC-E whose UPC-A these 11 or 12 digits are, and its
/// check digit if they have one. Empty if it has no UPC-E.
QByteArray shortenedUpc(const QByteArray &digits);

/// Without the "*" at both ends of a Code 39.
QByteArray withoutStars(const QByteArray &payload);

}  // namespace printerslib::drivers::codes
