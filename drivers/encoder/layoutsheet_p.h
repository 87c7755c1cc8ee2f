#pragma once

#include "encoder/notelist_p.h"
#include "printerslib/drivers/printlayout.h"

namespace printerslib::drivers {

/// The paper that a document is laid out on: where its blocks put their rows, faults and notes.
class LayoutSheet
{
public:
    explicit LayoutSheet(PrintLayout &layout) : m_layout(layout) {}

    PrintLayout &layout() { return m_layout; }
    const PrintTarget &target() const { return m_layout.target; }
    const PrinterProfile &profile() const { return m_layout.target.profile(); }
    NoteList &notes() { return m_notes; }
    bool hasRaster() const { return profile().rasterCommand() != RasterCommand::None; }

    int block() const { return m_block; }
    void beginBlock(int number);
    /// Dots that are left of the longest paper; negative if there is no more.
    int room() const { return PrintLayout::longest - m_length; }
    bool isFull() const { return room() < 0; }

    /// Puts a row of this block below all others. One that the paper has no room for is an error.
    void addRow(PrintLayout::Row &row)
    {
        row.block = m_block;
        if (qint64(row.height) + row.feed <= room()) {
            m_length += row.height + row.feed;
            m_layout.rows.push_back(row);
        } else {
            endPaper();
        }
    }
    void addFeed(int dots);
    /// Something of this block can't be printed.
    void addFault(const QString &what, const QString &cause, const QByteArray &payload = {});
    /// The document can't be printed. The first reason counts.
    void fail(const QString &reason);
    /// Where something of a width goes.
    int leftOf(int width, ETextAlignment alignment) const;

private:
    void endPaper();

    PrintLayout &m_layout;
    NoteList m_notes;
    int m_block = 0;
    int m_length = 0;
};

}  // namespace printerslib::drivers
