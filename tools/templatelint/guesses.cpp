#include "guesses.h"

#include <QRegularExpression>
#include <QVector>
#include <algorithm>

#include "printerdocs/printerdocumentformatter.h"
#include "tags.h"
#include "templatelint.h"
#include "words.h"

namespace templatelint {

namespace {

struct Instead
{
    const char *names;  ///< a regular expression
    const char *what;
};

constexpr Instead guessedTags[] = {
    {"BAR_?CODE|EAN|EAN-?8|EAN-?13|UPC|CODE-?39|CODE-?128|ITF",
     QT_TRANSLATE_NOOP("LintFinding",
                       "a template has no barcode; \"<QR>\" with the data behind it is a QR code, "
                       "and a BBCode text "
                       "has [barcode]")},
    {"QR_?CODE", QT_TRANSLATE_NOOP("LintFinding", "a QR code is \"<QR>\" with the data behind it")},
    {"CUT|FULL_?CUT|PART(IAL)?_?CUT|EJECT",
     QT_TRANSLATE_NOOP("LintFinding",
                       "the printer's driver cuts the paper behind the receipt, and no tag does")},
    {"FEED|FF",
     QT_TRANSLATE_NOOP("LintFinding", "an empty line of the template feeds the paper by a line")},
    {"LOGO|IMG|IMAGE|PICTURE|PIC",
     QT_TRANSLATE_NOOP(
         "LintFinding",
         "a template has no pictures; \"<SPECSYMBOLS=\" names drawings of single characters, and a "
         "BBCode text has [img]")},
    {"HR|LINE|RULE|SEPARATOR",
     QT_TRANSLATE_NOOP(
         "LintFinding",
         "a rule is a line of \"-\", or \"<U> <S> \" across the paper, whatever its width")},
    {"L|LEFT|L[02-9]",
     QT_TRANSLATE_NOOP("LintFinding",
                       "a line without \"<C>\", \"<R>\" and \"<S>\" stands at the left edge")},
    {"BR|NL|LF|CR|P",
     QT_TRANSLATE_NOOP("LintFinding", "a line of the template is a line of the receipt")},
    {"T|TAB|FILL",
     QT_TRANSLATE_NOOP("LintFinding", "\"<S>\" moves what stands behind it to the right edge")},
    {"CENTER|CENTRE|CENTERED|MIDDLE", QT_TRANSLATE_NOOP("LintFinding", "\"<C>\" centres the line")},
    {"RIGHT", QT_TRANSLATE_NOOP("LintFinding", "\"<R>\" puts the line to the right edge")},
    {"BOLD|STRONG",
     QT_TRANSLATE_NOOP("LintFinding",
                       "\"<B>\" makes the line bold, \"<B:>\" and \"<:B>\" a part of it")},
    {"ITALIC|ITALICS|EM",
     QT_TRANSLATE_NOOP("LintFinding",
                       "\"<N>\" makes the line italic, \"<N:>\" and \"<:N>\" a part of it")},
    {"UNDERLINE|UNDERLINED",
     QT_TRANSLATE_NOOP("LintFinding",
                       "\"<U>\" underlines the line, \"<U:>\" and \"<:U>\" a part of it")},
    {"INVERSE|INVERT|INVERTED|REVERSE|NEGATIVE",
     QT_TRANSLATE_NOOP("LintFinding",
                       "\"<Z>\" marks the line, \"<Z:>\" and \"<:Z>\" a part of it")},
    {"BIG|LARGE",
     QT_TRANSLATE_NOOP("LintFinding",
                       "\"<H2>\" makes the line twice as high, \"<W2>\" twice as wide")},
    {"SMALL|FONT",
     QT_TRANSLATE_NOOP("LintFinding", "\"<F2>\" is the printer's second font, and there are four")},
    {"DRAWER|OPEN_?DRAWER|BEEP|BUZZER",
     QT_TRANSLATE_NOOP("LintFinding",
                       "a template only prints; \"receipt drawer\" opens the cash drawer")},
    {"IF|ELSE|END_?IF|IF .*", QT_TRANSLATE_NOOP("LintFinding",
                                                "what isn't always there stands in a group, \"[\" "
                                                "to \"]\", that goes when a value in it is "
                                                "empty or zero")},
    {"FOR|FOR_?EACH|LOOP",
     QT_TRANSLATE_NOOP("LintFinding",
                       "\"<ENTRIES>\" is the list that the program makes, and there is no other")},
};

constexpr Instead guessedFunctions[] = {
    {"round",
     QT_TRANSLATE_NOOP(
         "LintFinding",
         "a format rounds, and floor(x*100+0.500001)/100 does in front of further calculation")},
    {"max", QT_TRANSLATE_NOOP("LintFinding", "the greater of two is (a+b+abs(a-b))/2")},
    {"min", QT_TRANSLATE_NOOP("LintFinding", "the smaller of two is (a+b-abs(a-b))/2")},
    {"int|trunc|truncate|fix",
     QT_TRANSLATE_NOOP("LintFinding",
                       "floor(x) is the whole number below x, and ceil(x) that above")},
    {"ceiling", QT_TRANSLATE_NOOP("LintFinding", "it is called ceil")},
    {"power", QT_TRANSLATE_NOOP("LintFinding", "it is called pow, or a^b")},
    {"sqr", QT_TRANSLATE_NOOP("LintFinding", "the square is x^2, and the root sqrt(x)")},
    {"mod", QT_TRANSLATE_NOOP("LintFinding", "the remainder is a%b")},
    {"sum", QT_TRANSLATE_NOOP("LintFinding", "the sum is a+b+c")},
    {"avg|average|mean", QT_TRANSLATE_NOOP("LintFinding", "the mean of two is (a+b)/2")},
    {"if|iif", QT_TRANSLATE_NOOP("LintFinding",
                                 "there are no conditions in expressions; a group, \"[\" to \"]\", "
                                 "goes when a value in it is "
                                 "zero")},
    {"format|fixed|str|text",
     QT_TRANSLATE_NOOP("LintFinding", "the format stands behind a comma at the end of the tag")},
    {"date|time|now|today",
     QT_TRANSLATE_NOOP("LintFinding", "the program hands date and time over as an attribute")},
};

QRegularExpression wholeWord(const char *names)
{
    return QRegularExpression(
        QStringLiteral("^/?(%1)(\\s*[=:].*|\\s+\\w+=.*)?$").arg(QLatin1String(names)));
}

/// A row with its pattern ready for use.
struct Guess
{
    QRegularExpression pattern;
    const char *instead;
};

template <std::size_t count, typename PatternOf>
QVector<Guess> guessesOf(const Instead (&rows)[count], PatternOf patternOf)
{
    QVector<Guess> guesses;
    for (const Instead &row : rows)
        guesses.append({patternOf(row.names), row.what});
    return guesses;
}

/// The fiscal marker that a name was meant to be. Documents may well have attributes such as
/// FISCAL_SUM or FISCAL_NO, so that what differs has to be near.
std::optional<QString> nearestMarker(const QString &upper)
{
    constexpr int shortestPart = 4;
    const QString begin = QStringLiteral("FISCAL_");
    if (!upper.startsWith(begin))
        return std::nullopt;
    QStringList parts;
    for (const auto &marker : PrinterDocumentFormatter::PARTS)
        parts.append(marker.second.mid(begin.size() + 1).chopped(1));
    const QString part = upper.mid(begin.size());
    const auto whole = std::find_if(parts.cbegin(), parts.cend(), [&part](const QString &other) {
        return part.size() >= shortestPart && other.startsWith(part);
    });
    const auto nearest =
        whole != parts.cend() ? std::optional<QString>(*whole) : nearestName(part, parts);
    return nearest ? std::optional<QString>(
                         Words::tr("the fiscal marker is \"<%1%2>\"").arg(begin, *nearest))
                   : std::nullopt;
}

}  // namespace

std::optional<QString> insteadOfTag(const QString &inner)
{
    constexpr int longestGuess = 64;
    if (inner.size() > longestGuess || isMarkup(inner))
        return std::nullopt;
    static const QVector<Guess> list = guessesOf(guessedTags, wholeWord);
    const QString upper = inner.toUpper();
    for (const Guess &guess : list) {
        if (guess.pattern.match(upper).hasMatch())
            return Words::marked(guess.instead);
    }
    return nearestMarker(upper);
}

std::optional<MissingFunction> missingFunctionIn(const QString &expression)
{
    if (!expression.contains(QLatin1Char('(')))
        return std::nullopt;
    static const QVector<Guess> list = guessesOf(guessedFunctions, [](const char *names) {
        return QRegularExpression(
            QStringLiteral("(?:^|[-+*/%^(,])\\s*(%1)\\s*\\(").arg(QLatin1String(names)),
            QRegularExpression::CaseInsensitiveOption);
    });
    for (const Guess &guess : list) {
        const auto match = guess.pattern.match(expression);
        if (match.hasMatch())
            return MissingFunction{match.capturedStart(1), match.captured(1),
                                   Words::marked(guess.instead)};
    }
    return std::nullopt;
}

}  // namespace templatelint
