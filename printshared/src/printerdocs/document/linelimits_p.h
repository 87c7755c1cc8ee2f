#pragma once

/// Longest line, in characters, that padding may make. No printer comes near it; it keeps a wild
/// width from taking the machine's memory.
constexpr int longestPaddedLine = 1 << 24;

/// Most characters that the padding of columns and fields may add to one BBCode text. A receipt has
/// some hundreds; it keeps a few megabytes of line ends from becoming gigabytes.
constexpr int mostPaddingOfText = 1 << 24;
