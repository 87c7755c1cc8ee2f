#include "road.h"

#include <algorithm>

#include "printerdocs/printerdocumentformatter.h"
#include "printerdocs/template/entries_p.h"
#include "printerdocs/template/fiscaldivision_p.h"
#include "printerdocs/template/keyword_p.h"
#include "printerdocs/template/removal_p.h"
#include "printerdocs/template/symbolsline_p.h"
#include "printerdocs/template/templatetags_p.h"
#include "tags.h"
#include "tracing.h"

namespace templatelint {

namespace {

/// The template's range that characters come from or stand in for, if any do.
void addRange(const Text &text, int from, int end, QVector<Range> &ranges)
{
    Range range{Text::nowhere, Text::nowhere};
    for (int i = from; i < end; ++i) {
        const int offset = Text::offsetOf(text.origins.at(i));
        if (offset == Text::nowhere)
            continue;
        if (range.first == Text::nowhere)
            range.first = offset;
        range.last = offset;
    }
    if (range.first != Text::nowhere)
        ranges.append(range);
}

/// The template's lines from the first through the last that a text comes from.
class LineRanges
{
public:
    explicit LineRanges(const QVector<Text> &lines)
    {
        for (const Text &line : lines)
            addRange(line, 0, line.size(), m_ranges);
    }

    /// A tag that was filled with nothing has left no trace in the text of its line.
    void addWhole(const Text &text, QVector<Range> &ranges) const
    {
        const int added = ranges.size();
        addRange(text, 0, text.size(), ranges);
        if (ranges.size() == added)
            return;
        Range &range = ranges.last();
        range = {rangeOf(range.first).first, rangeOf(range.last).last};
    }

private:
    const Range &rangeOf(int offset) const
    {
        const auto next =
            std::upper_bound(m_ranges.cbegin(), m_ranges.cend(), offset,
                             [](int value, const Range &range) { return value < range.first; });
        return *std::prev(next);
    }

    QVector<Range> m_ranges;
};

/// A text with something of it removed, and where that was noted.
template <typename Rule>
Text reduced(const Text &text, QVector<Range> &removed, Rule rule)
{
    return traced(text, rule, [&removed](const Text &part, QStringView) {
        addRange(part, 0, part.size(), removed);
    });
}

/// The parts to remove may go over line ends, and values may hold line ends.
void removeParts(QVector<Text> &lines, QVector<Range> &removed)
{
    if (lines.isEmpty())
        lines.append(Text());  // an empty text is one line
    if (!templates::holdMarkedParts(charactersOf(lines)))
        return;
    Text joined;
    for (int i = 0; i < lines.size(); ++i) {
        if (i > 0)
            joined.append(QLatin1Char('\n'), Text::nowhere);
        joined.append(lines.at(i));
    }
    joined = reduced(joined, removed, [](QString text, templates::HeardEdits edits) {
        templates::removeMarkedParts(text, edits);
    });
    lines.clear();
    int from = 0;
    for (int end = 0; end >= 0; from = end + 1) {
        end = joined.characters.indexOf(QLatin1Char('\n'), from);
        lines.append(joined.mid(from, end < 0 ? -1 : end - from));
        if (end < 0)
            break;
    }
}

/// The lines with the mark of a copy behind the first one with the document's number.
QVector<Text> withCopyMark(const QVector<Text> &lines)
{
    const int number = templates::lineOfCopyNumber(charactersOf(lines));
    if (number < 0)
        return lines;
    const Text &line = lines.at(number);
    const UpperCased upper(line.characters);
    const int tag = upper.placeInLine(upper.copy().indexOf(templates::copyNumberTag));
    Text mark;
    mark.append(PrinterDocumentFormatter::tr(templates::copyMark),
                Text::standIn(line.origins.at(tag)));
    QVector<Text> result = lines;
    result.insert(number + 1, mark);
    return result;
}

void step(Progress *progress)
{
    if (progress != nullptr)
        progress->step();
}

/// The lines with their values, without those that come out empty.
QVector<Text> filledLines(const QVector<Text> &lines, const ValueOf &valueOf, Road &road,
                          Progress *progress)
{
    QVector<Text> result;
    result.reserve(lines.size());
    for (const Text &line : lines) {
        step(progress);
        if (templates::isSymbolsLine(line.characters))
            continue;
        if (!line.characters.contains(QLatin1Char('<'))) {
            result.append(line);
            continue;
        }
        const Filled filled = fill(line, valueOf);
        if (filled.endless) {
            road.endless = filled.endless;
            return {};
        }
        road.hidden += filled.hidden;
        if (!filled.text.isEmpty())
            result.append(filled.text);
    }
    return result;
}

/// What images and the tag for a blank line leave of a line; false: nothing, not even a blank line.
bool reduceLine(Text &line, QVector<Range> &removed)
{
    if (!templates::mayHoldRemovals(line.characters))
        return true;
    bool isLeft = true;
    line = reduced(line, removed, [&isLeft](QString text, templates::HeardEdits edits) {
        isLeft = templates::removeImages(text, edits);
        templates::emptyMarkedLine(text, edits);
    });
    return isLeft;
}

void takePayload(Text &line, Road &road)
{
    const int qr = line.characters.indexOf(templates::qrTag);
    if (qr < 0)
        return;
    addRange(line, qr, line.size(), road.payloads);
    road.codes.append(line.mid(qr));
    line = line.characters.leftRef(qr).trimmed().isEmpty() ? Text() : line.mid(0, qr);
}

}  // namespace

QVector<QVector<Text>> fiscalPieces(const QVector<Text> &lines)
{
    bool found = false;
    QVector<QVector<Text>> texts;
    const auto pieces = templates::fiscalPieces(lines, PrinterDocumentFormatter::PARTS, found);
    for (const auto &piece : pieces) {
        if (piece.isText)
            texts.append(piece.lines);
    }
    return texts;
}

QVector<Text> withEntries(const QVector<Text> &lines, const QString &text)
{
    const templates::Entries entries(text);
    QVector<Text> result;
    result.reserve(lines.size());
    for (const Text &line : lines) {
        if (!templates::holdsEntries(line.characters)) {
            result.append(line);
            continue;
        }
        QStringList unpacked;
        const Text together =
            traced(line, [&](const QString &characters, templates::HeardEdits edits) {
                entries.appendUnpacked(unpacked, characters, edits);
            });
        int begin = 0;
        for (const QString &part : qAsConst(unpacked)) {
            result.append(together.mid(begin, part.size()));
            begin += part.size();
        }
    }
    return result;
}

QVector<Text> unpackedLines(const QVector<Text> &lines, const PrinterDocument &document)
{
    return withEntries(document.isCopy() ? withCopyMark(lines) : lines, document.entries());
}

Road travel(const QVector<Text> &lines, const PrinterDocument &document, const ValueOf &valueOf,
            Form form, Progress *progress)
{
    Road road;
    if (lines.isEmpty())
        return road;
    QVector<Text> filled = filledLines(unpackedLines(lines, document), valueOf, road, progress);
    removeParts(filled, road.removed);
    const LineRanges ranges(lines);
    Markup markup;
    for (Text &line : filled) {
        step(progress);
        const Text whole = line;
        const bool isLeft = reduceLine(line, road.removed);
        if (line.isEmpty())
            ranges.addWhole(whole, road.removed);
        if (!isLeft)
            continue;
        road.prepared.append(line);
        const int codes = road.codes.size();
        if (form == Form::Document)
            takePayload(line, road);
        if (line.isEmpty())
            continue;
        road.lines.append(markup.print(line));
        road.lines.last().hasCode = road.codes.size() > codes;
    }
    road.openFormats = markup.openFormats();
    road.badCodes = markup.badCodes();
    return road;
}

QStringList charactersOf(const QVector<Text> &lines)
{
    QStringList result;
    result.reserve(lines.size());
    for (const Text &line : lines)
        result.append(line.characters);
    return result;
}

QStringList preparedByEngine(const QStringList &lines, const PrinterDocument &document)
{
    PrinterDocumentFormatter formatter(0, nullptr);
    // Lines could name a file of symbols; there is none in a folder that is none.
    formatter.setSpecCharsPath(QStringLiteral("/dev/null"));
    formatter.setTemplate(lines.join(QLatin1Char('\n')));
    return formatter.prepareDocument(document);
}

namespace {

/// The place in the template of a tag that stayed; `nowhere` if the template isn't to blame.
int placeOf(const Printed &line, int begin, int end)
{
    const QVector<int> &origins = line.text.origins;
    if (line.text.isOnePiece(begin, end))
        return origins.at(begin);
    const bool isWholeLineTags = std::all_of(origins.cbegin() + begin, origins.cbegin() + end,
                                             [](int origin) { return origin == Text::nowhere; });
    if (!isWholeLineTags)
        return Text::nowhere;
    QString letters = line.text.characters.mid(begin + 1, end - begin - 2);
    return line.wholeLineTags.value(letters.remove(QLatin1Char(':')), Text::nowhere);
}

}  // namespace

QVector<Leftover> leftoversOf(const Road &road)
{
    QVector<Leftover> leftovers;
    for (const Printed &line : road.lines) {
        const QString &text = line.text.characters;
        int begin = -1;
        for (int i = 0; i < text.size(); ++i) {
            if (text.at(i) == QLatin1Char('<'))
                begin = i;
            if (text.at(i) != QLatin1Char('>') || begin < 0)
                continue;
            const int offset = placeOf(line, begin, i + 1);
            if (offset != Text::nowhere)
                leftovers.append(
                    {offset, text.mid(begin + 1, i - begin - 1), !line.tabs.isEmpty()});
            begin = -1;
        }
    }
    return leftovers;
}

}  // namespace templatelint
