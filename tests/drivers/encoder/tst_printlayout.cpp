// What a document becomes on the paper of a model, block by block.
#include <QtTest>

#include "laiddocuments.h"
#include "printerdocs/echarformat.h"
#include "printerdocs/printerdocumentformatter.h"

using namespace laiddocuments;

Q_DECLARE_METATYPE(DocumentBlock)

class TestPrintLayout : public QObject
{
    Q_OBJECT

    static DocumentBlock picture()
    {
        DocumentBlock block;
        block.setType(DocumentBlock::BlockImage);
        block.setImg(MonochromeImage(8, 2, QByteArray(2, '\xFF')));
        return block;
    }
    static DocumentBlock blockOfType(int type)
    {
        DocumentBlock block;
        block.setType(static_cast<DocumentBlock::EBlockType>(type));
        return block;
    }
    /// A receipt with a value of a customer's.
    static TextPrinterDocument receipt(const QString &line, const QString &value)
    {
        PrinterDocumentFormatter formatter(0, nullptr);
        formatter.setTemplate(line);
        PrinterDocument values;
        values.setAttributes({{"SHOP", value}});
        return formatter.toTextPrinterDocument(values);
    }

private Q_SLOTS:
    void blocksStandOneBelowTheOther()
    {
        DocumentBlock barcode;
        barcode.setBarCode("123", DocumentBlock::BarcodeBbCode);
        DocumentBlock qr;
        qr.setQrCode("abc");
        const PrintLayout layout =
            layoutOf(documentOf({textBlock("ab\nc"), picture(), barcode, qr, textBlock("d")}),
                     targetOf("EPSON_EU_4XX"));
        QCOMPARE(textsOf(layout),
                 QStringList({"ab", "c", "[picture]", "[feed 8]", "[code]", "[feed 8]", "[feed 24]",
                              "[code]", "[feed 24]", "d"}));
        QVector<int> blocks;
        for (const PrintLayout::Row &row : layout.rows)
            blocks += row.block;
        QCOMPARE(blocks, (QVector<int>{1, 1, 2, 3, 3, 3, 4, 4, 4, 5}));
        QCOMPARE(layout.error, QString());
        QCOMPARE(notesOf(layout), QStringList());
    }

    void emptyDocumentHasNoRows()
    {
        const PrintLayout layout = layoutOf(TextPrinterDocument(), targetOf("AV_268"));
        QCOMPARE(layout.rows.size(), size_t(0));
        QCOMPARE(notesOf(layout), QStringList());
        QCOMPARE(layout.error, QString());
        QCOMPARE(layout.target.profile().modelId(), QString("AV_268"));
    }

    void blocksThatAreNotValidAreLeftOut_data()
    {
        QTest::addColumn<DocumentBlock>("block");
        QTest::addColumn<QString>("note");
        const QString noted = "block 2: the block isn't printed: ";
        QTest::newRow("empty") << DocumentBlock() << "";
        DocumentBlock outOfStep = textBlock("a\nb");
        outOfStep.setLineSpacing(QList<int>{0});
        QTest::newRow("out of step")
            << outOfStep << noted + "formats, fonts and spacings don't go with its lines";
        QTest::newRow("no picture") << blockOfType(1) << noted + "its picture isn't whole";
        QTest::newRow("no barcode") << blockOfType(2) << noted + "it has no payload";
        QTest::newRow("no QR code") << blockOfType(3) << noted + "it has no payload";
        QTest::newRow("unknown") << blockOfType(4) << noted + "its type 4 isn't known";
        QTest::newRow("negative") << blockOfType(-1) << noted + "its type -1 isn't known";
    }
    void blocksThatAreNotValidAreLeftOut()
    {
        QFETCH(DocumentBlock, block);
        QFETCH(QString, note);
        const PrintLayout layout =
            layoutOf(documentOf({textBlock("a"), block, textBlock("b")}), targetOf("EPSON_EU_4XX"));
        QCOMPARE(textsOf(layout), (QStringList{"a", "b"}));
        QCOMPARE(layout.rows[1].block, 3);
        QCOMPARE(notesOf(layout), note.isEmpty() ? QStringList() : QStringList{note});
        QCOMPARE(layout.error, QString());
    }

    void documentForMoreSymbolsThanFitIsNoted_data()
    {
        QTest::addColumn<int>("symbols");
        QTest::addColumn<QString>("note");
        QTest::newRow("not set") << 0 << "";
        QTest::newRow("as many") << 48 << "";
        QTest::newRow("one more")
            << 49 << "the document is for lines of 49 symbols, and 48 fit the paper";
    }
    void documentForMoreSymbolsThanFitIsNoted()
    {
        QFETCH(int, symbols);
        QFETCH(QString, note);
        TextPrinterDocument document = documentOf({textBlock("a", AlignLeft, CharItalic)});
        document.setSymbolsPerLine(symbols);
        const PrintLayout layout = layoutOf(document, targetOf("GENERAL_EPSON_PROTOCOL", 1));
        const int others = note.isEmpty() ? 0 : 1;
        QCOMPARE(layout.notes.size(), 1 + others);
        if (others > 0) {
            // Those of the document come first.
            QCOMPARE(layout.notes.first().toString(), note);
            QCOMPARE(layout.notes.first().isLoss, false);
        }
        QVERIFY(layout.notes.last().isLoss);
    }

    void noteSaysItsPlace()
    {
        PrintNote note;
        note.text = "it is so";
        QCOMPARE(note.toString(), QString("it is so"));
        note.block = 3;
        QCOMPARE(note.toString(), QString("block 3: it is so"));
        note.line = 2;
        QCOMPARE(note.toString(), QString("block 3, line 2: it is so"));
    }

    void layoutNeedsNothingOfTheDocument()
    {
        PrintLayout layout{targetOf("AV_268")};
        {
            TextPrinterDocument document = documentOf({textBlock("Ж"), picture()});
            layout = layoutOf(document, targetOf("AV_268"));
            document = TextPrinterDocument();
        }
        QCOMPARE(textsOf(layout), (QStringList{"Ж", "[picture]"}));
        const PrintLayout copy = layout;
        layout.rows.clear();
        QCOMPARE(copy.rows.size(), size_t(2));
    }

    /// A value is text of somebody else's.
    void codesOfValuesAreNotSent_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("row");
        QTest::addColumn<QStringList>("codes");
        QTest::newRow("raw tag") << "<27>p"
                                 << " p" << QStringList{"27 (0x1B)"};
        QTest::newRow("symbol tag") << "<#27>p"
                                    << " p" << QStringList{"27 (0x1B)"};
        QTest::newRow("raw symbol") << "<3>p"
                                    << " p" << QStringList{"3 (0x03)"};
        QTest::newRow("bytes") << "\x1Bp\x10\x14"
                               << " p  " << QStringList{"27 (0x1B)", "16 (0x10)", "20 (0x14)"};
        QTest::newRow("deletion") << "<127>"
                                  << " " << QStringList{"127 (0x7F)"};
        QTest::newRow("drawer") << "<27><112><0><25>"
                                << " p  " << QStringList{"27 (0x1B)", "0 (0x00)", "25 (0x19)"};
    }
    void codesOfValuesAreNotSent()
    {
        QFETCH(QString, value);
        QFETCH(QString, row);
        QFETCH(QStringList, codes);
        const PrintLayout layout = layoutOf(receipt("<SHOP>", value), targetOf("EPSON_EU_4XX"));
        QCOMPARE(textsOf(layout), QStringList{row});
        QStringList noted;
        for (const PrintNote &note : layout.notes) {
            QVERIFY(note.text.endsWith("isn't printed"));
            noted += note.text.section(' ', 2, 3);
        }
        QCOMPARE(noted, codes);
        for (const PrintLayout::Cell &cell : layout.cells) {
            QCOMPARE(int(cell.byte), 0);
            QVERIFY(cell.character >= 0x20);
            QCOMPARE(cell.format & CharRawCode, 0);
        }
    }

    void symbolsOfValuesAreDrawn()
    {
        TextPrinterDocument document = receipt("<SHOP>", "<#3>");
        QMultiMap<signed char, MonochromeImage> images;
        images.insert(3, MonochromeImage(8, 1, "\xFF"));
        document.setCharImages(images);
        const PrintLayout layout = layoutOf(document, targetOf("EPSON_EU_4XX"));
        QCOMPARE(int(layout.cells.front().drawing), 0);
        QCOMPARE(notesOf(layout), QStringList());
    }

    /// What the shop allows is allowed in values, too.
    void allowedCodesOfValuesAreSent()
    {
        PrintOptions options;
        options.allowedRawCodes = "\x07";
        const PrintLayout layout =
            layoutOf(receipt("<SHOP>", "<7><#7>"), targetOf("EPSON_EU_4XX"), options);
        QCOMPARE(int(layout.cells[0].byte), 7);
        // The other is a symbol without a drawing.
        QCOMPARE(int(layout.cells[1].byte), 0);
        QCOMPARE(layout.notes.size(), 1);
    }
};

QTEST_GUILESS_MAIN(TestPrintLayout)
#include "tst_printlayout.moc"
