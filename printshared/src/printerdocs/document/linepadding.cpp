#include "printerdocs/document/linepadding_p.h"

#include <algorithm>

namespace documents {

namespace {

/// Whether a line of this size with so many places for the padding may take it.
bool fitsWhenPadded(int size, int places, int missing)
{
    return missing > 0 && (places == 0 || size + qint64(missing) * places <= longestPaddedLine);
}

int missingIn(int size, int width)
{
    return width - qMin(width, size);
}

/// Every tab of the line replaced by one blank and as many more.
QString withTabs(const QString &line, int tabs, int moreBlanks)
{
    if (tabs == 0)
        return line;
    QString result(line.size() + tabs * moreBlanks, Qt::Uninitialized);
    QChar *to = result.data();
    const QChar *from = line.cbegin();
    for (; tabs > 0; --tabs) {
        const QChar *const place = std::find(from, line.cend(), tab);
        to = std::fill_n(std::copy(from, place, to), moreBlanks + 1, blank);
        from = place + 1;
    }
    std::copy(from, line.cend(), to);
    return result;
}

QString behindBlanks(const QString &line, int blanks)
{
    QString result(blanks + line.size(), Qt::Uninitialized);
    std::copy(line.cbegin(), line.cend(), std::fill_n(result.begin(), blanks, blank));
    return result;
}

}  // namespace

QString paddedLine(const QString &line, ETextAlignment alignment, int width)
{
    const int missing = missingIn(line.size(), width);
    const auto tabs = [&line] { return static_cast<int>(line.count(tab)); };
    switch (alignment) {
        case AlignRight:
        case AlignCenter:
            if (fitsWhenPadded(line.size(), 1, missing))
                return behindBlanks(line, alignment == AlignRight ? missing : missing / 2);
            return withTabs(line, tabs(), 0);
        case AlignJustify:
            return withTabs(line, tabs(),
                            fitsWhenPadded(line.size(), tabs(), missing) ? missing : 0);
        case AlignLeft:
            break;
    }
    return missing > 0 ? line : withTabs(line, tabs(), 0);
}

void padLine(valueformat::TextBuffer &line, int tabPlace, ETextAlignment alignment, int width)
{
    const int missing = missingIn(line.size(), width);
    const int tabs = tabPlace < 0 ? 0 : 1;
    const bool isInFront = alignment == AlignRight || alignment == AlignCenter;
    if (isInFront && fitsWhenPadded(line.size(), 1, missing))
        return line.replace(0, 0, blank, alignment == AlignRight ? missing : missing / 2);
    if (tabs == 0 || (alignment == AlignLeft && missing > 0))
        return;
    const bool widens = alignment == AlignJustify && fitsWhenPadded(line.size(), tabs, missing);
    line.replace(tabPlace, tabs, blank, widens ? missing + 1 : 1);
}

}  // namespace documents
