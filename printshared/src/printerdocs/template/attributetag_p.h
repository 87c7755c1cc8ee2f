#pragma once

#include <QStringView>

#include "printerdocs/template/charsearch_p.h"
#include "printerdocs/template/templatetags_p.h"

namespace templates {

/// The position of an attribute tag in a text: "<" to the next ">".
struct AttributeTag
{
    int begin = -1;  ///< of the "<"; -1: there is no such tag from the given position on
    int end = -1;    ///< of the ">"

    /// The first tag from `from` on; shorter ones are passed over, they belong to the line markup.
    static AttributeTag find(const QChar *text, int from, int size)
    {
        while (from < size) {
            const int begin = placeOf(QLatin1Char('<'), QStringView(text, size), from);
            if (begin < 0)
                break;
            const int end = placeOf(QLatin1Char('>'), QStringView(text, size), begin);
            if (end < 0)
                break;
            if (end + 1 - begin >= shortestAttributeTag)
                return {begin, end};
            from = end + 1;
        }
        return {};
    }
};

/// The two parts of what stands in an attribute tag: the format stands behind the last comma, so an
/// expression with commas needs a trailing format.
struct TagParts
{
    QStringView name;
    QStringView format;  ///< null without a comma

    static TagParts of(QStringView inner)
    {
        for (auto comma = inner.size() - 1; comma >= 0; --comma) {
            if (inner[comma] == QLatin1Char(','))
                return {inner.left(comma), inner.mid(comma + 1)};
        }
        return {inner, QStringView()};
    }
};

}  // namespace templates
