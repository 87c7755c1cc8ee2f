#include "tags.h"

#include <QRegularExpression>
#include <algorithm>

#include "printerdocs/printerdocumentformatter.h"

namespace templatelint {

const QLatin1String entriesTag("<ENTRIES>");
const QLatin1String symbolsTag("<SPECSYMBOLS=");

namespace {

constexpr int shortestAttributeTag = 6;

const char *const formats[] = {"B", "Z", "U", "N", "H2", "W2"};
const char *const otherMarkup[] = {"S",   "C",   "R",   "L1", "LS0", "LS1", "LS2", "LS3", "LS4",
                                   "LS5", "LS6", "LS7", ":",  "X",   "X:",  ":X",  "I",   "/I",
                                   "QR",  "B",   "Z",   "U",  "N",   "H2",  "W2"};

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
        habit("^L[0-9]?$", "L1"),
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
    return inner.startsWith(QLatin1Char('F')) && inner.midRef(1).toInt() >= 1;
}

bool isKeyword(const QString &inner)
{
    return isEntriesTag(inner) || isFiscalMarker(inner) ||
           inner.startsWith(QLatin1String(symbolsTag.data() + 1));
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

bool isAttributeTag(int length)
{
    return length >= shortestAttributeTag;
}

QVector<AttributeTag> attributeTags(const QString &line)
{
    QVector<AttributeTag> tags;
    int begin = line.indexOf(QLatin1Char('<'));
    while (begin >= 0) {
        const int end = line.indexOf(QLatin1Char('>'), begin) + 1;
        if (end == 0)
            break;
        if (isAttributeTag(end - begin)) {
            AttributeTag tag{begin, end, line.mid(begin + 1, end - begin - 2), {}, {}};
            const int comma = tag.inner.lastIndexOf(QLatin1Char(','));
            tag.name = tag.inner.left(comma < 0 ? tag.inner.size() : comma);
            tag.format = comma < 0 ? QString() : tag.inner.mid(comma + 1);
            tags.append(tag);
        }
        begin = line.indexOf(QLatin1Char('<'), end);
    }
    return tags;
}

bool isFormatSwitch(const QString &inner)
{
    return std::any_of(std::begin(formats), std::end(formats), [&inner](const char *letters) {
        const QLatin1String name(letters);
        return (inner.startsWith(name) && inner.size() == name.size() + 1 &&
                inner.endsWith(QLatin1Char(':'))) ||
               (inner.startsWith(QLatin1Char(':')) && inner.midRef(1) == name);
    });
}

bool isMarkup(const QString &inner)
{
    return isFormatSwitch(inner) || isFontTag(inner) || isKeyword(inner) ||
           std::any_of(std::begin(otherMarkup), std::end(otherMarkup),
                       [&inner](const char *name) { return inner == QLatin1String(name); });
}

std::optional<QString> intendedMarkup(const QString &inner)
{
    constexpr int longestMarkup = 64;
    if (isMarkup(inner) || inner.size() > longestMarkup)
        return std::nullopt;
    if (auto meant = meantByHabit(withLatinLetters(inner)))
        return meant;
    const QString upper = upperWithoutBlanks(inner);
    if (upper.startsWith(QLatin1String(symbolsTag.data() + 1)))
        return QLatin1String(symbolsTag.data() + 1) +
               inner.midRef(inner.indexOf(QLatin1Char('=')) + 1);
    if (isMarkup(upper) && upper != inner)
        return upper;
    return meantByHabit(upper);
}

bool isEntriesTag(const QString &inner)
{
    return inner.toUpper() == QLatin1String("ENTRIES");
}

bool isFiscalMarker(const QString &inner)
{
    const auto &parts = PrinterDocumentFormatter::PARTS;
    const QString upper = inner.toUpper();
    return std::any_of(parts.cbegin(), parts.cend(), [&upper](const auto &part) {
        return QStringRef(&part.second, 1, part.second.size() - 2) == upper;
    });
}

bool isSymbolsLine(const QString &line)
{
    const QStringRef trimmed = QStringRef(&line).trimmed();
    return trimmed.startsWith(symbolsTag) && trimmed.endsWith(QLatin1Char('>'));
}

QString symbolsFile(const QString &line)
{
    const QString trimmed = line.trimmed();
    return trimmed.mid(symbolsTag.size(), trimmed.size() - symbolsTag.size() - 1);
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
