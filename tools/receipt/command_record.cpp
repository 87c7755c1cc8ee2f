#include <printerslib/drivers/devicelock.h>
#include <printerslib/drivers/transport.h>

#include <QDateTime>
#include <QEventLoop>
#include <QProcess>
#include <QTimer>
#include <cstdio>

#include "commands.h"
#include "interrupt.h"
#include "openline.h"
#include "printeroption.h"
#include "queueplace.h"
#include "sessionfile.h"
#include "sessionrecorder.h"
#include "support.h"

namespace {

using printerslib::drivers::DeviceLock;
using printerslib::drivers::PrinterAddress;
using printerslib::drivers::Transport;
using printerslib::drivers::TransportOptions;

// In lines of up to 79 characters, as a terminal shows them.
const char description[] =
    R"(Stands between programs and a printer, and keeps all that either side sends in
FILE, with the time of each piece, for "virtual-printer --replay" and for those
who help with a printer that they haven't got. Programs print to the pseudo
terminal whose path is the first line of output, to the --link to it, or to the
port of --listen; what the printer answers comes back to them:

    receipt record --to tcp:192.168.0.5 session.txt --link /tmp/recorded
    receipt print ... --to device:/tmp/recorded

A program that stands behind "--" is run meanwhile, with that address in the
place of {}, and ends the recording:

    receipt record --to tcp:192.168.0.5 session.txt -- receipt selftest --to {}

The printer's own line is set as --to says. No other program prints on it
meanwhile; standard error tells how many are in front. If it goes, as without
power, it is waited for. Each piece is in the file at once. Ctrl+C ends it, if
no program does.

Exit status: 0 ended by Ctrl+C; 1 the printer isn't reached, or the file can't
be written; 2 wrong usage; with a program that of the program.)";

struct Options
{
    const QCommandLineOption link{QStringLiteral("link"),
                                  QStringLiteral("A symbolic link to make to the terminal."),
                                  QStringLiteral("PATH")};
    const QCommandLineOption listen{
        QStringLiteral("listen"),
        QStringLiteral("Be at this port of TCP instead of a pseudo terminal, such as "
                       "127.0.0.1:9100; the port is 9100 if it is left out, and any that is free "
                       "if it is 0. One program is served at a time, others wait until it goes."),
        QStringLiteral("HOST:PORT")};
    const QCommandLineOption force{QStringLiteral("force"),
                                   QStringLiteral("Replace a file that is there.")};
};

struct Request
{
    PrinterAddress printer;
    QString file;
    QString link;
    QString listen;
    bool replaces = false;
    QStringList program;  ///< with its arguments; empty: none is run
};

/// Complains and gives nothing if that can't be recorded.
std::optional<Request> requestOf(const QCommandLineParser &parser, const Options &options)
{
    if (parser.isSet(options.link) && parser.isSet(options.listen)) {
        tool::complain(QStringLiteral("--link doesn't go with --listen"));
        return std::nullopt;
    }
    const auto printer = tool::printerOf(parser, QStringLiteral("record"));
    if (!printer)
        return std::nullopt;
    const QStringList arguments = parser.positionalArguments();
    return Request{*printer,
                   arguments.constFirst(),
                   parser.value(options.link),
                   parser.value(options.listen),
                   parser.isSet(options.force),
                   arguments.mid(1)};
}

/// The line that programs print to. Complains and gives nothing if it can't be had.
std::unique_ptr<DeviceLine> lineOf(const Request &request)
{
    QString error;
    if (!request.listen.isEmpty()) {
        auto line = std::make_unique<TcpLine>();
        if (line->listen(request.listen, &error))
            return line;
        tool::complain(QStringLiteral("--listen: ") + error);
        return nullptr;
    }
    auto line = std::make_unique<OpenLine>();
    if (line->open(request.link, &error))
        return line;
    tool::complain(error);
    return nullptr;
}

/// Waits until no other program has the printer. Complains and gives false on failure, and behind
/// an interrupt.
bool getTurn(DeviceLock &lock, const PrinterAddress &printer, const Interrupt &interrupt)
{
    const QString fault = tool::waitForTurn(lock, printer, [&interrupt](int) {
        return interrupt.hasCome() ? QStringLiteral("cancelled") : QString();
    });
    if (!fault.isEmpty())
        tool::complain(fault);
    return fault.isEmpty();
}

void say(const QString &text)
{
    tool::print(text);
    std::fflush(stdout);
}

/// What is under way goes out, as long as it moves.
void drain(Transport &printer, tool::SessionFile &file)
{
    constexpr int step = 50;      // milliseconds
    constexpr int patience = 20;  // steps without a byte
    QEventLoop loop;
    QTimer timer;
    qint64 last = -1;
    int quietSteps = 0;
    QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
        const qint64 now = file.bytesOfHost() + printer.bytesWritten();
        quietSteps = now == last ? quietSteps + 1 : 0;
        last = now;
        if (quietSteps >= (printer.bytesToWrite() == 0 ? 1 : patience))
            loop.quit();
    });
    timer.start(step);
    loop.exec();
    if (printer.bytesToWrite() > 0)
        file.remark(
            QStringLiteral("%1 bytes didn't come to the printer").arg(printer.bytesToWrite()));
}

/// The program that prints, if there is one.
class PrintingProgram
{
public:
    /// @param words the program and its arguments; empty: none
    explicit PrintingProgram(const QStringList &words) : m_words(words)
    {
        m_process.setProcessChannelMode(QProcess::ForwardedChannels);
        m_process.setInputChannelMode(QProcess::ForwardedInputChannel);
    }
    /// It leaves when the program does.
    void endWith(QEventLoop &loop)
    {
        const auto quit = [&loop] { loop.quit(); };
        QObject::connect(&m_process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished),
                         &loop, quit);
        QObject::connect(&m_process, &QProcess::errorOccurred, &loop, quit);
    }
    /// It ends, too, if that is before its own end.
    ~PrintingProgram()
    {
        constexpr int patience = 3000;
        m_process.disconnect();
        if (!isRunning())
            return;
        m_process.terminate();
        if (!m_process.waitForFinished(patience))
            m_process.kill();
        m_process.waitForFinished();
    }
    PrintingProgram(const PrintingProgram &) = delete;
    PrintingProgram &operator=(const PrintingProgram &) = delete;

    void start(const DeviceLine &line)
    {
        if (m_words.isEmpty())
            return;
        const QString scheme =
            QLatin1String(line.name().startsWith(QLatin1Char('/')) ? "device:" : "tcp:");
        QStringList arguments = m_words.mid(1);
        arguments.replaceInStrings(QStringLiteral("{}"), scheme + line.name());
        m_process.start(m_words.constFirst(), arguments);
    }
    bool isRunning() const { return m_process.state() != QProcess::NotRunning; }
    /// Its exit status; success if there is none. Complains if it has none.
    int status() const
    {
        if (m_words.isEmpty())
            return tool::Success;
        if (m_process.error() == QProcess::UnknownError)
            return m_process.exitCode();
        tool::complain(QStringLiteral("%1: %2").arg(m_words.constFirst(), m_process.errorString()));
        return tool::BadInput;
    }

private:
    const QStringList m_words;
    QProcess m_process;
};

QString headingOfRecording(const Request &request)
{
    return QStringLiteral("recorded by receipt %1 of %2 on %3")
        .arg(QStringLiteral(RECEIPT_VERSION), request.printer.toString(),
             QDateTime::currentDateTime().toString(Qt::ISODate));
}

/// Why a recording isn't whole; empty if it is.
QString faultOfRecording(const tool::SessionRecorder &recorder, const tool::SessionFile &file)
{
    if (!recorder.fault().isEmpty() || !file.fault().isEmpty())
        return recorder.fault().isEmpty() ? file.fault() : recorder.fault();
    return file.hasBegun() ? QString() : QStringLiteral("cancelled");
}

int record(const Request &request, DeviceLine &line, tool::SessionFile &file,
           const Interrupt &interrupt)
{
    TransportOptions options;
    options.reopens = true;
    // A printer without paper takes nothing for as long as that lasts.
    options.writeMilliseconds = 0;
    const auto printer = Transport::make(request.printer, options);
    tool::SessionRecorder recorder(line, *printer, file, headingOfRecording(request));
    PrintingProgram program(request.program);
    QEventLoop loop;
    program.endWith(loop);
    QObject::connect(&recorder, &tool::SessionRecorder::said, &loop, say);
    QObject::connect(&recorder, &tool::SessionRecorder::ready, &loop, [&] {
        say(line.name());
        program.start(line);
    });
    QObject::connect(&recorder, &tool::SessionRecorder::ended, &loop, &QEventLoop::quit,
                     Qt::QueuedConnection);
    if (interrupt.notifier() != nullptr)
        QObject::connect(interrupt.notifier(), &QSocketNotifier::activated, &loop, [&] {
            interrupt.notifier()->setEnabled(false);
            // A program has got it from the terminal, too, and ends in its own way.
            if (program.isRunning())
                return;
            recorder.stopHearing();
            loop.quit();
        });
    recorder.start();
    loop.exec();
    // Behind a full disk, too: the printer is well.
    drain(*printer, file);
    const QString fault = faultOfRecording(recorder, file);
    if (!fault.isEmpty()) {
        tool::complain(fault);
        return tool::BadInput;
    }
    say(QStringLiteral("%1: %2 bytes to the printer, %3 from it")
            .arg(request.file)
            .arg(file.bytesOfHost())
            .arg(file.bytesOfPrinter()));
    return program.status();
}

}  // namespace

int runRecord(const QStringList &arguments)
{
    QCommandLineParser parser;
    const Options options;
    parser.setApplicationDescription(QString::fromLatin1(description));
    parser.addPositionalArgument(QStringLiteral("FILE"),
                                 QStringLiteral("The file of the recording, which is made."));
    parser.addPositionalArgument(QStringLiteral("PROGRAM"),
                                 QStringLiteral("What is run meanwhile, with its arguments."),
                                 QStringLiteral("[-- PROGRAM...]"));
    parser.addOptions(tool::printerOptions());
    parser.addOptions({options.link, options.listen, options.force});
    if (const auto status =
            tool::parseForPrinter(parser, QStringLiteral("record"), arguments, 1, -1))
        return *status;
    const auto request = requestOf(parser, options);
    if (!request)
        return tool::WrongUsage;
    tool::SessionFile file(request->file, request->replaces);
    // It is told before the turn is waited for.
    if (!file.mayBegin()) {
        tool::complain(file.fault());
        return tool::BadInput;
    }
    const Interrupt interrupt;
    DeviceLock lock(request->printer);
    const auto line = lineOf(*request);
    if (!line || !getTurn(lock, request->printer, interrupt))
        return tool::BadInput;
    return record(*request, *line, file, interrupt);
}
