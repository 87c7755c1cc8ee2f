#include <algorithm>

#include "interpreter/dots_p.h"
#include "interpreter/printer_p.h"

namespace printerslib::drivers {

namespace {

/// The text of a barcode, in cells of a font, in the middle of its bars.
void addBarcodeText(LineItems &items, const Paper::Code &code, QSize cell, int top)
{
    const int width = cell.width() * code.payload.size();
    int left = std::max(0, code.place.left() + (code.place.width() - width) / 2);
    for (const char byte : code.payload) {
        Paper::Cell digit;
        digit.left = left;
        digit.top = top;
        digit.width = quint16(cell.width());
        digit.height = quint16(cell.height());
        digit.character =
            static_cast<unsigned char>(byte) < 0x20 ? u' ' : QLatin1Char(byte).unicode();
        items.cells.append(digit);
        left += cell.width();
    }
}

/// Which of a barcode's texts are there.
struct TextPlaces
{
    bool isAbove;
    bool isBelow;
};

TextPlaces placesOf(const BarcodeState &barcode, const Paper::Code &code)
{
    const bool isDrawn = !code.modules.isEmpty();
    return {isDrawn && (barcode.textPosition & 1) != 0, isDrawn && (barcode.textPosition & 2) != 0};
}

}  // namespace

void Printer::printCode(Paper::Code code, const BarcodeState &barcode)
{
    if (options.codes != nullptr)
        options.codes->draw(code);
    if (!code.fault.isEmpty())
        note(QStringLiteral("a code isn't printed: %1").arg(code.fault));
    const QSize size(code.modules.width() * code.module.width(),
                     code.modules.height() * code.module.height());
    if (size.width() > lineWidth() && code.fault.isEmpty()) {
        code.fault = QStringLiteral("%1 dots are wider than the line of %2")
                         .arg(size.width())
                         .arg(lineWidth());
        note(QStringLiteral("a code isn't printed: %1").arg(code.fault));
    }
    if (!code.fault.isEmpty() || code.modules.isEmpty())
        code.place = QRect();
    else
        code.place = QRect({0, 0}, size);
    if (isPageMode) {
        code.place.moveLeft(line.x);
        line.add(code);
        return;
    }
    const QSize cell =
        profile.fontCells().value(barcode.textFont, profile.fontCells().constFirst());
    const TextPlaces texts = placesOf(barcode, code);
    const int barsTop = texts.isAbove ? cell.height() : 0;
    if (!code.place.isEmpty())
        code.place.moveTo(state.isUpsideDown ? mirrored(alignedLeft(size.width()), size.width())
                                             : alignedLeft(size.width()),
                          barsTop);
    if (state.isUpsideDown)
        turnCode(code, 2);
    LineItems items;
    items.codes.append(code);
    if (texts.isAbove)
        addBarcodeText(items, code, cell, 0);
    if (texts.isBelow)
        addBarcodeText(items, code, cell, barsTop + size.height());
    const int height =
        code.place.isEmpty() ? 0 : barsTop + size.height() + (texts.isBelow ? cell.height() : 0);
    roll.print(Paper::Line::Graphics, items, height, height);
}

}  // namespace printerslib::drivers
