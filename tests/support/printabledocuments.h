#pragma once

#include <rapidcheck.h>

#include <QByteArray>
#include <QString>
#include <algorithm>
#include <string>
#include <vector>

#include "arbitrary.h"
#include "papercodes.h"
#include "printerdocs/echarformat.h"
#include "printerdocs/textprinterdocument.h"
#include "printerslib/drivers/printlayout.h"
#include "printerslib/drivers/printoptions.h"
#include "printerslib/drivers/printtarget.h"

/// Documents with all that may be asked of a printer, most of it in sizes that a printer can do.
namespace printabledocuments {

using printerslib::drivers::PrintLayout;
using printerslib::drivers::PrintOptions;
using printerslib::drivers::PrintTarget;
using rc::gen::element;
using rc::gen::inRange;
using rc::gen::weightedElement;

/// Whether all text goes to the printer as text: no dots, no characters that the stream defines, no
/// raw codes.
inline bool isAllText(const PrintLayout &layout)
{
    return layout.drawings.isEmpty() &&
           std::none_of(layout.rows.begin(), layout.rows.end(),
                        [](const PrintLayout::Row &row) { return row.isRaster; }) &&
           std::none_of(
               layout.cells.begin(), layout.cells.end(),
               [](const PrintLayout::Cell &cell) { return (cell.format & CharRawCode) != 0; });
}

inline QByteArray bytesOf(int most, int values = 256)
{
    const auto bytes = *rc::gen::container<std::string>(
        *inRange(0, most + 1),
        rc::gen::map(inRange(0, values), [](int value) { return static_cast<char>(value); }));
    return QByteArray::fromStdString(bytes);
}

/// Letters of several pages beside each other, what no page has, symbols, control characters, and
/// characters of all planes, halves of them alone.
inline char32_t character()
{
    static const std::u32string usual = U"aZ09 .,=-АяЁ€";
    static const std::u32string rare =
        U"ßéÄŁżñøþ½°£¥§«»—–…„“│─┌╬█░"
        U"αΩπчғҚіїљעאبกカ漢字ﾊ₽₸№†‰™"
        U"\u00A0\u00AD\u200B\u2028\uFEFF\uFFFD\u0301";
    switch (*inRange(0, 24)) {
        case 0:
            return *inRange<char32_t>(1, 8);  // symbols
        case 1:
            return *inRange<char32_t>(0, 32);
        case 2:
            return *inRange<char32_t>(0x7F, 0xA0);
        case 3:
            return *inRange<char32_t>(0xA0, 0x10000);
        case 4:
            return *inRange<char32_t>(0x10000, 0x110000);
        case 5:
            return U'\t';
        case 6:
        case 7:
        case 8:
            return *rc::gen::elementOf(rare);
        default:
            return *rc::gen::elementOf(usual);
    }
}

inline QString text(int most)
{
    QString text;
    const int count = *weightedElement<int>({{6, *inRange(0, 14)}, {1, *inRange(0, most)}});
    for (int i = 0; i < count; ++i) {
        const char32_t c = character();
        if (QChar::requiresSurrogates(c))
            text += QString(QChar(QChar::highSurrogate(c))) + QChar(QChar::lowSurrogate(c));
        else
            text += QChar(static_cast<ushort>(c));
    }
    return text;
}

inline QByteArray formats()
{
    switch (*inRange(0, 4)) {
        case 0:
            return {};
        case 1:
            return QByteArray(1, static_cast<char>(*inRange(0, 256)));
        default:
            return bytesOf(16, *element(0x40, 0x80, 0x100));
    }
}

inline DocumentBlock textBlock()
{
    QStringList lines;
    QList<QByteArray> format;
    QList<QByteArray> font;
    QList<int> spacing;
    for (int i = *inRange(1, 4); i > 0; --i) {
        lines.append(text(120));
        format.append(formats());
        font.append(bytesOf(*element(0, 0, 1, 8), *element(1, 4, 4, 256)));
        spacing.append(
            *weightedElement<int>({{6, 0}, {4, *inRange(0, 8)}, {1, *inRange(-2, 300)}}));
    }
    DocumentBlock block;
    block.setType(DocumentBlock::BlockText);
    block.setText(lines);
    block.setFormat(format);
    block.setFont(font);
    block.setLineSpacing(spacing);
    block.setAlignment(static_cast<ETextAlignment>(*inRange(-1, 6)));
    return block;
}

/// Bytes that a printer obeys inside a picture, and others.
inline QByteArray dots(int size)
{
    static const QByteArray kinds[] = {QByteArray("\x10\x14\x01\x00\x01", 5),
                                       QByteArray("\x10\x04\x01", 3),
                                       QByteArray("\x10\x05\x02", 3),
                                       QByteArray("\x1b\x06\x01", 3),
                                       QByteArray("\x10", 1),
                                       QByteArray("\xAA\x55\x0F", 3),
                                       QByteArray("\xFF", 1),
                                       QByteArray(1, '\0')};
    const QByteArray unit =
        *element(0, 1) == 0
            ? *rc::gen::elementOf(std::vector<QByteArray>(std::begin(kinds), std::end(kinds)))
            : bytesOf(24) + 'x';
    return unit.repeated(size / unit.size() + 1).left(size);
}

inline MonochromeImage picture()
{
    const int width = *element(1, 5, 7, 8, 9, 15, 16, 17, 33, 100, 383, 384, 385, 399, 401, 511,
                               512, 513, 575, 576, 577, 639, 640, 641, 700);
    const int height = *element(1, 2, 7, 8, 23, 24, 25, 31, 48, 49, 100);
    const int bits = *element(8, 32);
    const int rowBytes = bits / 8 * ((width + bits - 1) / bits);
    return MonochromeImage(width, height, dots(rowBytes * height));
}

inline DocumentBlock pictureBlock()
{
    DocumentBlock block;
    block.setImg(picture());
    block.setType(DocumentBlock::BlockImage);
    block.setAlignment(static_cast<ETextAlignment>(*inRange(-1, 5)));
    return block;
}

/// A code of any number that there is, most of them with data that fits.
inline DocumentBlock codeBlock()
{
    const auto &rows = papercodes::codeExamples();
    const auto &row = rows.at(*inRange(0, rows.size()));
    QByteArray payload = row.payload;
    switch (*inRange(0, 6)) {
        case 0:
            payload = bytesOf(40);
            break;
        case 1:
            payload = QByteArray::fromStdString(*rc::gen::container<std::string>(
                *inRange(0, 40),
                rc::gen::elementOf(std::string("0123456789AB-ab {}\x1D\x10\x04"))));
            break;
        case 2:
            payload = QByteArray("\x10\x04\x01\x10\x14\x01\x00\x01", 8).repeated(*inRange(1, 30));
            break;
        default:
            break;
    }
    const int number =
        *weightedElement<int>({{30, row.number}, {1, *element(15, 64, 80, -1, 1000)}});
    return papercodes::codeBlock(number, payload, static_cast<ETextAlignment>(*inRange(-1, 5)));
}

inline DocumentBlock block()
{
    switch (*inRange(0, 8)) {
        case 0:
            return pictureBlock();
        case 1:
            return codeBlock();
        default:
            return textBlock();
    }
}

inline QMultiMap<signed char, MonochromeImage> symbols()
{
    QMultiMap<signed char, MonochromeImage> images;
    for (int i = *inRange(0, 5); i > 0; --i) {
        const int width = *element(8, 9, 10, 12, 13, 16, 18, 20);
        const int height = *element(16, 17, 24, 25);
        images.insert(static_cast<signed char>(*inRange(1, 8)),
                      MonochromeImage(width, height, dots((width + 7) / 8 * height)));
    }
    return images;
}

inline rc::Gen<TextPrinterDocument> document()
{
    return rc::gen::exec([] {
        TextPrinterDocument document;
        for (int i = *inRange(0, 6); i > 0; --i)
            document.appendBlock(block());
        document.setCharImages(symbols());
        document.setPrevTicketAction(QFlags<EPrinterTicketAction>(QFlag(*inRange(0, 16))));
        document.setCurrentTicketAction(QFlags<EPrinterTicketAction>(QFlag(*inRange(0, 16))));
        document.setRetractionTimeout(*element(0, 0, 5, 10, 16, 300));
        document.setLoopPolicy(QFlags<EPaperLoopFlag>(QFlag(*inRange(0, 4))));
        document.setSymbolsPerLine(*element(0, 0, 40, 42, 69));
        document.setDoInit(*inRange(0, 3) != 0);
        return document;
    });
}

inline PrintOptions options(const PrintTarget &target)
{
    PrintOptions options;
    const QList<int> pages = target.profile().codePages().keys();
    options.codePage = *element(0, 0, int(pages.at(*inRange(0, pages.size()))));
    options.codec = *element(QString(), QStringLiteral("IBM866"), QStringLiteral("windows-1251"));
    options.isPicture = *inRange(0, 8) == 0;
    options.emptyLinesAtEnd = *element(0, 0, 1, 5, 20);
    options.spacesInFront = *element(0, 0, 1, 3, 16);
    options.paperLoop = *inRange(0, 4);
    options.ticketMove = *element(0, 0, 20);
    // It sounds a bell at most, and prints nothing.
    options.allowedRawCodes = *element(QByteArray(), QByteArray(), QByteArray("\x07"));
    options.drawer = *element(PrintOptions::Drawer::Shut, PrintOptions::Drawer::Shut,
                              PrintOptions::Drawer::Before, PrintOptions::Drawer::After);
    options.drawerPin = *element(2, 5);
    options.drawerOnMilliseconds = *element(100, 32, 0, 2000);
    options.drawerOffMilliseconds = *element(100, 8, 40, 2000);
    return options;
}

}  // namespace printabledocuments
