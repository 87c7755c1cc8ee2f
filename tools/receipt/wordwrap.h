#pragma once

#include <QString>
#include <QStringList>

namespace tool {

/// Cuts a text at its blanks, tabulators and line ends into pieces of up to so many characters; a
/// word that is longer is cut itself, between two letters. Blanks that may not break stay.
/// A piece that the library would read as a number gets a word of the piece in front of it, if it
/// has room and that has several.
QStringList wrappedAtWords(const QString &text, int width);

/// Whether the library reads a text as a number.
bool readsAsNumber(const QString &text);

}  // namespace tool
