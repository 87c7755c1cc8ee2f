#pragma once

#include <QByteArray>
#include <QChar>

#include "printerdocs/echarformat.h"

// What the format and font bytes of a text say, for the library and its tools.

namespace documents {

// The codes of the special symbols.
constexpr ushort firstSymbol = 1;
constexpr ushort lastSymbol = 7;

inline bool hasFormat(char format, ECharFormat bit)
{
    return (static_cast<uchar>(format) & static_cast<uint>(bit)) != 0;
}

/// Whether a character is a special symbol, unless its format says that it isn't.
inline bool isSymbolCode(QChar character)
{
    return character.unicode() >= firstSymbol && character.unicode() <= lastSymbol;
}

/// Whether a character of this format is a special symbol.
inline bool isSymbol(QChar character, char format)
{
    return isSymbolCode(character) && !hasFormat(format, CharRawCode);
}

/// The format or font bytes of a text, of whatever length: an empty array stands for zero bytes, a
/// short one goes on with its last byte.
/// Refers to the array.
class CharacterBytes
{
public:
    explicit CharacterBytes(const QByteArray &bytes)
        : m_bytes(bytes.constData()), m_size(bytes.size()), m_last(m_size > 0 ? bytes.back() : '\0')
    {}

    /// These bytes, and another one for all characters behind them.
    CharacterBytes(const QByteArray &bytes, char last) : CharacterBytes(bytes) { m_last = last; }

    /// Whether all characters from this one on have the same byte, as far as that is seen at once.
    bool isOneFrom(int character) const { return m_start + character >= m_size; }

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

    /// The array, gone on with up to so many bytes; a longer one stays as it is.
    static QByteArray extended(QByteArray bytes, int count)
    {
        const char last = CharacterBytes(bytes).m_last;
        if (bytes.size() < count)
            bytes.append(count - bytes.size(), last);
        return bytes;
    }

private:
    const char *m_bytes;
    int m_size;
    int m_start = 0;
    char m_last;
};

}  // namespace documents
