#include "printerdocs/monochromeimage.h"

#include "latin1text_p.h"
#include "printerdocs/document/monochromeimage_p.h"

namespace {

using namespace documents;
using printshared::latin1Text;

constexpr qint64 noOffset = -1;
// No receipt comes near it; it keeps a wild size in a file from taking the machine's memory.
constexpr qint64 maximumBytes = qint64(1) << 28;

constexpr QLatin1String widthKey = latin1Text("w");
constexpr QLatin1String heightKey = latin1Text("h");
constexpr QLatin1String dataKey = latin1Text("data");
constexpr QLatin1String fileNameKey = latin1Text("fn");

qint64 alignedRowLength(int width, int alignmentBits)
{
    if (alignmentBits <= 0)
        return 0;
    const qint64 units = (qint64(width) + alignmentBits - 1) / alignmentBits;
    return alignmentBits / bitsPerByte * units;
}

QByteArray zeroBytes(qint64 rowLength, int rows)
{
    if (rowLength <= 0 || rows <= 0 || rowLength > maximumBytes / rows)
        return QByteArray();
    return QByteArray(static_cast<int>(rowLength * rows), '\0');
}

}  // namespace

MonochromeImage::MonochromeImage(int width, int height, const QByteArray &image)
    : m_width(width), m_height(height), m_image(image)
{}

MonochromeImage::MonochromeImage(const QMap<QString, QVariant> &map)
{
    setMap(map);
}

int MonochromeImage::width() const
{
    return m_width;
}

void MonochromeImage::setWidth(int width)
{
    m_width = width;
}

int MonochromeImage::height() const
{
    return m_height;
}

void MonochromeImage::setHeight(int height)
{
    m_height = height;
}

QByteArray MonochromeImage::image() const
{
    return m_image;
}

void MonochromeImage::setImage(const QByteArray &image)
{
    m_image = image;
}

QString MonochromeImage::fileName() const
{
    return m_fileName;
}

void MonochromeImage::setFileName(const QString &fileName)
{
    m_fileName = fileName;
}

bool MonochromeImage::isValid() const
{
    return m_width >= 1 && m_height >= 1 &&
           qint64(m_width) * m_height / bitsPerByte <= m_image.size();
}

// Offset of the pixel's byte, at most the size of the bytes; noOffset if there is no such pixel.
qint64 MonochromeImage::offsetOf(int x, int y, int alignmentBits) const
{
    if (alignmentBits <= 0 || x < 0 || x >= m_width || y < 0 || y >= m_height)
        return noOffset;
    const qint64 offset = alignedRowLength(m_width, alignmentBits) * y + x / bitsPerByte;
    return offset > m_image.size() ? noOffset : offset;
}

bool MonochromeImage::pixel(int x, int y, int alignmentBits) const
{
    const qint64 offset = offsetOf(x, y, alignmentBits);
    if (offset == noOffset || offset == m_image.size())
        return false;
    return (static_cast<uchar>(m_image.at(static_cast<int>(offset))) & bitOfPixel(x)) != 0;
}

bool MonochromeImage::setPixel(int x, int y, bool value, int alignmentBits)
{
    const qint64 offset = offsetOf(x, y, alignmentBits);
    if (offset == noOffset)
        return false;
    if (offset == m_image.size())
        m_image.append('\0');
    char &byte = m_image.data()[offset];
    const uint old = static_cast<uchar>(byte);
    byte = static_cast<char>(value ? old | bitOfPixel(x) : old & ~bitOfPixel(x));
    return pixel(x, y, alignmentBits);
}

MonochromeImage MonochromeImage::createEmpty(int width, int height)
{
    if (width < 0)
        return MonochromeImage(width, height, QByteArray());
    const int rowLength = width / bitsPerByte + (width % bitsPerByte == 0 ? 1 : 0);
    return MonochromeImage(width, height, zeroBytes(rowLength, height));
}

MonochromeImage MonochromeImage::createEmpty(int width, int height, int alignmentBits)
{
    return MonochromeImage(width, height,
                           zeroBytes(alignedRowLength(width, alignmentBits), height));
}

QMap<QString, QVariant> MonochromeImage::toMap() const
{
    QMap<QString, QVariant> map{{widthKey, m_width},
                                {heightKey, m_height},
                                {dataKey, QString::fromLatin1(m_image.toBase64())}};
    if (!m_fileName.trimmed().isEmpty())
        map.insert(fileNameKey, m_fileName);
    return map;
}

void MonochromeImage::setMap(const QMap<QString, QVariant> &map)
{
    m_width = map.value(widthKey).toInt();
    m_height = map.value(heightKey).toInt();
    m_image = QByteArray::fromBase64(map.value(dataKey).toString().toLatin1());
    const auto name = map.constFind(fileNameKey);
    if (name != map.constEnd())
        m_fileName = name->toString();
}

bool MonochromeImage::operator==(const MonochromeImage &other) const
{
    return m_width == other.m_width && m_height == other.m_height && m_image == other.m_image &&
           m_fileName == other.m_fileName;
}

bool MonochromeImage::operator!=(const MonochromeImage &other) const
{
    return !(*this == other);
}
