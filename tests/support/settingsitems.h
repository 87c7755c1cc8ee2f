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
