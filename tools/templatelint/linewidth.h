#pragma once

#include <QVector>

#include "markup.h"
#include "templatelint.h"

namespace templatelint {

/// The font of a character. The paper has at least one.
const PaperFont &fontAt(const Printed &line, int index, const Paper &paper);

/// What the printed characters of a line take up on a paper, and where the paper breaks it.
class LineWidth
{
public:
    /// @param values characters that stand for values of any length count nothing
    enum Values { Known, CountNothing };
    LineWidth(const Printed &line, const Paper &paper, Form form, Values values = Known);

    /// In units of the paper.
    int total() const;
    bool isTooWide() const { return total() > m_paper.width; }
    /// Indexes of the characters with which a further row begins, as a printer wraps the line.
    QVector<int> breaks() const;
    /// The same width in characters of the line's first font, and how many of these a row has.
    int characters() const;
    int charactersPerRow() const;

private:
    long long widthOfAll() const;
    /// Blanks that each <S> gets beside its own place.
    int tabBlanks() const;
    int cellAt(int index) const;
    int widthAt(int index) const;

    const Printed &m_line;
    const Paper &m_paper;
    const Form m_form;
    const Values m_values;
};

/// Where a row ends inside a word or a number.
struct BrokenWord
{
    int begin;  ///< of the word in the line
    int end;
    int place;      ///< index of the first character in the next row
    bool isNumber;  ///< digits are parted
};

/// The words and numbers that these breaks part.
QVector<BrokenWord> brokenWords(const QString &line, const QVector<int> &breaks);

/// The character that stands for a value where there is no document.
QChar valueSign();

}  // namespace templatelint
