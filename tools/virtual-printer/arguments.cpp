#include "arguments.h"

#include <printerslib/drivers/printermodels.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>
#include <cstdio>
#include <functional>
#include <utility>

#include "terminaltext.h"

namespace {

using printerslib::drivers::PrinterModels;
using printerslib::drivers::PrinterProfile;

struct FaultRow
{
    const char *name;
    VirtualFault fault;
};

constexpr FaultRow faults[] = {
    {"silent", VirtualFault::Silent},   {"echo", VirtualFault::Echo},
    {"garbage", VirtualFault::Garbage}, {"flood", VirtualFault::Flood},
    {"slow", VirtualFault::Slow},       {"hangup-after", VirtualFault::HangUp},
    {"partial", VirtualFault::Partial}, {"differing-ids", VirtualFault::DifferingIds},
};

bool readFault(const QString &text, VirtualPrinterOptions &options)
{
    const QString name = text.section(QLatin1Char('='), 0, 0);
    const QString value = text.section(QLatin1Char('='), 1);
    for (const FaultRow &row : faults) {
        if (name != QLatin1String(row.name))
            continue;
        options.fault = row.fault;
        const bool takesValue =
            row.fault == VirtualFault::Slow || row.fault == VirtualFault::HangUp;
        bool isNumber = false;
        options.faultValue = value.toInt(&isNumber);
        return takesValue ? isNumber && options.faultValue >= 0 : !text.contains(QLatin1Char('='));
    }
    return false;
}

bool readFlow(const QString &text, VirtualPrinterOptions &options)
{
    if (text == QLatin1String("none"))
        options.flowControl = QSerialPort::NoFlowControl;
    else if (text == QLatin1String("hardware"))
        options.flowControl = QSerialPort::HardwareControl;
    else if (text == QLatin1String("software"))
        options.flowControl = QSerialPort::SoftwareControl;
    else
        return false;
    return true;
}

bool readBaud(const QString &text, VirtualPrinterOptions &options)
{
    static const QRegularExpression known(
        QStringLiteral("\\A(1200|2400|4800|9600|19200|38400|57600|115200)\\z"));
    options.baudRate = text.toInt();
    return known.match(text).hasMatch();
}

struct OptionRow
{
    const char *name;
    const char *value;  ///< what it takes; null: nothing
    const char *description;
};

constexpr OptionRow optionRows[] = {
    {"model", "id", "The model to play."},
    {"models", "file",
     "A file of further models and of other facts of known ones, as receipt takes it; may be given "
     "several times. A model that it adds answers as the one that it is like."},
    {"baud", "rate", "The baud rate that it is set to."},
    {"flow", "kind", "Its flow control: none, hardware or software."},
    {"listen", "host:port",
     "Be at this port of TCP instead of a pseudo terminal; the port is 9100 if it is left out, and "
     "any that is free if it is 0. All models can be played. One client is served at a time, "
     "others wait until it goes."},
    {"pace", "bytes,mm",
     "Take as many bytes a second from the line, and print as many millimetres a second, such as "
     "1920,150; 0 is as fast as it goes. Default: 0,0."},
    {"at", "when:command",
     "What befalls it then, as a line on standard input says it: SECONDS:COMMAND, or byte "
     "N:COMMAND behind so many bytes; may be given several times."},
    {"replay", "file",
     "Play the printer's side of the session that this file has recorded, and answer nothing "
     "else."},
    {"fault", "kind",
     "What is wrong with its answers to a search, which are all that it gives then: silent, echo, "
     "garbage, flood, slow=MS, hangup-after=BYTES, partial or differing-ids."},
    {"link", "path", "A symbolic link to make to the port."},
    {"paper", "folder",
     "Draw each piece of paper as it is cut, paper-0001.png and its text paper-0001.txt, into this "
     "folder, which is made if it is missing, and print a line for it, and for what the printer "
     "doesn't do as it is asked. The paper is the model's widest. What isn't cut is drawn at the "
     "end. A piece that can't be written is told on standard error, and the exit status is 1 in "
     "the end."},
    {"listing", nullptr,
     "Print the commands that the printer is sent, with their offsets and meanings, instead of "
     "hexadecimal."},
};

/// @return the option that asks for help
QCommandLineOption describe(QCommandLineParser &parser)
{
    parser.setApplicationDescription(
        QStringLiteral("Plays a receipt printer, on a pseudo terminal or at a port of TCP: prints "
                       "the port's path or address, then the dialogue in hexadecimal with the line "
                       "settings in force. It answers and prints as its model does. Lines on "
                       "standard input say what befalls it, such as \"paper out\"; \"help\" lists "
                       "them. Ends when it is interrupted, or when its fault has hung up.\nModels "
                       "on a pseudo terminal: ") +
        virtualModelIds().join(QStringLiteral(", ")));
    for (const OptionRow &row : optionRows) {
        const QString value = row.value == nullptr ? QString() : QLatin1String(row.value);
        parser.addOption({QLatin1String(row.name), QLatin1String(row.description), value});
    }
    return parser.addHelpOption();
}

/// Gives false after messages on standard error.
bool readModel(const QCommandLineParser &parser, Arguments &arguments)
{
    PrinterModels models;
    QStringList errors;
    const QStringList files = parser.values(QStringLiteral("models"));
    for (const QString &file : files)
        errors += models.addFile(file);
    for (const QString &fault : qAsConst(errors))
        complain(fault);
    if (!errors.isEmpty())
        return false;
    const QString id = parser.value(QStringLiteral("model"));
    const auto profile = models.profile(id);
    arguments.profile = profile.value_or(PrinterProfile());
    arguments.printer.model = profile ? profile->catalogueId() : id;
    // A search looks for its models on serial lines; on a network there are others, too.
    const bool isKnown = arguments.listen ? profile.has_value()
                                          : virtualModelIds().contains(arguments.printer.model);
    const QStringList ids = arguments.listen ? models.modelIds() : virtualModelIds();
    if (!isKnown)
        complain(QStringLiteral("--model takes one of: ") + ids.join(QStringLiteral(", ")));
    return isKnown;
}

bool readPace(const QString &text, Arguments &arguments)
{
    static const QRegularExpression form(
        QStringLiteral("\\A([0-9]{1,7}),([0-9]{1,4}(?:\\.[0-9]{1,3})?)\\z"));
    const QRegularExpressionMatch match = form.match(text);
    arguments.pace.bytesPerSecond = match.captured(1).toInt();
    arguments.pace.millimetresPerSecond = match.captured(2).toDouble();
    return match.hasMatch();
}

/// Gives false after a message on standard error.
bool readPlan(const QCommandLineParser &parser, Arguments &arguments)
{
    const QStringList texts = parser.values(QStringLiteral("at"));
    for (const QString &text : texts) {
        QString error;
        const auto planned = plannedFault(text, &error);
        if (!planned) {
            complain(QStringLiteral("--at: ") + error);
            return false;
        }
        arguments.plan.append(*planned);
    }
    return true;
}

/// Gives false after a message on standard error.
bool readReplay(const QCommandLineParser &parser, Arguments &arguments)
{
    if (!parser.isSet(QStringLiteral("replay")))
        return true;
    QFile file(parser.value(QStringLiteral("replay")));
    if (!file.open(QIODevice::ReadOnly)) {
        complain(QStringLiteral("%1: %2").arg(file.fileName(), file.errorString()));
        return false;
    }
    QString error;
    arguments.recording = readRecording(file.readAll(), &error);
    if (!arguments.recording)
        complain(QStringLiteral("%1: %2").arg(file.fileName(), error));
    return arguments.recording.has_value();
}

/// Options that don't go together. Gives false after a message on standard error.
bool areTogether(const QCommandLineParser &parser)
{
    const std::pair<const char *, const char *> excluding[] = {
        {"listen", "baud"},  {"listen", "flow"},  {"listen", "link"},
        {"fault", "listen"}, {"fault", "pace"},   {"fault", "at"},
        {"fault", "replay"}, {"replay", "paper"}, {"replay", "at"}};
    for (const auto &[one, other] : excluding) {
        if (!parser.isSet(QLatin1String(one)) || !parser.isSet(QLatin1String(other)))
            continue;
        complain(QStringLiteral("--%1 doesn't go with --%2")
                     .arg(QLatin1String(one), QLatin1String(other)));
        return false;
    }
    return true;
}

/// Gives false after a message on standard error.
bool readLine(const QCommandLineParser &parser, Arguments &arguments)
{
    const auto readPrinterPace = [&arguments](const QString &text, VirtualPrinterOptions &) {
        return readPace(text, arguments);
    };
    using Reader = std::function<bool(const QString &, VirtualPrinterOptions &)>;
    const std::pair<const char *, Reader> readers[] = {
        {"baud", readBaud}, {"flow", readFlow}, {"fault", readFault}, {"pace", readPrinterPace}};
    for (const auto &[name, read] : readers) {
        const QString option = QLatin1String(name);
        if (!parser.isSet(option) || read(parser.value(option), arguments.printer))
            continue;
        complain(
            QStringLiteral("--%1: \"%2\" is none of its values").arg(option, parser.value(option)));
        return false;
    }
    return true;
}

}  // namespace

void complain(const QString &text)
{
    terminaltext::writeLine(stderr, QStringLiteral("virtual-printer: ") + text);
    std::fflush(stderr);
}

std::optional<Arguments> readArguments()
{
    QCommandLineParser parser;
    const QCommandLineOption help = describe(parser);
    if (!parser.parse(QCoreApplication::arguments())) {
        complain(parser.errorText());
        return std::nullopt;
    }
    if (parser.isSet(help))
        parser.showHelp();

    Arguments arguments;
    arguments.link = parser.value(QStringLiteral("link"));
    if (parser.isSet(QStringLiteral("paper")))
        arguments.paper = parser.value(QStringLiteral("paper"));
    if (parser.isSet(QStringLiteral("listen")))
        arguments.listen = parser.value(QStringLiteral("listen"));
    arguments.hasListing = parser.isSet(QStringLiteral("listing"));
    if (!parser.positionalArguments().isEmpty()) {
        complain(
            QStringLiteral("\"%1\" is no option").arg(parser.positionalArguments().constFirst()));
        return std::nullopt;
    }
    const bool isRead = areTogether(parser) && readModel(parser, arguments) &&
                        readLine(parser, arguments) && readPlan(parser, arguments) &&
                        readReplay(parser, arguments);
    return isRead ? std::optional<Arguments>(arguments) : std::nullopt;
}
