#include "printers/paperinfo.h"

signed char PaperInfo::id() const
{
    return m_id;
}

void PaperInfo::setId(const signed char &id)
{
    m_id = id;
}

short PaperInfo::width() const
{
    return m_width;
}

void PaperInfo::setWidth(const short &width)
{
    m_width = width;
}

short PaperInfo::height() const
{
    return m_height;
}

void PaperInfo::setHeight(const short &height)
{
    m_height = height;
}

int PaperInfo::pointsToLine() const
{
    return m_pointsToLine;
}

void PaperInfo::setPointsToLine(int pointsToLine)
{
    m_pointsToLine = pointsToLine;
}

QString PaperInfo::caption() const
{
    return m_caption;
}

void PaperInfo::setCaption(const QString &caption)
{
    m_caption = caption;
}

QString PaperInfo::idAsString() const
{
    return QString::number(m_id);
}

void PaperInfo::setMap(const QMap<QString, QVariant> &map)
{
    m_id = static_cast<signed char>(map.value(QStringLiteral("id")).toInt());
    // Read unsigned and cut, as the numbers are stored; -1 stays -1.
    m_width = static_cast<short>(map.value(QStringLiteral("width")).toUInt());
    m_height = static_cast<short>(map.value(QStringLiteral("height")).toUInt());
    m_pointsToLine = map.value(QStringLiteral("pointsToLine")).toInt();
    m_caption = map.value(QStringLiteral("caption")).toString();
}

QMap<QString, QVariant> PaperInfo::toMap() const
{
    return {
        {QStringLiteral("width"), int(m_width)},
        {QStringLiteral("height"), int(m_height)},
        {QStringLiteral("pointsToLine"), m_pointsToLine},
        {QStringLiteral("caption"), m_caption},
    };
}

bool PaperInfo::operator==(const PaperInfo &other) const
{
    return m_id == other.m_id && m_width == other.m_width && m_height == other.m_height &&
           m_pointsToLine == other.m_pointsToLine && m_caption == other.m_caption;
}

bool PaperInfo::operator!=(const PaperInfo &other) const
{
    return !(*this == other);
}
