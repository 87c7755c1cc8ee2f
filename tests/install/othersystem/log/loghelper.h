#pragma once

#include <QByteArray>
#include <QDebug>
#include <QStringList>

constexpr char logtab[] = " (other tab) ";

inline QString loglist(const QStringList &items)
{
    return items.join(QLatin1Char('/'));
}

inline QString logbinary(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toHex());
}
