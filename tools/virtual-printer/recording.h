#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>
#include <optional>

/// Bytes of a session with a printer, as one side sent them.
struct RecordedPiece
{
    qint64 microseconds = 0;  ///< since the beginning
    bool fromPrinter = false;
    QByteArray bytes;

    /// A line of a recording without its end: "0.012500 host 1B 40", or "printer".
    QString toString() const;
};

/// Reads a recording: a line for each piece, its time in seconds, "host" or "printer", and bytes in
/// hexadecimal, which may stand together. Times don't go back. Empty lines and those that begin
/// with "#" say nothing. Nothing, with a message that names the line, if one is none of these.
std::optional<QVector<RecordedPiece>> readRecording(const QByteArray &text, QString *error);
