#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QVariant>

#include "printerslib_export.h"

/// A bitmap of one bit per pixel: rows from the top, in each row the leftmost pixel in the most
/// significant bit of the first byte; a set bit is printed (black).
///
/// The length of a row isn't stored: it depends on how the image was made, so every operation that
/// needs it takes an alignment in bits, a positive multiple of 8. With it a row takes
/// (alignmentBits / 8) * (width / alignmentBits, rounded up) bytes. Pictures read by BbCodeParser
/// are aligned to 32 bits, symbols of SpecialCharacters to 8.
///
/// A plain value, of bytes that are implicitly shared; one object is used by one thread at a time.
/// No operation fails loudly, whatever width, height and bytes an image holds.
class PRINTERSLIB_EXPORT MonochromeImage
{
public:
    /// An image without pixels, which isn't valid.
    MonochromeImage() = default;
    /// @param width, height in pixels
    /// @param image         the bitmap; it is taken as it is
    MonochromeImage(int width, int height, const QByteArray &image);
    /// An empty image that then reads the map with setMap().
    MonochromeImage(const QMap<QString, QVariant> &map);

    /// Width in pixels.
    int width() const;
    void setWidth(int width);

    /// Height in pixels.
    int height() const;
    void setHeight(int height);

    /// The bytes of the bitmap.
    QByteArray image() const;
    void setImage(const QByteArray &image);

    /// Name of the picture that this image came from; empty for all others.
    QString fileName() const;
    void setFileName(const QString &fileName);

    /// Whether both sides are at least 1 and the bytes hold at least width * height / 8 (rounded
    /// down). Intended: the padding of rows doesn't count, so a valid image may still lack the end
    /// of its last rows; images of documents already stored pass by this very rule.
    bool isValid() const;

    /// Whether the pixel is set. False outside the image and where the bytes don't reach.
    bool pixel(int x, int y, int alignmentBits) const;

    /// Sets or clears a pixel and returns its new value. Intended: that isn't a success flag, so
    /// clearing always returns false, as does a pixel outside the image or further than one byte
    /// behind the last byte, which changes nothing. A pixel exactly one byte behind the end grows
    /// the bytes by one.
    bool setPixel(int x, int y, bool value, int alignmentBits);

    /// A blank image. Intended: its rows take width / 8 bytes (rounded down), and one more exactly
    /// when the width is a multiple of 8, inverted as that looks: the blank substitute of a missing
    /// special symbol has always had this size. A side below 0, or more than 256 MiB in all, gives
    /// an image of that size without bytes, which isn't valid.
    static MonochromeImage createEmpty(int width, int height);
    /// A blank image with rows of the given alignment; the limits are those above.
    static MonochromeImage createEmpty(int width, int height, int alignmentBits);

    /// The map form: "w", "h", "data" (Base64), and "fn", the name, unless that is blank.
    QMap<QString, QVariant> toMap() const;
    /// Reads the map form. A missing number is 0, missing bytes are empty; the name stays as it was
    /// when the map has none.
    void setMap(const QMap<QString, QVariant> &map);

    /// Compares size, bytes and name.
    bool operator==(const MonochromeImage &other) const;
    bool operator!=(const MonochromeImage &other) const;

private:
    qint64 offsetOf(int x, int y, int alignmentBits) const;

    int m_width = 0;
    int m_height = 0;
    QByteArray m_image;
    QString m_fileName;
};
