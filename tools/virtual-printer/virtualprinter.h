#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>
#include <atomic>
#include <functional>
#include <mutex>
#include <random>
#include <thread>

#include "virtualprintermodels.h"

/// What can be wrong with a printer, or with the cable to it.
enum class VirtualFault {
    None,
    Silent,        ///< never answers
    Echo,          ///< sends back what it gets, on any line setting: a loopback
    Garbage,       ///< answers whatever it gets with random bytes
    Flood,         ///< sends random bytes without end
    Slow,          ///< answers after a delay
    HangUp,        ///< goes away after a number of bytes
    Partial,       ///< answers the first request on each line setting and no more
    DifferingIds,  ///< adds one to the last byte of every second answer
};

struct VirtualPrinterOptions
{
    QString model;
    int baudRate = 0;                                     ///< 0: the model's usual one
    std::optional<QSerialPort::FlowControl> flowControl;  ///< none: the model's usual one
    VirtualFault fault = VirtualFault::None;
    int faultValue = 0;  ///< Slow: milliseconds; HangUp: bytes
    unsigned seed = 1;   ///< of the random bytes
};

/// One read or write of the printer, with the line settings that the port had at that moment.
struct VirtualExchange
{
    bool fromPrinter = false;
    int baudRate = 0;
    QSerialPort::FlowControl flowControl = QSerialPort::NoFlowControl;
    QByteArray bytes;
    bool isOnItsLine = false;  ///< whether the port had the printer's own line settings
    QString line;              ///< what it is, if it isn't a serial line, such as "tcp"

    /// For example "19200 none <".
    QString heading() const;
    /// For example "19200 none < 1D 49 01", ">" being from the printer.
    QString toString() const;
};

/// Plays a receipt printer on a pseudo terminal. It answers as its model does while the baud rate
/// and the flow control of the port match its own, and is silent otherwise. It can't tell parities
/// apart, since a pseudo terminal has none.
///
/// Either the owner calls service() whenever the printer has to look at its line, or start() lets a
/// thread do it. start(), stop() and hangUp() are called from one thread, the one that destroys the
/// printer; the others may be called from any thread.
class VirtualPrinter
{
public:
    explicit VirtualPrinter(const VirtualPrinterOptions &options);
    /// A printer that answers by a table of the caller's.
    VirtualPrinter(const VirtualModel &model, const VirtualPrinterOptions &options = {});
    ~VirtualPrinter();
    VirtualPrinter(const VirtualPrinter &) = delete;
    VirtualPrinter &operator=(const VirtualPrinter &) = delete;

    /// False if there was no pseudo terminal to get, or the model is not known.
    bool isValid() const;
    /// For example "/dev/pts/3".
    QString portPath() const;
    /// What QSerialPort calls the port, for example "pts/3".
    QString portName() const;

    /// Of the printer's own line.
    QSerialPort::FlowControl flowControl() const { return m_model.flowControl; }

    /// Called with every exchange, on the thread that services the printer. Set it before start().
    void setObserver(std::function<void(const VirtualExchange &)> observer);
    /// Something else that answers, in place of the model's table: it is called with the bytes that
    /// come in on the printer's own line settings. Set it before start().
    void setAnswerer(std::function<QByteArray(const QByteArray &)> answerer);
    /// How many bytes service() takes at most; the others wait on the line.
    void setAppetite(int bytes);
    /// Sends what nobody asked for.
    void say(const QByteArray &bytes);
    /// What becomes readable when something comes in; -1 when it is off the line.
    int descriptor() const;
    /// Takes what has come in and answers it, without waiting for more.
    void service();
    /// Waits for input, then does service().
    /// @param milliseconds -1: without limit
    void waitAndService(int milliseconds);
    /// Services the printer on a thread of its own until stop() or destruction.
    void start();
    void stop();
    /// Takes the printer off the line, as a pulled USB adapter does.
    void hangUp();
    /// Whether it is off the line, by hangUp() or by its fault.
    bool hasHungUp() const;

    /// All exchanges since construction.
    QVector<VirtualExchange> dialogue() const;
    /// All bytes that have come in, in one piece.
    QByteArray received() const;

private:
    static constexpr int mostTakenAtOnce = 65536;

    void openTerminal();
    QString openAnyTerminal();
    void closeTerminal();
    VirtualExchange lineNow() const;
    QByteArray readAll();
    void take(const QByteArray &bytes);
    QByteArray answerPending();
    QByteArray answerTo(VirtualReply &reply);
    void send(const QByteArray &bytes);
    void record(VirtualExchange exchange, bool fromPrinter, const QByteArray &bytes);
    bool lineMatches(const VirtualExchange &line) const;
    QByteArray randomBytes(int most);
    bool handledByFault(const QByteArray &bytes);

    mutable std::recursive_mutex m_mutex;
    VirtualModel m_model;
    VirtualPrinterOptions m_options;
    std::function<void(const VirtualExchange &)> m_observer;
    std::function<QByteArray(const QByteArray &)> m_answerer;
    int m_appetite = mostTakenAtOnce;
    std::mt19937 m_random;
    int m_master = -1;
    int m_slave = -1;  ///< Held open, so that a client's close is not a hang-up for the master.
    QString m_path;
    QByteArray m_pending;
    QVector<VirtualExchange> m_dialogue;
    VirtualExchange m_answeredLine;  ///< For Partial: the line setting that has had its answer.
    qint64 m_receivedCount = 0;
    int m_answerCount = 0;
    std::thread m_thread;
    std::atomic<bool> m_stopping{false};
};
