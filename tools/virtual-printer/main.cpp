// Plays a receipt printer on a pseudo terminal until it is interrupted, or until its fault hung up.
#include <printerslib/drivers/printermodels.h>
#include <unistd.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QRegularExpression>
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <memory>
#include <optional>

#include "application.h"
#include "paperfolder.h"
#include "programstart.h"
#include "streamlines.h"
#include "terminaltext.h"
#include "virtualprinter.h"

namespace {

using printerslib::drivers::PrinterModels;
using printerslib::drivers::PrinterProfile;

constexpr int failure = 1;
constexpr int wrongUsage = 2;
constexpr int pollMilliseconds = 200;

volatile std::sig_atomic_t interrupted = 0;

void interrupt(int)
{
    interrupted = 1;
}

void print(FILE *stream, const QString &line)
{
    terminaltext::writeLine(stream, line);
    std::fflush(stream);
}

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

struct Arguments
{
    VirtualPrinterOptions printer;
    PrinterProfile profile;  ///< how it reads what it is sent
    QString link;
    std::optional<QString> paper;  ///< folder for what is printed
    bool hasListing = false;
};

/// @return the option that asks for help
QCommandLineOption describe(QCommandLineParser &parser)
{
    parser.setApplicationDescription(
        QStringLiteral("Plays a receipt printer on a pseudo terminal: prints the port's path, then "
                       "the dialogue in hexadecimal with the line settings in force. Ends when it "
                       "is interrupted, or when its fault has hung up.\nModels: ") +
        virtualModelIds().join(QStringLiteral(", ")));
    const auto option = [&parser](const char *name, const char *description, const char *value) {
        parser.addOption(QCommandLineOption(QLatin1String(name), QLatin1String(description),
                                            QLatin1String(value)));
    };
    option("model", "The model to play.", "id");
    option("models",
           "A file of further models and of other facts of known ones, as receipt takes it; may be "
           "given several times. A model that it adds answers as the one that it is like.",
           "file");
    option("baud", "The baud rate that it is set to.", "rate");
    option("flow", "Its flow control: none, hardware or software.", "kind");
    option("fault",
           "What is wrong with it: silent, echo, garbage, flood, slow=MS, hangup-after=BYTES, "
           "partial or differing-ids.",
           "kind");
    option("link", "A symbolic link to make to the port.", "path");
    option(
        "paper",
        "Draw each piece of paper as it is cut, paper-0001.png and its text paper-0001.txt, into "
        "this folder, which is made if it is missing, and print a line for it, and for what the "
        "printer doesn't do as it is asked. The paper is the model's widest. What isn't cut is "
        "drawn at the end. A piece that can't be written is told on standard error, and the exit "
        "status is 1 in the end.",
        "folder");
    parser.addOption({QStringLiteral("listing"),
                      QStringLiteral("Print the commands that the printer is sent, with their "
                                     "offsets and meanings, instead of hexadecimal.")});
    return parser.addHelpOption();
}

/// Gives false after messages on standard error.
bool readModel(const QCommandLineParser &parser, Arguments &arguments)
{
    QStringList errors;
    PrinterModels models;
    const QStringList files = parser.values(QStringLiteral("models"));
    for (const QString &file : files)
        errors += models.addFile(file);
    for (const QString &fault : qAsConst(errors))
        print(stderr, QStringLiteral("virtual-printer: ") + fault);
    const QString id = parser.value(QStringLiteral("model"));
    const auto profile = models.profile(id);
    arguments.profile = profile.value_or(PrinterProfile());
    arguments.printer.model = profile ? profile->catalogueId() : id;
    return errors.isEmpty();
}

/// Nothing after a message on standard error.
std::optional<Arguments> readArguments()
{
    QCommandLineParser parser;
    const QCommandLineOption help = describe(parser);
    if (!parser.parse(QCoreApplication::arguments())) {
        print(stderr, QStringLiteral("virtual-printer: ") + parser.errorText());
        return std::nullopt;
    }
    if (parser.isSet(help))
        parser.showHelp();

    Arguments arguments;
    VirtualPrinterOptions &printer = arguments.printer;
    if (!readModel(parser, arguments))
        return std::nullopt;
    arguments.link = parser.value(QStringLiteral("link"));
    if (parser.isSet(QStringLiteral("paper")))
        arguments.paper = parser.value(QStringLiteral("paper"));
    arguments.hasListing = parser.isSet(QStringLiteral("listing"));
    using Reader = bool (*)(const QString &, VirtualPrinterOptions &);
    const std::pair<const char *, Reader> readers[] = {
        {"baud", readBaud}, {"flow", readFlow}, {"fault", readFault}};
    for (const auto &[name, read] : readers) {
        const QString option = QLatin1String(name);
        if (parser.isSet(option) && !read(parser.value(option), printer)) {
            print(stderr, QStringLiteral("virtual-printer: --%1: \"%2\" is none of its values")
                              .arg(option, parser.value(option)));
            return std::nullopt;
        }
    }
    if (!virtualModelIds().contains(printer.model) || !parser.positionalArguments().isEmpty()) {
        print(stderr, QStringLiteral("virtual-printer: --model takes one of: ") +
                          virtualModelIds().join(QStringLiteral(", ")));
        return std::nullopt;
    }
    return arguments;
}

void catchInterrupts()
{
    struct sigaction action = {};
    action.sa_handler = interrupt;
    ::sigaction(SIGINT, &action, nullptr);
    ::sigaction(SIGTERM, &action, nullptr);
}

void printLines(const QStringList &lines)
{
    for (const QString &line : lines)
        print(stdout, line);
}

/// Gives whether all pieces could be written.
bool printReport(const PaperReport &report)
{
    printLines(report.lines);
    for (const QString &text : report.failures)
        print(stderr, QStringLiteral("virtual-printer: ") + text);
    return report.failures.isEmpty();
}

/// What the printer is sent goes there once it has answered, as drawing takes its time.
/// @param lines null: hexadecimal
/// @param paper null: nothing is drawn
/// @return the exit status
int play(VirtualPrinter &printer, StreamLines *lines, PaperFolder *paper)
{
    QByteArray sent;
    bool isWritten = true;
    printer.setObserver([&sent, lines](const VirtualExchange &exchange) {
        printLines(lines == nullptr ? QStringList(exchange.toString()) : lines->linesOf(exchange));
        if (!exchange.fromPrinter && exchange.isOnItsLine)
            sent += exchange.bytes;
    });
    while (interrupted == 0 && !printer.hasHungUp()) {
        printer.waitAndService(pollMilliseconds);
        if (paper != nullptr && !sent.isEmpty())
            isWritten = printReport(paper->take(sent)) && isWritten;
        sent.clear();
    }
    printer.setObserver(nullptr);
    if (lines != nullptr)
        printLines(lines->finish());
    if (paper != nullptr)
        isWritten = printReport(paper->finish()) && isWritten;
    if (printer.hasHungUp())
        print(stdout, QStringLiteral("hung up after %1 bytes").arg(printer.received().size()));
    return isWritten ? 0 : failure;
}

/// Whether pictures are drawn. The application object has to be made before the arguments are read.
bool draws(int argc, char *argv[])
{
    return std::any_of(argv, argv + argc, [](const char *argument) {
        return QByteArray(argument).startsWith("--paper");
    });
}

}  // namespace

int main(int argc, char *argv[])
{
    programstart::begin("virtual-printer");
    qInstallMessageHandler(terminaltext::writeLogLine);
    const auto application = receiptpreview::makeApplication(argc, argv, draws(argc, argv));
    const QString refusal = programstart::refusalOfArguments(argc, argv);
    if (!refusal.isEmpty()) {
        print(stderr, QStringLiteral("virtual-printer: ") + refusal);
        return wrongUsage;
    }
    const std::optional<Arguments> arguments = readArguments();
    if (!arguments)
        return wrongUsage;
    std::unique_ptr<PaperFolder> paper;
    if (arguments->paper) {
        paper = std::make_unique<PaperFolder>(arguments->profile, *arguments->paper);
        QString error;
        if (!paper->open(&error)) {
            print(stderr, QStringLiteral("virtual-printer: ") + error);
            return failure;
        }
    }
    std::unique_ptr<StreamLines> lines;
    if (arguments->hasListing)
        lines = std::make_unique<StreamLines>(arguments->profile);
    VirtualPrinter printer(arguments->printer);
    if (!printer.isValid()) {
        print(stderr, QStringLiteral("virtual-printer: there is no pseudo terminal to be had"));
        return failure;
    }
    const QByteArray link = arguments->link.toLocal8Bit();
    if (!link.isEmpty() &&
        ::symlink(printer.portPath().toLocal8Bit().constData(), link.constData()) != 0) {
        print(
            stderr,
            QStringLiteral("virtual-printer: %1: %2").arg(arguments->link, qt_error_string(errno)));
        return failure;
    }
    print(stdout, printer.portPath());
    catchInterrupts();
    const int status = play(printer, lines.get(), paper.get());
    if (!link.isEmpty())
        ::unlink(link.constData());
    return status;
}
