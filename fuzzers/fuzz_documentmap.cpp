// The map form of a document, as JSON text or made up of keys and values.
#include <QJsonDocument>

#include "documentlaws.h"
#include "fuzzing.h"
#include "printerdocs/qrhelper.h"

using fuzzing::equal;

namespace {

QVariant takeBytes(FuzzedDataProvider &input)
{
    if (input.ConsumeBool())
        return fuzzing::takeValue(input);
    return QByteArray::fromStdString(input.ConsumeRandomLengthString(40)).toBase64();
}

QVariantMap takeImage(FuzzedDataProvider &input)
{
    QVariantMap map = fuzzing::takeMap(input, {"w", "h", "fn"}, 1);
    if (input.ConsumeBool())
        map.insert("w", input.ConsumeIntegralInRange<int>(-1, 40));
    if (input.ConsumeBool())
        map.insert("h", input.ConsumeIntegralInRange<int>(-1, 40));
    map.insert("data", takeBytes(input));
    return map;
}

QVariantMap takeTextBlock(FuzzedDataProvider &input)
{
    QVariantList text, formats, fonts, spacings;
    while (input.remaining_bytes() > 0 && input.ConsumeBool()) {
        text.append(input.ConsumeBool() ? QVariant(fuzzing::takeText(input))
                                        : fuzzing::takeValue(input));
        formats.append(takeBytes(input));
        fonts.append(takeBytes(input));
        if (!input.ConsumeBool())
            spacings.append(fuzzing::takeValue(input, 0));
        else
            spacings.append(input.ConsumeIntegral<int>());
    }
    return {{"txt", text},
            {"fmt", formats},
            {"fnt", fonts},
            {"ls", spacings},
            {"align", input.ConsumeIntegralInRange<int>(-9, 9)}};
}

QVariantMap takeBlock(FuzzedDataProvider &input)
{
    const QStringList keys{"txt", "fmt", "fnt", "ls", "align", "bar", "bt", "qr", "img", "type"};
    QVariantMap map;
    const int type = input.ConsumeIntegralInRange<int>(-1, 5);
    if (type == 0)
        map = takeTextBlock(input);
    if (type == 1)
        map.insert("img", takeImage(input));
    map.insert("type", type);
    const QVariantMap more = fuzzing::takeMap(input, keys, 1);
    for (auto entry = more.begin(); entry != more.end(); ++entry)
        map.insert(entry.key(), *entry);
    return map;
}

QVariantMap takeDocument(FuzzedDataProvider &input)
{
    QVariantMap map =
        fuzzing::takeMap(input, {"blocks", "cis", "pta", "cta", "rtout", "loop", "init", "spl"}, 1);
    QVariantList blocks;
    while (input.remaining_bytes() > 0 && input.ConsumeBool())
        blocks.append(takeBlock(input));
    map.insert("blocks", blocks);
    QVariantMap images;
    while (input.remaining_bytes() > 0 && input.ConsumeBool())
        images.insert("ci_" + QString::number(input.ConsumeIntegralInRange<int>(-3, 600)),
                      takeImage(input));
    map.insert("cis", images);
    return map;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedDataProvider input(data, size);
    const bool isJson = input.ConsumeBool();
    QVariantMap map;
    if (isJson)
        map = QJsonDocument::fromJson(
                  QByteArray::fromStdString(input.ConsumeRemainingBytesAsString()))
                  .toVariant()
                  .toMap();
    else
        map = takeDocument(input);

    TextPrinterDocument document;
    document.setMap(map);
    TextPrinterDocument other = document;
    other.appendBlock(DocumentBlock::emptyBlock(3, AlignRight, 1));
    other.setMap(map);
    equal("nothing is left of what was there before", other, document);
    documentlaws::check(document);
    document.toUpper();
    documentlaws::check(document);
    document.toLower();
    for (DocumentBlock block : document.blocks()) {
        block.qrCode();
        block.isEmpty();
        block.setSpacesBefore(3);
        if (block.isText())
            documentlaws::check([&] {
                TextPrinterDocument single;
                single.appendBlock(block);
                return single;
            }());
    }
    return 0;
}
