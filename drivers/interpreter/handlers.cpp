#include "interpreter/handlers_p.h"

#include <array>

namespace printerslib::drivers {

namespace {

/// Handlers by the numbers of their commands.
using HandlerTable = QVector<CommandHandler>;

void addRows(HandlerTable &table, const HandlerRows &rows)
{
    for (const HandlerRow &row : rows) {
        const int index = int(row.id);
        if (index >= table.size())
            table.resize(index + 1);
        table[index] = row.handler;
    }
}

HandlerTable tableOf(Dialect dialect)
{
    HandlerTable table;
    for (const HandlerRows &rows :
         {characterHandlers(), kanjiHandlers(), lineHandlers(), pageHandlers(), graphicsHandlers(),
          barcodeHandlers(), symbolHandlers(), mechanicsHandlers(), statusHandlers(),
          macroHandlers()})
        addRows(table, rows);
    if (dialect == Dialect::StarLine) {
        addRows(table, starHandlers());
        addRows(table, starRasterHandlers());
    }
    if (dialect == Dialect::Swecoin)
        addRows(table, swecoinHandlers());
    return table;
}

}  // namespace

CommandHandler handlerOf(Dialect dialect, CommandId id)
{
    static const std::array<HandlerTable, 3> tables = {
        tableOf(Dialect::EscPos), tableOf(Dialect::StarLine), tableOf(Dialect::Swecoin)};
    return tables.at(size_t(dialect)).value(int(id));
}

bool isSwitchedOn(const StreamCommand &command)
{
    return (command.operand(0) & 1) != 0;
}

int choiceOf(const StreamCommand &command, int index, int count)
{
    const int value = command.operand(index);
    const int number = value >= '0' ? value - '0' : value;
    return number < count ? number : -1;
}

}  // namespace printerslib::drivers
