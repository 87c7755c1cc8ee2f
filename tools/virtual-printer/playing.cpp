#include "playing.h"

#include <algorithm>

#include "clockunits.h"

namespace {

constexpr qint64 nanosecondsPerMicrosecond = 1000;
constexpr int mostAtOnce = 65536;
constexpr int paceMilliseconds = 5;  // between two looks at a slow line

}  // namespace

Playing::Playing(DeviceLine &line, PrinterSide &side, PrinterDevice *device, int bytesPerSecond)
    : m_line(line), m_side(side), m_device(device), m_bytesPerSecond(bytesPerSecond)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &Playing::goOn);
    // Queued, as it is said from within reading, too.
    connect(&m_line, &DeviceLine::readable, this, &Playing::goOn, Qt::QueuedConnection);
    connect(&m_line, &DeviceLine::said, this, &Playing::noted);
}

void Playing::start()
{
    m_clock.start();
    goOn();
}

void Playing::apply(const PrinterFault &fault)
{
    if (m_device == nullptr)
        return;
    // It happens now, and not when time was looked at the last time.
    goOn();
    m_device->apply(fault);
    goOn();
}

void Playing::goOn()
{
    m_side.advanceTo(m_clock.nsecsElapsed() / nanosecondsPerMicrosecond);
    readLine();
    const QByteArray answers = m_side.takeAnswers();
    if (!answers.isEmpty())
        m_line.write(answers);
    const QStringList notes = m_side.takeNotes();
    for (const QString &note : notes)
        Q_EMIT noted(note);
    if (m_device != nullptr)
        followDevice();
    wait();
}

/// How many bytes the line has had time to bring.
int Playing::allowance()
{
    if (m_bytesPerSecond == 0)
        return mostAtOnce;
    constexpr int piecesPerSecond = 50;
    const qint64 now = m_clock.nsecsElapsed() / nanosecondsPerMicrosecond;
    const double most = std::max(1.0, double(m_bytesPerSecond) / piecesPerSecond);
    m_tokens = std::min(
        most, m_tokens + double(now - m_tokensAt) * m_bytesPerSecond / clockunits::perSecond);
    m_tokensAt = now;
    return static_cast<int>(m_tokens);
}

void Playing::readLine()
{
    const bool isOff = m_device != nullptr && !m_device->hardware().isPowered;
    int most = allowance();
    if (m_line.waits() && !isOff)
        most = std::min(most, m_side.room());
    m_mayHaveMore = most <= 0;
    if (most <= 0)
        return;
    const QByteArray bytes = m_line.read(most);
    m_tokens -= bytes.size();
    m_mayHaveMore = bytes.size() == most;
    if (!bytes.isEmpty())
        m_side.take(bytes);
}

void Playing::followDevice()
{
    const QVector<printerslib::drivers::Paper> papers = m_device->takePapers();
    if (!papers.isEmpty())
        Q_EMIT printed(papers);
    if (m_device->takeReset() && !m_line.reset())
        Q_EMIT noted(QStringLiteral("there is no connection to reset"));
    if (m_device->hardware().isPowered != m_isPowered) {
        m_isPowered = !m_isPowered;
        m_line.setPowered(m_isPowered);
    }
    if (m_device->isBusy() != m_isBusy) {
        m_isBusy = !m_isBusy;
        m_line.setBusy(m_isBusy);
    }
}

/// Until the line has more, there is room for it, or something happens by itself.
void Playing::wait()
{
    const bool hasRoom = !m_line.waits() || m_side.room() > 0;
    const bool isPaced = m_bytesPerSecond > 0;
    m_line.setListening(hasRoom && !(isPaced && m_mayHaveMore));
    qint64 milliseconds = -1;
    const auto consider = [&milliseconds](qint64 time) {
        milliseconds = milliseconds < 0 ? time : std::min(milliseconds, time);
    };
    if (m_mayHaveMore && hasRoom)
        consider(isPaced ? paceMilliseconds : 0);
    const qint64 event = m_side.nextEvent();
    const qint64 now = m_clock.nsecsElapsed() / nanosecondsPerMicrosecond;
    if (event >= 0)
        consider(std::max<qint64>(0, (event - now) / clockunits::perMillisecond + 1));
    if (milliseconds < 0)
        m_timer.stop();
    else
        m_timer.start(static_cast<int>(std::min<qint64>(milliseconds, 1'000'000)));
}
