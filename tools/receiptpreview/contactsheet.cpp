#include "contactsheet.h"

#include <QPainter>
#include <algorithm>

#include "painting.h"
#include "picture.h"

namespace receiptpreview {

namespace {

constexpr int columnsOfSheet = 4;
constexpr int columnWidth = 330;  // the widest paper at this scaleOfReceipt
constexpr double scaleOfReceipt = 0.5;
constexpr int gap = 24;
constexpr int titleWidth = 10;
constexpr int titleHeight = 20;
constexpr int titleGap = 8;
constexpr int background = 0xD0;
constexpr int cutHeight = 2;

QColor backgroundColour()
{
    return {background, background, background};
}

QColor noteColour()
{
    return QColor(QRgb(colourOf(Ink::Note)));
}

void paintTitle(QPainter &painter, const Typeface &typeface, const QPoint &place,
                const QString &title, const QColor &colour)
{
    const QString shown = title.left(columnWidth / titleWidth);
    for (int i = 0; i < shown.size(); ++i) {
        const QPainterPath outline =
            typeface.outline(shown.at(i).unicode(), Cell::Bold, QSizeF(titleWidth, titleHeight));
        painter.fillPath(outline.translated(place.x() + i * titleWidth, place.y()), colour);
    }
}

/// Lines of the document that take more than a row of the paper.
int longLinesOf(const Layout &layout)
{
    const std::vector<Row> &rows = layout.rows();
    int count = 0;
    for (std::size_t i = 1; i < rows.size(); ++i)
        count += rows[i].continues && !rows[i].framed && !rows[i - 1].continues ? 1 : 0;
    return count;
}

/// The picture with what says that it isn't all.
QImage withCut(const QImage &picture, const Typeface &typeface, int missingDots)
{
    QImage whole(columnWidth, picture.height() + cutHeight + titleGap + titleHeight,
                 QImage::Format_RGB32);
    if (whole.isNull())
        return picture;
    whole.fill(backgroundColour());
    QPainter painter(&whole);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.drawImage(0, 0, picture);
    painter.fillRect(0, picture.height(), picture.width(), cutHeight, noteColour());
    paintTitle(painter, typeface, QPoint(0, picture.height() + cutHeight + titleGap),
               QStringLiteral("cut here, %1 dots go on").arg(missingDots), noteColour());
    return whole;
}

}  // namespace

void ContactSheet::add(const QString &title, const Layout &layout)
{
    const int height = layout.size().height();
    const QImage top = topOf(layout, m_typeface, qMin(height, mostDots));
    const int width = qMin(columnWidth, qRound(top.width() * scaleOfReceipt));
    QImage picture = top.scaledToWidth(width, Qt::SmoothTransformation);
    if (height > mostDots)
        picture = withCut(picture, m_typeface, height - mostDots);
    m_entries.push_back({title, longLinesOf(layout), picture});
}

/// What stands above a picture, with the gap below it.
int ContactSheet::headHeight() const
{
    const bool areLong = std::any_of(m_entries.begin(), m_entries.end(),
                                     [](const Entry &entry) { return entry.longLines > 0; });
    return (areLong ? 2 : 1) * titleHeight + titleGap;
}

/// Upper edges of the rows of pictures, and the lower edge of the sheet.
std::vector<int> ContactSheet::edges() const
{
    std::vector<int> result{gap};
    for (std::size_t first = 0; first < m_entries.size(); first += columnsOfSheet) {
        int tallest = 0;
        for (std::size_t i = first; i < qMin(first + columnsOfSheet, m_entries.size()); ++i)
            tallest = qMax(tallest, m_entries.at(i).picture.height());
        result.push_back(result.back() + headHeight() + tallest + gap);
    }
    return result;
}

QImage ContactSheet::image() const
{
    const std::vector<int> top = edges();
    QImage sheet(gap + columnsOfSheet * (columnWidth + gap), top.back(), QImage::Format_RGB32);
    if (sheet.isNull())
        return sheet;
    sheet.fill(backgroundColour());
    QPainter painter(&sheet);
    painter.setRenderHint(QPainter::Antialiasing);
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        const QPoint place(gap + static_cast<int>(i % columnsOfSheet) * (columnWidth + gap),
                           top.at(i / columnsOfSheet));
        const Entry &entry = m_entries.at(i);
        paintTitle(painter, m_typeface, place, entry.title, Qt::black);
        if (entry.longLines > 0)
            paintTitle(painter, m_typeface, place + QPoint(0, titleHeight),
                       QStringLiteral("lines too long: %1").arg(entry.longLines), noteColour());
        painter.drawImage(place + QPoint(0, headHeight()), entry.picture);
    }
    return sheet;
}

}  // namespace receiptpreview
