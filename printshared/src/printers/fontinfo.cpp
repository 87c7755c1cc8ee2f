#include "printers/fontinfo.h"

signed char FontInfo::id() const
{
    return m_id;
}

void FontInfo::setId(const signed char &id)
{
    m_id = id;
}

unsigned char FontInfo::width() const
{
    return m_width;
}

void FontInfo::setWidth(const unsigned char &width)
{
    m_width = width;
}

unsigned char FontInfo::height() const
{
    return m_height;
}

void FontInfo::setHeight(const unsigned char &height)
{
    m_height = height;
}

double FontInfo::mwidth() const
{
    return m_mwidth;
}

void FontInfo::setMwidth(double mwidth)
{
    m_mwidth = mwidth;
}

double FontInfo::mheight() const
{
    return m_mheight;
}

void FontInfo::setMheight(double mheight)
{
    m_mheight = mheight;
}

bool FontInfo::monospace() const
{
    return m_monospace;
}

void FontInfo::setMonospace(bool monospace)
{
    m_monospace = monospace;
}

bool FontInfo::customSymbols() const
{
    return m_customSymbols;
}

void FontInfo::setCustomSymbols(bool customSymbols)
{
    m_customSymbols = customSymbols;
}

unsigned char FontInfo::customWidth() const
{
    return m_customWidth;
}

void FontInfo::setCustomWidth(const unsigned char &customWidth)
{
    m_customWidth = customWidth;
}

unsigned char FontInfo::customHeight() const
{
    return m_customHeight;
}

void FontInfo::setCustomHeight(const unsigned char &customHeight)
{
    m_customHeight = customHeight;
}

QString FontInfo::idAsString() const
{
    return QString::number(m_id);
}

void FontInfo::setMap(const QMap<QString, QVariant> &map)
{
    const auto byte = [&map](const QString &key) {
        return static_cast<unsigned char>(map.value(key).toUInt());
    };
    m_id = static_cast<signed char>(map.value(QStringLiteral("id")).toInt());
    m_width = byte(QStringLiteral("width"));
    m_height = byte(QStringLiteral("height"));
    m_mwidth = map.value(QStringLiteral("mwidth")).toDouble();
    m_mheight = map.value(QStringLiteral("mheight")).toDouble();
    m_monospace = map.value(QStringLiteral("monospace")).toBool();
    m_customSymbols = map.value(QStringLiteral("customSymbols")).toBool();
    m_customWidth = 0;
    m_customHeight = 0;
    if (m_customSymbols) {
        m_customWidth = byte(QStringLiteral("customWidth"));
        m_customHeight = byte(QStringLiteral("customHeight"));
    }
}

QMap<QString, QVariant> FontInfo::toMap() const
{
    QMap<QString, QVariant> map{
        {QStringLiteral("width"), int(m_width)},
        {QStringLiteral("height"), int(m_height)},
        {QStringLiteral("mwidth"), m_mwidth},
        {QStringLiteral("mheight"), m_mheight},
        {QStringLiteral("monospace"), m_monospace},
        {QStringLiteral("customSymbols"), m_customSymbols},
    };
    if (m_customSymbols) {
        map.insert(QStringLiteral("customWidth"), int(m_customWidth));
        map.insert(QStringLiteral("customHeight"), int(m_customHeight));
    }
    return map;
}

bool FontInfo::operator==(const FontInfo &other) const
{
    return m_id == other.m_id && m_width == other.m_width && m_height == other.m_height &&
           m_mwidth == other.m_mwidth && m_mheight == other.m_mheight &&
           m_monospace == other.m_monospace && m_customSymbols == other.m_customSymbols &&
           m_customWidth == other.m_customWidth && m_customHeight == other.m_customHeight;
}

bool FontInfo::operator!=(const FontInfo &other) const
{
    return !(*this == other);
}
