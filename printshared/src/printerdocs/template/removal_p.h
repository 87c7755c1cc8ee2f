#pragma once

#include <QString>
#include <QStringList>

#include "printerdocs/template/templatetags_p.h"
#include "printerdocs/template/textedits_p.h"

namespace templates {

/// Whether a line may hold a tag of the parts to remove or of an image, or is several lines.
inline bool mayHoldRemovals(const QString &line)
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

/// Whether one does.
bool holdsRemovals(const QString &line);

/// Whether the lines hold a tag of the parts to remove, or one of them is several.
bool holdMarkedParts(const QStringList &lines);

/// Removes the marked parts of a text, which may be several lines.
template <typename Edits = NoEdits>
void removeMarkedParts(QString &text, Edits edits = Edits());

/// Removes the images of a line. Intended: what an image tag holds is printed in no form (the
/// images of a document are blocks, not text): all that is left of it is that it goes (test
/// templateIsPrepared).
/// @return false if nothing is left of the line, not even a blank one
template <typename Edits = NoEdits>
bool removeImages(QString &line, Edits edits = Edits());

/// Empties a line that has the tag for it.
template <typename Edits = NoEdits>
void emptyMarkedLine(QString &line, Edits edits = Edits());

}  // namespace templates
