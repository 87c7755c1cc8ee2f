#pragma once

#include "printerdocs/printerdocumentformatter.h"
#include "settings/iprintdevicesettings.h"

/// What a formatter prints, put together of its operations for single steps, which know no plan.
class StepByStep
{
public:
    StepByStep(const PrinterDocumentFormatter &formatter, const PrinterDocument &document)
        : m_formatter(formatter), m_lines(formatter.prepareDocument(document))
    {}

    QStringList plainText(int width)
    {
        QStringList result;
        m_format = m_font = 0;
        m_alignment = AlignLeft;
        for (const QString &line : m_lines) {
            if (line.isEmpty())
                result += QString(qMax(width, 0), ' ');
            else
                result += folded(block(line)).toStringList(width);
        }
        return result;
    }

    QString html(bool rightAlign)
    {
        QStringList result{"<p><table width=\"100%\"cellspacing=0 cellpadding=0>"};
        m_format = m_font = 0;
        m_alignment = AlignLeft;
        for (const QString &line : m_lines) {
            const DocumentBlock made =
                line.isEmpty() ? DocumentBlock::emptyBlock(1, m_alignment, 0) : folded(block(line));
            if (made.isValid())
                result += made.toHtml(rightAlign, SpecialCharacters(), true, 0);
        }
        result += "</table></p>";
        return result.join('\n');
    }

    QList<DocumentBlock> blocks()
    {
        QList<DocumentBlock> result;
        m_format = m_font = 0;
        m_alignment = AlignLeft;
        for (const QString &line : m_lines) {
            const int code = line.indexOf("<QR>");
            if (line.isEmpty()) {
                add(result, DocumentBlock::emptyBlock(1, m_alignment, 0));
            } else if (code < 0) {
                add(result, folded(block(line)));
            } else {
                const QString head = line.left(code);
                if (!head.trimmed().isEmpty())
                    add(result, block(head));
                DocumentBlock made;
                made.setQrCode(line.mid(code + 4).trimmed().toUtf8());
                made.setAlignment(AlignCenter);
                add(result, folded(made));
            }
        }
        return result;
    }

private:
    DocumentBlock block(const QString &line)
    {
        return m_formatter.formatPrintStr(line, m_format, m_font, m_alignment, 0);
    }
    static DocumentBlock folded(DocumentBlock made)
    {
        const auto settings = IPrintDeviceSettings::printDeviceSettings();
        const int mode = settings ? settings->charactersMode() : 0;
        if (mode == 2)
            made.toLower();
        if (mode == 1)
            made.toUpper();
        return made;
    }
    static void add(QList<DocumentBlock> &blocks, const DocumentBlock &made)
    {
        if (made.isValid() && (blocks.isEmpty() || !blocks.last().append(made)))
            blocks.append(made);
    }

    const PrinterDocumentFormatter &m_formatter;
    const QStringList m_lines;
    unsigned char m_format = 0;
    unsigned char m_font = 0;
    ETextAlignment m_alignment = AlignLeft;
};
