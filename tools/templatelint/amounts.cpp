#include "amounts.h"

#include <QRegularExpression>
#include <algorithm>
#include <cstdlib>

namespace templatelint {

namespace {

constexpr int mostAmountDigits = 12;  // sums of such numbers can't overflow
constexpr int longestLine = 256;      // of one that is read by a person as an amount with its name

QRegularExpression unicodePattern(const char *pattern)
{
    return QRegularExpression(QString::fromUtf8(pattern),
                              QRegularExpression::UseUnicodePropertiesOption);
}

QRegularExpression wordPattern(const char *words)
{
    return QRegularExpression(
        QString::fromUtf8(words),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
}

/// Of digits with one point or comma at most.
std::optional<Decimal> unsignedDecimal(QString text)
{
    text.replace(QLatin1Char(','), QLatin1Char('.'));
    const QString whole = text.section(QLatin1Char('.'), 0, 0);
    const QString fraction = text.section(QLatin1Char('.'), 1);
    if (whole.size() + fraction.size() > mostAmountDigits)
        return std::nullopt;
    return Decimal{(whole + fraction).toLongLong(), fraction.size()};
}

/// Whether a word behind a number makes it a quantity. One letter may be that of a tax.
bool isUnit(const QString &word)
{
    static const QRegularExpression one = unicodePattern("^[glmxглм]\\.?$");
    static const QRegularExpression several =
        wordPattern("^(kg|ml|cl|cm|mm|pcs?|stk?|шт|кг|мл)\\.?$");
    return word.contains(one) || word.contains(several);
}

/// The number of a text that holds nothing else than its signs, a currency and letters of taxes.
std::optional<Decimal> amountIn(const QString &text)
{
    static const QRegularExpression pattern = unicodePattern(
        "^\\s*([=*]\\s?)?(?<first>[-+−–]?)\\s?((\\p{Sc}|\\p{Lu}{3})\\s?)?(?<second>[-+−–]?)"
        "(?<number>[0-9]+([.,][0-9]+)?|"
        "[0-9]{1,3}(?<group>[.,'’\\x{A0}\\x{202F}])[0-9]{3}(\\k<group>[0-9]{3})*"
        "((?!\\k<group>)[.,][0-9]+)?)"
        "(?<behind>(\\s?[^-+−–\\d\\s%()/@]{1,4}){0,2})(\\s?(?<last>[-−–]))?\\s*$");
    const auto match = pattern.match(text);
    const QString signs = match.captured(QStringLiteral("first")) +
                          match.captured(QStringLiteral("second")) +
                          match.captured(QStringLiteral("last"));
    const QStringList behind =
        match.captured(QStringLiteral("behind")).simplified().split(QLatin1Char(' '));
    if (!match.hasMatch() || signs.size() > 1 ||
        std::any_of(behind.cbegin(), behind.cend(), isUnit))
        return std::nullopt;
    QString number = match.captured(QStringLiteral("number"));
    const QString group = match.captured(QStringLiteral("group"));
    if (!group.isEmpty())
        number.remove(group);
    auto result = unsignedDecimal(number);
    if (result && !signs.isEmpty() && signs != QLatin1String("+"))
        result->units = -result->units;
    return result;
}

bool isDigit(QChar c)
{
    return c.isDigit();
}

bool holdsDigit(const QStringRef &text)
{
    return std::any_of(text.cbegin(), text.cend(), isDigit);
}

/// Of what a line ends with, from here on.
Figure figureFrom(const Printed &line, int begin)
{
    const QString &text = line.text.characters;
    Figure figure;
    figure.text = text.mid(begin);
    figure.number = amountIn(figure.text);
    const auto behind = std::find_if(text.crbegin(), text.crend(), isDigit);
    const auto place = static_cast<int>(text.crend() - behind) - 1;
    const int origin = place < 0 ? Text::nowhere : line.text.origins.at(place);
    if (!Text::isTemplate(origin))
        figure.offset = Text::offsetOf(origin);
    return figure;
}

std::optional<Figure> figureInColumn(const Printed &line, int begin)
{
    if (!holdsDigit(line.text.characters.midRef(begin)))
        return std::nullopt;
    Figure figure = figureFrom(line, begin);
    figure.label = line.text.characters.left(begin - 1);
    return figure;
}

/// Of a line without columns: a name and an amount with decimals.
std::optional<Figure> figureBehindText(const Printed &line)
{
    static const QRegularExpression pattern =
        unicodePattern("^(?<label>[^\\d]*\\p{L}[^\\d]*)[\\s=:](?=[-+−–]?\\p{Sc}?\\d)");
    // A dash parts a name from its amount, or is a sign.
    static const QRegularExpression dash =
        unicodePattern("(^|[\\s=:])[-+−–(]+\\s*[\\p{L}\\p{Sc}]{0,4}$");
    const QString &text = line.text.characters;
    const auto match = pattern.match(text);
    const QString label = match.captured(QStringLiteral("label"));
    if (match.hasMatch() && !label.contains(dash)) {
        Figure figure = figureFrom(line, match.capturedEnd());
        figure.label = label;
        if (figure.number && figure.number->decimals > 0)
            return figure;
    }
    if (!holdsAmount(text))
        return std::nullopt;
    Figure figure = figureFrom(line, 0);
    figure.number.reset();
    return figure;
}

/// The decimals of what reads as an amount in a text, each with its size in their units.
QVector<Decimal> looseAmounts(const QString &text)
{
    static const QRegularExpression pattern =
        unicodePattern("(?<![\\d.,])[0-9]+[.,][0-9]{2,3}(?![.,]?\\d)(?!\\s?%)");
    QVector<Decimal> amounts;
    auto matches = pattern.globalMatch(text);
    while (matches.hasNext()) {
        if (const auto number = unsignedDecimal(matches.next().captured()))
            amounts.append(*number);
    }
    return amounts;
}

}  // namespace

qint64 unitsOfOne(int decimals)
{
    constexpr qint64 base = 10;
    qint64 units = 1;
    for (int i = 0; i < decimals; ++i)
        units *= base;
    return units;
}

QString toString(const Decimal &number)
{
    const qint64 one = unitsOfOne(number.decimals);
    const qint64 size = std::abs(number.units);
    QString text = number.units < 0 ? QStringLiteral("-") : QString();
    text += QString::number(size / one);
    if (number.decimals > 0)
        text += QStringLiteral(".%1").arg(size % one, number.decimals, 10, QLatin1Char('0'));
    return text;
}

std::optional<Decimal> decimalOf(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral("^[+-]?([0-9]+([.,][0-9]+)?)$"));
    const auto match = pattern.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    auto result = unsignedDecimal(match.captured(1));
    if (result && text.startsWith(QLatin1Char('-')))
        result->units = -result->units;
    return result;
}

std::optional<Figure> figureOf(const Printed &line)
{
    const QString &text = line.text.characters;
    if (!holdsDigit(QStringRef(&text)))
        return std::nullopt;
    if (text.size() > longestLine) {
        Figure figure = figureFrom(line, 0);
        figure.number.reset();
        return figure;
    }
    const int column = text.lastIndexOf(QLatin1Char('\t')) + 1;
    return column > 0 ? figureInColumn(line, column) : figureBehindText(line);
}

bool holdsAmount(const QString &text)
{
    return !looseAmounts(text).isEmpty();
}

bool holdsSmallAmount(const QString &text, int decimals)
{
    const QVector<Decimal> amounts = looseAmounts(text);
    return std::any_of(amounts.cbegin(), amounts.cend(), [decimals](const Decimal &amount) {
        return amount.decimals == decimals && amount.units < unitsOfOne(decimals);
    });
}

bool readsLikeATotal(const QString &label)
{
    static const QRegularExpression words = wordPattern(
        "total|\\bsum\\b|to pay|amount due|итог|всего|сумма|к оплате|summe|"
        "gesamt|zu zahlen|endbetrag");
    // What is contained in a total is said behind its name.
    static const QRegularExpression inclusion = wordPattern(
        "\\b(incl\\p{L}*|inkl\\p{L}*|with|mit|с|в т\\. ?ч)\\b\\.?\\s*(\\d+([.,]\\d+)?\\s?%\\s*)?"
        "(vat|tax(es)?|ндс|mwst|ust)\\b|\\b(vat|tax(es)?|ндс|mwst|ust)\\b\\.? (incl|inkl)\\p{L}*");
    return label.contains(words) && !readsLikeAside(QString(label).remove(inclusion));
}

bool readsLikeAside(const QString &label)
{
    static const QRegularExpression words = wordPattern(
        "\\bvat\\b|\\btax(es)?\\b|ндс|mwst|\\bust\\b|\\bincl|\\binkl|в т\\. ?ч|enth[aä]lt|darin|"
        "\\bpaid\\b|\\bcash\\b|^\\s*card\\b|\\b(bank|credit|debit|by) card\\b|"
        "\\b(visa|mastercard|maestro|girocard)\\b|\\bchange\\b|налич|\\bкарт(а|ой|ы|у)\\b|сдача|"
        "^\\s*bar\\s*$|gegeben|zurück|rückgeld|balance|\\bpoints\\b|балл|"
        "discount|reduction|\\boffer|\\bsav(ed|ings?)\\b|voucher|coupon|скидк|купон|rabatt|"
        "gutschein|rounding|округл|rundung|"
        "weight|\\bвес\\b|gewicht|\\bqty\\b|quantity|кол-во|количество|menge|anzahl|"
        "\\bper\\b|\\bза (кг|л|шт)|\\bpro\\b|/ ?(kg|l|g|pc|кг|л|г|шт)\\b");
    return label.contains(words);
}

}  // namespace templatelint
