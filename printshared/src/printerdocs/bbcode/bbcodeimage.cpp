#include "printerdocs/bbcode/bbcodeimage_p.h"

#include <sys/stat.h>

#include <QCache>
#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QMutex>
#include <algorithm>
#include <utility>

#include "printerdocs/bbcode/picturefile_p.h"
#include "printerdocs/document/monochromeimage_p.h"

namespace bbcodeimage {

namespace {

constexpr int rowAlignmentBits = 32;
constexpr int greatestHeight = 384;  // dots
constexpr int scaledWidth = 384;     // dots of the print head

/// Whether a name begins so, where "?" stands for a character and "*" for any. What it costs grows
/// with the product of the lengths, however many "*" there are.
bool beginsLike(const QString &name, const QString &pattern)
{
    int at = 0;
    int inPattern = 0;
    int afterStar = -1;  // where to go on behind the last "*" when its characters don't do
    int starEnd = 0;
    while (inPattern < pattern.size()) {
        const QChar wanted = pattern.at(inPattern);
        if (wanted == QLatin1Char('*')) {
            afterStar = ++inPattern;
            starEnd = at;
        } else if (at < name.size() &&
                   (wanted == QLatin1Char('?') || wanted == name.at(at).toLower())) {
            ++inPattern;
            ++at;
        } else if (afterStar >= 0 && starEnd < name.size()) {
            inPattern = afterStar;
            at = ++starEnd;
        } else {
            return false;
        }
    }
    return true;
}

/// The path of the first file of that name; empty if there is none.
QString findFile(const QString &directory, const QString &name)
{
    QDirIterator files(directory.isEmpty() ? QDir::currentPath() : directory, QDir::Files);
    QString first;
    QString found;
    while (files.hasNext()) {
        files.next();
        const QString fileName = files.fileName();
        if (beginsLike(fileName, name) && (first.isNull() || fileName < first)) {
            first = fileName;
            found = files.fileInfo().absoluteFilePath();
        }
    }
    return found;
}

/// Intended: the height is tested and the width is set, so a tall picture fills the paper and a
/// wide one is left to the printer; stored receipts have their logos in these sizes (test
/// tallPictureIsScaledToTheWidthOfThePaper).
QSize sizeOnPaper(const QSize &size)
{
    if (size.height() <= greatestHeight)
        return size;
    const qint64 rows = qint64(size.height()) * scaledWidth / size.width();
    // No picture that is read is so long.
    return {scaledWidth, static_cast<int>(qBound(qint64(1), rows, picturefile::mostPixels))};
}

QImage scaledForPaper(const QImage &picture)
{
    return picture.height() <= greatestHeight
               ? picture
               : picture.scaledToWidth(scaledWidth, Qt::SmoothTransformation);
}

bool isBlack(QRgb colour)
{
    return (colour & RGB_MASK) == 0;
}

/// A colour that the picture's table lacks counts as not black.
bool isBlack(const QImage &picture, int colourIndex)
{
    return colourIndex < picture.colorCount() && isBlack(picture.color(colourIndex));
}

/// A one-bit row: its bits are taken as they are, inverted, or dropped, as the two colours are
/// black or not.
void packBits(const QImage &picture, int y, char *row, int rowBytes)
{
    const uchar whereSet = isBlack(picture, 1) ? 0xFF : 0x00;
    const uchar whereClear = isBlack(picture, 0) ? 0xFF : 0x00;
    const uchar *bits = picture.constScanLine(y);
    for (int i = 0; i < rowBytes; ++i)
        row[i] = static_cast<char>((bits[i] & whereSet) | (~bits[i] & whereClear));
    // Behind the picture's width the bits are undefined in QImage and 0 in a MonochromeImage.
    const int usedBits = picture.width() % documents::bitsPerByte;
    const int usedBytes = static_cast<int>(documents::bytesOfRow(picture.width()));
    if (usedBits != 0)
        row[usedBytes - 1] = static_cast<char>(row[usedBytes - 1] & (0xFF00 >> usedBits));
    std::fill(row + usedBytes, row + rowBytes, '\0');
}

void packColours(const QImage &picture, int y, char *row)
{
    const auto *colours = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
    for (int x = 0; x < picture.width(); ++x) {
        if (isBlack(colours[x])) {
            char &byte = row[x / documents::bitsPerByte];
            byte = static_cast<char>(static_cast<uchar>(byte) | documents::bitOfPixel(x));
        }
    }
}

/// Gives each pixel its bit, set where red, green and blue are all 0.
MonochromeImage packed(QImage picture)
{
    MonochromeImage image =
        MonochromeImage::createEmpty(picture.width(), picture.height(), rowAlignmentBits);
    QByteArray bytes = image.image();
    if (bytes.isEmpty())
        return image;
    const bool oneBit = picture.format() == QImage::Format_Mono;
    if (!oneBit)
        picture = std::move(picture).convertToFormat(QImage::Format_ARGB32);
    if (picture.isNull())
        return image;
    const int rowBytes = bytes.size() / picture.height();
    for (int y = 0; y < picture.height(); ++y) {
        char *row = bytes.data() + qsizetype(rowBytes) * y;
        if (oneBit)
            packBits(picture, y, row, rowBytes);
        else
            packColours(picture, y, row);
    }
    image.setImage(bytes);
    return image;
}

MonochromeImage imageIn(QFile &file)
{
    QImage picture = picturefile::read(file, sizeOnPaper);
    if (picture.isNull())
        return MonochromeImage();
    // Each step lets go of the picture before it.
    picture = std::move(picture).convertToFormat(QImage::Format_Mono);
    picture = scaledForPaper(picture);
    if (picture.isNull())
        return MonochromeImage();
    MonochromeImage image = packed(std::move(picture));
    image.setFileName(file.fileName());
    return image;
}

/// A regular file as it was at some time.
struct FileState
{
    QString path;
    dev_t device = 0;
    ino_t number = 0;
    qint64 size = 0;
    qint64 written = 0;  // nanoseconds since 1970, like the next
    qint64 changed = 0;  // by the system's own clock, whatever time of writing somebody set

    bool operator==(const FileState &other) const
    {
        return path == other.path && device == other.device && number == other.number &&
               size == other.size && written == other.written && changed == other.changed;
    }
};

uint qHash(const FileState &state, uint seed)
{
    return qHash(state.path, seed) ^ ::qHash(state.changed ^ state.size, seed);
}

constexpr qint64 nanosecondsPerMillisecond = 1'000'000;

qint64 nanosecondsOf(const timespec &time)
{
    constexpr qint64 millisecondsPerSecond = 1000;
    return time.tv_sec * millisecondsPerSecond * nanosecondsPerMillisecond + time.tv_nsec;
}

/// Nothing for what isn't a regular file: a FIFO would be waited for, and a device could act.
std::optional<FileState> stateOf(const QString &path)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    return FileState{path,
                     status.st_dev,
                     status.st_ino,
                     status.st_size,
                     nanosecondsOf(status.st_mtim),
                     nanosecondsOf(status.st_ctim)};
}

/// The last pictures of all threads. An unreadable one is kept as an image without pixels.
class KeptPictures
{
public:
    /// Nothing if the file isn't kept in this state.
    std::optional<MonochromeImage> find(const FileState &state)
    {
        const QMutexLocker lock(&m_mutex);
        const MonochromeImage *const image = m_images.object(state);
        return image == nullptr ? std::nullopt : std::optional<MonochromeImage>(*image);
    }

    void keep(const FileState &state, const MonochromeImage &image)
    {
        constexpr int bytesOfEntry = 1024;
        const QMutexLocker lock(&m_mutex);
        m_images.insert(state, new MonochromeImage(image), bytesOfEntry + image.image().size());
    }

private:
    static constexpr int mostBytes = 8 << 20;
    QMutex m_mutex;
    QCache<FileState, MonochromeImage> m_images{mostBytes};
};

Q_GLOBAL_STATIC(KeptPictures, keptPictures)

/// A file that has just been written could be written again without a change of its times, which
/// some file systems count in steps of two seconds.
bool mayChangeUnseen(const FileState &state)
{
    constexpr qint64 longestStep = 2000;
    return QDateTime::currentMSecsSinceEpoch() - state.changed / nanosecondsPerMillisecond <=
           longestStep;
}

/// An image without pixels if it can't be read. That isn't kept where the file can't be opened, as
/// it may be the process's trouble and not the file's.
MonochromeImage readOrKept(const QString &path)
{
    const auto state = stateOf(path);
    if (!state)
        return MonochromeImage();
    const bool isKept = !mayChangeUnseen(*state) && keptPictures() != nullptr;
    if (const auto kept = isKept ? keptPictures()->find(*state) : std::nullopt)
        return *kept;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return MonochromeImage();
    MonochromeImage image = imageIn(file);
    if (isKept)
        keptPictures()->keep(*state, image);
    return image;
}

}  // namespace

std::optional<MonochromeImage> load(const QString &directory, const QString &name)
{
    const QString path = findFile(directory, name);
    if (path.isEmpty())
        return std::nullopt;
    const MonochromeImage image = readOrKept(path);
    return image.width() > 0 ? std::optional<MonochromeImage>(image) : std::nullopt;
}

}  // namespace bbcodeimage
