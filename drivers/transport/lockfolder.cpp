#include "transport/lockfolder_p.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QStringList>
#include <cerrno>

namespace printerslib::drivers {

namespace {

constexpr mode_t modeOfShared = S_ISVTX | S_IRWXU | S_IRWXG | S_IRWXO;
constexpr mode_t modeOfOwn = S_IRWXU;
constexpr mode_t othersWrite = S_IWGRP | S_IWOTH;

/// Empty if the folder can be used.
QString faultOf(const QString &path, mode_t mode)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat status = {};
    // What the process's mask took away is given back to the folder that it made.
    const bool isMade = ::mkdir(name.constData(), mode) == 0;
    if (isMade && ::chmod(name.constData(), mode) != 0)
        return QStringLiteral("%1: %2").arg(path, qt_error_string(errno));
    if (::lstat(name.constData(), &status) != 0)
        return QStringLiteral("%1: %2").arg(path, qt_error_string(errno));
    if (!S_ISDIR(status.st_mode))
        return QStringLiteral("%1 is no folder").arg(path);
    if (mode == modeOfOwn && (status.st_uid != ::geteuid() || (status.st_mode & othersWrite) != 0))
        return QStringLiteral("%1 is another user's, or open to others").arg(path);
    if (::access(name.constData(), R_OK | W_OK | X_OK) != 0)
        return QStringLiteral("%1: %2").arg(path, qt_error_string(errno));
    return {};
}

}  // namespace

LockFolder lockFolder(const LockRoots &roots)
{
    struct Candidate
    {
        QString path;
        mode_t mode;
        bool exists;
    };
    const QString name = QStringLiteral("/printerslib");
    const Candidate candidates[] = {
        {roots.shared + name, modeOfShared, !roots.shared.isEmpty()},
        {roots.runtime + name, modeOfOwn, !roots.runtime.isEmpty()},
        {roots.temporary + name + QStringLiteral("-%1").arg(::geteuid()), modeOfOwn, true}};
    QStringList faults;
    for (const Candidate &candidate : candidates) {
        if (!candidate.exists)
            continue;
        const QString fault = faultOf(candidate.path, candidate.mode);
        if (fault.isEmpty())
            return {candidate.path, candidate.mode == modeOfShared, {}};
        faults.append(fault);
    }
    return {
        {},
        false,
        QStringLiteral("there is no folder for locks: %1").arg(faults.join(QStringLiteral("; ")))};
}

}  // namespace printerslib::drivers
