#include "printerdocs/template/entries_p.h"

#include <algorithm>
#include <numeric>

#include "printerdocs/template/keyword_p.h"
#include "printerdocs/template/templatetags_p.h"

namespace templates {

namespace {

QStringList linesOfEntries(QString entries)
{
    entries.replace(QLatin1Char('='), tabTag);
    return entries.split(QLatin1Char('\t'));
}

/// Whether entries hold the tag in whose place they go. To unpack them again in each other would
/// never end, so the tag stays in them and is an attribute's from then on.
bool unpackEndlessly(const QStringList &entries)
{
    return std::any_of(entries.cbegin() + 1, entries.cend(),
                       [](const QString &entry) { return holdsEntries(entry); });
}

int charactersIn(const QStringList &lines)
{
    return std::accumulate(lines.cbegin(), lines.cend(), 0,
                           [](int count, const QString &line) { return count + line.size(); });
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
        const int size = m_carried.size() + m_text.size() - m_from;
        m_cut = qMin(entriesTag.size(), qMax(0, size - place));
        const int fromRest = qMax(0, place - m_carried.size());
        before = m_carried.left(place) + m_text.midRef(m_from, fromRest);
        moveTo(m_from + place + entriesTag.size() - m_carried.size());
        m_carried.clear();
        return true;
    }
    /// How many characters the place of the tag took.
    int cut() const { return m_cut; }
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
    int m_cut = 0;
};

}  // namespace

Entries::Entries(const QString &text)
    : m_lines(linesOfEntries(text)), m_once(m_lines.size() == 1 || unpackEndlessly(m_lines))
{}

template <typename Edits>
void Entries::appendUnpacked(QStringList &result, const QString &line, Edits edits) const
{
    const QString all = Edits::areHeard ? m_lines.join(QString()) : QString();
    EntriesScan scan(line);
    QString before;
    int written = 0;  // in front of what was put in last
    while (scan.next(before)) {
        edits.replace(written + before.size(), scan.cut(), all);
        QStringList unpacked = m_lines;
        unpacked.first().prepend(before);
        scan.carry(unpacked.takeLast());
        if constexpr (Edits::areHeard)
            written += charactersIn(unpacked);
        result += unpacked;
        if (m_once)
            break;
    }
    result.append(scan.rest());
}

template void Entries::appendUnpacked(QStringList &, const QString &, NoEdits) const;
template void Entries::appendUnpacked(QStringList &, const QString &, HeardEdits) const;

}  // namespace templates
