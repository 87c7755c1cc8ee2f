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

/// What stands at a part of a path in a folder that has no links on its way.
QString nameOfPart(const QString &folder, const QString &part)
{
    if (part.isEmpty() || part == QLatin1String("."))
        return folder;
    return part == QLatin1String("..") ? QFileInfo(folder).path() : QDir(folder).filePath(part);
}

/// The file that a name stands for, behind links at the name and at the folders on its way; nothing
/// with a fault if that can't be written.
std::optional<QString> targetOf(const QString &fileName, QString &fault)
{
    const QString slash = QStringLiteral("/");
    // The parts as they stand: what ".." behind a link means is the link's affair.
    QStringList left =
        (fileName.startsWith(slash) ? fileName : QDir::currentPath() + slash + fileName)
            .split(slash);
    QString folder = slash;
    for (int links = 0; links < mostLinks && fault.isEmpty();) {
        const QString name = nameOfPart(folder, left.takeFirst());
        struct stat status = {};
        if (::lstat(QFile::encodeName(name).constData(), &status) != 0) {
            if (errno == ENOENT && left.isEmpty())
                return name;
            fault = qt_error_string(errno);
        } else if (S_ISLNK(status.st_mode) && isFollowed(status)) {
            left = QFileInfo(name).symLinkTarget().split(slash) + left;
            folder = slash;
            ++links;
        } else if (S_ISLNK(status.st_mode)) {
            fault = QStringLiteral("a symbolic link of the user %1 isn't followed")
                        .arg(ownerOf(status)) +
                    (left.isEmpty() ? QString() : QStringLiteral(": ") + name);
        } else if (left.isEmpty()) {
            fault = faultOfTarget(status);
            if (fault.isEmpty())
                return name;
        } else {
            folder = name;
        }
    }
    if (fault.isEmpty())
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

QString isThereText(const QString &fileName)
{
    return QStringLiteral("%1: is there already; --force replaces it").arg(fileName);
}

bool keepsSources(const QStringList &outputs, const QStringList &sources)
{
    for (const QString &output : outputs) {
        for (const QString &source : sources) {
            // Standard input is no file, and two that don't exist are the same for Qt.
            const bool isFile = source != QLatin1String("-") && QFileInfo::exists(output);
            if (!isFile || QFileInfo(output) != QFileInfo(source))
                continue;
            complain(QStringLiteral("%1: what is written is made of this file; choose another name")
                         .arg(output));
            return false;
        }
    }
    return true;
}

}  // namespace tool
