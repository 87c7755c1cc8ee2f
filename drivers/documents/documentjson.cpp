#include "printerslib/drivers/documentjson.h"

#include <QJsonArray>
#include <QJsonValue>
#include <QLatin1String>
#include <QList>
#include <QMultiMap>
#include <QString>
#include <QStringList>

#include "printerdocs/document/lastofeachsize_p.h"
#include "printerdocs/documentblock.h"
#include "printerdocs/monochromeimage.h"
#include "printerdocs/textprinterdocument.h"

namespace printerslib::drivers {

namespace {

// Wider lines only are written.
constexpr int unwrittenSymbolsPerLine = 32;

QJsonValue inBase64(const QByteArray &bytes)
{
    return QLatin1String(bytes.toBase64());
}

using Base64Values = documents::LastOfEachSize<QJsonValue>;

QJsonArray arrayOf(const QList<QByteArray> &lines, Base64Values &base64)
{
    QJsonArray array;
    for (const QByteArray &bytes : lines)
        array.append(base64.of(bytes, inBase64));
    return array;
}

QJsonArray arrayOf(const QList<int> &numbers)
{
    QJsonArray array;
    for (const int number : numbers)
        array.append(number);
    return array;
}

QJsonObject objectOf(const MonochromeImage &image)
{
    QJsonObject object{{QLatin1String("data"), inBase64(image.image())},
                       {QLatin1String("h"), image.height()},
                       {QLatin1String("w"), image.width()}};
    if (!image.fileName().trimmed().isEmpty())
        object.insert(QLatin1String("fn"), image.fileName());
    return object;
}

/// In the order of the keys: an object's entries stand in it, and those behind a new one are moved.
void insertText(QJsonObject &object, const DocumentBlock &block, Base64Values &base64)
{
    const QList<QByteArray> formats = block.format();
    const QList<QByteArray> fonts = block.font();
    const QJsonArray formatArray = arrayOf(formats, base64);
    object.insert(QLatin1String("align"), block.alignment());
    object.insert(QLatin1String("fmt"), formatArray);
    // Alike where all is plain: then one array stands for both.
    object.insert(QLatin1String("fnt"), fonts == formats ? formatArray : arrayOf(fonts, base64));
    object.insert(QLatin1String("ls"), arrayOf(block.lineSpacing()));
    object.insert(QLatin1String("txt"), QJsonArray::fromStringList(block.text()));
}

QJsonObject objectOf(const DocumentBlock &block, Base64Values &base64)
{
    QJsonObject object;
    if (block.isText()) {
        insertText(object, block, base64);
    } else if (block.isImage()) {
        object.insert(QLatin1String("img"), objectOf(block.img()));
    } else if (block.isBarcode()) {
        object.insert(QLatin1String("bar"), block.text().constFirst());
        object.insert(QLatin1String("bt"), block.barCodeType());
    } else if (block.isQrCode()) {
        object.insert(QLatin1String("qr"), block.text().constFirst());
    }
    object.insert(QLatin1String("type"), block.type());
    return object;
}

/// Of several images of one code the first that was added, which a walk meets last.
QJsonObject objectOf(const QMultiMap<signed char, MonochromeImage> &images)
{
    QJsonObject object;
    for (auto image = images.cbegin(); image != images.cend(); ++image)
        object.insert(QLatin1String("ci_") + QString::number(image.key()), objectOf(*image));
    return object;
}

QJsonArray arrayOf(const QList<DocumentBlock> &blocks)
{
    QJsonArray array;
    Base64Values base64;
    for (const DocumentBlock &block : blocks)
        array.append(objectOf(block, base64));
    return array;
}

}  // namespace

QJsonObject DocumentJson::toObject(const TextPrinterDocument &document)
{
    QJsonObject object{
        {QLatin1String("blocks"), arrayOf(document.blocks())},
        {QLatin1String("cta"), static_cast<int>(document.currentTicketAction())},
        {QLatin1String("loop"), static_cast<qint64>(static_cast<uint>(document.loopPolicy()))},
        {QLatin1String("pta"), static_cast<int>(document.prevTicketAction())}};
    if (!document.charImages().isEmpty())
        object.insert(QLatin1String("cis"), objectOf(document.charImages()));
    if (document.retractionTimeout() > 0)
        object.insert(QLatin1String("rtout"), document.retractionTimeout());
    if (document.doInit())
        object.insert(QLatin1String("init"), true);
    if (document.symbolsPerLine() > unwrittenSymbolsPerLine)
        object.insert(QLatin1String("spl"), document.symbolsPerLine());
    return object;
}

QByteArray DocumentJson::toJson(const TextPrinterDocument &document, QJsonDocument::JsonFormat form)
{
    return QJsonDocument(toObject(document)).toJson(form);
}

}  // namespace printerslib::drivers
