#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <memory>

#include "printerslib/drivers/drivers_export.h"
#include "printerslib/drivers/printeraddress.h"

namespace printerslib::drivers {

struct LockRoots;

/// One job at a time on a printer, over all processes that use this class: they come on in the
/// order in which they asked. The lock goes with its process, however that ends.
///
/// The files lie in /run/lock/printerslib, where all users of the machine meet; the package makes
/// that folder, else the first user does. Where that can't be, they lie in
/// $XDG_RUNTIME_DIR/printerslib or in /tmp/printerslib-UID, and hold for one user's processes
/// alone: isShared() tells.
///
/// Beside the lock is a record that stays when the holder ends, or is ended: what the next one has
/// to repair. It is gone when the machine starts anew.
///
/// The thread that an object lives in alone may use it. A slot of any signal may do anything, also
/// delete the object.
class PRINTERSLIB_DRIVERS_EXPORT DeviceLock : public QObject
{
    Q_OBJECT

public:
    static constexpr int longestWait = 500;  ///< milliseconds of waitFor(); more counts as this

    /// Asks for nothing yet.
    explicit DeviceLock(const PrinterAddress &address, QObject *parent = nullptr);
    /// Gives the lock, or the place in the queue, back.
    ~DeviceLock() override;

    /// Joins the queue of the printer; ends in acquired() or failed(), never from within this call.
    /// Does nothing if the lock is held or asked for.
    void acquire();
    /// Joins the queue of the printer, and waits; for threads without an event loop. The place in
    /// the queue stays until release(), so that the next call goes on where this one ended.
    /// @return whether the lock is held; if not, fault() tells whether it never will be
    bool waitFor(int milliseconds);
    /// Gives the lock, or the place in the queue, back. Emits nothing.
    void release();

    bool isHeld() const;     ///< whether this object holds the lock
    int ahead() const;       ///< how many are in front, the holder among them, as last seen; else 0
    QString fault() const;   ///< what made the last attempt fail, in English; empty if nothing did
    QString folder() const;  ///< where the files lie; empty before the first attempt
    bool isShared() const;   ///< whether the lock holds for all users of the machine

    /// The record of this printer; empty if there is none, if it was damaged, or without the lock.
    QByteArray record() const;
    /// Keeps a record for whoever holds the lock next: nothing, or up to 64 KiB. It is on the disk,
    /// as far as the folder is on one, when this returns.
    /// @return false, with the old record in place, without the lock, or if it can't be written
    bool setRecord(const QByteArray &record);

Q_SIGNALS:
    /// How many are in front, whenever that changes while the lock is waited for.
    void waiting(int ahead);
    /// The lock is held from now on.
    void acquired();
    /// It can't be had at all.
    void failed(const QString &fault);

protected:
    /// With the system's folders elsewhere, for tests.
    DeviceLock(const PrinterAddress &address, const LockRoots &roots, QObject *parent);

private:
    struct Parts;

    bool join();
    bool tryToHold();
    void look();

    std::unique_ptr<Parts> m_parts;
};

}  // namespace printerslib::drivers
