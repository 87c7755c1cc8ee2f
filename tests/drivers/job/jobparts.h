#pragma once

#include <QPointer>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <functional>
#include <memory>

#include "commandsets/commandid_p.h"
#include "commandsets/commandrow_p.h"
#include "printerslib/drivers/devicelock.h"
#include "printerslib/drivers/printermodels.h"
#include "printerslib/drivers/printjob.h"
#include "printerslib/drivers/streamreader.h"
#include "printerslib/drivers/transport.h"
#include "transport/lockfolder_p.h"

/// A printer and its line, as a test wants them.
namespace jobparts {

using namespace printerslib::drivers;
using Outcome = PrintJobResult::Outcome;
using Reason = PrintJobResult::Reason;

inline PrinterAddress address(const QString &text = "tcp:192.0.2.1:9100")
{
    return PrinterAddress::parse(text).value();
}

/// What a printer answers to the commands that reach it.
class Printer
{
public:
    explicit Printer(const PrinterProfile &profile) : m_reader(profile), m_profile(profile) {}

    bool isSilent = false;
    bool isPaperOut = false;
    bool isCoverOpen = false;
    bool isOffLine = false;  ///< by its button
    bool isHot = false;
    bool isCutterStuck = false;
    bool isBroken = false;
    int confirmations = 1;   ///< how often each question for one is answered
    bool holdsBack = false;  ///< confirmations stay in it, and what is answered behind them
    QByteArray heldBack;     ///< those that do
    bool knowsAutomatic = true;
    bool playsMacros = true;
    bool obeysWhatIsDefined = true;  ///< questions in a macro are answered while it is defined, too
    int dataAnswers = 0;             ///< of Swecoin: how often there still is data
    bool countsMarks = true;         ///< of Star
    bool hasAutomatic = false;       ///< was switched on
    int counter = 5;                 ///< of Star
    QByteArray got;
    int questions = 0;

    /// Loses what power keeps.
    void switchOffAndOn()
    {
        m_reader.finish();
        m_macro.clear();
        m_isMacroOpen = false;
        hasAutomatic = false;
        heldBack.clear();
    }

    QByteArray take(const QByteArray &bytes)
    {
        got += bytes;
        QByteArray answer;
        const auto commands = m_reader.read(bytes);
        for (const StreamCommand &command : commands) {
            if (command.row != nullptr)
                answer += answerTo(command);
        }
        return isSilent ? QByteArray() : answer;
    }

    QByteArray automatic() const
    {
        QByteArray bytes = QByteArray::fromHex("10000000");
        if (isPaperOut || isCoverOpen)
            bytes[0] = char(0x18 | (isCoverOpen ? 0x20 : 0));
        if (isPaperOut)
            bytes[2] = 0x0C;
        return bytes;
    }

private:
    QByteArray answerTo(const StreamCommand &command)
    {
        const bool isAsking = command.row->id == CommandId::TransmitStatus ||
                              command.row->id == CommandId::RequestResponse;
        if (isAsking && m_isMacroOpen) {
            m_macro.append(command);
            return obeysWhatIsDefined ? obey(command) : QByteArray();
        }
        if (command.row->id == CommandId::MacroDefinition && playsMacros) {
            m_isMacroOpen = !m_isMacroOpen;
            if (m_isMacroOpen)
                m_macro.clear();
        } else if (command.row->id == CommandId::MacroExecution) {
            return play(command.operand(0));
        }
        return obey(command);
    }

    QByteArray play(int times)
    {
        if (std::exchange(m_isMacroOpen, false))
            m_macro.clear();
        QByteArray answers;
        for (int i = 0; i < times * m_macro.size(); ++i)
            answers += obey(m_macro.at(i % m_macro.size()));
        return answers;
    }

    QByteArray obey(const StreamCommand &command)
    {
        switch (command.row->id) {
            case CommandId::RealTimeStatus:
                questions++;
                return m_profile.dialect() == Dialect::StarLine ? starStatus() : realTime(command);
            case CommandId::AutomaticStatus:
                hasAutomatic = knowsAutomatic && command.operand(0) != 0;
                return hasAutomatic ? inTurn(automatic()) : QByteArray();
            case CommandId::TransmitStatus:
                return confirm(QByteArray(1, '\0'));
            case CommandId::RequestResponse:
                return confirm("\x37\x22" + command.bytes.right(4) + QByteArray(1, '\0'));
            case CommandId::EtbMark:
                counter = countsMarks ? (counter + 1) % 32 : counter;
                return {};
            case CommandId::StatusRequest:
                questions++;
                return swecoin(command.operand(0) != 0 ? command.operand(0) : command.bytes.at(2));
            default:
                return {};
        }
    }

    QByteArray confirm(const QByteArray &answer)
    {
        return inTurn(answer.repeated(holdsBack ? 1 : confirmations));
    }

    QByteArray inTurn(const QByteArray &answer)
    {
        if (!holdsBack)
            return answer;
        heldBack += answer;
        return {};
    }

    QByteArray realTime(const StreamCommand &command) const
    {
        switch (int(command.bytes.at(2))) {
            case 1:
                return QByteArray(1, isStopped() ? 0x1A : 0x12);
            case 2:
                return QByteArray(1, char(0x12 | (isCoverOpen ? 4 : 0) | (isPaperOut ? 0x20 : 0)));
            case 3:
                return QByteArray(1, char(0x12 | errorBits()));
            case 4:
                return QByteArray(1, isPaperOut ? 0x72 : 0x12);
            default:
                return QByteArray(1, 0x12);
        }
    }

    /// What an error's own bit says isn't said a second time.
    bool isStopped() const { return isPaperOut || isCoverOpen || isOffLine; }

    /// As they stand in DLE EOT 3 and in the fourth byte of Star's status.
    int errorBits() const
    {
        return (isCutterStuck ? 0x08 : 0) | (isBroken ? 0x20 : 0) | (isHot ? 0x40 : 0);
    }

    QByteArray starStatus() const
    {
        // Nine bytes: a header, a version, the status; the count of marks stands in the last but
        // one byte, in bits 1 to 3 and 5 and 6.
        QByteArray bytes = QByteArray::fromHex("230600000000000000");
        if (isPaperOut)
            bytes[5] = 0x08;
        if (isStopped())
            bytes[2] = char(0x08 | (isCoverOpen ? 0x20 : 0));
        bytes[3] = char(errorBits());
        bytes[7] = char((counter & 7) << 1 | (counter & 0x18) << 2);
        return bytes;
    }

    QByteArray swecoin(int number)
    {
        if (number == 1)
            return swecoinCode();
        QByteArray bytes(2, '\0');
        if (dataAnswers > 0) {
            dataAnswers--;
            bytes[0] = 0x40;
        }
        return bytes;
    }

    /// One code behind a NAK, or that all is well.
    QByteArray swecoinCode() const
    {
        if (isCutterStuck)
            return "\x15\x02";
        if (isBroken)
            return "\x15\x05";
        if (isHot)
            return "\x15\x07";
        if (isCoverOpen)
            return "\x15\x04";
        return isPaperOut ? "\x15\x03" : "\x06";
    }

    StreamReader m_reader;
    PrinterProfile m_profile;
    QVector<StreamCommand> m_macro;
    bool m_isMacroOpen = false;
};

/// A line of a test, that takes so many bytes in each turn of the event loop.
class Line : public Transport
{
public:
    Line(const PrinterAddress &printer, Printer *end) : m_address(printer), m_end(end)
    {
        m_timer.setSingleShot(true);
        QObject::connect(&m_timer, &QTimer::timeout, this, [this] { turn(); });
    }

    int perTurn = 1000;
    qint64 breaksAt = -1;  ///< bytes taken in all
    qint64 stopsAt = -1;
    bool failsToOpen = false;
    int handingTakes = 0;  ///< milliseconds that each write() keeps its caller
    bool isAnswering = true;
    std::function<void(qint64)> onTaken;  ///< with the number of bytes taken

    PrinterAddress address() const override { return m_address; }
    State state() const override { return m_state; }
    TransportError error() const override { return {}; }
    void open() override
    {
        m_state = State::Opening;
        m_taken = 0;
        m_timer.start(0);
    }
    void close() override
    {
        m_state = State::Closed;
        m_queue.clear();
        m_timer.stop();
    }
    bool write(const QByteArray &bytes) override
    {
        if (m_state == State::Closed)
            return false;
        QThread::msleep(static_cast<unsigned long>(handingTakes));
        m_queue += bytes;
        m_timer.start(0);
        return true;
    }
    void discard() override { m_queue.clear(); }
    qint64 bytesToWrite() const override { return m_queue.size(); }
    qint64 bytesWritten() const override { return m_taken; }
    void goOn()
    {
        stopsAt = -1;
        m_timer.start(0);
    }

private:
    void turn()
    {
        if (m_state == State::Opening) {
            m_state = failsToOpen ? State::Closed : State::Open;
            m_timer.start(0);
            if (failsToOpen)
                Q_EMIT failed({TransportError::Kind::Refused, "it refuses"});
            else
                Q_EMIT opened();
            return;
        }
        if (m_state != State::Open || m_queue.isEmpty())
            return;
        int count = std::min(perTurn, m_queue.size());
        for (const qint64 end : {breaksAt, stopsAt}) {
            if (end >= 0)
                count = int(std::clamp<qint64>(end - m_taken, 0, count));
        }
        const QByteArray bytes = m_queue.left(count);
        m_queue.remove(0, count);
        m_taken += count;
        const QByteArray answer = m_end->take(bytes);
        if (breaksAt >= 0 && m_taken >= breaksAt) {
            close();
            Q_EMIT failed({TransportError::Kind::Lost, "it has gone"});
            return;
        }
        if (stopsAt < 0 || m_taken < stopsAt)
            m_timer.start(0);
        if (onTaken)
            onTaken(m_taken);
        QPointer<Line> self(this);
        if (!answer.isEmpty())
            Q_EMIT received(answer);
        if (self && m_state == State::Open && count > 0)
            Q_EMIT written(m_taken);
    }

    PrinterAddress m_address;
    Printer *m_end;
    State m_state = State::Closed;
    QByteArray m_queue;
    qint64 m_taken = 0;
    QTimer m_timer;
};

class Lock : public DeviceLock
{
public:
    Lock(const PrinterAddress &printer, const QString &folder)
        : DeviceLock(printer, LockRoots{folder, {}, folder}, nullptr)
    {}
};

class Job : public PrintJob
{
public:
    Job(const EncodedDocument &document, const PrinterProfile &profile, Line *line, Lock *lock,
        const PrintJobOptions &options)
        : PrintJob(document, profile, std::unique_ptr<Transport>(line),
                   std::unique_ptr<DeviceLock>(lock), options, 1)
    {
        connect(this, &PrintJob::finished, this, [this](const PrintJobResult &result) {
            ends++;
            end = result;
        });
        connect(this, &PrintJob::note, this, [this](const QString &text) { notes.append(text); });
        connect(this, &PrintJob::progress, this, [this](qint64 sent, qint64) { steps << sent; });
        connect(this, &PrintJob::waiting, this, [this](int ahead) { places << ahead; });
        connect(this, &PrintJob::retracted, this, [this](bool isDone) { retractions << isDone; });
    }

    int ends = 0;
    PrintJobResult end;
    QStringList notes;
    QVector<qint64> steps;
    QVector<int> places;
    QVector<bool> retractions;
};

/// Options whose times are over soon.
inline PrintJobOptions soon()
{
    PrintJobOptions options;
    options.statusMilliseconds = 30;
    options.confirmMilliseconds = 60;
    options.pollMilliseconds = 5;
    options.cancelMilliseconds = 30;
    options.transport.writeMilliseconds = 40;
    return options;
}

/// Options whose times a printer that answers never needs, however busy the machine is.
inline PrintJobOptions patient()
{
    constexpr int longTime = 30000;
    PrintJobOptions options = soon();
    for (int *time : {&options.statusMilliseconds, &options.confirmMilliseconds,
                      &options.cancelMilliseconds, &options.transport.writeMilliseconds})
        *time = longTime;
    return options;
}

}  // namespace jobparts
