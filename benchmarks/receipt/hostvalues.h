#pragma once

#include <array>
#include <charconv>
#include <ctime>
#include <string>
#include <string_view>

#include "receipt/sale.h"

/// What a program does that hands finished texts to a template engine of standard strings.
namespace receipt {

/// A number with fixed decimals.
class NumberText
{
public:
    NumberText(double value, int decimals)
        : m_end(
              std::to_chars(m_text.begin(), m_text.end(), value, std::chars_format::fixed, decimals)
                  .ptr)
    {}
    const char *data() const { return m_text.data(); }
    size_t size() const { return static_cast<size_t>(m_end - m_text.begin()); }
    std::string string() const { return std::string(data(), size()); }

private:
    std::array<char, 32> m_text;
    const char *const m_end;
};

/// Everything of a sale but its items, in UTF-8, and the time in the parts that printing it needs.
struct HostSale
{
    explicit HostSale(const Sale &sale);

    std::string timeText() const;

    std::string shop;
    std::string address;
    std::string taxNumber;
    std::string cashier;
    std::string footer;
    std::tm time{};
};

/// Characters of a text in UTF-8.
int lengthOf(std::string_view text);

/// A number with leading zeros.
std::string digitsOf(int value, int width);

/// One line of the totals.
struct Total
{
    std::string_view label;
    double value;
};
constexpr int numberOfTotals = 7;
std::array<Total, numberOfTotals> totalsOf(const Sale &sale);

/// Blanks between two texts at the edges of a line, and in front of a centred one.
int blanksBetween(int left, int right);
int blanksBefore(std::string_view centred);

/// As many blanks, of a text that stays.
std::string_view blanks(int count);

}  // namespace receipt
