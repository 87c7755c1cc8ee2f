// A template and a document on the whole way to text, HTML and blocks.
//
// The input is text: the template, a line "%%", a line of entries, and a line for each attribute, a
// letter for its type, its name, "=" and its value.
#include <QDateTime>

#include "documentlaws.h"
#include "fuzzing.h"
#include "outputmodel.h"
#include "pipelinemodel.h"
#include "settings/iprintdevicesettings.h"
#include "settings/systemprintersettings.h"

using fuzzing::equal;

namespace {

QVariant valueOf(char type, const QString &text)
{
    switch (type) {
        case 'i':
            return text.toInt();
        case 'u':
            return text.toUInt();
        case 'l':
            return text.toLongLong();
        case 'w':
            return text.toULongLong();
        case 'r':
            return text.toDouble();
        case 'd':
            return QDate::fromString(text, Qt::ISODate);
        case 't':
            return QTime::fromString(text, Qt::ISODate);
        case 'm':
            return QDateTime::fromString(text, Qt::ISODate);
        case 'b':
            return text == QLatin1String("1");
        case 'n':
            return QVariant();
        default:
            return text;
    }
}

QMap<QString, QVariant> attributesOf(const QStringList &lines)
{
    QMap<QString, QVariant> attributes;
    for (const QString &line : lines) {
        const int sign = line.indexOf('=');
        if (sign >= 1)
            attributes.insert(line.mid(1, sign - 1),
                              valueOf(line.at(0).toLatin1(), line.mid(sign + 1)));
    }
    return attributes;
}

void setCharactersMode(int mode)
{
    static const QSharedPointer<IPrintDeviceSettings> settings = [] {
        QSharedPointer<IPrintDeviceSettings> object(new SystemPrinterSettings);
        IPrintDeviceSettings::setPrintDeviceSettings(object);
        return object;
    }();
    settings->setCharactersMode(static_cast<IPrintDeviceSettings::ECharactersMode>(mode));
}

/// Text and blocks are two forms of one receipt, if no code takes the rest of a line away.
void textIsThatOfTheBlocks(const PrinterDocumentFormatter &formatter,
                           const PrinterDocument &document, const QStringList &lines)
{
    const bool hasCodes = std::any_of(lines.cbegin(), lines.cend(),
                                      [](const QString &line) { return line.contains("<QR>"); });
    if (hasCodes)
        return;
    QStringList text;
    for (DocumentBlock block : formatter.toTextPrinterDocument(document).blocks())
        text += block.toStringList(0);
    equal("the text has the blocks' lines", formatter.toPlainText(document, 0), text);
}

/// Asked twice, as what one rendering leaves behind would show in the next.
void outputIsThatOfTheLines(const PrinterDocumentFormatter &formatter,
                            const PrinterDocument &document, const QStringList &lines, int width)
{
    const QString head = "<p><table width=\"100%\"cellspacing=0 cellpadding=0>";
    const QStringList text = outputmodel::plainTextOf(formatter, lines, width);
    const QString html =
        outputmodel::htmlOf(formatter, lines, true, head, outputmodel::fragmentTail);
    const QString page = outputmodel::htmlOf(formatter, lines, false, outputmodel::documentHead,
                                             outputmodel::documentTail);
    for (int time = 0; time < 2; ++time) {
        equal("the text is that of the lines", formatter.toPlainText(document, width), text);
        equal("the HTML is that of the lines", formatter.toHtml(document, true), html);
        equal("so is the page", formatter.toHtmlDocument(document, false), page);
    }
}

/// Without removal the marks go, and what stood between them stays.
void partsCanBeKept(const PrinterDocumentFormatter &formatter, const QStringList &lines)
{
    QStringList kept = lines;
    formatter.removeXParts(kept, false);
    const QString text = lines.join('\n').remove("<X:>").remove("<:X>");
    equal("marked parts are kept", kept.join('\n'), text);
}

void splitKeepsTheTemplate(PrinterDocumentFormatter &formatter)
{
    bool found = false;
    const auto parts = formatter.splitByFiscalParts(found, PrinterDocumentFormatter::PARTS);
    QString pieces;
    int sections = 0;
    for (const auto &part : parts) {
        sections += part.second ? 0 : 1;
        equal("a section has no text", part.first == Unsplit, !part.second.isNull());
        if (part.second)
            pieces += part.second->getTemplate().join(QString());
    }
    equal("a section is there if one was found", sections > 0, found);
    if (!found)
        equal("a template without markers stays whole", pieces,
              formatter.getTemplate().join(QString()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedDataProvider input(data, size);
    setCharactersMode(input.ConsumeIntegralInRange<int>(0, 2));
    const bool isCopy = input.ConsumeBool();
    const int width = input.ConsumeIntegralInRange<int>(-2, 60);
    PrinterDocumentFormatter formatter(input.ConsumeIntegralInRange<int>(-1, 20), nullptr);
    const QString text = fuzzing::takeRest(input);
    const int seam = text.indexOf("\n%%\n");
    formatter.setTemplate(text.left(seam));
    QStringList lines = seam < 0 ? QStringList() : text.mid(seam + 4).split('\n');
    PrinterDocument document;
    document.setIsCopy(isCopy);
    if (!lines.isEmpty())
        document.setEntries(lines.takeFirst().replace('|', '\t'));
    document.setAttributes(attributesOf(lines));

    PipelineModel model(formatter, document);
    const std::optional<QStringList> prepared = model.prepared();
    if (!prepared)
        return -1;
    for (const QString &line : formatter.getTemplate()) {
        const std::optional<QString> filled = PipelineModel(formatter, document).filled(line);
        if (filled)
            equal("tags are filled", formatter.processDocAttributes(line, document), *filled);
    }
    equal("the document is prepared", formatter.prepareDocument(document), *prepared);
    textIsThatOfTheBlocks(formatter, document, *prepared);
    outputIsThatOfTheLines(formatter, document, *prepared, width);
    partsCanBeKept(formatter, formatter.getTemplate());
    const TextPrinterDocument printed = formatter.toTextPrinterDocument(document);
    equal("two renderings", formatter.toTextPrinterDocument(document), printed);
    documentlaws::check(printed);
    if (IPrintDeviceSettings::printDeviceSettings()->charactersMode() ==
        IPrintDeviceSettings::CharactersAsWritten)
        documentlaws::bytesReachOverTheText(printed);
    splitKeepsTheTemplate(formatter);
    return 0;
}
