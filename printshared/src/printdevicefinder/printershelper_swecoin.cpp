#include "printdevicefinder/printershelper_p.h"
#include "printdevicefinder/searchprinters_p.h"
#include "printers/textprintermodels.h"

namespace {

using namespace devicemessages;

constexpr int answerMilliseconds = 1400;
constexpr char ack = 0x06;
constexpr char nak = 0x15;
constexpr char deviceControl1 = 0x11;
constexpr char deviceControl2 = 0x12;

bool firmwareAnswered(PrinterDialogue &line)
{
    char version[6] = {};
    constexpr int versionSize = 2;
    line.clear();
    line.sendLogged(swecoinFirmware);
    const int count = line.receive(answerMilliseconds, version, versionSize);
    if (count > 0)
        line.logRead(QByteArray(version, count));
    if (count != versionSize)
        return false;
    qCDebug(SEARCH_PRINTERS).noquote()
        << QStringLiteral("FIRMWARE: %1.%2")
               .arg(static_cast<int>(static_cast<signed char>(version[0])))
               .arg(static_cast<int>(static_cast<signed char>(version[1])));
    return true;
}

bool acknowledged(PrinterDialogue &line)
{
    char answer = 0;
    line.sendLogged(swecoinStep2);
    if (!line.receiveByte(answerMilliseconds, answer))
        return false;
    if (answer == nak) {
        line.dropInput();
        line.clear();
    }
    return answer == ack || answer == nak;
}

bool answersWith(PrinterDialogue &line, const DeviceMessage &message, char expected)
{
    char answer = 0;
    line.sendLogged(message);
    return line.receiveByte(answerMilliseconds, answer) && answer == expected;
}

EntryOutcome identify(PrinterDialogue &line)
{
    if (!line.portIsValid())
        return EntryOutcome::GiveUp;
    if (firmwareAnswered(line) && acknowledged(line) &&
        answersWith(line, swecoinStep3, deviceControl1) &&
        answersWith(line, swecoinStep4, deviceControl2))
        return EntryOutcome::Identified;
    return line.portIsValid() ? EntryOutcome::NextEntry : EntryOutcome::GiveUp;
}

}  // namespace

bool PrintersHelper::scanSwecoin(QString &id, hearth::Rs232PortSettings &settings)
{
    PrinterDialogue line(*this, m_port.data());
    if (walk(m_portSettings, settings, [&] { return identify(line); }) != EntryOutcome::Identified)
        return false;
    id = TextPrinterModels::MODEL_SWECOIN_TM_20XX;
    return true;
}
