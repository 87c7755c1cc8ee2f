#pragma once

#include <sys/types.h>

#include <QString>

namespace printerslib::drivers::deviceholder {

/// Their names, or numbers where they have none.
QString userName(uid_t user);
QString groupName(gid_t group);

/// For example "process 4711 (tillservice) of user shop".
QString describedProcess(qint64 process);

/// The process other than this one that has the file open; 0 if none is to be seen: root alone sees
/// what other users' processes hold.
qint64 processHolding(const QString &path);

/// Whether a backend of CUPS is at work on the device. The name that it is started by is the
/// address that it prints to, which all users see.
/// @param proc folder of the processes
bool isHeldByCups(const QString &path, const QString &proc);

}  // namespace printerslib::drivers::deviceholder
