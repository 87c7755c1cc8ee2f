#include "printerslib/drivers/devicelock.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QThread>
#include <QTimer>
#include <QUrl>
#include <algorithm>

#include "transport/lockfolder_p.h"
#include "transport/staterecord_p.h"
#include "transport/turns_p.h"

namespace printerslib::drivers {

namespace {

constexpr int lookEveryMilliseconds = 50;
constexpr int waitingStepMilliseconds = 10;
constexpr int longestName = 150;  // characters of a file name, with room for suffixes

/// A key as the name of a file.
QString fileNameOf(const QString &key)
{
    const QByteArray name = QUrl::toPercentEncoding(key);
    if (name.size() <= longestName)
        return QString::fromLatin1(name);
    return QString::fromLatin1(QCryptographicHash::hash(name, QCryptographicHash::Sha256).toHex());
}

}  // namespace

struct DeviceLock::Parts
{
    PrinterAddress address;
    LockRoots roots;
    QTimer timer;
    LockFolder folder;
    QString name;
    std::unique_ptr<Turns> turns;
    bool isHeld = false;
    int told = 0;  ///< how many in front were told last
    QString fault;
};

DeviceLock::DeviceLock(const PrinterAddress &address, QObject *parent)
    : DeviceLock(address, LockRoots(), parent)
{}

DeviceLock::DeviceLock(const PrinterAddress &address, const LockRoots &roots, QObject *parent)
    : QObject(parent), m_parts(std::make_unique<Parts>())
{
    m_parts->address = address;
    m_parts->roots = roots;
    m_parts->timer.setParent(this);
    m_parts->timer.setSingleShot(true);
    connect(&m_parts->timer, &QTimer::timeout, this, &DeviceLock::look);
}

DeviceLock::~DeviceLock()
{
    m_parts->turns.reset();
}

void DeviceLock::acquire()
{
    if (!m_parts->isHeld && !m_parts->timer.isActive())
        m_parts->timer.start(0);
}

bool DeviceLock::waitFor(int milliseconds)
{
    const QDeadlineTimer end(std::clamp(milliseconds, 0, longestWait), Qt::PreciseTimer);
    while (!tryToHold() && m_parts->fault.isEmpty() && !end.hasExpired())
        QThread::msleep(waitingStepMilliseconds);
    return m_parts->isHeld;
}

void DeviceLock::release()
{
    m_parts->timer.stop();
    m_parts->turns.reset();
    m_parts->isHeld = false;
    m_parts->told = 0;
}

bool DeviceLock::isHeld() const
{
    return m_parts->isHeld;
}

int DeviceLock::ahead() const
{
    return m_parts->turns && !m_parts->isHeld ? m_parts->turns->ahead() : 0;
}

QString DeviceLock::fault() const
{
    return m_parts->fault;
}

QString DeviceLock::folder() const
{
    return m_parts->folder.path;
}

bool DeviceLock::isShared() const
{
    return m_parts->folder.isShared;
}

/// Finds the files, unless they are found; false if there can be none.
bool DeviceLock::join()
{
    Parts &parts = *m_parts;
    if (parts.turns)
        return true;
    const QString key = parts.address.lockKey();
    parts.folder = lockFolder(parts.roots);
    parts.fault = key.isEmpty() ? QStringLiteral("no printer is named") : parts.folder.fault;
    if (!parts.fault.isEmpty())
        return false;
    parts.name = fileNameOf(key);
    parts.turns = std::make_unique<Turns>(parts.folder.path + QLatin1Char('/') + parts.name +
                                          QStringLiteral(".lock"));
    return true;
}

bool DeviceLock::tryToHold()
{
    Parts &parts = *m_parts;
    if (parts.isHeld)
        return true;
    if (!join())
        return false;
    const Turns::Outcome outcome = parts.turns->attempt();
    parts.isHeld = outcome == Turns::Outcome::Taken;
    if (outcome == Turns::Outcome::Failed) {
        parts.fault = parts.turns->fault();
        parts.turns.reset();
    }
    return parts.isHeld;
}

void DeviceLock::look()
{
    Parts &parts = *m_parts;
    if (tryToHold()) {
        Q_EMIT acquired();
        return;
    }
    if (!parts.fault.isEmpty()) {
        Q_EMIT failed(QString(parts.fault));
        return;
    }
    parts.timer.start(lookEveryMilliseconds);
    if (parts.told != ahead()) {
        parts.told = ahead();
        Q_EMIT waiting(int(parts.told));
    }
}

QByteArray DeviceLock::record() const
{
    const Parts &parts = *m_parts;
    return parts.isHeld ? StateRecord(parts.folder.path, parts.name).read() : QByteArray();
}

bool DeviceLock::setRecord(const QByteArray &record)
{
    const Parts &parts = *m_parts;
    return parts.isHeld && StateRecord(parts.folder.path, parts.name).write(record);
}

}  // namespace printerslib::drivers
