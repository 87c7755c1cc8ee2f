#include <QXmlStreamWriter>
#include <map>
#include <tuple>

#include "painting.h"
#include "paper.h"
#include "picture.h"

namespace receiptpreview {

namespace {

constexpr char precision = 2;  // digits behind the point, in dots

QString number(double value)
{
    QString text = QString::number(value, 'f', precision);
    while (text.endsWith(QLatin1Char('0')))
        text.chop(1);
    if (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    return text == QLatin1String("-0") ? QStringLiteral("0") : text;
}

QString point(const QPainterPath::Element &element)
{
    return number(element.x) + QLatin1Char(' ') + number(element.y);
}

/// The "d" of an SVG path.
QString pathData(const QPainterPath &path)
{
    QString data;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (element.isMoveTo())
            data += QLatin1Char('M');
        else if (element.isLineTo())
            data += QLatin1Char('L');
        else
            data += QLatin1Char(element.isCurveTo() ? 'C' : ' ');
        data += point(element);
    }
    return data;
}

/// Each different character is defined once, and used wherever it stands.
class SvgCanvas : public Canvas
{
public:
    SvgCanvas(QXmlStreamWriter &xml, const Typeface &typeface) : m_xml(xml), m_typeface(typeface) {}

    void define(const Layout &layout)
    {
        m_xml.writeStartElement(QStringLiteral("defs"));
        for (const Cell &cell : layout.cells()) {
            if (cell.drawing < 0 && !cell.has(Cell::Hidden) && cell.code != u' ')
                define(cell.code, cell.effects, QSize(cell.width, cell.height));
        }
        m_xml.writeEndElement();
    }

    void fill(const QRect &dots, Ink ink) override
    {
        m_xml.writeEmptyElement(QStringLiteral("rect"));
        attribute("x", dots.x());
        attribute("y", dots.y());
        attribute("width", dots.width());
        attribute("height", dots.height());
        writeInk(ink);
    }

    void glyph(const QRect &dots, char16_t code, quint16 effects) override
    {
        const auto found = m_ids.find(keyOf(code, effects, dots.size()));
        if (found == m_ids.end())
            return;
        m_xml.writeEmptyElement(QStringLiteral("use"));
        m_xml.writeAttribute(QStringLiteral("xlink:href"), QLatin1Char('#') + found->second);
        attribute("x", dots.x());
        attribute("y", dots.y());
        writeInk(inkOf(effects));
    }

private:
    using Key = std::tuple<char16_t, quint16, int, int>;

    static Key keyOf(char16_t code, quint16 effects, const QSize &size)
    {
        return {code, effects, size.width(), size.height()};
    }

    void attribute(const char *name, int value)
    {
        m_xml.writeAttribute(QLatin1String(name), QString::number(value));
    }

    void writeInk(Ink ink)
    {
        if (ink != Ink::Print)
            m_xml.writeAttribute(QStringLiteral("fill"), QColor(QRgb(colourOf(ink))).name());
    }

    void define(char16_t code, quint16 effects, const QSize &size)
    {
        QString &id = m_ids[keyOf(code, effects, size)];
        if (!id.isEmpty())
            return;
        id = QStringLiteral("g%1").arg(m_ids.size());
        m_xml.writeEmptyElement(QStringLiteral("path"));
        m_xml.writeAttribute(QStringLiteral("id"), id);
        m_xml.writeAttribute(QStringLiteral("d"),
                             pathData(m_typeface.outline(code, effects, size)));
    }

    QXmlStreamWriter &m_xml;
    const Typeface &m_typeface;
    std::map<Key, QString> m_ids;
};

void writeRoot(QXmlStreamWriter &xml, const Layout &layout, int scale)
{
    const QSize size = layout.size();
    const double millimetres = millimetresPerInch * scale / layout.paper().dotsPerInch();
    xml.writeStartElement(QStringLiteral("svg"));
    xml.writeDefaultNamespace(QStringLiteral("http://www.w3.org/2000/svg"));
    xml.writeNamespace(QStringLiteral("http://www.w3.org/1999/xlink"), QStringLiteral("xlink"));
    xml.writeAttribute(QStringLiteral("version"), QStringLiteral("1.1"));
    xml.writeAttribute(QStringLiteral("width"),
                       number(size.width() * millimetres) + QStringLiteral("mm"));
    xml.writeAttribute(QStringLiteral("height"),
                       number(size.height() * millimetres) + QStringLiteral("mm"));
    xml.writeAttribute(QStringLiteral("viewBox"),
                       QStringLiteral("0 0 %1 %2").arg(size.width()).arg(size.height()));
}

}  // namespace

bool writeSvg(const Layout &layout, const Typeface &typeface, int scale, QIODevice &device,
              const Progress &progress, QString *error)
{
    QXmlStreamWriter xml(&device);
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(0);
    xml.writeStartDocument();
    writeRoot(xml, layout, scale);
    xml.writeEmptyElement(QStringLiteral("rect"));
    xml.writeAttribute(QStringLiteral("width"), QString::number(layout.size().width()));
    xml.writeAttribute(QStringLiteral("height"), QString::number(layout.size().height()));
    xml.writeAttribute(QStringLiteral("fill"), QStringLiteral("white"));
    SvgCanvas canvas(xml, typeface);
    canvas.define(layout);
    paint(layout, 0, layout.size().height(), canvas);
    progress(layout.size().height(), layout.size().height());
    xml.writeEndDocument();
    if (!xml.hasError())
        return true;
    *error = device.errorString();
    return false;
}

}  // namespace receiptpreview
