#pragma once

#include <QByteArray>
#include <QString>

/// What a `.ssi` file may ask of its reader. Within these bounds QXmlStreamReader takes time and
/// memory in proportion to the file's size.
namespace symbolfile {

/// Ten sizes of 255 symbols of 64 by 64 pixels have 11 MiB.
constexpr int mostBytes = 16 << 20;
/// Characters in a start tag and those around it. A usual file has 90 of them.
constexpr int mostOpenCharacters = 1024;

/// Why a file isn't to be read, with its line; empty if it may be. It may not if it has more than
/// mostBytes, an XML declaration that isn't in the encoding it names, a document type declaration
/// with entities or attribute lists, or a start tag that has more than mostOpenCharacters together
/// with those of the elements in which it stands.
QString refusal(const QByteArray &content);

}  // namespace symbolfile
