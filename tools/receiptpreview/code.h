#pragma once

#include <QByteArray>
#include <QString>

#include "printerdocs/documentblock.h"
#include "printerdocs/monochromeimage.h"

namespace receiptpreview {

/// A barcode or QR code, one pixel per module without a quiet zone; its rows are aligned to 8 bits.
/// A barcode is one row. With a fault there is no image.
struct Code
{
    MonochromeImage modules;
    QString fault;
};

/// Type 7 is Code 128. No other symbology is known, so any other type is a fault, and so is a
/// payload that the symbology can't hold: nothing but ASCII characters in Code 128.
Code encodeBarcode(const QByteArray &payload, DocumentBlock::EBarcodeType type);

/// A QR code of the bytes as they are, at the error correction level L or as much more as costs no
/// larger symbol. Up to 2953 bytes fit, and more digits and capital letters.
Code encodeQrCode(const QByteArray &payload);

}  // namespace receiptpreview
