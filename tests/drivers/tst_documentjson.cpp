// JSON of documents, against what Qt makes of their map form.
#include <QJsonArray>
#include <QTemporaryDir>
#include <QtTest>
#include <limits>

#include "arbitrary.h"
#include "exampledocuments.h"
#include "printabledocuments.h"
#include "printerslib/drivers/documentjson.h"

using printerslib::drivers::DocumentJson;

Q_DECLARE_METATYPE(TextPrinterDocument)

namespace {

constexpr QJsonDocument::JsonFormat forms[] = {QJsonDocument::Compact, QJsonDocument::Indented};
constexpr int least = std::numeric_limits<int>::min();
constexpr int greatest = std::numeric_limits<int>::max();

QByteArray byMap(const TextPrinterDocument &document, QJsonDocument::JsonFormat form)
{
    return QJsonDocument::fromVariant(document.toMap()).toJson(form);
}

bool isSameAsByMap(const TextPrinterDocument &document)
{
    bool isSame = DocumentJson::toObject(document) == QJsonObject::fromVariantMap(document.toMap());
    for (const auto form : forms)
        isSame = isSame && DocumentJson::toJson(document, form) == byMap(document, form);
    return isSame;
}

TextPrinterDocument documentOf(const QList<DocumentBlock> &blocks)
{
    TextPrinterDocument document;
    document.setBlocks(blocks);
    return document;
}

DocumentBlock blockOf(const QStringList &lines, const QList<QByteArray> &formats,
                      const QList<QByteArray> &fonts, const QList<int> &spacings)
{
    DocumentBlock block;
    block.setText(lines);
    block.setFormat(formats);
    block.setFont(fonts);
    block.setLineSpacing(spacings);
    return block;
}

/// One line of each text.
DocumentBlock blockOf(const QStringList &lines)
{
    return DocumentBlock::createSimpleBlock(lines, AlignLeft, 0, 0, 0, 0);
}

DocumentBlock imageBlock(const MonochromeImage &image)
{
    DocumentBlock block;
    block.setType(DocumentBlock::BlockImage);
    block.setImg(image);
    return block;
}

MonochromeImage namedImage(const QString &name)
{
    MonochromeImage image(8, 1, "\x18");
    image.setFileName(name);
    return image;
}

DocumentBlock codeBlock(DocumentBlock::EBlockType type, const QStringList &text, int symbology = 7)
{
    DocumentBlock block;
    block.setType(type);
    block.setText(text);
    block.setBarCodeType(static_cast<DocumentBlock::EBarcodeType>(symbology));
    return block;
}

TextPrinterDocument documentOfSymbols(
    const QVector<std::pair<signed char, MonochromeImage>> &symbols)
{
    QMultiMap<signed char, MonochromeImage> images;
    for (const auto &symbol : symbols)
        images.insert(symbol.first, symbol.second);
    TextPrinterDocument document;
    document.setCharImages(images);
    return document;
}

TextPrinterDocument documentOfNumbers(int ticket, int loop, int timeout, int symbols)
{
    TextPrinterDocument document;
    document.setPrevTicketAction(QFlags<EPrinterTicketAction>(QFlag(ticket)));
    document.setCurrentTicketAction(QFlags<EPrinterTicketAction>(QFlag(~ticket)));
    document.setLoopPolicy(QFlags<EPaperLoopFlag>(QFlag(loop)));
    document.setRetractionTimeout(timeout);
    document.setSymbolsPerLine(symbols);
    return document;
}

/// As many as there are units of UTF-16, each a step behind the other.
QString allUnits(int step)
{
    QString text;
    for (int unit = 0; unit < 0x10000; ++unit)
        text += QChar(static_cast<ushort>(unit * step));
    return text;
}

/// Of any units, so of texts that are none: NUL, lone surrogates, noncharacters.
rc::Gen<QString> anyText()
{
    const auto unit = rc::gen::weightedOneOf<ushort>(
        {{4, rc::gen::element<ushort>(0, 9, 10, 31, ' ', 'a', '"', '\\', '/', 0x7F, 0x85, 0x42F)},
         {1, rc::gen::inRange<ushort>(0xD7FF, 0xE001)},
         {1, rc::gen::element<ushort>(0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0x2028, 0xFEFF, 0xFFFF)},
         {1, rc::gen::arbitrary<ushort>()}});
    return rc::gen::map(rc::gen::container<std::vector<ushort>>(unit),
                        [](const std::vector<ushort> &units) {
                            return QString::fromUtf16(units.data(), static_cast<int>(units.size()));
                        });
}

template <typename Value>
QList<Value> someOf(const rc::Gen<Value> &value)
{
    QList<Value> list;
    for (int i = *rc::gen::inRange(0, 5); i > 0; --i)
        list.append(*value);
    return list;
}

/// Numbers of any size, and lists that needn't be in step.
DocumentBlock hostileBlock()
{
    const auto number =
        rc::gen::weightedOneOf<int>({{3, rc::gen::inRange(-1, 5)}, {1, rc::gen::arbitrary<int>()}});
    const auto bytes = rc::gen::arbitrary<QByteArray>();
    DocumentBlock block = blockOf(someOf(anyText()), someOf(bytes), someOf(bytes), someOf(number));
    if (*rc::gen::arbitrary<bool>()) {
        block.setText(QStringList(block.text()).mid(0, 1));
        block.setFormat(42);
        block.setFont(7);
        block.setLineSpacing(*number);
    }
    block.setType(static_cast<DocumentBlock::EBlockType>(*number));
    block.setBarCodeType(static_cast<DocumentBlock::EBarcodeType>(*number));
    block.setAlignment(static_cast<ETextAlignment>(*number));
    MonochromeImage image = *rc::gen::arbitrary<MonochromeImage>();
    image.setFileName(*anyText());
    block.setImg(image);
    return block;
}

}  // namespace

class TestDocumentJson : public QObject
{
    Q_OBJECT

private:
    static void row(const char *name, const TextPrinterDocument &document)
    {
        QTest::newRow(name) << document;
    }
    static void addTexts()
    {
        const auto text = [](const char *name, const QString &line) {
            row(name, documentOf({blockOf({line}), codeBlock(DocumentBlock::BlockBarcode, {line}),
                                  codeBlock(DocumentBlock::BlockQrCode, {line}),
                                  imageBlock(namedImage(line))}));
        };
        text("null text", QString());
        text("empty text", "");
        text("blank text", "  ");
        text("NUL", QString(QChar(0)) + "a" + QChar(0));
        text("NUL alone", QString(1, QChar(0)));
        text("what JSON escapes", "\"\\/\b\f\n\r\t\x01\x1F\x7F</script>");
        text("Latin-1", QString::fromLatin1("\x80\x9F\xA0\xE4\xFF"));
        text("other letters", QString::fromUtf8("ЖΩカ漢字עא₽\u2028\u2029\uFEFF"));
        text("outside of the first plane", QString::fromUtf8("😀a𝄞"));
        text("high surrogate alone", QString(QChar(0xD83D)) + "a");
        text("high surrogate at the end", "a" + QString(QChar(0xD83D)));
        text("low surrogate alone", "a" + QString(QChar(0xDE00)));
        text("surrogates the wrong way round", QString(QChar(0xDE00)) + QChar(0xD83D));
        text("high surrogates", QString(3, QChar(0xDBFF)));
        text("noncharacters", QString(QChar(0xFFFF)) + QChar(0xFFFE) + QChar(0xFDD0));
        text("all units", allUnits(1));
        text("all units, and no pair", allUnits(0x7FFF));
        text("long", QString(100000, 'x') + QString::fromUtf8("Ж"));
    }
    static void addOddBlocks()
    {
        row("block without a name", documentOf({codeBlock(DocumentBlock::EBlockType(4), {"a"}),
                                                codeBlock(DocumentBlock::EBlockType(-1), {"a"}),
                                                codeBlock(DocumentBlock::EBlockType(least), {})}));
        row("lists out of step",
            documentOf({blockOf({"a"}, {}, {"\1"}, {0}), blockOf({"a"}, {"\1", "\1"}, {"\1"}, {0}),
                        blockOf({"a"}, {"\1"}, {}, {0}), blockOf({"a"}, {"\1"}, {"\1"}, {}),
                        blockOf({}, {"\1"}, {"\1"}, {0})}));
        row("codes without payload, or with more",
            documentOf({codeBlock(DocumentBlock::BlockBarcode, {}),
                        codeBlock(DocumentBlock::BlockQrCode, {}),
                        codeBlock(DocumentBlock::BlockBarcode, {"a", "b"}),
                        codeBlock(DocumentBlock::BlockQrCode, {"a", "b"}),
                        codeBlock(DocumentBlock::BlockBarcode, {"a"}, 0),
                        codeBlock(DocumentBlock::BlockBarcode, {"a"}, least),
                        codeBlock(DocumentBlock::BlockBarcode, {"a"}, greatest)}));
        QList<DocumentBlock> alignments;
        for (const int alignment : {-1, 0, 3, 4, 255, least, greatest}) {
            DocumentBlock block = blockOf({"a"}, {"\1"}, {"\1"}, {alignment});
            block.setAlignment(static_cast<ETextAlignment>(alignment));
            alignments.append(block);
        }
        row("alignments and spacings", documentOf(alignments));
        row("blocks by the thousand", documentOf([] {
                QList<DocumentBlock> blocks;
                for (int i = 0; i < 3000; ++i)
                    blocks.append(blockOf({QString::number(i), QString()}));
                return blocks;
            }()));
    }
    static void addPictures()
    {
        row("images that lack pixels",
            documentOf({imageBlock(MonochromeImage()), imageBlock(MonochromeImage(0, 1, "a")),
                        imageBlock(MonochromeImage(8, 2, "a")),
                        imageBlock(MonochromeImage(-8, -1, "abc")),
                        imageBlock(MonochromeImage(9, 1, "a")),
                        imageBlock(MonochromeImage(8, 1, "abc"))}));
        row("names of pictures",
            documentOf({imageBlock(namedImage(" \t")), imageBlock(namedImage(" a ")),
                        imageBlock(namedImage(QString(QChar(0x2028)))),
                        imageBlock(namedImage(QString(QChar(0))))}));
    }
    static void addArrays()
    {
        QStringList lines;
        QList<QByteArray> formats;
        QList<QByteArray> fonts;
        for (int size = 0; size < 300; ++size) {
            lines.append(QString());
            formats.append(QByteArray(size % 131, static_cast<char>(size / 131)));
            fonts.append(QByteArray(size % 65, '\0'));
        }
        QList<int> spacings;
        for (int i = 0; i < lines.size(); ++i)
            spacings.append(i - 100);
        row("arrays of many sizes", documentOf({blockOf(lines, formats, fonts, spacings),
                                                blockOf(lines, fonts, formats, spacings)}));
        row("arrays of one size", documentOf({blockOf({"ab", "cd", "ef"}, {"\1\2", "\1\2", "\2\1"},
                                                      {"\1\2", "\2\1", "\2\1"}, {0, 0, 0})}));
        row("null arrays beside empty ones",
            documentOf({blockOf({"a", "b", "c"}, {QByteArray(), "", QByteArray(64, '\0')},
                                {"", QByteArray(), "a"}, {0, 0, 0})}));
    }
    static void addSymbols()
    {
        row("symbols", documentOfSymbols({{1, namedImage("")}, {7, namedImage("n")}}));
        row("symbols in the order of their names",
            documentOfSymbols({{2, namedImage("")}, {10, namedImage("")}, {1, namedImage("")}}));
        row("symbols of negative codes",
            documentOfSymbols({{-1, namedImage("")}, {-128, namedImage("")}, {127, {}}, {0, {}}}));
        row("symbols of one code",
            documentOfSymbols({{3, namedImage("first")}, {3, namedImage("second")}, {3, {}}}));
        row("symbols without pixels", documentOfSymbols({{1, {}}, {2, {-1, -2, "abc"}}}));
    }
    static void addNumbers()
    {
        for (const int number : {least, -2, -1, 0, 1, 9, 31, 32, 33, 255, greatest})
            row(QByteArray("all numbers " + QByteArray::number(number)),
                documentOfNumbers(number, number, number, number));
    }

private Q_SLOTS:
    void freshDocument()
    {
        QCOMPARE(DocumentJson::toJson(TextPrinterDocument()),
                 R"({"blocks":[],"cta":0,"init":true,"loop":0,"pta":0})");
        QCOMPARE(
            DocumentJson::toObject(TextPrinterDocument()),
            QJsonObject(
                {{"blocks", QJsonArray()}, {"cta", 0}, {"init", true}, {"loop", 0}, {"pta", 0}}));
    }

    void indentedForm()
    {
        QCOMPARE(DocumentJson::toJson(TextPrinterDocument(), QJsonDocument::Indented),
                 "{\n    \"blocks\": [\n    ],\n    \"cta\": 0,\n    \"init\": true,\n"
                 "    \"loop\": 0,\n    \"pta\": 0\n}\n");
    }

    void blockOfEachKind()
    {
        TextPrinterDocument document =
            documentOf({blockOf({"A"}, {"\1"}, {"\2"}, {3}), imageBlock(namedImage("n")),
                        codeBlock(DocumentBlock::BlockBarcode, {"QUJD"}),
                        codeBlock(DocumentBlock::BlockQrCode, {"QUJE"}), DocumentBlock()});
        document.setDoInit(false);
        QCOMPARE(DocumentJson::toJson(document),
                 R"({"blocks":[{"align":0,"fmt":["AQ=="],"fnt":["Ag=="],"ls":[3],"txt":["A"],)"
                 R"("type":0},{"img":{"data":"GA==","fn":"n","h":1,"w":8},"type":1},)"
                 R"({"bar":"QUJD","bt":7,"type":2},{"qr":"QUJE","type":3},{"type":0}],)"
                 R"("cta":0,"loop":0,"pta":0})");
    }

    void isThatOfTheMap_data()
    {
        QTest::addColumn<TextPrinterDocument>("document");
        addTexts();
        addOddBlocks();
        addPictures();
        addArrays();
        addSymbols();
        addNumbers();
    }
    void isThatOfTheMap()
    {
        QFETCH(TextPrinterDocument, document);
        QCOMPARE(DocumentJson::toObject(document), QJsonObject::fromVariantMap(document.toMap()));
        for (const auto form : forms)
            QCOMPARE(DocumentJson::toJson(document, form), byMap(document, form));
    }

    void examplesAreThoseOfTheirMaps()
    {
        int count = 0;
        for (const auto &example : exampledocuments::examples()) {
            for (const int width : {0, 30, 42, 69, 300}) {
                QVERIFY2(isSameAsByMap(example.document(width)), qPrintable(example.name));
                ++count;
            }
        }
        QVERIFY(count >= 100);
    }

    void allDocumentsAreThoseOfTheirMaps()
    {
        VERIFY_LAW([](const TextPrinterDocument &document) { RC_ASSERT(isSameAsByMap(document)); });
    }

    void printableDocumentsAreThoseOfTheirMaps()
    {
        VERIFY_LAW([] { RC_ASSERT(isSameAsByMap(*printabledocuments::document())); });
    }

    void hostileDocumentsAreThoseOfTheirMaps()
    {
        VERIFY_LAW([] {
            const int number = *rc::gen::arbitrary<int>();
            TextPrinterDocument document =
                documentOfNumbers(number, *rc::gen::arbitrary<int>(), *rc::gen::arbitrary<int>(),
                                  *rc::gen::arbitrary<int>());
            for (int i = *rc::gen::inRange(0, 8); i > 0; --i)
                document.appendBlock(hostileBlock());
            document.setCharImages(
                documentOfSymbols({{static_cast<signed char>(number), namedImage(*anyText())},
                                   {static_cast<signed char>(*rc::gen::inRange(-128, 128)),
                                    *rc::gen::arbitrary<MonochromeImage>()}})
                    .charImages());
            RC_ASSERT(isSameAsByMap(document));
        });
    }

    void isReadAsTheMapIs()
    {
        VERIFY_LAW([](const TextPrinterDocument &document) {
            TextPrinterDocument expected;
            expected.setMap(document.toMap());
            TextPrinterDocument read;
            read.setMap(
                QJsonDocument::fromJson(DocumentJson::toJson(document)).toVariant().toMap());
            RC_ASSERT(read == expected);
        });
    }

    void documentFileHoldsTheCompactForm()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath("document");
        const TextPrinterDocument document =
            documentOf({blockOf({QString::fromUtf8("Жук")}), imageBlock(namedImage("n"))});
        QVERIFY(document.saveToFile(path));
        QCOMPARE(exampledocuments::contentOf(path), DocumentJson::toJson(document));
    }
};

QTEST_GUILESS_MAIN(TestDocumentJson)
#include "tst_documentjson.moc"
