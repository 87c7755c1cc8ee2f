#pragma once

#include <QString>

namespace printerslib::drivers {

/// The folders in which locks may lie, in the order in which they are tried.
struct LockRoots
{
    QString shared = QStringLiteral("/run/lock");
    QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    QString temporary = QStringLiteral("/tmp");
};

/// Where locks lie. Its fault is empty if there is such a folder.
struct LockFolder
{
    QString path;
    bool isShared = false;
    QString fault;
};

/// Finds the folder, or makes it.
LockFolder lockFolder(const LockRoots &roots);

}  // namespace printerslib::drivers
