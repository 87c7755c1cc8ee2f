#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

/// Makes and reads the items of settings lists in tests.
inline QMap<QString, QVariant> item(const QString &group, const QString &key, const QVariant &value)
{
    return {{"group", group}, {"key", key}, {"value", value}};
}

inline QString keyOf(const QVariant &listItem)
{
    return listItem.toMap().value("key").toString();
}

inline QString groupOf(const QVariant &listItem)
{
    return listItem.toMap().value("group").toString();
}

inline QStringList keysOf(const QList<QVariant> &list)
{
    QStringList keys;
    for (const QVariant &listItem : list)
        keys.append(keyOf(listItem));
    return keys;
}

/// The value under a key; invalid when the list has none.
inline QVariant valueOf(const QList<QVariant> &list, const QString &key)
{
    for (const QVariant &listItem : list) {
        if (keyOf(listItem) == key)
            return listItem.toMap().value("value");
    }
    return QVariant();
}

/// What a new process holds in the section of PrinterSettings, in the order of its list.
inline QList<QVariant> sectionItems()
{
    QList<QVariant> items;
    const auto add = [&items](const char *key, const QVariant &value) {
        items.append(item("PRINTER", key, value));
    };
    add("printerType", 0);
    add("printerName", QString());
    add("emptyStringsAtEnd", 5);
    add("spacesBeforeString", 0);
    add("paperLoopFlag", 0);
    add("moveCheckTo", 50);
    add("characterMode", 0);
    add("enablePortLogging", 0);
    add("baseFiscFont", 1);
    add("defSymPerLine", 0);
    return items;
}

/// What a new port adds under the printer's name.
inline QList<QVariant> portItems(const QString &name)
{
    return {
        item(name, "portName", QString()), item(name, "baudRate", 9600),
        item(name, "dataBits", 8),         item(name, "parity", 0),
        item(name, "stopBits", 1),         item(name, "flowControl", 0),
        item(name, "portText", QString()),
    };
}

/// The items behind those that all printers have: what a derived class adds.
inline QList<QVariant> addedItems(const QList<QVariant> &list)
{
    return list.mid(sectionItems().size() + portItems(QString()).size());
}

/// The list with another value under a key.
inline QList<QVariant> withValue(QList<QVariant> list, const QString &key, const QVariant &value)
{
    for (QVariant &listItem : list) {
        if (keyOf(listItem) == key)
            listItem = item(groupOf(listItem), key, value);
    }
    return list;
}
