#include <QDebug>

#include "log/loghelper.h"
#include "printdevicefinder/printershelper_p.h"
#include "printers/textprintermodels.h"

namespace {

using namespace devicemessages;

constexpr int statusMilliseconds = 300;
constexpr int controlMilliseconds = 100;
constexpr int fillerMilliseconds = 1000;
constexpr int shortestStatus = 2;
constexpr unsigned char statusMask = 0xD1;
constexpr unsigned char statusOfAPrinter = 0x01;

void logStatus(const QByteArray &buffer)
{
    qWarning().nospace().noquote()
        << logbinary(starMode.toByteArray() + starStatus.toByteArray()) << ' ' << logbinary(buffer);
}

EntryOutcome status(PrinterDialogue &line)
{
    char buffer[16] = {};
    line.clear();
    line.write(starMode);
    line.write(starStatus);
    const int count = line.receive(statusMilliseconds, buffer, sizeof buffer);
    const QByteArray reply = QByteArray::fromRawData(buffer, sizeof buffer);
    logStatus(reply);
    if (count < shortestStatus)
        return EntryOutcome::NextEntry;
    if (reply.startsWith(starStatus.toByteArray()))
        return EntryOutcome::GiveUp;
    return (static_cast<unsigned char>(buffer[0]) & statusMask) == statusOfAPrinter
               ? EntryOutcome::Identified
               : EntryOutcome::NextEntry;
}

/// One control character and its answer, of which only the length counts.
EntryOutcome control(PrinterDialogue &line, const DeviceMessage &message)
{
    if (!line.portIsValid())
        return EntryOutcome::GiveUp;
    char answer = 0;
    line.clear();
    line.write(message);
    return line.receiveByte(controlMilliseconds, answer) ? EntryOutcome::Identified
                                                         : EntryOutcome::NextEntry;
}

EntryOutcome silenceOnText(PrinterDialogue &line, PrintersHelper &helper)
{
    char buffer[5] = {};
    line.clear();
    line.write(starFiller);
    helper.waitForReadyRead(fillerMilliseconds);
    const int count = line.read(buffer, sizeof buffer);
    if (line.portIsValid() && count < starFiller.size)
        return EntryOutcome::Identified;
    qWarning().nospace().noquote() << logbinary(QByteArray(buffer, qMax(count, 0))) << ' '
                                   << logbinary(threeFillerBytes.toByteArray());
    return EntryOutcome::NextEntry;
}

EntryOutcome identify(PrinterDialogue &line, PrintersHelper &helper)
{
    if (!line.portIsValid())
        return EntryOutcome::GiveUp;
    EntryOutcome outcome = status(line);
    if (outcome == EntryOutcome::Identified)
        outcome = control(line, enq);
    if (outcome == EntryOutcome::Identified)
        outcome = control(line, eot);
    if (outcome == EntryOutcome::Identified)
        outcome = silenceOnText(line, helper);
    return outcome;
}

}  // namespace

bool PrintersHelper::scanStar(QString &id, hearth::Rs232PortSettings &settings)
{
    PrinterDialogue line(*this, m_port.data());
    const QVector<hearth::Rs232PortSettings> kept = m_portSettings;
    m_portSettings = prepareStarSettings();
    const EntryOutcome outcome =
        walk(m_portSettings, settings, [&] { return identify(line, *this); });
    // Giving up leaves the Star list in place, for the probes after this one to walk.
    if (outcome == EntryOutcome::GiveUp)
        return false;
    m_portSettings = kept;
    if (outcome != EntryOutcome::Identified)
        return false;
    id = TextPrinterModels::MODEL_TSP_TUP;
    line.send(starCut);
    return true;
}
