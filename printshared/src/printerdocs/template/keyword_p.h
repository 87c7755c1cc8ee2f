#pragma once

#include <QLatin1String>
#include <QStringList>
#include <algorithm>

#include "printerdocs/template/charsearch_p.h"
#include "printerdocs/template/templatetags_p.h"

namespace templates {

// Every line of a receipt is searched for keywords: what tells that there is none has to cost no
// call.

/// Whether a line has to be upper-cased to tell if a keyword stands in it; most lines haven't. What
/// a letter beyond ASCII becomes isn't foreseen here.
inline bool mayHoldKeyword(QStringView line, QLatin1String keyword)
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
inline bool holdsKeyword(const QString &line, QLatin1String keyword)
{
    if (!mayHoldKeyword(line, keyword))
        return false;
    const QString upperCased = line.toUpper();
    return upperCased.contains(keyword);
}

/// Whether a line holds the tag for the entries.
inline bool holdsEntries(const QString &line)
{
    return holdsKeyword(line, entriesTag);
}

/// Index of the first line with the document's number, behind which a copy is marked; -1: none.
inline int lineOfCopyNumber(const QStringList &lines)
{
    const auto number = std::find_if(lines.cbegin(), lines.cend(), [](const QString &line) {
        return holdsKeyword(line, copyNumberTag);
    });
    return number == lines.cend() ? -1 : static_cast<int>(number - lines.cbegin());
}

}  // namespace templates
