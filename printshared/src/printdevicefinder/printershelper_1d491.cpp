#include <algorithm>
#include <iterator>

#include "log/loghelper.h"
#include "printdevicefinder/printershelper_p.h"
#include "printdevicefinder/searchprinters_p.h"
#include "printers/textprintermodels.h"

namespace {

using namespace devicemessages;

constexpr int answerMilliseconds = 300;

struct ClosingStep
{
    const DeviceMessage *message;
    bool flushed;
};

constexpr ClosingStep spacingAndCut[] = {{&lineSpacing, true}, {&cut, true}};
constexpr ClosingStep epsonClosing[] = {{&epsonCut, true}};
constexpr ClosingStep feedClosing[] = {{&feedAndCut, true}};
constexpr ClosingStep ejectClosing[] = {{&cut, false}, {&sevenBlankLines, true}, {&eject, true}};
constexpr ClosingStep tg2480Closing[] = {{&customClosing, true}};

struct IdentificationRow
{
    unsigned char answer;
    const QString *model;
    const ClosingStep *closing;
    int closingSteps;
};

template <std::size_t Size>
constexpr IdentificationRow row(unsigned char answer, const QString &model,
                                const ClosingStep (&closing)[Size])
{
    return {answer, &model, closing, static_cast<int>(Size)};
}

constexpr IdentificationRow identifications[] = {
    row(0x20, TextPrinterModels::MODEL_CITIZEN_CPP_8001, spacingAndCut),
    row(0x27, TextPrinterModels::MODEL_EPSON_EU_4XX, epsonClosing),
    row(0x30, TextPrinterModels::MODEL_CITIZEN_CBM_1000, spacingAndCut),
    {0x3D, nullptr, nullptr, 0},  // a printer, but none with an identifier
    row(0x51, TextPrinterModels::MODEL_CITIZEN_CTS_2000, feedClosing),
    row(0x5D, TextPrinterModels::MODEL_CUSTOM_VKP_80, ejectClosing),
    row(0x5E, TextPrinterModels::MODEL_CUSTOM_VKP_80, ejectClosing),
    row(0x75, TextPrinterModels::MODEL_CITIZEN_PPU_700, spacingAndCut),
    row(0x93, TextPrinterModels::MODEL_CUSTOM_TG_2480_SE, tg2480Closing),
    row(0xA7, TextPrinterModels::MODEL_CUSTOM_TG_2480_H, tg2480Closing),
    row(0xA8, TextPrinterModels::MODEL_CUSTOM_TG_2480_H, tg2480Closing),
};

/// Asks for the identification, by request B if there is no answer to request A.
EntryOutcome ask(PrinterDialogue &line, char &answer)
{
    answer = 0;
    line.sendLogged(idRequestA);
    if (line.receiveByte(answerMilliseconds, answer))
        return EntryOutcome::Identified;
    if (!line.portIsValid())
        return EntryOutcome::GiveUp;
    line.sendLogged(idRequestB);
    return line.receiveByte(answerMilliseconds, answer) ? EntryOutcome::Identified
                                                        : EntryOutcome::NextEntry;
}

EntryOutcome conclude(PrinterDialogue &line, char answer, QString &id)
{
    const auto *const found = std::find_if(
        std::begin(identifications), std::end(identifications),
        [answer](const auto &r) { return r.answer == static_cast<unsigned char>(answer); });
    if (found == std::end(identifications)) {
        qCDebug(SEARCH_PRINTERS).nospace().noquote()
            << line.portLabel() << " read: " << logbinary(QByteArray(1, answer)) << ' '
            << line.baudRate();
        return EntryOutcome::NextEntry;
    }
    if (found->model != nullptr)
        id = *found->model;
    for (int i = 0; i < found->closingSteps; ++i) {
        line.write(*found->closing[i].message);
        if (found->closing[i].flushed)
            line.flush();
    }
    return EntryOutcome::Identified;
}

EntryOutcome identify(PrinterDialogue &line, QString &id)
{
    if (!line.portIsValid())
        return EntryOutcome::GiveUp;
    line.clear();
    char first = 0;
    const EntryOutcome firstPass = ask(line, first);
    if (firstPass != EntryOutcome::Identified)
        return firstPass;
    if (!line.portIsValid())
        return EntryOutcome::GiveUp;
    char second = 0;
    const EntryOutcome secondPass = ask(line, second);
    if (secondPass != EntryOutcome::Identified)
        return secondPass;
    // A line with noise on it may give any byte once, but hardly the same one twice.
    return first == second ? conclude(line, first, id) : EntryOutcome::NextEntry;
}

}  // namespace

bool PrintersHelper::scan1D491(QString &id, hearth::Rs232PortSettings &settings)
{
    PrinterDialogue line(*this, m_port.data());
    return walk(m_portSettings, settings, [&] { return identify(line, id); }) ==
           EntryOutcome::Identified;
}

bool PrintersHelper::scan1B73(QString &id, hearth::Rs232PortSettings &settings)
{
    Q_UNUSED(id)
    Q_UNUSED(settings)
    return false;
}
