#pragma once

#include <QtGlobal>

namespace printerslib::drivers {

/// The characters that a country's set (ESC R n) puts in place of twelve ones of ASCII.
///
/// 12 characters, for the bytes of `internationalBytes`; null for a number without a set.
const char16_t *internationalCharacters(int set);

/// The bytes that depend on the country.
constexpr unsigned char internationalBytes[] = {0x23, 0x24, 0x40, 0x5B, 0x5C, 0x5D,
                                                0x5E, 0x60, 0x7B, 0x7C, 0x7D, 0x7E};

}  // namespace printerslib::drivers
