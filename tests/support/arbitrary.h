#pragma once

#include <rapidcheck.h>

#include <QByteArray>
#include <QDebug>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <string>

#include "printerdocs/documentblock.h"
#include "printerdocs/monochromeimage.h"
#include "printerdocs/textprinterdocument.h"

/// Any values for laws that hold for all of them. RC_PARAMS names the seed and the number of cases;
/// CTest sets it, so that a run can be repeated.

/// Fails a Qt test unless the law holds; what breaks it is told on standard error.
#define VERIFY_LAW(...) QVERIFY(rc::check(QTest::currentTestFunction(), __VA_ARGS__))

namespace rc {

/// Any text of these characters, and of any others once in a while.
inline Gen<QString> textOf(const std::u32string &usual)
{
    const auto character =
        gen::weightedOneOf<char32_t>({{8, gen::elementOf(usual)},
                                      {1, gen::inRange<char32_t>(1, 0xD800)},
                                      {1, gen::inRange<char32_t>(0xE000, 0x110000)}});
    return gen::map(gen::container<std::u32string>(character),
                    [](const std::u32string &text) { return QString::fromStdU32String(text); });
}

template <>
struct Arbitrary<QString>
{
    static Gen<QString> arbitrary() { return textOf(U"abcXYZ 019,.-_\n\tßéЖ\u0003"); }
};

template <>
struct Arbitrary<QByteArray>
{
    static Gen<QByteArray> arbitrary()
    {
        return gen::map(gen::arbitrary<std::string>(),
                        [](const std::string &bytes) { return QByteArray::fromStdString(bytes); });
    }
};

template <>
struct Arbitrary<MonochromeImage>
{
    static Gen<MonochromeImage> arbitrary()
    {
        return gen::apply(
            [](int width, int height, const QByteArray &bytes, const QString &name) {
                MonochromeImage image(width, height, bytes);
                image.setFileName(name);
                return image;
            },
            gen::inRange(-1, 40), gen::inRange(-1, 12), gen::arbitrary<QByteArray>(),
            gen::arbitrary<QString>());
    }
};

/// A block of lines whose bytes are in step.
inline Gen<DocumentBlock> textBlock()
{
    return gen::apply(
        [](const QString &text, int alignment, const QByteArray &font, const QByteArray &format,
           int spacing) {
            return DocumentBlock::createSimpleBlock(text, static_cast<ETextAlignment>(alignment),
                                                    font, format, spacing, 0);
        },
        gen::arbitrary<QString>(), gen::inRange(0, 4), gen::arbitrary<QByteArray>(),
        gen::arbitrary<QByteArray>(), gen::arbitrary<int>());
}

inline Gen<DocumentBlock> imageBlock()
{
    return gen::map<MonochromeImage>([](const MonochromeImage &image) {
        DocumentBlock block;
        block.setType(DocumentBlock::BlockImage);
        block.setImg(image);
        return block;
    });
}

inline Gen<DocumentBlock> codeBlock()
{
    return gen::apply(
        [](const QByteArray &payload, int type) {
            DocumentBlock block;
            if (type == 0)
                block.setQrCode(payload);
            else
                block.setBarCode(payload, static_cast<DocumentBlock::EBarcodeType>(type));
            return block;
        },
        gen::arbitrary<QByteArray>(), gen::inRange(0, 9));
}

template <>
struct Arbitrary<DocumentBlock>
{
    static Gen<DocumentBlock> arbitrary()
    {
        return gen::weightedOneOf<DocumentBlock>(
            {{4, textBlock()}, {1, imageBlock()}, {1, codeBlock()}});
    }
};

template <>
struct Arbitrary<TextPrinterDocument>
{
    static Gen<TextPrinterDocument> arbitrary()
    {
        return gen::exec([] {
            TextPrinterDocument document;
            for (const DocumentBlock &block : *gen::arbitrary<std::vector<DocumentBlock>>())
                document.appendBlock(block);
            QMultiMap<signed char, MonochromeImage> images;
            for (const auto &image :
                 *gen::arbitrary<std::vector<std::pair<signed char, MonochromeImage>>>())
                images.insert(image.first, image.second);
            document.setCharImages(images);
            document.setPrevTicketAction(
                QFlags<EPrinterTicketAction>(QFlag(*gen::arbitrary<int>())));
            document.setCurrentTicketAction(
                QFlags<EPrinterTicketAction>(QFlag(*gen::arbitrary<int>())));
            document.setLoopPolicy(QFlags<EPaperLoopFlag>(QFlag(*gen::arbitrary<int>())));
            document.setRetractionTimeout(*gen::arbitrary<int>());
            document.setSymbolsPerLine(*gen::inRange(-5, 90));
            document.setDoInit(*gen::arbitrary<bool>());
            return document;
        });
    }
};

}  // namespace rc

/// How values are told where a law is broken; found by their argument's type.
template <class Value>
void showThroughDebug(const Value &value, std::ostream &stream)
{
    QString text;
    QDebug(&text) << value;
    stream << text.toStdString();
}

inline void showValue(const QString &value, std::ostream &stream)
{
    showThroughDebug(value, stream);
}
inline void showValue(const QByteArray &value, std::ostream &stream)
{
    showThroughDebug(value, stream);
}
inline void showValue(const QStringList &value, std::ostream &stream)
{
    showThroughDebug(value, stream);
}
inline void showValue(const MonochromeImage &value, std::ostream &stream)
{
    showThroughDebug(value.toMap(), stream);
}
inline void showValue(const DocumentBlock &value, std::ostream &stream)
{
    showThroughDebug(value.toMap(), stream);
}
inline void showValue(const TextPrinterDocument &value, std::ostream &stream)
{
    showThroughDebug(value.toMap(), stream);
}
