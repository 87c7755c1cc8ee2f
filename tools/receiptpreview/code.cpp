#include "code.h"

#include <printerslib/drivers/symbologydrawer.h>

namespace receiptpreview {

namespace {

using Print = printerslib::drivers::Paper;

Code encode(const QByteArray &payload, Print::Symbology symbology)
{
    static const printerslib::drivers::SymbologyDrawer drawer;
    Print::Code code;
    code.symbology = symbology;
    code.payload = payload;
    drawer.draw(code);
    return {MonochromeImage(code.modules.width(), code.modules.height(), code.rows), code.fault};
}

}  // namespace

Code encodeBarcode(const QByteArray &payload, DocumentBlock::EBarcodeType type)
{
    if (type != DocumentBlock::BarcodeBbCode)
        return {MonochromeImage(), QStringLiteral("The symbology %1 isn't known").arg(type)};
    return encode(payload, Print::Symbology::Code128);
}

Code encodeQrCode(const QByteArray &payload)
{
    return encode(payload, Print::Symbology::QrCode);
}

}  // namespace receiptpreview
