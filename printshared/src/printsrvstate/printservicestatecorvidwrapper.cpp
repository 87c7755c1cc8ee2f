#include "printsrvstate/printservicestatecorvidwrapper.h"

#include <QDebug>
#include <QJsonDocument>
#include <QJsonParseError>
#include <algorithm>
#include <iterator>

#include "latin1text_p.h"
#include "log/loghelper.h"

using corvid::ClientState;

namespace {

using printshared::latin1Text;

struct TypeName
{
    ClientState::EStateType type;
    QLatin1String name;
};

constexpr TypeName typeNames[] = {
    {ClientState::StateNormal, latin1Text("NORMAL")},
    {ClientState::StateWarning, latin1Text("WARNING")},
    {ClientState::StateCritical, latin1Text("CRITICAL")},
    {ClientState::StateFatal, latin1Text("FATAL")},
    {ClientState::StateInvalid, latin1Text("INVALID")},
};

QString nameOf(ClientState::EStateType type)
{
    const auto *const found =
        std::find_if(std::begin(typeNames), std::end(typeNames),
                     [type](const TypeName &candidate) { return candidate.type == type; });
    return found == std::end(typeNames) ? QString() : QString(found->name);
}

bool isServiceWorkable(PrintServiceState::EServiceState state)
{
    return state >= PrintServiceState::ServiceWorkableFirst &&
           state <= PrintServiceState::ServiceWorkableThird;
}

ClientState::EStateType typeOfDevice(PrintServiceState::EDeviceState state)
{
    switch (state) {
        case PrintServiceState::DeviceNormalFirst:
        case PrintServiceState::DeviceNormalSecond:
            return ClientState::StateNormal;
        case PrintServiceState::DeviceWarning:
            return ClientState::StateWarning;
        case PrintServiceState::DeviceCritical:
            return ClientState::StateCritical;
        case PrintServiceState::DeviceFatal:
            return ClientState::StateFatal;
        case PrintServiceState::DeviceInvalid:
            break;
    }
    return ClientState::StateInvalid;
}

ClientState::EStateType typeOf(const PrintServiceState &state)
{
    if (state.serviceState() == PrintServiceState::ServiceInvalid)
        return ClientState::StateInvalid;
    if (state.serviceState() >= PrintServiceState::ServiceCritical)
        return ClientState::StateCritical;
    return typeOfDevice(state.deviceState());
}

QString jsonOf(const PrintServiceState &state)
{
    return QString::fromUtf8(
        QJsonDocument::fromVariant(state.toMap()).toJson(QJsonDocument::Compact));
}

}  // namespace

PrintServiceStateCorvidWrapper::PrintServiceStateCorvidWrapper(const PrintServiceState &state)
    : m_state(state)
{}

PrintServiceStateCorvidWrapper::PrintServiceStateCorvidWrapper(const ClientState &clientState)
{
    setClientState(clientState);
}

ClientState::EStateType PrintServiceStateCorvidWrapper::stateType() const
{
    return m_stateType;
}

QString PrintServiceStateCorvidWrapper::stateDescription() const
{
    return m_stateDescription;
}

QDateTime PrintServiceStateCorvidWrapper::stateDt() const
{
    return m_stateDt;
}

PrintServiceState PrintServiceStateCorvidWrapper::state() const
{
    return m_state;
}

bool PrintServiceStateCorvidWrapper::isValid() const
{
    return m_stateType != ClientState::StateInvalid && m_stateDt.isValid() &&
           m_state.serviceState() != PrintServiceState::ServiceInvalid &&
           m_state.deviceState() != PrintServiceState::DeviceInvalid;
}

bool PrintServiceStateCorvidWrapper::isWorkable() const
{
    return isValid() && isServiceWorkable(m_state.serviceState()) &&
           m_state.deviceState() <= PrintServiceState::DeviceWarning;
}

bool PrintServiceStateCorvidWrapper::setClientState(const ClientState &clientState)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(clientState.state().toUtf8(), &error);

    PrintServiceStateCorvidWrapper fresh;
    fresh.m_state.setTapeAvailable(m_state.tapeAvailable());
    *this = fresh;
    if (error.error != QJsonParseError::NoError) {
        qWarning().nospace().noquote()
            << "JSON PARSING ERROR: " << error.errorString() << logtab << clientState.state();
        return false;
    }

    m_stateType = clientState.stateType();
    m_stateDescription = clientState.description();
    m_stateDt = clientState.dt();
    m_state.setMap(document.toVariant().toMap());
    return clientState.isValid();
}

ClientState PrintServiceStateCorvidWrapper::toClientState() const
{
    ClientState clientState;
    clientState.setDt(QDateTime::currentDateTime());
    clientState.setStateType(typeOf(m_state));
    clientState.setState(jsonOf(m_state));
    return clientState;
}

QMap<QString, QVariant> PrintServiceStateCorvidWrapper::toMap() const
{
    return {
        {latin1Text("stateType"), int{static_cast<qint8>(m_stateType)}},
        {latin1Text("stateDt"), m_stateDt.toUTC().toString(Qt::ISODate)},
        {latin1Text("stateDescription"), nameOf(m_stateType)},
        {latin1Text("serviceState"), static_cast<int>(m_state.serviceState())},
        {latin1Text("deviceState"), static_cast<int>(m_state.deviceState())},
        {latin1Text("deviceErrorCode"), m_state.deviceErrorCode()},
        {latin1Text("deviceNativeCode"), m_state.deviceNativeCode()},
        {latin1Text("deviceErrorMsg"), m_state.deviceErrorMsg()},
        {latin1Text("tapeAvailablle"), m_state.tapeAvailable()},
    };
}

bool PrintServiceStateCorvidWrapper::operator==(const PrintServiceStateCorvidWrapper &other) const
{
    return m_stateType == other.m_stateType && m_stateDescription == other.m_stateDescription &&
           m_stateDt == other.m_stateDt && m_state == other.m_state;
}

bool PrintServiceStateCorvidWrapper::operator!=(const PrintServiceStateCorvidWrapper &other) const
{
    return !(*this == other);
}
