#pragma once

#include <printerslib/drivers/printerprofile.h>

#include <QByteArray>

/// What a printer's sensors and switches say.
struct PrinterHardware
{
    bool hasPaper = true;
    bool isNearEnd = false;
    bool isCoverOpen = false;
    bool isCutterJammed = false;
    bool isSwitchedOffLine = false;
    bool isPowered = true;

    /// Whether the head stands still: what is in the buffer stays there.
    bool isStopped() const
    {
        return !hasPaper || isCoverOpen || isCutterJammed || isSwitchedOffLine || !isPowered;
    }
    /// Whether the sensor of the roll's end sees no paper.
    bool seesNearEnd() const { return isNearEnd || !hasPaper; }
};

/// The bytes that tell of it, by the printers' manuals.
namespace statusbytes {

/// DLE EOT n of 1 to 4. Empty for another n.
QByteArray realTimeStatus(int n, const PrinterHardware &hardware);
/// DLE EOT 20 of Custom's printers.
QByteArray fullStatus(const PrinterHardware &hardware);
/// The paper's sensors in one byte, as ESC v and GS r 1 tell them.
QByteArray paperStatus(const PrinterHardware &hardware);
/// The four bytes that GS a switches on.
QByteArray automaticStatus(const PrinterHardware &hardware);
/// Which bits of the four bytes are told of by GS a n.
QByteArray automaticStatusMask(int n);
/// Star's automatic status: nine bytes.
/// @param marks of ETB, counted
QByteArray starStatus(const PrinterHardware &hardware, int marks, bool hasOverflown);
/// ESC ENQ 1 of Swecoin: ACK, or NAK and a code.
QByteArray swecoinError(const PrinterHardware &hardware);
/// ESC ENQ 6 of Swecoin: two bytes.
/// @param hasPrintData whether not all that came is on the paper
/// @param wasOff since the last answer
QByteArray swecoinStatus(const PrinterHardware &hardware, bool hasPrintData, bool wasOff);
/// GS I n. Empty for an n that the model doesn't answer.
QByteArray identification(int n, const printerslib::drivers::PrinterProfile &profile);

}  // namespace statusbytes
