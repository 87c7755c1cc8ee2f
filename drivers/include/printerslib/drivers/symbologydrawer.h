#pragma once

#include <QScopedPointer>

#include "printerslib/drivers/codedrawer.h"

namespace printerslib::drivers {

/// Draws the codes of all symbologies of Paper, by the library zint.
///
/// - Modules are square, and a barcode is one row of them. A row of a PDF417 is one row, too, so
///   that the height of its module is that of the row; those of stacked GS1 DataBar codes are
///   repeated.
/// - A check digit that the payload lacks is added, and one that is wrong is a fault. UPC-E takes
///   the 11 or 12 digits of a UPC-A, too. Code 39 is drawn with its "*", whether the payload has
///   them or not.
/// - GS1-128 and GS1 DataBar Expanded take their elements as they stand, "0104...", or with
///   identifiers in parentheses, "(01)04...". FNC1 in front of all of them is theirs.
/// - Code 128 holds ASCII characters; the byte 1D is the character GS, and not FNC1. Its sets are
///   chosen so that the code becomes short, unless its variant says otherwise.
/// - A MaxiCode isn't made of squares: its modules are dots of the size that its standard wants at
///   203 dots per inch.
/// - A QR code of model 1, which nobody makes any more, is drawn as model 2.
///
/// Any thread may call it. The last code is kept, so that one that is printed over and over is
/// drawn once.
class PRINTERSLIB_DRIVERS_EXPORT SymbologyDrawer : public CodeDrawer
{
public:
    SymbologyDrawer();
    ~SymbologyDrawer() override;

    void draw(Paper::Code &code) const override;

private:
    class LastCode;
    QScopedPointer<LastCode> m_last;
};

}  // namespace printerslib::drivers
