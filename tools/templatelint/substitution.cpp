#include "substitution.h"

#include <QSet>

#include "attributes.h"
#include "printerdocs/template/substitutiontext_p.h"
#include "tags.h"
#include "tracing.h"
#include "words.h"

namespace templatelint {

namespace {

// A template's own tags are filled once each. Tags that come out of values may go on for long, but
// no receipt needs as many as this.
constexpr int mostTagsOfValues = 10000;
constexpr int mostCharactersOfValues = 1 << 20;

/// The values for the tags of a line. Of the rest of one that has an endless value all are empty,
/// so that it comes to its end.
class LineValues
{
public:
    explicit LineValues(const ValueOf &valueOf) : m_valueOf(valueOf) {}

    QStringView valueOf(QStringView inner)
    {
        m_value = m_endless ? QString() : m_valueOf(inner.toString());
        return m_value ? QStringView(*m_value) : QStringView();
    }
    /// Hears of what is put in the place of a tag, and of groups that go.
    void hear(const Text &removed, QStringView inserted)
    {
        const bool isTag = removed.characters.startsWith(QLatin1Char('<'));
        if (isTag && !m_endless)
            judge(removed, inserted);
    }
    const std::optional<Endless> &endless() const { return m_endless; }

private:
    void judge(const Text &tag, QStringView value)
    {
        const int offset = Text::offsetOf(tag.origins.at(0));
        const QString inner = tag.characters.mid(1, tag.size() - 2);
        if (!m_value)
            m_endless = {offset, Words::tr("the values put into \"<%1>\" name others on and "
                                           "on: filling it would hang")
                                     .arg(clipped(inner))};
        else if (!Text::isTemplate(tag.origins.at(0)) && !isAffordable(inner, value))
            m_endless = {offset, Words::tr("the value put in here leads to tags without end, "
                                           "such as \"<%1>\": filling it would hang")
                                     .arg(clipped(inner))};
    }
    // Each value may be put in once, however long it is.
    bool isAffordable(const QString &inner, QStringView value)
    {
        ++m_tags;
        if (m_seen.contains(inner))
            m_characters += static_cast<int>(value.size());
        m_seen.insert(inner);
        return m_tags <= mostTagsOfValues && m_characters <= mostCharactersOfValues;
    }

    const ValueOf &m_valueOf;
    std::optional<QString> m_value;
    std::optional<Endless> m_endless;
    QSet<QString> m_seen;  ///< tags that came out of values
    int m_tags = 0;        ///< that came out of values
    int m_characters = 0;  ///< of values that were put in again
};

/// A tag of the template that is left when all are filled was passed over when a group went.
QVector<int> hiddenTagsOf(const Text &filled)
{
    QVector<int> offsets;
    const QVector<AttributeTag> tags = attributeTags(filled.characters);
    for (const AttributeTag &tag : tags) {
        if (filled.isOnePiece(tag.begin, tag.end))
            offsets.append(filled.origins.at(tag.begin));
    }
    return offsets;
}

}  // namespace

Filled fill(const Text &line, const ValueOf &valueOf)
{
    LineValues values(valueOf);
    const Text text = traced(
        line,
        [&values](const QString &characters, templates::HeardEdits edits) {
            templates::filledLine(
                characters, [&values](QStringView tag) { return values.valueOf(tag); }, edits);
        },
        [&values](const Text &removed, QStringView inserted) { values.hear(removed, inserted); });
    return {text, hiddenTagsOf(text), values.endless()};
}

}  // namespace templatelint
