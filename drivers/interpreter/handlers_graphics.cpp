#include <algorithm>

#include "interpreter/dots_p.h"
#include "interpreter/handlers_p.h"

namespace printerslib::drivers {

namespace {

/// Index of GS ( L's first operand behind the length, which is pL pH or p1 to p4, and m and fn.
int firstGraphicsOperand(const StreamCommand &command)
{
    return command.row->payload == PayloadRule::LengthDouble ? 6 : 4;
}

QSize sizeFrom(const StreamCommand &command, int index)
{
    return {command.word(index), command.word(index + 2)};
}

// Bit image modes: 0 and 1 have 8 dots, 32 and 33 have 24; the even ones are twice as wide.
void addBitImage(Printer &printer, const StreamCommand &command)
{
    const int mode = command.operand(0);
    const bool isTall = mode == 32 || mode == 33;
    if (!isTall && mode != 0 && mode != 1) {
        printer.noteFor(command, QStringLiteral("has no mode %1").arg(mode));
        return;
    }
    Paper::Picture picture = pictureOfColumns(command.payload(), command.word(1), isTall ? 3 : 1);
    picture.dotsPerPixel = {mode % 2 == 0 ? 2 : 1, isTall ? 1 : 3};
    printer.addToLine(picture);
}

/// Raster modes: 1 doubles the width, 2 the height.
QSize rasterScale(int mode)
{
    return {(mode & 1) != 0 ? 2 : 1, (mode & 2) != 0 ? 2 : 1};
}

void printRaster(Printer &printer, const StreamCommand &command)
{
    const int mode = choiceOf(command, 0, 4);
    if (mode < 0) {
        printer.noteFor(command, QStringLiteral("has no mode %1").arg(command.operand(0)));
        return;
    }
    printer.endLineFor(command);
    const QSize bytesAndRows = sizeFrom(command, 1);
    Paper::Picture picture =
        pictureOfRows(command.payload(), 8 * bytesAndRows.width(), bytesAndRows.height());
    picture.dotsPerPixel = rasterScale(mode);
    printer.printPicture(picture);
}

/// Columns of any height.
void printTallBitImage(Printer &printer, const StreamCommand &command)
{
    printer.endLineFor(command);
    const QSize columnsAndBytes = sizeFrom(command, 1);
    Paper::Picture picture =
        pictureOfColumns(command.payload(), columnsAndBytes.width(), columnsAndBytes.height());
    picture.dotsPerPixel = rasterScale(std::max(0, choiceOf(command, 0, 4)));
    printer.printPicture(picture);
}

void defineImage(Printer &printer, const StreamCommand &command)
{
    printer.graphics.download =
        pictureOfColumns(command.payload(), 8 * command.operand(0), command.operand(1));
}

void printKept(Printer &printer, const StreamCommand &command, Paper::Picture picture, QSize scale)
{
    if (picture.size.isEmpty()) {
        printer.noteFor(command, QStringLiteral("finds no picture"));
        return;
    }
    printer.endLineFor(command);
    picture.dotsPerPixel = scale;
    printer.printPicture(picture);
}

void printImage(Printer &printer, const StreamCommand &command)
{
    const int mode = choiceOf(command, 0, 4);
    if (mode >= 0)
        printKept(printer, command, printer.graphics.download, rasterScale(mode));
}

/// FS q n, then for each picture xL xH yL yH, in cells of eight dots, and its columns.
void defineNvImages(Printer &printer, const StreamCommand &command)
{
    const QByteArray data = command.payload();
    const auto wordAt = [&data](int at) {
        return static_cast<unsigned char>(data.at(at)) +
               256 * static_cast<unsigned char>(data.at(at + 1));
    };
    printer.graphics.nvPictures.clear();
    int at = 0;
    for (int i = 0; i < command.operand(0) && at + 4 <= data.size(); ++i) {
        const int columns = 8 * wordAt(at);
        const int bytes = wordAt(at + 2);
        const qint64 size = qint64(columns) * bytes;
        at += 4;
        const QByteArray dots = data.mid(at, int(std::min<qint64>(size, data.size() - at)));
        printer.graphics.nvPictures.append(pictureOfColumns(dots, columns, bytes));
        at += dots.size();
    }
}

void printNvImage(Printer &printer, const StreamCommand &command)
{
    const int mode = choiceOf(command, 1, 4);
    if (mode >= 0)
        printKept(printer, command, printer.graphics.nvPictures.value(command.operand(0) - 1),
                  rasterScale(mode));
}

Paper::Picture graphicsOf(const QByteArray &data, QSize size, bool isColumns)
{
    if (!isColumns)
        return pictureOfRows(data, size.width(), size.height());
    // The last byte of a column may hold more dots than the picture has.
    return croppedPicture(pictureOfColumns(data, size.width(), (size.height() + 7) / 8), size);
}

/// Two operands, of which each doubles or not.
QSize graphicsScale(const StreamCommand &command, int index)
{
    return {std::clamp(command.operand(index), 1, 2), std::clamp(command.operand(index + 1), 1, 2)};
}

int keyOf(const StreamCommand &command, int index)
{
    return 256 * command.operand(index) + command.operand(index + 1);
}

/// a kc1 kc2 b xL xH yL yH, then for each colour its number and its dots. One colour is kept.
template <auto member, bool isColumns>
void defineGraphics(Printer &printer, const StreamCommand &command)
{
    const int first = firstGraphicsOperand(command);
    (printer.graphics.*member)
        .insert(keyOf(command, first + 1),
                graphicsOf(command.payload().mid(1), sizeFrom(command, first + 4), isColumns));
}

template <auto member>
void printStoredGraphics(Printer &printer, const StreamCommand &command)
{
    const int first = firstGraphicsOperand(command);
    printKept(printer, command, (printer.graphics.*member).value(keyOf(command, first)),
              graphicsScale(command, first + 2));
}

template <auto member>
void deleteGraphics(Printer &printer, const StreamCommand &command)
{
    (printer.graphics.*member).remove(keyOf(command, firstGraphicsOperand(command)));
}

template <auto member>
void deleteAllGraphics(Printer &printer, const StreamCommand & /*command*/)
{
    (printer.graphics.*member).clear();
}

/// a bx by c xL xH yL yH and dots: waits for the command that prints.
template <bool isColumns>
void storeGraphics(Printer &printer, const StreamCommand &command)
{
    const int first = firstGraphicsOperand(command);
    Paper::Picture picture = graphicsOf(command.payload(), sizeFrom(command, first + 4), isColumns);
    picture.dotsPerPixel = graphicsScale(command, first + 1);
    printer.graphics.waiting.append(picture);
}

void printGraphics(Printer &printer, const StreamCommand &command)
{
    if (printer.graphics.waiting.isEmpty())
        printer.noteFor(command, QStringLiteral("finds no picture"));
    else
        printer.endLineFor(command);
    for (const Paper::Picture &picture : qAsConst(printer.graphics.waiting))
        printer.printPicture(picture);
    printer.graphics.waiting.clear();
}

constexpr auto stored = &GraphicsStore::stored;
constexpr auto downloaded = &GraphicsStore::downloaded;

constexpr HandlerRow graphicsRows[] = {
    {CommandId::BitImage, addBitImage},
    {CommandId::RasterImage, printRaster},
    {CommandId::TallBitImage, printTallBitImage},
    {CommandId::DefineImage, defineImage},
    {CommandId::PrintImage, printImage},
    {CommandId::DefineNvImages, defineNvImages},
    {CommandId::PrintNvImage, printNvImage},
    {CommandId::GraphicsDefine, defineGraphics<stored, false>},
    {CommandId::GraphicsDefineColumns, defineGraphics<stored, true>},
    {CommandId::GraphicsPrintStored, printStoredGraphics<stored>},
    {CommandId::GraphicsDelete, deleteGraphics<stored>},
    {CommandId::GraphicsDeleteAll, deleteAllGraphics<stored>},
    {CommandId::DownloadsDefine, defineGraphics<downloaded, false>},
    {CommandId::DownloadsDefineColumns, defineGraphics<downloaded, true>},
    {CommandId::DownloadsPrint, printStoredGraphics<downloaded>},
    {CommandId::DownloadsDelete, deleteGraphics<downloaded>},
    {CommandId::DownloadsDeleteAll, deleteAllGraphics<downloaded>},
    {CommandId::GraphicsStore, storeGraphics<false>},
    {CommandId::GraphicsStoreColumns, storeGraphics<true>},
    {CommandId::GraphicsPrint, printGraphics},
};

}  // namespace

HandlerRows graphicsHandlers()
{
    return {std::begin(graphicsRows), std::end(graphicsRows)};
}

}  // namespace printerslib::drivers
