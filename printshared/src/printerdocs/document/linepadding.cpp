#include "printerdocs/document/linepadding_p.h"

#include <QStringView>
#include <algorithm>
#include <cstring>

namespace documents {

namespace {

/// Whether a line with so many places for the padding may take it.
bool fitsWhenPadded(QStringView line, int places, int missing)
{
    return line.size() + qint64(missing) * places <= longestPaddedLine;
}

QStringView textOf(const QString &line)
{
    return line;
}
QStringView textOf(const LineWithTab &line)
{
    return line.text;
}

int tabsIn(const QString &line)
{
    return static_cast<int>(std::count(line.begin(), line.end(), tab));
}
int tabsIn(const LineWithTab &line)
{
    return line.tab < 0 ? 0 : 1;
}

const QChar *nextTab(const QChar *from, const QString &line)
{
    return std::find(from, line.cend(), tab);
}
const QChar *nextTab(const QChar *, const LineWithTab &line)
{
    return line.text.begin() + line.tab;
}

// A line that stays as it is is shared, or becomes a text of its own.
QString asText(const QString &line)
{
    return line;
}
QString asText(const LineWithTab &line)
{
    return line.text.toString();
}

/// @return the place behind them
QChar *writeBlanks(QChar *to, int count)
{
    // A receipt is not much wider: one copy of these is faster than to write one after the other.
    constexpr char16_t blanks[] = u"                                                ";
    constexpr int most = sizeof(blanks) / sizeof(QChar) - 1;
    while (count > 0) {
        const int copied = qMin(count, most);
        std::memcpy(to, blanks, sizeof(QChar) * static_cast<std::size_t>(copied));
        to += copied;
        count -= copied;
    }
    return to;
}

/// Every tab of the line, of which it has so many, replaced by one blank and as many more.
template <typename Line>
QString withTabs(const Line &line, int tabs, int moreBlanks)
{
    if (tabs == 0)
        return asText(line);
    const QStringView text = textOf(line);
    QString result(static_cast<int>(text.size()) + tabs * moreBlanks, Qt::Uninitialized);
    QChar *to = result.data();
    const QChar *from = text.begin();
    for (; tabs > 0; --tabs) {
        const QChar *const place = nextTab(from, line);
        to = writeBlanks(std::copy(from, place, to), moreBlanks + 1);
        from = place + 1;
    }
    std::copy(from, text.end(), to);
    return result;
}

QString behindBlanks(QStringView line, int blanks)
{
    QString result(blanks + static_cast<int>(line.size()), Qt::Uninitialized);
    std::copy(line.begin(), line.end(), writeBlanks(result.data(), blanks));
    return result;
}

template <typename Line>
QString padded(const Line &line, ETextAlignment alignment, int width)
{
    const QStringView text = textOf(line);
    const int missing = width - qMin(width, static_cast<int>(text.size()));
    const int tabs = alignment == AlignJustify || missing == 0 ? tabsIn(line) : 0;
    if (missing == 0)
        return withTabs(line, tabs, 0);
    switch (alignment) {
        case AlignRight:
        case AlignCenter:
            if (fitsWhenPadded(text, 1, missing))
                return behindBlanks(text, alignment == AlignRight ? missing : missing / 2);
            return withTabs(line, tabsIn(line), 0);
        case AlignJustify:
            return withTabs(line, tabs, fitsWhenPadded(text, tabs, missing) ? missing : 0);
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

QString paddedLine(const LineWithTab &line, ETextAlignment alignment, int width)
{
    return padded(line, alignment, width);
}

}  // namespace documents
