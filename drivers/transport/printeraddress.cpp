#include "printerslib/drivers/printeraddress.h"

#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QStringList>
#include <QUrl>
#include <QUrlQuery>

#include "hearth/rs232portsettings.h"
#include "transport/devicefault_p.h"
#include "transport/portuse_p.h"

namespace printerslib::drivers {

namespace {

using Kind = PrinterAddress::Kind;
using Line = PrinterAddress::Line;
using Parity = PrinterAddress::Parity;
using StopBits = PrinterAddress::StopBits;
using Flow = PrinterAddress::Flow;

constexpr int hexadecimal = 16;
constexpr int digitsOfUsbNumber = 4;
constexpr int slowestLine = 50;
constexpr int fastestLine = 4000000;

/// A word of an address, and the value that stands for it in the system's own records.
template <typename Value>
struct Word
{
    const char *text;
    Value value;
    int portSetting;
};

constexpr Word<Kind> kinds[] = {{"serial", Kind::Serial, 0},
                                {"device", Kind::Device, 0},
                                {"usb", Kind::Usb, 0},
                                {"tcp", Kind::Tcp, 0},
                                {"file", Kind::File, 0}};
constexpr Word<Parity> parities[] = {{"none", Parity::None, QSerialPort::NoParity},
                                     {"even", Parity::Even, QSerialPort::EvenParity},
                                     {"odd", Parity::Odd, QSerialPort::OddParity},
                                     {"space", Parity::Space, QSerialPort::SpaceParity},
                                     {"mark", Parity::Mark, QSerialPort::MarkParity}};
constexpr Word<int> dataBits[] = {{"5", 5, QSerialPort::Data5},
                                  {"6", 6, QSerialPort::Data6},
                                  {"7", 7, QSerialPort::Data7},
                                  {"8", 8, QSerialPort::Data8}};
constexpr Word<StopBits> stopBits[] = {{"1", StopBits::One, QSerialPort::OneStop},
                                       {"1.5", StopBits::OneAndHalf, QSerialPort::OneAndHalfStop},
                                       {"2", StopBits::Two, QSerialPort::TwoStop}};
constexpr Word<Flow> flows[] = {{"none", Flow::None, QSerialPort::NoFlowControl},
                                {"hardware", Flow::Hardware, QSerialPort::HardwareControl},
                                {"software", Flow::Software, QSerialPort::SoftwareControl},
                                {"dtr", Flow::Dtr, -2}};

template <typename Value, std::size_t Count>
QString textOf(const Word<Value> (&words)[Count], Value value)
{
    for (const Word<Value> &word : words) {
        if (word.value == value)
            return QLatin1String(word.text);
    }
    return {};
}

/// "none, even, odd, space or mark"
template <typename Value, std::size_t Count>
QString listOf(const Word<Value> (&words)[Count])
{
    QStringList texts;
    for (const Word<Value> &word : words)
        texts.append(QLatin1String(word.text));
    const QString last = texts.takeLast();
    return texts.join(QStringLiteral(", ")) + QStringLiteral(" or ") + last;
}

template <typename Value, std::size_t Count>
bool readWord(const Word<Value> (&words)[Count], const QString &text, Value &value)
{
    for (const Word<Value> &word : words) {
        if (text == QLatin1String(word.text)) {
            value = word.value;
            return true;
        }
    }
    return false;
}

template <typename Value, std::size_t Count>
bool readPortSetting(const Word<Value> (&words)[Count], int portSetting, Value &value)
{
    for (const Word<Value> &word : words) {
        if (word.portSetting == portSetting) {
            value = word.value;
            return true;
        }
    }
    return false;
}

bool readBaudRate(const QString &text, Line &line)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (!isNumber || number < slowestLine || number > fastestLine)
        return false;
    line.baudRate = number;
    return true;
}

/// A setting of a serial line, as it is read, written and asked for.
struct Setting
{
    const char *key;
    bool (*read)(const QString &text, Line &line);
    QString (*write)(const Line &line);
    QString (*expected)();
};

const Setting lineSettings[] = {
    {"baud", readBaudRate, [](const Line &line) { return QString::number(line.baudRate); },
     [] { return QStringLiteral("a number from %1 to %2").arg(slowestLine).arg(fastestLine); }},
    {"parity",
     [](const QString &text, Line &line) { return readWord(parities, text, line.parity); },
     [](const Line &line) { return textOf(parities, line.parity); },
     [] { return listOf(parities); }},
    {"data",
     [](const QString &text, Line &line) { return readWord(dataBits, text, line.dataBits); },
     [](const Line &line) { return QString::number(line.dataBits); },
     [] { return listOf(dataBits); }},
    {"stop",
     [](const QString &text, Line &line) { return readWord(stopBits, text, line.stopBits); },
     [](const Line &line) { return textOf(stopBits, line.stopBits); },
     [] { return listOf(stopBits); }},
    {"flow", [](const QString &text, Line &line) { return readWord(flows, text, line.flow); },
     [](const Line &line) { return textOf(flows, line.flow); }, [] { return listOf(flows); }},
};

const Setting *settingOf(const QString &key)
{
    for (const Setting &setting : lineSettings) {
        if (key == QLatin1String(setting.key))
            return &setting;
    }
    return nullptr;
}

/// A path or serial number as it stands in an address; slashes stay.
QString escaped(const QString &text)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(text, "/:@+,="));
}

QString hexadecimalOf(quint16 number)
{
    return QStringLiteral("%1").arg(number, digitsOfUsbNumber, hexadecimal, QLatin1Char('0'));
}

/// In brackets if it holds colons; the percent sign in front of a scope is escaped there.
QString hostText(QString host)
{
    if (!host.contains(QLatin1Char(':')))
        return host;
    return QLatin1Char('[') + host.replace(QLatin1Char('%'), QLatin1String("%25")) +
           QLatin1Char(']');
}

/// Without symbolic links, as far as it exists: a file that is yet to be made lies in a folder.
QString canonicalPath(const QString &path)
{
    const QFileInfo info(path);
    if (info.exists())
        return info.canonicalFilePath();
    const QString folder = QFileInfo(info.absolutePath()).canonicalFilePath();
    if (folder.isEmpty())
        return QDir::cleanPath(info.absoluteFilePath());
    return QDir(folder).filePath(info.fileName());
}

QString keyOfPath(const QString &path)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) == 0 && S_ISCHR(status.st_mode))
        return QStringLiteral("char:%1:%2").arg(major(status.st_rdev)).arg(minor(status.st_rdev));
    return QStringLiteral("path:") + canonicalPath(path);
}

}  // namespace

/// Reads one address, and keeps what is wrong with it.
class AddressReader
{
public:
    std::optional<PrinterAddress> read(const QString &text);
    std::optional<PrinterAddress> read(const hearth::Rs232PortSettings &record);
    std::optional<PrinterAddress> readFound(const QJsonObject &device);
    const QString &fault() const { return m_fault; }

private:
    bool fail(const QString &fault)
    {
        m_fault = fault;
        return false;
    }
    bool readRest(const QString &rest);
    bool readPath(const QString &text);
    bool readSettings(const QString &query);
    bool readUsb(const QString &text);
    bool readTcp(const QString &text);
    bool unescape(const QString &text, const char *what, QString &result);

    PrinterAddress m_address;
    QString m_fault;
};

std::optional<PrinterAddress> AddressReader::read(const QString &text)
{
    const int colon = text.indexOf(QLatin1Char(':'));
    const QString word = text.left(colon).toLower();
    bool isRead = false;
    if (colon < 0)
        fail(
            QStringLiteral("\"%1\" is no printer's address: expected %2, a colon, and where it is, "
                           "such as tcp:192.168.0.5 or device:/dev/usb/lp0")
                .arg(text, listOf(kinds)));
    else if (!readWord(kinds, word, m_address.m_kind))
        fail(QStringLiteral("\"%1\" is no kind of address: expected %2")
                 .arg(text.left(colon), listOf(kinds)));
    else
        isRead = readRest(text.mid(colon + 1));
    return isRead ? std::make_optional(m_address) : std::nullopt;
}

bool AddressReader::readRest(const QString &rest)
{
    if (m_address.m_kind == Kind::Usb)
        return readUsb(rest);
    if (m_address.m_kind == Kind::Tcp)
        return readTcp(rest);
    const int mark = rest.indexOf(QLatin1Char('?'));
    if (!readPath(rest.left(mark)))
        return false;
    if (m_address.m_kind == Kind::Serial)
        return mark < 0 || readSettings(rest.mid(mark + 1));
    return mark < 0 ||
           fail(QStringLiteral("a %1 address has no settings behind a question mark; one "
                               "in a path is written %3F")
                    .arg(textOf(kinds, m_address.m_kind)));
}

bool AddressReader::readPath(const QString &text)
{
    QString path;
    if (!unescape(text, "path", path))
        return false;
    if (path.isEmpty())
        return fail(
            QStringLiteral("there is no path behind \"%1:\"").arg(textOf(kinds, m_address.m_kind)));
    // "file:///tmp/x" and "/tmp/x" are one path.
    while (path.startsWith(QLatin1String("//")))
        path.remove(0, 1);
    m_address.m_text = m_address.m_kind == Kind::File ? path : PortUse::locationOf(path);
    return true;
}

bool AddressReader::unescape(const QString &text, const char *what, QString &result)
{
    static const QRegularExpression strayPercent(QStringLiteral("%(?![0-9A-Fa-f]{2})"));
    if (text.contains(strayPercent))
        return fail(
            QStringLiteral("a percent sign in a %1 is written %25").arg(QLatin1String(what)));
    const QByteArray bytes = QByteArray::fromPercentEncoding(text.toUtf8());
    result = QString::fromUtf8(bytes);
    if (result.contains(QChar(0)) || result.toUtf8() != bytes)
        return fail(QStringLiteral("the %1 holds bytes that are no text").arg(QLatin1String(what)));
    return true;
}

bool AddressReader::readSettings(const QString &query)
{
    QStringList given;
    const auto items = QUrlQuery(query).queryItems(QUrl::FullyDecoded);
    for (const auto &item : items) {
        const Setting *const setting = settingOf(item.first);
        if (setting == nullptr)
            return fail(QStringLiteral("\"%1\" is no setting of a serial line: expected baud, "
                                       "parity, data, stop or flow")
                            .arg(item.first));
        if (given.contains(item.first))
            return fail(QStringLiteral("\"%1\" is set twice").arg(item.first));
        given.append(item.first);
        if (!setting->read(item.second, m_address.m_line))
            return fail(QStringLiteral("%1=%2: expected %3")
                            .arg(item.first, item.second, setting->expected()));
    }
    return true;
}

bool AddressReader::readUsb(const QString &text)
{
    static const QRegularExpression form(
        QStringLiteral("\\A([0-9A-Fa-f]{4}):([0-9A-Fa-f]{4})(?::(.+))?\\z"),
        QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return fail(QStringLiteral("\"%1\" is no USB printer: expected two numbers of four "
                                   "hexadecimal digits, such as 04b8:0e15, and perhaps a colon and "
                                   "the serial number")
                        .arg(text));
    m_address.m_vendor = match.captured(1).toUShort(nullptr, hexadecimal);
    m_address.m_product = match.captured(2).toUShort(nullptr, hexadecimal);
    return unescape(match.captured(3), "serial number", m_address.m_serialNumber);
}

bool AddressReader::readTcp(const QString &text)
{
    const QString authority = text.startsWith(QLatin1String("//")) ? text.mid(2) : text;
    const QUrl url(QStringLiteral("tcp://") + authority, QUrl::StrictMode);
    const bool isHostAndPort = url.isValid() && !url.host().isEmpty() && url.port() != 0 &&
                               url.userInfo().isEmpty() && !authority.contains(QLatin1Char('@')) &&
                               (url.path().isEmpty() || url.path() == QLatin1String("/")) &&
                               !url.hasQuery() && !url.hasFragment();
    if (!isHostAndPort)
        return fail(QStringLiteral("\"%1\" is no host and port: expected HOST, HOST:PORT or "
                                   "[IPv6]:PORT, with a port from 1 to 65535")
                        .arg(text));
    m_address.m_text = url.host();
    m_address.m_port = static_cast<quint16>(url.port(PrinterAddress::defaultPort));
    return true;
}

std::optional<PrinterAddress> AddressReader::read(const hearth::Rs232PortSettings &record)
{
    Line &line = m_address.m_line;
    m_address.m_kind = Kind::Serial;
    if (record.portName().isEmpty() || record.portName().contains(QChar(0)))
        fail(QStringLiteral("the record of a serial line names no port"));
    else if (!readBaudRate(QString::number(record.baudRate()), line))
        fail(QStringLiteral("the record of the port %1 has a baud rate that no line has: %2")
                 .arg(record.portName(), QString::number(record.baudRate())));
    else if (!readPortSetting(parities, record.parity(), line.parity) ||
             !readPortSetting(dataBits, record.dataBits(), line.dataBits) ||
             !readPortSetting(stopBits, record.stopBits(), line.stopBits) ||
             record.flowControl() < 0 || !readPortSetting(flows, record.flowControl(), line.flow))
        fail(QStringLiteral(
                 "the record of the port %1 has parity %2, %3 data bits, stop bits %4 and "
                 "flow control %5, which no line has")
                 .arg(record.portName(), QString::number(record.parity()),
                      QString::number(record.dataBits()), QString::number(record.stopBits()),
                      QString::number(record.flowControl())));
    if (!m_fault.isEmpty() || !readPath(escaped(record.portName())))
        return std::nullopt;
    return m_address;
}

// Numbers and words are those of addresses, but for the stop bits, which count as QSerialPort's.
std::optional<PrinterAddress> AddressReader::readFound(const QJsonObject &device)
{
    const QJsonObject record = device.value(QStringLiteral("settings")).toObject();
    const auto number = [&record](const char *key) {
        return QString::number(record.value(QLatin1String(key)).toInt(-1));
    };
    const auto word = [&record](const char *key) {
        return record.value(QLatin1String(key)).toString();
    };
    Line &line = m_address.m_line;
    m_address.m_kind = Kind::Serial;
    const char *wrongKey = nullptr;
    if (!readBaudRate(number("baudRate"), line))
        wrongKey = "baudRate";
    else if (!readWord(dataBits, number("dataBits"), line.dataBits))
        wrongKey = "dataBits";
    else if (!readWord(parities, word("parity"), line.parity))
        wrongKey = "parity";
    else if (!readPortSetting(stopBits, number("stopBits").toInt(), line.stopBits))
        wrongKey = "stopBits";
    else if (!readWord(flows, word("flowControl"), line.flow))
        wrongKey = "flowControl";
    else if (!readPath(escaped(word("portName"))))
        wrongKey = "portName";
    if (wrongKey == nullptr)
        return m_address;
    fail(QStringLiteral("\"settings.%1\" of the found printer is missing or wrong")
             .arg(QLatin1String(wrongKey)));
    return std::nullopt;
}

namespace {

template <typename Source>
std::optional<PrinterAddress> readBy(const Source &source, QString *error)
{
    AddressReader reader;
    std::optional<PrinterAddress> address = reader.read(source);
    if (!address && error != nullptr)
        *error = reader.fault();
    return address;
}

}  // namespace

std::optional<PrinterAddress> PrinterAddress::parse(const QString &text, QString *error)
{
    return readBy(text, error);
}

std::optional<PrinterAddress> PrinterAddress::fromPortSettings(
    const hearth::Rs232PortSettings &settings, QString *error)
{
    return readBy(settings, error);
}

std::optional<PrinterAddress> PrinterAddress::fromFound(const QByteArray &json, QString *error)
{
    QJsonParseError fault{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &fault);
    const QJsonArray devices = document.array();
    AddressReader reader;
    std::optional<PrinterAddress> address;
    QString text;
    if (document.isNull())
        text = QStringLiteral("this is no JSON: %1").arg(fault.errorString());
    else if (!document.isArray())
        text = QStringLiteral("this is no array of found printers");
    else if (devices.size() != 1)
        text = QStringLiteral("%1 printers were found: expected one").arg(devices.size());
    else
        address = reader.readFound(devices.first().toObject());
    if (!address && error != nullptr)
        *error = text.isEmpty() ? reader.fault() : text;
    return address;
}

QString PrinterAddress::toString() const
{
    const QString start = textOf(kinds, m_kind) + QLatin1Char(':');
    switch (m_kind) {
        case Kind::None:
            return {};
        case Kind::Serial: {
            QStringList items;
            for (const Setting &setting : lineSettings)
                items.append(QLatin1String(setting.key) + QLatin1Char('=') + setting.write(m_line));
            return start + escaped(m_text) + QLatin1Char('?') + items.join(QLatin1Char('&'));
        }
        case Kind::Usb: {
            const QString numbers =
                start + hexadecimalOf(m_vendor) + QLatin1Char(':') + hexadecimalOf(m_product);
            return m_serialNumber.isEmpty() ? numbers
                                            : numbers + QLatin1Char(':') + escaped(m_serialNumber);
        }
        case Kind::Tcp:
            return start + hostText(m_text) + QLatin1Char(':') + QString::number(m_port);
        case Kind::Device:
        case Kind::File:
            break;
    }
    return start + escaped(m_text);
}

QString PrinterAddress::lockKey() const
{
    switch (m_kind) {
        case Kind::None:
            return {};
        case Kind::Tcp:
        case Kind::Usb: {
            const QString path =
                m_kind == Kind::Usb ? devicefault::findUsb(*this, {}).path : QString();
            return path.isEmpty() ? toString().toLower() : keyOfPath(path);
        }
        case Kind::Serial:
        case Kind::Device:
        case Kind::File:
            break;
    }
    return keyOfPath(m_text);
}

}  // namespace printerslib::drivers
