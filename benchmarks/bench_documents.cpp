// A printable document of a receipt of N item lines, as its exchange form. The bytes are the same.
//
//   map_to_json    toMap(), written by QJsonDocument
//   json_directly  the same document made of QJson's own objects and arrays

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <memory>

#include "frame.h"
#include "printerdocs/printerdocumentformatter.h"
#include "receipt/sale.h"

namespace {

TextPrinterDocument makeDocument(int items)
{
    const receipt::Sale sale = receipt::makeSale(items);
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate(receipt::indexedTemplate(sale));
    return formatter.toTextPrinterDocument(receipt::indexedDocument(sale));
}

QByteArray mapToJson(const TextPrinterDocument &document)
{
    return QJsonDocument::fromVariant(document.toMap()).toJson(QJsonDocument::Compact);
}

QJsonArray base64Of(const QList<QByteArray> &lines)
{
    QJsonArray array;
    for (const QByteArray &bytes : lines)
        array.append(QString::fromLatin1(bytes.toBase64()));
    return array;
}

QJsonObject objectOf(const DocumentBlock &block)
{
    QJsonArray spacing;
    for (const int code : block.lineSpacing())
        spacing.append(code);
    return {{QStringLiteral("type"), block.type()},
            {QStringLiteral("txt"), QJsonArray::fromStringList(block.text())},
            {QStringLiteral("fmt"), base64Of(block.format())},
            {QStringLiteral("fnt"), base64Of(block.font())},
            {QStringLiteral("align"), block.alignment()},
            {QStringLiteral("ls"), spacing}};
}

QByteArray jsonDirectly(const TextPrinterDocument &document)
{
    QJsonArray blocks;
    for (const DocumentBlock &block : document.blocks())
        blocks.append(objectOf(block));
    const QJsonObject object{
        {QStringLiteral("blocks"), blocks},
        {QStringLiteral("pta"), static_cast<int>(document.prevTicketAction())},
        {QStringLiteral("cta"), static_cast<int>(document.currentTicketAction())},
        {QStringLiteral("loop"), static_cast<int>(document.loopPolicy())},
        {QStringLiteral("init"), document.doInit()}};
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

}  // namespace

int main(int argc, char **argv)
{
    frame::setWarnings(false);
    std::vector<frame::Sameness> texts;
    for (const int items : {10, 100, 1000}) {
        const auto document = std::make_shared<const TextPrinterDocument>(makeDocument(items));
        const std::string suffix = '/' + std::to_string(items);
        frame::add("map_to_json" + suffix, [document](benchmark::State &state) {
            for (auto _ : state)
                benchmark::DoNotOptimize(mapToJson(*document));
        });
        frame::add("json_directly" + suffix, [document](benchmark::State &state) {
            for (auto _ : state)
                benchmark::DoNotOptimize(jsonDirectly(*document));
        });
        texts.push_back({"json" + suffix, jsonDirectly(*document), mapToJson(*document)});
    }
    return frame::run(argc, argv, texts);
}
