#pragma once

#include <QSize>
#include <QVector>
#include <array>
#include <optional>

#include "commandsets/codepage_p.h"
#include "printerslib/drivers/codepage.h"
#include "printerslib/drivers/printerprofile.h"
#include "printerslib/drivers/streaminterpreter.h"

namespace printerslib::drivers {

/// What bytes print: a code page, with a country's characters in it.
class PrintCharset
{
public:
    PrintCharset();
    /// False if there's no such number; then all stays.
    bool setCodePage(const PrinterProfile &profile, int number);
    bool setCountry(int number);
    char16_t character(unsigned char byte) const { return m_characters[byte]; }

private:
    void fill();

    std::optional<CodePage> m_page;
    int m_country = 0;
    std::array<char16_t, 256> m_characters = {};
};

/// Two-byte characters.
struct KanjiState
{
    bool isOn = false;
    std::optional<TwoByteSet> set;
    bool isDoubleWidth = false;
    bool isDoubleHeight = false;
    int underline = 0;
    int spacingLeft = 0;  ///< in dots
    int spacingRight = 0;
    int lead = -1;  ///< first byte of a character of which the second is due

    /// Takes the set of a name, unless the model has another one. If nothing is known of the
    /// model's, the name is a guess.
    void choose(const PrinterProfile &profile, const char *name);
};

struct BarcodeState
{
    int textPosition = 0;  ///< 1: above, 2: below, 3: both
    int textFont = 0;
    int height = 162;  ///< in dots
    int width = 3;     ///< of a module, in dots
};

/// What a printer remembers between commands, until it is reset.
struct PrintState
{
    PrintState(const PrinterProfile &profile, int codePage, int paperDots);

    int font = 0;
    int widthScale = 1;
    int heightScale = 1;
    bool isBold = false;
    bool isDoubleStrike = false;
    bool isItalic = false;
    bool isInverse = false;
    bool isUpsideDown = false;
    bool isTurned = false;
    bool isSecondColour = false;
    bool usesOwnCharacters = false;
    int underline = 0;          ///< in dots
    int spacing = 0;            ///< right of characters, in dots
    int pitch = 0;              ///< dots from character to character; 0: those of the cell
    int charactersPerInch = 0;  ///< Custom: which fonts are A and B

    int alignment = 0;  ///< 1: in the middle, 2: at the right
    int leftMargin = 0;
    int areaWidth = 0;
    int lineSpacing = 0;
    int definedSpacing = 0;  ///< Star: of ESC A
    QSize motionUnits;       ///< per inch
    QVector<int> tabs;       ///< in dots

    PrintCharset charset;
    KanjiState kanji;
    BarcodeState barcode;

    quint16 effects() const;
};

}  // namespace printerslib::drivers
