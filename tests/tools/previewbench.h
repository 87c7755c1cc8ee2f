#pragma once

#include <QImage>

#include "receiptprogram.h"

/// Calls of the preview.
namespace previewbench {

inline constexpr int patience = 30000;

/// Pixels that aren't white in a part of a picture.
inline int inked(const QImage &picture, const QRect &rect)
{
    int count = 0;
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x)
            count += qGray(picture.pixel(x, y)) < 255 ? 1 : 0;
    }
    return count;
}

}  // namespace previewbench
