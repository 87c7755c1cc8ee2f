#pragma once

#include <QByteArray>
#include <QObject>
#include <memory>

#include "printerslib/drivers/drivers_export.h"
#include "printerslib/drivers/printeraddress.h"
#include "printerslib/drivers/transporterror.h"
#include "printerslib/drivers/transportoptions.h"

namespace printerslib::drivers {

/// The line to a printer: bytes there, and bytes back.
///
/// No operation waits: all is told by signals, out of the event loop of the thread that the object
/// lives in, which alone may use it. A slot of any of the signals may do anything, also write,
/// close, open again, or delete the transport. Each open() ends in failed() or closed(), once.
///
/// A transport knows nothing of other programs: see DeviceLock.
class PRINTERSLIB_DRIVERS_EXPORT Transport : public QObject
{
    Q_OBJECT

public:
    /// How far a transport is.
    enum class State {
        Closed,   ///< nothing is held
        Opening,  ///< behind open()
        Open,     ///< bytes go
        Lost,     ///< what has gone is looked for
    };

    /// The transport for an address; never null. Of an address that is none, open() fails.
    static std::unique_ptr<Transport> make(const PrinterAddress &address,
                                           const TransportOptions &options = {});
    /// Closes without a signal.
    ~Transport() override;

    /// What it was made for.
    virtual PrinterAddress address() const = 0;
    virtual State state() const = 0;  ///< Closed at first
    /// Why it last failed, was lost, or couldn't be opened again; nothing behind opened().
    virtual TransportError error() const = 0;

    /// Begins to open; ends in opened() or failed(), which never come from within this call. Does
    /// nothing unless the transport is closed.
    virtual void open() = 0;
    /// Closes at once, and emits closed(). What the line hasn't taken is dropped; wait for
    /// written() first. Does nothing if the transport is closed.
    virtual void close() = 0;
    /// Adds bytes to those that go out, in their order. Behind open(), they wait for opened().
    /// @return false, with nothing added, if the transport is closed or lost
    virtual bool write(const QByteArray &bytes) = 0;
    /// Drops what the line hasn't taken, as far as the system can take it back: of a serial line
    /// all; of the others what this object still holds.
    virtual void discard() = 0;

    /// Bytes that were written and neither taken nor dropped.
    virtual qint64 bytesToWrite() const = 0;
    /// Bytes that the line has taken since it was last opened: a serial line has sent them, and a
    /// network's other end has confirmed them, as far as the system knows; a device or file has got
    /// them. Keeps its number when the transport fails, is lost or is closed.
    virtual qint64 bytesWritten() const = 0;

Q_SIGNALS:
    /// Bytes go, also behind lost(): then from a new beginning, as the printer had been off.
    void opened();
    /// What has been taken in all, as bytesWritten() says; it has grown.
    void written(qint64 total);
    /// What the printer sent. What it had taken until then, written() has told before.
    void received(const QByteArray &bytes);
    /// The printer has gone; it is looked for until opened() or close(). What it hadn't taken is
    /// dropped. Comes only with TransportOptions::reopens, and never for a first open().
    void lost(const printerslib::drivers::TransportError &error);
    /// It couldn't be opened, or is no longer open. What it hadn't taken is dropped.
    void failed(const printerslib::drivers::TransportError &error);
    /// Behind close().
    void closed();

protected:
    /// For the kinds of transport, which are this library's own.
    Transport();
};

}  // namespace printerslib::drivers
