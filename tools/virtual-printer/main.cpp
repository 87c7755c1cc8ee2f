// Plays a receipt printer until it is interrupted, or until its fault hung up.
#include <unistd.h>

#include <QCoreApplication>
#include <QTimer>
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <memory>

#include "application.h"
#include "arguments.h"
#include "commandinput.h"
#include "deviceline.h"
#include "paperfolder.h"
#include "playing.h"
#include "programstart.h"
#include "replay.h"
#include "streamlines.h"
#include "terminaltext.h"
#include "virtualprinter.h"

namespace {

constexpr int failure = 1;
constexpr int wrongUsage = 2;
constexpr int pollMilliseconds = 200;

volatile std::sig_atomic_t interrupted = 0;

void interrupt(int)
{
    interrupted = 1;
}

void print(const QString &line)
{
    terminaltext::writeLine(stdout, line);
    std::fflush(stdout);
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
        print(line);
}

/// Gives whether all pieces could be written.
bool printReport(const PaperReport &report)
{
    printLines(report.lines);
    for (const QString &text : report.failures)
        complain(text);
    return report.failures.isEmpty();
}

/// @param lines null: hexadecimal
void printExchange(const VirtualExchange &exchange, StreamLines *lines)
{
    printLines(lines == nullptr ? QStringList(exchange.toString()) : lines->linesOf(exchange));
}

/// What isn't whole when the dialogue ends.
void printRest(StreamLines *lines)
{
    if (lines != nullptr)
        printLines(lines->finish());
}

/// Plays a printer that only a search speaks with, and that has a fault.
///
/// What the printer is sent goes to the paper once it has answered, as drawing takes its time.
/// @param lines null: hexadecimal
/// @param paper null: nothing is drawn
/// @return the exit status
int playSearched(VirtualPrinter &printer, StreamLines *lines, PaperFolder *paper)
{
    QByteArray sent;
    bool isWritten = true;
    printer.setObserver([&sent, lines](const VirtualExchange &exchange) {
        printExchange(exchange, lines);
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
    printRest(lines);
    if (paper != nullptr)
        isWritten = printReport(paper->finish()) && isWritten;
    if (printer.hasHungUp())
        print(QStringLiteral("hung up after %1 bytes").arg(printer.received().size()));
    return isWritten ? 0 : failure;
}

/// Ends the loop of events when the program is interrupted. Looks, too, whether commands may be
/// read, as nothing else tells that the program has come to the foreground.
class InterruptWatch
{
public:
    explicit InterruptWatch(CommandInput &input)
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [&input] {
            input.look();
            if (interrupted != 0)
                QCoreApplication::quit();
        });
        m_timer.start(pollMilliseconds);
    }

private:
    QTimer m_timer;
};

/// What a line on standard input asks for.
void obey(const QString &line, Playing &playing, bool isReplay)
{
    QString error;
    const auto fault = printerFault(line, &error);
    if (line == QLatin1String("help"))
        printLines(printerFaultHelp());
    else if (isReplay)
        complain(QStringLiteral("a recorded printer takes no commands"));
    else if (!fault)
        complain(error);
    else {
        playing.apply(*fault);
        print(QStringLiteral("command: ") + fault->toString());
    }
}

PrinterDevice::Options deviceOptionsOf(const Arguments &arguments, const PaperFolder *paper)
{
    PrinterDevice::Options options;
    options.millimetresPerSecond = arguments.pace.millimetresPerSecond;
    if (paper != nullptr)
        options.print = paper->options();
    return options;
}

/// Plays a printer, or what was recorded of one.
/// @param lines null: hexadecimal
/// @param paper null: nothing is drawn
/// @return the exit status
int play(const Arguments &arguments, DeviceLine &line, StreamLines *lines, PaperFolder *paper)
{
    PrinterDevice device(arguments.profile, deviceOptionsOf(arguments, paper));
    Replay replay(arguments.recording.value_or(QVector<RecordedPiece>()));
    const bool isReplay = arguments.recording.has_value();
    for (const PlannedFault &planned : arguments.plan)
        device.plan(planned);

    bool isWritten = true;
    const auto writePaper = [paper,
                             &isWritten](const QVector<printerslib::drivers::Paper> &pieces) {
        if (paper != nullptr)
            isWritten = printReport(paper->write(pieces)) && isWritten;
    };
    line.setObserver([lines](const VirtualExchange &exchange) { printExchange(exchange, lines); });
    PrinterSide *side = &device;
    if (isReplay)
        side = &replay;
    Playing playing(line, *side, isReplay ? nullptr : &device, arguments.pace.bytesPerSecond);
    QObject::connect(&playing, &Playing::noted, print);
    QObject::connect(&playing, &Playing::printed, writePaper);
    CommandInput input;
    QObject::connect(&input, &CommandInput::lineRead, &input,
                     [&](const QString &text) { obey(text, playing, isReplay); });
    const InterruptWatch watch(input);
    playing.start();
    QCoreApplication::exec();
    line.setObserver(nullptr);
    printRest(lines);
    writePaper(device.finish());
    return isWritten ? 0 : failure;
}

int playOnNetwork(const Arguments &arguments, StreamLines *lines, PaperFolder *paper)
{
    TcpLine line;
    QString error;
    if (!line.listen(*arguments.listen, &error)) {
        complain(error);
        return failure;
    }
    print(line.name());
    return play(arguments, line, lines, paper);
}

int playOnTerminal(const Arguments &arguments, StreamLines *lines, PaperFolder *paper)
{
    VirtualPrinter printer(arguments.printer);
    if (!printer.isValid()) {
        complain(QStringLiteral("there is no pseudo terminal to be had"));
        return failure;
    }
    const QByteArray link = arguments.link.toLocal8Bit();
    if (!link.isEmpty() &&
        ::symlink(printer.portPath().toLocal8Bit().constData(), link.constData()) != 0) {
        complain(QStringLiteral("%1: %2").arg(arguments.link, qt_error_string(errno)));
        return failure;
    }
    print(printer.portPath());
    int status = 0;
    if (arguments.printer.fault != VirtualFault::None) {
        status = playSearched(printer, lines, paper);
    } else {
        TerminalLine line(printer, printer.flowControl());
        status = play(arguments, line, lines, paper);
    }
    if (!link.isEmpty())
        ::unlink(link.constData());
    return status;
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
        complain(refusal);
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
            complain(error);
            return failure;
        }
    }
    std::unique_ptr<StreamLines> lines;
    if (arguments->hasListing)
        lines = std::make_unique<StreamLines>(arguments->profile);
    catchInterrupts();
    return arguments->listen ? playOnNetwork(*arguments, lines.get(), paper.get())
                             : playOnTerminal(*arguments, lines.get(), paper.get());
}
