#pragma once

#include <array>
#include <atomic>

namespace templates {

/// Why a line of a template isn't filled by plan, but by the general way.
enum class Fallback : unsigned char {
    None,
    // Known of the line itself.
    LooseBracket,   ///< a "<" or ">" that belongs to no tag can become part of one
    CodeTag,        ///< its character can be a "<"
    TwoTabs,        ///< several tabs share the line's width
    BracketInTag,   ///< what stands in a tag is part of another or of a group
    NamelessTag,    ///< a tag without a name, whose value is empty
    MarkCharacter,  ///< the line holds a character that stands for a value here
    NoText,         ///< a line of nothing but tags
    Memory,         ///< the plan would be larger than it may be
    // Known of the document.
    MissingName,       ///< no attribute: an expression or nothing
    ForeignValue,      ///< of a type whose text is a client's code
    MarkupInValue,     ///< the value is scanned in its turn
    NamesElsewhere,    ///< a name of the document could stand elsewhere in the expression
    TextInExpression,  ///< an operand is no number
    MixedFormats,      ///< formats or fonts differ within the line
    GroupOfMarkup,     ///< a group vanishes together with tags
    GroupNearTag,      ///< a group vanishes so near to the next tag that the scan passes that over
    EmptyAmongRanges,  ///< nothing stands between two tags of a range
    CarriedStyle,      ///< a format or font of an earlier line is still on
    EntryOfMarkup,     ///< an entry that is more than a name and a value
    CopyMark,          ///< its translation is known when it is printed
    // Not a reason.
    Count
};

/// How many lines went which way, for tests and measurements: a short cut that is never taken
/// proves nothing. Counted by all threads together.
struct PlanTally
{
    static constexpr std::size_t reasons = static_cast<std::size_t>(Fallback::Count);

    std::array<std::atomic<long long>, reasons> lines{};  ///< that of None: by plan
    std::atomic<long long> documents{0};
    std::atomic<long long> restarts{0};  ///< documents that went the general way in their midst

    static PlanTally &instance();
};

/// The counts of one document, which are added to those of all at once.
class PlanCount
{
public:
    PlanCount() = default;
    PlanCount(const PlanCount &) = delete;
    PlanCount &operator=(const PlanCount &) = delete;
    ~PlanCount();

    void add(Fallback reason) { ++m_lines[static_cast<std::size_t>(reason)]; }
    void addRestart() { ++m_restarts; }

private:
    std::array<int, PlanTally::reasons> m_lines{};
    int m_restarts = 0;
};

}  // namespace templates
