#include "layout.h"

#include <algorithm>

#include "layoutbuilder.h"

namespace receiptpreview {

Layout::Layout(const TextPrinterDocument &document, const Paper &paper) : m_paper(paper)
{
    LayoutBuilder(*this, document).build();
}

const MonochromeImage &Layout::symbol(const Cell &cell) const
{
    static const MonochromeImage none;
    const QSize size = cell.fontCell();
    const auto found = m_symbols.find({cell.code, size.width(), size.height()});
    return found != m_symbols.end() ? found->second : none;
}

std::vector<Row>::const_iterator Layout::firstRowBelow(int top) const
{
    return std::lower_bound(m_rows.begin(), m_rows.end(), top,
                            [](const Row &row, int dot) { return row.bottom() <= dot; });
}

}  // namespace receiptpreview
