#include "contactsheet.h"

#include <QPainter>

#include "picture.h"

namespace receiptpreview {

namespace {

constexpr int columnsOfSheet = 4;
constexpr int columnWidth = 330;  // the widest paper at this scaleOfReceipt
constexpr double scaleOfReceipt = 0.5;
constexpr int mostDotsOfReceipt = 1280;
constexpr int gap = 24;
constexpr int titleWidth = 10;
constexpr int titleHeight = 20;
constexpr int titleGap = 8;
constexpr int background = 0xD0;

void paintTitle(QPainter &painter, const Typeface &typeface, const QPoint &place,
                const QString &title)
{
    const QString shown = title.left(columnWidth / titleWidth);
    for (int i = 0; i < shown.size(); ++i) {
        const QPainterPath outline =
            typeface.outline(shown.at(i).unicode(), Cell::Bold, QSizeF(titleWidth, titleHeight));
        painter.fillPath(outline.translated(place.x() + i * titleWidth, place.y()), Qt::black);
    }
}

}  // namespace

void ContactSheet::add(const QString &title, const Layout &layout)
{
    const QImage top = topOf(layout, m_typeface, qMin(layout.size().height(), mostDotsOfReceipt));
    const int width = qMin(columnWidth, qRound(top.width() * scaleOfReceipt));
    m_entries.push_back({title, top.scaledToWidth(width, Qt::SmoothTransformation)});
}

/// Upper edges of the rows of pictures, and the lower edge of the sheet.
std::vector<int> ContactSheet::edges() const
{
    std::vector<int> result{gap};
    for (std::size_t first = 0; first < m_entries.size(); first += columnsOfSheet) {
        int tallest = 0;
        for (std::size_t i = first; i < qMin(first + columnsOfSheet, m_entries.size()); ++i)
            tallest = qMax(tallest, m_entries.at(i).picture.height());
        result.push_back(result.back() + titleHeight + titleGap + tallest + gap);
    }
    return result;
}

QImage ContactSheet::image() const
{
    const std::vector<int> top = edges();
    QImage sheet(gap + columnsOfSheet * (columnWidth + gap), top.back(), QImage::Format_RGB32);
    if (sheet.isNull())
        return sheet;
    sheet.fill(QColor(background, background, background));
    QPainter painter(&sheet);
    painter.setRenderHint(QPainter::Antialiasing);
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        const QPoint place(gap + static_cast<int>(i % columnsOfSheet) * (columnWidth + gap),
                           top.at(i / columnsOfSheet));
        const Entry &entry = m_entries.at(i);
        paintTitle(painter, m_typeface, place, entry.title);
        painter.drawImage(place + QPoint(0, titleHeight + titleGap), entry.picture);
    }
    return sheet;
}

}  // namespace receiptpreview
