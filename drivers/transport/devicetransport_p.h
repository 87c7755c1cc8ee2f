#pragma once

#include <sys/stat.h>

#include <QSocketNotifier>
#include <memory>

#include "transport/queuedtransport_p.h"
#include "transport/usbprinters_p.h"

namespace printerslib::drivers {

struct SavedTerminal;

/// A character device or FIFO, by its path or found as a USB printer, on a descriptor that never
/// blocks.
class DeviceTransport : public QueuedTransport
{
    Q_OBJECT

public:
    DeviceTransport(const PrinterAddress &address, const TransportOptions &options,
                    const DeviceRoots &roots = {});
    ~DeviceTransport() override;

protected:
    void beginOpening() override;
    void shut() override;
    qint64 hand(const char *bytes, qint64 size, TransportError &fault) override;
    qint64 underWay() const override;
    QString whyStuck() const override;

    /// Opens the descriptor.
    virtual bool openPath(const QString &path, TransportError &fault);
    bool openWith(const QString &path, int flags, TransportError &fault);

private:
    QString findPath(TransportError &fault) const;
    void watch();
    void read();
    void pauseReading();

    DeviceRoots m_roots;
    QString m_path;
    int m_descriptor = -1;
    bool m_isReadable = false;
    std::unique_ptr<SavedTerminal> m_terminal;
    std::unique_ptr<QSocketNotifier> m_reading;
    std::unique_ptr<QSocketNotifier> m_writing;
    QTimer m_readingPause{this};
};

/// A file, to whose end all is added. Devices and FIFOs are opened as such.
class FileTransport : public DeviceTransport
{
    Q_OBJECT

public:
    FileTransport(const PrinterAddress &address, const TransportOptions &options);

protected:
    bool openPath(const QString &path, TransportError &fault) override;
};

}  // namespace printerslib::drivers
