#include "till/simulatedtill.h"

#include <QEventLoop>
#include <QPointer>

#include "clockunits.h"
#include "printerslib/drivers/devicelock.h"
#include "till/simulatedline.h"
#include "till/tillreceipt.h"

using namespace printerslib::drivers;

namespace {

constexpr int bytesPerSecond = 19200 / 10;  // a byte has a start and a stop bit
constexpr double headSpeed = 150;           // millimetres a second

/// Nobody's, so that no other program waits for its turn on it.
PrinterAddress addressOfTill()
{
    return *PrinterAddress::parse(QStringLiteral("tcp:192.0.2.1:9100"));
}

PrinterDevice::Options deviceOptions()
{
    PrinterDevice::Options options;
    options.millimetresPerSecond = headSpeed;
    return options;
}

class TillJob : public PrintJob
{
public:
    TillJob(const EncodedDocument &document, std::unique_ptr<Transport> line)
        : PrintJob(document, till::profile(), std::move(line),
                   std::make_unique<DeviceLock>(addressOfTill()), PrintJobOptions(), 1)
    {}
};

}  // namespace

till::SimulatedTill::SimulatedTill() : m_device(profile(), deviceOptions())
{
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { turn(); });
    m_timer.setInterval(0);
}

till::SimulatedTill::~SimulatedTill() = default;

PrintJobResult till::SimulatedTill::print(const EncodedDocument &document)
{
    auto line = std::make_unique<SimulatedLine>(addressOfTill());
    m_line = line.get();
    m_job = std::make_unique<TillJob>(document, std::move(line));
    QEventLoop loop;
    QObject::connect(m_job.get(), &PrintJob::finished, &loop, &QEventLoop::quit);
    m_job->start();
    m_timer.start();
    loop.exec();
    m_timer.stop();
    m_device.takePapers();
    m_line = nullptr;
    PrintJobResult result = m_job->result();
    m_job.reset();
    return result;
}

/// The question whether the printer can print, and that for the confirmation: behind each, all has
/// gone until the answer is there.
bool till::SimulatedTill::isWaiting() const
{
    const auto outcome = m_job->result().outcome;
    const bool isAsked = outcome == PrintJobResult::Outcome::NotBegun && m_line->bytesWritten() > 0;
    return !m_job->isFinished() && (isAsked || outcome >= PrintJobResult::Outcome::Sent);
}

void till::SimulatedTill::turn()
{
    m_device.advanceTo((m_times.all() + 1) * clockunits::perSecond / bytesPerSecond);
    const QPointer<SimulatedLine> line(m_line);
    if (line->state() == Transport::State::Opening) {
        m_times.idle++;
        line->hasOpened();
        return;
    }
    const bool hasGone = line->bytesToWrite() > 0 && !m_device.isBusy();
    if (hasGone) {
        m_times.busy++;
        m_device.take(line->takeByte());
        line->byteHasGone();
    } else {
        qint64 &time = m_device.isBusy() ? m_times.held
                       : isWaiting()     ? m_times.waited
                                         : m_times.idle;
        time++;
    }
    const QByteArray answers = m_device.takeAnswers();
    if (line && !answers.isEmpty())
        line->hasAnswered(answers);
}
