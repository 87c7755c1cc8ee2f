#include <printerslib/drivers/documentencoder.h>

#include "commands.h"
#include "forms.h"
#include "outputfile.h"
#include "printoptions.h"
#include "shopsettings.h"
#include "streamdestination.h"
#include "support.h"
#include "templatefile.h"

namespace {

using printerslib::drivers::DocumentEncoder;
using printerslib::drivers::EncodedDocument;
using printerslib::drivers::PrintNote;
using printerslib::drivers::PrintOptions;
using printerslib::drivers::PrintTarget;

// In lines of up to 79 characters, as a terminal shows them.
const char description[] =
    R"(Makes the bytes that a printer model understands of a receipt: from a template
and a document, or from one of --bbcode, --document and --plain. They go to the
file of --to, or with "--to -" to standard output, from where they can be led to
a printer: "--to - >/dev/usb/lp0", or behind "stty -F /dev/ttyS0 raw 19200" to a
serial line. "receipt decode" reads them back, and what "receipt preview" draws
is what they print.

Text is laid out for the model's paper, but no wider than its head, and printed
in the printer's own fonts; a character that none of its character sets has is
sent as dots, and so is all text with --as-picture. Codes are drawn by the
printer where it can, and are pictures elsewhere. The document says whether the
ticket is cut, held out or handed out; before a cut the paper is fed as far as
the cutter is from the head. Nothing in a text acts on the printer, and nothing
but --drawer opens a drawer.

Standard error tells what isn't printed as the document asks for, by block and
line; with --strict that is an error, and nothing is written. The terminal that
shows it never gets the bytes.)";

constexpr int usualBaud = 19200;
constexpr int fastestBaud = 4'000'000;
// A start bit, eight bits of data and a stop bit.
constexpr int bitsOfAByte = 10;
constexpr int mostEmptyLines = 255;
constexpr int leastPin = 2;
constexpr int mostPin = 5;

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
        QStringLiteral("Speed of that line; default: that of --settings, or %1.").arg(usualBaud),
        QStringLiteral("N"), QString::number(usualBaud)};
};

struct Request
{
    tool::ChosenSource source;
    std::optional<PrintTarget> target;
    PrintOptions options;
    tool::StreamDestination destination;
    int baud = usualBaud;
    bool isStrict = false;
    bool isDryRun = false;
};

bool setTarget(const QCommandLineParser &parser, const tool::ShopSettings &settings,
               Request &request)
{
    const auto paper = settings.paperOf(parser);
    if (!paper)
        return false;
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
    const auto pin = tool::numberOf(parser, options.drawerPin, leastPin, mostPin);
    if (!pin)
        return false;
    if (*pin != leastPin && *pin != mostPin) {
        tool::complain(QStringLiteral("--drawer-pin: \"%1\" is none of 2, 5").arg(*pin));
        return false;
    }
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

bool setEnd(const QCommandLineParser &parser, const Options &options,
            const tool::ShopSettings &settings, Request &request)
{
    if (parser.isSet(options.emptyLines)) {
        const auto lines = tool::numberOf(parser, options.emptyLines, 0, mostEmptyLines);
        if (!lines)
            return false;
        request.options.emptyLinesAtEnd = *lines;
    }
    request.baud = settings.baudRate().value_or(usualBaud);
    if (!parser.isSet(options.baud))
        return true;
    const auto baud = tool::numberOf(parser, options.baud, 1, fastestBaud);
    request.baud = baud.value_or(usualBaud);
    return baud.has_value();
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

void tellNotes(const Request &request, const EncodedDocument &encoded)
{
    const QString &file = request.source.files.constFirst();
    for (const PrintNote &note : encoded.notes)
        tool::complain(QStringLiteral("%1: %2").arg(file, note.toString()));
    if (!encoded.retraction.isEmpty())
        tool::complain(QStringLiteral("%1: the ticket stays held out until %2 is sent, which the "
                                      "document wants after %3 s")
                           .arg(file, QString::fromLatin1(encoded.retraction.toHex(' ').toUpper()))
                           .arg(encoded.retractAfterSeconds));
}

/// "CUSTOM_VKP_80, paper 80 mm: 1234 bytes, 1 piece of paper, 0.64 s at 19200 baud"
QString jobText(const Request &request, const EncodedDocument &encoded)
{
    const double seconds = double(encoded.bytes.size()) * bitsOfAByte / request.baud;
    return QStringLiteral("%1, paper %2: %3 bytes, %4 of paper, %5 s at %6 baud")
        .arg(request.target->profile().modelId(), request.target->paper().caption())
        .arg(encoded.bytes.size())
        .arg(encoded.pieces == 1 ? QStringLiteral("1 piece")
                                 : QStringLiteral("%1 pieces").arg(encoded.pieces))
        .arg(seconds, 0, 'f', 2)
        .arg(request.baud);
}

int deliver(const Request &request, const EncodedDocument &encoded)
{
    if (request.isDryRun) {
        tool::print(jobText(request, encoded));
        return tool::Success;
    }
    if (!request.destination.take(encoded.bytes))
        return tool::BadInput;
    if (request.destination.isFile())
        tool::print(QStringLiteral("%1: %2").arg(request.destination.fileName(),
                                                 jobText(request, encoded)));
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

int print(const Request &request)
{
    const auto receipt = request.source.read();
    if (!receipt || !keepsSources(request, *receipt))
        return tool::BadInput;
    const DocumentEncoder encoder(*request.target, request.options);
    const EncodedDocument encoded = encoder.encode(receipt->documentFor(*request.target));
    const QString &file = request.source.files.constFirst();
    if (!encoded.error.isEmpty()) {
        tool::complain(QStringLiteral("%1: %2").arg(file, encoded.error));
        return tool::BadInput;
    }
    tellNotes(request, encoded);
    if (request.isStrict && (!encoded.isFaithful() || !receipt->isWhole)) {
        tool::complain(QStringLiteral("%1: not printed, as that isn't all of it").arg(file));
        return tool::BadInput;
    }
    return deliver(request, encoded);
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
                       tool::destinationOption(), options.dryRun, options.baud});
    tool::addTemplateAndDocument(parser);
    if (const auto status = tool::parse(parser, QStringLiteral("print"), arguments, 0, 2))
        return *status;
    const auto settings = tool::shopSettingsOf(parser);
    if (!settings)
        return tool::BadInput;
    Request request;
    const auto source = tool::sourceOf(parser);
    if (!source || !setTarget(parser, *settings, request) || !setDrawer(parser, options, request) ||
        !setEnd(parser, options, *settings, request) || !setDestination(parser, options, request))
        return tool::WrongUsage;
    request.source = *source;
    return print(request);
}
