#pragma once

#include <QDateTime>
#include <QString>
#include <QtGlobal>

namespace corvid {

/// Stand-in for the message bus's record of a client's state: a type, a time, a description, and a
/// state text that only the clients understand. Plain value; any thread may use its own object.
class Q_DECL_EXPORT ClientState
{
public:
    enum EStateType : quint8 {
        StateNormal = 0,
        StateWarning = 1,
        StateCritical = 2,
        StateFatal = 3,
        StateInvalid = 255,  ///< has not been set
    };

    /// An invalid state without time and texts.
    ClientState() = default;

    void setDt(const QDateTime &dt);
    void setStateType(const EStateType &stateType);
    void setState(const QString &state);

    EStateType stateType() const;
    QString description() const;
    QDateTime dt() const;
    QString state() const;

    /// Whether both the type and the time are set.
    bool isValid() const;

protected:
    /// The bus fills the description in; its clients only read it.
    void setDescription(const QString &description);

private:
    EStateType m_stateType = StateInvalid;
    QString m_description;
    QDateTime m_dt;
    QString m_state;
};

}  // namespace corvid
