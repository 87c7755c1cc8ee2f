// The catalogue of printer models as JSON.
#include <QJsonDocument>

#include "fuzzing.h"
#include "printers/printerinfo.h"

using fuzzing::bytesOf;
using fuzzing::equal;
using fuzzing::holds;

namespace {

PrinterInfo afterItsMapForm(const PrinterInfo &record)
{
    PrinterInfo result;
    result.setMap(record.toMap());
    return result;
}

QByteArray allOf(const PrinterInfo &record)
{
    QVariantList fontIds;
    for (const FontInfo &font : record.fontTypes())
        fontIds.append(int(font.id()));
    QVariantList paperIds;
    for (const int id : record.paperTypes().keys())
        paperIds.append(id);
    return bytesOf(QVariantList{record.toMap(), fontIds, paperIds});
}

void mapFormKeepsTheRecord(const PrinterInfo &record)
{
    PrinterInfo expected = record;
    expected.setEjection(false);
    expected.setCustomSymbols(record.customImages());
    const PrinterInfo once = afterItsMapForm(record);
    equal("the map form keeps the record", once == expected, true);
    // Ids below 0 become 0, and of several fonts of one id the last one stays.
    const PrinterInfo twice = afterItsMapForm(once);
    equal("the map form keeps what came out of it twice", allOf(afterItsMapForm(twice)),
          allOf(twice));
}

void paperIsOneOfThePapers(const PrinterInfo &record, int id)
{
    const QMap<int, PaperInfo> papers = record.paperTypes();
    const PaperInfo paper = record.paperType(id);
    holds("a paper of the record, or none",
          papers.values().contains(paper) || paper == PaperInfo());
    if (papers.contains(id))
        equal("the paper of that id", paper == papers.value(id), true);
    for (auto entry = papers.cbegin(); entry != papers.cend(); ++entry)
        equal("a paper stands under its id", entry.key(), int(entry->id()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedDataProvider input(data, size);
    const int id = input.ConsumeIntegralInRange<int>(-200, 200);
    const QByteArray json = QByteArray::fromStdString(input.ConsumeRemainingBytesAsString());
    const QList<PrinterInfo> records = PrinterInfo::fromJson(json);
    equal("a record for each element", records.size(),
          QJsonDocument::fromJson(json).toVariant().toList().size());
    for (const PrinterInfo &record : records) {
        mapFormKeepsTheRecord(record);
        paperIsOneOfThePapers(record, id);
        FontInfo font;
        for (const FontInfo &each : record.fontTypes()) {
            font.setMap(each.toMap());
            FontInfo named = each;
            named.setId(font.id());
            equal("the map form keeps a font but for its id", bytesOf(font.toMap()),
                  bytesOf(named.toMap()));
        }
    }
    return 0;
}
