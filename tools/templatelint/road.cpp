#include "road.h"

#include <algorithm>

#include "printerdocs/printerdocumentformatter.h"
#include "printerdocs/template/symbolsline_p.h"
#include "printerdocs/template/templatetags_p.h"
#include "tags.h"

namespace templatelint {

namespace {

bool holdEntriesTag(const QStringList &entries)
{
    return std::any_of(entries.cbegin() + 1, entries.cend(), [](const QString &entry) {
        const QString upperCased = entry.toUpper();
        return upperCased.contains(templates::entriesTag);
    });
}

/// A line that is searched for the tag of the entries from front to back: what was put in last, and
/// the rest.
class EntriesScan
{
public:
    explicit EntriesScan(const Text &line) : m_line(line), m_upper(line.characters) {}

    /// Moves behind the next tag.
    /// @param before the text in front of it
    /// @param origin that of what goes in its place
    /// @return whether there is one
    bool next(Text &before, int &origin)
    {
        const QString carried = m_carried.characters.toUpper();
        const int from = m_upper.placeInCopy(m_from);
        // A tag can have come together where the two meet.
        const int seam = std::min(carried.size(), templates::entriesTag.size() - 1);
        const QString around =
            carried.right(seam) + m_upper.copy().midRef(from, templates::entriesTag.size() - 1);
        const int inSeam = around.indexOf(templates::entriesTag);
        const int inRest = inSeam < 0 ? m_upper.copy().indexOf(templates::entriesTag, from) : -1;
        if (inSeam < 0 && inRest < 0)
            return false;
        const int place = carried.size() + (inSeam < 0 ? inRest - from : inSeam - seam);
        const int begin = inSeam < 0 ? m_upper.placeInLine(inRest) : m_from;
        origin = Text::standIn(Text::offsetOf(m_line.origins.at(begin)));
        const int ofRest = place - m_carried.size();
        before = m_carried.mid(0, place);
        before.append(m_line, m_from, std::max(0, ofRest));
        m_from = std::min(m_from + ofRest + templates::entriesTag.size(), m_line.size());
        m_carried = Text();
        return true;
    }
    void carry(const Text &text) { m_carried = text; }
    Text rest() const
    {
        Text text = m_carried;
        text.append(m_line, m_from);
        return text;
    }

private:
    const Text &m_line;
    const UpperCased m_upper;
    Text m_carried;
    int m_from = 0;
};

void unpackEntries(const Text &line, const QStringList &entries, QVector<Text> &result)
{
    const bool once = entries.size() == 1 || holdEntriesTag(entries);
    EntriesScan scan(line);
    Text current;
    int origin = Text::nowhere;
    while (scan.next(current, origin)) {
        for (int i = 0; i < entries.size(); ++i) {
            if (i > 0) {
                result.append(current);
                current = Text();
            }
            current.append(entries.at(i), origin);
        }
        scan.carry(current);
        if (once)
            break;
    }
    result.append(scan.rest());
}

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

/// Removes what stands from one tag through the next of the other kind.
bool removeSpans(Text &text, QLatin1String open, QLatin1String close, QVector<Range> &removed)
{
    int begin = text.characters.indexOf(open);
    Text kept;
    int read = 0;
    while (begin >= 0) {
        const int end = text.characters.indexOf(close, begin);
        if (end < 0)
            break;
        kept.append(text, read, begin - read);
        read = end + close.size();
        addRange(text, begin, read, removed);
        begin = text.characters.indexOf(open, read);
    }
    if (read == 0)
        return false;
    kept.append(text, read);
    text = kept;
    return true;
}

bool hasRemovals(const Text &line)
{
    return line.characters.contains(templates::removalBegin) ||
           line.characters.contains(templates::removalEnd) ||
           line.characters.contains(QLatin1Char('\n'));
}

/// The parts to remove may go over line ends, and values may hold line ends.
void removeParts(QVector<Text> &lines, QVector<Range> &removed)
{
    if (lines.isEmpty())
        lines.append(Text());  // an empty text is one line
    if (std::none_of(lines.cbegin(), lines.cend(), hasRemovals))
        return;
    Text joined;
    for (int i = 0; i < lines.size(); ++i) {
        if (i > 0)
            joined.append(QLatin1Char('\n'), Text::nowhere);
        joined.append(lines.at(i));
    }
    removeSpans(joined, templates::removalBegin, templates::removalEnd, removed);
    lines.clear();
    int from = 0;
    for (int end = 0; end >= 0; from = end + 1) {
        end = joined.characters.indexOf(QLatin1Char('\n'), from);
        lines.append(joined.mid(from, end < 0 ? -1 : end - from));
        if (end < 0)
            break;
    }
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
    if (removeSpans(line, templates::imageBegin, templates::imageEnd, removed) && line.isEmpty())
        return false;
    if (line.characters.contains(templates::blankLineTag)) {
        addRange(line, 0, line.size(), removed);
        line = Text();
    }
    return true;
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

QVector<Text> withCopyMark(const QVector<Text> &lines)
{
    QVector<Text> result = lines;
    for (int i = 0; i < result.size(); ++i) {
        const Text &line = result.at(i);
        const UpperCased upper(line.characters);
        const int tag = upper.copy().indexOf(templates::copyNumberTag);
        if (tag < 0)
            continue;
        Text mark;
        mark.append(PrinterDocumentFormatter::tr(templates::copyMark),
                    Text::standIn(line.origins.at(upper.placeInLine(tag))));
        result.insert(i + 1, mark);
        break;
    }
    return result;
}

QVector<Text> withEntries(const QVector<Text> &lines, const QString &text)
{
    QString entries = text;
    entries.replace(QLatin1Char('='), templates::tabTag);
    const QStringList list = entries.split(QLatin1Char('\t'));
    QVector<Text> result;
    result.reserve(lines.size());
    for (const Text &line : lines)
        unpackEntries(line, list, result);
    return result;
}

Road travel(const QVector<Text> &lines, const ValueOf &valueOf, const QString *entries, Form form,
            Progress *progress)
{
    Road road;
    if (lines.isEmpty())
        return road;
    QVector<Text> filled = filledLines(entries != nullptr ? withEntries(lines, *entries) : lines,
                                       valueOf, road, progress);
    removeParts(filled, road.removed);
    Markup markup;
    for (Text &line : filled) {
        step(progress);
        if (!reduceLine(line, road.removed))
            continue;
        road.prepared.append(line);
        if (form == Form::Document)
            takePayload(line, road);
        if (!line.isEmpty())
            road.lines.append(markup.print(line));
    }
    road.openFormats = markup.openFormats();
    road.badCodes = markup.badCodes();
    return road;
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
                leftovers.append({offset, text.mid(begin + 1, i - begin - 1), line.hasTab});
            begin = -1;
        }
    }
    return leftovers;
}

}  // namespace templatelint
