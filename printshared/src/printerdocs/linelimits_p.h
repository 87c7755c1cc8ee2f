#pragma once

/// Longest line, in characters, that padding may make. No printer comes near it; it keeps a wild
/// width from taking the machine's memory.
constexpr int longestPaddedLine = 1 << 24;
