#pragma once

#include <QVector>

#include "printerslib/drivers/streamcommand.h"

/// Commands with texts that follow each other as one: a stream that is read in pieces has more of
/// them.
inline QVector<printerslib::drivers::StreamCommand> joined(
    const QVector<printerslib::drivers::StreamCommand> &commands)
{
    using printerslib::drivers::StreamCommand;
    QVector<StreamCommand> made;
    for (const StreamCommand &command : commands) {
        const bool goesOn = command.kind == StreamCommand::Text && !made.isEmpty() &&
                            made.last().kind == StreamCommand::Text;
        if (goesOn)
            made.last().bytes += command.bytes;
        else
            made.append(command);
    }
    return made;
}
