#include "picturesonwhite.h"

#include <QImageReader>
#include <QPainter>
#include <QTemporaryDir>

#include "printerdocs/bbcodeparser.h"
#include "support.h"

namespace tool {

namespace {

/// Null where memory lacks.
QImage laidOnWhite(const QImage &picture)
{
    QImage paper(picture.size(), QImage::Format_RGB32);
    if (paper.isNull())
        return paper;
    paper.fill(Qt::white);
    QPainter painter(&paper);
    painter.drawImage(0, 0, picture);
    return paper;
}

/// What the library makes of a picture, or why it can't.
struct PrintedImage
{
    MonochromeImage image;
    QString fault;
};

PrintedImage printedImageOf(const QImage &picture)
{
    const QString lackOfMemory = QStringLiteral("there is no memory for a picture of it on white");
    if (picture.isNull())
        return {{}, lackOfMemory};
    const QTemporaryDir folder;
    const QString name = QStringLiteral("picture");
    if (!folder.isValid())
        return {{},
                QStringLiteral("there is no folder for a picture of it on white: %1")
                    .arg(folder.errorString())};
    if (!picture.save(folder.filePath(name), "PNG"))
        return {{},
                QStringLiteral("a picture of it on white can't be written into \"%1\"")
                    .arg(folder.path())};
    BbCodeParser parser(nullptr);
    parser.setImagesPath(folder.path());
    parser.parseText(QStringLiteral("[img name=%1][/img]").arg(name));
    const QList<DocumentBlock> blocks = parser.blocks();
    const MonochromeImage image = blocks.isEmpty() ? MonochromeImage() : blocks.constFirst().img();
    return {image, image.isValid() ? QString() : lackOfMemory};
}

/// Invalid for a picture that isn't transparent.
MonochromeImage imageOnWhite(const QString &fileName)
{
    QImageReader reader(fileName);
    reader.setDecideFormatFromContent(true);
    const QImage picture = reader.read();
    if (!picture.hasAlphaChannel())
        return MonochromeImage();
    PrintedImage printed = printedImageOf(laidOnWhite(picture));
    if (printed.fault.isEmpty())
        printed.image.setFileName(fileName);
    else
        complain(QStringLiteral("%1: what is transparent prints black, as %2")
                     .arg(fileName, printed.fault));
    return printed.image;
}

}  // namespace

void PicturesOnWhite::putInto(TextPrinterDocument &document)
{
    QList<DocumentBlock> blocks = document.blocks();
    for (DocumentBlock &block : blocks) {
        const QString fileName = block.img().fileName();
        if (!block.isImage() || fileName.isEmpty())
            continue;
        auto image = m_images.find(fileName);
        if (image == m_images.end())
            image = m_images.insert(fileName, imageOnWhite(fileName));
        if (image->isValid())
            block.setImg(*image);
    }
    document.setBlocks(blocks);
}

}  // namespace tool
