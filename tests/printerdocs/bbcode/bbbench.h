#pragma once

#include <QRegularExpression>

#include "printerdocs/bbcodeparser.h"

/// Blocks in words.
namespace bbbench {

inline QString digits(const QList<QByteArray> &lists)
{
    QStringList lines;
    for (const QByteArray &bytes : lists) {
        QString line;
        for (const char byte : bytes)
            line += QString::number(static_cast<unsigned char>(byte), 16);
        lines.append(line);
    }
    return lines.join('|');
}

/// A block in one line: kind and barcode type, alignment, lines, font bytes, format bytes. Lines
/// are parted by "|".
inline QString described(const DocumentBlock &block)
{
    return QString("%1%2%3 \"%4\" %5 %6")
        .arg(QString("TIBQ").at(block.type()))
        .arg(int(block.barCodeType()))
        .arg(QString("LRCJ").at(block.alignment()))
        .arg(block.text().join('|'), digits(block.font()), digits(block.format()));
}

inline QStringList described(const QList<DocumentBlock> &blocks)
{
    QStringList lines;
    for (const DocumentBlock &block : blocks)
        lines.append(described(block));
    return lines;
}

inline QList<DocumentBlock> parsed(const QString &text)
{
    BbCodeParser parser;
    parser.parseText(text);
    return parser.blocks();
}

/// A text block in the first font without format.
inline QString plain(const QString &text, const QString &kind = "T0L")
{
    const QString zeros = QString(text).replace(QRegularExpression("[^|]"), "0");
    return QString("%1 \"%2\" %3 %3").arg(kind, text, zeros);
}

inline const QString blankLine = "T0L \"\"  ";

}  // namespace bbbench
