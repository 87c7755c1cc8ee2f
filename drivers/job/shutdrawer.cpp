#include "job/shutdrawer_p.h"

#include <algorithm>

#include "commandsets/commandid_p.h"
#include "commandsets/commandrow_p.h"
#include "printerslib/drivers/streamreader.h"

namespace printerslib::drivers {

namespace {

constexpr CommandId drawerCommands[] = {CommandId::Pulse, CommandId::RealTimePulse,
                                        CommandId::Drawer1, CommandId::Drawer2,
                                        CommandId::RasterDrawer};

bool opensDrawer(const StreamCommand &command)
{
    return command.row != nullptr && std::find(std::begin(drawerCommands), std::end(drawerCommands),
                                               command.row->id) != std::end(drawerCommands);
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

}  // namespace printerslib::drivers
