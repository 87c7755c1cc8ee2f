#include "printerslib/drivers/printersearch.h"

#include <unistd.h>

#include <QFile>
#include <QSerialPortInfo>
#include <QVector>
#include <algorithm>

#include "printdevicefinder/printdevicefinder.h"
#include "transport/portuse_p.h"

namespace printerslib::drivers {

namespace {

using SearchResult = PrinterSearch::Result;

/// What stands in the way of a port's use.
SearchResult hindranceOf(const PortUse &port)
{
    if (port.isUsable() || port.canonicalPath().isEmpty() || !port.isSerialPort())
        return SearchResult::None;
    const QByteArray path = QFile::encodeName(port.canonicalPath());
    const bool isPermitted = ::access(path.constData(), R_OK | W_OK) == 0 &&
                             !PortUse::lockFilePath(port.canonicalPath()).isEmpty();
    return isPermitted ? SearchResult::Busy : SearchResult::NotPermitted;
}

}  // namespace

class PrinterSearch::State
{
public:
    explicit State(PrinterSearch &search) : m_search(search) {}
    ~State() { dropFinder(); }
    State(const State &) = delete;
    State &operator=(const State &) = delete;

    /// False, and nothing happens, while a search is under way.
    bool begin();
    void search(const QStringList &portNames);
    void confirm(const QList<PrintDeviceInfo> &records);
    void cancel();

    bool isRunning = false;
    Result result = Result::None;
    PrintDeviceInfo device;
    QString text;

private:
    const PortUse &lookAt(const QString &portName);
    QString canonicalPathOf(const QString &portName) const;
    void confirmNext();
    void makeFinder();
    void dropFinder();
    void concludeLater();
    void conclude();
    void judge();

    PrinterSearch &m_search;
    QScopedPointer<PrintDeviceFinder> m_finder;
    /// Kept open until the end: a port whose last user goes drops its DTR line.
    QVector<PortUse> m_ports;
    QList<PrintDeviceInfo> m_waiting;  ///< records whose port is taken by others before them
    QString m_finderText;
    bool m_isCancelled = false;
    int m_number = 0;  ///< of the conclusion that counts: the finder tells its end twice
};

bool PrinterSearch::State::begin()
{
    if (isRunning)
        return false;
    isRunning = true;
    m_isCancelled = false;
    m_finderText.clear();
    result = Result::None;
    device = PrintDeviceInfo();
    text.clear();
    return true;
}

const PortUse &PrinterSearch::State::lookAt(const QString &portName)
{
    m_ports.append(PortUse(portName));
    return m_ports.constLast();
}

/// Of a port that was looked at.
QString PrinterSearch::State::canonicalPathOf(const QString &portName) const
{
    const auto *const port =
        std::find_if(m_ports.cbegin(), m_ports.cend(),
                     [&portName](const PortUse &one) { return one.name() == portName; });
    return port == m_ports.cend() ? QString() : port->canonicalPath();
}

void PrinterSearch::State::search(const QStringList &portNames)
{
    QStringList usable;
    QStringList paths;
    for (const QString &name : portNames) {
        const PortUse &port = lookAt(name);
        if (port.isUsable() && !paths.contains(port.canonicalPath())) {
            usable.append(name);
            paths.append(port.canonicalPath());
        }
    }
    makeFinder();
    if (usable.isEmpty() && !portNames.isEmpty())
        concludeLater();
    else
        m_finder->start(usable);
}

void PrinterSearch::State::confirm(const QList<PrintDeviceInfo> &records)
{
    makeFinder();
    if (records.isEmpty()) {
        QList<PrintDeviceInfo> none;
        m_finder->test(none);
        return;
    }
    for (const PrintDeviceInfo &record : records) {
        if (lookAt(record.settings().portName()).isUsable())
            m_waiting.append(record);
    }
    confirmNext();
}

/// One record of each port: on one port the finder would try several at once.
void PrinterSearch::State::confirmNext()
{
    QList<PrintDeviceInfo> now;
    QList<PrintDeviceInfo> later;
    QStringList paths;
    for (const PrintDeviceInfo &record : qAsConst(m_waiting)) {
        const QString path = canonicalPathOf(record.settings().portName());
        (paths.contains(path) ? later : now).append(record);
        paths.append(path);
    }
    m_waiting = later;
    if (now.isEmpty())
        concludeLater();
    else
        m_finder->test(now);
}

void PrinterSearch::State::makeFinder()
{
    m_finder.reset(new PrintDeviceFinder);
    connect(m_finder.data(), &PrintDeviceFinder::deviceFinded, &m_search,
            [this](const PrintDeviceInfo &found) { device = found; });
    connect(m_finder.data(), &PrintDeviceFinder::noDevices, &m_search,
            [this](const QString &reason) {
                m_finderText = reason;
                concludeLater();
            });
    connect(m_finder.data(), &PrintDeviceFinder::finished, &m_search, [this] { concludeLater(); });
}

/// The device comes right behind the finder's end.
void PrinterSearch::State::concludeLater()
{
    const int number = ++m_number;
    QMetaObject::invokeMethod(
        &m_search,
        [this, number] {
            if (isRunning && number == m_number)
                conclude();
        },
        Qt::QueuedConnection);
}

void PrinterSearch::State::cancel()
{
    if (!isRunning || m_isCancelled)
        return;
    m_isCancelled = true;
    m_finder->cancel();
}

void PrinterSearch::State::conclude()
{
    if (!device.isValid() && !m_isCancelled && !m_waiting.isEmpty()) {
        confirmNext();
        return;
    }
    judge();
    dropFinder();
    m_waiting.clear();
    m_ports.clear();
    isRunning = false;
    Q_EMIT m_search.over(result);
}

void PrinterSearch::State::judge()
{
    if (device.isValid()) {
        result = Result::Found;
        text = QStringLiteral("%1 on %2").arg(device.deviceId(), device.settings().portName());
        return;
    }
    if (m_isCancelled) {
        result = Result::Cancelled;
        text = QStringLiteral("The search was cancelled.");
        return;
    }
    QStringList reasons;
    for (const PortUse &port : qAsConst(m_ports)) {
        const Result hindrance = hindranceOf(port);
        if (hindrance == Result::Busy || result == Result::None)
            result = hindrance;
        if (!port.isUsable())
            reasons.append(port.reason());
    }
    text = reasons.isEmpty() ? m_finderText : reasons.join(QStringLiteral("; "));
}

/// It tells its end once more when it dies.
void PrinterSearch::State::dropFinder()
{
    if (!m_finder.isNull())
        m_finder->disconnect(&m_search);
    m_finder.reset();
}

PrinterSearch::PrinterSearch(QObject *parent) : QObject(parent), d(new State(*this)) {}

PrinterSearch::~PrinterSearch() = default;

bool PrinterSearch::isRunning() const
{
    return d->isRunning;
}

PrinterSearch::Result PrinterSearch::result() const
{
    return d->result;
}

PrintDeviceInfo PrinterSearch::device() const
{
    return d->device;
}

QString PrinterSearch::text() const
{
    return d->text;
}

bool PrinterSearch::start()
{
    QStringList names;
    const QList<QSerialPortInfo> ports = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo &port : ports)
        names.append(port.portName());
    return start(names);
}

bool PrinterSearch::start(const QStringList &portNames)
{
    if (!d->begin())
        return false;
    d->search(portNames);
    return true;
}

bool PrinterSearch::confirm(const QList<PrintDeviceInfo> &records)
{
    if (!d->begin())
        return false;
    d->confirm(records);
    return true;
}

void PrinterSearch::cancel()
{
    d->cancel();
}

}  // namespace printerslib::drivers
