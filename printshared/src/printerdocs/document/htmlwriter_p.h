#pragma once

#include <QByteArray>
#include <QLatin1String>
#include <QString>
#include <QStringView>

#include "printerdocs/document/characterbytes_p.h"
#include "printerdocs/documentblock.h"

namespace documents {

/// Appends the HTML of blocks to one text. Text isn't escaped: receipts carry HTML of their own.
class HtmlWriter
{
public:
    /// Appends to this text, which must outlive the writer.
    explicit HtmlWriter(QString &html) : m_html(html) {}

    /// Characters that the HTML of a block takes, roughly.
    static qint64 roomFor(const DocumentBlock &block);
    /// Makes room for so many characters behind those that are there.
    void reserve(qint64 characters);
    /// All lines of a block, separated by line breaks; nothing unless it passes isText().
    void appendBlock(const DocumentBlock &block, bool rightAlign, bool useTable, int lineWidth);
    /// One line of a block; nothing if there is no such line.
    void appendLine(const DocumentBlock &block, int line, bool rightAlign, bool useTable,
                    int lineWidth);
    /// One line as a row of a table; a line break if it is blank.
    void appendRow(QStringView line, const QByteArray &font, const QByteArray &format,
                   ETextAlignment alignment, bool rightAlign);
    /// A run of text in a table cell; an empty width leaves that attribute out.
    template <typename Attributes, typename Width>
    void appendCell(QStringView text, const CharacterBytes &font, const CharacterBytes &format,
                    Attributes attributes, Width width)
    {
        m_html += QLatin1String("<td ");
        m_html += attributes;
        if (!width.isEmpty()) {
            m_html += QLatin1String(" width=\"");
            m_html += width;
            m_html += QLatin1Char('"');
        }
        m_html += QLatin1String("> ");
        appendCharacters(text, font, format);
        m_html += QLatin1String(" </td>");
    }
    /// A run of text: its characters in their fonts and formats.
    void appendCharacters(QStringView text, const CharacterBytes &font,
                          const CharacterBytes &format);

private:
    void appendFilledRow(QStringView line, const QByteArray &font, const QByteArray &format,
                         ETextAlignment alignment, bool rightAlign);
    void appendTwoCells(QStringView line, const CharacterBytes &font, const CharacterBytes &format,
                        bool rightAlign);
    void appendDivision(const QString &line, const QByteArray &font, const QByteArray &format,
                        ETextAlignment alignment, int lineWidth);
    void appendStart(char format, char font);
    void appendEnd(char format);
    void appendSymbol();

    QString &m_html;
    QString m_symbolTag;
};

}  // namespace documents
