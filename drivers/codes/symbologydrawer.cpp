#include "printerslib/drivers/symbologydrawer.h"

#include <zint.h>

#include <QMutex>
#include <QMutexLocker>
#include <algorithm>
#include <cstring>
#include <memory>

#include "codepayload_p.h"

namespace printerslib::drivers {

using namespace codes;

namespace {

using Symbology = Paper::Symbology;

struct SymbolDeleter
{
    void operator()(zint_symbol *symbol) const { ZBarcode_Delete(symbol); }
};
using SymbolPointer = std::unique_ptr<zint_symbol, SymbolDeleter>;

constexpr int bitsPerByte = 8;

/// What zint is asked for.
struct Order
{
    int symbology = 0;
    QByteArray payload;
    int inputMode = DATA_MODE;
    QString fault;
};

Order faulty(const QString &fault)
{
    Order order;
    order.fault = fault;
    return order;
}

bool isAllDigits(const QByteArray &payload)
{
    return std::all_of(payload.begin(), payload.end(),
                       [](char byte) { return byte >= '0' && byte <= '9'; });
}

Order plainOrder(const Paper::Code &code, int symbology)
{
    return {symbology, code.payload, DATA_MODE, QString()};
}

Order gs1Order(const Paper::Code &code, int symbology)
{
    const QByteArray elements = bracketedElements(code.payload);
    if (elements.isEmpty())
        return faulty(QStringLiteral("It has no elements"));
    return {symbology, elements, GS1_MODE | GS1NOCHECK_MODE, QString()};
}

Order code128Order(const Paper::Code &code, int symbology)
{
    const auto isAscii = [](char byte) { return static_cast<unsigned char>(byte) < 0x80; };
    if (!std::all_of(code.payload.begin(), code.payload.end(), isAscii))
        return faulty(QStringLiteral("Code 128 holds ASCII characters only"));
    return plainOrder(code, code.variant == Paper::Code::OnlySetB ? BARCODE_CODE128B : symbology);
}

/// Small letters would be drawn as capitals.
Order code39Order(const Paper::Code &code, int symbology)
{
    const auto isSmall = [](char byte) { return byte >= 'a' && byte <= 'z'; };
    if (std::any_of(code.payload.begin(), code.payload.end(), isSmall))
        return faulty(QStringLiteral("Code 39 holds no small letters"));
    return {symbology, withoutStars(code.payload), DATA_MODE, QString()};
}

/// An article's number, of which zint wants to be told whether it has its check digit.
Order articleOrder(const QByteArray &digits, int size, int symbology, int symbologyWithCheck)
{
    if (!isAllDigits(digits) || digits.size() < size || digits.size() > size + 1)
        return faulty(QStringLiteral("It needs %1 or %2 digits").arg(size).arg(size + 1));
    return {digits.size() == size ? symbology : symbologyWithCheck, digits, DATA_MODE, QString()};
}

Order upcAOrder(const Paper::Code &code, int symbology)
{
    return articleOrder(code.payload, 11, symbology, BARCODE_UPCA_CHK);
}

Order ean13Order(const Paper::Code &code, int symbology)
{
    return articleOrder(code.payload, 12, symbology, BARCODE_EANX_CHK);
}

Order ean8Order(const Paper::Code &code, int symbology)
{
    return articleOrder(code.payload, 7, symbology, BARCODE_EANX_CHK);
}

Order upcEOrder(const Paper::Code &code, int symbology)
{
    constexpr int shortDigits = 6;
    QByteArray digits = code.payload;
    if (isAllDigits(digits) && (digits.size() == 11 || digits.size() == 12)) {
        digits = shortenedUpc(digits);
        if (digits.isEmpty())
            return faulty(QStringLiteral("These digits have no UPC-E"));
    }
    if (digits.size() == shortDigits)
        digits.prepend('0');
    // Another number system would be drawn as 0.
    if (isAllDigits(digits) && !digits.startsWith('0') && !digits.startsWith('1'))
        return faulty(QStringLiteral("A UPC-E begins with 0 or 1"));
    return articleOrder(digits, shortDigits + 1, symbology, BARCODE_UPCE_CHK);
}

/// Fewer digits than an article's number has would be drawn as another one, with zeros in front.
Order dataBarOrder(const Paper::Code &code, int symbology)
{
    const auto articleOf = [&code](int kind) {
        constexpr int digits = 13;
        return articleOrder(code.payload, digits, kind, kind);
    };
    switch (code.variant) {
        case Paper::Code::Limited:
            return articleOf(BARCODE_DBAR_LTD);
        case Paper::Code::Expanded:
            return gs1Order(code, BARCODE_DBAR_EXP);
        case Paper::Code::Stacked:
            return articleOf(BARCODE_DBAR_STK);
        case Paper::Code::StackedOmni:
            return articleOf(BARCODE_DBAR_OMNSTK);
        case Paper::Code::ExpandedStacked:
            return gs1Order(code, BARCODE_DBAR_EXPSTK);
        default:
            return articleOf(symbology);
    }
}

Order pdf417Order(const Paper::Code &code, int symbology)
{
    return plainOrder(code, code.variant == Paper::Code::Compact ? BARCODE_PDF417COMP : symbology);
}

struct SymbologyRow
{
    Symbology symbology;
    int zint;
    Order (*order)(const Paper::Code &code, int symbology);
};

constexpr SymbologyRow symbologies[] = {
    {Symbology::UpcA, BARCODE_UPCA, upcAOrder},
    {Symbology::UpcE, BARCODE_UPCE, upcEOrder},
    {Symbology::Ean13, BARCODE_EANX, ean13Order},
    {Symbology::Ean8, BARCODE_EANX, ean8Order},
    {Symbology::Code39, BARCODE_CODE39, code39Order},
    {Symbology::Itf, BARCODE_C25INTER, plainOrder},
    {Symbology::Codabar, BARCODE_CODABAR, plainOrder},
    {Symbology::Code93, BARCODE_CODE93, plainOrder},
    {Symbology::Code128, BARCODE_CODE128, code128Order},
    {Symbology::Gs1_128, BARCODE_GS1_128, gs1Order},
    {Symbology::GS1DataBar, BARCODE_DBAR_OMN, dataBarOrder},
    {Symbology::QrCode, BARCODE_QRCODE, plainOrder},
    {Symbology::MicroQrCode, BARCODE_MICROQR, plainOrder},
    {Symbology::Pdf417, BARCODE_PDF417, pdf417Order},
    {Symbology::DataMatrix, BARCODE_DATAMATRIX, plainOrder},
    {Symbology::Aztec, BARCODE_AZTEC, plainOrder},
    {Symbology::MaxiCode, BARCODE_MAXICODE, plainOrder},
};

Order orderOf(const Paper::Code &code)
{
    if (code.payload.isEmpty())
        return faulty(QStringLiteral("The payload is empty"));
    for (const SymbologyRow &row : symbologies) {
        if (row.symbology == code.symbology)
            return row.order(code, row.zint);
    }
    return faulty(QStringLiteral("The symbology isn't known"));
}

/// The number of a level from '0' on, or -1 for one that there isn't.
int levelOf(const char *levels, char level)
{
    const char *found = level == 0 ? nullptr : std::strchr(levels, level);
    return found == nullptr ? -1 : static_cast<int>(found - levels);
}

void setOptions(const Paper::Code &code, zint_symbol &symbol)
{
    constexpr int mostColumns = 30;
    constexpr int mostRows = 90;
    if (code.symbology == Symbology::QrCode || code.symbology == Symbology::MicroQrCode) {
        const int level = levelOf("LMQH", code.correctionLevel);
        symbol.option_1 = level < 0 ? -1 : level + 1;
    } else if (code.symbology == Symbology::Pdf417) {
        symbol.option_1 = levelOf("012345678", code.correctionLevel);
        symbol.option_2 = qBound(0, code.grid.width(), mostColumns);
        symbol.option_3 = qBound(0, code.grid.height(), mostRows);
    } else if (code.symbology == Symbology::DataMatrix &&
               code.variant != Paper::Code::Rectangular) {
        symbol.option_3 = DM_SQUARE;
    }
}

/// How high the rows of zint's are, in modules. One of no height of its own shares what the others
/// leave.
int heightOfRow(const zint_symbol &symbol, int row)
{
    float left = symbol.height;
    int sharing = 0;
    for (int i = 0; i < symbol.rows; ++i) {
        left -= symbol.row_height[i];
        sharing += symbol.row_height[i] == 0 ? 1 : 0;
    }
    const float height =
        symbol.row_height[row] == 0 ? left / static_cast<float>(sharing) : symbol.row_height[row];
    return qMax(1, qRound(height));
}

int bytesOfRow(int modules)
{
    return (modules + bitsPerByte - 1) / bitsPerByte;
}

/// Sets a bit of a row, counted from its highest.
void setBit(char *row, int bit)
{
    char &byte = row[bit / bitsPerByte];
    byte = static_cast<char>(byte | 0x80 >> (bit % bitsPerByte));
}

/// A row of modules, whose highest bit is the leftmost; zint has it the other way round.
QByteArray rowOf(const zint_symbol &symbol, int row)
{
    QByteArray bytes(bytesOfRow(symbol.width), '\0');
    for (int column = 0; column < symbol.width; ++column) {
        const int byte = symbol.encoded_data[row][column / bitsPerByte];
        if ((byte >> (column % bitsPerByte) & 1) != 0)
            setBit(bytes.data(), column);
    }
    return bytes;
}

void takeModules(const zint_symbol &symbol, Paper::Code &code)
{
    const bool differs = code.symbology == Symbology::GS1DataBar && symbol.rows > 1;
    int rows = 0;
    for (int row = 0; row < symbol.rows; ++row) {
        const int times = differs ? heightOfRow(symbol, row) : 1;
        code.rows += rowOf(symbol, row).repeated(times);
        rows += times;
    }
    code.modules = QSize(symbol.width, rows);
}

/// zint's picture of the hexagons and the rings, a pixel for each dot.
bool takeDots(zint_symbol &symbol, Paper::Code &code)
{
    // 28 mm at 203 dots per inch, as zint's picture is 300 pixels wide.
    constexpr float scaleOfPrinter = 0.75F;
    constexpr int bytesPerPixel = 3;
    symbol.scale = scaleOfPrinter;
    symbol.show_hrt = 0;
    if (ZBarcode_Buffer(&symbol, 0) >= ZINT_ERROR)
        return false;
    const int width = symbol.bitmap_width;
    const int bytesPerRow = bytesOfRow(width);
    code.modules = QSize(width, symbol.bitmap_height);
    code.rows = QByteArray(bytesPerRow * symbol.bitmap_height, '\0');
    for (int y = 0; y < symbol.bitmap_height; ++y) {
        for (int x = 0; x < width; ++x) {
            if (symbol.bitmap[(qsizetype(y) * width + x) * bytesPerPixel] < 0x80)
                setBit(code.rows.data() + qsizetype(y) * bytesPerRow, x);
        }
    }
    return true;
}

// "Error 320: Invalid character in data" is for zint's own users as far as the colon.
QString faultOf(const zint_symbol &symbol)
{
    const QString text = QString::fromUtf8(symbol.errtxt);
    return text.mid(text.indexOf(QLatin1Char(':')) + 1).trimmed();
}

/// Gives null with the fault if the symbol can't be made.
/// @param size as zint numbers the sizes of a symbology; 0: what fits
SymbolPointer encoded(const Order &order, const Paper::Code &code, int size, QString *fault)
{
    SymbolPointer symbol(ZBarcode_Create());
    if (symbol == nullptr) {
        *fault = QStringLiteral("There is no memory for it");
        return nullptr;
    }
    symbol->symbology = order.symbology;
    symbol->input_mode = order.inputMode;
    setOptions(code, *symbol);
    if (size != 0)
        symbol->option_2 = size;
    const auto *bytes = reinterpret_cast<const unsigned char *>(order.payload.constData());
    if (ZBarcode_Encode(symbol.get(), bytes, order.payload.size()) < ZINT_ERROR)
        return symbol;
    *fault = faultOf(*symbol);
    return nullptr;
}

/// The smallest rectangle that holds the data.
SymbolPointer encodedRectangle(const Order &order, const Paper::Code &code, QString *fault)
{
    // zint's numbers of 8 x 18 to 16 x 48.
    constexpr int smallest = 25;
    constexpr int largest = 30;
    for (int size = smallest; size <= largest; ++size) {
        SymbolPointer symbol = encoded(order, code, size, fault);
        if (symbol != nullptr)
            return symbol;
    }
    return nullptr;
}

void drawAnew(Paper::Code &code)
{
    code.modules = QSize();
    code.rows.clear();
    const Order order = orderOf(code);
    code.fault = order.fault;
    if (!code.fault.isEmpty())
        return;
    const bool isRectangle =
        code.symbology == Symbology::DataMatrix && code.variant == Paper::Code::Rectangular;
    QString fault;
    const SymbolPointer symbol =
        isRectangle ? encodedRectangle(order, code, &fault) : encoded(order, code, 0, &fault);
    if (symbol == nullptr)
        code.fault = fault;
    else if (code.symbology != Symbology::MaxiCode)
        takeModules(*symbol, code);
    else if (!takeDots(*symbol, code))
        code.fault = faultOf(*symbol);
}

bool isDrawnAlike(const Paper::Code &one, const Paper::Code &other)
{
    return one.symbology == other.symbology && one.variant == other.variant &&
           one.correctionLevel == other.correctionLevel && one.grid == other.grid &&
           one.payload == other.payload;
}

}  // namespace

class SymbologyDrawer::LastCode
{
public:
    /// Whether that was the code before, too: then it has its drawing.
    bool take(Paper::Code &code)
    {
        const QMutexLocker lock(&m_mutex);
        if (!m_isSet || !isDrawnAlike(m_code, code))
            return false;
        code.modules = m_code.modules;
        code.rows = m_code.rows;
        code.fault = m_code.fault;
        return true;
    }
    void keep(const Paper::Code &code)
    {
        const QMutexLocker lock(&m_mutex);
        m_code = code;
        m_isSet = true;
    }

private:
    QMutex m_mutex;
    Paper::Code m_code;
    bool m_isSet = false;
};

SymbologyDrawer::SymbologyDrawer() : m_last(new LastCode) {}

SymbologyDrawer::~SymbologyDrawer() = default;

void SymbologyDrawer::draw(Paper::Code &code) const
{
    if (m_last->take(code))
        return;
    drawAnew(code);
    m_last->keep(code);
}

}  // namespace printerslib::drivers
