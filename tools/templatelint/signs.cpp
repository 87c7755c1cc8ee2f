#include "signs.h"

#include <QRegularExpression>
#include <algorithm>

#include "printerdocs/template/templatetags_p.h"
#include "tags.h"
#include "words.h"

namespace templatelint {

namespace {

bool isPrintedSign(QChar c)
{
    constexpr QChar typesettersMinus(0x2212);
    return c == QLatin1Char('-') || c == QLatin1Char('+') || c == typesettersMinus;
}

bool isOfAValue(int origin)
{
    return !Text::isTemplate(origin) && origin != Text::nowhere;
}

/// Whether a sign of the template stands in front of a number that brings one of its own. Behind a
/// word or a number it is a hyphen, and several in a row are a rule.
bool isDoubleSign(const Text &text, int place)
{
    const QString &characters = text.characters;
    constexpr int shortest = 3;
    if (place + shortest > characters.size() || !isPrintedSign(characters.at(place)) ||
        !Text::isTemplate(text.origins.at(place)) || !isOfAValue(text.origins.at(place + 1)) ||
        !isPrintedSign(characters.at(place + 1)) || !characters.at(place + 2).isDigit())
        return false;
    const QChar before = place > 0 ? characters.at(place - 1) : QChar(QLatin1Char(' '));
    return !before.isLetterOrNumber() && !isPrintedSign(before);
}

/// The tag that begins at an offset of the template.
std::optional<AttributeTag> tagAt(int offset, const Source &source)
{
    const Place place = source.place(offset);
    const QVector<AttributeTag> tags = attributeTags(source.lines().at(place.line - 1).characters);
    const auto tag = std::find_if(tags.cbegin(), tags.cend(), [&place](const AttributeTag &found) {
        return found.begin == place.column - 1;
    });
    return tag == tags.cend() ? std::nullopt : std::make_optional(*tag);
}

/// The same value without its sign, for a message; empty if there is no such number.
QString withoutSign(const AttributeTag &tag, const QString &printed, Values &values)
{
    const QString expression = QStringLiteral("abs(%1)").arg(tag.name);
    if (!values.evaluates(expression))
        return QString();
    const int point = printed.indexOf(QLatin1Char('.'));
    const QString decimals =
        point < 0 ? QString()
                  : QLatin1Char('.') + QString(printed.size() - point - 1, QLatin1Char('0'));
    return Words::tr("; \"<%1,0%2>\" prints none").arg(clipped(expression), decimals);
}

}  // namespace

void reportDoubleSigns(const Text &text, const Source &source, Values &values, Report &report)
{
    for (int i = 0; i < text.size(); ++i) {
        if (!isDoubleSign(text, i))
            continue;
        const int origin = text.origins.at(i + 1);
        const auto tag = tagAt(Text::offsetOf(origin), source);
        if (!tag)
            continue;
        const auto end = std::find_if(text.origins.cbegin() + i + 1, text.origins.cend(),
                                      [origin](int other) { return other != origin; });
        const int length = static_cast<int>(end - text.origins.cbegin()) - i;
        const QString shown = text.characters.mid(i, length);
        report.add(Text::offsetOf(origin),
                   Words::tr("\"%1\" has two signs, as %2 brings one of its own%3")
                       .arg(clipped(shown), clipped(tag->name), withoutSign(*tag, shown, values)));
    }
}

}  // namespace templatelint
