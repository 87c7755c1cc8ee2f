#pragma once

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QSerialPort>
#include <QtTest>

#include "virtualprinter.h"

/// Runs of the search, with the records and printers that it is given.
namespace findrun {

inline constexpr int runMilliseconds = 60000;

struct Run
{
    int exitCode = -1;
    QString output;
    QString errors;
};

inline Run receipt(const QStringList &arguments)
{
    QProcess program;
    program.start(RECEIPT_PROGRAM, QStringList("find") + arguments);
    Run run;
    if (program.waitForFinished(runMilliseconds) && program.exitStatus() == QProcess::NormalExit)
        run.exitCode = program.exitCode();
    run.output = QString::fromUtf8(program.readAllStandardOutput());
    run.errors = QString::fromUtf8(program.readAllStandardError());
    return run;
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

inline Run confirm(const QByteArray &text, const QStringList &options)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("devices.json"));
    if (!file.open(QIODevice::WriteOnly))
        return {};
    file.write(text);
    file.close();
    return receipt(QStringList{"--confirm", file.fileName()} + options);
}

}  // namespace findrun
