#pragma once

#include <QFileDevice>
#include <QStringList>

namespace hearth {

class Q_DECL_EXPORT DirCreator
{
public:
    static const QFileDevice::Permissions DEFAULT_ALL;
    /// Creates nothing, but remembers the path.
    static bool checkAndCreate(const QString &path, QFileDevice::Permissions permissions);
    static QStringList asked();
};

}  // namespace hearth
