#include "log/loghelper.h"
#include "printdevicefinder/printershelper_p.h"
#include "printdevicefinder/searchprinters_p.h"
#include "printers/textprintermodels.h"

namespace {

using namespace devicemessages;

constexpr int answerMilliseconds = 1000;
constexpr int fastestBaudRate = 19200;
constexpr int bufferSize = 5;
constexpr unsigned char otherPrinterBit = 0x10;
constexpr int portIsGone = -1;

/// Sends a message and gives the number of bytes of the answer.
int exchange(PrinterDialogue &line, PrintersHelper &helper, const DeviceMessage &message,
             char (&buffer)[bufferSize])
{
    if (!line.portIsValid())
        return portIsGone;
    line.write(message);
    helper.waitForReadyRead(answerMilliseconds);
    return line.portIsValid() ? qMax(line.read(buffer, bufferSize), 0) : portIsGone;
}

void logIncorrectData(const char (&buffer)[bufferSize])
{
    qCDebug(SEARCH_PRINTERS).nospace().noquote()
        << PrintersHelper::tr("incorrect data") << ' ' << logbinary(QByteArray(buffer, bufferSize));
}

bool answersStatusRequest(PrinterDialogue &line, PrintersHelper &helper, char (&buffer)[bufferSize])
{
    const int count = exchange(line, helper, statusRequest, buffer);
    if (count == 0)
        qCDebug(SEARCH_PRINTERS).noquote() << PrintersHelper::tr("timeout");
    else if (count > 1)
        logIncorrectData(buffer);
    return count == 1;
}

bool silentOnFiller(PrinterDialogue &line, PrintersHelper &helper, char (&buffer)[bufferSize])
{
    const int count = exchange(line, helper, threeFillerBytes, buffer);
    if (count > 0)
        logIncorrectData(buffer);
    return count == 0;
}

EntryOutcome identify(PrinterDialogue &line, PrintersHelper &helper)
{
    char buffer[bufferSize] = {};
    if (!answersStatusRequest(line, helper, buffer) || !answersStatusRequest(line, helper, buffer))
        return EntryOutcome::NextEntry;
    const auto deviceStatus = static_cast<unsigned char>(buffer[0]);
    if (!silentOnFiller(line, helper, buffer))
        return EntryOutcome::NextEntry;
    const bool isOurs = line.portIsValid() && line.baudRate() <= fastestBaudRate &&
                        (deviceStatus & otherPrinterBit) == 0;
    return isOurs ? EntryOutcome::Identified : EntryOutcome::NextEntry;
}

}  // namespace

bool PrintersHelper::scanSimple(QString &id, hearth::Rs232PortSettings &settings)
{
    PrinterDialogue line(*this, m_port.data());
    const EntryOutcome outcome = walk(
        m_portSettings, settings, [&] { return identify(line, *this); }, fastestBaudRate);
    if (outcome != EntryOutcome::Identified)
        return false;
    id = TextPrinterModels::MODEL_CITIZEN_PPU_231;
    line.send(cut);
    return true;
}
