#pragma once

#include <algorithm>
#include <cstdint>
#include <type_traits>
#include <vector>

/// The grammar of BBCode by itself. What it finds it hands to a sink, in the order of the text: a
/// tree is one sink, and who needs no tree has another. Works on any text whose characters up to
/// 127 are those of ASCII.
namespace bbcpp {

/// Classes of characters, bits of characterClass().
enum CharacterClass : unsigned char {
    LetterCharacter = 1,  ///< a-z, A-Z and the underscore
    DigitCharacter = 2,
    NameCharacter = LetterCharacter | DigitCharacter,
    SymbolCharacter = 4,  ///< what may stand in a value beside the characters of a name
    ValueCharacter = NameCharacter | SymbolCharacter,
    SpaceCharacter = 8,  ///< by the C locale: a receipt reads the same in every country
};

namespace detail {

struct CharacterClasses
{
    unsigned char of[128] = {};

    constexpr CharacterClasses()
    {
        add("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_", LetterCharacter);
        add("0123456789", DigitCharacter);
        add("#$&()*+,-./:?", SymbolCharacter);
        add(" \t\n\v\f\r", SpaceCharacter);
    }
    constexpr void add(const char *characters, CharacterClass character)
    {
        for (; *characters != '\0'; ++characters)
            of[static_cast<unsigned char>(*characters)] = character;
    }
};

inline constexpr CharacterClasses characterClasses;

}  // namespace detail

/// Whether a character is of one of the classes.
template <class Character>
bool isOf(Character character, CharacterClass wanted)
{
    const auto code = static_cast<std::make_unsigned_t<Character>>(character);
    return code < sizeof detail::characterClasses.of &&
           (detail::characterClasses.of[code] & wanted) != 0;
}

template <class Iterator>
Iterator skip(Iterator position, Iterator end, CharacterClass skipped)
{
    return std::find_if_not(position, end, [skipped](auto c) { return isOf(c, skipped); });
}

/// A piece of the text.
template <class Iterator>
struct Piece
{
    Iterator begin;
    Iterator end;
};

template <class Iterator>
struct Pair
{
    Piece<Iterator> key;
    Piece<Iterator> value;
};

/// The pairs of one tag in the order of the text, where a key may come several times.
template <class Iterator>
using Pairs = std::vector<Pair<Iterator>>;

/// Where pairs stopped. One malformed pair spoils them all.
template <class Iterator>
struct PairsEnd
{
    Iterator position;
    bool isMalformed;
};

/// Where the next pair begins behind a value that a space ended, or where the pairs stop.
template <class Iterator>
struct Separator
{
    Iterator position;
    bool stops;
};

template <class Iterator>
Separator<Iterator> readSeparator(Iterator space, Iterator end)
{
    const Iterator next = space + 1;
    if (next == end)
        return {end, true};
    if (*next == '/')
        return {space, true};
    if (*next == ']')
        return {next, true};
    return {*next == ' ' ? next + 1 : next, false};
}

/// Reads "key=value" pairs up to the closing bracket.
template <class Iterator>
PairsEnd<Iterator> readPairs(Iterator begin, Iterator end, Pairs<Iterator> &pairs)
{
    while (begin != end) {
        const Iterator keyBegin = skip(begin, end, SpaceCharacter);
        const Iterator keyEnd = skip(keyBegin, end, NameCharacter);
        if (keyEnd == end || keyEnd == keyBegin || *keyEnd != '=')
            return {keyEnd, true};
        const Iterator valueBegin = skip(keyEnd + 1, end, SpaceCharacter);
        const Iterator valueEnd = skip(valueBegin, end, ValueCharacter);
        const bool ended = valueEnd != end && (*valueEnd == ']' || *valueEnd == ' ');
        if (!ended || valueEnd == valueBegin)
            return {valueEnd, true};
        pairs.push_back({{keyBegin, keyEnd}, {valueBegin, valueEnd}});
        if (*valueEnd == ']')
            return {valueEnd, false};
        const Separator<Iterator> separator = readSeparator(valueEnd, end);
        if (separator.stops)
            return {separator.position, false};
        begin = separator.position;
    }
    return {end, false};
}

/// Reads a text piece by piece. The sink has text(piece), open(name), parameters(name, pairs) and
/// close(name).
template <class Iterator, class Sink>
class Reader
{
public:
    Reader(Iterator end, Sink &sink) : m_end(end), m_sink(sink) {}

    /// Everything from here on.
    void readAll(Iterator cursor)
    {
        while (cursor != m_end) {
            if (*cursor == '[') {
                cursor = readElement(cursor);
            } else {
                const Iterator runEnd = std::find(cursor, m_end, '[');
                m_sink.text({cursor, runEnd});
                cursor = runEnd;
            }
        }
    }

    /// What begins with the "[" at `begin`, a tag or not. @return where to go on
    Iterator readElement(Iterator begin)
    {
        const Iterator inside = begin + 1;
        const bool closing = inside != m_end && *inside == '/';
        const Iterator nameBegin = closing ? inside + 1 : inside;
        const Iterator nameEnd = skip(nameBegin, m_end, NameCharacter);

        // Intended: the slash of "[/" without a name is lost, templates were written with that in
        // view; see the test BBDocumentTree.slashWithoutNameIsLost.
        if (nameEnd == m_end || nameEnd == nameBegin) {
            m_sink.text({begin, inside});
            return nameBegin;
        }
        const Piece<Iterator> name{nameBegin, nameEnd};
        switch (*nameEnd) {
            case ']':
                if (closing)
                    m_sink.close(name);
                else
                    m_sink.open(name);
                return nameEnd + 1;
            case '=':
                return readNameValueTag(begin, name);
            case ' ':
                return readSpacedTag(begin, name);
            default:
                m_sink.text({begin, nameEnd});
                return nameEnd;
        }
    }

private:
    /// One further, but never past the end: a tag that is cut off right behind a pair has its stop
    /// there.
    Iterator following(Iterator position) const { return position == m_end ? m_end : position + 1; }

    bool isSlashBracket(Iterator position) const
    {
        return position != m_end && *position == '/' && position + 1 != m_end &&
               *(position + 1) == ']';
    }

    /// @return whether there are good pairs
    bool readTagPairs(Iterator begin, Iterator &stop)
    {
        m_pairs.clear();
        const PairsEnd<Iterator> pairsEnd = readPairs(begin, m_end, m_pairs);
        stop = pairsEnd.position;
        return !pairsEnd.isMalformed && !m_pairs.empty();
    }

    /// "[size=large]": the tag's name is the first key.
    Iterator readNameValueTag(Iterator begin, const Piece<Iterator> &name)
    {
        Iterator stop = begin;
        if (!readTagPairs(name.begin, stop)) {
            m_sink.text({begin, stop});
            return stop;
        }
        m_sink.open(name);
        m_sink.parameters(name, m_pairs);
        if (stop == m_end || *stop != ' ')
            return following(stop);

        // The pairs stop on a space only where a slash follows it, so no pair can follow either.
        const Iterator slash = stop + 1;
        if (isSlashBracket(slash)) {
            m_sink.close(name);
            return slash + 2;
        }
        m_sink.text({stop, slash});
        return slash;
    }

    /// "[column width=10]", or "[hr /]", which closes itself.
    Iterator readSpacedTag(Iterator begin, const Piece<Iterator> &name)
    {
        Iterator stop = begin;
        if (readTagPairs(name.end, stop)) {
            m_sink.open(name);
            m_sink.parameters(name, m_pairs);
            return following(stop);
        }
        if (isSlashBracket(stop)) {
            m_sink.open(name);
            m_sink.close(name);
            return stop + 2;
        }
        m_sink.text({begin, stop});
        return stop;
    }

    const Iterator m_end;
    Sink &m_sink;
    Pairs<Iterator> m_pairs;
};

}  // namespace bbcpp
