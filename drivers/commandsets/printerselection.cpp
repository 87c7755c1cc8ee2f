#include "commandsets/printerselection_p.h"

#include "commandsets/commandrow_p.h"

namespace printerslib::drivers {

std::optional<bool> selectionBy(const StreamCommand &command)
{
    switch (command.row->id) {
        case CommandId::PrinterSelect:
            return command.row->operandCount == 0 || (command.operand(0) & 1) != 0;
        case CommandId::PrinterDeselect:
            return false;
        default:
            return std::nullopt;
    }
}

}  // namespace printerslib::drivers
