#include "interpreter/printstate_p.h"

#include "commandsets/internationalset_p.h"
#include "printerslib/drivers/paper.h"

namespace printerslib::drivers {

namespace {

constexpr int usualTabColumns = 8;

}  // namespace

PrintCharset::PrintCharset()
{
    fill();
}

bool PrintCharset::setCodePage(const PrinterProfile &profile, int number)
{
    const QMap<int, QString> pages = profile.codePages();
    const auto page = CodePage::forName(pages.value(number));
    if (!page)
        return false;
    m_page = page;
    fill();
    return true;
}

bool PrintCharset::setCountry(int number)
{
    if (internationalCharacters(number) == nullptr)
        return false;
    m_country = number;
    fill();
    return true;
}

void PrintCharset::fill()
{
    for (unsigned value = 0; value < m_characters.size(); ++value) {
        const auto byte = static_cast<unsigned char>(value);
        const char16_t character = m_page ? m_page->character(byte) : byte;
        m_characters[value] = character == 0 ? u'\uFFFD' : character;
    }
    const char16_t *characters = internationalCharacters(m_country);
    for (size_t i = 0; m_country != 0 && i < std::size(internationalBytes); ++i)
        m_characters[internationalBytes[i]] = characters[i];
}

void KanjiState::choose(const PrinterProfile &profile, const char *name)
{
    const QString own = profile.kanjiSet();
    if (own.isEmpty() || own == QLatin1String("SHIFT_JIS"))
        set = TwoByteSet::forName(QLatin1String(name));
}

PrintState::PrintState(const PrinterProfile &profile, int codePage, int paperDots)
    : font(profile.initialFont()),
      areaWidth(paperDots),
      lineSpacing(profile.lineSpacing()),
      definedSpacing(profile.lineSpacing()),
      motionUnits(profile.motionUnitsPerInch())
{
    if (!charset.setCodePage(profile, codePage))
        charset.setCodePage(profile, profile.initialCodePage());
    const int column = profile.fontCells().value(font).width();
    for (int tab = usualTabColumns * column; tab < paperDots; tab += usualTabColumns * column)
        tabs.append(tab);
    kanji.set = TwoByteSet::forName(profile.kanjiSet());
    kanji.isOn = kanji.set.has_value();
}

quint16 PrintState::effects() const
{
    struct Row
    {
        bool isOn;
        Paper::Effect effect;
    };
    const Row rows[] = {
        {isBold || isDoubleStrike, Paper::Bold},
        {isItalic, Paper::Italic},
        {underline == 1, Paper::Underline},
        {underline > 1, Paper::ThickUnderline},
        {isInverse, Paper::Inverse},
        {isUpsideDown, Paper::UpsideDown},
        {isTurned, Paper::Turned},
        {isSecondColour, Paper::SecondColour},
    };
    quint16 effects = 0;
    for (const Row &row : rows)
        effects |= row.isOn ? quint16(row.effect) : quint16(0);
    return effects;
}

}  // namespace printerslib::drivers
