#include <QtTest>

#include "encoder/drawncodes_p.h"
#include "printedpaper.h"

using namespace printedpaper;

namespace {

struct Payload
{
    int number;
    const char *payload;
};

// Of each symbology one that all of its printers take.
constexpr Payload payloads[] = {
    {1, "01234565"},          {2, "012345678905"},    {3, "12345670"},
    {4, "4006381333931"},     {5, "CODE 39-1"},       {6, "12345678"},
    {7, "Receipt 1234567"},   {8, "CODE93 ab"},       {9, "A12-34B"},
    {10, "0104006381333931"}, {11, "04006381333931"}, {13, "04006381333931"},
    {14, "0104006381333931"}, {65, "01234567890"},    {66, "01200000565"},
    {67, "400638133393"},     {68, "1234567"},        {73, "{A%{B"},
    {79, "0123456789"},
};

}  // namespace

class TestDocumentEncoderCodes : public QObject
{
    Q_OBJECT

private:
    static QString differenceWith(const DocumentBlock &block, const QString &model)
    {
        return differenceOf(documentOf({textBlock("before"), block, textBlock("behind")}),
                            target(model));
    }

private Q_SLOTS:
    void barcodesArePrintedAsLaidOut_data() { addModels(); }
    void barcodesArePrintedAsLaidOut()
    {
        QFETCH(QString, model);
        for (const Payload &row : payloads) {
            for (const ETextAlignment alignment : {AlignLeft, AlignCenter, AlignRight})
                QCOMPARE(differenceWith(barcodeBlock(row.number, row.payload, alignment), model),
                         QString());
        }
    }

    void qrCodesArePrintedAsLaidOut_data() { addModels(); }
    void qrCodesArePrintedAsLaidOut()
    {
        QFETCH(QString, model);
        for (const QByteArray &payload :
             {QByteArray("t=20201010T1010&s=10.00&fn=1"), QByteArray("https://example.org/?id=1"),
              QByteArray(500, 'x'), QByteArray("\x00\x1B@\x10\x04\x01", 6)}) {
            for (const ETextAlignment alignment : {AlignLeft, AlignCenter, AlignRight})
                QCOMPARE(differenceWith(qrBlock(payload, alignment), model), QString());
        }
    }

    void dataIsNoCommand_data() { addModels(); }
    void dataIsNoCommand()
    {
        QFETCH(QString, model);
        const QByteArray inside[] = {"\x1Bp0",         QByteArray("\x10\x14\x01\x00\x01", 5),
                                     "\x1E\x07",       "\x1B\x06\x01",
                                     "1605 1604 1620", "16051604162016"};
        for (const QByteArray &payload : inside) {
            QCOMPARE(differenceWith(qrBlock(payload), model), QString());
            for (const int number : {5, 7, 8, 73, 79})
                QCOMPARE(differenceWith(barcodeBlock(number, payload), model), QString());
        }
    }

    void digitsInPairsMakeNoCommand()
    {
        // In set C "1604" is the bytes 10 04.
        const PrintTarget to = target("WPK_833");
        const auto document = documentOf({barcodeBlock(7, "16041604")});
        const QByteArray bytes = encoded(document, to).bytes;
        QVERIFY(!bytes.contains(QByteArray("\x10\x04", 2)));
        QCOMPARE(differenceOf(document, to), QString());
    }

    void codeSets_data()
    {
        QTest::addColumn<QByteArray>("payload");
        QTest::addColumn<QByteArray>("data");
        const auto row = [](const char *payload, const QByteArray &data) {
            QTest::newRow(QByteArray(payload).replace("\n", "(LF)").constData())
                << QByteArray(payload) << data;
        };
        row("Ab", "{BAb");
        row("AB", "{BAB");
        row("A\nB", "{AA\nB");
        row("ab\nCD", "{Bab{A\nCD");
        row("\nab", "{A\n{Bab");
        row("12", "{C\x0C");
        row("123", "{B123");
        row("1234", "{C\x0C\x22");
        row("12345", "{C\x0C\x22{B5");
        row("12345A", "{C\x0C\x22{B5A");
        row("A1234", "{BA{C\x0C\x22");
        row("A12345", "{BA1{C\x17\x2D");
        row("A1234B", "{BA1234B");
        row("A123456B", "{BA{C\x0C\x22\x38{BB");
        row("A1234567B", "{BA1{C\x17\x2D\x43{BB");
        row("{}", "{B{{}");
        row("00", QByteArray("{C\0", 3));
        QTest::newRow("beyond ASCII") << QByteArray("\xE9") << QByteArray();
    }
    void codeSets()
    {
        QFETCH(QByteArray, payload);
        QFETCH(QByteArray, data);
        QCOMPARE(drawncodes::withCodeSets(payload), data);
    }

    void printersDrawWhatTheyCan()
    {
        const PrintTarget to = target("GENERAL_EPSON_PROTOCOL");
        const auto bytesOf = [&to](const DocumentBlock &block) {
            return encoded(documentOf({block}), to).bytes;
        };
        QVERIFY(bytesOf(barcodeBlock(7, "A1")).contains(QByteArray("\x1Dk\x49\x04{BA1")));
        QVERIFY(bytesOf(barcodeBlock(4, "4006381333931"))
                    .contains(QByteArray("\x1Dk\x43\x0D\x34\x30\x30\x36")));
        QVERIFY(bytesOf(qrBlock("abc"))
                    .contains(QByteArray("\x1D(k\x06\x00\x31\x50\x30\x61\x62\x63", 11)));
        // Small letters are no Code 39: what such a printer doesn't take, it prints as text.
        QVERIFY(!bytesOf(barcodeBlock(5, "abc")).contains("\x1Dk"));
        QVERIFY(!bytesOf(barcodeBlock(10, "0104006381333931")).contains("\x1Dk"));
    }

    void starDrawsThemByItsOwnCommands()
    {
        const PrintTarget to = target("TSP-TUP");
        const QByteArray bytes =
            encoded(documentOf({barcodeBlock(4, "4006381333931", AlignCenter)}), to).bytes;
        QVERIFY(
            bytes.contains(QByteArray("\x1B\x1D\x61\x31\x1B\x62\x33\x33\x32\x50"
                                      "4006381333931\x1E\x1B\x1D\x61\x30")));
        // "%" stands for something else in Star's Code 128.
        QVERIFY(!encoded(documentOf({barcodeBlock(7, "100%")}), to).bytes.contains("\x1B\x62\x36"));
    }

    void aNumberThatNobodyKnowsNamesItsBlock()
    {
        const EncodedDocument made =
            encoded(documentOf({textBlock("x"), barcodeBlock(99, "1")}), target("WPK_833"));
        QVERIFY(made.bytes.isEmpty());
        QVERIFY2(made.error.contains("block 2") && made.error.contains("99"),
                 qPrintable(made.error));
        QVERIFY(!made.isFaithful());
    }

    void whatCannotBeDrawnIsLeftOut_data() { addModels(); }
    void whatCannotBeDrawnIsLeftOut()
    {
        QFETCH(QString, model);
        const auto document =
            documentOf({textBlock("x"), barcodeBlock(4, "no digits"), textBlock("y")});
        QCOMPARE(differenceOf(document, target(model)), QString());
        QVERIFY(!encoded(document, target(model)).isFaithful());
    }
};

QTEST_APPLESS_MAIN(TestDocumentEncoderCodes)
#include "tst_documentencoder_codes.moc"
