// The map form of a document, as JSON text or made up of keys and values.
#include <QJsonDocument>

#include "documentinput.h"
#include "documentlaws.h"
#include "fuzzing.h"
#include "printerdocs/qrhelper.h"

using fuzzing::equal;

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
        map = fuzzing::takeDocument(input);

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
