#pragma once

#include <QJsonDocument>
#include <QJsonObject>
#include <QSerialPort>
#include <QtTest>

#include "receiptprogram.h"
#include "virtualprinter.h"

/// Runs of the search, with the records and printers that it is given.
namespace findrun {

inline ReceiptRun receipt(const QStringList &arguments)
{
    return runReceipt(QStringList("find") + arguments);
}

inline VirtualPrinterOptions printerOnFirstLine(const QString &model)
{
    VirtualPrinterOptions options;
    options.model = model;
    options.baudRate = 115200;
    options.flowControl = QSerialPort::NoFlowControl;
    return options;
}

inline QJsonObject deviceJson(const QString &port, const QString &id, int baudRate = 115200)
{
    return {{"deviceType", 1},
            {"deviceId", id},
            {"settings", QJsonObject{{"portName", port},
                                     {"baudRate", baudRate},
                                     {"dataBits", 8},
                                     {"parity", "none"},
                                     {"stopBits", 1},
                                     {"flowControl", "none"}}}};
}

inline void write(const QString &fileName, const QByteArray &text)
{
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("%s can't be written", qPrintable(fileName));
}

inline ReceiptRun confirm(const QByteArray &text, const QStringList &options)
{
    const WorkFolder folder;
    return receipt(QStringList{"--confirm", folder.file("devices.json", text)} + options);
}

}  // namespace findrun
