#include "printerslib/drivers/codepage.h"

#include <iconv.h>
#include <QHash>
#include <QMutex>
#include <QVarLengthArray>
#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>

#include "commandsets/codepage_p.h"

namespace printerslib::drivers {

namespace {

using Characters = std::array<char16_t, 256>;

/// A conversion to UTF-16 in the machine's order, without a mark.
class ToUtf16
{
public:
    explicit ToUtf16(const char *from) : m_conversion(iconv_open("UTF-16LE", from)) {}
    ~ToUtf16()
    {
        if (isOpen())
            iconv_close(m_conversion);
    }
    ToUtf16(const ToUtf16 &) = delete;
    ToUtf16 &operator=(const ToUtf16 &) = delete;

    bool isOpen() const { return m_conversion != reinterpret_cast<iconv_t>(-1); }

    enum Outcome { Whole, Free, NotOne };

    /// What a few bytes show. NotOne: they aren't a single character below U+10000.
    Outcome convert(const unsigned char *bytes, size_t size, char16_t &character)
    {
        std::array<unsigned char, 16> out = {};
        char *target = reinterpret_cast<char *>(out.data());
        size_t room = out.size();
        QVarLengthArray<char, 4> copy(reinterpret_cast<const char *>(bytes),
                                      reinterpret_cast<const char *>(bytes) + size);
        char *source = copy.data();
        iconv(m_conversion, nullptr, nullptr, nullptr, nullptr);
        if (iconv(m_conversion, &source, &size, &target, &room) == size_t(-1))
            return errno == EILSEQ ? Free : NotOne;
        // Sets with combining marks hold a letter back.
        iconv(m_conversion, nullptr, nullptr, &target, &room);
        if (out.size() - room != 2)
            return NotOne;
        character = char16_t(out[0] | out[1] << 8);
        return Whole;
    }

private:
    iconv_t m_conversion;
};

/// Names go to the C library as they are, which takes marks behind them for wishes.
bool isPlainName(const QString &name)
{
    return !name.isEmpty() && std::all_of(name.begin(), name.end(), [](QChar c) {
        return c.unicode() < 0x80 &&
               (c.isLetterOrNumber() || c == u'-' || c == u'_' || c == u':' || c == u'.');
    });
}

/// A set of single bytes that begins with ASCII; null for any other.
std::unique_ptr<Characters> readFromLibrary(const QString &name)
{
    ToUtf16 conversion(name.toLatin1().constData());
    if (!isPlainName(name) || !conversion.isOpen())
        return nullptr;
    auto characters = std::make_unique<Characters>();
    for (unsigned value = 0x20; value < 0x100; ++value) {
        const auto byte = static_cast<unsigned char>(value);
        char16_t character = 0;
        if (conversion.convert(&byte, 1, character) == ToUtf16::NotOne)
            return nullptr;
        // Sets of ISO 8859 have controls in the places that printers leave free.
        if (QChar(character).category() != QChar::Other_Control)
            (*characters)[value] = character;
    }
    // Printers leave the place of the deletion blank.
    (*characters)[0x7F] = u' ';
    // Sets that switch between several show little of themselves in single bytes.
    const auto upper = std::count_if(characters->begin() + 0x80, characters->end(),
                                     [](char16_t character) { return character != 0; });
    const bool isSet = (*characters)['A'] == u'A' && (*characters)['0'] == u'0' && upper >= 32;
    return isSet ? std::move(characters) : nullptr;
}

/// What the C library lacks: the upper half of a printer's own set.
struct OwnSet
{
    const char *name;
    const char16_t *upperHalf;
};

constexpr char16_t katakana[] =
    u"\u2581\u2582\u2583\u2584\u2585\u2586\u2587\u2588\u258F\u258E\u258D\u258C\u258B\u258A\u2589"
    u"\u253C"
    u"\u2534\u252C\u2524\u251C\u2594\u2500\u2502\u2595\u250C\u2510\u2514\u2518\u256D\u256E\u2570"
    u"\u256F"
    u"\u0020\uFF61\uFF62\uFF63\uFF64\uFF65\uFF66\uFF67\uFF68\uFF69\uFF6A\uFF6B\uFF6C\uFF6D\uFF6E"
    u"\uFF6F"
    u"\uFF70\uFF71\uFF72\uFF73\uFF74\uFF75\uFF76\uFF77\uFF78\uFF79\uFF7A\uFF7B\uFF7C\uFF7D\uFF7E"
    u"\uFF7F"
    u"\uFF80\uFF81\uFF82\uFF83\uFF84\uFF85\uFF86\uFF87\uFF88\uFF89\uFF8A\uFF8B\uFF8C\uFF8D\uFF8E"
    u"\uFF8F"
    u"\uFF90\uFF91\uFF92\uFF93\uFF94\uFF95\uFF96\uFF97\uFF98\uFF99\uFF9A\uFF9B\uFF9C\uFF9D\uFF9E"
    u"\uFF9F"
    u"\u2550\u255E\u256A\u2561\u25E2\u25E3\u25E5\u25E4\u2660\u2665\u2666\u2663\u25CF\u25CB\u2571"
    u"\u2572"
    u"\u2573\u5186\u5E74\u6708\u65E5\u6642\u5206\u79D2\u3012\u5E02\u533A\u753A\u6751\u4EBA\u2592"
    u"\u0020";
static_assert(sizeof katakana == 129 * sizeof(char16_t));

constexpr OwnSet ownSets[] = {
    {"KATAKANA", katakana},
};

std::unique_ptr<Characters> readOwn(const QString &name)
{
    const auto *const set =
        std::find_if(std::begin(ownSets), std::end(ownSets),
                     [&name](const OwnSet &own) { return name == QLatin1String(own.name); });
    if (set == std::end(ownSets))
        return nullptr;
    auto characters = std::make_unique<Characters>();
    for (unsigned value = 0x20; value < 0x7F; ++value)
        (*characters)[value] = char16_t(value);
    (*characters)[0x7F] = u' ';
    std::copy(set->upperHalf, set->upperHalf + 0x80, characters->begin() + 0x80);
    return characters;
}

/// Null for a name that nobody knows. Sets that were read are never taken back.
const Characters *charactersOf(const QString &name)
{
    static QMutex mutex;
    // Not destroyed at the end, as what it holds is in use till then.
    static auto &known = *new QHash<QString, const Characters *>;
    const QMutexLocker lock(&mutex);
    const auto it = known.constFind(name);
    if (it != known.constEnd())
        return *it;
    auto characters = readOwn(name);
    if (!characters)
        characters = readFromLibrary(name);
    // Names that don't exist come from anywhere, and would fill the memory.
    if (characters)
        known.insert(name, characters.get());
    return characters.release();
}

}  // namespace

std::optional<CodePage> CodePage::forName(const QString &name)
{
    CodePage page;
    page.m_name = name.toUpper();
    const Characters *characters = charactersOf(page.m_name);
    if (characters == nullptr)
        return std::nullopt;
    page.m_characters = characters->data();
    return page;
}

std::optional<unsigned char> CodePage::byteOf(char16_t character) const
{
    const char16_t *const end = m_characters + 256;
    const char16_t *const found = std::find(m_characters + 0x20, end, character);
    if (character == 0 || found == end)
        return std::nullopt;
    return static_cast<unsigned char>(found - m_characters);
}

namespace {

struct TwoByteRow
{
    const char *name;
    const char *iconvName;
    bool isSevenBit;
    bool hasKana;
    unsigned char firstLead;
    unsigned char lastLead;
};

constexpr TwoByteRow twoByteRows[] = {
    {"GB18030", "GB18030", false, false, 0x81, 0xFE},
    {"GB2312", "GB18030", false, false, 0xA1, 0xFE},
    {"BIG5", "BIG5", false, false, 0x81, 0xFE},
    {"EUC-KR", "UHC", false, false, 0x81, 0xFE},
    {"SHIFT_JIS", "CP932", false, true, 0x81, 0xFC},
    {"JIS", "EUC-JP", true, false, 0x21, 0x7E},
};

}  // namespace

std::optional<TwoByteSet> TwoByteSet::forName(const QString &name)
{
    const auto *const row =
        std::find_if(std::begin(twoByteRows), std::end(twoByteRows),
                     [&name](const TwoByteRow &r) { return name == QLatin1String(r.name); });
    if (row == std::end(twoByteRows))
        return std::nullopt;
    TwoByteSet set;
    set.m_name = row->name;
    set.m_iconvName = row->iconvName;
    set.m_isSevenBit = row->isSevenBit;
    set.m_hasKana = row->hasKana;
    set.m_firstLead = row->firstLead;
    set.m_lastLead = row->lastLead;
    return set;
}

char16_t TwoByteSet::character(unsigned char lead, unsigned char trail) const
{
    const auto high = static_cast<unsigned char>(m_isSevenBit ? 0x80 : 0);
    const unsigned char bytes[] = {static_cast<unsigned char>(lead | high),
                                   static_cast<unsigned char>(trail | high)};
    // A conversion is cheap to use and dear to open.
    thread_local struct
    {
        const char *name = nullptr;
        std::unique_ptr<ToUtf16> conversion;
    } last;
    if (last.name != m_iconvName) {
        last.conversion = std::make_unique<ToUtf16>(m_iconvName);
        last.name = m_iconvName;
    }
    char16_t character = 0;
    if (!last.conversion->isOpen() ||
        last.conversion->convert(bytes, sizeof bytes, character) != ToUtf16::Whole)
        return 0;
    return character;
}

}  // namespace printerslib::drivers
