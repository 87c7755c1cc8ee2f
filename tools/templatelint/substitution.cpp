#include "substitution.h"

#include <QSet>
#include <cmath>

#include "attributes.h"
#include "printerdocs/template/templatetags_p.h"
#include "tags.h"

namespace templatelint {

namespace {

// A template's own tags are filled once each. Tags that come out of values may go on for long, but
// no receipt needs as many as this.
constexpr int mostTagsOfValues = 10000;
constexpr int mostCharactersOfValues = 1 << 20;

/// A line while its tags are filled. `m_left` has been scanned, `m_right` hasn't and lies the wrong
/// way round, so that both grow and shrink at their ends.
class LineFilling
{
public:
    explicit LineFilling(const Text &line) { pushRight(line.characters, line.origins.constData()); }

    Filled run(const ValueOf &valueOf)
    {
        Tag tag;
        while (takeTag(tag)) {
            const std::optional<QString> value = valueOf(tag.inner);
            m_filled.endless = endlessOf(tag, value);
            if (m_filled.endless)
                return m_filled;
            const QVector<int> origins(value->size(), Text::standIn(Text::offsetOf(tag.origin)));
            pushRight(*value, origins.constData());
            if (isZeroOrEmpty(*value))
                dropGroup();
        }
        while (!m_right.isEmpty())
            moveLeft();
        m_filled.text = m_left;
        return m_filled;
    }

private:
    struct Character
    {
        QChar character;
        int origin;
        int close;  ///< index here of the first "]" without a partner from this character on; or -1
    };
    struct Tag
    {
        QString inner;
        int origin = Text::nowhere;
    };

    void pushRight(const QString &text, const int *origins)
    {
        for (int i = text.size() - 1; i >= 0; --i) {
            const QChar c = text.at(i);
            int close = m_right.isEmpty() ? -1 : m_right.constLast().close;
            if (c == QLatin1Char(']'))
                close = m_right.size();
            else if (c == QLatin1Char('[') && close >= 0)
                close = close > 0 ? m_right.at(close - 1).close : -1;
            m_right.append({c, origins[i], close});
        }
    }

    void moveLeft()
    {
        const Character c = m_right.takeLast();
        if (c.character == QLatin1Char('['))
            m_opens.append(m_left.size());
        else if (c.character == QLatin1Char(']') && !m_opens.isEmpty())
            m_opens.removeLast();
        m_left.append(c.character, c.origin);
    }

    // Moves to the next tag and cuts it out; without one all moves to the left.
    bool takeTag(Tag &tag)
    {
        while (!m_right.isEmpty()) {
            if (m_right.constLast().character != QLatin1Char('<')) {
                moveLeft();
                continue;
            }
            const int length = tagLength();
            if (length == 0)
                return false;
            if (isAttributeTag(length)) {
                cutTag(length, tag);
                return true;
            }
            for (int i = 0; i < length; ++i)
                moveLeft();
        }
        return false;
    }

    // From the "<" in front of everything through its ">"; 0 if there is no ">".
    int tagLength() const
    {
        for (int i = m_right.size() - 1; i >= 0; --i) {
            if (m_right.at(i).character == QLatin1Char('>'))
                return m_right.size() - i;
        }
        return 0;
    }

    void cutTag(int length, Tag &tag)
    {
        tag.origin = m_right.constLast().origin;
        tag.inner.clear();
        for (int i = 2; i < length; ++i)
            tag.inner.append(m_right.at(m_right.size() - i).character);
        m_right.resize(m_right.size() - length);
    }

    std::optional<Endless> endlessOf(const Tag &tag, const std::optional<QString> &value)
    {
        const int offset = Text::offsetOf(tag.origin);
        if (!value)
            return Endless{offset,
                           QStringLiteral("the values put into \"<%1>\" name others on and on: "
                                          "filling it would hang")
                               .arg(clipped(tag.inner))};
        if (Text::isTemplate(tag.origin) || isAffordable(tag.inner, *value))
            return std::nullopt;
        return Endless{offset,
                       QStringLiteral("the value put in here leads to tags without end, such as "
                                      "\"<%1>\": filling it would hang")
                           .arg(clipped(tag.inner))};
    }

    // Each value may be put in once, however long it is.
    bool isAffordable(const QString &inner, const QString &value)
    {
        ++m_tagsOfValues;
        if (m_seen.contains(inner))
            m_charactersOfValues += value.size();
        m_seen.insert(inner);
        return m_tagsOfValues <= mostTagsOfValues && m_charactersOfValues <= mostCharactersOfValues;
    }

    // The scan goes on at the same index of the shortened text, so what slides to its left isn't
    // scanned.
    void dropGroup()
    {
        const int close = m_right.isEmpty() ? -1 : m_right.constLast().close;
        if (m_opens.isEmpty() || close < 0)
            return;
        const int open = m_opens.takeLast();
        int passed = m_left.size() - open;
        m_left.truncate(open);
        m_right.resize(close);
        int tagEnd = m_right.size();
        for (; passed > 0 && !m_right.isEmpty(); --passed) {
            const Character &front = m_right.constLast();
            if (front.character == QLatin1Char('<') && tagEnd >= m_right.size())
                tagEnd = m_right.size() - tagLength();
            if (front.character == QLatin1Char('<') && Text::isTemplate(front.origin) &&
                isAttributeTag(m_right.size() - tagEnd))
                m_filled.hidden.append(front.origin);
            moveLeft();
        }
    }

    Text m_left;
    QVector<Character> m_right;
    QVector<int> m_opens;  ///< indices of the "[" without a partner in m_left
    Filled m_filled;
    QSet<QString> m_seen;  ///< tags that came out of values
    int m_tagsOfValues = 0;
    int m_charactersOfValues = 0;
};

}  // namespace

bool isZeroOrEmpty(const QString &value)
{
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    return isNumber ? !(std::abs(number) > templates::countsAsZero) : value.isEmpty();
}

Filled fill(const Text &line, const ValueOf &valueOf)
{
    return LineFilling(line).run(valueOf);
}

}  // namespace templatelint
