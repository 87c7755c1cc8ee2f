#pragma once

#include <QByteArray>
#include <QLatin1String>
#include <QString>
#include <QStringView>

#include "printerdocs/documentblock.h"

/// The format or font bytes of a text, of whatever length: an empty array stands for zero bytes, a
/// short one goes on with its last byte.
/// Refers to the array.
class CharacterBytes
{
public:
    explicit CharacterBytes(const QByteArray &bytes)
        : m_bytes(bytes.constData()), m_size(bytes.size()), m_last(m_size > 0 ? bytes.back() : '\0')
    {}

    char at(int character) const
    {
        const int index = m_start + character;
        return index < m_size ? m_bytes[index] : m_last;
    }

    /// Those of the text from this character on.
    CharacterBytes from(int character) const
    {
        CharacterBytes rest = *this;
        rest.m_start += character;
        return rest;
    }

private:
    const char *m_bytes;
    int m_size;
    int m_start = 0;
    char m_last;
};

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
    void appendRow(const QString &line, const QByteArray &font, const QByteArray &format,
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
    void appendFilledRow(const QString &line, const QByteArray &font, const QByteArray &format,
                         ETextAlignment alignment, bool rightAlign);
    void appendTwoCells(const QString &line, const CharacterBytes &font,
                        const CharacterBytes &format, bool rightAlign);
    void appendDivision(const QString &line, const QByteArray &font, const QByteArray &format,
                        ETextAlignment alignment, int lineWidth);
    void appendStart(char format, char font);
    void appendEnd(char format);
    void appendSymbol();

    QString &m_html;
    QString m_symbolTag;
};
