#include "encoder/layoutsheet_p.h"

namespace printerslib::drivers {

void LayoutSheet::beginBlock(int number)
{
    m_block = number;
    m_notes.setPlace(number);
}

void LayoutSheet::endPaper()
{
    m_length = PrintLayout::longest + 1;
    fail(QStringLiteral("the paper gets longer than %1 dots").arg(PrintLayout::longest));
}

void LayoutSheet::addFeed(int dots)
{
    PrintLayout::Row row;
    row.kind = PrintLayout::Row::Feed;
    row.height = dots;
    addRow(row);
}

void LayoutSheet::addFault(const QString &what, const QString &cause, const QByteArray &payload)
{
    m_notes.add(QStringLiteral("%1: %2").arg(what, cause));
    PrintLayout::Row row;
    row.kind = PrintLayout::Row::Fault;
    row.first = m_layout.faults.size();
    m_layout.faults.append({what, cause, payload});
    addRow(row);
}

void LayoutSheet::fail(const QString &reason)
{
    if (m_layout.error.isEmpty())
        m_layout.error = QStringLiteral("block %1: %2").arg(m_block).arg(reason);
}

int LayoutSheet::leftOf(int width, ETextAlignment alignment) const
{
    const int room = target().lineDots() - width;
    if (alignment == AlignRight)
        return room;
    return alignment == AlignCenter ? room / 2 : 0;
}

}  // namespace printerslib::drivers
