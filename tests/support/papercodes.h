#pragma once

#include <QByteArray>
#include <QVector>

#include "printerdocs/textprinterdocument.h"

/// Blocks for every number of a symbology that a barcode block may carry, with data that fits.
namespace papercodes {

struct CodeExample
{
    int number = 0;         ///< of the block; 0: a QR code
    const char *symbology;  ///< as the streams of other encoders name it
    QByteArray payload;
};

inline const QVector<CodeExample> &codeExamples()
{
    static const QVector<CodeExample> rows{
        {0, "qr", "https://tea.example/coupon?card=004711"},
        {1, "upce", "01234565"},
        {2, "upca", "036000291452"},
        {3, "ean8", "55123457"},
        {4, "ean13", "4600000000015"},
        {5, "code39", "TEA-42"},
        {6, "itf", "12345670"},
        {7, "code128", "Tea 1234 cup"},
        {8, "code93", "TEA 93"},
        {9, "codabar", "A40156B"},
        {10, "gs1-128", "0104600000000015"},
        {11, "gs1-databar-omni", "0460000000001"},
        {12, "gs1-databar-truncated", "0460000000001"},
        {13, "gs1-databar-limited", "0460000000001"},
        {14, "gs1-databar-expanded", "010460000000001510T"},
        {65, "upca", "03600029145"},
        {66, "upce", "0123456"},
        {67, "ean13", "460000000001"},
        {68, "ean8", "5512345"},
        {69, "code39", "TEA42"},
        {70, "itf", "12345678"},
        {71, "codabar", "A401B"},
        {72, "code93", "TEA93"},
        {73, "code128", "12345678"},
        {74, "gs1-128", "0104600000000015"},
        {75, "gs1-databar-omni", "0460000000001"},
        {76, "gs1-databar-truncated", "0460000000001"},
        {77, "gs1-databar-limited", "0460000000001"},
        {78, "gs1-databar-expanded", "010460000000001510T"},
        {79, "code128", "tea 79"},
    };
    return rows;
}

inline DocumentBlock codeBlock(int number, const QByteArray &payload,
                               ETextAlignment alignment = AlignCenter)
{
    DocumentBlock block;
    if (number == 0)
        block.setQrCode(payload);
    else
        block.setBarCode(payload, static_cast<DocumentBlock::EBarcodeType>(number));
    block.setType(number == 0 ? DocumentBlock::BlockQrCode : DocumentBlock::BlockBarcode);
    block.setAlignment(alignment);
    return block;
}

}  // namespace papercodes
