// Barcodes of Star's command, with and without what came with StarPRNT.
#include <QtTest>

#include "paperprinting.h"

using namespace paperprinting;

class TestStarBarcodes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void kindIsANumberOrADigit_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<QString>("text");
        QTest::newRow("UPC-A") << 1 << QByteArray("01234567890") << "[UPC-A: 012345678905]\n";
        QTest::newRow("Code 39") << 4 << QByteArray("A-1") << "[Code 39: A-1]\n";
        QTest::newRow("Codabar") << 8 << QByteArray("A12B") << "[Codabar: A12B]\n";
        QTest::newRow("GS1-128") << 9 << QByteArray("0109501101530003")
                                 << "[GS1-128: 0109501101530003]\n";
        QTest::newRow("GS1-128 with a function")
            << 9 << QByteArray("{110AB{121C") << "[GS1-128: 10AB\\x1D21C]\n";
        QTest::newRow("GS1 DataBar")
            << 10 << QByteArray("0950110153000") << "[GS1 DataBar: 0950110153000]\n";
        QTest::newRow("GS1 DataBar Expanded")
            << 13 << QByteArray("0109501101530003") << "[GS1 DataBar: 0109501101530003]\n";
    }

    void kindIsANumberOrADigit()
    {
        QFETCH(int, kind);
        QFETCH(QByteArray, data);
        QFETCH(QString, text);
        for (const int number : {kind, '0' + kind}) {
            const QByteArray stream =
                "\x1B"
                "b" +
                QByteArray(1, char(number)) + "\x01\x02\x50" + data + '\x1E';
            QCOMPARE(textOf(stream, model("TSP-TUP")).trimmed(), text.trimmed());
        }
    }

    void everyKind_data()
    {
        using Symbology = Paper::Symbology;
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("symbology");
        QTest::addColumn<int>("variant");
        const Symbology symbologies[] = {
            Symbology::UpcE,       Symbology::UpcA,       Symbology::Ean8,
            Symbology::Ean13,      Symbology::Code39,     Symbology::Itf,
            Symbology::Code128,    Symbology::Code93,     Symbology::Codabar,
            Symbology::Gs1_128,    Symbology::GS1DataBar, Symbology::GS1DataBar,
            Symbology::GS1DataBar, Symbology::GS1DataBar};
        int kind = 0;
        for (const Symbology symbology : symbologies) {
            const int variant = kind == 12   ? Paper::Code::Limited
                                : kind == 13 ? Paper::Code::Expanded
                                             : Paper::Code::Usual;
            QTest::addRow("%d", kind) << kind << int(symbology) << variant;
            ++kind;
        }
    }
    void everyKind()
    {
        QFETCH(int, kind);
        const Paper paper = paperOf(
            "\x1B"
            "b" +
                QByteArray(1, char(kind)) + "\x01\x02\x50" + "1234\x1E",
            model("TSP-TUP"));
        QCOMPARE(paper.codes.size(), 1);
        QTEST(int(paper.codes.first().symbology), "symbology");
        QTEST(int(paper.codes.first().variant), "variant");
    }

    void kindThatNobodyKnowsIsANote()
    {
        const Paper paper = paperOf(bytes("\x1B"
                                          "b\x0E\x01\x02\x50"
                                          "123\x1E"),
                                    model("TSP-TUP"));
        QCOMPARE(paper.codes.size(), 0);
        QVERIFY2(eventsOf(paper).join('\n').contains("note: "),
                 qPrintable(eventsOf(paper).join('\n')));
    }
};

QTEST_GUILESS_MAIN(TestStarBarcodes)
#include "tst_starbarcodes.moc"
