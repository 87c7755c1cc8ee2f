#include "tracing.h"

#include <algorithm>

namespace templatelint {

namespace {

void reverse(Text &text)
{
    std::reverse(text.characters.begin(), text.characters.end());
    std::reverse(text.origins.begin(), text.origins.end());
}

}  // namespace

Tracing::Tracing(const Text &text, Hear hear) : m_hear(std::move(hear)), m_right(text)
{
    reverse(m_right);
}

void Tracing::replaced(int begin, int removed, QStringView inserted)
{
    const Text gone = part(begin, removed);
    if (m_hear)
        m_hear(gone, inserted);
    const int end = begin + removed;
    moveTo(qBound(begin, m_left.size(), end));
    m_right.truncate(m_right.size() - (end - m_left.size()));
    m_left.truncate(begin);
    const int origin = gone.isEmpty() ? Text::nowhere : Text::standIn(gone.origins.at(0));
    for (auto c = inserted.rbegin(); c != inserted.rend(); ++c)
        m_right.append(*c, origin);
}

Text Tracing::text() const
{
    Text right = m_right;
    reverse(right);
    Text text = m_left;
    text.append(right);
    return text;
}

Text Tracing::part(int begin, int size) const
{
    Text part;
    for (int i = begin; i < begin + size; ++i) {
        const bool isLeft = i < m_left.size();
        const Text &side = isLeft ? m_left : m_right;
        const int index = isLeft ? i : m_right.size() - 1 - (i - m_left.size());
        part.append(side.characters.at(index), side.origins.at(index));
    }
    return part;
}

void Tracing::moveTo(int place)
{
    const auto move = [](Text &from, Text &to) {
        const int last = from.size() - 1;
        to.append(from.characters.at(last), from.origins.at(last));
        from.truncate(last);
    };
    while (m_left.size() > place)
        move(m_left, m_right);
    while (m_left.size() < place)
        move(m_right, m_left);
}

}  // namespace templatelint
