#include "printerdocs/bbcodeimage_p.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>
#include <algorithm>
#include <utility>

namespace bbcodeimage {

namespace {

constexpr int rowAlignmentBits = 32;
constexpr int greatestHeight = 384;  // dots
constexpr int scaledWidth = 384;     // dots of the print head
constexpr qint64 greatestPixels = qint64(128) * 1024 * 1024;

QString findFile(const QString &directory, const QString &name)
{
    const QDir folder(directory.isEmpty() ? QDir::currentPath() : directory);
    const QFileInfoList files =
        folder.entryInfoList({name + QLatin1Char('*')}, QDir::Files, QDir::Name);
    return files.isEmpty() ? QString() : files.constFirst().absoluteFilePath();
}

qint64 pixelsOf(const QSize &size)
{
    return qint64(size.width()) * size.height();
}

QImage readPicture(const QString &fileName)
{
    QImageReader reader(fileName);
    if (pixelsOf(reader.size()) > greatestPixels)
        return QImage();
    return reader.read();
}

/// Intended: the height is tested and the width is set, so a tall picture fills the paper and a
/// wide one is left to the printer; stored receipts have their logos in these sizes (test
/// tallPictureIsScaledToTheWidthOfThePaper).
QImage scaledForPaper(const QImage &picture)
{
    if (picture.height() <= greatestHeight)
        return picture;
    const qint64 rows = qint64(picture.height()) * scaledWidth / picture.width();
    if (rows * scaledWidth > greatestPixels)
        return QImage();
    return picture.scaledToWidth(scaledWidth, Qt::SmoothTransformation);
}

bool isBlack(QRgb colour)
{
    return (colour & RGB_MASK) == 0;
}

/// A colour that the picture's table lacks counts as not black.
bool isBlack(const QImage &picture, int colourIndex)
{
    return colourIndex < picture.colorCount() && isBlack(picture.color(colourIndex));
}

/// A one-bit row: its bits are taken as they are, inverted, or dropped, as the two colours are
/// black or not.
void packBits(const QImage &picture, int y, char *row, int rowBytes)
{
    const uchar whereSet = isBlack(picture, 1) ? 0xFF : 0x00;
    const uchar whereClear = isBlack(picture, 0) ? 0xFF : 0x00;
    const uchar *bits = picture.constScanLine(y);
    for (int i = 0; i < rowBytes; ++i)
        row[i] = static_cast<char>((bits[i] & whereSet) | (~bits[i] & whereClear));
    // Behind the picture's width the bits are undefined in QImage and 0 in a MonochromeImage.
    const int usedBits = picture.width() % 8;
    const int usedBytes = (picture.width() + 7) / 8;
    if (usedBits != 0)
        row[usedBytes - 1] = static_cast<char>(row[usedBytes - 1] & (0xFF00 >> usedBits));
    std::fill(row + usedBytes, row + rowBytes, '\0');
}

void packColours(const QImage &picture, int y, char *row)
{
    const auto *colours = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
    for (int x = 0; x < picture.width(); ++x) {
        if (isBlack(colours[x]))
            row[x / 8] = static_cast<char>(row[x / 8] | (0x80 >> (x % 8)));
    }
}

/// Gives each pixel its bit, set where red, green and blue are all 0.
MonochromeImage packed(QImage picture)
{
    MonochromeImage image =
        MonochromeImage::createEmpty(picture.width(), picture.height(), rowAlignmentBits);
    QByteArray bytes = image.image();
    if (bytes.isEmpty())
        return image;
    const bool oneBit = picture.format() == QImage::Format_Mono;
    if (!oneBit)
        picture = std::move(picture).convertToFormat(QImage::Format_ARGB32);
    if (picture.isNull())
        return image;
    const int rowBytes = bytes.size() / picture.height();
    for (int y = 0; y < picture.height(); ++y) {
        char *row = bytes.data() + qsizetype(rowBytes) * y;
        if (oneBit)
            packBits(picture, y, row, rowBytes);
        else
            packColours(picture, y, row);
    }
    image.setImage(bytes);
    return image;
}

}  // namespace

std::optional<MonochromeImage> load(const QString &directory, const QString &name)
{
    const QString fileName = findFile(directory, name);
    if (fileName.isEmpty())
        return std::nullopt;
    QImage picture = readPicture(fileName);
    if (picture.isNull())
        return std::nullopt;
    // Each step lets go of the picture before it: a great one takes a gigabyte in full colours.
    picture = std::move(picture).convertToFormat(QImage::Format_Mono);
    picture = scaledForPaper(picture);
    if (picture.isNull())
        return std::nullopt;
    MonochromeImage image = packed(std::move(picture));
    image.setFileName(fileName);
    return image;
}

}  // namespace bbcodeimage
