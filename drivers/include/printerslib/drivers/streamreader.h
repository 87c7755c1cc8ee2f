#pragma once

#include <QByteArray>
#include <QScopedPointer>
#include <QVector>

#include "printerslib/drivers/drivers_export.h"
#include "printerslib/drivers/printerprofile.h"
#include "printerslib/drivers/streamcommand.h"

namespace printerslib::drivers {

/// Cuts a printer's stream into commands and texts, as they come in.
///
/// Any bytes are a stream: none is an error. What is kept is the command that isn't whole yet, 64
/// MiB of it at most; so much of a longer one is given up as incomplete, and what follows is read
/// on. A command takes at most 200 bytes of memory for each of its bytes. One thread at a time.
class PRINTERSLIB_DRIVERS_EXPORT StreamReader
{
public:
    explicit StreamReader(const PrinterProfile &profile);  ///< for its dialect
    ~StreamReader();
    StreamReader(const StreamReader &) = delete;
    StreamReader &operator=(const StreamReader &) = delete;

    /// Takes bytes and gives the commands that are whole by now. A text ends with the bytes, so
    /// texts of two calls may belong together.
    QVector<StreamCommand> read(const QByteArray &bytes);
    /// The end of the stream: what is left, as an incomplete command. The next read() begins anew.
    QVector<StreamCommand> finish();

    /// All commands of a whole stream.
    static QVector<StreamCommand> commandsOf(const QByteArray &stream,
                                             const PrinterProfile &profile);

private:
    class State;
    QScopedPointer<State> d;
};

}  // namespace printerslib::drivers
