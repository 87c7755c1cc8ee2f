#pragma once

#include <QByteArray>
#include <QFlags>
#include <QMetaType>
#include <QString>

#include "printerslib/drivers/drivers_export.h"
#include "printsrvstate/printservicestate.h"
#include "printsrvstate/txtprintererror.h"

namespace printerslib::drivers {

/// What a printer has told of itself: its paper, cover, cutter and errors.
///
/// A plain value; one object is used by one thread at a time. No operation fails. A client
/// publishes it with
/// `PrintServiceStateCorvidWrapper(status.toServiceState(service)).toClientState()`.
class PRINTERSLIB_DRIVERS_EXPORT PrinterStatus
{
public:
    /// What is the matter. Of these the first eight keep it from printing.
    enum Flag : quint16 {
        PaperOut = 0x001,            ///< there is no paper
        CoverOpen = 0x002,           ///< the cover is open, or the head lifted
        CutterError = 0x004,         ///< the cutter is stuck
        RecoverableError = 0x008,    ///< goes by itself, as a hot head's, or when somebody mends it
        UnrecoverableError = 0x010,  ///< needs it to be switched off and on, or service
        OffLine = 0x020,             ///< takes no data now, for one of the above or by its button
        NoAnswer = 0x040,            ///< was asked and didn't answer; the one who asked sets it
        DataLost = 0x080,            ///< what was sent came damaged, or found no room
        PaperNearEnd = 0x100,        ///< the roll is nearly used up; prints nevertheless
        PaperInPresenter = 0x200,    ///< a ticket hasn't been taken yet
        PrintDataExists = 0x400,     ///< not all that was sent is printed
        PowerWasOff = 0x800,         ///< was switched on anew since it was asked last
    };
    Q_DECLARE_FLAGS(Flags, Flag)

    /// A printer of which nothing is known.
    PrinterStatus() = default;
    /// @param native the bytes of its answers
    /// @param isKnown whether all questions were answered; else `flags` is what is known by now
    explicit PrinterStatus(Flags flags, const QByteArray &native = QByteArray(),
                           bool isKnown = true);

    /// Whether the printer has told its whole status.
    bool isKnown() const;
    /// All that is the matter.
    Flags flags() const;
    /// Whether something is.
    bool has(Flag flag) const;
    /// The same status with something more the matter, such as NoAnswer.
    PrinterStatus with(Flags more) const;

    /// The bytes of the printer's answers, in the order of the questions, empty if there were none.
    /// DLE EOT: one for each n from 1 on. Automatic status: all four; of Star without the two of
    /// the header. Swecoin: the status code, 0 for none, and the two bytes of ESC ENQ 6.
    QByteArray native() const;
    /// The first four of these bytes, the first of them the highest; 0 if there are none.
    unsigned int nativeCode() const;

    /// Whether its whole status is known and nothing in it keeps it from printing. Paper that is
    /// near its end doesn't.
    bool canPrint() const;
    /// Sentences for the user, in English, the gravest first: "There is no paper. The cover is
    /// open." Never empty.
    QString text() const;

    /// The same as an error of a text printer, with a text if it has flags. True is what keeps the
    /// printer from printing; docs/printing.md has the numbers.
    TxtPrinterError toTxtPrinterError() const;
    /// The same as a record for the message bus. The device's state is normal, a warning, critical
    /// or fatal; not set unless all is known or something keeps it from printing. Its error code is
    /// that of toTxtPrinterError(), its native code nativeCode().
    /// @param service how the service itself does
    PrintServiceState toServiceState(PrintServiceState::EServiceState service) const;

    /// Compares all: flags, bytes, and whether it is known.
    bool operator==(const PrinterStatus &other) const;
    bool operator!=(const PrinterStatus &other) const;  ///< the opposite

private:
    Flags m_flags;
    QByteArray m_native;
    bool m_isKnown = false;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(PrinterStatus::Flags)

}  // namespace printerslib::drivers

Q_DECLARE_METATYPE(printerslib::drivers::PrinterStatus)
