#include "printerdocs/bbcode/picturefile_p.h"

#include <QFile>
#include <QImageIOHandler>
#include <QImageReader>
#include <QVector>
#include <QtEndian>
#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

#include "printerdocs/bbcode/gifcodes_p.h"
#include "printerdocs/document/monochromeimage_p.h"

namespace picturefile {

namespace {

constexpr qint64 mebibyte = qint64(1) << 20;
// Six bytes for each pixel, as a picture of 16 bits for each colour has them.
constexpr qint64 mostBytes = 6 * mostPixels + mebibyte;
// Its colours take several times their bytes.
constexpr qint64 mostBytesOfXpm = 32 * mebibyte;
// Smaller ones are read as they are: to scale before the colours become dots gives other dots.
constexpr qint64 mostPixelsUnscaled = 4 * mebibyte;
// A usual picture that builds up has ten; each costs a walk over all pixels, and a few bytes.
constexpr int mostScans = 100;

struct Format
{
    const char *name;
    qint64 mostBytes;
    bool leavesGaps;  ///< Qt's reader leaves pixels that the file lacks as the memory was
};

constexpr Format formats[] = {
    {"png", mostBytes, false},  {"bmp", mostBytes, true},  {"gif", mostBytes, false},
    {"jpeg", mostBytes, false}, {"pbm", mostBytes, false}, {"pgm", mostBytes, false},
    {"ppm", mostBytes, false},  {"xbm", mostBytes, false}, {"xpm", mostBytesOfXpm, false},
};

/// What a site wants beside them, each by its name in Qt.
constexpr char moreFormats[] = PRINTERSLIB_MORE_PICTURE_FORMATS;

const Format *findFormat(const QByteArray &name)
{
    static constexpr Format more{nullptr, mostBytes, true};
    const auto *const found =
        std::find_if(std::begin(formats), std::end(formats),
                     [&](const Format &format) { return name == format.name; });
    if (found != std::end(formats))
        return found;
    return !name.isEmpty() && QByteArray(moreFormats).split(',').contains(name) ? &more : nullptr;
}

/// A PNG without what isn't needed for its pixels: of a thousand compressed texts each may take 8
/// MB.
class PixelChunks : public QIODevice
{
public:
    explicit PixelChunks(QFile &file) : m_file(file)
    {
        m_file.seek(0);
        open(ReadOnly);
    }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char *data, qint64 size) override
    {
        if (m_left == 0 && m_end.isEmpty())
            findChunk();
        if (!m_end.isEmpty())
            return takeEnd(data, size);
        const qint64 count = m_file.read(data, std::min(size, m_left));
        m_left -= std::max(count, qint64(0));
        return count == 0 && size > 0 ? -1 : count;
    }
    qint64 writeData(const char * /*data*/, qint64 /*size*/) override { return -1; }

private:
    /// Goes to the next chunk that is wanted, and counts its bytes; none at the end.
    void findChunk()
    {
        constexpr int wordSize = 4;
        const qint64 around = qint64(3) * wordSize;  // length, name and checksum
        char head[2 * wordSize];
        while (m_file.peek(head, sizeof head) == qint64(sizeof head)) {
            const qint64 size = around + qFromBigEndian<quint32>(head);
            const char *const name = head + wordSize;
            const bool isNeeded = (*name & 0x20) == 0 || std::memcmp(name, "tRNS", wordSize) == 0;
            if (std::memcmp(head, endChunk, sizeof head) == 0) {
                m_end = QByteArray(endChunk, int(around));
                return;
            }
            if (isNeeded) {
                m_left = size;
                return;
            }
            m_file.seek(m_file.pos() + size);
        }
    }

    /// The end is whole, as some programs leave out its checksum.
    qint64 takeEnd(char *data, qint64 size)
    {
        const qint64 count = std::min(size, qint64(m_end.size()));
        std::memcpy(data, m_end.constData(), size_t(count));
        m_end.remove(0, int(count));
        if (m_end.isEmpty())
            m_file.seek(m_file.size());
        return count;
    }

    static constexpr char endChunk[] = "\0\0\0\0IEND\xAE\x42\x60\x82";
    QFile &m_file;
    QByteArray m_end;
    qint64 m_left = 8;  // the signature
};

/// A file that goes on with the same byte.
class PaddedFile : public QIODevice
{
public:
    PaddedFile(QFile &file, uchar byte, qint64 padding)
        : m_file(file), m_byte(byte), m_size(file.size() + padding)
    {
        open(ReadOnly);
    }
    qint64 size() const override { return m_size; }

protected:
    qint64 readData(char *data, qint64 size) override
    {
        // A file may say that it goes on far behind its end, and Qt goes there.
        const qint64 wanted = std::min(size, std::max(qint64(0), m_size - pos()));
        m_file.seek(pos());
        const qint64 inFile = std::max(qint64(0), m_file.read(data, wanted));
        std::memset(data + inFile, m_byte, size_t(wanted - inFile));
        return wanted;
    }
    qint64 writeData(const char * /*data*/, qint64 /*size*/) override { return -1; }

private:
    QFile &m_file;
    uchar m_byte;
    qint64 m_size;
};

/// Scans of a JPEG: bytes that look like the beginning of one elsewhere are rare.
bool hasTooManyScans(QFile &file)
{
    constexpr char beginning[] = "\xFF\xDA";
    constexpr int blockSize = 1 << 16;
    int scans = 0;
    file.seek(0);
    // One byte more, so that a mark between two blocks is seen.
    for (QByteArray block = file.read(blockSize + 1); block.size() > 1;
         block = file.read(blockSize + 1)) {
        scans += block.count(beginning);
        file.seek(file.pos() - 1);
    }
    return scans > mostScans;
}

qint64 pixelsOf(const QSize &size)
{
    return qint64(size.width()) * size.height();
}

bool isBearable(const QSize &size)
{
    return !size.isEmpty() && pixelsOf(size) <= mostPixels;
}

/// The size of a GIF, whose reader takes the memory before it tells the size. Empty for one that
/// leaves its size to the pictures in it.
QSize sizeInHead(QFile &file)
{
    constexpr int headSize = 10;
    char head[headSize] = {};
    file.seek(0);
    file.read(head, headSize);
    return {qFromLittleEndian<quint16>(head + 6), qFromLittleEndian<quint16>(head + 8)};
}

/// Whether a BMP is written in run lengths.
bool hasRunLengths(QFile &file)
{
    constexpr int headSize = 34;
    char head[headSize] = {};
    file.seek(0);
    file.read(head, headSize);
    constexpr quint32 oldHeadSize = 12;
    const auto compression = qFromLittleEndian<quint32>(head + 30);
    return qFromLittleEndian<quint32>(head + 14) != oldHeadSize &&
           (compression == 1 || compression == 2);
}

/// The device from which Qt reads a format.
std::unique_ptr<QIODevice> openedSource(QFile &file, const QByteArray &format)
{
    if (format == "png")
        return std::make_unique<PixelChunks>(file);
    return std::make_unique<PaddedFile>(file, uchar(0), 0);
}

/// Qt's reader of one format.
void prepare(QImageReader &reader, QIODevice *source, const QByteArray &format)
{
    reader.setDevice(source);
    reader.setFormat(format);
    reader.setAutoDetectImageFormat(false);
}

/// The picture with white for all colours that its table lacks: Qt takes those from memory that
/// nobody wrote when it makes dots of them.
QImage withAllColours(QImage picture)
{
    if (picture.format() == QImage::Format_Indexed8) {
        constexpr int colours = 256;
        QVector<QRgb> table = picture.colorTable();
        while (table.size() < colours)
            table.append(qRgb(255, 255, 255));
        picture.setColorTable(table);
    }
    return picture;
}

/// The picture in memory of which each byte was the same.
QImage readOver(uchar byte, QIODevice *source, const QByteArray &format)
{
    QImageReader reader;
    prepare(reader, source, format);
    QImage picture(reader.size(), reader.imageFormat());
    if (!picture.isNull())
        std::memset(picture.bits(), byte, size_t(picture.sizeInBytes()));
    return reader.read(&picture) ? withAllColours(std::move(picture)) : QImage();
}

/// Of a pixel of one bit, the bit in its place.
uint valueAt(const uchar *row, int x, int depth)
{
    return depth == 1 ? row[x / documents::bitsPerByte] & documents::bitOfPixel(x) : row[x];
}

/// Whether two readings differ at a pixel.
bool differs(const uchar *row, const uchar *other, int x, int depth)
{
    constexpr qsizetype bytesOfColour = 4;
    if (depth <= 8)
        return valueAt(row, x, depth) != valueAt(other, x, depth);
    return std::memcmp(row + bytesOfColour * x, other + bytesOfColour * x, size_t(bytesOfColour)) !=
           0;
}

/// Makes each pixel white at which two readings differ: none of them read it.
void whiten(QImage &picture, const QImage &first, const QImage &second)
{
    for (int y = 0; y < picture.height(); ++y) {
        auto *const colours = reinterpret_cast<QRgb *>(picture.scanLine(y));
        for (int x = 0; x < picture.width(); ++x) {
            if (differs(first.constScanLine(y), second.constScanLine(y), x, first.depth()))
                colours[x] = qRgb(255, 255, 255);
        }
    }
}

bool hasGaps(const QImage &first, const QImage &second)
{
    const qint64 bytes = documents::bytesOfRow(qint64(first.width()) * first.depth());
    for (int y = 0; y < first.height(); ++y) {
        if (std::memcmp(first.constScanLine(y), second.constScanLine(y), size_t(bytes)) != 0)
            return true;
    }
    return false;
}

/// A picture that two readings over different memory agree on, white where they don't. The second
/// one is over a file that goes on, as Qt makes what some files lack the first colour.
QImage readTwice(QFile &file, const QByteArray &format, const QSize &size)
{
    constexpr int mostBytesOfPixel = 4;
    constexpr qint64 farthestPixel = qint64(1) << 32;  // that a BMP can tell
    const bool goesOn = format == "bmp" && !hasRunLengths(file);
    PaddedFile asItIs(file, 0x00, 0);
    PaddedFile padded(file, 0xFF, goesOn ? farthestPixel + pixelsOf(size) * mostBytesOfPixel : 0);
    QImage first = readOver(0x00, &asItIs, format);
    const QImage second = readOver(0xFF, &padded, format);
    if (first.isNull() || first.size() != second.size() || first.format() != second.format())
        return QImage();
    if (!hasGaps(first, second))
        return first;
    QImage picture = first.convertToFormat(QImage::Format_ARGB32);
    if (picture.isNull() || (first.depth() != 1 && first.depth() != 8 && first.depth() != 32))
        return QImage();
    whiten(picture, first, second);
    return picture;
}

/// Qt takes more memory, not less, when it scales a picture of 16 bits for each colour.
bool hasUsualDepth(const QImageReader &reader)
{
    constexpr int usualBits = 32;
    return QImage::toPixelFormat(reader.imageFormat()).bitsPerPixel() <= usualBits;
}

QImage readOnce(QFile &file, const QByteArray &format, const QSize &scaledSize)
{
    const std::unique_ptr<QIODevice> source = openedSource(file, format);
    QImageReader reader;
    prepare(reader, source.get(), format);
    const QSize size = reader.size();
    if (pixelsOf(size) > mostPixelsUnscaled && pixelsOf(scaledSize) < pixelsOf(size) &&
        reader.supportsOption(QImageIOHandler::ScaledSize) && hasUsualDepth(reader))
        reader.setScaledSize(scaledSize);
    return withAllColours(reader.read());
}

/// The size that a file tells; empty for one that can't be borne.
QSize sizeOf(QFile &file, const QByteArray &format)
{
    if (format == "gif" && !isBearable(sizeInHead(file)))
        return QSize();
    const std::unique_ptr<QIODevice> source = openedSource(file, format);
    QImageReader reader;
    prepare(reader, source.get(), format);
    return reader.size();
}

QByteArray formatOf(QFile &file)
{
    QImageReader reader(&file);
    reader.setDecideFormatFromContent(true);
    return reader.canRead() ? reader.format() : QByteArray();
}

}  // namespace

QImage read(QFile &file, QSize (*scaledSize)(const QSize &size))
{
    const QByteArray name = formatOf(file);
    const Format *const format = findFormat(name);
    if (format == nullptr || file.size() > format->mostBytes ||
        (name == "jpeg" && hasTooManyScans(file)) ||
        (name == "gif" && gifcodes::areLongerThan(file, mostPixels)))
        return QImage();
    const QSize size = sizeOf(file, name);
    if (!isBearable(size) || !isBearable(scaledSize(size)))
        return QImage();
    const QImage picture =
        format->leavesGaps ? readTwice(file, name, size) : readOnce(file, name, scaledSize(size));
    return isBearable(picture.size()) ? picture : QImage();
}

}  // namespace picturefile
