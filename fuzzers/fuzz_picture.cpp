// A picture file on its way into a block: any bytes, or a picture written by Qt in any format.
#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QImageWriter>
#include <QtEndian>

#include "documentlaws.h"
#include "fuzzing.h"
#include "printerdocs/bbcodeparser.h"

using fuzzing::equal;

namespace {

// Of pictures beyond it only the limit counts, which a test holds; to read them takes seconds.
constexpr qint64 mostPixels = 1 << 18;

QImage takePicture(FuzzedDataProvider &input)
{
    const auto format = static_cast<QImage::Format>(
        input.ConsumeIntegralInRange<int>(QImage::Format_Mono, QImage::NImageFormats - 1));
    QImage picture(input.ConsumeIntegralInRange<int>(1, 100),
                   input.ConsumeIntegralInRange<int>(1, 500), format);
    const int colours = picture.pixelFormat().colorModel() == QPixelFormat::Indexed
                            ? input.ConsumeIntegralInRange<int>(0, 1 << picture.depth())
                            : 0;
    QVector<QRgb> table;
    for (int i = 0; i < colours; ++i)
        table.append(input.ConsumeIntegral<quint32>());
    picture.setColorTable(table);
    // What the input leaves over is repeated over the picture.
    const std::string bytes = input.ConsumeRemainingBytesAsString() + '\0';
    for (int y = 0, at = 0; y < picture.height(); ++y) {
        uchar *const row = picture.scanLine(y);
        for (int i = 0; i < picture.bytesPerLine(); ++i, ++at)
            row[i] = static_cast<uchar>(bytes[size_t(at) % bytes.size()]);
    }
    return picture;
}

QByteArray takeFile(FuzzedDataProvider &input)
{
    const char *const kinds[] = {"png", "bmp", "ppm", "xpm", "jpg", "ico"};
    const bool isAnything = input.ConsumeBool();
    const int kind = input.ConsumeIntegralInRange<int>(0, 5);
    if (isAnything)
        return QByteArray::fromStdString(input.ConsumeRemainingBytesAsString());
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    const double part = input.ConsumeProbability<double>();
    QImageWriter(&buffer, kinds[kind]).write(takePicture(input));
    // Half of them are cut.
    return buffer.data().left(static_cast<int>(2 * part * buffer.data().size()));
}

/// The picture pixel by pixel. Colours that its table lacks are white.
MonochromeImage expectedImage(QImage picture)
{
    if (picture.format() == QImage::Format_Indexed8) {
        for (int colour = picture.colorCount(); colour < 256; ++colour)
            picture.setColor(colour, qRgb(255, 255, 255));
    }
    picture = picture.convertToFormat(QImage::Format_Mono);
    if (picture.height() > 384)
        picture = picture.scaledToWidth(384, Qt::SmoothTransformation);
    MonochromeImage image = MonochromeImage::createEmpty(picture.width(), picture.height(), 32);
    const bool isIndexed = picture.colorCount() > 0 || picture.depth() == 1;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (isIndexed && picture.pixelIndex(x, y) >= picture.colorCount())
                continue;
            const QRgb colour = picture.pixel(x, y);
            image.setPixel(x, y, (colour & RGB_MASK) == 0, 32);
        }
    }
    return image;
}

/// What Qt reads over memory of which each byte was the same.
QImage readOver(uchar byte, const QString &path)
{
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    QImage picture(reader.size(), reader.imageFormat());
    if (!picture.isNull())
        memset(picture.bits(), byte, size_t(picture.sizeInBytes()));
    return reader.read(&picture) ? picture : QImage();
}

/// Whether a BMP has the bytes of all its pixels, as far as its head tells. Its pixels begin where
/// it says, but not in front of the end of its colours.
bool isWhole(QFile &file)
{
    if (!file.open(QIODevice::ReadOnly))
        return false;
    constexpr int headSize = 54;
    const QByteArray head = file.read(headSize).leftJustified(headSize, '\0');
    file.close();
    const auto word = [&](int at) { return qFromLittleEndian<qint32>(head.constData() + at); };
    const qint64 bits = qFromLittleEndian<quint16>(head.constData() + 28);
    const bool isUsual = word(14) >= 40 && word(30) == 0;
    const qint64 usualColours = bits <= 8 ? qint64(1) << bits : 0;
    const qint64 colours = bits <= 8 && word(46) > 0 ? word(46) : usualColours;
    const qint64 begin = qMax<qint64>(word(10), 14 + qint64(word(14)) + 4 * colours);
    const qint64 rowBytes = (word(18) * bits + 31) / 32 * 4;
    return isUsual && file.size() >= begin + rowBytes * qAbs(qint64(word(22)));
}

/// The file with the right checksum at a PNG's end, where the library puts it, as some programs
/// don't.
QByteArray withWholeEnd(QByteArray file)
{
    constexpr int wordSize = 4;
    constexpr int signatureSize = 8;
    const QByteArray beginning("\0\0\0\0IEND", 2 * wordSize);
    const QByteArray end("IEND\xAE\x42\x60\x82", 2 * wordSize);
    if (!file.startsWith("\x89PNG"))
        return file;
    for (qint64 at = signatureSize; at + beginning.size() <= file.size();
         at += qint64(3) * wordSize + qFromBigEndian<quint32>(file.constData() + at)) {
        if (file.mid(int(at), beginning.size()) == beginning)
            return file.replace(int(at) + wordSize, end.size(), end);
    }
    return file;
}

/// A file in the folder of this run.
QString written(const QString &name, const QByteArray &bytes)
{
    QString path = fuzzing::scratchFolder() + QLatin1Char('/') + name;
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        fuzzing::fail("the folder", path, file.errorString());
    return path;
}

bool isListed(const QByteArray &format)
{
    return QList<QByteArray>{"png", "bmp", "gif", "jpeg", "pbm", "pgm", "ppm", "xbm", "xpm"}
        .contains(format);
}

void isTheImageOf(const MonochromeImage &image, const QImage &picture, const QString &path)
{
    MonochromeImage expected;
    if (!picture.isNull()) {
        expected = expectedImage(picture);
        expected.setFileName(path);
    }
    equal("the size of the picture", QSize(image.width(), image.height()),
          QSize(expected.width(), expected.height()));
    equal("the pixels of the picture", image.image().toHex(), expected.image().toHex());
    equal("the name of the picture", image.fileName(), expected.fileName());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedDataProvider input(data, size);
    const QByteArray bytes = takeFile(input);
    const QString path = written(QStringLiteral("picture"), bytes);
    const QString whole = written(QStringLiteral("whole"), withWholeEnd(bytes));
    QFile file(path);
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    if (qint64(reader.size().width()) * reader.size().height() > mostPixels)
        return -1;
    // A cut BMP lacks what two readings don't agree on; of 4 bits, it has the first colour there.
    const QImage picture = readOver(0x00, whole);
    const bool hasGaps = readOver(0xFF, whole) != picture ||
                         (reader.format() == "bmp" && !picture.isNull() && !isWhole(file));
    // One that grows beyond the limit when it is scaled counts as unreadable.
    const qint64 rows = picture.isNull() ? 0 : qint64(picture.height()) * 384 / picture.width();
    if (picture.height() > 384 && rows * 384 > 16 * mostPixels)
        return -1;

    BbCodeParser parser;
    parser.setImagesPath(fuzzing::scratchFolder());
    parser.parseText("[img name=picture][/img]");
    equal("one block", parser.blocks().size(), 1);
    const MonochromeImage image = parser.blocks().first().img();
    BbCodeParser other;
    other.setImagesPath(fuzzing::scratchFolder());
    other.parseText("[img name=picture][/img]");
    equal("two readings", other.document(), parser.document());
    if (!hasGaps)
        isTheImageOf(image, isListed(reader.format()) ? picture : QImage(), path);
    documentlaws::check(parser.document());
    return 0;
}
