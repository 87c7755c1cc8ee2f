#include "linewidth.h"

#include <algorithm>
#include <limits>

#include "printerdocs/document/characterbytes_p.h"
#include "printerdocs/echarformat.h"

namespace templatelint {

namespace {

bool isOfWord(QChar c)
{
    return c.isLetterOrNumber() || c.isMark() || c.isSurrogate();
}

bool isDigitAt(const QString &line, int index)
{
    return index >= 0 && index < line.size() && line.at(index).isDigit();
}

/// Whether a point or comma has digits at both sides.
bool isInNumber(const QString &line, int index)
{
    return QLatin1String(".,:").contains(line.at(index)) && isDigitAt(line, index - 1) &&
           isDigitAt(line, index + 1);
}

/// Whether a sign belongs to the number behind it.
bool isSign(const QString &line, int index)
{
    return QLatin1String("+-").contains(line.at(index)) && isDigitAt(line, index + 1) &&
           (index == 0 || !isOfWord(line.at(index - 1)));
}

bool isPart(const QString &line, int index)
{
    return index >= 0 && index < line.size() &&
           (isOfWord(line.at(index)) || isInNumber(line, index) || isSign(line, index));
}

bool isOfNumber(const QString &line, int index)
{
    return isDigitAt(line, index) || isInNumber(line, index) || isSign(line, index);
}

}  // namespace

const PaperFont &fontAt(const Printed &line, int index, const Paper &paper)
{
    const int number = documents::CharacterBytes(line.fonts).at(index);
    return paper.fonts.at(number >= 0 && number < paper.fonts.size() ? number : 0);
}

QChar valueSign()
{
    return QChar(QChar::ObjectReplacementCharacter);
}

LineWidth::LineWidth(const Printed &line, const Paper &paper, Form form, Values values)
    : m_line(line), m_paper(paper), m_form(form), m_values(values)
{}

int LineWidth::total() const
{
    const int tabs = m_line.text.characters.count(QLatin1Char('\t'));
    const long long width = widthOfAll() + (long long)(tabs)*tabBlanks() * cellAt(0);
    return static_cast<int>(std::min<long long>(width, std::numeric_limits<int>::max()));
}

QVector<int> LineWidth::breaks() const
{
    QVector<int> result;
    const int blanks = tabBlanks();
    long long next = 0;
    const auto take = [&](int width) {
        const bool isFull = next > 0 && next + width > m_paper.width;
        next = isFull ? width : next + width;
        return isFull;
    };
    for (int i = 0; i < m_line.text.size(); ++i) {
        if (take(widthAt(i)))
            result.append(i);
        const bool isTab = m_line.text.characters.at(i) == QLatin1Char('\t');
        for (int blank = 0; isTab && blank < blanks; ++blank)
            take(cellAt(0));
    }
    return result;
}

int LineWidth::characters() const
{
    const int cell = cellAt(0);
    const int width = total();
    return width / cell + (width % cell > 0 ? 1 : 0);
}

int LineWidth::charactersPerRow() const
{
    return m_paper.width / cellAt(0);
}

long long LineWidth::widthOfAll() const
{
    long long width = 0;
    for (int i = 0; i < m_line.text.size(); ++i)
        width += widthAt(i);
    return width;
}

/// All that the line has room for, in cells of its first font. Of several <S> the template is told.
int LineWidth::tabBlanks() const
{
    const long long width = widthOfAll();
    return m_line.tabs.isEmpty() || m_line.repeatsTab() || width >= m_paper.width
               ? 0
               : static_cast<int>((m_paper.width - width) / cellAt(0));
}

int LineWidth::cellAt(int index) const
{
    return m_paper.fonts.isEmpty() || m_line.text.isEmpty()
               ? 1
               : std::max(1, fontAt(m_line, index, m_paper).cell.width());
}

int LineWidth::widthAt(int index) const
{
    if (m_values == CountNothing && m_line.text.characters.at(index) == valueSign())
        return 0;
    const char format = documents::CharacterBytes(m_line.formats).at(index);
    const bool isDouble = m_form == Form::Document && m_paper.hasDoubleWidth &&
                          documents::hasFormat(format, CharDoubleWidth);
    return isDouble ? 2 * cellAt(index) : cellAt(index);
}

QVector<BrokenWord> brokenWords(const QString &line, const QVector<int> &breaks)
{
    QVector<BrokenWord> words;
    for (const int place : breaks) {
        if (!isPart(line, place - 1) || !isPart(line, place))
            continue;
        BrokenWord word{place, place, place,
                        isOfNumber(line, place - 1) && isOfNumber(line, place)};
        while (isPart(line, word.begin - 1))
            --word.begin;
        while (isPart(line, word.end))
            ++word.end;
        words.append(word);
    }
    return words;
}

}  // namespace templatelint
