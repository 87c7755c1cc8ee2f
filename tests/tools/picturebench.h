#pragma once

#include <QImage>

#include "layoutbench.h"

/// The pixels of what is drawn.
namespace picturebench {

inline constexpr int top = Layout::endMargin;
inline constexpr QRgb white = 0xFFFFFFFF;
inline constexpr QRgb black = 0xFF000000;
inline constexpr QRgb red = 0xFFC00000;
inline constexpr QRgb grey = 0xFF808080;

inline int pixelsOtherThan(const QImage &picture, const QRect &rect, QRgb colour)
{
    int count = 0;
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x)
            count += picture.pixel(x, y) != colour ? 1 : 0;
    }
    return count;
}

/// Pixels whose brightness differs by more than this.
inline int differingPixels(const QImage &a, const QImage &b, int clearly = 64)
{
    if (a.size() != b.size())
        return INT_MAX;
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x)
            count += qAbs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y))) > clearly ? 1 : 0;
    }
    return count;
}

/// The recorded picture of a name. What is drawn now is left beside the test, for a look and to
/// record it anew.
inline QImage recorded(const QString &name, const QImage &drawn)
{
    drawn.save("drawn-" + name);
    return QImage(PRINTERSLIB_TEST_DATA "/preview/" + name).convertToFormat(QImage::Format_RGB32);
}

}  // namespace picturebench
