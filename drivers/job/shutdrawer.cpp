#include "job/shutdrawer_p.h"

#include <algorithm>

#include "commandsets/commandid_p.h"
#include "commandsets/commandrow_p.h"
#include "printerslib/drivers/streamreader.h"

namespace printerslib::drivers {

namespace {

// A receipt's first bytes tell that it is one.
constexpr int readAtOnce = 4096;

constexpr CommandId drawerCommands[] = {CommandId::Pulse, CommandId::RealTimePulse,
                                        CommandId::Drawer1, CommandId::Drawer2,
                                        CommandId::RasterDrawer};

bool opensDrawer(const StreamCommand &command)
{
    return command.row != nullptr && std::find(std::begin(drawerCommands), std::end(drawerCommands),
                                               command.row->id) != std::end(drawerCommands);
}

/// Of bytes without marks nobody knows what they print.
bool mayPrint(const StreamCommand &command, const EncodedDocument &document)
{
    return command.row == nullptr || (document.marks.isEmpty() && !opensDrawer(command));
}

}  // namespace

EncodedDocument withDrawerShut(const EncodedDocument &document, const PrinterProfile &profile)
{
    EncodedDocument shut = document;
    const QVector<StreamCommand> commands = StreamReader::commandsOf(document.bytes, profile);
    // From the end on, so that the offsets in front stay.
    for (auto command = commands.crbegin(); command != commands.crend(); ++command) {
        if (!opensDrawer(*command))
            continue;
        const int size = command->bytes.size();
        shut.bytes.remove(int(command->offset), size);
        for (EncodedDocument::Mark &mark : shut.marks) {
            if (mark.offset > command->offset)
                mark.offset -= size;
        }
    }
    return shut;
}

bool opensDrawerAlone(const EncodedDocument &document, const PrinterProfile &profile)
{
    const bool hasRows =
        std::any_of(document.marks.begin(), document.marks.end(),
                    [](const EncodedDocument::Mark &mark) { return mark.block > 0; });
    if (hasRows)
        return false;
    StreamReader reader(profile);
    bool isOpened = false;
    const int size = document.bytes.size();
    for (int begin = 0; begin < size + readAtOnce; begin += readAtOnce) {
        const QVector<StreamCommand> commands =
            begin < size ? reader.read(document.bytes.mid(begin, readAtOnce)) : reader.finish();
        for (const StreamCommand &command : commands) {
            if (mayPrint(command, document))
                return false;
            isOpened = isOpened || opensDrawer(command);
        }
    }
    return isOpened;
}

}  // namespace printerslib::drivers
