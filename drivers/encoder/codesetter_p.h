#pragma once

#include "encoder/layoutsheet_p.h"
#include "printerslib/drivers/codedrawer.h"

namespace printerslib::drivers {

/// Puts barcodes and QR codes on the paper.
class CodeSetter
{
public:
    /// @param sheet, codes outlive this
    CodeSetter(LayoutSheet &sheet, const CodeDrawer &codes);

    void addBarcode(const DocumentBlock &block);
    void addQrCode(const DocumentBlock &block);

private:
    struct Look;
    void add(Paper::Code code, const Look &look, ETextAlignment alignment);
    int moduleFor(Paper::Code code, const Look &look) const;
    bool fits(int modules, int quietModules, int dots) const;
    int leftOf(const Paper::Code &code, const Look &look, ETextAlignment alignment) const;

    LayoutSheet &m_sheet;
    const CodeDrawer &m_codes;
};

}  // namespace printerslib::drivers
