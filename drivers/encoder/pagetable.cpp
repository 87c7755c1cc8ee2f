#include "encoder/pagetable_p.h"

#include <QMutex>
#include <QTextCodec>
#include <algorithm>
#include <array>
#include <vector>

#include "printers/textprintermodels.h"
#include "printerslib/drivers/codepage.h"

namespace printerslib::drivers {

namespace {

using Pages = QMap<int, QString>;

// The command that chooses a page has one byte for its number.
constexpr int pageNumbers = 256;

// Models have about ten lists; users' files may bring more.
constexpr size_t mostTables = 64;

bool isControlCode(char16_t character)
{
    return character < 0x20 || (character >= 0x7F && character < 0xA0);
}

}  // namespace

/// By character a row with a byte for each page; 0: the page lacks it. What a page shows by no
/// byte of its own is in no row.
class PageTable::Rows
{
public:
    explicit Rows(const Pages &pages);

    int columns() const { return int(m_numbers.size()); }
    int numberOf(int column) const { return m_numbers[size_t(column)]; }
    int columnOf(int page) const
    {
        return page >= 0 && page < pageNumbers ? m_columns[size_t(page)] : -1;
    }
    /// Bytes by column; the first row, of zeros, for a character that no page has.
    const unsigned char *bytesOf(char16_t character) const
    {
        const size_t block = m_blocks[character >> 8];
        return m_bytes.data() + m_rows[block << 8 | (character & 0xFF)];
    }
    bool hasAny(char16_t character) const { return bytesOf(character) != m_bytes.data(); }

private:
    void add(int column, char16_t character, unsigned char byte);
    void addPage(int column, const QString &name);
    void addSpaces();

    std::vector<int> m_numbers;  ///< of the pages, rising
    std::array<qint16, pageNumbers> m_columns;
    // Characters of a page lie in few blocks of 256 each; block 0 of `m_rows` is empty.
    std::array<quint16, 256> m_blocks = {};
    std::vector<quint32> m_rows;  ///< where in `m_bytes`
    std::vector<unsigned char> m_bytes;
};

PageTable::Rows::Rows(const Pages &pages) : m_rows(256, 0)
{
    m_columns.fill(-1);
    for (auto it = pages.lowerBound(0); it != pages.end() && it.key() < pageNumbers; ++it) {
        m_columns[size_t(it.key())] = qint16(m_numbers.size());
        m_numbers.push_back(it.key());
    }
    m_bytes.assign(size_t(columns()), 0);
    for (int column = 0; column < columns(); ++column)
        addPage(column, pages.value(numberOf(column)));
    addSpaces();
}

void PageTable::Rows::add(int column, char16_t character, unsigned char byte)
{
    quint16 &block = m_blocks[character >> 8];
    if (block == 0) {
        block = quint16(m_rows.size() >> 8);
        m_rows.resize(m_rows.size() + 256, 0);
    }
    quint32 &row = m_rows[size_t(block) << 8 | (character & 0xFF)];
    if (row == 0) {
        row = quint32(m_bytes.size());
        m_bytes.resize(m_bytes.size() + size_t(columns()), 0);
    }
    unsigned char &place = m_bytes[row + size_t(column)];
    if (place == 0)
        place = byte;
}

/// Of a set that nobody knows only ASCII can be relied on.
void PageTable::Rows::addPage(int column, const QString &name)
{
    const auto page = CodePage::forName(name);
    const unsigned last = page ? 0xFF : 0x7E;
    for (unsigned value = 0x20; value <= last; ++value) {
        const auto byte = static_cast<unsigned char>(value);
        const char16_t character = page ? page->character(byte) : char16_t(value);
        if (!isControlCode(character))
            add(column, character, byte);
    }
}

/// Amounts are often grouped by such spaces, which are of no use in cells of one width.
void PageTable::Rows::addSpaces()
{
    for (char16_t character = 0xA0; character < 0x3001; ++character) {
        if (QChar(character).category() != QChar::Separator_Space)
            continue;
        for (int column = 0; column < columns(); ++column)
            add(column, character, ' ');
    }
}

PageTable::PageTable(const QMap<int, QString> &pages) : m_rows(std::make_shared<const Rows>(pages))
{
    for (unsigned value = 0; value < 0x10000; ++value)
        m_characters[value >> 6] |= quint64(m_rows->hasAny(char16_t(value))) << (value & 63);
}

std::shared_ptr<const PageTable> PageTable::of(const PrinterProfile &profile)
{
    struct Known
    {
        Pages pages;
        std::shared_ptr<const PageTable> table;
    };
    static QMutex mutex;
    // Not destroyed at the end, as threads may ask till then.
    static auto &tables = *new std::vector<Known>;
    const Pages pages = profile.codePages();
    const QMutexLocker lock(&mutex);
    // Profiles share their lists, which then are equal at the first look.
    const auto known = std::find_if(tables.begin(), tables.end(),
                                    [&pages](const Known &row) { return row.pages == pages; });
    if (known != tables.end())
        return known->table;
    if (tables.size() == mostTables)
        tables.erase(tables.begin());
    tables.push_back({pages, std::shared_ptr<const PageTable>(new PageTable(pages))});
    return tables.back().table;
}

std::optional<unsigned char> PageTable::byteOn(int page, char16_t character) const
{
    const int column = m_rows->columnOf(page);
    const unsigned char byte = column < 0 ? 0 : m_rows->bytesOf(character)[column];
    return byte == 0 ? std::nullopt : std::optional<unsigned char>(byte);
}

int PageTable::pageFor(const char16_t *text, int size, int preferred) const
{
    if (size <= 0)
        return -1;
    if (byteOn(preferred, *text))
        return preferred;
    std::array<qint16, pageNumbers> columns;
    int count = 0;
    for (; count < m_rows->columns(); ++count)
        columns[size_t(count)] = qint16(count);
    int best = -1;
    for (int i = 0; i < size && count > 0; ++i) {
        const unsigned char *const bytes = m_rows->bytesOf(text[i]);
        const auto end = std::remove_if(columns.begin(), columns.begin() + count,
                                        [bytes](qint16 column) { return bytes[column] == 0; });
        count = int(end - columns.begin());
        if (count > 0)
            best = columns.front();
    }
    return best < 0 ? -1 : m_rows->numberOf(best);
}

namespace {

/// Whether both show the same above ASCII.
bool areAlike(const CodePage &one, const CodePage &other)
{
    for (unsigned byte = 0x80; byte < 0x100; ++byte) {
        const auto value = static_cast<unsigned char>(byte);
        if (one.character(value) != other.character(value))
            return false;
    }
    return true;
}

/// Names differ by who writes them ("windows-1251", "CP1251"), what they mean doesn't.
std::optional<CodePage> pageOfCodec(const QString &codec)
{
    const QTextCodec *const known = QTextCodec::codecForName(codec.toLatin1());
    const auto page = CodePage::forName(codec);
    return page || known == nullptr ? page : CodePage::forName(QString::fromLatin1(known->name()));
}

int pageNamed(const Pages &pages, const QString &codec)
{
    for (auto it = pages.begin(); it != pages.end(); ++it) {
        if (it->compare(codec, Qt::CaseInsensitive) == 0)
            return it.key();
    }
    const auto wanted = pageOfCodec(codec);
    for (auto it = pages.begin(); wanted && it != pages.end(); ++it) {
        const auto page = CodePage::forName(*it);
        if (page && areAlike(*page, *wanted))
            return it.key();
    }
    return -1;
}

}  // namespace

int PageTable::firstPage(const PrinterProfile &profile, int number, const QString &codec)
{
    if (number != 0)
        return profile.codePages().contains(number) ? number : -1;
    if (codec.isEmpty() || profile.modelId() != TextPrinterModels::MODEL_GENERAL_EPSON)
        return profile.initialCodePage();
    return pageNamed(profile.codePages(), codec);
}

}  // namespace printerslib::drivers
