#pragma once

#include <QString>
#include <memory>

namespace printerslib::drivers {

/// Whether a serial port can be used, and why not. QSerialPort tells a port that is in
/// use from one that isn't permitted by no more than a line in the log.
class PortUse
{
public:
    /// @param name as QSerialPort takes it: a path, or a name in /dev
    explicit PortUse(const QString &name);

    QString name() const { return m_name; }
    /// Without symbolic links, so that two names of one port are told to be one.
    QString canonicalPath() const { return m_canonicalPath; }
    bool isUsable() const { return m_reason.isEmpty(); }
    /// Whether it is one, if it is there at all.
    bool isSerialPort() const { return m_isSerialPort; }
    /// Why not, for example "/dev/ttyS0 is held by process 4711 (tillservice)".
    QString reason() const { return m_reason; }

    /// Where a port lies, as QSerialPort reads its name: "ttyS0" is in /dev.
    static QString locationOf(const QString &name);
    /// The lock file that QSerialPort makes for a path; empty if there is no folder for it.
    static QString lockFilePath(const QString &path);

private:
    class Descriptor;

    QString look();
    QString lookAtFile();
    QString lookAtLock(const QString &path) const;
    QString lookAtLine();

    QString m_name;
    QString m_location;
    QString m_canonicalPath;
    /// Open as long as this object and its copies live: a port whose last user goes drops its DTR
    /// line, on which some printers start anew.
    std::shared_ptr<Descriptor> m_descriptor;
    bool m_isSerialPort = true;
    QString m_reason;  ///< The last one, as looking for it opens the port.
};

}  // namespace printerslib::drivers
