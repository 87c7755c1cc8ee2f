#pragma once

#include <QByteArray>
#include <QHash>
#include <QVector>
#include <array>

#include "printerdocs/template/printedline_p.h"
#include "printerdocs/template/templatetags_p.h"
#include "text.h"

namespace templatelint {

/// A numeric tag whose number can't be read.
struct BadCode
{
    int offset;
    QString inner;
};

/// A tag as the markup took it out.
struct TakenTag
{
    int offset;
    QString text;
};

/// A line as it is printed.
struct Printed
{
    Text text;           ///< what is left of the markup
    QByteArray formats;  ///< as many as the library gives
    QByteArray fonts;
    unsigned char fontBehind = 0;    ///< in which the next line begins
    QVector<int> tabs;               ///< offsets of its <S>
    QVector<TakenTag> fontSwitches;  ///< in their order
    /// What is said for a line with text only: fonts, alignment, spacing, formats of whole lines.
    QVector<TakenTag> lineTags;
    bool hasCode = false;      ///< a QR code stood behind it
    bool hasBrackets = false;  ///< of groups that stayed

    /// Whether the template, and no value, has several <S> on the line.
    bool repeatsTab() const;

    QHash<QString, int> wholeLineTags;  ///< by letters: the offset of the tag for the whole line,
                                        ///< whose open and close tags come from nowhere
};

/// The number of the font, from 0, that a tag such as "<F2>" switches to.
unsigned char fontOf(const QString &tag);

/// The line markup of the lines of a piece, one after the other, read by the engine's rule.
class Markup
{
public:
    Markup();

    Printed print(const Text &line);

    /// Offsets of the tags that switched the formats on which are on now.
    QVector<int> openFormats() const;
    const QVector<BadCode> &badCodes() const { return m_badCodes; }

private:
    static void hearOfLine(const TakenTag &tag, Printed &printed);
    void hear(const Text &removed, QStringView inserted, Printed &printed);

    templates::CarriedStyle m_carried;
    std::array<int, std::size(templates::rangeOrder)>
        m_openTags;  ///< by format: the offset of its tag; Text::nowhere: it is off
    QVector<BadCode> m_badCodes;
};

}  // namespace templatelint
