#pragma once

#include <QByteArray>
#include <QVector>

#include "printerslib/drivers/documentencoder.h"
#include "printerslib/drivers/printerprofile.h"

namespace printerslib::drivers {

/// What goes over the line for a document: its bytes, and behind the command that resets, which
/// would undo them, those of the job itself. Offsets are in this stream unless it is said.
class JobStream
{
public:
    JobStream(const EncodedDocument &document, const PrinterProfile &profile);

    /// Puts bytes behind the first command, if that resets, else in front of all; once.
    void insert(const QByteArray &bytes);

    qint64 size() const { return m_bytes.size(); }
    QByteArray part(qint64 begin, qint64 end) const;
    /// How many bytes of the document stand in front of an offset.
    qint64 documentBytes(qint64 offset) const;
    /// The end of the command in which an offset is; the offset itself between two of them.
    qint64 commandEnd(qint64 offset) const;
    /// Where what begins at `begin` is best cut, at `end` at the latest: in front of the command
    /// that is within there, unless that begins no later.
    qint64 pieceEnd(qint64 begin, qint64 end) const;
    /// Zero bytes that complete any command which is cut off from `begin` to `end`.
    int fillBetween(qint64 begin, qint64 end) const;
    /// Where a byte of the document stands in it.
    EncodedDocument::Mark place(qint64 documentByte) const;

    /// The bytes that have a printer obey again that was told to leave the line to another device.
    static QByteArray selecting(const PrinterProfile &profile);
    /// The bytes that reset a printer, feed what hangs in it to the cutter, cut it and hand it out.
    static QByteArray closing(const PrinterProfile &profile);

private:
    struct Span
    {
        qint64 begin;
        qint64 end;
    };
    /// The command that an offset is within, or the next one.
    const Span *spanAt(qint64 offset) const;

    QByteArray m_bytes;
    QVector<EncodedDocument::Mark> m_marks;
    QVector<Span> m_commands;  ///< longer than a byte, in their order
    qint64 m_resetEnd = 0;     ///< of the first command, if that resets
    qint64 m_inserted = 0;
};

}  // namespace printerslib::drivers
