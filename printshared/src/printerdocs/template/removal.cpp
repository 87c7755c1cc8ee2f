#include "printerdocs/template/removal_p.h"

#include <algorithm>

#include "printerdocs/template/templatetags_p.h"

namespace templates {

namespace {

/// Removes everything from the first `open` through the next `close` until no such pair is left; a
/// removal may bring the halves of another tag together, which then counts.
/// @return whether anything was removed
template <typename Edits>
bool removeSpans(QString &text, QLatin1String open, QLatin1String close, Edits edits)
{
    int begin = text.indexOf(open);
    int end = begin < 0 ? -1 : text.indexOf(close, begin);
    if (end < 0)
        return false;
    QString kept;
    kept.reserve(text.size());
    int read = 0;
    int joined = 0;  // characters of `open` that stand at the end of what is kept
    while (end >= 0) {
        kept.append(text.constData() + read, begin - read);
        kept.chop(joined);
        edits.replace(kept.size(), joined + end + close.size() - begin, QStringView());
        read = end + close.size();
        // Only a tag that begins in the last characters kept can have come together.
        const int seam = qMin(kept.size(), open.size() - 1);
        const QString around = kept.right(seam) + text.mid(read, open.size() - 1);
        const int place = around.indexOf(open);
        joined = place < 0 ? 0 : seam - place;
        begin = place < 0 ? text.indexOf(open, read) : read;
        end = begin < 0 ? -1 : text.indexOf(close, place < 0 ? begin : read + open.size() - joined);
    }
    kept.append(text.constData() + read, text.size() - read);
    text = kept;
    return true;
}

bool holdsMarkedParts(const QString &line)
{
    return line.contains(removalBegin) || line.contains(removalEnd) ||
           line.contains(QLatin1Char('\n'));
}

}  // namespace

bool holdsRemovals(const QString &line)
{
    return mayHoldRemovals(line) &&
           (holdsMarkedParts(line) || line.contains(blankLineTag) || line.contains(imageBegin));
}

bool holdMarkedParts(const QStringList &lines)
{
    return std::any_of(lines.cbegin(), lines.cend(), holdsMarkedParts);
}

template <typename Edits>
void removeMarkedParts(QString &text, Edits edits)
{
    removeSpans(text, removalBegin, removalEnd, edits);
}

template <typename Edits>
bool removeImages(QString &line, Edits edits)
{
    return !removeSpans(line, imageBegin, imageEnd, edits) || !line.isEmpty();
}

template <typename Edits>
void emptyMarkedLine(QString &line, Edits edits)
{
    if (!line.contains(blankLineTag))
        return;
    edits.replace(0, line.size(), QStringView());
    line = QString();
}

template void removeMarkedParts(QString &, NoEdits);
template void removeMarkedParts(QString &, HeardEdits);
template bool removeImages(QString &, NoEdits);
template bool removeImages(QString &, HeardEdits);
template void emptyMarkedLine(QString &, NoEdits);
template void emptyMarkedLine(QString &, HeardEdits);

}  // namespace templates
