#include "hearth/rs232settings.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <optional>

namespace hearth {

namespace {

using Lock = std::lock_guard<std::mutex>;

constexpr int greatestInt = std::numeric_limits<int>::max();
constexpr int noNumber = -1;

// Configurations come from JSON and from text files, so a whole number may arrive as a double or as
// text. QVariant::toInt would round and wrap around where this refuses.
std::optional<int> wholeNumber(const QVariant &value)
{
    if (value.userType() == QMetaType::Double || value.userType() == QMetaType::Float) {
        const double real = value.toDouble();
        if (!(real >= 0 && real <= greatestInt) || real != std::floor(real))
            return std::nullopt;
        return static_cast<int>(real);
    }
    if (value.userType() == QMetaType::Bool)
        return std::nullopt;
    bool ok = false;
    const qlonglong whole = value.toLongLong(&ok);
    if (!ok || whole < 0 || whole > greatestInt)
        return std::nullopt;
    return static_cast<int>(whole);
}

// A line parameter that is a number: its key, the numbers it can have, and its place in the record.
struct NumberField
{
    const char *key;
    bool (*allowed)(int number);
    int (*read)(const Rs232PortSettings &settings);
    void (*write)(Rs232PortSettings &settings, int number);
};

template <int... numbers>
bool isOneOf(int number)
{
    return ((number == numbers) || ...);
}

constexpr NumberField numberFields[] = {
    {"baudRate", [](int number) { return number > 0; },
     [](const Rs232PortSettings &settings) { return settings.baudRate(); },
     [](Rs232PortSettings &settings, int number) { settings.setBaudRate(number); }},
    {"dataBits", isOneOf<5, 6, 7, 8>,
     [](const Rs232PortSettings &settings) { return int(settings.dataBits()); },
     [](Rs232PortSettings &settings, int number) {
         settings.setDataBits(QSerialPort::DataBits(number));
     }},
    {"parity", isOneOf<0, 2, 3, 4, 5>,
     [](const Rs232PortSettings &settings) { return int(settings.parity()); },
     [](Rs232PortSettings &settings, int number) {
         settings.setParity(QSerialPort::Parity(number));
     }},
    {"stopBits", isOneOf<1, 2, 3>,
     [](const Rs232PortSettings &settings) { return int(settings.stopBits()); },
     [](Rs232PortSettings &settings, int number) {
         settings.setStopBits(QSerialPort::StopBits(number));
     }},
    {"flowControl", isOneOf<0, 1, 2>,
     [](const Rs232PortSettings &settings) { return int(settings.flowControl()); },
     [](Rs232PortSettings &settings, int number) {
         settings.setFlowControl(QSerialPort::FlowControl(number));
     }},
};

const NumberField *numberFieldOf(const QString &key)
{
    const auto *field =
        std::find_if(std::begin(numberFields), std::end(numberFields),
                     [&key](const NumberField &row) { return key == QLatin1String(row.key); });
    return field == std::end(numberFields) ? nullptr : field;
}

QString portNameKey()
{
    return QStringLiteral("portName");
}

QString textKey()
{
    return QStringLiteral("portText");
}

}  // namespace

RS232Settings::RS232Settings(const QString &name) : m_name(name) {}

QString RS232Settings::name() const
{
    const Lock lock(m_mutex);
    return m_name;
}

void RS232Settings::setName(const QString &name)
{
    const Lock lock(m_mutex);
    m_name = name;
}

QString RS232Settings::text() const
{
    const Lock lock(m_mutex);
    return m_text;
}

void RS232Settings::setText(const QString &text)
{
    const Lock lock(m_mutex);
    m_text = text;
}

Rs232PortSettings RS232Settings::portSettings() const
{
    const Lock lock(m_mutex);
    return m_portSettings;
}

void RS232Settings::setPortSettings(const Rs232PortSettings &settings)
{
    const Lock lock(m_mutex);
    m_portSettings = settings;
}

QList<QVariant> RS232Settings::toList() const
{
    const Lock lock(m_mutex);
    QList<QVariant> items;
    QMap<QString, QVariant> item{{QStringLiteral("group"), m_name}};
    const auto append = [&](const QString &key, const QVariant &value) {
        item[QStringLiteral("key")] = key;
        item[QStringLiteral("value")] = value;
        items.append(item);
    };
    append(portNameKey(), m_portSettings.portName());
    for (const NumberField &field : numberFields)
        append(QLatin1String(field.key), field.read(m_portSettings));
    append(textKey(), m_text);
    return items;
}

bool RS232Settings::setValue(const QMap<QString, QVariant> &item)
{
    // Conversions of a program's own types are its code and may use these settings: the lock comes
    // behind them.
    const bool hasGroup = item.contains(QStringLiteral("group"));
    const QString group = item.value(QStringLiteral("group")).toString();
    const QString key = item.value(QStringLiteral("key")).toString();
    const QVariant value = item.value(QStringLiteral("value"));
    const NumberField *field = numberFieldOf(key);
    const int number = field == nullptr ? noNumber : wholeNumber(value).value_or(noNumber);
    const bool isText = value.canConvert<QString>() && value.userType() != QMetaType::QStringList;
    const QString text = isText ? value.toString() : QString();

    const Lock lock(m_mutex);
    if (!hasGroup || group != m_name)
        return false;
    if (field != nullptr) {
        if (number == noNumber || !field->allowed(number))
            return false;
        field->write(m_portSettings, number);
        return true;
    }
    if (!isText || (key != portNameKey() && key != textKey()))
        return false;
    if (key == textKey())
        m_text = text;
    else
        m_portSettings.setPortName(text);
    return true;
}

}  // namespace hearth
