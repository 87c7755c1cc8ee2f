#pragma once

#include <QImage>
#include <QVector>

#include "painting.h"
#include "previewtools.h"
#include "rastercanvas.h"

/// What the head burns of a layout, without what only a picture of it shows.
namespace burntdots {

/// Passes on what is printed, and leaves out marks, frames and the edges of paper.
class PrintedOnly : public Canvas
{
public:
    explicit PrintedOnly(Canvas &canvas) : m_canvas(canvas) {}

    void fill(const QRect &dots, Ink ink) override
    {
        if (ink == Ink::Print || ink == Ink::Blank)
            m_canvas.fill(dots, ink);
    }
    void glyph(const QRect &dots, char16_t code, quint16 effects) override
    {
        m_canvas.glyph(dots, code, effects);
    }

private:
    Canvas &m_canvas;
};

/// A picture of the printed line, row by row, without what is blank above and below all of it.
struct Strip
{
    QImage image;
    QVector<int> rows;   ///< of the image that count
    int blankAbove = 0;  ///< rows that were left out at the top
    int left = 0;
    int width = 0;

    const uchar *row(int index) const
    {
        return image.constScanLine(rows.at(index)) + left * int(sizeof(QRgb));
    }
    bool isBlank(int index) const
    {
        const auto *dots = reinterpret_cast<const QRgb *>(row(index));
        return std::all_of(dots, dots + width, [](QRgb dot) { return dot == 0xFFFFFFFF; });
    }
    void cutBlankEnds()
    {
        while (!rows.isEmpty() && isBlank(rows.size() - 1))
            rows.removeLast();
        while (blankAbove < rows.size() && isBlank(blankAbove))
            ++blankAbove;
        rows.remove(0, blankAbove);
    }
};

inline GlyphImages &glyphImages()
{
    static auto *images = new GlyphImages(typeface(), 1);
    return *images;
}

/// What is burnt between the layout's ends. Frames around faults take no paper, nor do cuts.
inline Strip stripOf(const Layout &layout)
{
    Strip strip;
    const int height = layout.size().height();
    strip.image = QImage(layout.size().width(), qMax(1, height), QImage::Format_RGB32);
    strip.image.fill(Qt::white);
    {
        RasterCanvas canvas(strip.image, 0, 1, glyphImages());
        PrintedOnly printed(canvas);
        paint(layout, 0, height, printed);
    }
    strip.left = layout.paper().leftMargin();
    strip.width = layout.paper().printableWidth();
    QVector<bool> counts(height, true);
    const auto leaveOut = [&counts](int top, int bottom) {
        std::fill(counts.begin() + top, counts.begin() + bottom, false);
    };
    for (const Row &row : layout.rows()) {
        if (row.framed || row.kind == Row::Cut || row.kind == Row::Gap)
            leaveOut(row.top, row.bottom());
    }
    for (int y = 0; y < height; ++y) {
        if (counts.at(y))
            strip.rows.append(y);
    }
    strip.cutBlankEnds();
    return strip;
}

/// Where two strips differ, for people; empty if they don't.
inline QString difference(const Strip &ours, const Strip &theirs)
{
    if (ours.width != theirs.width)
        return QStringLiteral("lines of %1 and %2 dots").arg(ours.width).arg(theirs.width);
    const int common = qMin(ours.rows.size(), theirs.rows.size());
    for (int y = 0; y < common; ++y) {
        if (std::memcmp(ours.row(y), theirs.row(y), size_t(ours.width) * sizeof(QRgb)) == 0)
            continue;
        const auto *a = reinterpret_cast<const QRgb *>(ours.row(y));
        const auto *b = reinterpret_cast<const QRgb *>(theirs.row(y));
        const int x = int(std::mismatch(a, a + ours.width, b).first - a);
        return QStringLiteral("row %1 of %2 and %3 at dot %4")
            .arg(y)
            .arg(ours.rows.size())
            .arg(theirs.rows.size())
            .arg(x);
    }
    if (ours.rows.size() != theirs.rows.size())
        return QStringLiteral("%1 and %2 rows").arg(ours.rows.size()).arg(theirs.rows.size());
    return {};
}

/// The strips side by side, for who looks for the reason.
inline QImage sideBySide(const Strip &ours, const Strip &theirs)
{
    constexpr int gap = 20;
    QImage image(ours.width + gap + theirs.width,
                 qMax(1, qMax(ours.rows.size(), theirs.rows.size())), QImage::Format_RGB32);
    image.fill(QColor(255, 220, 220));
    const auto copy = [&image](const Strip &strip, int left) {
        for (int y = 0; y < strip.rows.size(); ++y)
            std::memcpy(image.scanLine(y) + left * int(sizeof(QRgb)), strip.row(y),
                        size_t(strip.width) * sizeof(QRgb));
    };
    copy(ours, 0);
    copy(theirs, ours.width + gap);
    return image;
}

}  // namespace burntdots
