#pragma once

#include <QLatin1Char>
#include <QLatin1String>
#include <QtGlobal>
#include <iterator>

#include "latin1text_p.h"
#include "printerdocs/echarformat.h"
#include "printerdocs/etextalignment.h"

// The words of the template language, for the engine and the tools that read templates.

namespace templates {

using printshared::latin1Text;

// What the stages in front of the line markup read. The first two, and the fiscal markers, may
// stand in any case.
constexpr QLatin1String copyNumberTag = latin1Text("<DOCNO>");
constexpr QLatin1String entriesTag = latin1Text("<ENTRIES>");
constexpr QLatin1String symbolsTag = latin1Text("<SPECSYMBOLS=");  ///< a name and ">" follow
constexpr QLatin1String blankLineTag = latin1Text("<X>");
constexpr QLatin1String removalBegin = latin1Text("<X:>");
constexpr QLatin1String removalEnd = latin1Text("<:X>");
constexpr QLatin1String imageBegin = latin1Text("<I>");
constexpr QLatin1String imageEnd = latin1Text("</I>");
// What only a document for a printer reads.
constexpr QLatin1String qrTag = latin1Text("<QR>");

/// The line behind that of the number of a copy, to be translated.
constexpr char copyMark[] = QT_TRANSLATE_NOOP("PrinterDocumentFormatter", "<C>CHECK_COPY");

/// Characters from "<" through ">": in a shorter tag the line markup looks for its own.
constexpr int shortestAttributeTag = 6;

/// The greatest size of a number that takes the group around its tag along.
constexpr double countsAsZero = 1e-12;

/// Kinds of tags of the line markup, a bit each. A line knows which of them it may hold, so that
/// a step without its tags has no work.
enum TagKind : quint32 {
    TabTag = 1U << 0U,
    CenterTag = 1U << 1U,
    RightTag = 1U << 2U,
    ObsoleteTag = 1U << 3U,
    SpacingTag = 1U << 4U,
    EmptyTag = 1U << 5U,
    Brackets = 1U << 6U,
    CodeTag = 1U << 7U,
    FontTag = 1U << 8U,
    BoldLine = 1U << 9U,
    MarkedLine = 1U << 10U,
    ItalicLine = 1U << 11U,
    UnderlinedLine = 1U << 12U,
    TallLine = 1U << 13U,
    WideLine = 1U << 14U,
    BoldRange = 1U << 15U,
    MarkedRange = 1U << 16U,
    ItalicRange = 1U << 17U,
    UnderlinedRange = 1U << 18U,
    TallRange = 1U << 19U,
    WideRange = 1U << 20U,
    EveryTag = ~0U,
};

/// Steps of the line markup that take tags of one text out, in their order.
enum class MarkupStep : unsigned char {
    Align,         ///< the first row that hits says the alignment
    TakeObsolete,  ///< tags without effect
    SetSpacing,    ///< the first row that hits says the spacing
    TakeEmpty,     ///< tags without effect that also keep others apart
};

/// A tag that is always the same text.
struct PlainTag
{
    QLatin1String text;
    quint32 kind;  ///< tags of one step may have one kind
    MarkupStep step;
    int value = 0;         ///< alignment or spacing
    QLatin1String left{};  ///< what stays in its place
};

constexpr QLatin1String tabTag = latin1Text("<S>");
constexpr QLatin1String centerTag = latin1Text("<C>");
constexpr QLatin1String rightTag = latin1Text("<R>");

/// Those of one step stand together, in the order in which they are looked for.
inline constexpr PlainTag plainTags[] = {
    {tabTag, TabTag, MarkupStep::Align, AlignJustify, latin1Text("\t")},
    {centerTag, CenterTag, MarkupStep::Align, AlignCenter},
    {rightTag, RightTag, MarkupStep::Align, AlignRight},
    {latin1Text("<L1>"), ObsoleteTag, MarkupStep::TakeObsolete},
    {latin1Text("<LS0>"), SpacingTag, MarkupStep::SetSpacing, 0},
    {latin1Text("<LS1>"), SpacingTag, MarkupStep::SetSpacing, 1},
    {latin1Text("<LS2>"), SpacingTag, MarkupStep::SetSpacing, 2},
    {latin1Text("<LS3>"), SpacingTag, MarkupStep::SetSpacing, 3},
    {latin1Text("<LS4>"), SpacingTag, MarkupStep::SetSpacing, 4},
    {latin1Text("<LS5>"), SpacingTag, MarkupStep::SetSpacing, 5},
    {latin1Text("<LS6>"), SpacingTag, MarkupStep::SetSpacing, 6},
    {latin1Text("<LS7>"), SpacingTag, MarkupStep::SetSpacing, 7},
    {latin1Text("<:>"), EmptyTag, MarkupStep::TakeEmpty},
};

/// The rows of one step. By index: what the undefined behaviour sanitizer adds keeps GCC from
/// comparing pointers in constants.
struct PlainTagRange
{
    std::size_t first = 0;
    std::size_t last = 0;
    quint32 kinds = 0;  ///< of all rows together

    constexpr const PlainTag *begin() const { return plainTags + first; }
    constexpr const PlainTag *end() const { return plainTags + last; }
};

constexpr PlainTagRange findPlainTags(MarkupStep step)
{
    PlainTagRange range;
    for (std::size_t row = 0; row < std::size(plainTags); ++row) {
        if (plainTags[row].step != step)
            continue;
        if (range.last == 0)
            range.first = row;
        range.last = row + 1;
        range.kinds |= plainTags[row].kind;
    }
    return range;
}

template <MarkupStep step>
inline constexpr PlainTagRange plainTagsOf = findPlainTags(step);

/// The tags of one format.
struct FormatTag
{
    QLatin1String wholeLine;
    QLatin1String open;
    QLatin1String close;
    ECharFormat flag;
    quint32 lineKind;
    quint32 rangeKind;
};

constexpr FormatTag boldTag{latin1Text("<B>"), latin1Text("<B:>"), latin1Text("<:B>"),
                            CharBold,          BoldLine,           BoldRange};
constexpr FormatTag markedTag{latin1Text("<Z>"), latin1Text("<Z:>"), latin1Text("<:Z>"),
                              CharMarkZ,         MarkedLine,         MarkedRange};
constexpr FormatTag italicTag{latin1Text("<N>"), latin1Text("<N:>"), latin1Text("<:N>"),
                              CharItalic,        ItalicLine,         ItalicRange};
constexpr FormatTag underlinedTag{latin1Text("<U>"), latin1Text("<U:>"), latin1Text("<:U>"),
                                  CharUnderline,     UnderlinedLine,     UnderlinedRange};
constexpr FormatTag tallTag{
    latin1Text("<H2>"), latin1Text("<H2:>"), latin1Text("<:H2>"), CharDoubleHeight, TallLine,
    TallRange};
constexpr FormatTag wideTag{
    latin1Text("<W2>"), latin1Text("<W2:>"), latin1Text("<:W2>"), CharDoubleWidth, WideLine,
    WideRange};

// The orders differ and decide about tags that stand next to each other.
inline constexpr FormatTag wholeLineOrder[] = {markedTag, boldTag,   tallTag,
                                               wideTag,   italicTag, underlinedTag};
inline constexpr FormatTag rangeOrder[] = {boldTag,   markedTag, underlinedTag,
                                           italicTag, tallTag,   wideTag};

constexpr quint32 findRangeKinds()
{
    quint32 kinds = 0;
    for (const FormatTag &tag : rangeOrder)
        kinds |= tag.rangeKind;
    return kinds;
}
constexpr quint32 allRanges = findRangeKinds();

constexpr QLatin1String fontTag = latin1Text("<F");  ///< a number and ">" follow
constexpr QLatin1Char fontLetter(fontTag.data()[1]);
/// Stands behind the "<" of a code that may be a symbol's; a raw one begins there.
constexpr QLatin1Char plainCodeSign('#');

// The tables as such.

/// Whether the line markup gets to see a tag, whole: a longer one is an attribute's, and what
/// holds a bracket of another could be the rest of one.
constexpr bool isMarkup(QLatin1String text)
{
    constexpr int shortest = 3;
    if (text.size() < shortest || text.size() >= shortestAttributeTag)
        return false;
    for (int i = 1; i < text.size() - 1; ++i) {
        if (text.data()[i] == '<' || text.data()[i] == '>')
            return false;
    }
    return text.data()[0] == '<' && text.data()[text.size() - 1] == '>';
}

constexpr bool tagsAreMarkup()
{
    for (const PlainTag &tag : plainTags) {
        if (!isMarkup(tag.text))
            return false;
    }
    for (const FormatTag &tag : rangeOrder) {
        if (!isMarkup(tag.wholeLine) || !isMarkup(tag.open) || !isMarkup(tag.close))
            return false;
    }
    return true;
}
static_assert(tagsAreMarkup());

/// Takes a kind for a row. @return whether it is a single bit that was free
constexpr bool takeKind(quint32 &taken, quint32 kind)
{
    const bool isFree = kind != 0 && (kind & (kind - 1)) == 0 && (taken & kind) == 0;
    taken |= kind;
    return isFree;
}

/// Whether no two tags that different work belongs to have one kind.
constexpr bool kindsAreDisjoint()
{
    quint32 taken = 0;
    for (const TagKind withoutRow : {Brackets, CodeTag, FontTag}) {
        if (!takeKind(taken, withoutRow))
            return false;
    }
    for (std::size_t row = 0; row < std::size(plainTags); ++row) {
        const bool isOfTheLastKind = row > 0 && plainTags[row - 1].kind == plainTags[row].kind &&
                                     plainTags[row - 1].step == plainTags[row].step;
        if (!isOfTheLastKind && !takeKind(taken, plainTags[row].kind))
            return false;
    }
    for (const FormatTag &tag : rangeOrder) {
        if (!takeKind(taken, tag.lineKind) || !takeKind(taken, tag.rangeKind))
            return false;
    }
    return true;
}
static_assert(kindsAreDisjoint());

constexpr bool stepsStandTogether()
{
    for (std::size_t row = 1; row < std::size(plainTags); ++row) {
        if (plainTags[row - 1].step > plainTags[row].step)
            return false;
    }
    return true;
}
static_assert(stepsStandTogether());

constexpr bool isInBothOrders(const FormatTag &wanted)
{
    int hits = 0;
    for (const FormatTag &tag : wholeLineOrder)
        hits += tag.lineKind == wanted.lineKind && tag.rangeKind == wanted.rangeKind ? 1 : 0;
    return hits == 1;
}

constexpr bool ordersHoldTheSame()
{
    for (const FormatTag &tag : rangeOrder) {
        if (!isInBothOrders(tag))
            return false;
    }
    return std::size(wholeLineOrder) == std::size(rangeOrder);
}
static_assert(ordersHoldTheSame());

}  // namespace templates
