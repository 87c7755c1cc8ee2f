#include "log/loghelper.h"
#include "printdevicefinder/printershelper_p.h"
#include "printdevicefinder/searchprinters_p.h"
#include "printers/textprintermodels.h"

namespace {

using namespace devicemessages;

constexpr int answerMilliseconds = 1000;
constexpr int statusRequests = 3;
constexpr int baudRate = 115200;
constexpr int bufferSize = 5;

bool answersStatusRequests(PrinterDialogue &line, char (&buffer)[bufferSize])
{
    for (int i = 0; i < statusRequests; ++i) {
        line.write(statusRequest);
        if (line.receive(answerMilliseconds, buffer, bufferSize) != 1)
            return false;
        line.logRead(QByteArray(buffer, 1));
    }
    return true;
}

bool silentOnFiller(PrinterDialogue &line, char (&buffer)[bufferSize])
{
    line.write(fourFillerBytes);
    if (!line.portIsValid() || line.receive(answerMilliseconds, buffer, bufferSize) > 0)
        return false;
    line.logRead(QByteArray(buffer, bufferSize));
    return true;
}

}  // namespace

bool PrintersHelper::scanAV268(QString &id, hearth::Rs232PortSettings &settings)
{
    PrinterDialogue line(*this, m_port.data());
    qCDebug(SEARCH_PRINTERS).noquote() << line.portLabel();
    settings.setBaudRate(baudRate);
    settings.setDataBits(QSerialPort::Data8);
    settings.setStopBits(QSerialPort::OneStop);
    settings.setParity(QSerialPort::NoParity);
    settings.setFlowControl(QSerialPort::SoftwareControl);
    setPortSettings(settings);
    if (!line.portIsValid())
        return false;
    char buffer[bufferSize] = {};
    line.clear();
    if (!answersStatusRequests(line, buffer) || !silentOnFiller(line, buffer))
        return false;
    id = TextPrinterModels::MODEL_AV_268;
    line.send(cut);
    return true;
}
