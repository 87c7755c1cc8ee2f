#pragma once

#include <QByteArray>
#include <QList>

#include "printerslib/drivers/printerprofile.h"

/// Bytes from hexadecimal digits and, between quotes, texts: "1b40 'Total' 0a".
inline QByteArray streamOf(const QByteArray &notation)
{
    QByteArray bytes;
    const QList<QByteArray> parts = notation.split('\'');
    for (int i = 0; i < parts.size(); ++i)
        bytes += i % 2 == 0 ? QByteArray::fromHex(parts.at(i)) : parts.at(i);
    return bytes;
}

inline printerslib::drivers::PrinterProfile profileOf(const char *model = "GENERAL_EPSON_PROTOCOL")
{
    return printerslib::drivers::PrinterProfile::forModel(QLatin1String(model)).value();
}
