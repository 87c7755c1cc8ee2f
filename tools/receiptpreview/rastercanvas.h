#pragma once

#include <QHash>
#include <QImage>
#include <QPainter>

#include "painting.h"
#include "typeface.h"

namespace receiptpreview {

/// Characters drawn before, by everything that makes a difference.
class GlyphImages
{
public:
    GlyphImages(const Typeface &typeface, int scale) : m_typeface(typeface), m_scale(scale) {}

    const QImage &image(const QSize &cell, char16_t code, quint16 effects);

private:
    const Typeface &m_typeface;
    const int m_scale;
    QHash<quint64, QImage> m_images;
};

/// Paints a strip of the paper on an image of as many pixels.
class RasterCanvas : public Canvas
{
public:
    RasterCanvas(QImage &image, int top, int scale, GlyphImages &glyphs);

    void fill(const QRect &dots, Ink ink) override;
    void glyph(const QRect &dots, char16_t code, quint16 effects) override;

private:
    const int m_top;
    const int m_scale;
    GlyphImages &m_glyphs;
    QPainter m_painter;
};

}  // namespace receiptpreview
