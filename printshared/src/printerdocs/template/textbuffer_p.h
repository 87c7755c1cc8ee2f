#pragma once

#include <QString>
#include <QVarLengthArray>
#include <algorithm>
#include <array>
#include <cstring>

namespace valueformat {

/// A text that grows by pieces of a few characters, for which a QString has to be asked each time.
class TextBuffer
{
public:
    TextBuffer() : m_characters(usualCapacity) {}

    int size() const { return m_size; }
    bool isEmpty() const { return m_size == 0; }
    const QChar *constData() const { return m_characters.constData(); }
    QChar *data() { return m_characters.data(); }

    /// A place behind the text for so many characters. What is written there doesn't belong to the
    /// text until endAt() says so.
    QChar *room(int count)
    {
        if (m_characters.size() - m_size < count)
            m_characters.resize(std::max(m_size + count, 2 * m_characters.size()));
        return m_characters.data() + m_size;
    }
    void endAt(const QChar *end) { m_size = static_cast<int>(end - m_characters.constData()); }
    /// Takes back what is behind so many characters.
    void truncate(int size) { m_size = size; }

    void append(QChar c)
    {
        *room(1) = c;
        ++m_size;
    }
    void append(const QChar *text, int count)
    {
        if (count == 0)
            return;
        std::memcpy(room(count), text, sizeof(QChar) * static_cast<std::size_t>(count));
        m_size += count;
    }
    void append(QChar c, int count)
    {
        std::fill_n(room(count), count, c);
        m_size += count;
    }
    /// A piece behind which at least so many characters may be read: most pieces are so short that
    /// a copy of this many is done before one of their size has begun.
    static constexpr int readable = 16;
    void appendPiece(const QChar *text, int count)
    {
        if (count > readable)
            return append(text, count);
        std::memcpy(room(readable), text, sizeof(QChar) * readable);
        m_size += count;
    }

    /// Puts so many times a character in the place of others.
    void replace(int place, int removed, QChar c, int count)
    {
        room(count + 2 * readable);
        QChar *const to = m_characters.data() + place;
        const int behind = m_size - place - removed;
        if (behind > readable) {
            std::memmove(to + count, to + removed,
                         sizeof(QChar) * static_cast<std::size_t>(behind));
            std::fill_n(to, count, c);
        } else {
            // As with pieces: all that is readable is moved at once, and no part of it is counted.
            std::array<QChar, readable> moved;
            std::memcpy(moved.data(), to + removed, sizeof(moved));
            fillPieces(to, c, count);
            std::memcpy(to + count, moved.data(), sizeof(moved));
        }
        m_size += count - removed;
    }

private:
    /// Writes a character so many times, and up to one less than are readable behind that.
    static void fillPieces(QChar *to, QChar c, int count)
    {
        std::array<QChar, readable> piece;
        piece.fill(c);
        for (int done = 0; done < count; done += readable)
            std::memcpy(to + done, piece.data(), sizeof(piece));
    }

    static constexpr int usualCapacity = 128;

    // All of them are there; which ones are the text is kept beside them.
    QVarLengthArray<QChar, usualCapacity> m_characters;
    int m_size = 0;
};

}  // namespace valueformat
