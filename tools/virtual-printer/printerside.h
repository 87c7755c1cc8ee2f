#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// The printer's side of a line, without the line: takes bytes, answers, and has a clock of its
/// own, which stands until it is told what time it is.
class PrinterSide
{
public:
    PrinterSide() = default;
    virtual ~PrinterSide() = default;
    PrinterSide(const PrinterSide &) = delete;
    PrinterSide &operator=(const PrinterSide &) = delete;

    /// Bytes that come in now.
    virtual void take(const QByteArray &bytes) = 0;
    /// How many bytes there is room for. What a line brings beyond it is lost.
    virtual int room() const = 0;
    /// What is to be sent by now, and wasn't taken yet.
    virtual QByteArray takeAnswers() = 0;
    /// Microseconds since the beginning. The clock never goes back.
    virtual void advanceTo(qint64 microseconds) = 0;
    /// The next time at which something happens by itself; -1: never.
    virtual qint64 nextEvent() const = 0;
    /// Lines that say what happened beside the dialogue, and weren't taken yet.
    virtual QStringList takeNotes() = 0;
};
