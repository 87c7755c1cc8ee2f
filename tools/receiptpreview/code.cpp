#include "code.h"

#include <printerslib/drivers/symbologydrawer.h>

namespace receiptpreview {

namespace {

using printerslib::drivers::Paper;

Code encode(const QByteArray &payload, Paper::Symbology symbology)
{
    static const printerslib::drivers::SymbologyDrawer drawer;
    Paper::Code code;
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
    return encode(payload, Paper::Symbology::Code128);
}

Code encodeQrCode(const QByteArray &payload)
{
    return encode(payload, Paper::Symbology::QrCode);
}

}  // namespace receiptpreview
