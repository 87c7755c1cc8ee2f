#include "hearth/dircreator.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QSet>
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

}  // namespace

bool DirCreator::checkAndCreate(const QString &path,
                                const QFlags<QFileDevice::Permission> &permissions)
{
    if (QFileInfo(path).isDir())
        return true;
    std::error_code error;
    std::filesystem::create_directories(QFile::encodeName(path).toStdString(), error);
    if (!error && QFileInfo(path).isDir()) {
        QFile::setPermissions(path, permissions);
        return true;
    }
    if (!error)
        error = std::make_error_code(std::errc::no_such_file_or_directory);
    if (isFirstFailure(path))
        qWarning().noquote() << QStringLiteral("Can't create the directory %1: %2")
                                    .arg(path, QString::fromLocal8Bit(error.message().c_str()));
    return false;
}

}  // namespace hearth
