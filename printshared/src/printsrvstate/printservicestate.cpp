#include "printsrvstate/printservicestate.h"

#include <algorithm>
#include <iterator>

#include "latin1text_p.h"

namespace {

using printshared::latin1Text;

/// A field of the record and how it passes into and out of the map form.
struct Field
{
    QLatin1String key;
    QVariant (*written)(const PrintServiceState &state);
    void (*read)(PrintServiceState &state, const QVariant &value);
};

template <typename State>
State stateOf(const QVariant &value)
{
    return static_cast<State>(static_cast<quint16>(value.toUInt()));
}

constexpr Field fields[] = {
    {latin1Text("serviceState"),
     [](const PrintServiceState &state) {
         return QVariant(static_cast<int>(state.serviceState()));
     },
     [](PrintServiceState &state, const QVariant &value) {
         state.setServiceState(stateOf<PrintServiceState::EServiceState>(value));
     }},
    {latin1Text("deviceState"),
     [](const PrintServiceState &state) { return QVariant(static_cast<int>(state.deviceState())); },
     [](PrintServiceState &state, const QVariant &value) {
         state.setDeviceState(stateOf<PrintServiceState::EDeviceState>(value));
     }},
    {latin1Text("deviceErrorCode"),
     [](const PrintServiceState &state) { return QVariant(qint64{state.deviceErrorCode()}); },
     [](PrintServiceState &state, const QVariant &value) {
         state.setDeviceErrorCode(value.toUInt());
     }},
    {latin1Text("deviceNativeCode"),
     [](const PrintServiceState &state) { return QVariant(qint64{state.deviceNativeCode()}); },
     [](PrintServiceState &state, const QVariant &value) {
         state.setDeviceNativeCode(value.toUInt());
     }},
    {latin1Text("deviceErrorMsg"),
     [](const PrintServiceState &state) { return QVariant(state.deviceErrorMsg()); },
     [](PrintServiceState &state, const QVariant &value) {
         state.setDeviceErorMsg(value.toString());
     }},
    {latin1Text("tapeAvailable"),
     [](const PrintServiceState &state) { return QVariant(state.tapeAvailable()); },
     [](PrintServiceState &state, const QVariant &value) {
         state.setTapeAvailable(value.toBool());
     }},
};

}  // namespace

PrintServiceState::EServiceState PrintServiceState::serviceState() const
{
    return m_serviceState;
}

void PrintServiceState::setServiceState(EServiceState serviceState)
{
    m_serviceState = serviceState;
}

PrintServiceState::EDeviceState PrintServiceState::deviceState() const
{
    return m_deviceState;
}

void PrintServiceState::setDeviceState(EDeviceState deviceState)
{
    m_deviceState = deviceState;
}

unsigned int PrintServiceState::deviceErrorCode() const
{
    return m_deviceErrorCode;
}

void PrintServiceState::setDeviceErrorCode(unsigned int deviceErrorCode)
{
    m_deviceErrorCode = deviceErrorCode;
}

unsigned int PrintServiceState::deviceNativeCode() const
{
    return m_deviceNativeCode;
}

void PrintServiceState::setDeviceNativeCode(unsigned int deviceNativeCode)
{
    m_deviceNativeCode = deviceNativeCode;
}

QString PrintServiceState::deviceErrorMsg() const
{
    return m_deviceErrorMsg;
}

void PrintServiceState::setDeviceErorMsg(const QString &deviceErrorMsg)
{
    m_deviceErrorMsg = deviceErrorMsg;
}

bool PrintServiceState::tapeAvailable() const
{
    return m_tapeAvailable;
}

void PrintServiceState::setTapeAvailable(bool tapeAvailable)
{
    m_tapeAvailable = tapeAvailable;
}

bool PrintServiceState::operator==(const PrintServiceState &other) const
{
    return std::all_of(std::begin(fields), std::end(fields), [&](const Field &field) {
        return field.written(*this) == field.written(other);
    });
}

bool PrintServiceState::operator!=(const PrintServiceState &other) const
{
    return !(*this == other);
}

QMap<QString, QVariant> PrintServiceState::toMap() const
{
    QMap<QString, QVariant> map;
    for (const Field &field : fields)
        map.insert(field.key, field.written(*this));
    return map;
}

void PrintServiceState::setMap(const QMap<QString, QVariant> &map)
{
    for (const Field &field : fields) {
        const auto found = map.constFind(field.key);
        if (found != map.constEnd())
            field.read(*this, *found);
    }
}
