#include "rastercanvas.h"

#include "picture.h"

namespace receiptpreview {

namespace {

// A receipt has few hundred different ones; what has more starts anew.
constexpr int mostImages = 5000;

}  // namespace

const QImage &GlyphImages::image(const QSize &cell, char16_t code, quint16 effects)
{
    const quint64 key = quint64(code) | quint64(effects) << 16 | quint64(cell.width()) << 32 |
                        quint64(cell.height()) << 48;
    const auto found = m_images.constFind(key);
    if (found != m_images.constEnd())
        return *found;
    if (m_images.size() >= mostImages)
        m_images.clear();
    QImage image(cell * m_scale, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(m_typeface.outline(code, effects, cell * m_scale),
                     QColor(QRgb(colourOf(inkOf(effects)))));
    painter.end();
    return *m_images.insert(key, image);
}

RasterCanvas::RasterCanvas(QImage &image, int top, int scale, GlyphImages &glyphs)
    : m_top(top), m_scale(scale), m_glyphs(glyphs), m_painter(&image)
{}

void RasterCanvas::fill(const QRect &dots, Ink ink)
{
    m_painter.fillRect(QRect(dots.left() * m_scale, (dots.top() - m_top) * m_scale,
                             dots.width() * m_scale, dots.height() * m_scale),
                       QColor(QRgb(colourOf(ink))));
}

void RasterCanvas::glyph(const QRect &dots, char16_t code, quint16 effects)
{
    m_painter.drawImage(QPoint(dots.left() * m_scale, (dots.top() - m_top) * m_scale),
                        m_glyphs.image(dots.size(), code, effects));
}

QImage topOf(const Layout &layout, const Typeface &typeface, int height)
{
    QImage image(layout.size().width(), height, QImage::Format_RGB32);
    image.fill(Qt::white);
    GlyphImages glyphs(typeface, 1);
    RasterCanvas canvas(image, 0, 1, glyphs);
    paint(layout, 0, height, canvas);
    return image;
}

}  // namespace receiptpreview
