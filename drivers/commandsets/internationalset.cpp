#include "commandsets/internationalset_p.h"

#include <algorithm>
#include <iterator>

namespace printerslib::drivers {

namespace {

struct Country
{
    int number;
    const char16_t *characters;
};

// Epson's command reference, ESC R; Star's has the same up to 13, and 64.
constexpr Country countries[] = {
    {0, u"#$@[\\]^`{|}~"},   // United States
    {1, u"#$à°ç§^`éùè¨"},    // France
    {2, u"#$§ÄÖÜ^`äöüß"},    // Germany
    {3, u"£$@[\\]^`{|}~"},   // United Kingdom
    {4, u"#$@ÆØÅ^`æøå~"},    // Denmark I
    {5, u"#¤ÉÄÖÅÜéäöåü"},    // Sweden
    {6, u"#$@°\\é^ùàòèì"},   // Italy
    {7, u"₧$@¡Ñ¿^`¨ñ}~"},    // Spain I
    {8, u"#$@[¥]^`{|}~"},    // Japan
    {9, u"#¤ÉÆØÅÜéæøåü"},    // Norway
    {10, u"#$ÉÆØÅÜéæøåü"},   // Denmark II
    {11, u"#$á¡Ñ¿é`íñóú"},   // Spain II
    {12, u"#$á¡Ñ¿éüíñóú"},   // Latin America
    {13, u"#$@[₩]^`{|}~"},   // Korea
    {14, u"#$ŽŠĐĆČžšđćč"},   // Slovenia and Croatia
    {15, u"#¥@[\\]^`{|}~"},  // China
    {16, u"#đ@[\\]^`{|}~"},  // Vietnam
    {17, u"#$@[\\]^`{|}~"},  // Arabia
    {64, u"#$§°'\"¶`©®†™"},  // legal signs
};

}  // namespace

const char16_t *internationalCharacters(int set)
{
    const auto *const country = std::find_if(std::begin(countries), std::end(countries),
                                             [set](const Country &c) { return c.number == set; });
    return country == std::end(countries) ? nullptr : country->characters;
}

}  // namespace printerslib::drivers
