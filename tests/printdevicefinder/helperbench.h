#pragma once

#include "printdevicefinder/printershelper.h"
#include "printerbench.h"

/// A helper over a port with a virtual printer at its other end.
namespace helperbench {

/// A table of replies written as "1D4901:5D,5E 1B76:-": requests with their answers in turn, "-"
/// being silence.
inline VirtualModel printerAnswering(const QString &replies, int baudRate,
                                     QSerialPort::FlowControl flowControl)
{
    VirtualModel model{"printer of the test", baudRate, flowControl, {}};
    for (const QString &reply : replies.split(' ', Qt::SkipEmptyParts)) {
        VirtualReply row{QByteArray::fromHex(reply.section(':', 0, 0).toLatin1()), {}};
        for (const QString &answer : reply.section(':', 1).split(','))
            row.answers.append(QByteArray::fromHex(answer.toLatin1()));
        model.replies.append(row);
    }
    return model;
}

inline hearth::Rs232PortSettings settingsOf(
    int baudRate, QSerialPort::FlowControl flow = QSerialPort::NoFlowControl,
    QSerialPort::Parity parity = QSerialPort::NoParity)
{
    hearth::Rs232PortSettings settings;
    settings.setBaudRate(baudRate);
    settings.setFlowControl(flow);
    settings.setParity(parity);
    return settings;
}

/// A helper over an open port with a virtual printer at its other end.
class Setup
{
public:
    explicit Setup(const VirtualPrinterOptions &options)
        : printer(bench.add(options)), helper(openPort())
    {}
    explicit Setup(const VirtualModel &model) : printer(bench.add(model)), helper(openPort()) {}

    /// What went over the line on one line setting, as "< 1D 49 01".
    QStringList dialogueOn(const QString &lineSetting)
    {
        printer->service();
        QStringList found;
        for (const QString &line : linesOf(*printer)) {
            if (line.startsWith(lineSetting + " "))
                found.append(line.mid(lineSetting.size() + 1));
        }
        return found;
    }

    PrinterBench bench;
    std::shared_ptr<VirtualPrinter> printer;
    QSharedPointer<QSerialPort> port;
    PrintersHelper helper;
    QString id;
    hearth::Rs232PortSettings settings;

private:
    const QSharedPointer<QSerialPort> &openPort()
    {
        port.reset(new QSerialPort(printer->portPath()));
        port->open(QIODevice::ReadWrite);
        return port;
    }
};

inline const char *const modelIds[] = {
    "CUSTOM_VKP_80",    "CUSTOM_TG_2480_H", "CUSTOM_TG_2480_SE",
    "CITIZEN_PPU_700",  "CITIZEN_CBM_1000", "CITIZEN_CTS_2000",
    "CITIZEN_CPP_8001", "EPSON_EU_4XX",     "SWECOIN_TM_20XX",
    "TSP-TUP",          "AV_268",           "CITIZEN_PPU_231",
};

}  // namespace helperbench
