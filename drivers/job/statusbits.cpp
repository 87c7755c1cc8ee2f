#include "job/statusbits_p.h"

namespace printerslib::drivers {

namespace {

using Question = StatusQuestion;
using Status = PrinterStatus;

/// Whose answers a row is of.
enum class Of : quint8 {
    All,
    AllButCitizen,  ///< and Star
    Citizen,
    CitizenPresenter,  ///< those with one
    Star,
    StarPresenter,
    AllButStar,
};

/// A bit of an answer, or several that mean the same, each by itself.
struct BitRow
{
    Question question;
    quint8 at;  ///< index of the byte
    quint8 bits;
    Status::Flag flag;
    Of of = Of::All;
};

/// Epson: ESC/POS command reference, TM printers; TM-T88III specification, appendix G. Citizen:
/// PPU-700 1.11, CT-S2000 0.04, CBM-1000. Custom: DLE EOT of the KPM150's and the VKP80II's command
/// references. Star: Line Mode Command Specifications, chapter 5. Swecoin: TTP 2000, P1002902-002.
constexpr BitRow bitRows[] = {
    {Question::Printer, 0, 0x08, Status::OffLine},

    {Question::OffLineCause, 0, 0x04, Status::CoverOpen},
    {Question::OffLineCause, 0, 0x08, Status::OffLine},  // somebody feeds paper by the button
    {Question::OffLineCause, 0, 0x20, Status::PaperOut},
    {Question::OffLineCause, 0, 0x40, Status::OffLine},  // an error, of which DLE EOT 3 tells

    // Of Citizen's printers the older ones leave this bit open, here and in the automatic status.
    {Question::Errors, 0, 0x04, Status::RecoverableError, Of::AllButCitizen},
    {Question::Errors, 0, 0x04, Status::RecoverableError, Of::CitizenPresenter},
    {Question::Errors, 0, 0x08, Status::CutterError},
    {Question::Errors, 0, 0x20, Status::UnrecoverableError},
    {Question::Errors, 0, 0x40, Status::RecoverableError},  // the hot head

    // One sensor has two bits; a PPU-700 has another in the second of them.
    {Question::Paper, 0, 0x0C, Status::PaperNearEnd},
    {Question::Paper, 0, 0x60, Status::PaperOut, Of::AllButCitizen},
    {Question::Paper, 0, 0x20, Status::PaperOut, Of::Citizen},
    {Question::Paper, 0, 0x40, Status::PaperInPresenter, Of::CitizenPresenter},

    {Question::ErrorDetails, 0, 0x04, Status::CoverOpen},
    {Question::ErrorDetails, 0, 0x08, Status::RecoverableError},      // the hot head
    {Question::ErrorDetails, 0, 0x60, Status::UnrecoverableError},    // the voltage
    {Question::MoreErrorDetails, 0, 0x20, Status::RecoverableError},  // the presenter
    {Question::MoreErrorDetails, 0, 0x4C, Status::UnrecoverableError},

    {Question::FullStatus, 2, 0x01, Status::PaperOut},
    {Question::FullStatus, 2, 0x44, Status::PaperNearEnd},  // the sensor, the length that was set
    {Question::FullStatus, 2, 0x20, Status::PaperInPresenter},
    {Question::FullStatus, 3, 0x03, Status::CoverOpen},  // the head up, the cover open
    {Question::FullStatus, 3, 0x04, Status::PrintDataExists},
    {Question::FullStatus, 4, 0x02, Status::DataLost},          // on the serial line
    {Question::FullStatus, 4, 0xC9, Status::RecoverableError},  // head, voltage, jam, notch
    {Question::FullStatus, 5, 0x01, Status::CutterError},
    {Question::FullStatus, 5, 0x02, Status::CoverOpen},
    {Question::FullStatus, 5, 0x0C, Status::UnrecoverableError},

    {Question::BufferRead, 0, 0x03, Status::PaperNearEnd},
    {Question::BufferRead, 0, 0x0C, Status::PaperOut, Of::AllButCitizen},
    {Question::BufferRead, 0, 0x04, Status::PaperOut, Of::Citizen},

    {Question::Automatic, 0, 0x48, Status::OffLine, Of::AllButStar},
    {Question::Automatic, 0, 0x20, Status::CoverOpen, Of::AllButStar},
    {Question::Automatic, 1, 0x04, Status::RecoverableError, Of::AllButCitizen},
    {Question::Automatic, 1, 0x04, Status::RecoverableError, Of::CitizenPresenter},
    {Question::Automatic, 1, 0x40, Status::RecoverableError, Of::AllButStar},
    {Question::Automatic, 1, 0x08, Status::CutterError, Of::AllButStar},
    {Question::Automatic, 1, 0x20, Status::UnrecoverableError, Of::AllButStar},
    {Question::Automatic, 2, 0x03, Status::PaperNearEnd, Of::AllButStar},
    {Question::Automatic, 2, 0x04, Status::PaperOut, Of::AllButStar},
    {Question::Automatic, 2, 0x08, Status::PaperOut, Of::AllButCitizen},

    {Question::Automatic, 2, 0x48, Status::OffLine, Of::Star},
    {Question::Automatic, 2, 0x20, Status::CoverOpen, Of::Star},
    {Question::Automatic, 3, 0x44, Status::RecoverableError, Of::Star},  // mechanics, the hot head
    {Question::Automatic, 3, 0x08, Status::CutterError, Of::Star},
    {Question::Automatic, 3, 0x20, Status::UnrecoverableError, Of::Star},
    {Question::Automatic, 4, 0x02, Status::CoverOpen, Of::Star},         // the head up
    {Question::Automatic, 4, 0x0C, Status::RecoverableError, Of::Star},  // presenter, black mark
    {Question::Automatic, 4, 0x40, Status::DataLost, Of::Star},          // no room in the buffer
    {Question::Automatic, 5, 0x06, Status::PaperNearEnd, Of::Star},
    {Question::Automatic, 5, 0x08, Status::PaperOut, Of::Star},
    {Question::Automatic, 6, 0x02, Status::PaperInPresenter, Of::StarPresenter},

    {Question::Sensors, 0, 0x40, Status::PrintDataExists},
    {Question::Sensors, 0, 0x20, Status::PowerWasOff},
    {Question::Sensors, 0, 0x08, Status::RecoverableError},  // the black mark
    {Question::Sensors, 1, 0x01, Status::PaperOut},
    {Question::Sensors, 1, 0x02, Status::PaperNearEnd},
    {Question::Sensors, 1, 0x08, Status::PaperInPresenter},
    {Question::Sensors, 1, 0x10, Status::CutterError},
    {Question::Sensors, 1, 0x20, Status::CoverOpen},
};

/// A code behind the NAK of ESC ENQ 1. One that isn't here is of a later firmware.
struct CodeRow
{
    quint8 code;
    Status::Flags flags;
};

constexpr quint8 retractedUntaken = 0x10;

const CodeRow codeRows[] = {
    {0x02, Status::CutterError | Status::UnrecoverableError},  // needs a reset
    {0x03, Status::PaperOut},
    {0x04, Status::CoverOpen},           // the head is lifted
    {0x05, Status::UnrecoverableError},  // paper round the platen: needs a reset
    {0x0D, Status::UnrecoverableError},  // 0D to 0F: the firmware
    {0x0E, Status::UnrecoverableError},
    {0x0F, Status::UnrecoverableError},
    {retractedUntaken, {}},
};

Status::Flags flagsOfCode(const QByteArray &bytes)
{
    if (bytes.size() < 2)
        return {};
    const auto code = static_cast<quint8>(bytes.at(1));
    for (const CodeRow &row : codeRows) {
        if (row.code == code)
            return row.flags;
    }
    return Status::RecoverableError;
}

bool isOf(Of of, const PrinterProfile &profile)
{
    const bool isStar = profile.dialect() == Dialect::StarLine;
    const bool isCitizen = profile.vendor() == Vendor::Citizen;
    switch (of) {
        case Of::All:
            return true;
        case Of::AllButCitizen:
            return !isCitizen && !isStar;
        case Of::Citizen:
            return isCitizen;
        case Of::CitizenPresenter:
            return isCitizen && profile.presenter() == Presenter::Citizen;
        case Of::Star:
            return isStar;
        case Of::StarPresenter:
            return isStar && profile.presenter() == Presenter::Star;
        case Of::AllButStar:
            return !isStar;
    }
    return false;
}

/// Calls `act` with the rows of a question that are of this printer.
template <typename Act>
void forBitRows(StatusQuestion question, const PrinterProfile &profile, Act act)
{
    for (const BitRow &row : bitRows) {
        if (row.question == question && isOf(row.of, profile))
            act(row);
    }
}

}  // namespace

PrinterStatus::Flags flagsOfAnswer(StatusQuestion question, const QByteArray &bytes,
                                   const PrinterProfile &profile)
{
    if (question == Question::StatusCode)
        return flagsOfCode(bytes);
    Status::Flags flags;
    forBitRows(question, profile, [&](const BitRow &row) {
        if (row.at < bytes.size() && (static_cast<quint8>(bytes.at(row.at)) & row.bits) != 0)
            flags |= row.flag;
    });
    return flags;
}

PrinterStatus::Flags flagsToldBy(StatusQuestion question, const PrinterProfile &profile)
{
    if (question == Question::StatusCode)
        return Status::CutterError | Status::PaperOut | Status::CoverOpen |
               Status::RecoverableError | Status::UnrecoverableError;
    Status::Flags flags;
    forBitRows(question, profile, [&flags](const BitRow &row) { flags |= row.flag; });
    return flags;
}

int etbCounterOf(const QByteArray &starStatus)
{
    constexpr int etbByte = 7;
    if (starStatus.size() <= etbByte)
        return -1;
    // Bits 0 to 2 stand in bits 1 to 3, bits 3 and 4 in bits 5 and 6.
    const unsigned int byte = static_cast<quint8>(starStatus.at(etbByte));
    return static_cast<int>((byte >> 1U & 0x07U) | (byte >> 2U & 0x18U));
}

}  // namespace printerslib::drivers
