#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <QVariant>
#include <QVector>

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

inline QString valueKey()
{
    return QStringLiteral("value");
}

inline QVariant value(const Item &item)
{
    return item.value(valueKey());
}

/// The maps of a list. They and what they hold may be of a client's types, whose conversions are
/// the client's code and may use the settings: so they are made here and below, before a lock is
/// taken.
inline QVector<Item> itemsOf(const QList<QVariant> &list)
{
    QVector<Item> items;
    items.reserve(list.size());
    for (const QVariant &element : list)
        items.append(element.toMap());
    return items;
}

/// The item with its group and key as texts, and this value.
inline Item plain(const Item &item, const QVariant &value)
{
    Item result = item;
    for (const QString &name : {groupKey(), QStringLiteral("key")}) {
        if (result.contains(name))
            result[name] = result.value(name).toString();
    }
    result[valueKey()] = value;
    return result;
}

inline Item withText(const Item &item)
{
    return plain(item, value(item).toString());
}

/// The value as a reader who takes texts and numbers gets it: what isn't of Qt's own types as its
/// text or, where it has none, as its number.
inline QVariant plainValue(const QVariant &value)
{
    const int type = value.userType();
    if (type <= QMetaType::LastCoreType ||
        QMetaType::typeFlags(type).testFlag(QMetaType::IsEnumeration))
        return value;
    if (value.canConvert<QString>())
        return value.toString();
    bool isNumber = false;
    const qlonglong number = value.toLongLong(&isNumber);
    return isNumber ? QVariant(number) : QVariant();
}

/// Appends one item to a list.
inline void append(QList<QVariant> &list, const QString &group, const QString &key,
                   const QVariant &value)
{
    list.append(Item{{groupKey(), group}, {QStringLiteral("key"), key}, {valueKey(), value}});
}

}  // namespace settingsitem
