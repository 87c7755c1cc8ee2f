#include "printdevicefinder/printdevicefinder.h"

#include <QSerialPortInfo>
#include <QSet>
#include <QThreadPool>
#include <QtConcurrent>

#include "printdevicefinder/finderlink_p.h"
#include "printdevicefinder/findertasks_p.h"
#include "printdevicefinder/searchprinters_p.h"

namespace {

// One thread per port; waiting threads cost little.
constexpr int mostThreads = 100;

void logThreadPool()
{
    const QThreadPool *const pool = QThreadPool::globalInstance();
    qCDebug(SEARCH_PRINTERS) << pool->activeThreadCount() << pool->maxThreadCount();
}

}  // namespace

PrintDeviceFinder::PrintDeviceFinder(QObject *parent)
    : QObject(parent), m_link(QSharedPointer<FinderLink>::create(this))
{
    logThreadPool();
    QThreadPool::globalInstance()->setMaxThreadCount(mostThreads);
    logThreadPool();
}

PrintDeviceFinder::~PrintDeviceFinder()
{
    PrintDeviceFinder::cancel();
    m_link->dropFinder();
}

// A slot of any signal may delete the finder, whose end then has done the rest. The link is kept,
// as its lock is held while needCancel() is signalled.
void PrintDeviceFinder::cancel()
{
    qCWarning(SEARCH_PRINTERS) << "CANCEL" << m_devices.size();
    const QPointer<PrintDeviceFinder> alive(this);
    const QList<QPointer<QFutureWatcher<PrintDeviceInfo>>> watchers = m_watchers.values();
    for (const auto &watcher : watchers) {
        if (!watcher.isNull())
            disconnect(watcher.data(), &QFutureWatcherBase::finished, this,
                       &PrintDeviceFinder::watcherFinished);
    }
    const QSharedPointer<FinderLink> link = m_link;
    link->cancel([this] { Q_EMIT needCancel(); });
    // Intended: once more for each task, though each task hears them all; clients count the signals
    // (test cancelSignalsOnceMoreForEachTask).
    for (const auto &watcher : watchers) {
        if (!alive.isNull())
            link->cancel([this] { Q_EMIT needCancel(); });
        if (watcher.isNull())
            continue;
        watcher->cancel();
        watcher->deleteLater();
        delete watcher.data();
    }
    if (alive.isNull())
        return;
    m_watchers.clear();
    qCWarning(SEARCH_PRINTERS) << "CANCELED" << m_devices.size();
    Q_EMIT finished();
}

void PrintDeviceFinder::start()
{
    QStringList portNames;
    const QList<QSerialPortInfo> ports = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo &port : ports)
        portNames.append(port.portName());
    start(portNames);
}

void PrintDeviceFinder::start(QStringList portNames)
{
    m_devices.clear();
    if (portNames.isEmpty()) {
        Q_EMIT noDevices(tr("There are no available ports"));
        return;
    }
    const QSet<QString> names(portNames.cbegin(), portNames.cend());
    const int cancelCount = m_link->cancelCount();
    for (const QString &name : names)
        watch(name, QtConcurrent::run(findertasks::searchPort, m_link, cancelCount, name));
}

void PrintDeviceFinder::test(QList<PrintDeviceInfo> &devs)
{
    m_devices.clear();
    if (devs.isEmpty()) {
        Q_EMIT noDevices(tr("There are no available configs"));
        return;
    }
    const int cancelCount = m_link->cancelCount();
    for (const PrintDeviceInfo &record : qAsConst(devs))
        watch(record.settings().portName(),
              QtConcurrent::run(findertasks::testDevice, m_link, cancelCount, record));
}

void PrintDeviceFinder::watch(const QString &portName, const QFuture<PrintDeviceInfo> &future)
{
    auto *const watcher = new QFutureWatcher<PrintDeviceInfo>(this);
    connect(watcher, &QFutureWatcherBase::finished, this, &PrintDeviceFinder::watcherFinished);
    m_watchers.insert(portName, watcher);
    watcher->setFuture(future);
}

void PrintDeviceFinder::watcherFinished()
{
    auto *const watcher = dynamic_cast<QFutureWatcher<PrintDeviceInfo> *>(sender());
    if (watcher == nullptr)
        return;
    const PrintDeviceInfo info = watcher->future().result();
    // It is in the middle of its signal, and must not go with the finder if a slot deletes that.
    watcher->setParent(nullptr);
    watcher->deleteLater();
    m_watchers.remove(info.settings().portName());
    if (info.isValid())
        accept(info);
    else if (m_watchers.isEmpty())
        finishWithoutDevice();
}

void PrintDeviceFinder::accept(const PrintDeviceInfo &info)
{
    const QPointer<PrintDeviceFinder> alive(this);
    m_devices.append(info);
    cancel();
    if (!alive.isNull())
        Q_EMIT deviceFinded(info);
}

void PrintDeviceFinder::finishWithoutDevice()
{
    const QPointer<PrintDeviceFinder> alive(this);
    if (m_devices.isEmpty())
        Q_EMIT noDevices(tr("There no devices finded"));
    if (alive.isNull())
        return;
    qCWarning(SEARCH_PRINTERS).noquote() << tr("There no devices found");
    Q_EMIT finished();
}
