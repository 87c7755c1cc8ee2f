#include "printerdocs/document/linepadding_p.h"

#include <QStringView>
#include <algorithm>

namespace documents {

namespace {

/// Whether a line with so many places for the padding may take it.
bool fitsWhenPadded(QStringView line, int places, int missing)
{
    return line.size() + qint64(missing) * places <= longestPaddedLine;
}

int tabsIn(QStringView line)
{
    return static_cast<int>(std::count(line.begin(), line.end(), tab));
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

/// Every tab of the line, of which it has so many, replaced by one blank and as many more.
template <typename Line>
QString withTabs(const Line &line, int tabs, int moreBlanks)
{
    if (tabs == 0)
        return asText(line);
    QString result(static_cast<int>(line.size()) + tabs * moreBlanks, Qt::Uninitialized);
    QChar *to = result.data();
    const QChar *from = line.begin();
    for (; tabs > 0; --tabs) {
        const QChar *const place = std::find(from, line.end(), tab);
        to = std::fill_n(std::copy(from, place, to), moreBlanks + 1, blank);
        from = place + 1;
    }
    std::copy(from, line.end(), to);
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
    const int tabs = alignment == AlignJustify || missing == 0 ? tabsIn(line) : 0;
    if (missing == 0)
        return withTabs(line, tabs, 0);
    switch (alignment) {
        case AlignRight:
        case AlignCenter:
            if (fitsWhenPadded(line, 1, missing))
                return behindBlanks(line, alignment == AlignRight ? missing : missing / 2);
            return withTabs(line, tabsIn(line), 0);
        case AlignJustify:
            return withTabs(line, tabs, fitsWhenPadded(line, tabs, missing) ? missing : 0);
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
