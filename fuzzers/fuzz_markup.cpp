// Lines of markup, one after the other, against a plain model of the markup.
#include "documentlaws.h"
#include "fuzzing.h"
#include "printerdocs/printerdocumentformatter.h"
#include "support/markupmodel.h"

using fuzzing::equal;

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
    int lines = 0;
    for (const DocumentBlock &block : document.blocks())
        lines += block.text().size();
    equal("as many lines as the blocks have",
          formatter.plainTextToFormattedPlainText(text, width).size(), lines);
    formatter.plainTextToHtml(text, true);
    formatter.plainTextToHtmlDocument(text, false);
    return 0;
}
