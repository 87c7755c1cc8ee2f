#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include "printerdocs/documentblock.h"
#include "printerdocs/printerdocumentformatter.h"
#include "settings/iprintdevicesettings.h"

/// The text and HTML forms of prepared lines, put together line by line from the blocks that the
/// formatter makes of single lines.
namespace outputmodel {

const QString fragmentTail = "</table></p>";
const QString documentHead =
    "<html><head><meta http-equiv=\"Content-Type\" content=\"text/html; charset=UTF-8\"></head>"
    "<body><table width=\"100%\" cellspacing=0 cellpadding=0>";
const QString documentTail = "</table></body></html>";

inline QList<DocumentBlock> blocksOf(const PrinterDocumentFormatter &formatter,
                                     const QStringList &lines)
{
    const auto settings = IPrintDeviceSettings::printDeviceSettings();
    const auto mode =
        settings ? settings->charactersMode() : IPrintDeviceSettings::CharactersAsWritten;
    unsigned char format = 0;
    unsigned char font = 0;
    ETextAlignment alignment = AlignLeft;
    QList<DocumentBlock> blocks;
    for (const QString &line : lines) {
        DocumentBlock block = formatter.formatPrintStr(line, format, font, alignment, 0);
        if (mode == IPrintDeviceSettings::CharactersLowerCase)
            block.toLower();
        if (mode == IPrintDeviceSettings::CharactersUpperCase)
            block.toUpper();
        blocks.append(block);
    }
    return blocks;
}

inline QStringList plainTextOf(const PrinterDocumentFormatter &formatter, const QStringList &lines,
                               int width)
{
    QList<DocumentBlock> blocks = blocksOf(formatter, lines);
    QStringList text;
    for (int line = 0; line < lines.size(); ++line) {
        if (lines.at(line).isEmpty())
            text.append(QString(qMax(0, width), ' '));
        else
            text.append(blocks[line].toStringList(width));
    }
    return text;
}

inline QString htmlOf(const PrinterDocumentFormatter &formatter, const QStringList &lines,
                      bool rightAlign, const QString &head, const QString &tail)
{
    QStringList html{head};
    for (const DocumentBlock &block : blocksOf(formatter, lines)) {
        if (block.isValid())
            html.append(block.toHtml(rightAlign, {}, true, 0));
    }
    html.append(tail);
    return html.join('\n');
}

}  // namespace outputmodel
