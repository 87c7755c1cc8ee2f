#include "figures.h"

#include <QLocale>
#include <QRegularExpression>
#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

#include "attributes.h"
#include "words.h"

namespace templatelint {

namespace {

// What has more decimals than this was worked out by a program, and wants to be rounded.
constexpr int mostDecimalsGiven = 4;
// Doubles aren't exact, and nobody writes so small a difference.
constexpr double unnoticed = 1e-9;

enum class Origin { Text, Number, Result };

/// A tag with its value on the way to the paper.
struct PrintedFigure
{
    Origin origin;
    QString name;
    QString format;
    QString given;
    double value;
    QString text;  ///< what is printed
    bool isInBbCode = false;
};

FigureVerdict figureVerdict(FigureVerdict::Fault fault, const PrintedFigure &figure,
                            const QString &why)
{
    const QString pattern = figure.origin == Origin::Text     ? Words::tr("%1 is given as \"%2\"")
                            : figure.origin == Origin::Number ? Words::tr("%1 is %2")
                                                              : Words::tr("\"%1\" is %2");
    return {fault, pattern.arg(clipped(figure.name), clipped(figure.given)) +
                       Words::tr(" and prints \"%1\": ").arg(clipped(figure.text)) + why};
}

int decimalsOf(const QString &text)
{
    static const QRegularExpression point(QStringLiteral("[.,]"));
    const int place = text.lastIndexOf(point);
    return place < 0 ? 0 : text.size() - place - 1;
}

int digitsInFront(const QString &text)
{
    static const QRegularExpression digits(QStringLiteral("^[+-]?(\\d*)"));
    return digits.match(text).capturedLength(1);
}

QString shortest(double value)
{
    return QString::number(value, 'f', QLocale::FloatingPointShortest);
}

/// The result of an expression without the noise of its calculation.
QString resultText(double value)
{
    constexpr int digits = 12;
    constexpr int mostDecimals = 9;  // more are less than what counts as unnoticed
    static const QRegularExpression zerosBehind(QStringLiteral("\\.?0+$"));
    QString text = QString::number(value, 'g', digits);
    if (text.contains(QLatin1Char('e')))
        return QString::number(value, 'f', 2);
    if (decimalsOf(text) <= mostDecimals)
        return text;
    return QString::number(value, 'f', mostDecimals).remove(zerosBehind);
}

bool hasSixDigits(const QString &format)
{
    const int point = format.indexOf(QLatin1Char('.'));
    return point >= 0 && format.indexOf(QLatin1Char('E'), point) >= 0;
}

/// Whether a number is another one on paper, and not merely rounded to its last decimal.
bool isAnother(const PrintedFigure &figure, double printed)
{
    constexpr double halfCent = 0.005;
    constexpr double half = 0.5;
    constexpr double base = 10;
    const double tolerance =
        hasSixDigits(figure.format) ? halfCent : half * std::pow(base, -decimalsOf(figure.text));
    return std::abs(printed - figure.value) >
           tolerance + unnoticed + std::abs(figure.value) * std::numeric_limits<double>::epsilon();
}

FigureVerdict verdictOfReal(const PrintedFigure &figure)
{
    bool isNumber = false;
    const double printed = figure.text.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(figure.value) || !std::isfinite(printed))
        return {};
    const QString name = clipped(figure.name);
    if (figure.value < 0 && figure.value > -1 && printed > 0)
        return figureVerdict(FigureVerdict::LostSign, figure,
                             Words::tr("in a format with decimals a number between -1 and 0 loses "
                                       "its sign; \"<%1,0.E>\" keeps it")
                                 .arg(name));
    if (hasSixDigits(figure.format) && isAnother(figure, printed))
        return figureVerdict(FigureVerdict::Changed, figure,
                             Words::tr("an \"E\" in the format gives six digits"));
    if (std::abs(figure.value) > std::numeric_limits<int>::max() && isAnother(figure, printed))
        return figureVerdict(FigureVerdict::Changed, figure,
                             Words::tr("with decimals in the format the part in front of the point "
                                       "has 32 bits; \"<%1,0>\" prints it without decimals")
                                 .arg(name));
    const int decimals = decimalsOf(figure.given);
    const bool isGivenSo = figure.origin == Origin::Text ||
                           (figure.origin == Origin::Number && decimals <= mostDecimalsGiven);
    if (!figure.format.isEmpty() || !isGivenSo || printed == figure.value)
        return {};
    return figureVerdict(FigureVerdict::Changed, figure,
                         Words::tr("without a format there are two decimals; \"<%1,0.%2>\" prints "
                                   "all of them")
                             .arg(name, QString(decimals, QLatin1Char('0'))));
}

/// How a text that no number is meant by is kept as it stands.
QString keptAsText(const QString &text, bool isInBbCode)
{
    return Words::tr("the text reads as a number; \"%1%2\" stays as it stands")
        .arg(clipped(text), isInBbCode ? QStringLiteral("[b][/b]") : QStringLiteral("<:>"));
}

/// What names of digits end in that somebody copies or looks up, one by one.
constexpr const char *codeNames[] = {
    "APPROVAL", "AUTH", "AUTHCODE", "BARCODE", "BIC",    "CODE", "EAN",  "FD",   "FN",  "FP",
    "FPD",      "GTIN", "IBAN",     "IMEI",    "INN",    "KKT",  "KPP",  "OGRN", "PAN", "PIN",
    "PLZ",      "RN",   "RNM",      "RRN",     "SERIAL", "SIGN", "STAN", "TID",  "UID", "VATID",
    "ZIP",      "ИНН",  "КОД",      "КПП",     "ОГРН",   "РН",   "ФД",   "ФН",   "ФП",  "ФПД",
};

bool isCodeName(const QString &name)
{
    const QString last = name.section(QLatin1Char('_'), -1).toUpper();
    return std::any_of(std::begin(codeNames), std::end(codeNames),
                       [&last](const char *known) { return last == QString::fromUtf8(known); });
}

bool keepsZeros(const QString &format)
{
    return !format.contains(QLatin1Char('.')) && format.count(QLatin1Char('0')) > 1;
}

FigureVerdict verdictOfZeros(const PrintedFigure &figure)
{
    const QString text = figure.given.trimmed();
    const int digits = digitsInFront(text);
    static const QRegularExpression otherDigit(QStringLiteral("[1-9]"));
    const bool isWhole = !text.contains(QLatin1Char('.'));
    // Zeros alone make their group go in any format.
    const bool isBroughtBack = isWhole && text.contains(otherDigit);
    // "0" alone is there to take the zeros off, but of a code.
    const bool isMeant = !figure.format.isEmpty() &&
                         (!isWhole || (!keepsZeros(figure.format) && !isCodeName(figure.name)));
    if (isMeant || digitsInFront(figure.text) >= digits)
        return {};
    return figureVerdict(FigureVerdict::ReadAsNumber, figure,
                         isBroughtBack
                             ? Words::tr("the text reads as a number, which has no zeros in "
                                         "front; \"<%1,%2>\" prints all digits")
                                   .arg(clipped(figure.name), QString(digits, QLatin1Char('0')))
                             : keptAsText(text, figure.isInBbCode));
}

FigureVerdict verdictOfComma(const PrintedFigure &figure)
{
    static const QRegularExpression thousands(QStringLiteral("^-?[1-9]\\d{0,2},\\d{3}$"));
    bool isNumber = false;
    const double printed = figure.text.toDouble(&isNumber);
    const bool isSame = isNumber && std::abs(printed) == std::abs(figure.value);
    const bool isDecimal = isSame || !figure.given.trimmed().contains(thousands);
    if (!figure.format.isEmpty() && isDecimal)
        return {};
    return figureVerdict(
        FigureVerdict::ReadAsNumber, figure,
        Words::tr("the comma is read as a decimal point; a format, such as "
                  "\"<%1,0.%2>\", says that a number is meant")
            .arg(clipped(figure.name),
                 QString(qMax(1, decimalsOf(figure.given.trimmed())), QLatin1Char('0'))));
}

/// Of a text that the library takes for a number.
FigureVerdict verdictOfText(const PrintedFigure &figure)
{
    static const QRegularExpression otherThanNumber(QStringLiteral("[^0-9.,-]"));
    static const QRegularExpression leadingZero(QStringLiteral("^-?0\\d"));
    const QString text = figure.given.trimmed();
    if (text.contains(otherThanNumber))
        return figureVerdict(FigureVerdict::ReadAsNumber, figure,
                             keptAsText(text, figure.isInBbCode));
    if (text.contains(leadingZero)) {
        FigureVerdict zeros = verdictOfZeros(figure);
        if (zeros.fault != FigureVerdict::None)
            return zeros;
    }
    if (text.contains(QLatin1Char(','))) {
        FigureVerdict comma = verdictOfComma(figure);
        if (comma.fault != FigureVerdict::None)
            return comma;
    }
    return verdictOfReal(figure);
}

}  // namespace

QString faultOfCode(const AttributeTag &tag)
{
    static const QRegularExpression ofNumbers(QStringLiteral("^[0#]*\\.?[0#]*$"));
    if (tag.format.isEmpty() || keepsZeros(tag.format) || !tag.format.contains(ofNumbers) ||
        !isCodeName(tag.name))
        return QString();
    return Words::tr(
               "%1 is a code by its name, and the format \"%2\" takes zeros off its front; one of "
               "as many zeros as it has digits, such as \"<%1,000000>\", prints all of them")
        .arg(clipped(tag.name), clipped(tag.format));
}

FigureVerdict figureVerdictOf(const AttributeTag &tag, Values &values, bool isBbCode)
{
    const QString printed = values.ofTag(tag.inner).value_or(QString());
    if (printed.isEmpty())
        return {};
    if (!values.has(tag.name)) {
        const auto result = values.resultOf(tag.name);
        return result ? verdictOfReal({Origin::Result, tag.name, tag.format, resultText(*result),
                                       *result, printed})
                      : FigureVerdict();
    }
    const QVariant value = values.document().attributeValue(tag.name);
    if (value.type() == QVariant::String)
        return {};
    const QVariant raw = values.rawValue(tag.name);
    if (raw.type() == QVariant::String)
        return verdictOfText({Origin::Text, tag.name, tag.format, raw.toString(), value.toDouble(),
                              printed, isBbCode});
    if (value.type() != QVariant::Double)
        return {};
    return verdictOfReal({Origin::Number, tag.name, tag.format, shortest(value.toDouble()),
                          value.toDouble(), printed});
}

}  // namespace templatelint
