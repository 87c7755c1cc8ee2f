#include <QRegularExpression>
#include <algorithm>

#include "analysis.h"
#include "checks.h"
#include "expression.h"
#include "guesses.h"
#include "printerdocs/template/templatetags_p.h"
#include "words.h"

// Rules about tags that aren't spelt as the library reads them.

namespace templatelint {

namespace {

/// A value that this document doesn't show can't be printed as another one.
Severity severityOf(const TagFault &found, const Piece &piece, const Report &report)
{
    const TagVerdict &verdict = found.verdict;
    const bool isOfFormat =
        verdict.fault == TagVerdict::Misformatted || verdict.fault == TagVerdict::DateLetters;
    const bool isHidden = piece.filled && !piece.isShown(found.offset - verdict.index);
    return isOfFormat && isHidden ? Severity::Warning : verdict.lesser.value_or(report.severity());
}

void reportTags(const Analysis &analysis, TagVerdict::Fault fault, Report &report)
{
    for (const Piece &piece : analysis.pieces()) {
        for (const TagFault &found : piece.tagFaults) {
            if (found.verdict.fault == fault)
                report.addAs(severityOf(found, piece, report), found.offset, found.verdict.message);
        }
    }
}

bool readsLikeAnAttribute(const QString &inner)
{
    if (isWordBegin(inner, 0)) {
        const int end = wordEnd(inner, 0);
        if (end == inner.size() || inner.at(end) == QLatin1Char(','))
            return true;
    }
    return isCalculation(inner);
}

bool isAttribute(const Analysis &analysis, const QString &inner)
{
    return analysis.values() != nullptr &&
           analysis.values()->has(inner.left(inner.lastIndexOf(QLatin1Char(','))));
}

bool isTooShort(const Analysis &analysis, const QString &inner)
{
    return !inner.isEmpty() && !isAttributeTag(inner.size() + 2) && !isMarkup(inner) &&
           (isAttribute(analysis, inner) ||
            (!intendedMarkup(inner) && !insteadOfTag(inner) && readsLikeAnAttribute(inner)));
}

/// How a tag that is too short can be written; empty if it can't.
QString longerForm(const QString &inner)
{
    if (isCalculation(inner))
        return Words::tr(", such as \"< %1 >\"").arg(inner);
    const bool isName = wordEnd(inner, 0) == inner.size();
    return isName && isAttributeTag(inner.size() + 3)
               ? Words::tr(", such as \"<%1,>\" with an empty format").arg(inner)
               : QString();
}

/// What has a value is lost; all else may be meant as text.
Severity severityOfShort(const Analysis &analysis, const QString &inner)
{
    return isAttribute(analysis, inner) ? Severity::Error : Severity::Warning;
}

void reportShort(const BadCode &code, Severity severity, Report &report)
{
    report.addAs(severity, code.offset,
                 Words::tr("\"<%1>\" is read as the code of a character: an attribute or "
                           "expression has at least four characters")
                     .arg(code.inner));
}

/// A "<" and the brackets behind it in a line.
struct OpenTag
{
    int begin;
    int end;   ///< the next ">"; -1: there is none
    int next;  ///< the next "<"; -1: there is none
};

QVector<OpenTag> openTags(const QString &line)
{
    QVector<OpenTag> tags;
    const int lastEnd = line.lastIndexOf(QLatin1Char('>'));
    int begin = line.indexOf(QLatin1Char('<'));
    while (begin >= 0) {
        const int end = begin > lastEnd ? -1 : line.indexOf(QLatin1Char('>'), begin);
        const int next = line.indexOf(QLatin1Char('<'), begin + 1);
        tags.append({begin, end, next});
        begin = end < 0 ? next : line.indexOf(QLatin1Char('<'), end);
    }
    return tags;
}

void reportShortTagsOf(const Text &code, const Analysis &analysis, Report &report)
{
    const QVector<OpenTag> tags = openTags(code.characters);
    for (const OpenTag &tag : tags) {
        const QString inner = code.characters.mid(tag.begin + 1, tag.end - tag.begin - 1);
        // Without a value it may well be a part of the data.
        if (tag.end >= 0 && isTooShort(analysis, inner) && isAttribute(analysis, inner))
            report.add(Text::offsetOf(code.origins.at(tag.begin)),
                       Words::tr("\"<%1>\" goes into the QR code as it stands: an attribute "
                                 "or expression has at least four characters%2")
                           .arg(inner, longerForm(inner)));
    }
}

/// Whether a short tag is none of the library's and can't be meant as text, as in "1 < a > 0".
bool isUnknownMarkup(const Analysis &analysis, const QString &inner)
{
    return !inner.isEmpty() && !isMarkup(inner) && !isTooShort(analysis, inner) &&
           !inner.at(0).isSpace() &&
           std::any_of(inner.cbegin(), inner.cend(), [](QChar c) { return c.isLetter(); });
}

void reportSpelling(const Analysis &analysis, const Leftover &tag, Report &report)
{
    if (tag.inner == innerOf(templates::imageBegin) || tag.inner == innerOf(templates::imageEnd)) {
        report.add(tag.offset, Words::tr("\"<%1>\" prints as it stands: an image lies between "
                                         "\"<I>\" and \"</I>\" on one line")
                                   .arg(tag.inner));
        return;
    }
    if (isAttributeTag(tag.inner.size() + 2) || isAttribute(analysis, tag.inner) ||
        insteadOfTag(tag.inner))
        return;
    if (const auto meant = intendedMarkup(tag.inner))
        report.add(tag.offset, Words::tr("\"<%1>\" prints as it stands; did you mean \"<%2>\"?")
                                   .arg(tag.inner, *meant));
    else if (isUnknownMarkup(analysis, tag.inner))
        report.add(tag.offset,
                   Words::tr("\"<%1>\" prints as it stands: there is no such tag").arg(tag.inner));
}

/// What stands behind a "<" that isn't meant as text.
bool canBeginATag(const QString &line, int place)
{
    if (place >= line.size())
        return true;
    const QChar c = line.at(place);
    return c.isLetterOrNumber() || QLatin1String(":#/_(.<[]").contains(c);
}

void checkUnterminated(const Piece &piece, const Text &line, Report &report)
{
    const QVector<OpenTag> tags = openTags(line.characters);
    for (const OpenTag &tag : tags) {
        const int offset = line.origins.at(tag.begin);
        const bool looksLikeATag =
            canBeginATag(line.characters, tag.begin + 1) && piece.isText(offset);
        if (tag.end < 0 && looksLikeATag) {
            report.add(offset, Words::tr("\"<\" has no \">\" behind it on the line"));
            return;
        }
        if (tag.next < 0 || tag.next > tag.end)
            continue;
        const int length = tag.end + 1 - tag.begin;
        if (looksLikeATag || (isAttributeTag(length) && piece.isPrinted(offset)))
            report.add(offset, Words::tr("\"<\" has no \">\" before the next \"<\": \"%1\" is "
                                         "read as one tag")
                                   .arg(clipped(line.characters.mid(tag.begin, length))));
    }
}

/// What stands behind a tag as if it were compared with it; also where it isn't printed, as there
/// stand the conditions.
void reportComparisons(const TemplateLine &line, Report &report)
{
    static const QRegularExpression comparison(
        QStringLiteral("^=?(?:\\d+(?:\\.\\d+)?|[A-Z_][A-Z0-9_]*)>"));
    for (const AttributeTag &tag : line.tags) {
        const auto match = comparison.match(line.text.characters.midRef(tag.end));
        if (match.hasMatch())
            report.addAs(Severity::Warning, line.offsetOf(tag),
                         Words::tr("\"<%1>\" ends at its first \">\", and \"%2\" prints as it "
                                   "stands: nothing is compared; a group goes when a value in "
                                   "it is empty or zero")
                             .arg(clipped(tag.inner), match.captured()));
    }
}

void reportMissingEntries(const Piece &piece, const TemplateLine &line, Report &report)
{
    for (const AttributeTag &tag : line.tags) {
        const int offset = line.offsetOf(tag);
        if (isEntriesTag(tag.inner) && piece.isPrinted(offset))
            report.addAs(Severity::Warning, offset,
                         Words::tr("the document has no \"entries\": a blank line is printed"));
    }
}

}  // namespace

void checkUnknownAttributes(const Analysis &analysis, Report &report)
{
    reportTags(analysis, TagVerdict::UnknownAttribute, report);
    if (!analysis.options().document || !analysis.options().document->entries().isEmpty())
        return;
    for (const Piece &piece : analysis.pieces()) {
        for (const TemplateLine &line : piece.lines)
            reportMissingEntries(piece, line, report);
    }
}

void checkExpressions(const Analysis &analysis, Report &report)
{
    reportTags(analysis, TagVerdict::BadExpression, report);
}

void checkCutExpressions(const Analysis &analysis, Report &report)
{
    reportTags(analysis, TagVerdict::CutExpression, report);
}

void checkDivisions(const Analysis &analysis, Report &report)
{
    reportTags(analysis, TagVerdict::NotFinite, report);
}

void checkValueFormats(const Analysis &analysis, Report &report)
{
    reportTags(analysis, TagVerdict::Misformatted, report);
}

void checkDateLetters(const Analysis &analysis, Report &report)
{
    reportTags(analysis, TagVerdict::DateLetters, report);
}

void checkCommasInFormats(const Analysis &analysis, Report &report)
{
    reportTags(analysis, TagVerdict::CommaInFormat, report);
}

void checkShortTags(const Analysis &analysis, Report &report)
{
    for (const Piece &piece : analysis.pieces()) {
        for (const BadCode &code : piece.blank.badCodes) {
            if (isTooShort(analysis, code.inner))
                reportShort(code, severityOfShort(analysis, code.inner), report);
        }
        const QVector<Leftover> leftovers = leftoversOf(piece.blank);
        for (const Leftover &tag : leftovers) {
            if (isTooShort(analysis, tag.inner))
                report.addAs(severityOfShort(analysis, tag.inner), tag.offset,
                             Words::tr("\"<%1>\" prints as it stands: an attribute or "
                                       "expression has at least four characters%2")
                                 .arg(tag.inner, longerForm(tag.inner)));
        }
        for (const Text &code : piece.blank.codes)
            reportShortTagsOf(code, analysis, report);
    }
}

void checkGuessedNames(const Analysis &analysis, Report &report)
{
    reportTags(analysis, TagVerdict::Guessed, report);
    for (const Piece &piece : analysis.pieces()) {
        for (const TemplateLine &line : piece.lines)
            reportComparisons(line, report);
        const QVector<Leftover> leftovers = leftoversOf(piece.blank);
        for (const Leftover &tag : leftovers) {
            const auto instead = insteadOfTag(tag.inner);
            if (instead && !isAttributeTag(tag.inner.size() + 2) &&
                !isAttribute(analysis, tag.inner))
                report.addAs(Severity::Warning, tag.offset,
                             Words::tr("\"<%1>\" prints as it stands, as there is no such "
                                       "tag: %2")
                                 .arg(tag.inner, *instead));
        }
    }
}

void checkMarkupSpelling(const Analysis &analysis, Report &report)
{
    reportTags(analysis, TagVerdict::Misspelt, report);
    for (const Piece &piece : analysis.pieces()) {
        for (const BadCode &code : piece.blank.badCodes) {
            if (!isTooShort(analysis, code.inner))
                report.add(code.offset, Words::tr("\"<%1>\" is no number: the character of "
                                                  "code 0 is printed")
                                            .arg(clipped(code.inner)));
        }
        const QVector<Leftover> leftovers = leftoversOf(piece.blank);
        for (const Leftover &tag : leftovers)
            reportSpelling(analysis, tag, report);
    }
}

void checkUnterminatedTags(const Analysis &analysis, Report &report)
{
    for (const Piece &piece : analysis.pieces()) {
        for (const TemplateLine &line : piece.lines)
            checkUnterminated(piece, line.text, report);
    }
}

}  // namespace templatelint
