#include "corvid/clientstate.h"

namespace corvid {

void ClientState::setDt(const QDateTime &dt)
{
    m_dt = dt;
}

void ClientState::setStateType(const EStateType &stateType)
{
    m_stateType = stateType;
}

void ClientState::setState(const QString &state)
{
    m_state = state;
}

ClientState::EStateType ClientState::stateType() const
{
    return m_stateType;
}

QString ClientState::description() const
{
    return m_description;
}

QDateTime ClientState::dt() const
{
    return m_dt;
}

QString ClientState::state() const
{
    return m_state;
}

bool ClientState::isValid() const
{
    return m_stateType != StateInvalid && m_dt.isValid();
}

void ClientState::setDescription(const QString &description)
{
    m_description = description;
}

}  // namespace corvid
