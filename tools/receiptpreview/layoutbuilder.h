#pragma once

#include <printerslib/drivers/printlayout.h>

#include "drawings.h"
#include "layout.h"

namespace receiptpreview {

/// Puts what a model prints of a document on the paper, row by row.
class LayoutBuilder
{
public:
    LayoutBuilder(Layout &layout, const printerslib::drivers::PrintLayout &print);

    /// @param before, after what happens to the tickets
    void build(QFlags<EPrinterTicketAction> before, QFlags<EPrinterTicketAction> after);

private:
    using Print = printerslib::drivers::PrintLayout;

    void addRow(const Print::Row &row);
    void addText(const Print::Row &row);
    void addDots(Row &row, Print::Row &dots);
    Cell cellOf(const Print::Cell &printed) const;
    void setDrawing(Cell &cell, const Print::Cell &printed);
    void addImage(int left, const QSize &dotsPerPixel, const QSize &size, const QByteArray &rows);
    void addRaster(Row &row, int left, const QSize &dotsPerPixel, const QSize &size,
                   const QByteArray &rows);
    void addFault(const Print::Fault &fault);
    void addFaultText(const QString &text);
    void addCut();

    Layout &m_layout;
    const Print &m_print;
    Drawings m_drawings;
    const int m_margin;
};

}  // namespace receiptpreview
