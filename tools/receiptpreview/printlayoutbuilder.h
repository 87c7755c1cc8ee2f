#pragma once

#include <printerslib/drivers/paper.h>

#include <QVector>

#include "drawings.h"
#include "layout.h"

namespace receiptpreview {

/// Puts pieces of printed paper one below the other.
class PrintLayoutBuilder
{
public:
    explicit PrintLayoutBuilder(Layout &layout) : m_layout(layout), m_drawings(layout.m_drawings) {}

    void build(const QVector<printerslib::drivers::Paper> &pieces);

private:
    using Print = printerslib::drivers::Paper;

    void addPiece(const Print &piece);
    void addLine(const Print &piece, const Print::Line &line);
    void addCell(const Print &piece, const Print::Cell &printed);
    void addRaster(const QRect &place, const QSize &size, const QSize &dotsPerPixel,
                   const QByteArray &rows);
    void include(int top, int bottom);
    void endRow(bool continues);

    Layout &m_layout;
    int m_left = 0;  ///< of the piece's first dot
    int m_top = 0;
    int m_bottom = 0;  ///< of what stands on the piece
    Drawings m_drawings;

    /// The row being filled. Until it ends, its cells have their bottom in the place of what they
    /// rise, and its rasters their top on the paper.
    Row m_row;
    int m_rowBottom = 0;
};

}  // namespace receiptpreview
