#include "devicejson.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSerialPort>

#include "support.h"

namespace {

struct Word
{
    int value;
    const char *text;
    char letter;
};

constexpr Word parities[] = {{QSerialPort::NoParity, "none", 'N'},
                             {QSerialPort::EvenParity, "even", 'E'},
                             {QSerialPort::OddParity, "odd", 'O'},
                             {QSerialPort::SpaceParity, "space", 'S'},
                             {QSerialPort::MarkParity, "mark", 'M'}};
constexpr Word flowControls[] = {{QSerialPort::NoFlowControl, "none", 0},
                                 {QSerialPort::HardwareControl, "hardware", 0},
                                 {QSerialPort::SoftwareControl, "software", 0}};
constexpr Word numberOfDataBits[] = {
    {5, nullptr, 0}, {6, nullptr, 0}, {7, nullptr, 0}, {8, nullptr, 0}};
constexpr Word numberOfStopBits[] = {{1, nullptr, 0}, {2, nullptr, 0}, {3, nullptr, 0}};

template <std::size_t Size>
const Word *wordOf(const Word (&words)[Size], int value)
{
    for (const Word &word : words) {
        if (word.value == value)
            return &word;
    }
    return nullptr;
}

template <std::size_t Size>
QString textOf(const Word (&words)[Size], int value)
{
    const Word *const word = wordOf(words, value);
    return word == nullptr ? QString::number(value) : QString::fromLatin1(word->text);
}

/// Reads the keys of one object and remembers the first that is wrong.
class ObjectReader
{
public:
    explicit ObjectReader(const QJsonObject &object) : m_object(object) {}

    QString text(const char *key) { return value(key, QJsonValue::String).toString(); }

    int number(const char *key)
    {
        const int number = value(key, QJsonValue::Double).toInt(-1);
        if (number < 0)
            fail(key);
        return number;
    }

    template <std::size_t Size>
    int oneOf(const char *key, const Word (&words)[Size])
    {
        const QJsonValue given = m_object.value(QLatin1String(key));
        for (const Word &word : words) {
            const bool isThis = word.text == nullptr ? given.toInt(-1) == word.value
                                                     : given.toString() == QLatin1String(word.text);
            if (isThis)
                return word.value;
        }
        fail(key);
        return words[0].value;
    }

    QJsonObject object(const char *key) { return value(key, QJsonValue::Object).toObject(); }

    QString wrongKey() const { return m_wrongKey; }

private:
    QJsonValue value(const char *key, QJsonValue::Type type)
    {
        QJsonValue found = m_object.value(QLatin1String(key));
        if (found.type() != type)
            fail(key);
        return found;
    }

    void fail(const char *key)
    {
        if (m_wrongKey.isEmpty())
            m_wrongKey = QLatin1String(key);
    }

    QJsonObject m_object;
    QString m_wrongKey;
};

QJsonObject settingsToJson(const hearth::Rs232PortSettings &settings)
{
    return {{QStringLiteral("portName"), settings.portName()},
            {QStringLiteral("baudRate"), settings.baudRate()},
            {QStringLiteral("dataBits"), settings.dataBits()},
            {QStringLiteral("parity"), textOf(parities, settings.parity())},
            {QStringLiteral("stopBits"), settings.stopBits()},
            {QStringLiteral("flowControl"), textOf(flowControls, settings.flowControl())}};
}

/// The wrong key, empty if there is none.
QString readDevice(const QJsonObject &object, PrintDeviceInfo &device)
{
    ObjectReader reader(object);
    device.setDeviceType(static_cast<unsigned int>(reader.number("deviceType")));
    device.setDeviceId(reader.text("deviceId"));
    ObjectReader line(reader.object("settings"));
    hearth::Rs232PortSettings settings;
    settings.setPortName(line.text("portName"));
    settings.setBaudRate(line.number("baudRate"));
    settings.setDataBits(
        static_cast<QSerialPort::DataBits>(line.oneOf("dataBits", numberOfDataBits)));
    settings.setParity(static_cast<QSerialPort::Parity>(line.oneOf("parity", parities)));
    settings.setStopBits(
        static_cast<QSerialPort::StopBits>(line.oneOf("stopBits", numberOfStopBits)));
    settings.setFlowControl(
        static_cast<QSerialPort::FlowControl>(line.oneOf("flowControl", flowControls)));
    device.setSettings(settings);
    if (!reader.wrongKey().isEmpty() || line.wrongKey().isEmpty())
        return reader.wrongKey();
    return QStringLiteral("settings.") + line.wrongKey();
}

}  // namespace

QJsonArray devicejson::write(const QList<PrintDeviceInfo> &devices)
{
    QJsonArray array;
    for (const PrintDeviceInfo &device : devices) {
        array.append(
            QJsonObject{{QStringLiteral("deviceType"), static_cast<int>(device.deviceType())},
                        {QStringLiteral("deviceId"), device.deviceId()},
                        {QStringLiteral("settings"), settingsToJson(device.settings())}});
    }
    return array;
}

std::optional<QList<PrintDeviceInfo>> devicejson::read(const QString &fileName,
                                                       const QByteArray &text)
{
    const auto document = tool::jsonOf(fileName, text);
    if (!document)
        return std::nullopt;
    if (!document->isArray()) {
        tool::complain(fileName + QStringLiteral(": this is no array of devices"));
        return std::nullopt;
    }
    QList<PrintDeviceInfo> devices;
    const QJsonArray array = document->array();
    for (const auto &element : array) {
        PrintDeviceInfo device;
        const QString wrongKey = readDevice(element.toObject(), device);
        if (!wrongKey.isEmpty()) {
            tool::complain(QStringLiteral("%1: device %2: \"%3\" is missing or wrong")
                               .arg(fileName)
                               .arg(devices.size() + 1)
                               .arg(wrongKey));
            return std::nullopt;
        }
        devices.append(device);
    }
    return devices;
}

QString devicejson::lineText(const hearth::Rs232PortSettings &settings)
{
    const Word *const parity = wordOf(parities, settings.parity());
    return QStringLiteral("%1 %2%3%4, flow control %5")
        .arg(settings.baudRate())
        .arg(settings.dataBits())
        .arg(QLatin1Char(parity == nullptr ? '?' : parity->letter))
        .arg(settings.stopBits())
        .arg(textOf(flowControls, settings.flowControl()));
}
