#include "encoder/picturesetter_p.h"

#include <algorithm>

#include "printerdocs/monochromeimage.h"

namespace printerslib::drivers {

namespace {

constexpr int bitsOfByte = 8;
constexpr qint64 rowBitsOfBbCode = 32;

qint64 rowBytesOf(qint64 width, qint64 alignmentBits)
{
    return alignmentBits / bitsOfByte * ((width + alignmentBits - 1) / alignmentBits);
}

/// An image doesn't say how its rows are aligned; pictures of BBCode have rows of whole 32 bits,
/// and what has too few bytes for that is aligned to bytes.
qint64 rowBytesOf(const MonochromeImage &image)
{
    const qint64 rowBytes = rowBytesOf(image.width(), rowBitsOfBbCode);
    const bool isEnough = image.image().size() >= rowBytes * image.height();
    return isEnough ? rowBytes : rowBytesOf(image.width(), bitsOfByte);
}

/// What is right of a width is left out, what the bytes lack is blank.
Paper::Picture croppedTo(int width, const MonochromeImage &image)
{
    const QByteArray bytes = image.image();
    const qint64 sourceBytes = rowBytesOf(image);
    const int rowBytes = (width + bitsOfByte - 1) / bitsOfByte;
    const auto lastMask = static_cast<char>(0xFF << (rowBytes * bitsOfByte - width));
    Paper::Picture picture;
    picture.size = QSize(width, image.height());
    picture.rows = QByteArray(rowBytes * image.height(), '\0');
    for (int y = 0; y < image.height(); ++y) {
        const qint64 offset = sourceBytes * y;
        const auto count =
            static_cast<int>(qBound(qint64(0), bytes.size() - offset, qint64(rowBytes)));
        char *const row = picture.rows.data() + qsizetype(y) * rowBytes;
        if (count > 0)
            std::copy_n(bytes.constData() + offset, count, row);
        row[rowBytes - 1] = static_cast<char>(row[rowBytes - 1] & lastMask);
    }
    return picture;
}

}  // namespace

void addPicture(LayoutSheet &sheet, const DocumentBlock &block)
{
    const MonochromeImage image = block.img();
    const int line = sheet.target().lineDots();
    if (!sheet.hasRaster()) {
        sheet.addFault(QStringLiteral("Picture"), QStringLiteral("The model prints none"));
        return;
    }
    if (image.width() > line)
        sheet.notes().add(
            QStringLiteral("the picture is %1 dots wide; what is right of the line's %2 is lost")
                .arg(image.width())
                .arg(line));
    const int width = std::min(image.width(), line);
    PrintLayout::Row row;
    row.kind = PrintLayout::Row::Picture;
    row.left = sheet.leftOf(width, block.alignment());
    row.height = image.height();
    row.first = sheet.layout().pictures.size();
    sheet.addRow(row);
    if (!sheet.isFull())
        sheet.layout().pictures.append(croppedTo(width, image));
}

}  // namespace printerslib::drivers
