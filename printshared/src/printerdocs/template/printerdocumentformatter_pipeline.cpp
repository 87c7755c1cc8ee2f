#include <QFile>
#include <algorithm>

#include "printerdocs/printerdocumentformatter.h"
#include "printerdocs/template/charsearch_p.h"
#include "printerdocs/template/documentvalues_p.h"
#include "printerdocs/template/linefilling_p.h"
#include "printerdocs/template/symbolsline_p.h"
#include "printerdocs/template/templatetags_p.h"

namespace {

using namespace templates;

/// Removes everything from the first `open` through the next `close` until no such pair is left; a
/// removal may bring the halves of another tag together, which then counts.
/// @return whether anything was removed
bool removeSpans(QString &text, QLatin1String open, QLatin1String close)
{
    int begin = text.indexOf(open);
    int end = begin < 0 ? -1 : text.indexOf(close, begin);
    if (end < 0)
        return false;
    QString kept;
    kept.reserve(text.size());
    int read = 0;
    while (end >= 0) {
        kept.append(text.constData() + read, begin - read);
        read = end + close.size();
        // Only a tag that begins in the last characters kept can have come together.
        const int seam = qMin(kept.size(), open.size() - 1);
        const QString around = kept.right(seam) + text.mid(read, open.size() - 1);
        const int joined = around.indexOf(open);
        if (joined >= 0) {
            const int back = seam - joined;
            begin = read;
            end = text.indexOf(close, read + open.size() - back);
            if (end < 0)
                break;
            kept.chop(back);
            continue;
        }
        begin = text.indexOf(open, read);
        end = begin < 0 ? -1 : text.indexOf(close, begin);
    }
    kept.append(text.constData() + read, text.size() - read);
    text = kept;
    return true;
}

/// Whether a line has to be upper-cased to tell if a keyword stands in it; most lines haven't. What
/// a letter beyond ASCII becomes isn't foreseen here.
bool mayHoldKeyword(QStringView line, QLatin1String keyword)
{
    constexpr ushort lastOfAscii = 0x7F;
    const QChar bracket(keyword.front());
    const QLatin1Char letter(keyword.data()[1]);
    for (int place = placeOf(bracket, line); place >= 0;
         place = placeOf(bracket, line, place + 1)) {
        if (place + 1 == line.size())
            return false;
        const QChar next = line[place + 1];
        if (next.unicode() > lastOfAscii || next.toUpper() == letter)
            return true;
    }
    return false;
}

/// Whether a keyword of capitals stands in the line in any case.
bool holdsKeyword(const QString &line, QLatin1String keyword)
{
    if (!mayHoldKeyword(line, keyword))
        return false;
    const QString upperCased = line.toUpper();
    return upperCased.contains(keyword);
}

/// Whether a line may hold a tag of the parts to remove or of an image, or is several lines.
bool mayHoldParts(const QString &line)
{
    const auto end = line.cend();
    for (auto c = line.cbegin(); c != end; ++c) {
        if (*c == QLatin1Char('\n'))
            return true;
        if (*c != QLatin1Char('<') || c + 1 == end)
            continue;
        const auto goesOnLike = [next = *(c + 1)](QLatin1String tag) {
            return next == QLatin1Char(tag.data()[1]);
        };
        if (goesOnLike(blankLineTag) || goesOnLike(removalBegin) || goesOnLike(removalEnd) ||
            goesOnLike(imageBegin))
            return true;
    }
    return false;
}

/// The document's entries as lines of the template language, name and value at the two edges.
QStringList entryLines(const PrinterDocument &document)
{
    QString entries = document.entries();
    entries.replace(QLatin1Char('='), tabTag);
    return entries.split(QLatin1Char('\t'));
}

/// Whether entries hold the tag in whose place they go. To unpack them again in each other would
/// never end, so the tag stays in them and is an attribute's from then on.
bool unpackEndlessly(const QStringList &entries)
{
    return std::any_of(entries.cbegin() + 1, entries.cend(),
                       [](const QString &entry) { return holdsKeyword(entry, entriesTag); });
}

/// A line that is searched for <ENTRIES> from front to back: what was put in last, which doesn't
/// hold the tag, and the rest. Intended: the tag's place counts in the upper-cased copy of the two,
/// and they are cut there themselves; receipts in the field are cut so (test entriesAreUnpacked).
class EntriesScan
{
public:
    explicit EntriesScan(const QString &line) : m_text(line), m_upper(line.toUpper()) {}

    /// Moves behind the next tag. @return whether there is one; `before` is the text in front of it
    bool next(QString &before)
    {
        const int place = placeOfTag();
        if (place < 0)
            return false;
        const int fromRest = qMax(0, place - m_carried.size());
        before = m_carried.left(place) + m_text.midRef(m_from, fromRest);
        moveTo(m_from + place + entriesTag.size() - m_carried.size());
        m_carried.clear();
        return true;
    }
    void carry(const QString &text) { m_carried = text; }
    QString rest() const { return m_carried + m_text.midRef(m_from); }

private:
    /// In the upper-cased copy of what was put in last and the rest; -1: nowhere.
    int placeOfTag() const
    {
        const QString carried = m_carried.toUpper();
        // A tag can have come together where the two meet.
        const int seam = qMin(carried.size(), entriesTag.size() - 1);
        const QString around =
            carried.right(seam) + m_upper.midRef(m_fromInUpper, entriesTag.size() - 1);
        const int inSeam = around.indexOf(entriesTag);
        if (inSeam >= 0)
            return carried.size() - seam + inSeam;
        const int inRest = m_upper.indexOf(entriesTag, m_fromInUpper);
        return inRest < 0 ? -1 : carried.size() + inRest - m_fromInUpper;
    }
    void moveTo(int place)
    {
        const int end = qMin(place, m_text.size());
        if (m_upper.size() == m_text.size()) {
            m_fromInUpper = end;
        } else {
            for (int i = m_from; i < end; ++i)
                m_fromInUpper += QString(m_text.at(i)).toUpper().size();
        }
        m_from = end;
    }

    const QString m_text;
    const QString m_upper;
    QString m_carried;
    int m_from = 0;
    int m_fromInUpper = 0;
};

/// The lines that one line of the template becomes.
void appendUnpacked(QStringList &result, const QString &line, const QStringList &entries, bool once)
{
    EntriesScan scan(line);
    QString before;
    while (scan.next(before)) {
        QStringList unpacked = entries;
        unpacked.first().prepend(before);
        scan.carry(unpacked.takeLast());
        result += unpacked;
        if (once)
            break;
    }
    result.append(scan.rest());
}

/// Fills the attributes in. A blank line of the template stays; one that comes out empty goes.
void fillLines(QStringList &lines, const PrinterDocument &document)
{
    DocumentValues values(document);
    QStringList filled;
    filled.reserve(lines.size());
    for (const QString &line : qAsConst(lines)) {
        const QString withValues = lineWithValues(line, values);
        if (line.isEmpty() || !withValues.isEmpty())
            filled.append(withValues);
    }
    lines = filled;
}

}  // namespace

QStringList PrinterDocumentFormatter::prepareDocument(const PrinterDocument &document) const
{
    if (m_templateLines.isEmpty())
        return {};
    QStringList lines = m_templateLines;
    addCopyInfo(lines, document);
    unpackEntries(lines, document);
    loadSpecSymbols(lines);
    fillLines(lines, document);
    const bool remove = document.removeFiscalAttrs();
    if (!lines.isEmpty() && std::none_of(lines.cbegin(), lines.cend(), mayHoldParts))
        return lines;
    removeXParts(lines, remove);
    QStringList prepared;
    prepared.reserve(lines.size());
    for (QString &line : lines) {
        // Intended: what an image tag holds is printed in no form (the images of a document are
        // blocks, not text): all that is left of it is that it goes (test templateIsPrepared).
        const bool hadImages = removeSpans(line, imageBegin, imageEnd);
        if (hadImages && line.isEmpty())
            continue;
        removeXParts(line, remove);
        prepared.append(line);
    }
    return prepared;
}

void PrinterDocumentFormatter::addCopyInfo(QStringList &lines,
                                           const PrinterDocument &document) const
{
    if (!document.isCopy())
        return;
    const auto number = std::find_if(lines.cbegin(), lines.cend(), [](const QString &line) {
        return holdsKeyword(line, copyNumberTag);
    });
    if (number != lines.cend())
        lines.insert(static_cast<int>(number - lines.cbegin()) + 1, tr(copyMark));
}

void PrinterDocumentFormatter::unpackEntries(QStringList &lines,
                                             const PrinterDocument &document) const
{
    const auto isUnpacked = [](const QString &line) { return holdsKeyword(line, entriesTag); };
    if (std::none_of(lines.cbegin(), lines.cend(), isUnpacked))
        return;
    const QStringList entries = entryLines(document);
    const bool once = entries.size() == 1 || unpackEndlessly(entries);
    QStringList result;
    result.reserve(lines.size() + entries.size());
    for (const QString &line : qAsConst(lines)) {
        if (isUnpacked(line))
            appendUnpacked(result, line, entries, once);
        else
            result.append(line);
    }
    lines = result;
}

/// Intended: a set stays for templates without such a line (test
/// loadedSetStaysUntilAnotherIsLoaded).
void PrinterDocumentFormatter::loadSpecSymbols(QStringList &lines) const
{
    const auto last = std::find_if(lines.crbegin(), lines.crend(), isSymbolsLine);
    if (last == lines.crend())
        return;
    const QString path = symbolsFile(*last, m_specCharsPath);
    if (path != m_specialCharacters.fileName() && QFile::exists(path))
        m_specialCharacters.load(path);
    lines.erase(std::remove_if(lines.begin(), lines.end(), isSymbolsLine), lines.end());
}

/// Intended: no lines become one blank line, as an empty text is one line; a receipt of which
/// nothing is left still feeds a line (test noLinesAreOneBlankLine).
void PrinterDocumentFormatter::removeXParts(QStringList &lines, bool remove) const
{
    // The lines are one text here, so a value with line feeds in it becomes several lines.
    const auto changes = [](const QString &line) {
        return line.contains(removalBegin) || line.contains(removalEnd) ||
               line.contains(QLatin1Char('\n'));
    };
    if (!lines.isEmpty() && std::none_of(lines.cbegin(), lines.cend(), changes))
        return;
    QString text = lines.join(QLatin1Char('\n'));
    if (remove) {
        removeSpans(text, removalBegin, removalEnd);
    } else {
        text.remove(removalBegin);
        text.remove(removalEnd);
    }
    lines = text.split(QLatin1Char('\n'));
}

void PrinterDocumentFormatter::removeXParts(QString &line, bool remove) const
{
    if (!line.contains(blankLineTag))
        return;
    if (remove)
        line = QString();
    else
        line.remove(blankLineTag);
}
