#pragma once

#include <QList>
#include <QMap>
#include <QVariant>

#include "hearth/rs232portsettings.h"

namespace hearth {

/// Its item list has one key, "line".
class Q_DECL_EXPORT RS232Settings
{
public:
    explicit RS232Settings(const QString &name);
    QString name() const { return m_name; }
    void setName(const QString &name) { m_name = name; }
    QString text() const { return m_text; }
    void setText(const QString &text) { m_text = text; }
    Rs232PortSettings portSettings() const { return m_portSettings; }
    void setPortSettings(const Rs232PortSettings &settings) { m_portSettings = settings; }
    QList<QVariant> toList() const;
    bool setValue(const QMap<QString, QVariant> &item);

private:
    QString m_name;
    QString m_text;
    Rs232PortSettings m_portSettings;
};

}  // namespace hearth
