#pragma once

#include <QString>
#include <QStringView>
#include <QVarLengthArray>

#include "printerdocs/template/attributetag_p.h"
#include "printerdocs/template/textedits_p.h"

namespace templates {

/// Whether a value makes the group around its tag vanish: it is empty, a number of at most
/// countsAsZero in size, or "nan".
bool vanishesWithItsGroup(QStringView value);

/// One template line while its attribute tags are being replaced.
///
/// The text is a gap buffer: what lies left of the gap has been scanned, what lies right of it has
/// not. A tag is cut at the gap and its value goes in front of the unscanned part, so that the
/// value is scanned in its turn. Unmatched brackets are known on both sides at any moment, so that
/// each step costs no more than the characters it moves, however long the line is.
template <typename Edits>
class SubstitutionText
{
public:
    SubstitutionText(QStringView line, Edits edits);

    /// Moves the scan to the next tag and cuts it out.
    /// @return what stood between the angle brackets, valid up to the next call of anything; null
    ///         if there was no tag
    QStringView takeTag();

    /// Puts the value of the tag that was cut out in front of the unscanned part.
    void insert(QStringView value);

    /// Removes the innermost "[" to "]" around the scan position, if both exist. Intended: the scan
    /// goes on at the same index of the shortened text, so tags that slide to its left stay
    /// unexpanded (test lineIsFilled).
    void dropGroup();

    /// The whole text.
    QString toString() const;

private:
    struct Bracket
    {
        int fromEnd;  ///< distance from the end of the buffer, which is stable
        bool isOpen;
        int unmatchedClose;  ///< index here of the first unmatched "]" from here on; -1: none
    };

    int rightSize() const { return m_buffer.size() - m_rightBegin; }
    void keep(int count);
    void drop(int count);
    void makeRoom(int count);
    void pushBrackets(QStringView text);
    void pushBracket(int fromEnd, bool isOpen);

    const Edits m_edits;
    QVarLengthArray<QChar, 256> m_buffer;
    int m_leftSize = 0;
    int m_rightBegin = 0;
    int m_tagSize = 0;                     ///< of the tag that was cut out last
    QVarLengthArray<int, 16> m_openLeft;   ///< indices of the unmatched "[" of the scanned part
    QVarLengthArray<Bracket, 16> m_right;  ///< brackets of the unscanned part, the nearest last
};

/// A line with its attribute tags filled: as PrinterDocumentFormatter::processDocAttributes() does
/// it, whatever the values are.
/// @param valueOf gives a text for what stands in a tag, valid up to the next call
template <typename ValueOf, typename Edits = NoEdits>
QString filledLine(const QString &line, ValueOf valueOf, Edits edits = Edits())
{
    if (AttributeTag::find(line.constData(), 0, line.size()).begin < 0)
        return line;
    SubstitutionText<Edits> text(line, edits);
    for (QStringView tag = text.takeTag(); !tag.isNull(); tag = text.takeTag()) {
        const QStringView value = valueOf(tag);
        text.insert(value);
        if (vanishesWithItsGroup(value))
            text.dropGroup();
    }
    return text.toString();
}

}  // namespace templates
