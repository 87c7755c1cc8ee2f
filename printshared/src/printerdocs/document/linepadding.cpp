#include "printerdocs/document/linepadding_p.h"

#include <QStringView>
#include <algorithm>

namespace documents {

namespace {

/// How many times a line takes the padding.
int paddedPlaces(QStringView line, ETextAlignment alignment)
{
    switch (alignment) {
        case AlignRight:
        case AlignCenter:
            return 1;
        case AlignJustify:
            return static_cast<int>(std::count(line.begin(), line.end(), tab));
        case AlignLeft:
            break;
    }
    return 0;
}

bool fitsWhenPadded(QStringView line, ETextAlignment alignment, int missing)
{
    const int places = paddedPlaces(line, alignment);
    return places == 0 || line.size() + qint64(missing) * places <= longestPaddedLine;
}

// A line that stays as it is is shared, or becomes a text of its own.
QString asText(const QString &line)
{
    return line;
}
QString asText(QStringView line)
{
    return line.toString();
}

/// Every tab of the line replaced by one blank and as many more.
template <typename Line>
QString withTabs(const Line &line, int moreBlanks)
{
    const auto tabs = static_cast<int>(std::count(line.begin(), line.end(), tab));
    if (tabs == 0)
        return asText(line);
    QString result(static_cast<int>(line.size()) + tabs * moreBlanks, Qt::Uninitialized);
    QChar *to = result.data();
    for (const QChar c : line) {
        if (c == tab)
            to = std::fill_n(to, moreBlanks + 1, blank);
        else
            *to++ = c;
    }
    return result;
}

QString behindBlanks(QStringView line, int blanks)
{
    QString result(blanks + static_cast<int>(line.size()), Qt::Uninitialized);
    std::fill_n(result.begin(), blanks, blank);
    std::copy(line.begin(), line.end(), result.begin() + blanks);
    return result;
}

template <typename Line>
QString padded(const Line &line, ETextAlignment alignment, int width)
{
    const int missing = width - qMin(width, static_cast<int>(line.size()));
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
    return asText(line);
}

}  // namespace

QString paddedLine(const QString &line, ETextAlignment alignment, int width)
{
    return padded(line, alignment, width);
}

QString paddedLine(QStringView line, ETextAlignment alignment, int width)
{
    return padded(line, alignment, width);
}

}  // namespace documents
