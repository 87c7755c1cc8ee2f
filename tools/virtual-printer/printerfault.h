#pragma once

#include <QString>
#include <QStringList>
#include <optional>

/// Something that befalls a printer, or its line, while it works; or the repair of it.
struct PrinterFault
{
    enum Kind {
        PaperOut,
        PaperBack,  ///< a new roll, which isn't near its end
        NearEnd,
        CoverOpen,
        CoverClosed,
        CutterError,
        CutterRepaired,
        OffLine,
        OnLine,
        PowerOff,
        PowerOn,
        ResetConnection,
        AnswersLate,   ///< by `value` milliseconds
        AnswersNever,  ///< those due are lost
        AnswersAgain,  ///< as a sound printer answers
        Swallow,       ///< the next `value` bytes that come in are lost on the line
        Change,        ///< the next `value` bytes that come in are others than were sent
    };
    Kind kind = PaperOut;
    int value = 0;

    /// As it is written in commands, such as "swallow 12".
    QString toString() const;
};

/// Reads what toString() gives. Nothing, with a message, if it is no such text.
std::optional<PrinterFault> printerFault(const QString &text, QString *error);
/// A line for each kind: how it is written, and what it does.
QStringList printerFaultHelp();

/// A fault and when it comes.
struct PlannedFault
{
    enum Clock { Microseconds, Bytes };
    Clock clock = Microseconds;
    qint64 at = 0;  ///< by the printer's clock, or behind so many bytes that came in
    PrinterFault fault;
};

/// Reads "SECONDS:FAULT", such as "1.5:paper out", or "byte N:FAULT". Nothing, with a message, if
/// it is no such text.
std::optional<PlannedFault> plannedFault(const QString &text, QString *error);
