#include <QHash>
#include <QRegularExpression>
#include <algorithm>

#include "analysis.h"
#include "checks.h"
#include "printerdocs/template/templatetags_p.h"
#include "substitution.h"
#include "words.h"

// Rules about texts of the document that are others on paper.

namespace templatelint {

namespace {

/// Whether the tags of a text are those of values: then it is a template by itself.
bool fillsTags(const QString &text, Values &values)
{
    const QVector<AttributeTag> tags = attributeTags(text);
    return !tags.isEmpty() &&
           std::all_of(tags.cbegin(), tags.cend(), [&values](const AttributeTag &tag) {
               return values.has(tag.name) || values.evaluates(tag.name);
           });
}

/// What the program meant that wrote markup into a text: formats from one place to another and
/// symbols wherever they stand, other tags in front of the text. The rest should print as it is.
QString withoutMeantMarkup(const QString &text)
{
    static const QRegularExpression symbol(QStringLiteral("^#\\d{1,2}$"));
    QString result;
    int end = 0;
    for (int i = 0; i < text.size(); i = end) {
        end = text.at(i) == QLatin1Char('<') ? text.indexOf(QLatin1Char('>'), i) + 1 : 0;
        const QString inner = text.mid(i + 1, end - i - 2);
        const bool isMeant = end > 0 && isMarkup(inner) &&
                             inner != innerOf(templates::blankLineTag) &&
                             (result.isEmpty() || inner.contains(QLatin1Char(':')));
        if (isMeant)
            continue;
        const bool isSymbol = end > 0 && inner.contains(symbol);
        if (!isSymbol)
            end = i + 1;
        result += isSymbol ? QChar(inner.midRef(1).toInt()) : text.at(i);
    }
    return result;
}

/// What a road prints for each tag of the template that something was put in for.
QHash<int, QString> printedTexts(const Road &road)
{
    QHash<int, QString> texts;
    const auto add = [&texts](const Text &text) {
        for (int i = 0; i < text.size(); ++i) {
            const int origin = text.origins.at(i);
            if (!Text::isTemplate(origin) && origin != Text::nowhere)
                texts[Text::offsetOf(origin)] += text.characters.at(i);
        }
    };
    for (const Printed &line : road.lines)
        add(line.text);
    std::for_each(road.codes.cbegin(), road.codes.cend(), add);
    return texts;
}

QString whyChanged(const QString &text)
{
    if (text.contains(QLatin1Char('<'))) {
        const int begin = text.indexOf(QLatin1Char('<'));
        const int end = text.indexOf(QLatin1Char('>'), begin);
        return Words::tr(
                   "\"%1\" acts as in a template; \"--clean tags\" makes a blank of the "
                   "\"<\"")
            .arg(clipped(text.mid(begin, end < 0 ? -1 : end + 1 - begin)));
    }
    if (text.contains(QLatin1Char('\t')))
        return Words::tr("a tab is a column; \"--clean controls\" makes a blank of it");
    return Words::tr(
        "\"[\" and \"]\" make a group; \"--clean brackets\" makes \"(\" and "
        "\")\" of them");
}

QString withTabTags(QString text)
{
    return clipped(text.replace(QLatin1Char('\t'), QStringLiteral("<S>")));
}

/// What becomes of a text on its way to the paper, for a message; empty if it prints as it is.
QString changeOf(const QString &text, const QString &printed)
{
    // What is printed is known without the ends of its lines.
    const QString shown = QString(text).remove(QLatin1Char('\n'));
    const bool isSame = (printed == shown || printed == withoutMeantMarkup(shown)) &&
                        !text.contains(QLatin1Char('\t'));
    return isSame ? QString()
                  : Words::tr("\"%1\" and prints \"%2\": ")
                            .arg(withTabTags(text), withTabTags(printed)) +
                        whyChanged(text);
}

bool mayAct(const QString &text)
{
    return holdsAnyOf(text, QStringLiteral("<[]\t")) && !text.contains(templates::qrTag);
}

class ValueCheck
{
public:
    ValueCheck(const Analysis &analysis, const Piece &piece, Report &report)
        : m_values(*analysis.values()), m_piece(piece), m_report(report)
    {}

    void run()
    {
        for (const TemplateLine &line : m_piece.lines) {
            const bool hasEntries =
                std::any_of(line.tags.cbegin(), line.tags.cend(),
                            [](const AttributeTag &tag) { return isEntriesTag(tag.inner); });
            m_left.reset();
            for (const AttributeTag &tag : line.tags) {
                if (!hasEntries && m_values.has(tag.name))
                    checkTag(line, tag);
            }
        }
    }

private:
    void checkTag(const TemplateLine &line, const AttributeTag &tag)
    {
        const QString text = m_values.ofTag(tag.inner).value_or(QString());
        const int offset = line.offsetOf(tag);
        if (!mayAct(text) || fillsTags(text, m_values) || !m_piece.isPrinted(offset) ||
            !isLeftByGroups(line, offset))
            return;
        if (!m_printed)
            m_printed = printedTexts(*m_piece.filled);
        const QString change = changeOf(text, m_printed->value(offset));
        if (!change.isEmpty())
            m_report.add(offset, Words::tr("%1 is given as ").arg(clipped(tag.name)) + change);
    }
    /// What a tag in a value makes of it is no group's doing.
    static std::optional<QString> withoutTags(std::optional<QString> value)
    {
        if (value)
            value->replace(QLatin1Char('<'), QLatin1Char(' '));
        return value;
    }
    bool isLeftByGroups(const TemplateLine &line, int offset)
    {
        if (!m_left)
            m_left = originsOf(fill(line.text, [this](const QString &inner) {
                                   return withoutTags(m_values.ofTag(inner));
                               }).text);
        return m_left->contains(Text::standIn(offset));
    }

    Values &m_values;
    const Piece &m_piece;
    Report &m_report;
    std::optional<QHash<int, QString>> m_printed;
    std::optional<QSet<int>> m_left;  ///< origins of what groups leave of the line
};

/// What a single entry prints; its "=" are columns.
QString printedEntry(const QString &entry, const Analysis &analysis)
{
    PrinterDocument document = *analysis.options().document;
    document.setEntries(entry);
    document.setIsCopy(false);
    const Source source({QString(templates::entriesTag)});
    const Road road = travel(
        source.lines(), document,
        [&analysis](const QString &inner) { return analysis.values()->ofTag(inner); }, Form::Text);
    QStringList lines;
    for (const Printed &line : road.lines)
        lines.append(line.text.characters);
    return lines.join(QLatin1Char('\n'));
}

/// How an entry comes to more columns than two, and what helps.
QString whyColumns(const QString &entry)
{
    static const QRegularExpression otherSeparator(QStringLiteral("=[^=]*([\n;|])[^=]*="));
    const auto separator = otherSeparator.match(entry);
    return separator.hasMatch()
               ? Words::tr("a tab stands between two entries, and not \"%1\"")
                     .arg(separator.captured(1))
               : Words::tr("\"--clean equals\" makes blanks of those behind the first");
}

/// What is wrong with an entry, for a message; empty if nothing is.
QString faultOfEntry(const QString &entry, const Analysis &analysis)
{
    const QString what = Words::tr("the entry ");
    if (entry.count(QLatin1Char('=')) > 1)
        return what + Words::tr("\"%1\" has %n columns: each \"=\" begins one; %2", nullptr,
                                entry.count(QLatin1Char('=')) + 1)
                          .arg(clipped(entry), whyColumns(entry));
    if (!mayAct(entry) || fillsTags(entry, *analysis.values()))
        return QString();
    QString columns = entry;
    const int tabTag = columns.indexOf(templates::tabTag);
    if (columns.contains(QLatin1Char('=')))
        columns.replace(QLatin1Char('='), QLatin1Char('\t'));
    else if (tabTag >= 0)
        columns.replace(tabTag, templates::tabTag.size(), QLatin1Char('\t'));
    const QString printed = printedEntry(entry, analysis);
    return printed == withoutMeantMarkup(columns)
               ? QString()
               : what +
                     Words::tr("is given as \"%1\" and prints \"%2\": ")
                         .arg(clipped(entry), withTabTags(printed)) +
                     whyChanged(entry);
}

void checkEntriesAt(int offset, const Analysis &analysis, Report &report)
{
    const QStringList entries = analysis.options().document->entries().split(QLatin1Char('\t'));
    for (const QString &entry : entries) {
        const QString fault = faultOfEntry(entry, analysis);
        if (!fault.isEmpty())
            report.addEach(offset, fault);
    }
}

}  // namespace

void checkMarkupInValues(const Analysis &analysis, Report &report)
{
    for (const Piece &piece : analysis.pieces()) {
        if (!piece.filled || piece.filled->endless)
            continue;
        ValueCheck(analysis, piece, report).run();
        for (const TemplateLine &line : piece.lines) {
            for (const AttributeTag &tag : line.tags) {
                if (isEntriesTag(tag.inner) && piece.isPrinted(line.offsetOf(tag)))
                    checkEntriesAt(line.offsetOf(tag), analysis, report);
            }
        }
    }
}

}  // namespace templatelint
