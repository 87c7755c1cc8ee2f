#pragma once

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <cerrno>

/// What a test program asks of the disk that outlasts a power cut, in its order. To be included by
/// one source of the program: its functions stand in front of the system's.
namespace disksteps {

inline QStringList steps;
inline int failing = -1;    ///< number of the step that fails; -1: none
inline int failure = EIO;   ///< with this
inline qint64 written = 0;  ///< bytes that the last file had as it was synced

inline void watch(int failingStep = -1, int withError = EIO)
{
    steps.clear();
    written = 0;
    failing = failingStep;
    failure = withError;
}

/// The last part of a path; of a file that isn't whole yet with "new" in place of its letters.
inline QString nameOf(const QString &path)
{
    static const QRegularExpression letters(QStringLiteral("\\.[A-Za-z]{6}\\z"));
    return QFileInfo(path).fileName().replace(letters, QStringLiteral(".new"));
}

/// Whether it is to be done.
inline bool note(const QString &step)
{
    steps.append(step);
    if (steps.size() - 1 != failing)
        return true;
    errno = failure;
    return false;
}

/// A file has no name yet on some file systems.
inline QString stepOfSync(int descriptor)
{
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))
        return QStringLiteral("sync ") +
               nameOf(QFile::symLinkTarget(QStringLiteral("/proc/self/fd/%1").arg(descriptor)));
    written = status.st_size;
    return QStringLiteral("sync file");
}

}  // namespace disksteps

extern "C" Q_DECL_EXPORT int fsync(int descriptor)
{
    const bool isToBeDone = disksteps::note(disksteps::stepOfSync(descriptor));
    return isToBeDone ? int(::syscall(SYS_fsync, descriptor)) : -1;
}

extern "C" Q_DECL_EXPORT int rename(const char *from, const char *to) noexcept
{
    const QString name = disksteps::nameOf(QFile::decodeName(to));
    return disksteps::note(QStringLiteral("name ") + name)
               ? ::renameat(AT_FDCWD, from, AT_FDCWD, to)
               : -1;
}

extern "C" Q_DECL_EXPORT int unlink(const char *path) noexcept
{
    const QString name = disksteps::nameOf(QFile::decodeName(path));
    return disksteps::note(QStringLiteral("remove ") + name) ? ::unlinkat(AT_FDCWD, path, 0) : -1;
}
