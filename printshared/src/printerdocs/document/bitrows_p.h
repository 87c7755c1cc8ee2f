#pragma once

/// Pixels of a row of a monochrome picture or character stand eight to a byte.
constexpr int bitsPerByte = 8;
