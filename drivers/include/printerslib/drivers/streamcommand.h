#pragma once

#include <QByteArray>
#include <QVector>

#include "printerslib/drivers/drivers_export.h"

namespace printerslib::drivers {

struct CommandRow;  // what a dialect's manual says of one command; drivers/commandsets

/// A piece of a printer's stream. The pieces of a stream stand one behind the other without gaps:
/// their bytes, put together, are the stream.
struct PRINTERSLIB_DRIVERS_EXPORT StreamCommand
{
    /// What a piece is.
    enum Kind {
        Text,        ///< a run of bytes that print
        Command,     ///< one that its row describes
        Skipped,     ///< one that isn't known but carries its length; whole
        Unknown,     ///< an introducer and a byte, or a control character, that begin nothing known
        Incomplete,  ///< one that the end of the stream cuts off
    };

    /// A command that acts at once, found inside the data of this one.
    struct RealTime
    {
        qint64 offset = 0;                ///< from the start of the stream
        const CommandRow *row = nullptr;  ///< never null
        QByteArray bytes;                 ///< all of it
        bool isSwitchedOff = false;       ///< by GS ( D, so it does nothing
    };

    Kind kind = Text;   ///< what it is
    qint64 offset = 0;  ///< from the start of the stream
    QByteArray bytes;   ///< all of it, introducer and data among them
    /// Null in texts, and where nothing is known. Incomplete: of several that begin so the first.
    const CommandRow *row = nullptr;
    int operandsBegin = 0;       ///< of `bytes`: behind the introducer
    int payloadBegin = 0;        ///< behind the single operands
    qint64 bytesExpected = 0;    ///< Incomplete: how long the whole would be; 0: not known
    bool isSwitchedOff = false;  ///< by GS ( D, so it does nothing
    QVector<RealTime> realTime;  ///< in the order of their offsets

    /// A single operand, in the row's order; 0 where there is none.
    int operand(int index) const
    {
        const int at = operandsBegin + index;
        return at < payloadBegin && at < bytes.size() ? static_cast<unsigned char>(bytes.at(at))
                                                      : 0;
    }
    /// Two neighbouring operands, the low one first.
    int word(int index) const { return operand(index) + 256 * operand(index + 1); }
    /// The data behind the operands, without a copy: valid as long as `bytes`.
    QByteArray payload() const
    {
        const int size = qMax(0, bytes.size() - payloadBegin);
        return QByteArray::fromRawData(bytes.constData() + bytes.size() - size, size);
    }
};

}  // namespace printerslib::drivers
