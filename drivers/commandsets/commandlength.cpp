#include "commandsets/commandlength_p.h"

#include <algorithm>
#include <iterator>

namespace printerslib::drivers {

namespace {

constexpr int mostTabStops = 32;
constexpr int mostDigits = 4;
constexpr int longestCounterText = 30;  // five numbers of five digits

using std::string_view;

/// A command's bytes with what its row says of them.
struct Reading
{
    const CommandRow &row;
    string_view bytes;
    qint64 searchedTo;

    qint64 dataBegin() const { return row.introducerSize + row.operandCount; }
    qint64 lengthBegin() const { return row.introducerSize + row.lengthAt; }
    bool has(qint64 size) const { return static_cast<qint64>(bytes.size()) >= size; }
    qint64 byte(qint64 at) const
    {
        return static_cast<unsigned char>(bytes[static_cast<std::size_t>(at)]);
    }
    qint64 word(qint64 at) const { return byte(at) + 256 * byte(at + 1); }
    qint64 doubleWord(qint64 at) const { return word(at) + 65536 * word(at + 2); }
};

CommandLength exactly(qint64 bytes)
{
    return {bytes, true};
}

CommandLength atLeast(qint64 bytes)
{
    return {bytes, false};
}

CommandLength withoutData(const Reading &reading)
{
    return exactly(reading.dataBegin());
}

template <char Mark>
CommandLength upToMark(const Reading &reading)
{
    const auto from = static_cast<std::size_t>(std::max(reading.dataBegin(), reading.searchedTo));
    const std::size_t end = reading.bytes.find(Mark, from);
    return end == string_view::npos
               ? atLeast(std::max<qint64>(static_cast<qint64>(reading.bytes.size()),
                                          reading.dataBegin()) +
                         1)
               : exactly(static_cast<qint64>(end) + 1);
}

// A number without an end is none.
CommandLength decimalCounted(const Reading &reading)
{
    const qint64 begin = reading.dataBegin();
    qint64 count = 0;
    for (qint64 at = begin; at - begin <= mostDigits; ++at) {
        if (!reading.has(at + 1))
            return atLeast(at + 1);
        const qint64 byte = reading.byte(at);
        if (byte == 0)
            return exactly(at + 1 + count);
        if (byte < '0' || byte > '9')
            break;
        count = 10 * count + byte - '0';
    }
    return exactly(begin);
}

// A stop that isn't right of the one before ends them, and is read on.
CommandLength tabStops(const Reading &reading)
{
    qint64 last = 0;
    const qint64 begin = reading.dataBegin();
    for (qint64 at = begin;; ++at) {
        if (!reading.has(at + 1))
            return atLeast(at + 1);
        const qint64 stop = reading.byte(at);
        if (stop == 0)
            return exactly(at + 1);
        if (stop <= last || at - begin == mostTabStops)
            return exactly(at);
        last = stop;
    }
}

CommandLength fiveSemicolons(const Reading &reading)
{
    int semicolons = 0;
    for (qint64 at = reading.dataBegin();; ++at) {
        if (!reading.has(at + 1))
            return atLeast(at + 1);
        const qint64 byte = reading.byte(at);
        const bool isOfText = byte == ';' || (byte >= '0' && byte <= '9');
        if (!isOfText || at - reading.dataBegin() == longestCounterText)
            return exactly(at);
        semicolons += byte == ';' ? 1 : 0;
        if (semicolons == 5)
            return exactly(at + 1);
    }
}

template <int Size>
CommandLength counted(const Reading &reading)
{
    const qint64 at = reading.lengthBegin();
    if (!reading.has(at + Size))
        return atLeast(at + Size);
    const qint64 count = Size == 1   ? reading.byte(at)
                         : Size == 2 ? reading.word(at)
                                     : reading.doubleWord(at);
    return exactly(at + Size + count);
}

CommandLength countedHighFirst(const Reading &reading)
{
    const qint64 at = reading.lengthBegin();
    if (!reading.has(at + 2))
        return atLeast(at + 2);
    return exactly(at + 2 + 256 * reading.byte(at) + reading.byte(at + 1));
}

CommandLength rasterWords(const Reading &reading)
{
    const qint64 at = reading.lengthBegin();
    return exactly(reading.dataBegin() + reading.word(at) * reading.word(at + 2));
}

template <int BytesOfColumn>
CommandLength columns(const Reading &reading)
{
    return exactly(reading.dataBegin() + BytesOfColumn * reading.word(reading.lengthBegin()));
}

CommandLength columnsByMode(const Reading &reading)
{
    const qint64 mode = reading.byte(reading.lengthBegin() - 1);
    return mode == 32 || mode == 33 ? columns<3>(reading) : columns<1>(reading);
}

CommandLength eightDotCells(const Reading &reading)
{
    const qint64 at = reading.row.introducerSize;
    return exactly(reading.dataBegin() + 8 * reading.byte(at) * reading.byte(at + 1));
}

CommandLength nvPictures(const Reading &reading)
{
    qint64 end = reading.dataBegin();
    for (qint64 picture = reading.byte(end - 1); picture > 0; --picture) {
        if (!reading.has(end + 4))
            return atLeast(end + 4);
        end += 4 + 8 * reading.word(end) * reading.word(end + 2);
    }
    return exactly(end);
}

CommandLength userCharacters(const Reading &reading)
{
    qint64 end = reading.dataBegin();
    const qint64 height = reading.byte(end - 3);
    for (qint64 c = reading.byte(end - 2); c <= reading.byte(reading.dataBegin() - 1); ++c) {
        if (!reading.has(end + 1))
            return atLeast(end + 1);
        end += 1 + height * reading.byte(end);
    }
    return exactly(end);
}

CommandLength qrParts(const Reading &reading)
{
    qint64 end = reading.dataBegin();
    for (qint64 part = reading.byte(end - 1); part > 0; --part) {
        if (!reading.has(end + 3))
            return atLeast(end + 3);
        end += 3 + reading.word(end + 1);
    }
    return exactly(end);
}

// "BM" and the size of the file, itself in it.
CommandLength bitmap(const Reading &reading)
{
    constexpr qint64 headSize = 6;
    const qint64 begin = reading.dataBegin();
    if (!reading.has(begin + headSize))
        return atLeast(begin + headSize);
    return exactly(begin + std::max(headSize, reading.doubleWord(begin + 2)));
}

template <int Size>
CommandLength fixed(const Reading &reading)
{
    return exactly(reading.dataBegin() + Size);
}

// In the order of PayloadRule.
constexpr CommandLength (*const lengthRules[])(const Reading &) = {
    withoutData, upToMark<'\0'>, upToMark<'\x1E'>, decimalCounted, tabStops,    fiveSemicolons,
    counted<1>,  counted<2>,     countedHighFirst, counted<4>,     rasterWords, columns<1>,
    columns<3>,  columnsByMode,  columns<24>,      eightDotCells,  nvPictures,  userCharacters,
    qrParts,     bitmap,         fixed<48>,        fixed<72>,
};
static_assert(std::size(lengthRules) == static_cast<std::size_t>(PayloadRule::Bytes72) + 1);

bool isCounted(PayloadRule rule)
{
    return rule == PayloadRule::LengthByte || rule == PayloadRule::LengthWord ||
           rule == PayloadRule::LengthWordHighFirst || rule == PayloadRule::LengthDouble;
}

int sizeOfCount(PayloadRule rule)
{
    if (rule == PayloadRule::LengthByte)
        return 1;
    return rule == PayloadRule::LengthDouble ? 4 : 2;
}

}  // namespace

CommandLength lengthOfCommand(const CommandRow &row, string_view bytes, qint64 searchedTo)
{
    const Reading reading{row, bytes, searchedTo};
    // Counted operands may be fewer than the row names.
    if (!isCounted(row.payload) && !reading.has(reading.dataBegin()))
        return {reading.dataBegin(), row.payload == PayloadRule::None};
    return lengthRules[static_cast<int>(row.payload)](reading);
}

bool selectorIsCounted(const CommandRow &row, string_view bytes)
{
    if (!isCounted(row.payload) || row.selectorAt < row.lengthAt + sizeOfCount(row.payload))
        return true;
    const CommandLength length = lengthOfCommand(row, bytes, 0);
    return !length.isKnown ||
           row.introducerSize + row.selectorAt + row.selectorSize <= length.bytes;
}

}  // namespace printerslib::drivers
