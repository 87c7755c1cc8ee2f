#include "analysis.h"

#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>
#include <algorithm>

#include "printerdocs/document/symbolfile_p.h"
#include "printerdocs/template/attributetag_p.h"
#include "printerdocs/template/symbolsline_p.h"
#include "words.h"

namespace templatelint {

namespace {

bool contain(const QVector<Range> &ranges, int offset)
{
    const auto next =
        std::upper_bound(ranges.cbegin(), ranges.cend(), offset,
                         [](int value, const Range &range) { return value < range.first; });
    return next != ranges.cbegin() && std::prev(next)->last >= offset;
}

void sort(QVector<Range> &ranges)
{
    std::sort(ranges.begin(), ranges.end(),
              [](const Range &a, const Range &b) { return a.first < b.first; });
    // What lies inside an earlier range would hide it from the search.
    int last = -1;
    for (Range &range : ranges)
        range.last = last = std::max(last, range.last);
}

/// Where and why a text isn't XML; empty if it is.
QString xmlFault(const QByteArray &content)
{
    QXmlStreamReader reader(content);
    while (!reader.atEnd())
        reader.readNext();
    return reader.hasError() ? QStringLiteral("%1:%2: %3")
                                   .arg(reader.lineNumber())
                                   .arg(reader.columnNumber() + 1)
                                   .arg(reader.errorString())
                             : QString();
}

/// What is wrong with a file of symbols, empty if nothing is.
QString faultOf(const QString &path, SpecialCharacters &drawings)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Words::tr("the file \"%1\" can't be read: %2").arg(path, file.errorString());
    const QByteArray content = file.read(symbolfile::mostBytes + 1);
    const bool isRead = drawings.load(path);
    QString damage = symbolfile::refusal(content);
    if (damage.isEmpty())
        damage = xmlFault(content);
    if (damage.isEmpty() && !isRead)
        damage = Words::tr("a symbol or the root element is wrong");
    return damage.isEmpty() ? damage
                            : Words::tr("the file \"%1\" is damaged: %2; see \"receipt symbols\"")
                                  .arg(path, damage);
}

/// Of an attribute that may well be missing.
TagVerdict missingInGroup(const TagVerdict &verdict)
{
    TagVerdict result = verdict;
    result.lesser = Severity::Note;
    result.message = verdict.messageInGroup;
    return result;
}

/// Offsets of the tags that something was put in for which these lines still show.
QVector<int> shownOffsets(const QVector<Text> &lines)
{
    QVector<int> offsets;
    for (const Text &line : lines) {
        for (const int origin : line.origins) {
            if (!Text::isTemplate(origin) && origin != Text::nowhere &&
                (offsets.isEmpty() || offsets.constLast() != Text::offsetOf(origin)))
                offsets.append(Text::offsetOf(origin));
        }
    }
    std::sort(offsets.begin(), offsets.end());
    return offsets;
}

QVector<TagFault> tagFaultsOf(const Piece &piece, TagJudge &judge, Progress &progress)
{
    QVector<TagFault> faults;
    for (const TemplateLine &line : piece.lines) {
        progress.step();
        const QVector<bool> inGroups = placesInGroups(line.text.characters);
        for (const AttributeTag &tag : line.tags) {
            const TagVerdict verdict = judge.verdictOf(tag);
            const bool isInGroup = inGroups.at(tag.begin);
            if (verdict.fault == TagVerdict::None || (verdict.isFineInGroup && isInGroup) ||
                !piece.isPrinted(line.offsetOf(tag)))
                continue;
            const bool isMissing = isInGroup && !verdict.messageInGroup.isEmpty();
            faults.append({line.offsetOf(tag) + verdict.index,
                           isMissing ? missingInGroup(verdict) : verdict});
        }
    }
    return faults;
}

/// Whether a road has come by the lines that the library prepares.
bool isRight(const Road &road, const QVector<Text> &lines, const PrinterDocument &document)
{
    return lines.isEmpty() ||
           charactersOf(road.prepared) == preparedByEngine(charactersOf(lines), document);
}

/// The road of lines of which every tag with a name has a value; nothing if it isn't right.
std::optional<Road> blankRoad(const QVector<Text> &lines, Form form, Progress &progress)
{
    const QString blank = QString(QChar(QChar::ObjectReplacementCharacter));
    QMap<QString, QVariant> values;
    PrinterDocument document;
    document.setEntries(blank);
    const auto valueOf = [&](const QString &inner) {
        const QString name = templates::TagParts::of(inner).name.toString();
        values.insert(name, blank);
        return std::optional<QString>(name.isEmpty() ? QString() : blank);
    };
    const Road road = travel(lines, document, valueOf, form, &progress);
    document.setAttributes(values);
    return isRight(road, lines, document) ? std::optional<Road>(road) : std::nullopt;
}

}  // namespace

SymbolFile namedSymbolFile(QVector<Text> &lines, const QString &folder)
{
    SymbolFile result;
    QVector<Text> others;
    others.reserve(lines.size());
    for (const Text &line : qAsConst(lines)) {
        if (!templates::isSymbolsLine(line.characters)) {
            others.append(line);
            continue;
        }
        result.offsets.append(line.origins.at(line.characters.indexOf(templates::symbolsTag)));
        result.path = templates::symbolsFile(line.characters, folder);
    }
    lines = others;
    if (result.offsets.isEmpty())
        return result;
    const QFileInfo file(result.path);
    result.exists = file.exists();
    if (!result.exists)
        result.fault = Words::tr("there is no file \"%1\"").arg(result.path);
    else if (!file.isFile())
        result.fault = Words::tr("\"%1\" is no regular file").arg(result.path);
    return result;
}

SymbolFile takeSymbolFile(QVector<Text> &lines, const QString &folder)
{
    SymbolFile result = namedSymbolFile(lines, folder);
    if (result.exists && result.isUsable())
        result.fault = faultOf(result.path, result.drawings);
    return result;
}

bool Piece::isPrinted(int offset) const
{
    return !contain(blank.removed, offset);
}

bool Piece::isShown(int offset) const
{
    return std::binary_search(shown.cbegin(), shown.cend(), offset);
}

bool Piece::isText(int offset) const
{
    return isPrinted(offset) && !contain(blank.payloads, offset);
}

Analysis::Analysis(const QStringList &lines, const Options &options, Progress &progress)
    : m_options(options), m_source(lines)
{
    if (options.document)
        m_values = std::make_unique<Values>(*options.document);
    const QVector<Text> texts = m_source.lines();
    const QVector<QVector<Text>> pieces =
        options.splitsFiscalParts ? fiscalPieces(texts) : QVector<QVector<Text>>{texts};
    TagJudge judge(m_values.get());
    for (const QVector<Text> &piece : pieces)
        m_pieces.append(pieceOf(piece, judge, progress));
}

Piece Analysis::pieceOf(const QVector<Text> &lines, TagJudge &judge, Progress &progress) const
{
    QVector<Text> texts = lines;
    Piece piece;
    piece.symbols = takeSymbolFile(texts, m_options.symbolFolder);
    const auto blank = blankRoad(lines, m_options.form, progress);
    piece.isSilent = !blank;
    if (!blank)
        return piece;
    piece.blank = *blank;
    for (const Text &line : qAsConst(texts))
        piece.lines.append({line, attributeTags(line.characters)});
    sort(piece.blank.removed);
    sort(piece.blank.payloads);
    piece.tagFaults = tagFaultsOf(piece, judge, progress);
    if (m_values == nullptr)
        return piece;
    const PrinterDocument &document = *m_options.document;
    const auto valueOf = [this](const QString &inner) { return m_values->ofTag(inner); };
    piece.filled = travel(lines, document, valueOf, m_options.form, &progress);
    // The library would fill endless values on and on.
    piece.isSilent = !piece.filled->endless && !isRight(*piece.filled, lines, document);
    if (piece.isSilent)
        piece.filled.reset();
    else
        piece.shown = shownOffsets(piece.filled->prepared);
    return piece;
}

bool Analysis::showsItsShape(const TemplateLine &line) const
{
    if (m_values == nullptr || !m_values->holdMarkup())
        return true;
    const auto holdsMarkup = [](const QString &text) {
        return std::any_of(text.cbegin(), text.cend(),
                           [](QChar c) { return QLatin1String("<>[]").contains(c); });
    };
    return std::none_of(line.tags.cbegin(), line.tags.cend(), [&](const AttributeTag &tag) {
        return isEntriesTag(tag.inner)
                   ? holdsMarkup(m_options.document->entries())
                   : holdsMarkup(m_values->ofTag(tag.inner).value_or(QString()));
    });
}

QVector<const Road *> Analysis::decisiveRoads(const Piece &piece) const
{
    QVector<const Road *> roads;
    if (m_values == nullptr || !m_values->holdMarkup())
        roads.append(&piece.blank);
    if (piece.filled && !piece.filled->endless)
        roads.append(&*piece.filled);
    return roads;
}

void Report::add(int offset, const QString &message)
{
    addAs(m_rule.severity, offset, message);
}

void Report::addAs(Severity severity, int offset, const QString &message)
{
    const Place place = m_source.place(offset);
    const QPair<int, int> key(place.line, place.column);
    if (m_places.contains(key))
        return;
    m_places.insert(key);
    m_findings.append({place.line, place.column, &m_rule, severity, message});
}

void Report::addEach(int offset, const QString &message)
{
    addEachAs(m_rule.severity, offset, message);
}

void Report::addEachAs(Severity severity, int offset, const QString &message)
{
    addEachAt(m_source.place(offset), severity, message);
}

void Report::addEachToLine(int offset, const QString &message)
{
    addEachAt({m_source.place(offset).line, 1}, m_rule.severity, message);
}

void Report::addEachAt(const Place &place, Severity severity, const QString &message)
{
    const QString key = QStringLiteral("%1:%2:").arg(place.line).arg(place.column) + message;
    if (m_messages.contains(key))
        return;
    m_messages.insert(key);
    m_findings.append({place.line, place.column, &m_rule, severity, message});
}

}  // namespace templatelint
