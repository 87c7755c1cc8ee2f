#include "episode.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QFile>
#include <algorithm>

#include "printerslib/drivers/printerprofile.h"
#include "printerslib/drivers/printqueueentry.h"

using namespace printerslib::drivers;

namespace chaos {

namespace {

constexpr int lookMilliseconds = 30;
constexpr int quietLooks = 4;
/// More than all times of a job together, and those of the jobs in front of it.
constexpr int hangMilliseconds = 90000;

speed_t speedOf(int baudRate)
{
    switch (baudRate) {
        case 9600:
            return B9600;
        case 19200:
            return B19200;
        default:
            return B115200;
    }
}

/// A port is set back when it is closed. What it has taken is on its way by then; but a pseudo
/// terminal still has it, and its printer would hear it at the wrong speed.
bool setLine(const QString &path, speed_t speed, bool isSoftwareFlow)
{
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios line = {};
    if (descriptor < 0 || ::tcgetattr(descriptor, &line) != 0)
        return false;
    ::cfsetspeed(&line, speed);
    line.c_cflag |= isSoftwareFlow ? 0U : CRTSCTS;
    line.c_iflag |= isSoftwareFlow ? IXON : 0U;
    const bool isSet = ::tcsetattr(descriptor, TCSANOW, &line) == 0;
    ::close(descriptor);
    return isSet;
}

PrinterDevice::Options deviceOptionsOf(const EpisodePlan &plan)
{
    PrinterDevice::Options options;
    options.bufferBytes = plan.bufferBytes;
    options.millimetresPerSecond = plan.millimetresPerSecond;
    options.seed = unsigned(plan.seed);
    return options;
}

}  // namespace

void WatchedDevice::watch(qint64 byte, std::function<void()> happening)
{
    m_watched.append({byte, std::move(happening)});
    std::stable_sort(
        m_watched.begin(), m_watched.end(),
        [](const Watched &one, const Watched &other) { return one.byte < other.byte; });
}

void WatchedDevice::take(const QByteArray &bytes)
{
    QByteArray rest = bytes;
    while (!m_watched.isEmpty() && m_watched.constFirst().byte <= bytesReceived() + rest.size()) {
        const Watched next = m_watched.takeFirst();
        const auto part = int(std::max<qint64>(0, next.byte - bytesReceived()));
        PrinterDevice::take(rest.left(part));
        rest.remove(0, part);
        next.happening();
    }
    PrinterDevice::take(rest);
}

Episode::Episode(const EpisodePlan &plan, const QString &folder)
    : m_plan(plan),
      m_folder(folder),
      m_profile(PrinterProfile::forModel(plan.model).value()),
      m_device(m_profile, deviceOptionsOf(plan)),
      m_processes(plan.jobs.size())
{
    connect(&m_quietTimer, &QTimer::timeout, this, &Episode::waitForQuiet);
    for (const ClientPlan &job : plan.jobs)
        m_ends.append({job, {}, false, false});
}

Episode::~Episode()
{
    const QVector<std::shared_ptr<QProcess>> processes = m_processes + QVector{m_helper};
    for (const auto &process : processes) {
        if (!process)
            continue;
        process->disconnect(this);
        process->kill();
        process->waitForFinished();
    }
}

bool Episode::openLine()
{
    if (m_plan.isNetwork) {
        auto line = std::make_unique<TcpLine>();
        line->setWindow(m_plan.window);
        QString error;
        if (!line->listen(QStringLiteral("127.0.0.1:0"), &error)) {
            note(error);
            return false;
        }
        m_line = std::move(line);
        return true;
    }
    VirtualModel model;
    model.id = m_plan.model;
    model.baudRate = m_plan.baudRate;
    model.flowControl =
        m_plan.isSoftwareFlow ? QSerialPort::SoftwareControl : QSerialPort::HardwareControl;
    m_terminal = std::make_unique<VirtualPrinter>(model);
    if (m_terminal->isValid() &&
        setLine(m_terminal->portPath(), speedOf(m_plan.baudRate), m_plan.isSoftwareFlow))
        m_line = std::make_unique<TerminalLine>(*m_terminal, model.flowControl);
    return m_line != nullptr;
}

QString Episode::address() const
{
    if (m_plan.isNetwork)
        return QStringLiteral("tcp:") + m_line->name();
    return QStringLiteral("serial:%1?baud=%2&flow=%3")
        .arg(m_line->name())
        .arg(m_plan.baudRate)
        .arg(m_plan.isSoftwareFlow ? QStringLiteral("software") : QStringLiteral("hardware"));
}

void Episode::start()
{
    m_clock.start();
    if (!openLine()) {
        note(QStringLiteral("there is no line to be had"));
        QTimer::singleShot(0, this, &Episode::finished);
        return;
    }
    m_playing = std::make_unique<Playing>(*m_line, m_device, &m_device, m_plan.bytesPerSecond);
    connect(m_playing.get(), &Playing::printed, this,
            [this](const QVector<Paper> &papers) { m_papers += papers; });
    connect(m_playing.get(), &Playing::noted, this, &Episode::note);
    m_playing->start();
    for (const Trouble &trouble : m_plan.troubles)
        planTrouble(trouble);
    if (m_plan.isQueue())
        startPrinter();
    startJobs();
}

void Episode::planTrouble(const Trouble &trouble)
{
    if (trouble.atByte >= 0)
        m_device.watch(trouble.atByte, [this, trouble] { befall(trouble); });
    else
        QTimer::singleShot(trouble.atMillisecond, this, [this, trouble] { befall(trouble); });
}

/// Within the taking of bytes, too, and so at the device itself; its player sees it behind that.
void Episode::befall(const Trouble &trouble)
{
    if (m_isOver)
        return;
    note(trouble.fault.toString());
    m_device.apply(trouble.fault);
    for (int i = 0; i < m_started; ++i) {
        if (m_processes.at(i))
            m_ends[i].isTroubled = true;
    }
    QTimer::singleShot(0, this, [this] { m_playing->look(); });
    if (trouble.repairedAfter < 0)
        return;
    m_inForce++;
    QTimer::singleShot(trouble.repairedAfter, this, [this, trouble] {
        m_inForce--;
        if (!m_isOver)
            apply(trouble.repair);
    });
}

void Episode::apply(const PrinterFault &fault)
{
    note(fault.toString());
    m_playing->apply(fault);
}

/// As many at once as there are programs; the sound ones one by one, when all else is over.
void Episode::startJobs()
{
    const int plagued = m_plan.jobs.size() - m_plan.soundJobs;
    while (m_running < m_plan.programs && m_started < plagued) {
        const int number = m_started++;
        m_running++;
        QTimer::singleShot(m_plan.delays.at(number), this, [this, number] { startJob(number); });
    }
    const bool isPrinting = m_helper || m_printers < m_plan.printerKills.size();
    if (m_running > 0 || isPrinting)
        return;
    if (!m_isOver)
        endTroubles();
    m_quietLooks = 0;
    m_looks = 0;
    m_quietTimer.start(lookMilliseconds);
}

void Episode::startJob(int number)
{
    note(QStringLiteral("job %1 begins").arg(m_plan.jobs.at(number).receipt.job));
    const QString role = m_plan.isQueue() ? QStringLiteral("add") : QStringLiteral("print");
    m_ends[number].isTroubled = m_inForce > 0 && !m_isOver;
    m_processes[number] = startProcess(
        QStringList{role, address(), m_plan.model, m_folder} + m_plan.jobs.at(number).toArguments(),
        [this, number] { jobHasEnded(number); });
    QTimer::singleShot(hangMilliseconds, m_processes.at(number).get(), [this, number] {
        m_ends[number].hasHung = true;
        m_processes.at(number)->kill();
    });
}

std::shared_ptr<QProcess> Episode::startProcess(const QStringList &arguments,
                                                std::function<void()> ended)
{
    auto process = std::make_shared<QProcess>();
    process->setProgram(QCoreApplication::applicationFilePath());
    process->setArguments(arguments);
    process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    connect(process.get(), qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this, ended,
            Qt::QueuedConnection);
    connect(
        process.get(), &QProcess::errorOccurred, this,
        [this, ended](QProcess::ProcessError error) {
            if (error != QProcess::FailedToStart)
                return;
            note(QStringLiteral("it doesn't start"));
            ended();
        },
        Qt::QueuedConnection);
    process->start();
    return process;
}

void Episode::jobHasEnded(int number)
{
    JobEnd &end = m_ends[number];
    end.report = ClientReport::fromOutput(m_processes.at(number)->readAllStandardOutput());
    note(end.toString());
    m_processes[number].reset();
    m_running--;
    startJobs();
}

/// The next program that prints what is in the queue.
void Episode::startPrinter()
{
    const qint64 killedAfter = m_plan.printerKills.value(m_printers++, -1);
    startHelper({QStringLiteral("queue"), m_folder, QString::number(killedAfter)});
}

void Episode::startHelper(const QStringList &arguments)
{
    note(arguments.constFirst() + QStringLiteral(" begins"));
    m_helper = startProcess(arguments, [this] { helperHasEnded(); });
    QTimer::singleShot(hangMilliseconds, m_helper.get(), [this] {
        m_hasHung = true;
        m_helper->kill();
    });
}

void Episode::helperHasEnded()
{
    constexpr int pause = 20;
    note(QStringLiteral("it ended"));
    m_helper.reset();
    if (!m_isOver && m_printers < m_plan.printerKills.size())
        QTimer::singleShot(pause, this, &Episode::startPrinter);
    else
        startJobs();
}

/// All that waits is printed, and what is held is decided, until nothing is left of both.
void Episode::settleQueue()
{
    using State = PrintQueueEntry::State;
    constexpr int mostSettlings = 12;
    m_queue = queueReports(m_folder);
    const auto has = [this](State least, State most) {
        return std::any_of(m_queue.begin(), m_queue.end(), [=](const QueueReport &report) {
            return report.state >= int(least) && report.state <= int(most);
        });
    };
    const bool waits = has(State::Waiting, State::Printing);
    const bool holds = has(State::Unknown, State::Partial);
    if ((!waits && !holds) || ++m_settlings > mostSettlings)
        end();
    else if (waits)
        startPrinter();
    else
        startHelper({QStringLiteral("decide"), m_folder});
}

void Episode::endTroubles()
{
    m_isOver = true;
    constexpr PrinterFault::Kind repairs[] = {
        PrinterFault::PowerOn,        PrinterFault::PaperBack, PrinterFault::CoverClosed,
        PrinterFault::CutterRepaired, PrinterFault::OnLine,    PrinterFault::AnswersAgain,
        PrinterFault::Swallow,        PrinterFault::Change};
    for (const PrinterFault::Kind repair : repairs)
        m_playing->apply({repair, 0});
    note(QStringLiteral("nothing is wrong any more"));
}

/// Until what was sent is on the paper.
void Episode::waitForQuiet()
{
    const bool isQuiet = m_device.bytesReceived() == m_seenBytes && m_device.nextEvent() < 0;
    m_seenBytes = m_device.bytesReceived();
    m_quietLooks = isQuiet ? m_quietLooks + 1 : 0;
    if (m_quietLooks < quietLooks && ++m_looks < mostLooks)
        return;
    m_quietTimer.stop();
    if (!comesToRest())
        note(QStringLiteral("the printer doesn't come to rest"));
    if (m_plan.isQueue() && comesToRest()) {
        settleQueue();
        return;
    }
    if (m_started == m_plan.jobs.size() || !comesToRest()) {
        end();
        return;
    }
    m_running++;
    startJob(m_started++);
}

void Episode::end()
{
    m_playing->disconnect(this);
    m_openBytes = m_device.bytesOfOpenCommand();
    m_papers += m_device.takePapers();
    m_papers += m_device.finish();
    Q_EMIT finished();
}

void Episode::note(const QString &text)
{
    m_events.append(QStringLiteral("%1 ms, byte %2: %3")
                        .arg(m_clock.elapsed(), 6)
                        .arg(m_device.bytesReceived())
                        .arg(text));
}

}  // namespace chaos
