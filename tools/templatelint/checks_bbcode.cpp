#include <QHash>
#include <QSet>
#include <algorithm>
#include <iterator>

#include "analysis.h"
#include "attributes.h"
#include "bbcode.h"
#include "checks.h"
#include "linewidth.h"
#include "printerdocs/bbcodeparser.h"
#include "printerdocs/template/templatetags_p.h"
#include "words.h"

// Rules about texts in BBCode. Their reader takes tags for switches, and tells of no mistake.

namespace templatelint {

namespace {

bool isCodeTag(const QString &name)
{
    return name == QLatin1String("barcode") || name == QLatin1String("qrcode");
}

/// Where the tag counts only when it is closed.
bool actsWhenClosed(const QString &name)
{
    return isCodeTag(name) || name == QLatin1String("hr") || name == QLatin1String("img");
}

/// Where a tag within another one's reach cuts the text or its shape.
bool isShape(const QString &name)
{
    return actsWhenClosed(name) || name == QLatin1String("field") ||
           name == QLatin1String("column") || name == QLatin1String("left") ||
           name == QLatin1String("center") || name == QLatin1String("right");
}

QString nearest(const QString &name, const QStringList &names)
{
    const auto whole = std::find_if(names.cbegin(), names.cend(), [&name](const QString &other) {
        return name.size() > 1 && other.startsWith(name);
    });
    const auto near = whole != names.cend() ? *whole : nearestName(name, names);
    return near ? Words::tr("; did you mean \"%1\"?").arg(*near) : QString();
}

QString shownTag(const BbCode &text, const BbEvent &event)
{
    return clipped(text.partOf(event.begin, event.end));
}

/// What a key's value counts as, where that is another one; empty if it counts.
QString valueFault(const QString &key, const QString &value)
{
    struct Row
    {
        const char *key;
        const char *values;
        const char *otherwise;
    };
    constexpr Row rows[] = {
        {"size", "small normal middle large", QT_TRANSLATE_NOOP("LintFinding", "the font stays")},
        {"hr", "dashed dotted", QT_TRANSLATE_NOOP("LintFinding", "the line is solid")},
        {"align", "left center right", QT_TRANSLATE_NOOP("LintFinding", "it counts as left")},
    };
    for (const Row &row : rows) {
        const QStringList values = QString::fromLatin1(row.values).split(QLatin1Char(' '));
        if (key == QLatin1String(row.key) && !values.contains(value))
            return Words::tr("\"%1\" takes %2, and not \"%3\": %4")
                .arg(key, values.join(QStringLiteral(", ")), clipped(value),
                     Words::marked(row.otherwise));
    }
    const bool isNumeric = key == QLatin1String("width") || key == QLatin1String("zerofill");
    constexpr int mostDigits = 255;
    bool isNumber = false;
    const uint number = value.toUInt(&isNumber);
    if (!isNumeric || (isNumber && number <= mostDigits))
        return QString();
    return Words::tr("\"%1\" is a number from 0 to 255, and not \"%2\": it counts as %3")
        .arg(key, clipped(value))
        .arg(number & mostDigits);
}

/// The tags that a key belongs to; it is of no use without one of them open.
QStringList ownersOf(const QString &key)
{
    if (key == QLatin1String("width") || key == QLatin1String("align"))
        return {QStringLiteral("field"), QStringLiteral("column")};
    if (key == QLatin1String("zerofill"))
        return {QStringLiteral("field")};
    if (key == QLatin1String("name"))
        return {QStringLiteral("img")};
    return {};
}

/// Follows which tags are open.
class OpenTags
{
public:
    void take(const BbEvent &event)
    {
        if (event.kind == BbEvent::Open)
            m_names.insert(event.name);
        else if (event.kind == BbEvent::Close)
            m_names.remove(event.name);
    }
    bool hasAny(const QStringList &names) const
    {
        return std::any_of(names.cbegin(), names.cend(),
                           [this](const QString &name) { return m_names.contains(name); });
    }

private:
    QSet<QString> m_names;
};

void checkParameters(const BbCode &text, const BbEvent &event, const OpenTags &open, Report &report)
{
    for (auto pair = event.parameters.cbegin(); pair != event.parameters.cend(); ++pair) {
        const int offset = text.offsetOf(event);
        const QStringList owners = ownersOf(pair.key());
        const QString fault =
            pair.value().contains(bbValueSign()) ? QString() : valueFault(pair.key(), pair.value());
        if (!bbKeys().contains(pair.key()))
            report.addEach(offset, Words::tr("BBCode has no key \"%1\"%2")
                                       .arg(clipped(pair.key()), nearest(pair.key(), bbKeys())));
        else if (!owners.isEmpty() && !open.hasAny(owners))
            report.addEach(offset, Words::tr("\"%1\" is of no use outside of [%2]")
                                       .arg(pair.key(), owners.join(Words::tr("] or ["))));
        else if (!fault.isEmpty())
            report.addEach(offset, fault);
    }
}

/// Whether a name is that of a file, with its ending or without.
bool isNamed(const QString &name, const QString &file)
{
    const QString own = file.toLower();
    return own == name || (own.startsWith(name + QLatin1Char('.')) &&
                           own.lastIndexOf(QLatin1Char('.')) == name.size());
}

Severity crossingSeverity(const BbEvent &a, const BbEvent &b)
{
    return isShape(a.name) || isShape(b.name) ? Severity::Warning : Severity::Note;
}

QString lonelyMessage(const BbEvent &event)
{
    const QString &name = event.name;
    if (event.kind == BbEvent::Close)
        return Words::tr("\"[/%1]\" closes what isn't open").arg(name);
    const QString begin = Words::tr("\"[%1]\" is never closed: ").arg(name);
    if (name == QLatin1String("hr"))
        return begin + Words::tr("no line is drawn; write [hr /]");
    if (name == QLatin1String("img"))
        return begin + Words::tr("no picture is printed; write [/img] behind it");
    if (isCodeTag(name))
        return begin + Words::tr("no code is printed");
    return begin + Words::tr("it holds to the text's end, and beyond for some");
}

/// A payload of a code, as the library takes it; nothing where no code comes of it.
std::optional<QByteArray> payloadOf(const BbCode &text, const BbPair &pair)
{
    BbCodeParser parser(nullptr);
    parser.parseText(
        text.partOf(text.events().at(pair.open).begin, text.events().at(pair.close).end));
    const QList<DocumentBlock> blocks = parser.blocks();
    const auto code = std::find_if(blocks.cbegin(), blocks.cend(), [](const DocumentBlock &block) {
        return block.isBarcode() || block.isQrCode();
    });
    if (code == blocks.cend())
        return std::nullopt;
    return code->isBarcode() ? code->barcode() : code->qrCode();
}

QString codeMessage(CodeKind kind, const QByteArray &payload, const Options &options)
{
    const QString name = kind == CodeKind::Barcode ? Words::tr("barcode") : Words::tr("QR code");
    if (payload.isEmpty())
        return Words::tr("the %1 has no data: none is printed").arg(name);
    const QString fault = options.codeFault ? options.codeFault(kind, payload) : QString();
    return fault.isEmpty() ? QString()
                           : Words::tr("the %1 of \"%2\" can't be printed: %3")
                                 .arg(name, clipped(QString::fromUtf8(payload)), fault);
}

void checkBbCode(const BbCode &text, const BbPair &pair, Report &report)
{
    const BbEvent &event = text.events().at(pair.open);
    const auto payload = payloadOf(text, pair);
    if (payload && QString::fromUtf8(*payload).contains(valueSign()))
        return;
    const CodeKind kind =
        event.name == QLatin1String("barcode") ? CodeKind::Barcode : CodeKind::QrCode;
    const QString message = codeMessage(kind, payload.value_or(QByteArray()), text.options());
    if (!message.isEmpty())
        report.add(text.offsetOf(event), message);
}

bool isTag(const BbEvent &event)
{
    return event.kind == BbEvent::Open || event.kind == BbEvent::Close;
}

/// The values of a BBCode text that act as tags of its own, or of templates.
class BbValueCheck
{
public:
    BbValueCheck(const BbCode &text, Report &report)
        : m_text(text), m_report(report), m_values(*text.options().document)
    {
        const QVector<Text> lines = text.source().lines();
        for (const Text &line : lines) {
            const QVector<AttributeTag> tags = attributeTags(line.characters);
            for (const AttributeTag &tag : tags)
                m_tags.insert(line.origins.at(tag.begin), tag);
        }
    }

    void run()
    {
        findMeantTags();
        const QVector<BbEvent> &events = m_text.events();
        for (int i = 0; i < events.size(); ++i) {
            if (isTag(events.at(i)) && !m_meant.contains(i))
                checkTag(events.at(i));
        }
        checkFilledTags();
    }

private:
    /// Tags that a value both opens and closes, which a program writes.
    void findMeantTags()
    {
        const QVector<BbEvent> &events = m_text.events();
        for (const BbPair &pair : m_text.pairs()) {
            const BbEvent &open = events.at(pair.open);
            const BbEvent &close = events.at(pair.close);
            if (open.begin != close.begin && bbTagNames().contains(open.name) &&
                m_text.isOfValue(open) && m_text.isOfValue(close) &&
                m_text.offsetOf(open) == m_text.offsetOf(close))
                m_meant << pair.open << pair.close;
        }
    }
    void checkTag(const BbEvent &event)
    {
        const QVector<int> &origins = m_text.text().origins;
        const int origin = Text::isTemplate(origins.at(event.begin)) ? origins.at(event.end - 1)
                                                                     : origins.at(event.begin);
        if (!Text::isTemplate(origin))
            report(Text::offsetOf(origin), shownTag(m_text, event),
                   Words::tr("acts as a tag of BBCode; \"--clean brackets\" makes \"(\" "
                             "and \")\" of its brackets"));
    }
    /// Values that hold tags of templates, which are filled or vanish.
    void checkFilledTags()
    {
        QHash<int, QString> printed;
        const Text &text = m_text.text();
        for (int i = 0; i < text.size(); ++i) {
            if (!Text::isTemplate(text.origins.at(i)))
                printed[Text::offsetOf(text.origins.at(i))] += text.characters.at(i);
        }
        for (auto tag = m_tags.cbegin(); tag != m_tags.cend(); ++tag) {
            const QString given = m_values.ofTag(tag->inner).value_or(QString());
            const QVector<AttributeTag> inside = attributeTags(given);
            const bool isMeant =
                std::all_of(inside.cbegin(), inside.cend(), [this](const AttributeTag &other) {
                    return m_values.has(other.name) || m_values.evaluates(other.name);
                });
            if (!isMeant && printed.contains(tag.key()) && printed.value(tag.key()) != given)
                report(tag.key(),
                       clipped(given.mid(inside.constFirst().begin,
                                         inside.constFirst().end - inside.constFirst().begin)),
                       Words::tr("acts as in a template; \"--clean tags\" makes a blank of the "
                                 "\"<\""));
        }
    }
    void report(int offset, const QString &part, const QString &why)
    {
        const auto tag = m_tags.constFind(offset);
        if (tag == m_tags.constEnd() || !m_values.has(tag->name))
            return;
        m_report.add(offset,
                     Words::tr("%1 is given as \"%2\": \"%3\" ")
                             .arg(clipped(tag->name),
                                  clipped(m_values.ofTag(tag->inner).value_or(QString())), part) +
                         why);
    }

    const BbCode &m_text;
    Report &m_report;
    Values m_values;
    QHash<int, AttributeTag> m_tags;  ///< of values, by their offsets
    QSet<int> m_meant;                ///< events
};

/// The font that a size above the normal one is.
int fontOfSize(const QString &size)
{
    return size == QLatin1String("middle") ? 2 : 3;
}

const PaperFont &fontOfPaper(const Paper &paper, int number)
{
    return paper.fonts.at(number < paper.fonts.size() ? number : 0);
}

/// The first markup of templates in what is BBCode but for that.
struct LonelyMarkup
{
    int offset = Text::nowhere;  ///< nowhere: the text is a template indeed
    QString text;
};

LonelyMarkup lonelyMarkupOf(const QVector<Text> &lines)
{
    constexpr int rate = 4;
    int bbTags = 0;
    int markup = 0;
    LonelyMarkup first;
    for (const Text &line : lines) {
        const QVector<MarkupTag> tags = markupOf(line.characters);
        bbTags += bbTagsOf(line.characters).size();
        if (markup == 0 && !tags.isEmpty())
            first = {line.origins.at(tags.constFirst().begin), tags.constFirst().text};
        markup += tags.size();
    }
    return bbTags > rate * markup ? first : LonelyMarkup();
}

/// What stands in templates for a tag of BBCode.
QString templatesOwn(const QString &name)
{
    struct Row
    {
        const char *name;
        const char *instead;
    };
    constexpr Row rows[] = {
        {"b", "<B:>bold<:B>"},        {"i", "<N:>italic<:N>"}, {"u", "<U:>underlined<:U>"},
        {"size", "<F4>large<F1> it"}, {"center", "<C>"},       {"right", "<R>"},
        {"hr", "<U> <S> "},           {"qrcode", "<QR>DATA"},
    };
    const auto *const row = std::find_if(std::begin(rows), std::end(rows), [&](const Row &known) {
        return name == QLatin1String(known.name);
    });
    return row == std::end(rows)
               ? Words::tr("; templates have nothing of the kind")
               : Words::tr("; templates have \"%1\"").arg(QLatin1String(row->instead));
}

void reportBbTags(const Piece &piece, const TemplateLine &line, Report &report)
{
    const QVector<BbTag> tags = bbTagsOf(line.text.characters);
    for (const BbTag &tag : tags) {
        const int offset = line.text.origins.at(tag.begin);
        if (piece.isText(offset))
            report.add(offset,
                       Words::tr("\"%1\" is a tag of BBCode, and a template prints \"%2\"%3")
                           .arg(clipped(tag.text), clipped(tag.text.mid(1, tag.text.size() - 2)),
                                templatesOwn(tag.name)));
    }
}

}  // namespace

void checkBbMarkupInValues(const BbCode &text, Report &report)
{
    if (text.options().document)
        BbValueCheck(text, report).run();
}

void checkBbNames(const BbCode &text, Report &report)
{
    OpenTags open;
    for (const BbEvent &event : text.events()) {
        open.take(event);
        if (!isTag(event) || text.isOfValue(event))
            continue;
        if (!bbTagNames().contains(event.name))
            report.addEach(text.offsetOf(event),
                           Words::tr("BBCode has no tag \"%1\"%2")
                               .arg(clipped(event.name), nearest(event.name, bbTagNames())));
        else if (event.kind == BbEvent::Open &&
                 shownTag(text, event).startsWith(QLatin1String("[/")))
            report.addEach(text.offsetOf(event),
                           Words::tr("\"%1\" opens, as it has a key").arg(shownTag(text, event)));
        else
            checkParameters(text, event, open, report);
    }
}

void checkBbMalformed(const BbCode &text, Report &report)
{
    for (const BbEvent &event : text.events()) {
        if (event.kind == BbEvent::Malformed && bbTagNames().contains(event.name) &&
            !text.isOfValue(event))
            report.add(text.offsetOf(event),
                       Words::tr("\"%1\" is no tag, and prints as it stands: a tag is "
                                 "[name] or [name key=value], without quotation marks")
                           .arg(shownTag(text, event).trimmed()));
    }
}

void checkBbLonely(const BbCode &text, Report &report)
{
    for (const int index : text.lonely()) {
        const BbEvent &event = text.events().at(index);
        if (!bbTagNames().contains(event.name) || text.isOfValue(event))
            continue;
        const bool isLost = event.kind == BbEvent::Open && actsWhenClosed(event.name);
        report.addAs(isLost ? Severity::Error : Severity::Warning, text.offsetOf(event),
                     lonelyMessage(event));
    }
}

void checkBbCrossed(const BbCode &text, Report &report)
{
    const QVector<BbEvent> &events = text.events();
    QHash<int, int> openOf;
    for (const BbPair &pair : text.pairs())
        openOf.insert(pair.close, pair.open);
    QSet<int> paired(openOf.cbegin(), openOf.cend());
    QVector<int> open;
    for (int i = 0; i < events.size(); ++i) {
        if (paired.contains(i))
            open.append(i);
        const int own = openOf.value(i, i);
        if (own == i)
            continue;
        if (open.constLast() != own)
            report.addAs(crossingSeverity(events.at(i), events.at(open.constLast())),
                         text.offsetOf(events.at(i)),
                         Words::tr("\"[/%1]\" closes in front of \"[/%2]\", which opened "
                                   "inside of it")
                             .arg(events.at(i).name, events.at(open.constLast()).name));
        paired.remove(own);
        while (!open.isEmpty() && !paired.contains(open.constLast()))
            open.removeLast();
    }
}

void checkBbPictures(const BbCode &text, Report &report)
{
    for (const BbEvent &event : text.events()) {
        if (event.kind != BbEvent::Open || event.name != QLatin1String("img"))
            continue;
        const QString name = event.parameters.value(QStringLiteral("name"));
        if (name.isEmpty())
            report.add(text.offsetOf(event),
                       Words::tr("\"[img]\" names no picture: write [img name=logo][/img]"));
        else if (text.options().pictureOf && !name.contains(bbValueSign())) {
            const QString fault = text.options().pictureOf(name).fault;
            if (!fault.isEmpty())
                report.add(text.offsetOf(event), fault);
        }
    }
}

void checkBbAmbiguousPictures(const BbCode &text, Report &report)
{
    for (const BbEvent &event : text.events()) {
        const QString name = event.parameters.value(QStringLiteral("name"));
        if (event.kind != BbEvent::Open || event.name != QLatin1String("img") || name.isEmpty() ||
            !text.options().pictureOf)
            continue;
        const QStringList files = text.options().pictureOf(name).files;
        if (files.size() > 1 && !isNamed(name, files.constFirst()))
            report.add(
                text.offsetOf(event),
                Words::tr("the name \"%1\" fits %n files, and the first of them is taken: %2",
                          nullptr, files.size())
                    .arg(clipped(name), clipped(files.join(QStringLiteral(", ")))));
    }
}

void checkBbCodes(const BbCode &text, Report &report)
{
    const QVector<BbEvent> &events = text.events();
    QHash<int, int> openOf;
    for (const BbPair &pair : text.pairs())
        openOf.insert(pair.close, pair.open);
    int last = -1;
    for (int i = 0; i < events.size(); ++i) {
        if (!isCodeTag(events.at(i).name))
            continue;
        // What holds another tag for a code has a finding for it.
        if (openOf.value(i, i) == last && last >= 0)
            checkBbCode(text, {last, i}, report);
        last = i;
    }
}

void checkCodes(const Analysis &analysis, Report &report)
{
    for (const Piece &piece : analysis.pieces()) {
        if (!piece.filled || analysis.options().form != Form::Document)
            continue;
        for (const Text &code : piece.filled->codes) {
            const QByteArray payload = code.characters.mid(templates::qrTag.size()).toUtf8();
            const QString message = codeMessage(CodeKind::QrCode, payload, analysis.options());
            if (!message.isEmpty() && code.firstOffset() != Text::nowhere)
                report.add(code.firstOffset(), message);
        }
    }
}

void checkBbLargeText(const BbCode &text, Report &report)
{
    const std::optional<Paper> &paper = text.options().paper;
    if (!paper || paper->fonts.isEmpty())
        return;
    for (const BbEvent &event : text.events()) {
        const QString size = event.parameters.value(QStringLiteral("size"));
        if (event.kind != BbEvent::Open ||
            (size != QLatin1String("large") && size != QLatin1String("middle")))
            continue;
        const PaperFont &font = fontOfPaper(*paper, fontOfSize(size));
        const QSize usual = paper->fonts.constFirst().cell;
        if (font.cell.width() > usual.width() || font.cell.height() > usual.height())
            continue;
        report.add(text.offsetOf(event),
                   Words::tr("\"%1\" text isn't larger than other text on %2: both have "
                             "characters of %3 x %4 dots")
                       .arg(size, paper->name)
                       .arg(font.cell.width())
                       .arg(font.cell.height()));
    }
}

void checkBbTagsInTemplate(const Analysis &analysis, Report &report)
{
    const LonelyMarkup lonely = lonelyMarkupOf(analysis.source().lines());
    if (lonely.offset != Text::nowhere) {
        report.add(lonely.offset,
                   Words::tr("\"%1\" is markup of templates: with it the text counts as a "
                             "template, and its tags of BBCode print without their brackets")
                       .arg(clipped(lonely.text)));
        return;
    }
    for (const Piece &piece : analysis.pieces()) {
        for (const TemplateLine &line : piece.lines)
            reportBbTags(piece, line, report);
    }
}

}  // namespace templatelint
