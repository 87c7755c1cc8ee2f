#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

#include "printerdocs/documentblock.h"

/// The format or font bytes of a text, of whatever length: an empty array stands for zero bytes, a
/// short one goes on with its last byte.
class CharacterBytes
{
public:
    explicit CharacterBytes(const QByteArray &bytes, int start = 0) : m_bytes(bytes), m_start(start)
    {}

    char at(int character) const
    {
        const int index = m_start + character;
        if (index < m_bytes.size())
            return m_bytes.at(index);
        return m_bytes.isEmpty() ? '\0' : m_bytes.back();
    }

    /// Those of the text from this character on.
    CharacterBytes from(int character) const
    {
        return CharacterBytes(m_bytes, m_start + character);
    }

private:
    QByteArray m_bytes;
    int m_start;
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
    void appendCell(QStringView text, const CharacterBytes &font, const CharacterBytes &format,
                    const QString &attributes, const QString &width);
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
