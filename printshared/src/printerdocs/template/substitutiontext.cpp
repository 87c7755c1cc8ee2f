#include <algorithm>
#include <cmath>
#include <limits>

#include "printerdocs/template/numbertext_p.h"
#include "printerdocs/template/substitutiontext_p.h"

namespace templates {

bool vanishesWithItsGroup(QStringView value)
{
    if (beginsLikeAWord(value))
        return false;
    if (isShortDecimal(value)) {
        return std::all_of(value.begin(), value.end(),
                           [](QChar c) { return c == QLatin1Char('0') || c == QLatin1Char('.'); });
    }
    bool isNumber = false;
    const double number = value.toString().toDouble(&isNumber);
    if (isNumber)
        return !(std::abs(number) > countsAsZero);
    return value.isEmpty();
}

template <typename Edits>
SubstitutionText<Edits>::SubstitutionText(QStringView line, Edits edits) : m_edits(edits)
{
    m_buffer.append(line.data(), static_cast<int>(line.size()));
    pushBrackets(line);
}

template <typename Edits>
QStringView SubstitutionText<Edits>::takeTag()
{
    const AttributeTag tag =
        AttributeTag::find(m_buffer.constData(), m_rightBegin, m_buffer.size());
    if (tag.begin < 0)
        return QStringView();
    const int size = tag.end + 1 - tag.begin;
    keep(tag.begin - m_rightBegin);
    drop(size);
    if constexpr (Edits::areHeard)
        m_tagSize = size;
    return QStringView(m_buffer.constData() + tag.begin + 1, size - 2);
}

template <typename Edits>
void SubstitutionText<Edits>::insert(QStringView value)
{
    m_edits.replace(m_leftSize, m_tagSize, value);
    const int size = static_cast<int>(value.size());
    makeRoom(size);
    m_rightBegin -= size;
    std::copy(value.begin(), value.end(), m_buffer.data() + m_rightBegin);
    pushBrackets(value);
}

template <typename Edits>
void SubstitutionText<Edits>::dropGroup()
{
    if (m_openLeft.isEmpty() || m_right.isEmpty() || m_right.last().unmatchedClose < 0)
        return;
    const int position = m_leftSize;
    const Bracket close = m_right[m_right.last().unmatchedClose];
    const int dropped = rightSize() - close.fromEnd + 1;
    drop(dropped);
    m_leftSize = m_openLeft.last();
    m_edits.replace(m_leftSize, position - m_leftSize + dropped, QStringView());
    m_openLeft.removeLast();
    keep(std::min(position - m_leftSize, rightSize()));
}

template <typename Edits>
QString SubstitutionText<Edits>::toString() const
{
    QString text;
    text.reserve(m_leftSize + rightSize());
    text.append(m_buffer.constData(), m_leftSize);
    text.append(m_buffer.constData() + m_rightBegin, rightSize());
    return text;
}

/// Takes characters over from the unscanned part to the scanned one.
template <typename Edits>
void SubstitutionText<Edits>::keep(int count)
{
    const int end = rightSize() - count;
    while (!m_right.isEmpty() && m_right.last().fromEnd > end) {
        const Bracket bracket = m_right.last();
        m_right.removeLast();
        if (bracket.isOpen)
            m_openLeft.append(m_leftSize + rightSize() - bracket.fromEnd);
        else if (!m_openLeft.isEmpty())
            m_openLeft.removeLast();
    }
    QChar *const text = m_buffer.data();
    std::copy(text + m_rightBegin, text + m_rightBegin + count, text + m_leftSize);
    m_leftSize += count;
    m_rightBegin += count;
}

/// Takes characters off the front of the unscanned part.
template <typename Edits>
void SubstitutionText<Edits>::drop(int count)
{
    m_rightBegin += count;
    while (!m_right.isEmpty() && m_right.last().fromEnd > rightSize())
        m_right.removeLast();
}

/// Widens the gap to at least this many characters; the buffer at least doubles, so growth is
/// cheap.
template <typename Edits>
void SubstitutionText<Edits>::makeRoom(int count)
{
    if (m_rightBegin - m_leftSize >= count)
        return;
    const int right = rightSize();
    const int doubled = m_buffer.size() > std::numeric_limits<int>::max() / 2
                            ? std::numeric_limits<int>::max()
                            : 2 * m_buffer.size();
    m_buffer.resize(std::max(doubled, m_leftSize + right + count));
    QChar *const text = m_buffer.data();
    std::copy_backward(text + m_rightBegin, text + m_rightBegin + right, text + m_buffer.size());
    m_rightBegin = m_buffer.size() - right;
}

/// Takes up the brackets of the text at the front of the unscanned part.
template <typename Edits>
void SubstitutionText<Edits>::pushBrackets(QStringView text)
{
    for (int i = static_cast<int>(text.size()) - 1; i >= 0; --i) {
        const QChar c = text[i];
        if (c == QLatin1Char('[') || c == QLatin1Char(']'))
            pushBracket(rightSize() - i, c == QLatin1Char('['));
    }
}

template <typename Edits>
void SubstitutionText<Edits>::pushBracket(int fromEnd, bool isOpen)
{
    // A "]" is itself unmatched as seen from its place. A "[" is closed by the first unmatched "]"
    // behind it, so what is unmatched from it on is what is unmatched behind that one.
    int unmatched = m_right.size();
    if (isOpen) {
        const int partner = m_right.isEmpty() ? -1 : m_right.last().unmatchedClose;
        unmatched = partner > 0 ? m_right[partner - 1].unmatchedClose : -1;
    }
    m_right.append({fromEnd, isOpen, unmatched});
}

template class SubstitutionText<NoEdits>;
template class SubstitutionText<HeardEdits>;

}  // namespace templates
