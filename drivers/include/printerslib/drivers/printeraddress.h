#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>
#include <optional>

#include "printerslib/drivers/drivers_export.h"

namespace hearth {
class Rs232PortSettings;
}

namespace printerslib::drivers {

/// Where a printer is, and how its line is set: what people write down, and what programs keep.
///
/// | Text | Meaning |
/// |---|---|
/// | `serial:/dev/ttyS0?baud=19200&parity=none&data=8&stop=1&flow=none` | a serial line |
/// | `device:/dev/usb/lp0` | a character device |
/// | `usb:04b8:0e15` or `usb:04b8:0e15:SERIAL` | a USB printer, wherever it is plugged in |
/// | `tcp:HOST` or `tcp:HOST:9100` | a printer in the network; IPv6 in brackets |
/// | `file:PATH` | a file, to which is added |
///
/// A value; any thread may use its own copy.
class PRINTERSLIB_DRIVERS_EXPORT PrinterAddress
{
public:
    /// What the printer is connected by.
    enum class Kind {
        None,    ///< no address
        Serial,  ///< a serial line
        Device,  ///< a character device of another kind
        Usb,     ///< a USB printer, found by its numbers
        Tcp,     ///< a host and a port
        File,    ///< a file
    };
    /// Parity of a serial line.
    enum class Parity {
        None,   ///< no bit
        Even,   ///< an even number of ones
        Odd,    ///< an odd number of ones
        Space,  ///< always 0
        Mark,   ///< always 1
    };
    /// Stop bits of a serial line.
    enum class StopBits {
        One,         ///< written 1
        OneAndHalf,  ///< written 1.5
        Two,         ///< written 2
    };
    /// How the printer holds a serial line up.
    enum class Flow {
        None,      ///< not at all
        Hardware,  ///< RTS and CTS
        Software,  ///< XON and XOFF
        Dtr,       ///< its DTR, which is our DSR
    };
    /// How a serial line is set.
    struct Line
    {
        int baudRate = 9600;                ///< bits a second, 50 to 4,000,000
        int dataBits = 8;                   ///< 5 to 8
        Parity parity = Parity::None;       ///< behind the data bits
        StopBits stopBits = StopBits::One;  ///< behind the parity
        Flow flow = Flow::None;             ///< what stops the line
    };

    static constexpr quint16 defaultPort = 9100;  ///< of a tcp address that names none

    /// No address.
    PrinterAddress() = default;

    /// Reads an address. Percent signs with two hexadecimal digits stand for bytes of UTF-8 in
    /// paths and serial numbers. A path of a serial line or device without a slash in front is one
    /// in /dev.
    /// @param error takes what is wrong and what is expected, if the result is nothing
    static std::optional<PrinterAddress> parse(const QString &text, QString *error = nullptr);
    /// The serial line that a record of the system describes; nothing if it has values that no
    /// line has.
    /// @param error takes what is wrong, if the result is nothing
    static std::optional<PrinterAddress> fromPortSettings(const hearth::Rs232PortSettings &settings,
                                                          QString *error = nullptr);
    /// The printer in what `receipt find --json` wrote, of which there has to be one.
    /// @param error takes what is wrong, if the result is nothing
    static std::optional<PrinterAddress> fromFound(const QByteArray &json,
                                                   QString *error = nullptr);

    /// The text that parse() reads back as this address, with all settings; empty if there is none.
    QString toString() const;

    Kind kind() const { return m_kind; }                  ///< None for no address
    bool isNull() const { return m_kind == Kind::None; }  ///< whether this is no address
    /// Of a serial line, a device or a file; else empty.
    const QString &path() const { return m_text; }
    /// Of a tcp address, without brackets; else empty.
    QString host() const { return m_kind == Kind::Tcp ? m_text : QString(); }
    quint16 port() const { return m_port; }        ///< of a tcp address; else 0
    quint16 vendor() const { return m_vendor; }    ///< of a usb address; else 0
    quint16 product() const { return m_product; }  ///< of a usb address; else 0
    /// Of a usb address; empty if any will do, and for all other kinds.
    const QString &serialNumber() const { return m_serialNumber; }
    const Line &line() const { return m_line; }  ///< counts for a serial line

    /// What two addresses of one printer have in common: the device, or host and port. A device is
    /// known by its number (st_rdev), whatever its name; one that isn't there, by its path. Names
    /// of hosts aren't looked up, so a printer is always given the same one.
    QString lockKey() const;

    /// Whether all that the address says is the same.
    bool operator==(const PrinterAddress &other) const { return toString() == other.toString(); }
    /// Whether something is different.
    bool operator!=(const PrinterAddress &other) const { return !(*this == other); }

private:
    friend class AddressReader;

    Kind m_kind = Kind::None;
    QString m_text;  ///< path or host
    quint16 m_port = 0;
    quint16 m_vendor = 0;
    quint16 m_product = 0;
    QString m_serialNumber;
    Line m_line;
};

}  // namespace printerslib::drivers
