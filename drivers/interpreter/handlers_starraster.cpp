#include <algorithm>

#include "interpreter/dots_p.h"
#include "interpreter/handlers_mechanics_p.h"
#include "interpreter/handlers_p.h"
#include "interpreter/handlers_star_p.h"
#include "interpreter/handlers_starraster_p.h"

namespace printerslib::drivers {

namespace {

/// Rows are one picture, as far as the paper goes; much wider ones than that are several.
constexpr int mostRasterBytes = 8 * 1024 * 1024;

}  // namespace

void flushRasterRows(Printer &printer)
{
    RasterState &raster = printer.raster;
    if (raster.bytesPerRow == 0 || raster.rows.isEmpty())
        return;
    const int rows = raster.rows.size() / raster.bytesPerRow;
    const Paper::Picture picture = pictureOfRows(raster.rows, 8 * raster.bytesPerRow, rows);
    raster.rows.clear();
    const int left = std::exchange(printer.state.leftMargin, raster.leftMargin);
    const int width = std::exchange(printer.state.areaWidth, printer.paperDots - raster.leftMargin);
    printer.printPicture(picture);
    printer.state.leftMargin = left;
    printer.state.areaWidth = width;
}

namespace {

void beginRaster(Printer &printer, const StreamCommand &command)
{
    printer.endLineFor(command);
    printer.raster = RasterState();
}

void endRaster(Printer &printer, const StreamCommand & /*command*/)
{
    flushRasterRows(printer);
}

void resetRaster(Printer &printer, const StreamCommand & /*command*/)
{
    flushRasterRows(printer);
    printer.raster = RasterState();
}

void clearRaster(Printer &printer, const StreamCommand & /*command*/)
{
    printer.raster.rows.clear();
}

/// Digits in front of a zero byte.
int numberOf(const StreamCommand &command)
{
    int number = 0;
    const QByteArray payload = command.payload();
    for (const char c : payload) {
        if (c >= '0' && c <= '9')
            number = std::min(10 * number + (c - '0'), Paper::longest);
    }
    return number;
}

void addRasterRow(Printer &printer, const StreamCommand &command)
{
    RasterState &raster = printer.raster;
    const QByteArray data = command.payload();
    if (data.isEmpty()) {
        flushRasterRows(printer);
        printer.roll.feed(1, printer.state.lineSpacing);
        return;
    }
    if (data.size() != raster.bytesPerRow || raster.rows.size() > mostRasterBytes)
        flushRasterRows(printer);
    raster.bytesPerRow = data.size();
    raster.rows += data;
}

void moveRaster(Printer &printer, const StreamCommand &command)
{
    flushRasterRows(printer);
    printer.roll.feed(numberOf(command), printer.state.lineSpacing);
}

void setRasterLeftMargin(Printer &printer, const StreamCommand &command)
{
    flushRasterRows(printer);
    // In columns of eight dots.
    printer.raster.leftMargin = std::min(8 * numberOf(command), printer.paperDots);
}

template <auto member>
void setRasterMode(Printer &printer, const StreamCommand &command)
{
    printer.raster.*member = numberOf(command);
}

/// What ESC FF does: 0 cuts as the printer is set, here with a bridge; 1 does nothing.
struct EndModeRow
{
    int mode;
    bool cuts;
    Paper::Event::Kind kind;
};

constexpr EndModeRow endModes[] = {
    {0, true, Paper::Event::PartialCut},  {8, true, Paper::Event::Cut},
    {9, true, Paper::Event::Cut},         {12, true, Paper::Event::PartialCut},
    {13, true, Paper::Event::PartialCut},
};

void endRasterPage(Printer &printer, int mode)
{
    flushRasterRows(printer);
    const auto *const row = std::find_if(std::begin(endModes), std::end(endModes),
                                         [mode](const auto &r) { return r.mode == mode; });
    if (row != std::end(endModes))
        printer.roll.cut(row->kind, printer.roll.top());
}

void feedRasterForm(Printer &printer, const StreamCommand & /*command*/)
{
    endRasterPage(printer, printer.raster.formFeedMode);
}

void endRasterTransfer(Printer &printer, const StreamCommand & /*command*/)
{
    endRasterPage(printer, printer.raster.eotMode);
}

void openRasterDrawer(Printer &printer, const StreamCommand &command)
{
    openStarDrawer(printer, numberOf(command) == 2 ? 5 : 2);
}

void ignoreRasterSetting(Printer & /*printer*/, const StreamCommand & /*command*/) {}

constexpr HandlerRow rasterRows[] = {
    {CommandId::RasterBegin, beginRaster},
    {CommandId::RasterEnd, endRaster},
    {CommandId::RasterInitialize, resetRaster},
    {CommandId::RasterClear, clearRaster},
    {CommandId::RasterLine, addRasterRow},
    {CommandId::RasterRow, addRasterRow},
    {CommandId::RasterMove, moveRaster},
    {CommandId::RasterLeftMargin, setRasterLeftMargin},
    {CommandId::RasterFormFeedMode, setRasterMode<&RasterState::formFeedMode>},
    {CommandId::RasterEotMode, setRasterMode<&RasterState::eotMode>},
    {CommandId::RasterFormFeed, feedRasterForm},
    {CommandId::RasterEot, endRasterTransfer},
    {CommandId::RasterDrawer, openRasterDrawer},
    {CommandId::RasterBuzzer, beep},
    {CommandId::RasterPageLength, ignoreRasterSetting},
    {CommandId::RasterQuality, ignoreRasterSetting},
    {CommandId::RasterRightMargin, ignoreRasterSetting},
    {CommandId::RasterTopMargin, ignoreRasterSetting},
    {CommandId::RasterColour, ignoreRasterSetting},
    {CommandId::RasterDiscard, ignoreRasterSetting},
};

}  // namespace

HandlerRows starRasterHandlers()
{
    return {std::begin(rasterRows), std::end(rasterRows)};
}

}  // namespace printerslib::drivers
