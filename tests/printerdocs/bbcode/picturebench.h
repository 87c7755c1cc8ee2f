#pragma once

#include <QImage>
#include <QtTest>

#include "printerdocs/bbcodeparser.h"

/// Pictures to be read, and what they have to become.
namespace picturebench {

/// The image of a picture, pixel by pixel.
inline MonochromeImage expectedImage(const QString &fileName)
{
    QImage picture(fileName);
    picture = picture.convertToFormat(QImage::Format_Mono);
    if (picture.height() > 384)
        picture = picture.scaledToWidth(384, Qt::SmoothTransformation);
    MonochromeImage image = MonochromeImage::createEmpty(picture.width(), picture.height(), 32);
    for (int x = 0; x < picture.width(); ++x) {
        for (int y = 0; y < picture.height(); ++y) {
            const QColor colour(picture.pixel(x, y));
            image.setPixel(x, y, colour.red() == 0 && colour.green() == 0 && colour.blue() == 0,
                           32);
        }
    }
    image.setFileName(QFileInfo(fileName).absoluteFilePath());
    return image;
}

/// A picture with slanted stripes in black, white and grey.
inline QImage striped(int width, int height, QImage::Format format = QImage::Format_RGB32)
{
    const QVector<QRgb> colours{qRgb(0, 0, 0), qRgb(255, 255, 255), qRgb(90, 90, 90),
                                qRgb(255, 255, 255)};
    QImage picture(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            picture.setPixel(x, y, colours.at((x / 3 + y / 2) % colours.size()));
    }
    return picture.convertToFormat(format);
}

inline QImage withPalette(int width, int height, QRgb first, QRgb second)
{
    QImage picture(width, height, QImage::Format_Mono);
    picture.setColorTable({first, second});
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            picture.setPixel(x, y, uint(x + y) % 3 == 0 ? 1 : 0);
    }
    return picture;
}

inline void writeFile(const QString &fileName, const QByteArray &bytes)
{
    QFile file(fileName);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

/// The image that a picture of a folder becomes.
inline MonochromeImage loaded(const QString &directory, const QString &name)
{
    BbCodeParser parser;
    parser.setImagesPath(directory);
    parser.parseText(QString("[img name=%1][/img]").arg(name));
    return parser.blocks().value(0).img();
}

}  // namespace picturebench
