#include "text.h"

#include <algorithm>
#include <numeric>

namespace templatelint {

bool holdsAnyOf(const QString &text, const QString &characters)
{
    return std::any_of(text.cbegin(), text.cend(),
                       [&characters](QChar c) { return characters.contains(c); });
}

void Text::append(QChar character, int origin)
{
    characters.append(character);
    origins.append(origin);
}

void Text::append(const QString &text, int origin)
{
    characters.append(text);
    origins.insert(origins.size(), text.size(), origin);
}

void Text::append(const Text &text, int from, int count)
{
    const int length =
        std::max(0, count < 0 ? text.size() - from : std::min(count, text.size() - from));
    if (length == 0)
        return;
    characters.append(text.characters.constData() + from, length);
    const int size = origins.size();
    origins.resize(size + length);
    std::copy_n(text.origins.constBegin() + from, length, origins.begin() + size);
}

Text Text::mid(int from, int count) const
{
    return from < size() ? Text{characters.mid(from, count), origins.mid(from, count)} : Text();
}

Text Text::trimmed() const
{
    const QStringRef inner = QStringRef(&characters).trimmed();
    return inner.isEmpty() ? Text() : mid(inner.position(), inner.size());
}

void Text::truncate(int size)
{
    characters.truncate(size);
    origins.resize(characters.size());
}

bool Text::isOnePiece(int from, int end) const
{
    const int first = origins.at(from);
    if (!isTemplate(first))
        return false;
    for (int i = from; i < end; ++i) {
        if (origins.at(i) != first + i - from)
            return false;
    }
    return true;
}

int Text::firstOffset() const
{
    const auto origin =
        std::find_if(origins.cbegin(), origins.cend(), [](int value) { return value != nowhere; });
    return origin == origins.cend() ? nowhere : offsetOf(*origin);
}

QVector<bool> placesInGroups(const QString &line)
{
    QVector<bool> result(line.size(), false);
    int open = 0;
    for (int i = 0; i < line.size(); ++i) {
        result[i] = open > 0;
        if (line.at(i) == QLatin1Char('['))
            ++open;
        else if (line.at(i) == QLatin1Char(']') && open > 0)
            --open;
    }
    open = 0;
    for (int i = line.size() - 1; i >= 0; --i) {
        if (line.at(i) == QLatin1Char(']'))
            ++open;
        else if (line.at(i) == QLatin1Char('[') && open > 0)
            --open;
        result[i] = result.at(i) && open > 0;
    }
    return result;
}

UpperCased::UpperCased(const QString &line) : m_copy(line.toUpper())
{
    if (m_copy.size() == line.size())
        return;
    m_begins.reserve(line.size() + 1);
    int begin = 0;
    for (const QChar c : line) {
        m_begins.append(begin);
        begin += QString(c).toUpper().size();
    }
    m_begins.append(begin);
}

int UpperCased::placeInCopy(int placeInLine) const
{
    return m_begins.isEmpty() ? placeInLine : m_begins.at(placeInLine);
}

int UpperCased::placeInLine(int placeInCopy) const
{
    if (m_begins.isEmpty())
        return placeInCopy;
    const auto next = std::upper_bound(m_begins.cbegin(), m_begins.cend(), placeInCopy);
    return static_cast<int>(next - m_begins.cbegin()) - 1;
}

Source::Source(const QStringList &lines) : m_lines(lines)
{
    int begin = 0;
    m_begins.reserve(lines.size());
    for (const QString &line : lines) {
        m_begins.append(begin);
        begin += line.size() + 1;
    }
}

QVector<Text> Source::lines() const
{
    QVector<Text> texts;
    texts.reserve(m_lines.size());
    for (int i = 0; i < m_lines.size(); ++i) {
        Text text{m_lines.at(i), QVector<int>(m_lines.at(i).size())};
        std::iota(text.origins.begin(), text.origins.end(), m_begins.at(i));
        texts.append(text);
    }
    return texts;
}

Place Source::place(int offset) const
{
    const auto next = std::upper_bound(m_begins.cbegin(), m_begins.cend(), offset);
    const int line = std::max(0, static_cast<int>(next - m_begins.cbegin()) - 1);
    return {line + 1, offset - m_begins.value(line) + 1};
}

int Source::lineBegin(int offset) const
{
    return m_begins.value(place(offset).line - 1);
}

}  // namespace templatelint
