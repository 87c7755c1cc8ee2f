#include "encoder/linedots_p.h"

namespace printerslib::drivers {

namespace {

constexpr int bytesOfColumn = 3;
// Of commands with their operands.
constexpr int bytesOfStart = 5;
constexpr int bytesOfRasterStart = 8;
constexpr int bytesOfFeed = 3;

/// Bytes that a row takes as dots, without what it takes for dots that would be obeyed.
int bytesAsDots(const PrintLayout &layout, const PrintLayout::Row &row)
{
    const PrintDots dots = placedDots(layout.rasterOf(row), 0);
    if (layout.target.profile().rasterCommand() == RasterCommand::RasterBlock)
        return bytesOfRasterStart + dots.bytesPerRow * dots.height;
    const int bands = (dots.height + linedots::height - 1) / linedots::height;
    return bands * (bytesOfStart + linedots::height * dots.bytesPerRow + bytesOfFeed);
}

}  // namespace

bool linedots::areKnownTo(const PrinterProfile &profile)
{
    const RasterCommand raster = profile.rasterCommand();
    switch (profile.dialect()) {
        case Dialect::EscPos:
            return raster == RasterCommand::RasterBlock || raster == RasterCommand::BitImage;
        case Dialect::StarLine:
            return raster == RasterCommand::StarRows;
        case Dialect::Swecoin:
            break;
    }
    return false;
}

linedots::Run linedots::runFrom(const PrintLayout &layout, const PrintLayout::Row &row, int first)
{
    const PrintLayout::Cell *const cells = layout.cells.data() + row.first;
    Run run;
    run.end = first;
    while (run.end < row.count && cells[run.end].isDots)
        ++run.end;
    PrintLayout::Row part = row;
    part.first = row.first + first;
    part.count = run.end - first;
    part.height = height;
    const Paper::Picture picture = layout.rasterOf(part);
    run.columns = columnsOf24(placedDots(picture, 0), 0)
                      .leftJustified(bytesOfColumn * picture.size.width(), '\0', true);
    run.parts = hazards::columnsApart(run.columns, hazards::rulesOf(layout.target.profile()));
    return run;
}

bool linedots::areWorth(const PrintLayout &layout, const PrintLayout::Row &row)
{
    const PrintLayout::Cell *const cells = layout.cells.data() + row.first;
    int bytes = 1;  // of the line's end
    for (int i = 0; i < row.count;) {
        if (!cells[i].isDots) {
            ++bytes;
            ++i;
            continue;
        }
        const Run run = runFrom(layout, row, i);
        if (run.parts.empty())
            return false;
        bytes += run.columns.size() + bytesOfStart * int(run.parts.size());
        i = run.end;
    }
    return bytes <= bytesAsDots(layout, row);
}

}  // namespace printerslib::drivers
