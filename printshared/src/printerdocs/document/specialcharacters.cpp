#include "printerdocs/specialcharacters.h"

#include <QBuffer>
#include <QDebug>
#include <QFile>
#include <QXmlStreamReader>

#include "printerdocs/document/monochromeimage_p.h"
#include "printerdocs/document/symbolfile_p.h"

namespace {

using namespace documents;

// Keeps a wild cell size from taking the machine's memory.
constexpr qint64 maximumPicturePixels = qint64(1) << 26;

// Of those that a file may use, "&lt;" and its like, each is one character.
constexpr int longestEntity = 1;

signed char keyOf(int code)
{
    return static_cast<signed char>(code);
}

qint64 pixelsOf(const MonochromeImage &image)
{
    return qint64(image.width()) * image.height();
}

bool standsAtStart(const QXmlStreamReader *reader)
{
    return reader != nullptr && reader->isStartElement();
}

int numberAttribute(const QXmlStreamReader &reader, const QString &name)
{
    return reader.attributes().value(name).toInt();
}

// After a document that ended early the reader's own atEnd() asks the file, which never ends when
// it yields fewer bytes than its size says.
bool isOver(const QXmlStreamReader &reader)
{
    return reader.atEnd() || reader.hasError();
}

// Like QXmlStreamReader::readNextStartElement(), which reads on behind the end of a complete
// document and reports that as its premature end.
bool nextStartElement(QXmlStreamReader &reader)
{
    while (!isOver(reader)) {
        reader.readNext();
        if (reader.isStartElement())
            return true;
    }
    return false;
}

// Paints pixels from the least significant bit of each byte upward.
void paintRow(QRgb *pixels, int width, const char *bytes)
{
    constexpr QRgb black = 0;
    for (int x = 0; x < width; ++x) {
        const uint byte = static_cast<uchar>(bytes[x / bitsPerByte]);
        if ((byte >> static_cast<uint>(x % bitsPerByte) & 1U) != 0)
            pixels[x] = black;
    }
}

}  // namespace

bool SpecialCharacters::load(const QString &fileName)
{
    clear();
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        qCritical() << static_cast<int>(file.error()) << file.errorString();
        return false;
    }
    QByteArray content = file.read(symbolfile::mostBytes + 1);
    file.close();
    const QString refusal = symbolfile::refusal(content);
    if (!refusal.isEmpty()) {
        qCritical() << fileName << refusal;
        return false;
    }
    QBuffer buffer(&content);
    buffer.open(QIODevice::ReadOnly);
    QXmlStreamReader reader(&buffer);
    reader.setEntityExpansionLimit(longestEntity);
    bool complete = isOver(reader);
    while (!complete) {
        if (nextStartElement(reader) &&
            (reader.name() != QLatin1String("SpecialSymbolImages") || !parseImages(&reader)))
            break;
        complete = isOver(reader);
    }
    if (reader.hasError())
        qCritical() << static_cast<int>(reader.error()) << reader.errorString()
                    << reader.lineNumber() << reader.columnNumber();
    return complete;
}

void SpecialCharacters::clear()
{
    QMultiMap::clear();
    m_fileName = QString();
}

QString SpecialCharacters::fileName() const
{
    return m_fileName;
}

MonochromeImage SpecialCharacters::getImage(int code, int width, int height)
{
    const MonochromeImage *best = nullptr;
    const auto end = constEnd();
    for (auto image = constFind(keyOf(code)); image != end && image.key() == keyOf(code); ++image) {
        if (!image->isValid() || image->width() > width || image->height() > height)
            continue;
        if (best == nullptr || pixelsOf(*image) > pixelsOf(*best))
            best = &*image;
    }
    return best != nullptr ? *best : MonochromeImage::createEmpty(width, height);
}

QImage SpecialCharacters::getPngImage(int code, int width, int height)
{
    const MonochromeImage image = getImage(code, width, height);
    if (image.width() < 1 || image.height() < 1 || pixelsOf(image) > maximumPicturePixels)
        return QImage();
    QImage picture(image.width(), image.height(), QImage::Format_RGB32);
    if (picture.isNull())
        return picture;
    picture.fill(Qt::white);
    const QByteArray data = image.image();
    const qint64 stride = bytesOfRow(image.width());
    for (int row = 0; row < image.height() && data.size() > (row + 1) * stride; ++row)
        paintRow(reinterpret_cast<QRgb *>(picture.scanLine(row)), image.width(),
                 data.constData() + row * stride);
    return picture;
}

bool SpecialCharacters::parseImages(QXmlStreamReader *reader)
{
    if (!standsAtStart(reader))
        return false;
    while (reader->readNextStartElement()) {
        if (reader->name() != QLatin1String("Font"))
            reader->skipCurrentElement();
        else if (!parseFonts(reader))
            return false;
    }
    return true;
}

bool SpecialCharacters::parseFonts(QXmlStreamReader *reader)
{
    if (!standsAtStart(reader))
        return false;
    const int height = numberAttribute(*reader, QStringLiteral("Height"));
    const int width = numberAttribute(*reader, QStringLiteral("Width"));
    while (reader->readNextStartElement()) {
        if (reader->name() != QLatin1String("Symbol"))
            reader->skipCurrentElement();
        else if (!parseSymbols(reader, width, height))
            return false;
    }
    return true;
}

bool SpecialCharacters::parseSymbols(QXmlStreamReader *reader, int width, int height)
{
    if (!standsAtStart(reader))
        return false;
    const int code = numberAttribute(*reader, QStringLiteral("Code"));
    QStringList lines;
    while (reader->readNextStartElement()) {
        if (reader->name() != QLatin1String("Line")) {
            reader->skipCurrentElement();
            continue;
        }
        QString line;
        if (!parseLines(reader, line) || line.size() != width)
            return false;
        lines.append(line);
    }
    if (lines.size() != height)
        return false;
    createImage(code, lines, width, height);
    return true;
}

bool SpecialCharacters::parseLines(QXmlStreamReader *reader, QString &line)
{
    if (!standsAtStart(reader))
        return false;
    line = reader->readElementText();
    return true;
}

bool SpecialCharacters::strToData(const QString &line, int width, QByteArray &data)
{
    if (width < 1 || width > line.size())
        return false;
    data.fill('\0', static_cast<int>(bytesOfRow(width)));
    for (int x = 0; x < width; ++x) {
        if (line.at(x) == QLatin1Char('0'))
            continue;
        char &byte = data.data()[x / bitsPerByte];
        byte = static_cast<char>(static_cast<uchar>(byte) | bitOfPixel(x));
    }
    return true;
}

bool SpecialCharacters::createImage(int code, const QStringList &lines, int width, int height)
{
    if (height < 1 || height > lines.size())
        return false;
    QByteArray data;
    QByteArray row;
    for (const QString &line : lines) {
        if (!strToData(line, width, row))
            return false;
        data.append(row);
    }
    insert(keyOf(code), MonochromeImage(width, height, data));
    return true;
}

bool SpecialCharacters::operator==(const SpecialCharacters &other) const
{
    return static_cast<const QMultiMap &>(*this) == static_cast<const QMultiMap &>(other);
}

bool SpecialCharacters::operator!=(const SpecialCharacters &other) const
{
    return !(*this == other);
}
