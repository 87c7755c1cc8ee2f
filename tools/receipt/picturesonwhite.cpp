#include "picturesonwhite.h"

#include <QImageReader>
#include <QPainter>
#include <QTemporaryDir>

#include "printerdocs/bbcodeparser.h"
#include "support.h"

namespace tool {

namespace {

QImage laidOnWhite(const QImage &picture)
{
    QImage paper(picture.size(), QImage::Format_RGB32);
    paper.fill(Qt::white);
    QPainter painter(&paper);
    painter.drawImage(0, 0, picture);
    return paper;
}

/// What the library makes of a picture.
MonochromeImage printedImageOf(const QImage &picture)
{
    const QTemporaryDir folder;
    const QString name = QStringLiteral("picture");
    if (!folder.isValid() || !picture.save(folder.filePath(name), "PNG"))
        return MonochromeImage();
    BbCodeParser parser(nullptr);
    parser.setImagesPath(folder.path());
    parser.parseText(QStringLiteral("[img name=%1][/img]").arg(name));
    const QList<DocumentBlock> blocks = parser.blocks();
    return blocks.isEmpty() ? MonochromeImage() : blocks.constFirst().img();
}

/// Invalid for a picture that isn't transparent.
MonochromeImage imageOnWhite(const QString &fileName)
{
    QImageReader reader(fileName);
    reader.setDecideFormatFromContent(true);
    const QImage picture = reader.read();
    if (!picture.hasAlphaChannel())
        return MonochromeImage();
    MonochromeImage image = printedImageOf(laidOnWhite(picture));
    if (image.isValid())
        image.setFileName(fileName);
    else
        complain(QStringLiteral("%1: what is transparent prints black, as there is no folder for a "
                                "picture of it on white")
                     .arg(fileName));
    return image;
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
