#pragma once

#include "printerdocs/specialcharacters.h"
#include "printerdocs/textprinterdocument.h"

/// Blocks and lines, and the HTML that they have to become.
namespace htmlbench {

using Block = DocumentBlock;
using Bytes = QList<QByteArray>;

inline const SpecialCharacters noSymbols;

inline Block blockOf(const QStringList &lines, ETextAlignment alignment = AlignLeft)
{
    return Block::createSimpleBlock(lines, alignment, 1, 0, 0, 0);
}

// A block of one line with byte arrays as they are given.
inline Block lineOf(const QString &line, const QByteArray &font, const QByteArray &format,
                    ETextAlignment alignment = AlignLeft)
{
    Block block = blockOf({line}, alignment);
    block.setFont(Bytes{font});
    block.setFormat(Bytes{format});
    return block;
}

inline QString plain(const QString &text)
{
    return "<font size = 2>" + text + "</font>";
}

inline QString row(const QString &content, const QString &align = "left")
{
    return "<tr><td colspan=\"2\" align = \"" + align + "\"> " + content + " </td></tr>";
}

inline const QString symbolTag("<img src=\"file:///tmp/tempimg\" width=\"10\" height=\"10\">");

}  // namespace htmlbench
