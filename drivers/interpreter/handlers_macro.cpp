#include "interpreter/handlers_macro_p.h"
#include "interpreter/handlers_p.h"

namespace printerslib::drivers {

namespace {

constexpr int mostMacroBytes = 2048;
// A few bytes ask for 255 times the macro: what is played stays within a multiple of the stream.
constexpr qint64 bytesPlayedAtFirst = 100'000;
constexpr qint64 bytesPlayedPerByte = 4;

void switchMacroDefinition(Printer &printer, const StreamCommand & /*command*/)
{
    MacroState &macro = printer.macro;
    if (!macro.isRecorded) {
        macro.commands.clear();
        macro.bytes = 0;
        macro.isFull = false;
    }
    macro.isRecorded = !macro.isRecorded;
}

/// Plays the macro once; false if too much has been played by now.
bool playOnce(Printer &printer, const QVector<StreamCommand> &commands, qint64 offset)
{
    const qint64 most = bytesPlayedAtFirst + bytesPlayedPerByte * offset;
    for (StreamCommand played : commands) {
        printer.macro.bytesPlayed += played.bytes.size();
        if (printer.macro.bytesPlayed > most)
            return false;
        played.offset = offset;
        played.realTime.clear();
        printer.obey(played);
    }
    return true;
}

void playMacro(Printer &printer, const StreamCommand &command)
{
    // Played while it is being defined, it is taken back.
    if (printer.macro.isRecorded) {
        printer.macro.isRecorded = false;
        printer.macro.commands.clear();
        return;
    }
    const QVector<StreamCommand> commands = printer.macro.commands;
    for (int round = 0; round < command.operand(0); ++round) {
        if (!playOnce(printer, commands, command.offset)) {
            printer.noteFor(command, QStringLiteral("is played no further"));
            return;
        }
    }
}

constexpr HandlerRow macroRows[] = {
    {CommandId::MacroDefinition, switchMacroDefinition},
    {CommandId::MacroExecution, playMacro},
};

}  // namespace

bool recordForMacro(Printer &printer, const StreamCommand &command)
{
    MacroState &macro = printer.macro;
    const bool isAboutMacro =
        command.kind == StreamCommand::Command && (command.row->id == CommandId::MacroDefinition ||
                                                   command.row->id == CommandId::MacroExecution);
    if (!macro.isRecorded || isAboutMacro || command.kind == StreamCommand::Incomplete)
        return false;
    StreamCommand kept = command;
    const int room = mostMacroBytes - macro.bytes;
    if (kept.bytes.size() > room && !macro.isFull)
        printer.note(QStringLiteral("the macro is longer than %1 bytes").arg(mostMacroBytes));
    if (kept.bytes.size() > room)
        macro.isFull = true;
    if (kept.kind == StreamCommand::Text)
        kept.bytes.truncate(room);
    else if (macro.isFull)
        return true;
    macro.bytes += kept.bytes.size();
    macro.commands.append(kept);
    return true;
}

HandlerRows macroHandlers()
{
    return {std::begin(macroRows), std::end(macroRows)};
}

}  // namespace printerslib::drivers
