#include "interpreter/dots_p.h"
#include "interpreter/handlers_p.h"

namespace printerslib::drivers {

namespace {

void begin(Printer &printer, const StreamCommand &command, const char *usualSet)
{
    if (!printer.state.kanji.set)
        printer.state.kanji.choose(printer.profile, usualSet);
    if (printer.profile.kanjiSet().isEmpty())
        printer.noteFor(command, QStringLiteral("begins two-byte characters, of which the model's "
                                                "data knows nothing; they are taken for %1")
                                     .arg(printer.state.kanji.set->name()));
    printer.state.kanji.isOn = true;
}

void beginKanji(Printer &printer, const StreamCommand &command)
{
    begin(printer, command, "GB18030");
}

void beginJis(Printer &printer, const StreamCommand &command)
{
    printer.state.kanji.choose(printer.profile, "JIS");
    begin(printer, command, "JIS");
}

void endKanji(Printer &printer, const StreamCommand & /*command*/)
{
    printer.state.kanji.isOn = false;
}

void setKanjiCode(Printer &printer, const StreamCommand &command)
{
    const int choice = choiceOf(command, 0, 3);
    if (choice >= 0)
        printer.state.kanji.choose(printer.profile, choice == 0 ? "JIS" : "SHIFT_JIS");
}

void setShiftedJis(Printer &printer, const StreamCommand &command)
{
    printer.state.kanji.choose(printer.profile, isSwitchedOn(command) ? "SHIFT_JIS" : "JIS");
    printer.state.kanji.isOn = false;
    if (isSwitchedOn(command))
        begin(printer, command, "SHIFT_JIS");
}

void setKanjiModes(Printer &printer, const StreamCommand &command)
{
    enum Bit { DoubleWidth = 0x04, DoubleHeight = 0x08, Underline = 0x80 };
    KanjiState &kanji = printer.state.kanji;
    kanji.isDoubleWidth = (command.operand(0) & DoubleWidth) != 0;
    kanji.isDoubleHeight = (command.operand(0) & DoubleHeight) != 0;
    kanji.underline = (command.operand(0) & Underline) != 0 ? 1 : 0;
}

void setKanjiUnderline(Printer &printer, const StreamCommand &command)
{
    const int dots = choiceOf(command, 0, 3);
    if (dots >= 0)
        printer.state.kanji.underline = dots;
}

void setKanjiDoubleSize(Printer &printer, const StreamCommand &command)
{
    printer.state.kanji.isDoubleWidth = isSwitchedOn(command);
    printer.state.kanji.isDoubleHeight = isSwitchedOn(command);
}

void setKanjiSpacing(Printer &printer, const StreamCommand &command)
{
    printer.state.kanji.spacingLeft = printer.dotsAcross(command.operand(0));
    printer.state.kanji.spacingRight = printer.dotsAcross(command.operand(1));
}

/// 24 columns of three bytes.
void defineKanji(Printer &printer, const StreamCommand &command)
{
    const int key = 0x100 * command.operand(0) + command.operand(1);
    printer.ownCharacters.insert(key, pictureOfColumns(command.payload(), 24, 3));
}

void cancelKanji(Printer &printer, const StreamCommand &command)
{
    printer.ownCharacters.remove(0x100 * command.operand(0) + command.operand(1));
}

constexpr HandlerRow kanjiRows[] = {
    {CommandId::KanjiOn, beginKanji},
    {CommandId::KanjiOff, endKanji},
    {CommandId::KanjiCode, setKanjiCode},
    {CommandId::KanjiModes, setKanjiModes},
    {CommandId::KanjiUnderline, setKanjiUnderline},
    {CommandId::KanjiDoubleSize, setKanjiDoubleSize},
    {CommandId::KanjiSpacing, setKanjiSpacing},
    {CommandId::DefineKanji, defineKanji},
    {CommandId::CancelKanji, cancelKanji},
};

// ESC p begins JIS, ESC $ n shifted JIS.
constexpr HandlerRow starKanjiRows[] = {
    {CommandId::KanjiOn, beginJis},
    {CommandId::KanjiCode, setShiftedJis},
};

}  // namespace

HandlerRows kanjiHandlers()
{
    return {std::begin(kanjiRows), std::end(kanjiRows)};
}

HandlerRows starKanjiHandlers()
{
    return {std::begin(starKanjiRows), std::end(starKanjiRows)};
}

}  // namespace printerslib::drivers
