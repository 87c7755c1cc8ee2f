#include "tags.h"

#include <QRegularExpression>
#include <algorithm>

#include "printerdocs/printerdocumentformatter.h"
#include "printerdocs/template/attributetag_p.h"
#include "printerdocs/template/templatetags_p.h"

namespace templatelint {

namespace {

const QLatin1String otherMarkup[] = {templates::blankLineTag, templates::removalBegin,
                                     templates::removalEnd,   templates::imageBegin,
                                     templates::imageEnd,     templates::qrTag};

/// What people write who know other languages or mistype these, and what they mean.
struct Habit
{
    QRegularExpression pattern;
    QString meant;  ///< %1 is what the pattern captures
};

const QVector<Habit> &habits()
{
    const auto habit = [](const char *pattern, const char *meant) {
        return Habit{
            QRegularExpression(QLatin1String(pattern), QRegularExpression::CaseInsensitiveOption),
            QLatin1String(meant)};
    };
    static const QVector<Habit> list{
        habit("^i$", "N"),
        habit("^/([BNUZ])$", ":%1"),
        habit("^/i$", ":N"),
        habit("^([BNUZX]);$", "%1:"),
        habit("^;([BNUZX])$", ":%1"),
        habit("^:([BNUZX]|[HW]2):$", "%1:"),
        habit("^([HW])[0-9]?$", "%12"),
        habit("^([HW])[0-9]?:$", "%12:"),
        habit("^:([HW])[0-9]?$", ":%12"),
        habit("^LS(?![0-7]$)[0-9]*$", "LS0"),
        habit("^F[+-]?0*$", "F1"),
        habit("^#$", "#1"),
        habit("^:?(C|R|S|QR):?$", "%1"),
        habit("^([BNUZ])/$", "%1"),
    };
    return list;
}

QString upperWithoutBlanks(const QString &text)
{
    QString result;
    const QString upper = withLatinLetters(text.toUpper());
    std::copy_if(upper.cbegin(), upper.cend(), std::back_inserter(result),
                 [](QChar c) { return !c.isSpace(); });
    return result;
}

bool isFontTag(const QString &inner)
{
    return inner.startsWith(templates::fontLetter) && inner.midRef(1).toInt() >= 1;
}

/// Whether a tag is always the same text, and no switch.
bool isPlainMarkup(const QString &inner)
{
    using namespace templates;
    return std::any_of(std::begin(plainTags), std::end(plainTags),
                       [&](const PlainTag &tag) { return inner == innerOf(tag.text); }) ||
           std::any_of(std::begin(wholeLineOrder), std::end(wholeLineOrder),
                       [&](const FormatTag &tag) { return inner == innerOf(tag.wholeLine); }) ||
           std::any_of(std::begin(otherMarkup), std::end(otherMarkup),
                       [&](QLatin1String tag) { return inner == innerOf(tag); });
}

bool isKeyword(const QString &inner)
{
    return isEntriesTag(inner) || isFiscalMarker(inner) || isSymbolsTag(inner);
}

std::optional<QString> meantByHabit(const QString &inner)
{
    for (const Habit &habit : habits()) {
        const auto match = habit.pattern.match(inner);
        if (match.hasMatch())
            return QString(habit.meant).replace(QLatin1String("%1"), match.captured(1).toUpper());
    }
    return std::nullopt;
}

}  // namespace

QLatin1String innerOf(QLatin1String tag)
{
    return tag.mid(1, tag.size() - 2);
}

bool isAttributeTag(int length)
{
    return length >= templates::shortestAttributeTag;
}

QVector<AttributeTag> attributeTags(const QString &line)
{
    QVector<AttributeTag> tags;
    const auto tagFrom = [&line](int from) {
        return templates::AttributeTag::find(line.constData(), from, line.size());
    };
    for (auto found = tagFrom(0); found.begin >= 0; found = tagFrom(found.end + 1)) {
        const QString inner = line.mid(found.begin + 1, found.end - found.begin - 1);
        const auto parts = templates::TagParts::of(inner);
        tags.append(
            {found.begin, found.end + 1, inner, parts.name.toString(), parts.format.toString()});
    }
    return tags;
}

bool isFormatSwitch(const QString &inner)
{
    return std::any_of(std::begin(templates::rangeOrder), std::end(templates::rangeOrder),
                       [&inner](const templates::FormatTag &tag) {
                           return inner == innerOf(tag.open) || inner == innerOf(tag.close);
                       });
}

bool isMarkup(const QString &inner)
{
    return isFormatSwitch(inner) || isFontTag(inner) || isKeyword(inner) || isPlainMarkup(inner);
}

std::optional<QString> intendedMarkup(const QString &inner)
{
    constexpr int longestMarkup = 64;
    if (isMarkup(inner) || inner.size() > longestMarkup)
        return std::nullopt;
    if (auto meant = meantByHabit(withLatinLetters(inner)))
        return meant;
    const QString upper = upperWithoutBlanks(inner);
    if (isSymbolsTag(upper))
        return templates::symbolsTag.mid(1) + inner.midRef(inner.indexOf(QLatin1Char('=')) + 1);
    if (isMarkup(upper) && upper != inner)
        return upper;
    return meantByHabit(upper);
}

bool isEntriesTag(const QString &inner)
{
    return inner.toUpper() == innerOf(templates::entriesTag);
}

bool isFiscalMarker(const QString &inner)
{
    const auto &parts = PrinterDocumentFormatter::PARTS;
    const QString upper = inner.toUpper();
    return std::any_of(parts.cbegin(), parts.cend(), [&upper](const auto &part) {
        return QStringRef(&part.second, 1, part.second.size() - 2) == upper;
    });
}

bool isSymbolsTag(const QString &inner)
{
    return inner.startsWith(templates::symbolsTag.mid(1));
}

QString withLatinLetters(const QString &text)
{
    static const QString cyrillic = QStringLiteral(u"АВЕКМНОРСТУХаеорсух");
    static const QString latin = QStringLiteral(u"ABEKMHOPCTYXaeopcyx");
    QString result = text;
    for (QChar &c : result) {
        const int index = cyrillic.indexOf(c);
        if (index >= 0)
            c = latin.at(index);
    }
    return result;
}

}  // namespace templatelint
