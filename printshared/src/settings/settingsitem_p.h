#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <QVariant>

/// The one form in which settings are exported and imported: a map of "group", "key" and "value".
namespace settingsitem {

using Item = QMap<QString, QVariant>;

inline QString groupKey()
{
    return QStringLiteral("group");
}

inline bool hasGroup(const Item &item)
{
    return item.contains(groupKey());
}

inline QString group(const Item &item)
{
    return item.value(groupKey()).toString();
}

inline bool hasKey(const Item &item)
{
    return item.contains(QStringLiteral("key"));
}

inline QString key(const Item &item)
{
    return item.value(QStringLiteral("key")).toString();
}

inline QVariant value(const Item &item)
{
    return item.value(QStringLiteral("value"));
}

/// Appends one item to a list.
inline void append(QList<QVariant> &list, const QString &group, const QString &key,
                   const QVariant &value)
{
    list.append(
        Item{{groupKey(), group}, {QStringLiteral("key"), key}, {QStringLiteral("value"), value}});
}

}  // namespace settingsitem
