#include "code.h"

#include <zint.h>

#include <algorithm>
#include <memory>

namespace receiptpreview {

namespace {

struct SymbolDeleter
{
    void operator()(zint_symbol *symbol) const { ZBarcode_Delete(symbol); }
};
using SymbolPointer = std::unique_ptr<zint_symbol, SymbolDeleter>;

constexpr int bitsPerByte = 8;

MonochromeImage modulesOf(const zint_symbol &symbol, int rows)
{
    MonochromeImage image = MonochromeImage::createEmpty(symbol.width, rows, bitsPerByte);
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < symbol.width; ++column) {
            const int byte = symbol.encoded_data[row][column / bitsPerByte];
            if ((byte >> (column % bitsPerByte) & 1) != 0)
                image.setPixel(column, row, true, bitsPerByte);
        }
    }
    return image;
}

// "Error 320: Invalid character in data" is for zint's own users as far as the colon.
QString faultOf(const zint_symbol &symbol)
{
    const QString text = QString::fromUtf8(symbol.errtxt);
    return text.mid(text.indexOf(QLatin1Char(':')) + 1).trimmed();
}

Code encode(const QByteArray &payload, int symbology)
{
    if (payload.isEmpty())
        return {MonochromeImage(), QStringLiteral("The payload is empty")};
    const SymbolPointer symbol(ZBarcode_Create());
    if (symbol == nullptr)
        return {MonochromeImage(), QStringLiteral("There is no memory for it")};
    symbol->symbology = symbology;
    symbol->input_mode = DATA_MODE;
    const auto *bytes = reinterpret_cast<const unsigned char *>(payload.constData());
    if (ZBarcode_Encode(symbol.get(), bytes, payload.size()) >= ZINT_ERROR)
        return {MonochromeImage(), faultOf(*symbol)};
    const int rows = symbology == BARCODE_QRCODE ? symbol->rows : 1;
    return {modulesOf(*symbol, rows), QString()};
}

}  // namespace

Code encodeBarcode(const QByteArray &payload, DocumentBlock::EBarcodeType type)
{
    if (type != DocumentBlock::BarcodeBbCode)
        return {MonochromeImage(), QStringLiteral("The symbology %1 isn't known").arg(type)};
    const auto isAscii = [](char byte) { return static_cast<unsigned char>(byte) < 0x80; };
    if (!std::all_of(payload.begin(), payload.end(), isAscii))
        return {MonochromeImage(), QStringLiteral("Code 128 holds ASCII characters only")};
    return encode(payload, BARCODE_CODE128);
}

Code encodeQrCode(const QByteArray &payload)
{
    return encode(payload, BARCODE_QRCODE);
}

}  // namespace receiptpreview
