#pragma once

#include <QDateTime>
#include <QString>

namespace corvid {

/// Needs no time to be valid.
class ClientState
{
public:
    enum EStateType : quint8 {
        StateNormal = 0,
        StateWarning = 1,
        StateCritical = 2,
        StateFatal = 3,
        StateInvalid = 255,
    };

    EStateType stateType() const { return m_stateType; }
    void setStateType(EStateType stateType) { m_stateType = stateType; }
    QString description() const { return QStringLiteral("other system"); }
    QDateTime dt() const { return m_dt; }
    void setDt(const QDateTime &dt) { m_dt = dt; }
    QString state() const { return m_state; }
    void setState(const QString &state) { m_state = state; }
    bool isValid() const { return m_stateType != StateInvalid; }

private:
    QString m_state;
    QDateTime m_dt;
    EStateType m_stateType = StateInvalid;
};

}  // namespace corvid
