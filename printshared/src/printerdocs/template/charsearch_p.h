#pragma once

#include <QLatin1String>
#include <QStringView>
#include <algorithm>

namespace templates {

// Searches in the lines of a receipt, which are short: a plain loop is done before a search through
// a function of Qt's has begun.

/// Index of the first such character from `from` on; -1: none.
inline int placeOf(QChar wanted, QStringView text, int from = 0)
{
    const auto found = std::find(text.begin() + from, text.end(), wanted);
    return found == text.end() ? -1 : static_cast<int>(found - text.begin());
}

inline bool standsAt(const QChar *text, const QChar *end, QLatin1String tag)
{
    return end - text >= tag.size() &&
           std::equal(tag.begin(), tag.end(), text,
                      [](char a, QChar b) { return QLatin1Char(a) == b; });
}

/// Index of the first such tag; -1: none.
inline int placeOfTag(QLatin1String tag, QStringView text)
{
    const QChar first(tag.front());
    for (int place = placeOf(first, text); place >= 0; place = placeOf(first, text, place + 1)) {
        if (standsAt(text.begin() + place, text.end(), tag))
            return place;
    }
    return -1;
}

}  // namespace templates
