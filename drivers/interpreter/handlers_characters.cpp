#include <algorithm>

#include "interpreter/dots_p.h"
#include "interpreter/handlers_p.h"

namespace printerslib::drivers {

namespace {

void setCharacterSpacing(Printer &printer, const StreamCommand &command)
{
    printer.state.spacing = printer.dotsAcross(command.operand(0));
}

void setPrintModes(Printer &printer, const StreamCommand &command)
{
    enum Bit {
        FontB = 0x01,
        Bold = 0x08,
        DoubleHeight = 0x10,
        DoubleWidth = 0x20,
        Underline = 0x80
    };
    const int modes = command.operand(0);
    PrintState &state = printer.state;
    if (printer.profile.fontCells().size() > 1)
        state.font = (modes & FontB) != 0 ? 1 : 0;
    state.isBold = (modes & Bold) != 0;
    state.heightScale = (modes & DoubleHeight) != 0 ? 2 : 1;
    state.widthScale = (modes & DoubleWidth) != 0 ? 2 : 1;
    state.underline = (modes & Underline) != 0 ? 1 : 0;
}

void setCharacterSize(Printer &printer, const StreamCommand &command)
{
    const int size = command.operand(0);
    if ((size & 0x88) != 0) {
        printer.noteFor(command, QStringLiteral("asks for more than eight times the size"));
        return;
    }
    printer.state.heightScale = (size & 0x07) + 1;
    printer.state.widthScale = (size >> 4) + 1;
}

void setUnderline(Printer &printer, const StreamCommand &command)
{
    const int dots = choiceOf(command, 0, 3);
    if (dots >= 0)
        printer.state.underline = dots;
}

void setFont(Printer &printer, const StreamCommand &command)
{
    const int font = choiceOf(command, 0, printer.profile.fontCells().size());
    if (font < 0)
        printer.noteFor(
            command,
            QStringLiteral("asks for font %1, which the model hasn't").arg(command.operand(0)));
    else
        printer.state.font = font;
}

void setCharactersPerInch(Printer &printer, const StreamCommand &command)
{
    const int choice = choiceOf(command, 0, 3);
    if (choice >= 0 && printer.profile.fontCells().size() > 2)
        printer.state.charactersPerInch = choice;
}

void setTurned(Printer &printer, const StreamCommand &command)
{
    const int choice = choiceOf(command, 0, 3);
    if (choice >= 0)
        printer.state.isTurned = choice > 0;
}

void setUpsideDown(Printer &printer, const StreamCommand &command)
{
    if (printer.isPageMode || printer.isAtLineStart(command))
        printer.state.isUpsideDown = isSwitchedOn(command);
}

void setColour(Printer &printer, const StreamCommand &command)
{
    const int choice = choiceOf(command, 0, 2);
    if (choice >= 0)
        printer.state.isSecondColour = choice == 1;
}

void setCharacterEffect(Printer &printer, const StreamCommand &command)
{
    // pL pH fn m: function 48 chooses among white (0) and colours from 1 on.
    if (command.operand(2) == '0')
        printer.state.isSecondColour = command.operand(3) > '1';
    else
        printer.noteFor(command, QStringLiteral("isn't carried out"));
}

void setCodePage(Printer &printer, const StreamCommand &command)
{
    if (!printer.state.charset.setCodePage(printer.profile, command.operand(0)))
        printer.noteFor(command, QStringLiteral("asks for code page %1, which the model hasn't")
                                     .arg(command.operand(0)));
}

void setCountry(Printer &printer, const StreamCommand &command)
{
    if (!printer.state.charset.setCountry(command.operand(0)))
        printer.noteFor(
            command,
            QStringLiteral("asks for country %1, which nobody knows").arg(command.operand(0)));
}

/// y c1 c2, then for each character its columns and y bytes for each of them.
void defineCharacters(Printer &printer, const StreamCommand &command)
{
    const int bytesPerColumn = command.operand(0);
    const QByteArray data = command.payload();
    const QSize cell = printer.cellSize();
    int at = 0;
    for (int code = command.operand(1); code <= command.operand(2) && at < data.size(); ++code) {
        const int columns = static_cast<unsigned char>(data.at(at));
        const int size = columns * bytesPerColumn;
        const Paper::Picture drawn =
            pictureOfColumns(data.mid(at + 1, size), columns, bytesPerColumn);
        printer.defineCharacter(printer.ownKey(code), drawn, cell);
        at += 1 + size;
    }
}

void cancelCharacter(Printer &printer, const StreamCommand &command)
{
    printer.ownCharacters.remove(printer.ownKey(command.operand(0)));
}

constexpr HandlerRow characterRows[] = {
    {CommandId::CharacterSpacing, setCharacterSpacing},
    {CommandId::PrintModes, setPrintModes},
    {CommandId::CharacterSize, setCharacterSize},
    {CommandId::Underline, setUnderline},
    {CommandId::Font, setFont},
    {CommandId::CharactersPerInch, setCharactersPerInch},
    {CommandId::Bold, switchState<&PrintState::isBold>},
    {CommandId::DoubleStrike, switchState<&PrintState::isDoubleStrike>},
    {CommandId::Italic, switchState<&PrintState::isItalic>},
    {CommandId::ItalicOn, setState<&PrintState::isItalic, true>},
    {CommandId::ItalicOff, setState<&PrintState::isItalic, false>},
    {CommandId::Inverse, switchState<&PrintState::isInverse>},
    {CommandId::Turned, setTurned},
    {CommandId::UpsideDown, setUpsideDown},
    {CommandId::Colour, setColour},
    {CommandId::CharacterEffect, setCharacterEffect},
    {CommandId::CodePage, setCodePage},
    {CommandId::InternationalSet, setCountry},
    {CommandId::UserCharactersUsed, switchState<&PrintState::usesOwnCharacters>},
    {CommandId::DefineCharacters, defineCharacters},
    {CommandId::CancelCharacter, cancelCharacter},
};

}  // namespace

HandlerRows characterHandlers()
{
    return {std::begin(characterRows), std::end(characterRows)};
}

}  // namespace printerslib::drivers
