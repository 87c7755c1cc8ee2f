#include "transport/portuse_p.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <cerrno>
#include <csignal>

#include "transport/deviceholder_p.h"

namespace printerslib::drivers {

using namespace deviceholder;

namespace {

constexpr mode_t groupMayUse = S_IRGRP | S_IWGRP;
constexpr off_t greatestLockFile = 4096;  // bytes; they hold a number and two names

bool isAlive(qint64 process)
{
    return process > 0 && (::kill(static_cast<pid_t>(process), 0) == 0 || errno == EPERM);
}

/// Whether QLockFile can read what stands at the name, if anything does: it waits for a FIFO, and
/// reads a device or a line without end until the memory is full.
bool isLockFileOrNothing(const QString &path)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) != 0 ||
           (S_ISREG(status.st_mode) && status.st_size <= greatestLockFile);
}

}  // namespace

class PortUse::Descriptor
{
public:
    explicit Descriptor(const QString &path)
        : value(::open(QFile::encodeName(path).constData(),
                       O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC))
    {}
    ~Descriptor()
    {
        if (value >= 0)
            ::close(value);
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    const int value;
};

PortUse::PortUse(const QString &name)
    : m_name(name),
      m_location(locationOf(name)),
      m_canonicalPath(QFileInfo(m_location).canonicalFilePath()),
      m_reason(look())
{}

QString PortUse::locationOf(const QString &name)
{
    const auto begins = [&name](const char *start) {
        return name.startsWith(QLatin1String(start));
    };
    return begins("/") || begins("./") || begins("../") ? name : QStringLiteral("/dev/") + name;
}

QString PortUse::look()
{
    if (m_canonicalPath.isEmpty())
        return QStringLiteral("there is no port %1").arg(m_location);
    QString reason = lookAtFile();
    // A program that opened the port by the other name has locked that.
    for (const QString &path : {m_canonicalPath, m_location}) {
        if (reason.isEmpty())
            reason = lookAtLock(path);
    }
    return reason.isEmpty() ? lookAtLine() : reason;
}

QString PortUse::lookAtFile()
{
    struct stat status = {};
    const QByteArray path = QFile::encodeName(m_canonicalPath);
    if (::stat(path.constData(), &status) != 0)
        return QStringLiteral("%1: %2").arg(m_location, qt_error_string(errno));
    m_isSerialPort = S_ISCHR(status.st_mode);
    if (!m_isSerialPort)
        return QStringLiteral("%1 is no serial port").arg(m_location);
    if (::access(path.constData(), R_OK | W_OK) == 0)
        return {};
    if (errno != EACCES)
        return QStringLiteral("%1: %2").arg(m_location, qt_error_string(errno));
    const QString who =
        (status.st_mode & groupMayUse) == groupMayUse
            ? QStringLiteral("members of the group \"%1\" may use it").arg(groupName(status.st_gid))
            : QStringLiteral("user \"%1\" may use it").arg(userName(status.st_uid));
    return QStringLiteral("%1 is not permitted: %2").arg(m_location, who);
}

// As QtSerialPort chooses it.
QString PortUse::lockFilePath(const QString &path)
{
    const char *const folders[] = {"/var/lock",         "/etc/locks", "/var/spool/locks",
                                   "/var/spool/uucp",   "/tmp",       "/var/tmp",
                                   "/var/lock/lockdev", "/run/lock"};
    const QString devices = QStringLiteral("/dev/");
    QString name = path.startsWith(devices) ? path.mid(devices.size()) : path;
    name.replace(QLatin1Char('/'), QLatin1Char('_'));
    for (const char *const folder : folders) {
        const QFileInfo info(QString::fromLatin1(folder));
        if (info.isReadable() && info.isWritable())
            return QStringLiteral("%1/LCK..%2").arg(info.filePath(), name);
    }
    return {};
}

/// Tries what QSerialPort will do, and takes the lock off again. QLockFile would also take away the
/// lock of a living process if it names no program, as those of other makers' programs, such as
/// minicom, or if it is older than half a minute.
QString PortUse::lookAtLock(const QString &path) const
{
    const QString lockPath = lockFilePath(path);
    if (lockPath.isEmpty())
        return QStringLiteral("%1: there is no folder for its lock file").arg(m_location);
    QLockFile lock(lockPath);
    qint64 process = 0;
    QString host;
    QString program;
    const bool canBeTried = isLockFileOrNothing(lockPath);
    const bool namesLivingProcess =
        canBeTried && lock.getLockInfo(&process, &host, &program) && isAlive(process);
    if (namesLivingProcess)
        lock.setStaleLockTime(0);
    if (canBeTried && !(namesLivingProcess && program.isEmpty()) && lock.tryLock(0))
        return {};
    struct stat status = {};
    if (::lstat(QFile::encodeName(lockPath).constData(), &status) != 0)
        return QStringLiteral("%1: its lock file %2 can't be made").arg(m_location, lockPath);
    if (namesLivingProcess)
        return QStringLiteral("%1 is held by %2, by its lock file %3 of user %4")
            .arg(m_location, describedProcess(process), lockPath, userName(status.st_uid));
    const QString whatToDo = QFileInfo(lockPath).isReadable()
                                 ? QStringLiteral("and no process is behind it; remove it")
                                 : QStringLiteral("who alone may see by which process");
    return QStringLiteral("%1 is locked by %2 of user %3, %4")
        .arg(m_location, lockPath, userName(status.st_uid), whatToDo);
}

QString PortUse::lookAtLine()
{
    m_descriptor = std::make_shared<Descriptor>(m_canonicalPath);
    termios line = {};
    if (m_descriptor->value >= 0) {
        if (::tcgetattr(m_descriptor->value, &line) == 0)
            return {};
        m_isSerialPort = false;
        return QStringLiteral("%1 is no serial port: %2").arg(m_location, qt_error_string(errno));
    }
    if (errno != EBUSY)
        return QStringLiteral("%1: %2").arg(m_location, qt_error_string(errno));
    const qint64 process = processHolding(m_canonicalPath);
    return QStringLiteral("%1 is held by %2")
        .arg(m_location,
             process == 0 ? QStringLiteral("another process") : describedProcess(process));
}

}  // namespace printerslib::drivers
