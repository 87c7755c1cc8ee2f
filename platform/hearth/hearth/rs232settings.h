#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <QVariant>
#include <mutex>

#include "hearth/rs232portsettings.h"

namespace hearth {

/// Stand-in for the serial settings of a named printer: the port it is connected to and a text.
///
/// Any thread may use any operation of one object; each operation by itself is atomic. No operation
/// calls out while it holds the object's lock, so it may be used under any other lock.
class Q_DECL_EXPORT RS232Settings
{
public:
    /// Settings of the printer `name`, which may be empty, with default port settings and no text.
    explicit RS232Settings(const QString &name);
    RS232Settings(const RS232Settings &) = delete;
    RS232Settings &operator=(const RS232Settings &) = delete;

    /// The printer's name; it is the group of the item list.
    QString name() const;
    void setName(const QString &name);

    /// Free text about the connection; nothing reads it but people.
    QString text() const;
    void setText(const QString &text);

    Rs232PortSettings portSettings() const;
    void setPortSettings(const Rs232PortSettings &settings);

    /// The settings as items: maps of "group" (the name), "key" and "value". The keys, in order:
    /// "portName" (string), "baudRate", "dataBits", "parity", "stopBits", "flowControl" (int, the
    /// numbers of the QSerialPort enumerations) and "portText" (string).
    QList<QVariant> toList() const;

    /// Takes one item of the form that toList() makes.
    /// @return false, with nothing changed, when the group isn't this object's name, the key isn't
    ///         one of the list's, or the value isn't one that the line parameter can have
    bool setValue(const QMap<QString, QVariant> &item);

private:
    mutable std::mutex m_mutex;
    QString m_name;
    QString m_text;
    Rs232PortSettings m_portSettings;
};

}  // namespace hearth
