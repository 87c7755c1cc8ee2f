#include "encoder/rasterroom_p.h"

#include <algorithm>

#include "encoder/drawncodes_p.h"
#include "encoder/hazards_p.h"

namespace printerslib::drivers {

namespace {

using Row = PrintLayout::Row;

int wholeBands(int height)
{
    return (height + bandRows - 1) / bandRows * bandRows;
}

bool goesAsDots(const PrintLayout &layout, const Row &row)
{
    switch (row.kind) {
        case Row::Text:
            return row.isRaster;
        case Row::Picture:
            return true;
        case Row::Code:
            return !isDrawnByPrinter(layout.target.profile(), layout.codes.at(row.first));
        default:
            return false;
    }
}

PrintDots dotsOf(const PrintLayout &layout, const Row &row)
{
    if (row.kind == Row::Text)
        return placedDots(layout.rasterOf(row), 0);
    if (row.kind == Row::Code)
        return placedDots(pictureOfCode(layout.codes.at(row.first)), row.left);
    return placedDots(layout.pictures.at(row.first), row.left);
}

/// How many rows of paper dots take, if the ones below them are blank.
int paperOf(const PrintLayout &layout, const Row &row, int room)
{
    const PrinterProfile &profile = layout.target.profile();
    const bool isStrips = profile.rasterCommand() == RasterCommand::RasterBlock;
    const PrintDots dots = dotsOf(layout, row);
    if (dots.bytesPerRow == 0)
        return row.height;
    if (!isStrips)
        return wholeBands(row.height);
    const hazards::Rules rules = hazards::rulesOf(profile);
    const std::vector<int> bands =
        hazards::bandsFor(hazards::rowsWithin(dots, rules), row.height + room);
    return bands.empty() ? row.height : std::max(row.height, bands.back() + bandRows);
}

}  // namespace

int rasterroom::below(const PrintLayout &layout, size_t row)
{
    int room = layout.rows[row].feed;
    for (size_t i = row + 1; i < layout.rows.size() && layout.rows[i].kind == Row::Feed; ++i)
        room += layout.rows[i].height + layout.rows[i].feed;
    return room;
}

void rasterroom::make(PrintLayout &layout)
{
    if (layout.target.profile().rasterCommand() == RasterCommand::SwecoinRows)
        return;
    for (size_t i = 0; i < layout.rows.size(); ++i) {
        Row &row = layout.rows[i];
        if (!goesAsDots(layout, row))
            continue;
        // Where whole bands have room, all do.
        const int room = below(layout, i);
        if (row.height + room >= wholeBands(row.height))
            continue;
        const int missing = paperOf(layout, row, room) - row.height - room;
        row.feed += std::max(0, missing);
    }
}

}  // namespace printerslib::drivers
