#pragma once

#include <QByteArray>
#include <QHash>
#include <QVector>
#include <array>

#include "printerdocs/documentblock.h"
#include "printerdocs/printerdocumentformatter.h"
#include "text.h"

namespace templatelint {

/// A numeric tag whose number can't be read.
struct BadCode
{
    int offset;
    QString inner;
};

/// A line as it is printed.
struct Printed
{
    Text text;           ///< what is left of the markup
    QByteArray formats;  ///< as many as the library gives
    QByteArray fonts;
    bool hasTab = false;                ///< from <S>
    QHash<QString, int> wholeLineTags;  ///< by letters: the offset of the tag for the whole line,
                                        ///< whose open and close tags come from nowhere
    bool isTraced = true;               ///< whether the origins of the text are known
};

/// The line markup of the lines of a piece, one after the other, as
/// PrinterDocumentFormatter::formatPrintStr() does it. The library says what is printed; where that
/// comes from is worked out here.
class Markup
{
public:
    Markup();

    Printed print(const Text &line);

    /// Offsets of the tags that switched the formats on which are on now.
    QVector<int> openFormats() const;
    const QVector<BadCode> &badCodes() const { return m_badCodes; }

private:
    Text withoutTags(const Text &line, Printed &printed);
    void placeCodes(Text &text);
    void switchFormat(Text &text, int format);
    static void takeFonts(Text &text);

    const PrinterDocumentFormatter m_formatter;
    unsigned char m_format = 0;
    unsigned char m_font = 0;
    ETextAlignment m_alignment = AlignLeft;
    std::array<int, 6> m_openTags;  ///< by format: the offset of its tag; Text::nowhere: it is off
    QVector<BadCode> m_badCodes;
};

}  // namespace templatelint
