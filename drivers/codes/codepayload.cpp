#include "codepayload_p.h"

#include <QList>
#include <algorithm>

namespace printerslib::drivers::codes {

namespace {

struct ElementRow
{
    const char *prefix;
    int size;  ///< of the element, identifier and all
};

// GS1 General Specifications, "Element strings with predefined length using GS1 Application
// Identifiers": no FNC1 stands behind these.
constexpr ElementRow elementsOfKnownLength[] = {
    {"00", 20}, {"01", 16}, {"02", 16}, {"03", 16}, {"04", 18}, {"11", 8},  {"12", 8}, {"13", 8},
    {"14", 8},  {"15", 8},  {"16", 8},  {"17", 8},  {"18", 8},  {"19", 8},  {"20", 4}, {"31", 10},
    {"32", 10}, {"33", 10}, {"34", 10}, {"35", 10}, {"36", 10}, {"41", 16},
};

constexpr int prefixSize = 2;

/// Bytes of the element that begins there; of a length that isn't known it is all the rest.
int elementSize(const QByteArray &elements, int at)
{
    const int left = elements.size() - at;
    const QByteArray prefix = elements.mid(at, prefixSize);
    for (const ElementRow &row : elementsOfKnownLength) {
        if (prefix == row.prefix)
            return std::min(row.size, left);
    }
    return left;
}

QByteArray inBrackets(const QByteArray &element)
{
    return '[' + element.left(prefixSize) + ']' + element.mid(prefixSize);
}

}  // namespace

QByteArray bracketedElements(const QByteArray &payload)
{
    QByteArray elements = payload;
    if (elements.startsWith('(')) {
        // zint takes as the identifier what stands in brackets, and puts in FNC1 by it.
        return elements.replace('(', '[').replace(')', ']').replace(fnc1, QByteArray());
    }
    QByteArray result;
    const QList<QByteArray> parts = elements.split(fnc1);
    for (const QByteArray &part : parts) {
        for (int at = 0, size = 0; at < part.size(); at += size) {
            size = elementSize(part, at);
            result += inBrackets(part.mid(at, size));
        }
    }
    return result;
}

// A UPC-A has a UPC-E where a manufacturer's number ends in zeros and the article's begins with
// them; the last digit says how many.
QByteArray shortenedUpc(const QByteArray &digits)
{
    constexpr int upcDigits = 11;
    const QByteArray maker = digits.mid(1, 5);
    const QByteArray article = digits.mid(6, 5);
    QByteArray six;
    if (maker.at(2) <= '2' && maker.endsWith("00") && article.startsWith("00"))
        six = maker.left(2) + article.right(3) + maker.at(2);
    else if (maker.endsWith("00") && article.startsWith("000"))
        six = maker.left(3) + article.right(2) + '3';
    else if (maker.endsWith('0') && article.startsWith("0000"))
        six = maker.left(4) + article.right(1) + '4';
    else if (article.startsWith("0000") && article.at(4) >= '5')
        six = maker + article.at(4);
    if (six.isEmpty() || !digits.startsWith('0'))
        return QByteArray();
    return '0' + six + digits.mid(upcDigits);
}

QByteArray withoutStars(const QByteArray &payload)
{
    const bool hasThem = payload.size() >= 2 && payload.startsWith('*') && payload.endsWith('*');
    return hasThem ? payload.mid(1, payload.size() - 2) : payload;
}

}  // namespace printerslib::drivers::codes
