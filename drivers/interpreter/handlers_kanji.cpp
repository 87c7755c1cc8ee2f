#include "interpreter/handlers_kanji_p.h"

#include "interpreter/dots_p.h"
#include "interpreter/handlers_p.h"

namespace printerslib::drivers {

void followKanji(KanjiState &kanji, const PrinterProfile &profile, const StreamCommand &command)
{
    const bool isStar = profile.dialect() == Dialect::StarLine;
    const int code = choiceOf(command, 0, 3);
    switch (command.row->id) {
        case CommandId::KanjiOn:
            if (isStar || !kanji.set)
                kanji.choose(profile, isStar ? "JIS" : "GB18030");
            kanji.isOn = true;
            return;
        case CommandId::KanjiOff:
            kanji.isOn = false;
            return;
        case CommandId::KanjiCode:
            // Star's begins or ends them, too.
            if (isStar)
                kanji.isOn = isSwitchedOn(command);
            if (isStar || code >= 0)
                kanji.choose(profile, (isStar ? kanji.isOn : code > 0) ? "SHIFT_JIS" : "JIS");
            return;
        default:
            return;
    }
}

namespace {

void switchKanji(Printer &printer, const StreamCommand &command)
{
    KanjiState &kanji = printer.state.kanji;
    followKanji(kanji, printer.profile, command);
    const bool begins = kanji.isOn && (command.row->id == CommandId::KanjiOn ||
                                       printer.profile.dialect() == Dialect::StarLine);
    if (begins && printer.profile.kanjiSet().isEmpty())
        printer.noteFor(command, QStringLiteral("begins two-byte characters, of which the model's "
                                                "data knows nothing; they are taken for %1")
                                     .arg(kanji.set->name()));
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
    const int key = Printer::ownKeyOfTwo(command.operand(0), command.operand(1));
    const Paper::Picture drawn = pictureOfColumns(command.payload(), 24, 3);
    printer.defineCharacter(key, drawn, drawn.size);
}

void cancelKanji(Printer &printer, const StreamCommand &command)
{
    printer.ownCharacters.remove(Printer::ownKeyOfTwo(command.operand(0), command.operand(1)));
}

constexpr HandlerRow kanjiRows[] = {
    {CommandId::KanjiOn, switchKanji},
    {CommandId::KanjiOff, switchKanji},
    {CommandId::KanjiCode, switchKanji},
    {CommandId::KanjiModes, setKanjiModes},
    {CommandId::KanjiUnderline, setKanjiUnderline},
    {CommandId::KanjiDoubleSize, setKanjiDoubleSize},
    {CommandId::KanjiSpacing, setKanjiSpacing},
    {CommandId::DefineKanji, defineKanji},
    {CommandId::CancelKanji, cancelKanji},
};

}  // namespace

HandlerRows kanjiHandlers()
{
    return {std::begin(kanjiRows), std::end(kanjiRows)};
}

}  // namespace printerslib::drivers
