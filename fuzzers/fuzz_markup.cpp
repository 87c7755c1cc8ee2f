// Lines of markup, one after the other, against a plain model of the markup.
#include "documentlaws.h"
#include "fuzzing.h"
#include "outputmodel.h"
#include "printerdocs/printerdocumentformatter.h"
#include "support/markupmodel.h"

using fuzzing::equal;

namespace {

void outputIsThatOfTheLines(const PrinterDocumentFormatter &formatter, const QString &text,
                            int width)
{
    const QString head = "<p><table width=\"100%\" cellspacing=0 cellpadding=0>";
    const QStringList lines = text.split('\n');
    equal("the text is that of the lines", formatter.plainTextToFormattedPlainText(text, width),
          outputmodel::plainTextOf(formatter, lines, width));
    equal("the HTML is that of the lines", formatter.plainTextToHtml(text, true),
          outputmodel::htmlOf(formatter, lines, true, head, outputmodel::fragmentTail));
    equal("so is the page", formatter.plainTextToHtmlDocument(text, false),
          outputmodel::htmlOf(formatter, lines, false, outputmodel::documentHead,
                              outputmodel::documentTail));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedDataProvider input(data, size);
    const int margin = input.ConsumeIntegralInRange<int>(-1, 20);
    const int spacing = input.ConsumeIntegralInRange<int>(0, 9);
    const int width = input.ConsumeIntegralInRange<int>(-2, 60);
    MarkupCarry carry;
    carry.format = input.ConsumeIntegral<unsigned char>();
    carry.font = input.ConsumeIntegral<unsigned char>();
    carry.alignment = static_cast<ETextAlignment>(input.ConsumeIntegralInRange<int>(0, 3));
    MarkupCarry expectedCarry = carry;
    const QString text = fuzzing::takeRest(input);

    const PrinterDocumentFormatter formatter(margin, nullptr);
    MarkupModel model(margin);
    for (const QString &line : text.split('\n')) {
        const DocumentBlock block =
            formatter.formatPrintStr(line, carry.format, carry.font, carry.alignment, spacing);
        const MarkupOutcome outcome = model.read(line, expectedCarry, spacing);
        DocumentBlock expected;
        if (outcome.valid) {
            expected.setText({outcome.text});
            expected.setFormat(QList<QByteArray>{outcome.formats});
            expected.setFont(QList<QByteArray>{outcome.fonts});
            expected.setAlignment(outcome.alignment);
            expected.setLineSpacing(QList<int>{outcome.lineSpacing});
        }
        equal("a line becomes its block", block, expected);
        equal("the format goes on", int(carry.format), int(expectedCarry.format));
        equal("the font goes on", int(carry.font), int(expectedCarry.font));
        equal("the alignment goes on", int(carry.alignment), int(expectedCarry.alignment));
    }

    const TextPrinterDocument document = formatter.plainTextToTextPrinterDocument(text);
    equal("two renderings", formatter.plainTextToTextPrinterDocument(text), document);
    documentlaws::check(document);
    documentlaws::bytesReachOverTheText(document);
    QStringList blockLines;
    for (DocumentBlock block : document.blocks())
        blockLines += block.toStringList(0);
    equal("the text has the blocks' lines", formatter.plainTextToFormattedPlainText(text, 0),
          blockLines);
    outputIsThatOfTheLines(formatter, text, width);
    return 0;
}
