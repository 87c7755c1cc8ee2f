#include "hearth/dircreator.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <cerrno>
#include <filesystem>
#include <mutex>
#include <system_error>

namespace hearth {

namespace {

// Far more than a machine has folders of ours; a limit, so that nothing grows for ever.
constexpr int mostRememberedPaths = 1000;

bool isFirstFailure(const QString &path)
{
    static std::mutex mutex;
    static QSet<QString> failed;
    const std::lock_guard<std::mutex> lock(mutex);
    if (failed.contains(path) || failed.size() >= mostRememberedPaths)
        return false;
    failed.insert(path);
    return true;
}

struct PermissionBit
{
    QFileDevice::Permissions permissions;
    mode_t bit;
};

const PermissionBit permissionBits[] = {
    {QFileDevice::ReadOwner | QFileDevice::ReadUser, S_IRUSR},
    {QFileDevice::WriteOwner | QFileDevice::WriteUser, S_IWUSR},
    {QFileDevice::ExeOwner | QFileDevice::ExeUser, S_IXUSR},
    {QFileDevice::ReadGroup, S_IRGRP},
    {QFileDevice::WriteGroup, S_IWGRP},
    {QFileDevice::ExeGroup, S_IXGRP},
    {QFileDevice::ReadOther, S_IROTH},
    {QFileDevice::WriteOther, S_IWOTH},
    {QFileDevice::ExeOther, S_IXOTH},
};

mode_t modeOf(QFileDevice::Permissions permissions)
{
    constexpr mode_t allForAll = S_IRWXU | S_IRWXG | S_IRWXO;
    mode_t mode = 0;
    for (const PermissionBit &row : permissionBits) {
        if ((permissions & row.permissions) != 0)
            mode |= row.bit;
    }
    // Where all users write, each removes and renames its own files alone.
    return mode == allForAll ? mode | S_ISVTX : mode;
}

/// Gives a folder that was just made its mode, unless somebody has put something else there: a link
/// isn't followed, and another user's folder stays as it is.
void giveMode(const char *folder, mode_t mode)
{
    const int descriptor = ::open(folder, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (descriptor < 0)
        return;
    struct stat status = {};
    if (::fstat(descriptor, &status) == 0 && status.st_uid == ::geteuid())
        ::fchmod(descriptor, mode);
    ::close(descriptor);
}

/// Makes the folder and its parents. @return why that failed
std::error_code makeFolder(const QByteArray &path, mode_t mode)
{
    std::filesystem::path folder = path.toStdString();
    while (folder.has_parent_path() && folder != folder.parent_path() &&
           (!folder.has_filename() || folder.filename() == "."))
        folder = folder.parent_path();
    std::error_code error;
    if (folder.has_parent_path())
        std::filesystem::create_directories(folder.parent_path(), error);
    if (error)
        return error;
    if (::mkdir(folder.c_str(), S_IRWXU) != 0)
        return std::error_code(errno, std::generic_category());
    giveMode(folder.c_str(), mode);
    return std::error_code();
}

}  // namespace

bool DirCreator::checkAndCreate(const QString &path,
                                const QFlags<QFileDevice::Permission> &permissions)
{
    if (QFileInfo(path).isDir())
        return true;
    std::error_code error = makeFolder(QFile::encodeName(path), modeOf(permissions));
    if (QFileInfo(path).isDir())
        return true;
    if (!error)
        error = std::make_error_code(std::errc::not_a_directory);
    if (isFirstFailure(path))
        qWarning().noquote() << QStringLiteral("Can't create the directory %1: %2")
                                    .arg(path, QString::fromLocal8Bit(error.message().c_str()));
    return false;
}

}  // namespace hearth
