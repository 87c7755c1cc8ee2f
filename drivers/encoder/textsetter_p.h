#pragma once

#include <vector>

#include "encoder/charactersetter_p.h"
#include "encoder/layoutsheet_p.h"
#include "encoder/linefiller_p.h"
#include "printerdocs/textprinterdocument.h"

namespace printerslib::drivers {

/// Puts text blocks on the paper.
class TextSetter
{
public:
    /// @param sheet outlives this, and so does the document
    TextSetter(LayoutSheet &sheet, const TextPrinterDocument &document,
               const PrintOptions &options);

    void add(const DocumentBlock &block);

private:
    void addLine(const LineFiller::Line &line, int number, int spacing);
    void noteFormats(int formats);

    LayoutSheet &m_sheet;
    LineFiller m_filler;
    CharacterSetter m_characters;
    std::vector<LineFiller::RowEnd> m_ends;  ///< of the line
    int m_leastHeight = 1;                   ///< of a row of text
    bool m_isSpaced = false;
};

}  // namespace printerslib::drivers
