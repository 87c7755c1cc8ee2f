#include "previewsource.h"

#include <QFileInfo>
#include <memory>

#include "bbcodepictures.h"
#include "filling.h"
#include "fiscalsections.h"
#include "picturesonwhite.h"
#include "printedlines.h"
#include "printerdocs/bbcodeparser.h"
#include "printerdocs/printerdocumentformatter.h"
#include "printerslib/drivers/documentfiles.h"
#include "support.h"
#include "templatefile.h"
#include "templatelint.h"
#include "watch.h"

namespace tool {

namespace {

using printerslib::drivers::DocumentCleaner;
using printerslib::drivers::PrintTarget;

// The width of a BBCode line is a byte in the library.
constexpr int mostBbCodeCharacters = 255;

/// The same document on every paper.
PreviewedReceipt always(const TextPrinterDocument &document)
{
    PreviewedReceipt receipt;
    receipt.documentFor = [document](const PrintTarget &) { return document; };
    receipt.places = Places(document);
    return receipt;
}

/// @param characters of a line, which rules are as long as
TextPrinterDocument bbDocumentOf(const QString &text, const QString &imageFolder, int characters)
{
    BbCodeParser parser(nullptr);
    parser.setSymbolsPerLine(static_cast<unsigned char>(characters));
    parser.setImagesPath(imageFolder);
    parser.parseText(text);
    return parser.document();
}

/// Looks for the file of symbols that a template names, if it does. Complains if it can't be used.
void findSymbolFile(const QString &fileName, const QString &text, const QString &folder,
                    PreviewedReceipt &receipt)
{
    const auto file = templatelint::symbolFileOf(text.split(QLatin1Char('\n')), folder);
    if (!file)
        return;
    receipt.companions.append(file->path);
    receipt.isWhole = file->fault.isEmpty();
    if (!receipt.isWhole)
        complain(QStringLiteral("%1:%2:%3: %4")
                     .arg(fileName)
                     .arg(file->line)
                     .arg(file->column)
                     .arg(file->fault));
}

}  // namespace

bool keepsCompanions(const QStringList &outputs, const PreviewedReceipt &receipt)
{
    for (const QString &output : outputs) {
        for (const QString &companion : receipt.companions) {
            if (!isCompanion(output, companion))
                continue;
            complain(QStringLiteral("%1: the receipt takes \"%2\" for its own; choose another "
                                    "name or folder")
                         .arg(output, companion));
            return false;
        }
    }
    return true;
}

PreviewSource templateSource(const QString &fileName, const QString &data, const QTextCodec &codec,
                             DocumentCleaner::Rules rules, const QString &symbolFolder, int margin,
                             bool isFiscal)
{
    return [=, &codec]() -> std::optional<PreviewedReceipt> {
        const auto source = readTemplateAndDocument(fileName, data, codec, rules);
        if (!source)
            return std::nullopt;
        PrinterDocumentFormatter formatter(margin, nullptr);
        formatter.setTemplate(source->text);
        const FiscalReceipt printed =
            isFiscal ? fiscalReceiptOf(*source, margin)
                     : FiscalReceipt{formatter.toTextPrinterDocument(source->document), {}};
        PreviewedReceipt receipt = always(printed.document);
        receipt.sections = printed.sections;
        receipt.places = Places(printed.document,
                                [source, isFiscal] { return printedLinesOf(*source, isFiscal); });
        findSymbolFile(fileName, source->text, symbolFolder, receipt);
        return receipt;
    };
}

PreviewSource plainSource(const QString &fileName, const QTextCodec &codec, int margin)
{
    return [=, &codec]() -> std::optional<PreviewedReceipt> {
        const auto lines = readLines(fileName, codec);
        if (!lines)
            return std::nullopt;
        const PrinterDocumentFormatter formatter(margin, nullptr);
        const TextPrinterDocument document =
            formatter.plainTextToTextPrinterDocument(lines->join(QLatin1Char('\n')));
        PreviewedReceipt receipt = always(document);
        receipt.places =
            Places(document, [lines] { return templatelint::printedLinesOfText(*lines); });
        return receipt;
    };
}

PreviewSource bbCodeSource(const QString &fileName, const QString &imageFolder)
{
    return [=]() -> std::optional<PreviewedReceipt> {
        const auto text = readBbCode(fileName);
        if (!text)
            return std::nullopt;
        PreviewedReceipt receipt;
        receipt.isWhole = isFilled(fileName, *text);
        const QVector<BbCodePicture> pictures = picturesOf(*text, imageFolder);
        for (const BbCodePicture &picture : pictures) {
            receipt.companions.append(picture.pattern);
            if (picture.fault.isEmpty())
                continue;
            receipt.isWhole = false;
            complain(picture.line > 0 ? QStringLiteral("%1: line %2: %3")
                                            .arg(fileName)
                                            .arg(picture.line)
                                            .arg(picture.fault)
                                      : QStringLiteral("%1: %2").arg(fileName, picture.fault));
        }
        const auto onWhite = std::make_shared<PicturesOnWhite>();
        const TextPrinterDocument sample = bbDocumentOf(*text, imageFolder, mostBbCodeCharacters);
        receipt.places = Places(sample, [text = *text, sample] {
            return templatelint::printedLinesOfBbCode(text.split(QLatin1Char('\n')),
                                                      sample.blocks());
        });
        receipt.documentFor = [text = *text, imageFolder, onWhite](const PrintTarget &target) {
            TextPrinterDocument document = bbDocumentOf(
                text, imageFolder, qMin(target.symbolsPerLine(), mostBbCodeCharacters));
            onWhite->putInto(document);
            return document;
        };
        return receipt;
    };
}

PreviewSource documentSource(const QString &fileName)
{
    return [=]() -> std::optional<PreviewedReceipt> {
        using printerslib::drivers::DocumentFiles;
        const QString path = QFileInfo(fileName).absoluteFilePath();
        const QString fault = DocumentFiles::faultOf(path, DocumentFiles::ToLoad);
        if (!fault.isEmpty()) {
            complain(fault);
            return std::nullopt;
        }
        TextPrinterDocument document;
        if (document.loadFromFile(path))
            return always(document);
        complain(QStringLiteral("%1: no copy can be loaded; \"receipt document check\" says why")
                     .arg(fileName));
        return std::nullopt;
    };
}

}  // namespace tool
