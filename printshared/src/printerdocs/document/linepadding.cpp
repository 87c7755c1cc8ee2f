#include "printerdocs/document/linepadding_p.h"

#include <algorithm>

namespace documents {

namespace {

/// How many times a line takes the padding.
int paddedPlaces(const QString &line, ETextAlignment alignment)
{
    switch (alignment) {
        case AlignRight:
        case AlignCenter:
            return 1;
        case AlignJustify:
            return line.count(tab);
        case AlignLeft:
            break;
    }
    return 0;
}

bool fitsWhenPadded(const QString &line, ETextAlignment alignment, int missing)
{
    const int places = paddedPlaces(line, alignment);
    return places == 0 || line.size() + qint64(missing) * places <= longestPaddedLine;
}

/// Every tab of the line replaced by one blank and as many more.
QString withTabs(const QString &line, int moreBlanks)
{
    int place = line.indexOf(tab);
    if (place < 0)
        return line;
    QString result;
    result.reserve(line.size() + moreBlanks);
    int from = 0;
    for (; place >= 0; place = line.indexOf(tab, from)) {
        result.append(line.constData() + from, place - from);
        result.resize(result.size() + moreBlanks + 1, blank);
        from = place + 1;
    }
    return result.append(line.constData() + from, line.size() - from);
}

QString behindBlanks(const QString &line, int blanks)
{
    QString result(blanks + line.size(), blank);
    std::copy(line.cbegin(), line.cend(), result.begin() + blanks);
    return result;
}

}  // namespace

QString paddedLine(const QString &line, ETextAlignment alignment, int width)
{
    const int missing = width - qMin(width, line.size());
    if (missing == 0 || !fitsWhenPadded(line, alignment, missing))
        return withTabs(line, 0);
    switch (alignment) {
        case AlignRight:
            return behindBlanks(line, missing);
        case AlignCenter:
            return behindBlanks(line, missing / 2);
        case AlignJustify:
            return withTabs(line, missing);
        case AlignLeft:
            break;
    }
    return line;
}

}  // namespace documents
