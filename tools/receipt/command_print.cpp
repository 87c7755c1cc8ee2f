#include <printerslib/drivers/documentencoder.h>
#include <printerslib/drivers/leadingline.h>
#include <printerslib/drivers/printlayout.h>
#include <printerslib/drivers/symbologydrawer.h>

#include "commands.h"
#include "forms.h"
#include "jobreport.h"
#include "outputfile.h"
#include "printerdelivery.h"
#include "printeroption.h"
#include "printnotes.h"
#include "printoptions.h"
#include "queuedelivery.h"
#include "shopfile.h"
#include "shopsettings.h"
#include "streamdestination.h"
#include "support.h"
#include "templatefile.h"

namespace {

using printerslib::drivers::DocumentEncoder;
using printerslib::drivers::EncodedDocument;
using printerslib::drivers::PrinterAddress;
using printerslib::drivers::PrintJobOptions;
using printerslib::drivers::PrintLayout;
using printerslib::drivers::PrintNote;
using printerslib::drivers::PrintOptions;
using printerslib::drivers::PrintQueueRequest;
using printerslib::drivers::PrintTarget;

// In lines of up to 79 characters, as a terminal shows them.
const char description[] =
    R"(Prints a receipt: from a template and a document, or from one of --bbcode,
--document and --plain. Its bytes, as the model understands them, go to the
printer of --to as a job; or with "--to file:PATH" to a file, with "--to -" to
standard output. "receipt decode" reads them back, and what "receipt preview"
draws is what they print.

Text is laid out for the model's paper, but no wider than its head, and printed
in the printer's own fonts; a character that none of its character sets has is
sent as dots, and so is all text with --as-picture. Codes are drawn by the
printer where it can, and are pictures elsewhere. The document says whether the
ticket is cut, held out or handed out; before a cut the paper is fed as far as
the cutter is from the head. Nothing in a text acts on the printer, and nothing
but --drawer opens a drawer.

A job waits for its turn behind those of other programs, and for nothing else
unless told to. Ctrl+C stops it at the end of a command, resets the printer and
cuts; the second Ctrl+C ends the program at once, and the next job repairs what
is left. Standard output tells what is known of it: it is printed; or
processed, which is all read, without an error behind that; or sent. With
--queue or --later nothing is printed now: standard output tells the job's
number in that folder, and exit status 0 says that it is safe there.

Standard error tells what isn't printed as the document asks for, by the line of
the template or of the text (of a saved document by the printed line, before
long lines are wrapped); with --strict that is an error, and nothing is written.
It tells, too, which lines are too long for the paper. The terminal that shows
it never gets the bytes.

Exit status: 0 printed, processed, or sent to a printer that can't tell more;
3 sent, but the confirmation that was expected didn't come, or Ctrl+C came
first; 4 not printed, as nothing went out; 5 some of it went out; 1 bad input; 2
wrong usage.)";

constexpr int usualBaud = 19200;
constexpr int fastestBaud = 4'000'000;
// A start bit, eight bits of data and a stop bit.
constexpr int bitsOfAByte = 10;
constexpr int mostEmptyLines = 255;

struct DrawerRow
{
    const char *name;
    PrintOptions::Drawer drawer;
};

constexpr DrawerRow drawerRows[] = {
    {"before", PrintOptions::Drawer::Before},
    {"after", PrintOptions::Drawer::After},
};

struct Options
{
    const QCommandLineOption emptyLines{
        QStringLiteral("empty-lines"),
        QStringLiteral("Empty lines at the end, 0 to %1; before a cut no less is fed than the "
                       "cutter needs. Default: those of --settings, or 0.")
            .arg(mostEmptyLines),
        QStringLiteral("N"), QStringLiteral("0")};
    const QCommandLineOption drawer{
        QStringLiteral("drawer"),
        QStringLiteral("When the drawer is opened: before or after. Default: it stays shut."),
        QStringLiteral("WHEN")};
    const QCommandLineOption drawerPin{
        QStringLiteral("drawer-pin"),
        QStringLiteral("Which drawer, by the pin of its connector: 2 (default) or 5."),
        QStringLiteral("N"), QStringLiteral("2")};
    const QCommandLineOption strict{
        QStringLiteral("strict"),
        QStringLiteral("Write nothing, with exit status 1, if something isn't printed as the "
                       "document asks for.")};
    const QCommandLineOption dryRun{
        QStringLiteral("dry-run"),
        QStringLiteral("Write nothing; tell how many bytes and pieces of paper it would be, and "
                       "how long the bytes take on the printer's line.")};
    const QCommandLineOption baud{
        QStringLiteral("baud"),
        QStringLiteral("Speed of that line; default: that of --to, that of --settings, or %1.")
            .arg(usualBaud),
        QStringLiteral("N"), QString::number(usualBaud)};
    const QCommandLineOption repeat{
        QStringLiteral("repeat"),
        QStringLiteral("Print a line in front that says that this is a repeat, in the language of "
                       "--language.")};
};

struct Request
{
    tool::ChosenSource source;
    std::optional<PrintTarget> target;
    PrintOptions options;
    tool::StreamDestination destination;
    PrintJobOptions job;
    /// Of the other printer, whose address is `spare`; nothing: the same as of this one.
    std::optional<PrintTarget> spareTarget;
    PrintOptions spareOptions;
    std::optional<PrinterAddress> spare;
    bool repeatsOnSpare = false;
    std::optional<tool::QueueDelivery> queue;
    tool::ChosenPaper paper;
    int baud = usualBaud;
    bool isStrict = false;
    bool isDryRun = false;
    bool isRepeat = false;
    tool::Places places;  ///< of the receipt
    bool asJson = false;
};

bool setTarget(const QCommandLineParser &parser, const tool::ShopSettings &settings,
               Request &request)
{
    const auto paper = settings.paperOf(parser);
    if (!paper)
        return false;
    request.paper = *paper;
    request.target = tool::targetOf(*paper->model, *paper);
    const auto options =
        tool::printOptionsOf(parser, request.target->profile(), settings.printOptions());
    if (!options)
        return false;
    request.options = *options;
    return true;
}

bool setDrawer(const QCommandLineParser &parser, const Options &options, Request &request)
{
    const auto pin = tool::pinOf(parser, options.drawerPin);
    if (!pin)
        return false;
    request.options.drawerPin = *pin;
    if (!parser.isSet(options.drawer)) {
        if (parser.isSet(options.drawerPin))
            tool::complain(QStringLiteral("--drawer-pin needs --drawer"));
        return !parser.isSet(options.drawerPin);
    }
    const DrawerRow *row = tool::chosenRow(parser, options.drawer.names().constFirst(), drawerRows);
    if (row == nullptr)
        return false;
    request.options.drawer = row->drawer;
    return true;
}

bool setEnd(const QCommandLineParser &parser, const Options &options, Request &request)
{
    request.isRepeat = parser.isSet(options.repeat);
    if (!parser.isSet(options.emptyLines))
        return true;
    const auto lines = tool::numberOf(parser, options.emptyLines, 0, mostEmptyLines);
    request.options.emptyLinesAtEnd = lines.value_or(0);
    return lines.has_value();
}

bool setBaud(const QCommandLineParser &parser, const Options &options,
             const tool::ShopSettings &settings, Request &request)
{
    const PrinterAddress &printer = request.destination.printer();
    request.baud = printer.kind() == PrinterAddress::Kind::Serial
                       ? printer.line().baudRate
                       : settings.baudRate().value_or(usualBaud);
    if (!parser.isSet(options.baud))
        return true;
    const auto baud = tool::numberOf(parser, options.baud, 1, fastestBaud);
    request.baud = baud.value_or(usualBaud);
    return baud.has_value();
}

/// What the other printer prints it as: on the same paper in the same font, as far as it has them.
bool setSpareTarget(const QCommandLineParser &parser, Request &request)
{
    if (!parser.isSet(tool::spareModelOption()))
        return true;
    const auto model =
        tool::findModel(request.paper.models, parser.value(tool::spareModelOption()));
    if (!model)
        return false;
    if (model->id() == request.paper.model->id())
        return true;
    request.spareTarget = tool::targetOf(*model, request.paper);
    const auto options = tool::printOptionsOfEach(parser, request.spareTarget->profile());
    if (!options)
        return false;
    request.spareOptions = request.options;
    request.spareOptions.codePage = options->codePage;
    return true;
}

/// What is said of a job, which needs a printer.
bool setJob(const QCommandLineParser &parser, Request &request)
{
    request.job = tool::jobOptionsOf(parser);
    request.asJson = parser.isSet(tool::jsonOption());
    if (!tool::setQueue(parser, request.queue))
        return false;
    if (!request.destination.isPrinter()) {
        const bool choosesPrinter =
            tool::choosesJob(parser) || tool::choosesSpare(parser) || request.queue;
        if (choosesPrinter && !request.isDryRun)
            tool::complain(
                QStringLiteral("--wait-for-paper, --one-way, --json, --spare, --queue and --later "
                               "need a printer as --to"));
        return !choosesPrinter || request.isDryRun;
    }
    if (!tool::setSpare(parser, request.destination.printer(), request.spare))
        return false;
    if (request.queue && (request.spare || request.asJson)) {
        tool::complain(QStringLiteral("--queue and --later exclude --spare and --json"));
        return false;
    }
    if (!request.spare)
        return true;
    if (request.job.waitMilliseconds != 0) {
        tool::complain(QStringLiteral("--wait-for-paper and --spare exclude each other"));
        return false;
    }
    request.repeatsOnSpare = parser.isSet(tool::spareRepeatsOption());
    return setSpareTarget(parser, request);
}

bool setDestination(const QCommandLineParser &parser, const Options &options, Request &request)
{
    request.isStrict = parser.isSet(options.strict);
    request.isDryRun = parser.isSet(options.dryRun);
    if (request.isDryRun && !parser.isSet(tool::destinationOption()))
        return true;
    const auto destination = tool::destinationOf(parser);
    if (!destination || (!request.isDryRun && !destination->canTake()))
        return false;
    request.destination = *destination;
    return true;
}

/// What is to be told of a receipt: notes of its layout, and those that its bytes brought.
QVector<PrintNote> notesOf(const PrintLayout &layout, const TextPrinterDocument &document,
                           const EncodedDocument &encoded)
{
    return tool::notesOf(layout, document) + encoded.notes.mid(layout.notes.size());
}

void tellNotes(const Request &request, const EncodedDocument &encoded, const QStringList &notes)
{
    const QString &file = request.source.files.constFirst();
    for (const QString &note : notes)
        tool::complain(QStringLiteral("%1: %2").arg(file, note));
    // A job takes the ticket back by itself.
    const bool isJob = request.destination.isPrinter() && !request.isDryRun;
    if (!encoded.retraction.isEmpty() && !isJob)
        tool::complain(QStringLiteral("%1: the ticket stays held out until %2 is sent, which the "
                                      "document wants after %3 s")
                           .arg(file, QString::fromLatin1(encoded.retraction.toHex(' ').toUpper()))
                           .arg(encoded.retractAfterSeconds));
}

/// What it is, with "0.64 s at 19200 baud".
QString timedText(const Request &request, const EncodedDocument &encoded)
{
    const double seconds = double(encoded.bytes.size()) * bitsOfAByte / request.baud;
    return QStringLiteral("%1, %2 s at %3 baud")
        .arg(tool::receiptText(*request.target, encoded))
        .arg(seconds, 0, 'f', 2)
        .arg(request.baud);
}

/// What goes to one printer, and what is told of it.
struct Encoded
{
    EncodedDocument document;
    QStringList notes;
};

tool::PreparedReceipt preparedFor(const PrinterAddress &printer, const PrintTarget &target,
                                  const Request &request, const Encoded &encoded)
{
    return {{encoded.document, target.profile(), printer, request.job, true, request.places,
             encoded.notes},
            target};
}

PrintQueueRequest queued(const Request &request, const EncodedDocument &encoded)
{
    PrintQueueRequest kept;
    kept.document = encoded;
    kept.profile = request.target->profile();
    kept.paperId = request.paper.paper;
    kept.baseFont = request.paper.font;
    kept.address = request.destination.printer();
    kept.options = request.job;
    kept.title = request.source.files.constFirst();
    return kept;
}

int deliver(const Request &request, const Encoded &encoded, const Encoded &spare)
{
    if (request.isDryRun) {
        tool::print(timedText(request, encoded.document));
        return tool::Success;
    }
    if (request.queue)
        return tool::deliver(*request.queue, queued(request, encoded.document));
    if (request.destination.isPrinter()) {
        tool::PrinterDelivery delivery{
            preparedFor(request.destination.printer(), *request.target, request, encoded),
            std::nullopt, request.repeatsOnSpare, request.isRepeat, request.asJson};
        if (request.spare)
            delivery.spare = preparedFor(
                *request.spare, request.spareTarget.value_or(*request.target), request, spare);
        return tool::deliver(delivery);
    }
    if (!request.destination.take(encoded.document.bytes))
        return tool::BadInput;
    if (request.destination.isFile())
        tool::print(QStringLiteral("%1: %2").arg(request.destination.fileName(),
                                                 timedText(request, encoded.document)));
    return tool::Success;
}

/// Complains and gives false where the bytes would take the place of what the receipt is made of.
bool keepsSources(const Request &request, const tool::PreviewedReceipt &receipt)
{
    if (request.isDryRun || !request.destination.isFile())
        return true;
    const QString output = request.destination.fileName();
    return tool::keepsSources({output}, request.source.files) &&
           tool::keepsCompanions({output}, receipt);
}

/// The bytes for one printer, and what is to be said of them. Nothing if they can't be made, or not
/// as faithfully as they have to be.
std::optional<Encoded> encodedFor(const PrintTarget &target, const PrintOptions &options,
                                  const Request &request, const tool::PreviewedReceipt &receipt)
{
    static const printerslib::drivers::SymbologyDrawer codes;
    const TextPrinterDocument document = receipt.documentFor(target);
    const PrintLayout layout = PrintLayout::of(document, target, options, codes);
    EncodedDocument encoded = DocumentEncoder(target, options).encode(document, layout);
    if (request.isRepeat)
        encoded = printerslib::drivers::withLineInFront(encoded, target,
                                                        printerslib::drivers::repeatMark());
    const QStringList notes = tool::textsOf(notesOf(layout, document, encoded), receipt.places);
    const QString &file = request.source.files.constFirst();
    if (!encoded.error.isEmpty()) {
        tool::complain(QStringLiteral("%1: %2").arg(file, receipt.places.inMessage(encoded.error)));
        return std::nullopt;
    }
    tellNotes(request, encoded, notes);
    if (request.isStrict && (!encoded.isFaithful() || !receipt.isWhole)) {
        tool::complain(QStringLiteral("%1: not printed, as that isn't all of it").arg(file));
        return std::nullopt;
    }
    return Encoded{encoded, notes};
}

int print(Request request)
{
    const auto receipt = request.source.read();
    if (!receipt || !keepsSources(request, *receipt))
        return tool::BadInput;
    request.places = receipt->places;
    const auto encoded = encodedFor(*request.target, request.options, request, *receipt);
    if (!encoded)
        return tool::BadInput;
    auto spare = encoded;
    if (request.spareTarget) {
        spare = encodedFor(*request.spareTarget, request.spareOptions, request, *receipt);
        if (!spare)
            return tool::BadInput;
    }
    return deliver(request, *encoded, *spare);
}

}  // namespace

int runPrint(const QStringList &arguments)
{
    QCommandLineParser parser;
    const Options options;
    parser.setApplicationDescription(QString::fromLatin1(description));
    parser.addOptions(tool::sourceOptions());
    parser.addOptions(tool::shopOptions());
    parser.addOptions(tool::printOptions());
    parser.addOptions({options.emptyLines, options.drawer, options.drawerPin, options.strict,
                       tool::destinationOption(), tool::shopFileOption()});
    parser.addOptions(tool::jobOptions());
    parser.addOptions({options.repeat});
    parser.addOptions(tool::spareOptions());
    parser.addOptions(tool::queueOptions());
    parser.addOptions({options.dryRun, options.baud});
    tool::addTemplateAndDocument(parser);
    if (const auto status = tool::parseForPrinter(parser, QStringLiteral("print"), arguments, 0, 2))
        return *status;
    const auto settings = tool::shopSettingsOf(parser);
    if (!settings)
        return tool::BadInput;
    Request request;
    const auto source = tool::sourceOf(parser);
    if (!source || !setTarget(parser, *settings, request) || !setDrawer(parser, options, request) ||
        !setEnd(parser, options, request) || !setDestination(parser, options, request) ||
        !setBaud(parser, options, *settings, request) || !setJob(parser, request))
        return tool::WrongUsage;
    request.source = *source;
    return print(request);
}
