#include "encoder/drawncodes_p.h"

#include <algorithm>
#include <string_view>

#include "encoder/hazards_p.h"

namespace printerslib::drivers {

namespace {

using Symbology = Paper::Symbology;

constexpr std::string_view digits = "0123456789";

bool isDigit(char byte)
{
    return byte >= '0' && byte <= '9';
}

bool isAllOf(const QByteArray &payload, std::string_view allowed)
{
    return std::all_of(payload.begin(), payload.end(), [allowed](char byte) {
        return allowed.find(byte) != std::string_view::npos;
    });
}

bool isPlainText(const QByteArray &payload)
{
    return std::all_of(payload.begin(), payload.end(),
                       [](char byte) { return byte >= 0x20 && byte < 0x7F; });
}

bool isNumber(const QByteArray &payload, int least, int most)
{
    return payload.size() >= least && payload.size() <= most && isAllOf(payload, digits);
}

bool isCodabar(const QByteArray &payload)
{
    constexpr std::string_view ends = "ABCD";
    return payload.size() >= 3 && isAllOf(payload.left(1), ends) &&
           isAllOf(payload.right(1), ends) &&
           isAllOf(payload.mid(1, payload.size() - 2), "0123456789-$:/.+");
}

bool isTaken(const Paper::Code &code)
{
    const QByteArray &payload = code.payload;
    if (payload.isEmpty() || code.variant != Paper::Code::Usual)
        return false;
    switch (code.symbology) {
        case Symbology::UpcA:
            return isNumber(payload, 11, 12);
        case Symbology::UpcE:
            return isNumber(payload, 11, 12) && payload.startsWith('0');
        case Symbology::Ean13:
            return isNumber(payload, 12, 13);
        case Symbology::Ean8:
            return isNumber(payload, 7, 8);
        case Symbology::Code39:
            return isAllOf(payload, "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ -.$/+%");
        case Symbology::Itf:
            return payload.size() % 2 == 0 && isAllOf(payload, digits);
        case Symbology::Codabar:
            return isCodabar(payload);
        case Symbology::Code93:
            return isPlainText(payload);
        case Symbology::Code128:
            return std::all_of(payload.begin(), payload.end(),
                               [](char byte) { return static_cast<signed char>(byte) >= 0; });
        case Symbology::QrCode:
            return true;
        default:
            return false;
    }
}

/// Data ends at RS with Star's printers, and "%" begins what stands for other characters.
bool isTakenByStar(const Paper::Code &code)
{
    const bool hasMarks = code.symbology == Symbology::Code128 && code.payload.contains('%');
    return code.symbology == Symbology::QrCode || (isPlainText(code.payload) && !hasMarks);
}

int digitsFrom(const QByteArray &payload, int at)
{
    int end = at;
    while (end < payload.size() && isDigit(payload.at(end)))
        ++end;
    return end - at;
}

/// Set A has control characters, set B small letters: whichever comes first decides.
char setFor(const QByteArray &payload, int at)
{
    for (int i = at; i < payload.size(); ++i) {
        const auto byte = static_cast<unsigned char>(payload.at(i));
        if (byte < 0x20)
            return 'A';
        if (byte >= 0x60)
            return 'B';
    }
    return 'B';
}

bool isIn(char set, char byte)
{
    const auto value = static_cast<unsigned char>(byte);
    return set == 'A' ? value < 0x60 : set == 'B' && value >= 0x20;
}

/// Whether so many digits are shorter in pairs, a change of the set counted.
bool isWorthPairs(int count, bool isAtBegin, bool isAtEnd)
{
    constexpr int alone = 2;
    constexpr int atOneEnd = 4;
    constexpr int between = 6;
    if (isAtBegin && isAtEnd)
        return count == alone || count >= atOneEnd;
    return count >= (isAtBegin || isAtEnd ? atOneEnd : between);
}

}  // namespace

int drawncodes::numberOfLevel(const Paper::Code &code)
{
    constexpr std::string_view levels = "LMQH";
    const auto number = levels.find(code.correctionLevel);
    return number == std::string_view::npos ? 0 : int(number);
}

QByteArray drawncodes::withCodeSets(const QByteArray &payload)
{
    QByteArray data;
    char set = 0;
    const auto change = [&data, &set](char to) {
        if (set != to)
            data.append('{').append(to);
        set = to;
    };
    for (int i = 0; i < payload.size();) {
        if (static_cast<signed char>(payload.at(i)) < 0)
            return {};
        const int count = digitsFrom(payload, i);
        const bool isPairs = set == 'C'
                                 ? count >= 2
                                 : isWorthPairs(count, data.isEmpty(), i + count == payload.size());
        if (isPairs && (count % 2 == 0 || set == 'C' || data.isEmpty())) {
            change('C');
            data.append(static_cast<char>(10 * (payload.at(i) - '0') + payload.at(i + 1) - '0'));
            i += 2;
            continue;
        }
        // Of an odd count in the middle the first digit stays in the set before.
        if (set == 0 || set == 'C' || !isIn(set, payload.at(i)))
            change(setFor(payload, i));
        data.append(payload.at(i));
        if (payload.at(i) == '{')
            data.append('{');
        ++i;
    }
    return data;
}

QByteArray drawncodes::dataOf(const Paper::Code &code, Dialect dialect)
{
    const bool hasSets = code.symbology == Symbology::Code128 && dialect == Dialect::EscPos;
    return hasSets ? withCodeSets(code.payload) : code.payload;
}

namespace {

/// Data with the bytes in front of it that count it.
QByteArray countedData(const Paper::Code &code, const QByteArray &data, Dialect dialect)
{
    const bool isEscPosQrCode = code.symbology == Symbology::QrCode && dialect == Dialect::EscPos;
    constexpr int function = 3;  // bytes of it are counted too
    const int size = data.size() + (isEscPosQrCode ? function : 0);
    QByteArray counted(1, static_cast<char>(size));
    if (code.symbology == Symbology::QrCode)
        counted += static_cast<char>(size >> 8);
    if (isEscPosQrCode)
        counted += "1P0";
    return counted + data;
}

}  // namespace

bool isDrawnByPrinter(const PrinterProfile &profile, const Paper::Code &code)
{
    constexpr int mostBarcodeData = 255;
    const QMap<Symbology, int> drawn = profile.drawnCodes();
    const auto most = drawn.constFind(code.symbology);
    if (most == drawn.constEnd() || code.payload.size() > *most || !isTaken(code) ||
        code.module.width() < profile.leastModule() || code.module.width() > profile.mostModule())
        return false;
    if (profile.dialect() == Dialect::StarLine && !isTakenByStar(code))
        return false;
    const QByteArray data = drawncodes::dataOf(code, profile.dialect());
    const bool fits = code.symbology == Symbology::QrCode || data.size() <= mostBarcodeData;
    return fits &&
           !hazards::hasAny(countedData(code, data, profile.dialect()), hazards::rulesOf(profile));
}

}  // namespace printerslib::drivers
