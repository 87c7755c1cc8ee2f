#pragma once

#include <rapidcheck.h>

#include <QByteArray>

#include "commandsets/commandrow_p.h"
#include "streamnotation.h"

/// Streams for laws: known commands with operands of any values, texts, and bytes of any kind
/// between them, so that lengths, ends and unknown commands all occur.
namespace printerstreams {

inline QByteArray anyBytes(int most)
{
    const auto values = *rc::gen::container<std::string>(
        *rc::gen::inRange(0, most + 1),
        rc::gen::map(rc::gen::inRange(0, 256), [](int value) { return static_cast<char>(value); }));
    return QByteArray::fromStdString(values);
}

/// The bytes of a command: its introducer, its operands, and some that may be its data.
inline QByteArray anyCommand(const QVector<const printerslib::drivers::CommandRow *> &rows)
{
    const auto &row = *rows.at(*rc::gen::inRange(0, rows.size()));
    QByteArray operands;
    // Small ones, so that what they count is there at times.
    for (int i = 0; i < row.operandCount; ++i)
        operands += static_cast<char>(*rc::gen::element(0, 0, 0, 1, 2, 3, 5, 16, 48, 255));
    operands.replace(row.selectorAt, row.selectorSize, row.selector, row.selectorSize);
    return QByteArray(row.introducer, row.introducerSize) + operands;
}

inline QByteArray anyPiece(const QVector<const printerslib::drivers::CommandRow *> &rows)
{
    switch (*rc::gen::inRange(0, 6)) {
        case 0:
            return anyBytes(12);
        case 1:
            return "Total 12.50";
        case 2:
            return QByteArray("\x10\x04\x01\x10\x14\x01\x00\x01", 8);
        default:
            return anyCommand(rows);
    }
}

inline QByteArray anyStream(printerslib::drivers::Dialect dialect,
                            printerslib::drivers::Vendor vendor)
{
    const auto &rows = printerslib::drivers::commandsOf(dialect, vendor);
    QByteArray stream;
    const int count = *rc::gen::inRange(0, 12);
    for (int i = 0; i < count; ++i)
        stream += anyPiece(rows);
    return stream;
}

/// Whether a law holds over streams of any model, some of which are any bytes.
template <typename Law>
bool holds(const char *description, const Law &law)
{
    return rc::check(description, [&law] {
        const auto profile = profileOf(*rc::gen::element<const char *>(
            "GENERAL_EPSON_PROTOCOL", "CUSTOM_VKP_80", "CITIZEN_PPU_700", "TSP-TUP",
            "SWECOIN_TM_20XX", "CITIZEN_CTS_2000"));
        const bool isWild = *rc::gen::inRange(0, 4) == 0;
        law(isWild ? anyBytes(60) : anyStream(profile.dialect(), profile.vendor()), profile);
    });
}

}  // namespace printerstreams
