#include "transport/deviceholder_p.h"

#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>

namespace printerslib::drivers {

namespace {

constexpr qint64 greatestCommandLine = 4096;  // bytes; an address is shorter

QStringList processes(const QString &proc)
{
    QStringList numbers;
    const QStringList entries = QDir(proc).entryList(QDir::Dirs);
    for (const QString &entry : entries) {
        if (entry.toLongLong() > 0)
            numbers.append(entry);
    }
    return numbers;
}

/// The name by which a process was started.
QString startedAs(const QString &proc, const QString &process)
{
    QFile file(proc + QLatin1Char('/') + process + QStringLiteral("/cmdline"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromLocal8Bit(file.read(greatestCommandLine).split('\0').constFirst());
}

}  // namespace

QString deviceholder::userName(uid_t user)
{
    const passwd *const entry = ::getpwuid(user);
    return entry == nullptr ? QString::number(user) : QString::fromLocal8Bit(entry->pw_name);
}

QString deviceholder::groupName(gid_t group)
{
    const ::group *const entry = ::getgrgid(group);
    return entry == nullptr ? QString::number(group) : QString::fromLocal8Bit(entry->gr_name);
}

QString deviceholder::describedProcess(qint64 process)
{
    const QString folder = QStringLiteral("/proc/%1").arg(process);
    QFile comm(folder + QStringLiteral("/comm"));
    QString text = QStringLiteral("process %1").arg(process);
    if (comm.open(QIODevice::ReadOnly))
        text += QStringLiteral(" (%1)").arg(QString::fromLocal8Bit(comm.readAll()).trimmed());
    struct stat status = {};
    if (::stat(QFile::encodeName(folder).constData(), &status) == 0)
        text += QStringLiteral(" of user ") + userName(status.st_uid);
    return text;
}

qint64 deviceholder::processHolding(const QString &path)
{
    const QString proc = QStringLiteral("/proc");
    const QStringList numbers = processes(proc);
    for (const QString &number : numbers) {
        if (number.toLongLong() == ::getpid())
            continue;
        const QDir descriptors(proc + QLatin1Char('/') + number + QStringLiteral("/fd"));
        const QStringList names = descriptors.entryList(QDir::Files | QDir::System);
        for (const QString &name : names) {
            if (QFile::symLinkTarget(descriptors.filePath(name)) == path)
                return number.toLongLong();
        }
    }
    return 0;
}

// Its backend of USB names maker and model, and no device file.
bool deviceholder::isHeldByCups(const QString &path, const QString &proc)
{
    const bool isUsb = path.contains(QLatin1String("/usb/lp"));
    const QStringList numbers = processes(proc);
    for (const QString &number : numbers) {
        const QString name = startedAs(proc, number);
        const QString address = name.section(QLatin1Char('?'), 0, 0);
        if ((isUsb && name.startsWith(QLatin1String("usb://"))) ||
            address == QLatin1String("serial:") + path ||
            address == QLatin1String("parallel:") + path)
            return true;
    }
    return false;
}

}  // namespace printerslib::drivers
