#include "attributes.h"

#include <algorithm>

#include "expression.h"
#include "formats.h"
#include "guesses.h"
#include "printerdocs/template/substitutiontext_p.h"
#include "templatelint.h"
#include "text.h"
#include "words.h"

namespace templatelint {

namespace {

// To look for the nearest name takes the product of all lengths; nobody reads more hints than this.
constexpr int mostHints = 1000;
constexpr int longestQuotation = 60;

bool consistsOf(const QString &text, const QString &characters)
{
    return std::all_of(text.cbegin(), text.cend(),
                       [&characters](QChar c) { return characters.contains(c); });
}

/// Whether what stands behind a comma is how numbers are formatted. Other digits than 0 and no
/// point, as in "PRICE*1,2", are rather decimals.
bool isNumberFormat(const QString &format)
{
    return consistsOf(format, QStringLiteral("0#.E")) ||
           (format.contains(QLatin1Char('.')) &&
            consistsOf(format, QStringLiteral("0123456789#.E")));
}

TagVerdict cutExpression(const AttributeTag &tag)
{
    return {TagVerdict::CutExpression, tag.name.size() + 1,
            Words::tr("the last comma cuts the expression: \"%1\" is calculated, and \"%2\" "
                      "is its format")
                .arg(clipped(tag.name), clipped(tag.format))};
}

TagVerdict expressionFault(const QString &name, const QString &text, const ExpressionFault &fault,
                           int index)
{
    const QString what = fault.isAtEnd
                             ? Words::tr("the expression \"%1\" ends too early").arg(clipped(name))
                             : Words::tr("the expression \"%1\" can't be read from \"%2\" on")
                                   .arg(clipped(name), clipped(fault.token));
    const QString filled =
        text == name ? QString() : Words::tr("; with its values it is \"%1\"").arg(clipped(text));
    return {TagVerdict::BadExpression, index + 1, what + filled};
}

TagVerdict ofFormat(const AttributeTag &tag, const FormatFault &fault)
{
    if (fault.kind == FormatFault::None)
        return {};
    TagVerdict verdict{
        fault.kind == FormatFault::Letters ? TagVerdict::DateLetters : TagVerdict::Misformatted,
        tag.name.size() + 2, fault.message};
    if (!fault.changesFigure)
        verdict.lesser = Severity::Warning;
    return verdict;
}

bool hasOperator(const QString &name)
{
    return holdsAnyOf(name, QStringLiteral("+-*/%^(),"));
}

/// A comma that separates no arguments: only what stands behind it is calculated.
bool hasOuterComma(const QString &name)
{
    int depth = 0;
    return std::any_of(name.cbegin(), name.cend(), [&depth](QChar c) {
        if (c == QLatin1Char('('))
            ++depth;
        else if (c == QLatin1Char(')') && depth > 0)
            --depth;
        return c == QLatin1Char(',') && depth == 0;
    });
}

QString sortedLetters(const QString &text)
{
    QString letters = text;
    std::sort(letters.begin(), letters.end());
    return letters;
}

/// Whether a name is another one in other letters, or with some of them the wrong way round. Names
/// that end in numbers are counted, and are others.
bool isSlip(const QString &word, const QString &name)
{
    const auto isDigit = [](QChar c) { return c.isDigit(); };
    return word.size() == name.size() && word.size() > 1 &&
           std::none_of(word.cbegin(), word.cend(), isDigit) &&
           sortedLetters(withLatinLetters(word).toUpper()) ==
               sortedLetters(withLatinLetters(name).toUpper());
}

}  // namespace

QString clipped(const QString &text)
{
    return text.size() <= longestQuotation ? text
                                           : text.left(longestQuotation) + QStringLiteral("...");
}

TagVerdict TagJudge::verdictOf(const AttributeTag &tag)
{
    const auto known = m_verdicts.constFind(tag.inner);
    return known != m_verdicts.constEnd() ? *known : *m_verdicts.insert(tag.inner, judged(tag));
}

TagVerdict TagJudge::judged(const AttributeTag &tag)
{
    if (isEntriesTag(tag.inner) || isFiscalMarker(tag.inner) ||
        tag.inner.contains(QLatin1Char('<')))
        return {};
    if (m_values != nullptr && m_values->has(tag.name))
        return judgedByFormat(tag, m_values->document().attributeValue(tag.name));
    if (isSymbolsTag(tag.inner))
        return {TagVerdict::Misspelt, 0,
                Words::tr("\"<%1>\" counts only on a line of its own").arg(clipped(tag.inner))};
    if (const auto meant = intendedMarkup(tag.inner))
        return {TagVerdict::Misspelt, 0,
                Words::tr("\"<%1>\" counts as an attribute; did you mean \"<%2>\"?")
                    .arg(clipped(tag.inner), *meant)};
    if (tag.name.trimmed().isEmpty())
        return {TagVerdict::BadExpression, 1,
                Words::tr("\"<%1>\" has no name").arg(clipped(tag.inner))};
    for (const TagVerdict &verdict : {judgedByComma(tag), judgedByGuess(tag)}) {
        if (verdict.fault != TagVerdict::None)
            return verdict;
    }
    return judgedByName(tag);
}

/// What people look for who know other languages, unless the document has it under that name.
TagVerdict TagJudge::judgedByGuess(const AttributeTag &tag)
{
    const auto function = missingFunctionIn(tag.inner);
    const bool hasValue = m_values != nullptr && m_values->has(tag.name);
    if (function && !hasValue && faultOf(withNumbers(tag.name).text).exists)
        return {
            TagVerdict::Guessed, function->index + 1,
            Words::tr("there is no function \"%1\": %2").arg(function->name, function->instead)};
    const auto instead = insteadOfTag(tag.inner);
    if (!instead || hasValue)
        return {};
    TagVerdict verdict{
        TagVerdict::Guessed, 0,
        Words::tr("\"<%1>\" is read as an attribute%2: %3")
            .arg(clipped(tag.inner),
                 m_values == nullptr ? QString() : Words::tr(", which the document lacks"),
                 *instead)};
    if (m_values == nullptr)
        verdict.lesser = Severity::Warning;
    else
        verdict.messageInGroup = verdict.message;
    return verdict;
}

TagVerdict TagJudge::judgedByName(const AttributeTag &tag)
{
    TagVerdict verdict = m_values == nullptr ? judgedByShape(tag) : judgedByValues(tag);
    if (verdict.fault != TagVerdict::None || tag.format.isEmpty())
        return verdict;
    if (m_values == nullptr)
        return ofFormat(tag, formatFault(tag.format));
    const auto result = m_values->resultOf(tag.name);
    return result ? judgedByFormat(tag, *result) : verdict;
}

TagVerdict TagJudge::judgedByFormat(const AttributeTag &tag, const QVariant &value)
{
    const QString printed = m_values->ofTag(tag.inner).value_or(QString());
    TagVerdict verdict = ofFormat(tag, formatFault(value, tag.format, printed));
    verdict.isFineInGroup = templates::vanishesWithItsGroup(printed);
    return verdict;
}

/// A date's format that was meant to have a comma in it.
TagVerdict TagJudge::judgedByComma(const AttributeTag &tag) const
{
    const int comma = tag.inner.indexOf(QLatin1Char(','));
    const QString name = tag.inner.left(comma);
    const QString format = tag.inner.mid(comma + 1);
    if (comma < 0 || comma == tag.name.size() || hasOperator(name) ||
        !looksLikeDateFormat(format) || (m_values != nullptr && !m_values->has(name)))
        return {};
    QStringList tags;
    const QStringList parts = format.split(QLatin1Char(','));
    for (const QString &part : parts)
        tags.append(QStringLiteral("<%1,%2>").arg(name, part.trimmed()));
    return {TagVerdict::CommaInFormat, comma + 2,
            Words::tr("the format begins behind the last comma, and \"%1\" is no attribute: "
                      "instead of a comma in the format write \"%2\"")
                .arg(clipped(tag.name), clipped(tags.join(QStringLiteral(", "))))};
}

/// Without values only what no value can mend, or hardly.
TagVerdict TagJudge::judgedByShape(const AttributeTag &tag) const
{
    const bool hasFormat = tag.name.size() < tag.inner.size();
    if (hasOuterComma(tag.name))
        return cutExpression(tag);
    const NumberedExpression name = withNumbers(tag.name);
    const ExpressionFault fault = faultOf(name.text);
    if (hasFormat && (hasOperator(tag.name) || !name.hasWords) &&
        !faultOf(withNumbers(tag.inner).text).exists &&
        (fault.exists || (!isNumberFormat(tag.format) && !withNumbers(tag.format).hasWords)))
        return cutExpression(tag);
    const bool isBeyondMending =
        !name.hasWords || holdsAnyOf(tag.name, QStringLiteral("*^")) ||
        tag.name.count(QLatin1Char('(')) != tag.name.count(QLatin1Char(')'));
    if (!fault.exists && dividesByZero(tag.name))
        return {TagVerdict::NotFinite, 0,
                Words::tr("the expression \"%1\" divides by zero").arg(clipped(tag.name)),
                Severity::Warning};
    if (!fault.exists || !isBeyondMending)
        return {};
    return expressionFault(tag.name, tag.name, fault,
                           fault.isAtEnd ? tag.name.size() : name.origins.at(fault.begin));
}

TagVerdict TagJudge::judgedByValues(const AttributeTag &tag)
{
    const auto value = m_values->ofTag(tag.inner);
    if (!value)
        return {};
    const bool hasFormat = tag.name.size() < tag.inner.size();
    if (hasFormat && (value->isEmpty() || !isNumberFormat(tag.format)) &&
        m_values->evaluates(tag.inner))
        return cutExpression(tag);
    TagVerdict unknown = unknownWord(tag.name, !value->isEmpty());
    if (unknown.fault != TagVerdict::None)
        return unknown;
    if (hasOuterComma(tag.name))
        return cutExpression(tag);
    return value->isEmpty() ? badExpression(tag.name) : notFinite(tag, *value);
}

TagVerdict TagJudge::unknown(const QString &word, int index, const QString &hint, bool hasValue)
{
    const QString what = Words::tr("the document has no attribute \"%1\"").arg(clipped(word));
    TagVerdict verdict{TagVerdict::UnknownAttribute, index, what + hint};
    if (!hasValue)
        verdict.messageInGroup = what + Words::tr(": with it the group goes") + slipHint(word);
    return verdict;
}

/// In a group a name may well be missing: only one that is as good as another's is told.
QString TagJudge::slipHint(const QString &word)
{
    if (++m_hints > mostHints)
        return QString();
    const QStringList names = m_values->names();
    const auto meant = std::find_if(names.cbegin(), names.cend(),
                                    [&word](const QString &name) { return isSlip(word, name); });
    return meant == names.cend() ? QString() : Words::tr("; did you mean \"%1\"?").arg(*meant);
}

/// The first word of an expression that is neither an attribute nor a function.
TagVerdict TagJudge::unknownWord(const QString &name, bool hasValue)
{
    const bool isNameAlone = !hasOperator(name);
    if (isNameAlone && !hasValue && withNumbers(name).hasWords)
        return unknown(name, 0, hintFor(name), hasValue);
    const Inserted inserted = m_values->insertedInto(name);
    for (int begin = 0; begin < name.size(); ++begin) {
        if (!isWordBegin(name, begin))
            continue;
        const int end = wordEnd(name, begin);
        const QString word = name.mid(begin, end - begin);
        const auto keys = inserted.keyBegin.mid(begin, end - begin);
        const auto key = std::find_if(keys.cbegin(), keys.cend(), [](int k) { return k >= 0; });
        const bool isWhole = key == keys.cbegin() && inserted.keyEnd.at(begin) >= end;
        const bool isCall = end < name.size() && name.at(end) == QLatin1Char('(');
        if (key == keys.cend() && (isFunction(word) || (isCall && word == word.toLower())))
            continue;
        if (!isWhole) {
            const QString part = key == keys.cend()
                                     ? hintFor(word)
                                     : Words::tr("; the value of \"%1\" is put into it")
                                           .arg(name.mid(*key, inserted.keyEnd.at(*key) - *key));
            return unknown(word, isNameAlone ? 0 : begin + 1, part, hasValue);
        }
        begin = end;
    }
    return {};
}

TagVerdict TagJudge::badExpression(const QString &name) const
{
    const Inserted inserted = m_values->insertedInto(name);
    const ExpressionFault fault = faultOf(inserted.text);
    const int index = !fault.exists || fault.isAtEnd
                          ? name.size()
                          : Text::offsetOf(inserted.origins.value(fault.begin, name.size()));
    TagVerdict verdict = expressionFault(name, inserted.text, fault, index);
    verdict.isFineInGroup = m_values->haveEmptyOneIn(name);
    return verdict;
}

TagVerdict TagJudge::notFinite(const AttributeTag &tag, const QString &printed) const
{
    const Inserted inserted = m_values->insertedInto(tag.name);
    if (hasFiniteValue(inserted.text))
        return {};
    const QString filled = inserted.text == tag.name
                               ? QString()
                               : Words::tr(", with its values \"%1\",").arg(clipped(inserted.text));
    TagVerdict verdict{
        TagVerdict::NotFinite, 0,
        Words::tr("the expression \"%1\"%2 divides by zero or has no finite value for another "
                  "reason: it prints \"%3\"")
            .arg(clipped(tag.name), filled, printed)};
    verdict.isFineInGroup = templates::vanishesWithItsGroup(printed) && !dividesByZero(tag.name);
    return verdict;
}

QString TagJudge::hintFor(const QString &name)
{
    if (++m_hints > mostHints)
        return QString();
    const QString latin = withLatinLetters(name);
    if (latin != name && m_values->has(latin))
        return Words::tr("; did you mean \"%1\", in Latin letters?").arg(latin);
    const auto nearest = nearestName(name, m_values->names());
    return nearest ? Words::tr("; did you mean \"%1\"?").arg(*nearest) : QString();
}

}  // namespace templatelint
