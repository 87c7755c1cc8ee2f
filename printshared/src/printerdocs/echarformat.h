#pragma once

/// Bits of the format byte of one character. 0 is plain text; any combination is legal; bit 0x80
/// has no meaning.
enum ECharFormat : unsigned char {
    CharBold = 0x01,
    CharItalic = 0x02,
    CharMarkZ = 0x04,  ///< handed on to the printer driver, which gives it its meaning
    CharUnderline = 0x08,
    CharDoubleWidth = 0x10,
    CharDoubleHeight = 0x20,
    CharRawCode = 0x40,  ///< the character is text, never a special symbol, whatever its code
};
