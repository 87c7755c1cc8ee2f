// A document to the bytes for a printer, and these to paper.
#include <QHash>
#include <QJsonDocument>
#include <algorithm>

#include "documentinput.h"
#include "fuzzing.h"
#include "printerdocs/textprinterdocument.h"
#include "printerslib/drivers/documentencoder.h"
#include "printerslib/drivers/streaminterpreter.h"
#include "printerslib/drivers/streamreader.h"

using fuzzing::equal;
using fuzzing::holds;
using namespace printerslib::drivers;

namespace {

constexpr int mostPapers = 4;
constexpr int mostFonts = 7;

PrintOptions takeOptions(FuzzedDataProvider &input, const PrinterProfile &profile)
{
    PrintOptions options;
    options.isPicture = input.ConsumeBool();
    options.drawer = input.PickValueInArray(
        {PrintOptions::Drawer::Shut, PrintOptions::Drawer::Before, PrintOptions::Drawer::After});
    options.emptyLinesAtEnd = input.ConsumeIntegralInRange<int>(0, 9);
    options.spacesInFront = input.ConsumeIntegralInRange<int>(0, 20);
    options.paperLoop = input.ConsumeIntegralInRange<int>(0, 3);
    options.ticketMove = input.ConsumeIntegral<signed char>();
    const QList<int> pages = profile.codePages().keys();
    const int page = input.ConsumeIntegralInRange<int>(0, pages.size());
    if (page < pages.size())
        options.codePage = pages.at(page);
    return options;
}

/// Targets are dear to make, and few.
const PrintTarget &targetOf(const QString &model, int paper, int font)
{
    static QHash<QString, PrintTarget> known;
    const QString key = QStringLiteral("%1 %2 %3").arg(model).arg(paper).arg(font);
    auto target = known.find(key);
    if (target == known.end())
        target = known.insert(key, PrintTarget::forModel(model, paper, font).value());
    return *target;
}

TextPrinterDocument takeDocument(FuzzedDataProvider &input)
{
    QVariantMap map;
    if (input.ConsumeBool())
        map = QJsonDocument::fromJson(
                  QByteArray::fromStdString(input.ConsumeRemainingBytesAsString()))
                  .toVariant()
                  .toMap();
    else
        map = fuzzing::takeDocument(input);
    TextPrinterDocument document;
    document.setMap(map);
    return document;
}

bool isText(unsigned char byte)
{
    return byte >= 0x20 && byte != 0x7F;
}

void allIsKnown(const QByteArray &bytes, const PrinterProfile &profile)
{
    const QVector<StreamCommand> commands = StreamReader::commandsOf(bytes, profile);
    for (const StreamCommand &command : commands) {
        holds("commands are known and whole",
              command.kind == StreamCommand::Text || command.kind == StreamCommand::Command);
        holds("texts hold nothing that acts",
              command.kind != StreamCommand::Text ||
                  std::all_of(command.bytes.begin(), command.bytes.end(), isText));
        for (const StreamCommand::RealTime &found : command.realTime)
            holds("nothing in a picture acts at once", found.isSwitchedOff);
    }
}

void paperIsAsTold(const EncodedDocument &encoded, const PrinterProfile &profile,
                   const PrintOptions &options)
{
    int pulses = 0;
    int cuts = 0;
    for (const Paper &paper : StreamInterpreter::papersOf(encoded.bytes, profile)) {
        for (const Paper::Event &event : paper.events) {
            cuts += event.kind == Paper::Event::Cut || event.kind == Paper::Event::PartialCut;
            pulses += event.kind == Paper::Event::Pulse;
            if (event.kind == Paper::Event::Note)
                fuzzing::fail("the printer does all that it is told", event.text, QString());
        }
        for (const Paper::Cell &cell : paper.cells)
            holds("texts stay on the head", cell.left + cell.width <= profile.headDots());
        holds("as long as a printer prints", !paper.isTooLong);
    }
    equal("as many pieces as told", cuts, encoded.pieces);
    holds("no text opens a drawer", options.drawer != PrintOptions::Drawer::Shut || pulses == 0);
}

void marksLeadThroughTheBytes(const EncodedDocument &encoded)
{
    int last = 0;
    for (const EncodedDocument::Mark &mark : encoded.marks) {
        holds("marks follow each other", mark.offset >= last);
        last = mark.offset;
    }
    holds("and lie in the bytes", last <= encoded.bytes.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const QStringList models = PrinterProfile::modelIds();
    FuzzedDataProvider input(data, size);
    const QString model = models.at(input.ConsumeIntegralInRange<int>(0, models.size() - 1));
    const int paper = input.ConsumeIntegralInRange<int>(0, mostPapers);
    const int font = input.ConsumeIntegralInRange<int>(0, mostFonts);
    const PrintTarget &target = targetOf(model, paper, font);
    const PrintOptions options = takeOptions(input, target.profile());
    const TextPrinterDocument document = takeDocument(input);

    const DocumentEncoder encoder(target, options);
    const EncodedDocument encoded = encoder.encode(document);
    equal("an encoder keeps nothing", encoder.encode(document).bytes, encoded.bytes);
    holds("an error instead of bytes", encoded.error.isEmpty() || encoded.bytes.isEmpty());
    allIsKnown(encoded.bytes, target.profile());
    paperIsAsTold(encoded, target.profile(), options);
    marksLeadThroughTheBytes(encoded);
    return 0;
}
