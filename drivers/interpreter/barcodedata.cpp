#include "interpreter/barcodedata_p.h"

#include <algorithm>

namespace printerslib::drivers {

namespace {

constexpr char fnc1 = '\x1D';

/// Marks are a brace and a letter: {A to {C choose a set, {S shifts, {1 to {4 are functions. In set
/// C a byte stands for two digits.
QByteArray withoutMarks(const QByteArray &sent)
{
    QByteArray payload;
    bool isSetC = false;
    bool isMarked = false;
    for (int i = 0; i < sent.size(); ++i) {
        const char byte = sent.at(i);
        if (byte != '{' || i + 1 == sent.size()) {
            const auto value = static_cast<unsigned char>(byte);
            if (isSetC && value < 100)
                payload += QByteArray::number(value).rightJustified(2, '0');
            else
                payload += byte;
            continue;
        }
        const char mark = sent.at(++i);
        if (mark == '{')
            payload += '{';
        else if (mark == '1' && payload.isEmpty() && !isMarked)
            isMarked = true;  // in front it says what the code is, and is no data
        else if (mark == '1')
            payload += fnc1;
        else if (mark >= 'A' && mark <= 'C')
            isSetC = mark == 'C';
    }
    return payload;
}

/// Weights are 3 and 1 in turn, from the last digit on.
char checkDigit(const QByteArray &digits)
{
    int sum = 0;
    for (int i = 0; i < digits.size(); ++i)
        sum += (digits.at(digits.size() - 1 - i) - '0') * (i % 2 == 0 ? 3 : 1);
    return static_cast<char>('0' + (10 - sum % 10) % 10);
}

int digitsWithoutCheck(Paper::Symbology symbology)
{
    switch (symbology) {
        case Paper::Symbology::UpcA:
            return 11;
        case Paper::Symbology::Ean13:
            return 12;
        case Paper::Symbology::Ean8:
            return 7;
        default:
            return -1;
    }
}

}  // namespace

QByteArray barcodePayload(Paper::Symbology symbology, const QByteArray &sent, bool hasMarks)
{
    if (hasMarks)
        return withoutMarks(sent);
    const bool isNumber =
        std::all_of(sent.begin(), sent.end(), [](char c) { return c >= '0' && c <= '9'; });
    if (isNumber && sent.size() == digitsWithoutCheck(symbology))
        return sent + checkDigit(sent);
    return sent;
}

}  // namespace printerslib::drivers
