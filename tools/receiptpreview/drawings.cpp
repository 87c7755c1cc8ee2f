#include "drawings.h"

namespace receiptpreview {

int Drawings::numberOf(int number, const Picture &picture, const QSize &scale)
{
    const int next = static_cast<int>(m_drawings.size());
    const auto [entry, isNew] = m_numbers.insert({{number, scale.width(), scale.height()}, next});
    if (isNew) {
        Raster drawing;
        drawing.image = MonochromeImage(picture.size.width(), picture.size.height(), picture.rows);
        drawing.dotsPerPixel = QSize(picture.dotsPerPixel.width() * scale.width(),
                                     picture.dotsPerPixel.height() * scale.height());
        m_drawings.push_back(drawing);
    }
    return entry->second;
}

}  // namespace receiptpreview
