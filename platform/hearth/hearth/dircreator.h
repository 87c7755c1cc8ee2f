#pragma once

#include <QFileDevice>
#include <QFlags>
#include <QString>
#include <QtGlobal>

namespace hearth {

/// Stand-in for the system's creation of directories.
class Q_DECL_EXPORT DirCreator
{
public:
    DirCreator() = delete;

    /// Everything for all users.
    static constexpr QFlags<QFileDevice::Permission> DEFAULT_ALL{
        QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner |
        QFileDevice::ReadUser | QFileDevice::WriteUser | QFileDevice::ExeUser |
        QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ExeGroup |
        QFileDevice::ReadOther | QFileDevice::WriteOther | QFileDevice::ExeOther};

    /// Creates a directory, and its parents, if it is missing, and gives the new directory these
    /// permissions, with the sticky bit where they are all; one that exists stays as it is, and so
    /// does what another user puts in place of the new one. A failure is logged at warning level
    /// with the path and the reason, once for each path, since callers ask again and again; after
    /// 1000 different paths nothing more is logged. Any thread may call it.
    /// @return whether the directory exists
    static bool checkAndCreate(const QString &path,
                               const QFlags<QFileDevice::Permission> &permissions);
};

}  // namespace hearth
