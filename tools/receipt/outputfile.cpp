#include "outputfile.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QUuid>
#include <cerrno>
#include <cstdio>
#include <optional>

#include "support.h"

namespace tool {

namespace {

constexpr int mostLinks = 40;

QString ownerOf(const struct stat &status)
{
    const passwd *record = ::getpwuid(status.st_uid);
    return record == nullptr ? QString::number(status.st_uid)
                             : QString::fromLocal8Bit(record->pw_name);
}

/// Root may do without links whatever it does by them.
bool isFollowed(const struct stat &link)
{
    return link.st_uid == ::geteuid() || link.st_uid == 0;
}

QString faultOfTarget(const struct stat &status)
{
    if (S_ISDIR(status.st_mode))
        return QStringLiteral("Filename refers to a directory");
    return S_ISREG(status.st_mode) ? QString()
                                   : QStringLiteral("is there already and is no regular file");
}

/// The file that a name stands for, behind links; nothing with a fault if that can't be written.
std::optional<QString> targetOf(const QString &fileName, QString &fault)
{
    QString name = fileName;
    for (int links = 0; links < mostLinks; ++links) {
        struct stat status = {};
        if (::lstat(QFile::encodeName(name).constData(), &status) != 0) {
            if (errno == ENOENT)
                return name;
            fault = qt_error_string(errno);
            return std::nullopt;
        }
        if (!S_ISLNK(status.st_mode)) {
            fault = faultOfTarget(status);
            return fault.isEmpty() ? std::optional<QString>(name) : std::nullopt;
        }
        if (!isFollowed(status)) {
            fault = QStringLiteral("a symbolic link of the user %1 isn't followed")
                        .arg(ownerOf(status));
            return std::nullopt;
        }
        name = QFileInfo(name).symLinkTarget();
    }
    fault = qt_error_string(ELOOP);
    return std::nullopt;
}

/// Puts a written file in the place of the target. @return what went wrong
QString putInPlace(const QString &written, const QString &target)
{
    struct stat status = {};
    const QByteArray from = QFile::encodeName(written);
    const QByteArray to = QFile::encodeName(target);
    if (::lstat(to.constData(), &status) == 0 && S_ISREG(status.st_mode))
        ::chmod(from.constData(), status.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO));
    if (std::rename(from.constData(), to.constData()) == 0)
        return QString();
    QString reason = qt_error_string(errno);
    QFile::remove(written);
    return reason;
}

}  // namespace

bool writeFile(const QString &fileName, const std::function<bool(QIODevice &, QString *)> &write)
{
    QString fault;
    const auto target = targetOf(fileName, fault);
    if (target && QFileInfo::exists(*target) && !QFileInfo(*target).isWritable())
        fault = qt_error_string(EACCES);
    if (target && fault.isEmpty()) {
        // Under a name that nobody knows beforehand, as QSaveFile follows links.
        const QString part =
            QDir(QFileInfo(*target).path())
                .filePath(QStringLiteral(".receipt-") + QUuid::createUuid().toString(QUuid::Id128));
        QSaveFile file(part);
        if (!file.open(QIODevice::WriteOnly) || !write(file, &fault) || !file.commit())
            fault = fault.isEmpty() ? file.errorString() : fault;
        else
            fault = putInPlace(part, *target);
    }
    if (!fault.isEmpty())
        complain(QStringLiteral("%1: %2").arg(fileName, fault));
    return fault.isEmpty();
}

bool writeFile(const QString &fileName, const QByteArray &content)
{
    return writeFile(fileName, [&content](QIODevice &device, QString *) {
        return device.write(content) == content.size();
    });
}

}  // namespace tool
