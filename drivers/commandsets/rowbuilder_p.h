#pragma once

#include <cstddef>
#include <string_view>

#include "commandsets/commandrow_p.h"

/// Makes rows while the compiler runs: introducers are read from their mnemonics, operands counted.
namespace printerslib::drivers {

namespace rowbuilder {

struct ControlName
{
    std::string_view name;
    char byte;
};

constexpr ControlName controlNames[] = {
    {"NUL", '\x00'}, {"SOH", '\x01'}, {"STX", '\x02'}, {"ETX", '\x03'}, {"EOT", '\x04'},
    {"ENQ", '\x05'}, {"ACK", '\x06'}, {"BEL", '\x07'}, {"BS", '\x08'},  {"HT", '\x09'},
    {"LF", '\x0A'},  {"VT", '\x0B'},  {"FF", '\x0C'},  {"CR", '\x0D'},  {"SO", '\x0E'},
    {"SI", '\x0F'},  {"DLE", '\x10'}, {"DC1", '\x11'}, {"DC2", '\x12'}, {"DC3", '\x13'},
    {"DC4", '\x14'}, {"NAK", '\x15'}, {"SYN", '\x16'}, {"ETB", '\x17'}, {"CAN", '\x18'},
    {"EM", '\x19'},  {"SUB", '\x1A'}, {"ESC", '\x1B'}, {"FS", '\x1C'},  {"GS", '\x1D'},
    {"RS", '\x1E'},  {"US", '\x1F'},  {"SP", '\x20'},
};

constexpr int hexDigit(char digit)
{
    return digit <= '9' ? digit - '0' : digit - 'A' + 10;
}

/// The byte of a word of a mnemonic: "ESC", "k", "0xFA".
constexpr char byteOfWord(std::string_view word)
{
    for (const ControlName &control : controlNames) {
        if (control.name == word)
            return control.byte;
    }
    if (word.size() == 4 && word.substr(0, 2) == "0x")
        return static_cast<char>(16 * hexDigit(word[2]) + hexDigit(word[3]));
    return word[0];
}

/// Takes the first word off a text.
constexpr std::string_view takeWord(std::string_view &text)
{
    const std::size_t end = text.find(' ');
    const std::string_view word = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    return word;
}

constexpr int countWords(std::string_view text)
{
    int count = 0;
    while (!text.empty()) {
        takeWord(text);
        ++count;
    }
    return count;
}

/// Index of a word in a text, or -1.
constexpr int indexOfWord(std::string_view text, std::string_view word)
{
    int index = 0;
    while (!text.empty()) {
        if (takeWord(text) == word)
            return index;
        ++index;
    }
    return -1;
}

/// Where the length stands, by the names that manuals give it; without any it is the last operand.
constexpr int lengthIndex(std::string_view operands, PayloadRule payload)
{
    const int last = operands.empty() ? 0 : countWords(operands) - 1;
    if (payload == PayloadRule::LengthByte)
        return last;
    if (payload == PayloadRule::LengthWordHighFirst)
        return indexOfWord(operands, "nH");
    for (const char *const name : {"pL", "p1", "xL", "nL", "n1"}) {
        const int index = indexOfWord(operands, name);
        if (index >= 0)
            return index;
    }
    return last;
}

}  // namespace rowbuilder

/// A command without data.
constexpr CommandRow row(CommandId id, const char *mnemonic, const char *operands,
                         const char *meaning, const char *source,
                         PayloadRule payload = PayloadRule::None)
{
    CommandRow made{};
    made.id = id;
    std::string_view words = mnemonic;
    while (!words.empty())
        made.introducer[made.introducerSize++] =
            rowbuilder::byteOfWord(rowbuilder::takeWord(words));
    made.mnemonic = mnemonic;
    made.operands = operands;
    made.operandCount = static_cast<quint8>(rowbuilder::countWords(operands));
    made.payload = payload;
    made.lengthAt = static_cast<quint8>(rowbuilder::lengthIndex(operands, payload));
    made.vendor = Vendor::General;
    made.meaning = meaning;
    made.source = source;
    return made;
}

/// The row for some values of the operands from `at` on.
template <std::size_t Size>
constexpr CommandRow forOperands(CommandRow made, int at, const char (&values)[Size])
{
    static_assert(Size <= sizeof made.selector + 1);
    for (std::size_t i = 0; i + 1 < Size; ++i)
        made.selector[i] = values[i];
    made.selectorSize = static_cast<quint8>(Size - 1);
    made.selectorAt = static_cast<quint8>(at);
    return made;
}

constexpr CommandRow withTraits(CommandRow made, int traits)
{
    made.traits = static_cast<quint8>(traits);
    return made;
}

constexpr CommandRow onlyOf(Vendor vendor, CommandRow made)
{
    made.vendor = vendor;
    return made;
}

}  // namespace printerslib::drivers
