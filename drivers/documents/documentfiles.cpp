#include "printerslib/drivers/documentfiles.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <array>
#include <cerrno>
#include <optional>

namespace printerslib::drivers {

namespace {

constexpr const char *suffixes[] = {"", ".sha1", ".bak", ".bak.sha1"};
constexpr std::size_t userRecordBytes = 16384;
constexpr int octal = 8;
constexpr qint64 mebibyte = 1024LL * 1024;
constexpr mode_t permissionBits = 07777;

struct FileKind
{
    mode_t kind;
    const char *text;
};

constexpr FileKind otherKinds[] = {
    {S_IFLNK, "is a symbolic link"}, {S_IFDIR, "is a folder"}, {S_IFIFO, "is a FIFO"},
    {S_IFSOCK, "is a socket"},       {S_IFCHR, "is a device"}, {S_IFBLK, "is a device"},
};

using Look = int (*)(const char *name, struct stat *status);

QString nameOfUser(uid_t user)
{
    std::array<char, userRecordBytes> text{};
    passwd record{};
    passwd *found = nullptr;
    if (getpwuid_r(user, &record, text.data(), text.size(), &found) == 0 && found != nullptr)
        return QString::fromLocal8Bit(found->pw_name);
    return QStringLiteral("the user %1").arg(user);
}

QString faultText(const QString &name, const QString &what)
{
    return QStringLiteral("%1: %2").arg(name, what);
}

/// The file's status, or nothing: then `error` is the system's reason.
std::optional<struct stat> statusOf(const QString &name, Look look, int &error)
{
    struct stat status = {};
    error = look(QFile::encodeName(name).constData(), &status) == 0 ? 0 : errno;
    return error == 0 ? std::optional<struct stat>(status) : std::nullopt;
}

QString ownerFault(const QString &name, const struct stat &status)
{
    if (status.st_uid == geteuid())
        return QString();
    return faultText(name, QStringLiteral("belongs to %1, and this process runs as %2")
                               .arg(nameOfUser(status.st_uid), nameOfUser(geteuid())));
}

QString kindFault(const QString &name, const struct stat &status)
{
    for (const FileKind &other : otherKinds) {
        if ((status.st_mode & S_IFMT) == other.kind)
            return faultText(name, QStringLiteral("%1 and no file").arg(QLatin1String(other.text)));
    }
    return QString();
}

QString pathFault(const QString &path, DocumentFiles::Use use)
{
    if (path.isEmpty() || path.endsWith(QLatin1Char('/')) || path.contains(QChar(QChar::Null)))
        return faultText(path, QStringLiteral("a document needs a path that names a file"));
    if (use == DocumentFiles::ToLoad)
        return QString();
    // sha1sum runs in the folder of the file, and writes other lines for some names.
    bool isGood = path.startsWith(QLatin1Char('/'));
    for (const char refused : {'\\', '\n', '\r'})
        isGood = isGood && !path.contains(QLatin1Char(refused));
    return isGood ? QString()
                  : faultText(path, QStringLiteral("a document's path is absolute and has no "
                                                   "backslash and no line end"));
}

}  // namespace

QStringList DocumentFiles::namesOf(const QString &path)
{
    QStringList names;
    for (const char *suffix : suffixes)
        names.append(path + QLatin1String(suffix));
    return names;
}

QString DocumentFiles::faultOfFolder(const QString &path)
{
    const QString folder = QFileInfo(path).path();
    int error = 0;
    const auto status = statusOf(folder, ::stat, error);
    if (!status)
        return faultText(folder, qt_error_string(error));
    if (!S_ISDIR(status->st_mode))
        return faultText(folder, QStringLiteral("is no folder"));
    QString fault = ownerFault(folder, *status);
    if (!fault.isEmpty() || (status->st_mode & (S_IWGRP | S_IWOTH)) == 0)
        return fault;
    return faultText(folder,
                     QStringLiteral("others may write to this folder (mode %1)")
                         .arg(status->st_mode & permissionBits, 4, octal, QLatin1Char('0')));
}

QString DocumentFiles::faultOfFile(const QString &fileName, Use use)
{
    int error = 0;
    const auto status = statusOf(fileName, ::lstat, error);
    if (!status)
        return error == ENOENT ? QString() : faultText(fileName, qt_error_string(error));
    for (const auto &fault : {kindFault, ownerFault}) {
        QString text = fault(fileName, *status);
        if (!text.isEmpty())
            return text;
    }
    if (status->st_nlink > 1)
        return faultText(fileName,
                         QStringLiteral("has %1 names (hard links)").arg(status->st_nlink));
    if (use == ToLoad && status->st_size > greatestSize)
        return faultText(
            fileName,
            QStringLiteral("is larger than the %1 MiB of a document").arg(greatestSize / mebibyte));
    return QString();
}

QString DocumentFiles::faultOf(const QString &path, Use use)
{
    QString fault = pathFault(path, use);
    if (fault.isEmpty())
        fault = faultOfFolder(path);
    const QStringList names = namesOf(path);
    for (auto name = names.cbegin(); name != names.cend() && fault.isEmpty(); ++name)
        fault = faultOfFile(*name, use);
    return fault;
}

QString DocumentFiles::save(const TextPrinterDocument &document, const QString &path)
{
    QString fault = faultOf(path, ToSave);
    if (!fault.isEmpty())
        return fault;
    if (!document.saveToFile(path))
        return faultText(path, QStringLiteral("can't be written"));
    TextPrinterDocument loaded;
    fault = load(loaded, path);
    if (!fault.isEmpty())
        return fault;
    TextPrinterDocument expected;
    expected.setMap(document.toMap());
    return loaded == expected
               ? QString()
               : faultText(path, QStringLiteral("what was saved isn't what a load gives"));
}

QString DocumentFiles::load(TextPrinterDocument &document, const QString &path)
{
    QString fault = faultOf(path, ToLoad);
    if (!fault.isEmpty())
        return fault;
    return document.loadFromFile(path) ? QString()
                                       : faultText(path, QStringLiteral("no copy can be loaded"));
}

}  // namespace printerslib::drivers
