#include <QBuffer>
#include <QGlyphRun>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>

#include "painting.h"
#include "paper.h"
#include "picture.h"

namespace receiptpreview {

namespace {

class PdfCanvas : public Canvas
{
public:
    PdfCanvas(QPainter &painter, const Typeface &typeface)
        : m_painter(painter),
          m_typeface(typeface),
          m_regular(typeface.embeddableFont(0)),
          m_bold(typeface.embeddableFont(Cell::Bold))
    {}

    /// Where the next page begins.
    void setTop(int top) { m_top = top; }

    void fill(const QRect &dots, Ink ink) override
    {
        m_painter.fillRect(dots.translated(0, -m_top), QColor(QRgb(colourOf(ink))));
    }

    void glyph(const QRect &dots, char16_t code, quint16 effects) override
    {
        drawText(dots, code, effects, QColor(QRgb(colourOf(inkOf(effects)))));
    }

    void meaning(const QRect &dots, char16_t code) override
    {
        drawText(dots, code, 0, Qt::transparent);
    }

private:
    void drawText(const QRect &dots, char16_t code, quint16 effects, const QColor &colour)
    {
        QGlyphRun run;
        run.setRawFont((effects & Cell::Bold) != 0 ? m_bold : m_regular);
        run.setGlyphIndexes({m_typeface.glyph(code, effects)});
        run.setPositions({QPointF(0, 0)});
        const QTransform outer = m_painter.transform();
        const QTransform place = QTransform::fromTranslate(dots.left(), dots.top() - m_top);
        m_painter.setTransform(m_typeface.toCell(effects, dots.size()) * place * outer);
        m_painter.setPen(colour);
        m_painter.drawGlyphRun(QPointF(0, 0), run);
        m_painter.setTransform(outer);
    }

    QPainter &m_painter;
    const Typeface &m_typeface;
    const QRawFont m_regular;
    const QRawFont m_bold;
    int m_top = 0;
};

/// What a page shows of the paper.
struct Page
{
    int top;
    int bottom;

    int height() const { return bottom - top; }
};

/// Pages end before a row that would be beyond the height, unless a row is higher than that, and
/// with each piece of paper. One that ends in blank paper may be twice as high.
class Pages
{
public:
    Pages(const Layout &layout, int pageHeight) : m_pageHeight(pageHeight)
    {
        for (const Row &row : layout.rows()) {
            if (row.kind == Row::Gap)
                end(row.top, row.bottom());
            else if (row.bottom() - m_top > m_pageHeight)
                endBefore(row);
        }
        end(layout.size().height(), 0);
    }

    const std::vector<Page> &pages() const { return m_pages; }

private:
    void endBefore(const Row &row)
    {
        if (row.top > m_top)
            end(row.top, row.top);
        while (row.bottom() - m_top > m_pageHeight)
            add(m_top + m_pageHeight, m_top + m_pageHeight);
    }
    void end(int bottom, int nextTop)
    {
        while (bottom - m_top > 2 * m_pageHeight)
            add(m_top + m_pageHeight, m_top + m_pageHeight);
        add(bottom, nextTop);
    }
    void add(int bottom, int nextTop)
    {
        m_pages.push_back({m_top, bottom});
        m_top = nextTop;
    }

    const int m_pageHeight;
    int m_top = 0;
    std::vector<Page> m_pages;
};

QPageSize pageOf(const Layout &layout, int height, int scale)
{
    const double millimetres = millimetresPerInch * scale / layout.paper().dotsPerInch();
    return QPageSize(QSizeF(layout.size().width() * millimetres, height * millimetres),
                     QPageSize::Millimeter, QStringLiteral("Receipt"), QPageSize::ExactMatch);
}

/// The moment of writing would make each run's file another one.
void removeTime(QByteArray &pdf)
{
    const QByteArray key = "/CreationDate (D:";
    const QByteArray epoch = "19700101000000";
    const int start = pdf.indexOf(key);
    if (start < 0)
        return;
    pdf.replace(start + key.size(), epoch.size(), epoch);
    // What follows is the time zone, such as +02'00'.
    for (int i = start + key.size() + epoch.size(); pdf.at(i) != ')'; ++i) {
        if (pdf.at(i) >= '1' && pdf.at(i) <= '9')
            pdf[i] = '0';
    }
}

bool paintPages(const Layout &layout, const Typeface &typeface, int scale, QPdfWriter &writer,
                const Progress &progress)
{
    const int dotsPerInch = layout.paper().dotsPerInch();
    const int pageHeight = qRound(tallestPageMillimetres / millimetresPerInch * dotsPerInch);
    const std::vector<Page> pages = Pages(layout, pageHeight).pages();
    writer.setResolution(dotsPerInch);
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    writer.setPageSize(pageOf(layout, pages.front().height(), scale));
    QPainter painter;
    if (!painter.begin(&writer))
        return false;
    painter.scale(scale, scale);
    PdfCanvas canvas(painter, typeface);
    for (const Page &page : pages) {
        if (page.top > 0) {
            writer.setPageSize(pageOf(layout, page.height(), scale));
            writer.newPage();
        }
        canvas.setTop(page.top);
        paint(layout, page.top, page.bottom, canvas);
        progress(page.bottom, layout.size().height());
    }
    return painter.end();
}

}  // namespace

bool writePdf(const Layout &layout, const Typeface &typeface, int scale, QIODevice &device,
              const Progress &progress, QString *error)
{
    QByteArray pdf;
    QBuffer buffer(&pdf);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setCreator(QStringLiteral("receipt preview"));
    const bool painted = paintPages(layout, typeface, scale, writer, progress);
    removeTime(pdf);
    if (painted && device.write(pdf) == pdf.size())
        return true;
    *error = painted ? device.errorString() : QStringLiteral("the PDF can't be made");
    return false;
}

}  // namespace receiptpreview
