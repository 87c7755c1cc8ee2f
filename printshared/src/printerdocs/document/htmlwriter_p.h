#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>
#include <QVarLengthArray>
#include <cstring>

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
    /// One line as a row of a table behind a line feed; a line break if it is blank.
    void appendRow(QStringView line, const CharacterBytes &font, const CharacterBytes &format,
                   ETextAlignment alignment, bool rightAlign);
    /// A run of text in a table cell; an empty width leaves that attribute out.
    void appendCell(QStringView text, const CharacterBytes &font, const CharacterBytes &format,
                    QStringView attributes, QStringView width);
    /// A run of text: its characters in their fonts and formats.
    void appendCharacters(QStringView text, const CharacterBytes &font,
                          const CharacterBytes &format);

private:
    /// As valueformat::TextBuffer, for pieces whose size the compiler knows, which it then copies
    /// by a few moves. Not of QChar, which it would set one by one.
    template <int Size>
    class Pieces
    {
    public:
        bool isEmpty() const { return m_text.isEmpty(); }
        QStringView text() const { return QStringView(m_text.constData(), m_text.size()); }
        void clear() { m_text.resize(0); }
        void add(QChar c) { m_text.append(c.unicode()); }
        void add(QStringView piece)
        {
            if (!piece.isEmpty())
                add(piece.utf16(), static_cast<std::size_t>(piece.size()));
        }
        /// Their sizes are known here, so that they are copied at once.
        template <std::size_t PieceSize>
        void add(const char16_t (&piece)[PieceSize])
        {
            add(piece, PieceSize - 1);
        }

    private:
        void add(const char16_t *piece, std::size_t size)
        {
            const int begin = m_text.size();
            m_text.resize(begin + static_cast<int>(size));
            std::memcpy(m_text.data() + begin, piece, size * sizeof(char16_t));
        }

        QVarLengthArray<char16_t, Size> m_text;
    };

    /// What stands around a run of text; the next run mostly looks like the one before.
    struct RunTags
    {
        char format = 0;
        char font = 0;
        Pieces<40> start;  ///< empty: nothing is known yet
        Pieces<20> end;
    };

    void finishRow();
    void addLine(const DocumentBlock &block, int line, bool rightAlign, bool useTable,
                 int lineWidth);
    void addRow(QStringView line, const CharacterBytes &font, const CharacterBytes &format,
                ETextAlignment alignment, bool rightAlign);
    void addTwoCells(QStringView line, int tabPlace, const CharacterBytes &font,
                     const CharacterBytes &format, bool rightAlign);
    void addWidth(int part, int whole);
    void addDivision(const QString &line, const QByteArray &font, const QByteArray &format,
                     ETextAlignment alignment, int lineWidth);
    void addCharacters(QStringView text, const CharacterBytes &font, const CharacterBytes &format);
    void addRun(QStringView run, char font, char format);
    void addSymbol();
    void lookAt(char font, char format);

    QString &m_html;
    Pieces<512> m_row;  ///< what belongs behind the text
    RunTags m_tags;
    QString m_symbolTag;
};

}  // namespace documents
