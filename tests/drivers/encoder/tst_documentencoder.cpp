#include <QtTest>

#include "printedpaper.h"

using namespace printedpaper;

namespace {

TextPrinterDocument bareDocument(const QList<DocumentBlock> &blocks, bool doInit = true)
{
    TextPrinterDocument document = documentOf(blocks);
    document.setDoInit(doInit);
    return document;
}

/// What somebody else left behind, of everything that the dialect has.
QByteArray mess(Dialect dialect)
{
    switch (dialect) {
        case Dialect::EscPos:
            return QByteArray::fromHex(
                "1d506464 1b21b9 1d2122 1b2d02 1b4501 1b4701 1d4201 1b2005 1b5601 1b5203 1b2501"
                "1b2603414101ffffff 1b3350 1b4d01 1b7400 1b6102 1b7b01 1d4c4000 1d570001 1c26");
        case Dialect::StarLine:
            return QByteArray::fromHex(
                       "1b1e4601 1b690101 1b45 1b34 1b2d01 1b1e6901 1b2005 1b5203"
                       "1b2501 1b26010141") +
                   QByteArray(48, '\xFF') + QByteArray::fromHex("1b1d6102 1b6c05 1b5120 0f 1b3350");
        case Dialect::Swecoin:
            break;
    }
    return QByteArray::fromHex("1b4201 1b6901 1b5401 1b7502 1b6802 1b7702 1b3360 1b730001");
}

}  // namespace

class TestDocumentEncoder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bytesOfSmallDocuments_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<bool>("doInit");
        QTest::addColumn<QString>("commands");
        const auto row = [](const char *model, bool doInit, const char *commands) {
            QTest::addRow("%s%s", model, doInit ? "" : ", without a reset")
                << QString(model) << doInit << QString(commands);
        };
        row("GENERAL_EPSON_PROTOCOL", true,
            "1b 40|1c 2e|1b 4d 00|1b 74 00|Sum |1b 45 01|1|1b 33 1c|0a|1d 21 11|1b 45 00|2|1b 33 "
            "34|0a");
        row("GENERAL_EPSON_PROTOCOL", false,
            "1c 2e|1d 50 00 00|1b 21 00|1d 21 00|1b 2d 00|1b 45 00|1b 47 00|1d 42 00|1b 7b 00|"
            "1b 56 00|1b 61 00|1b 20 00|1b 52 00|1b 25 00|1d 4c 00 00|1d 57 40 02|1b 4d 00|1b 74 "
            "00|"
            "Sum |1b 45 01|1|1b 33 1c|0a|1d 21 11|1b 45 00|2|1b 33 34|0a");
        row("CUSTOM_VKP_80", true,
            "1b 40|1c 2e|1b c1 01|1b 4d 01|1b 74 00|Sum |1b 45 01|1|1b 33 38|0a|1d 21 11|1b "
            "45 00|2|"
            "1b 33 68|0a");
        row("CITIZEN_CBM_1000", true,
            "1b 40|1c 2e|1b 4d 01|1b 74 00|Sum |1b 45 01|1|1b 33 32|0a|1d 21 11|1b 45 00|2|1b 33 "
            "5c|0a");
        row("TSP-TUP", true,
            "1b 40|1b 1e 46 30|1b 1d 74 00|1b 7a 00|Sum |1b 45|1|1b 49 1c|1b 69 31 31|1b 46|2|1b "
            "7a 01|"
            "1b 49 34");
        row("SWECOIN_TM_20XX", true,
            "18|1b 21 30|1b 42 00|1b 69 00|1b 54 00|1b 75 00|1b 68 00|1b 77 00|1b 73 00 00|Sum |"
            "1b 42 01|1|1b 33 18|0a|1b 68 01|1b 77 01|1b 42 00|2|1b 33 30|0a");
    }
    void bytesOfSmallDocuments()
    {
        QFETCH(QString, model);
        QFETCH(bool, doInit);
        QFETCH(QString, commands);
        QByteArray formats(4, '\0');
        formats += char(CharBold);
        const auto document =
            bareDocument({DocumentBlock::createSimpleBlock(QStringLiteral("Sum 1"), AlignLeft, {},
                                                           formats, 1, 0),
                          textBlock("2", AlignLeft, CharDoubleWidth | CharDoubleHeight, 0, 1)},
                         doInit);
        QCOMPARE(
            commandsOf(encoded(document, target(model)).bytes, target(model).profile()).join('|'),
            commands);
    }

    void nothingOfSomebodyElseIsLeft_data() { addModels(); }
    void nothingOfSomebodyElseIsLeft()
    {
        QFETCH(QString, model);
        const PrintTarget to = target(model);
        for (const bool doInit : {false, true}) {
            const auto document =
                bareDocument({textBlock("ABC @[]"), textBlock("#$", AlignLeft, CharBold)}, doInit);
            const PrintLayout layout = layoutOf(document, to);
            const QByteArray bytes = encoded(document, to).bytes;
            const QVector<Paper> papers =
                papersOf(mess(to.profile().dialect()) + bytes, to.profile());
            QCOMPARE(papers.size(), 1);
            QCOMPARE(seenOn(papers.first()).cells, seenIn(layout).cells);
        }
    }

    void marksTellTheLinesOfTheDocument_data() { addModels(); }
    void marksTellTheLinesOfTheDocument()
    {
        QFETCH(QString, model);
        const PrintTarget to = target(model);
        const QString longLine(to.symbolsPerLine() + 3, u'w');
        const EncodedDocument made =
            encoded(documentOf({textBlock("a\n" + longLine + "\nc"), textBlock("d")}), to);
        const QVector<QPair<int, int>> wanted = {{0, 0}, {1, 1}, {1, 2}, {1, 3}, {2, 1}, {0, 0}};
        QCOMPARE(made.marks.size(), wanted.size());
        for (int i = 0; i < wanted.size(); ++i)
            QCOMPARE(qMakePair(made.marks.at(i).block, made.marks.at(i).line), wanted.at(i));
        const char *const begins[] = {nullptr, "a", "w", "c", "d"};
        for (int i = 1; i < 5; ++i)
            QVERIFY(made.bytes.mid(made.marks.at(i).offset).startsWith(begins[i]));
        // Each begins a command or a text.
        QVector<qint64> offsets;
        for (const StreamCommand &command : StreamReader::commandsOf(made.bytes, to.profile()))
            offsets.append(command.offset);
        offsets.append(made.bytes.size());
        for (const EncodedDocument::Mark &mark : made.marks)
            QVERIFY(offsets.contains(mark.offset));
        QCOMPARE(made.marks.first().offset, 0);
    }

    void whatSendsNothingHasNoMark()
    {
        const PrintTarget to = changedTarget("WPK_833", R"("rasterCommand": "None")");
        DocumentBlock picture;
        picture.setType(DocumentBlock::BlockImage);
        picture.setImg(MonochromeImage(8, 1, QByteArray(1, '\xFF')));
        const EncodedDocument made =
            encoded(documentOf({textBlock("a"), picture, textBlock("b")}), to);
        QCOMPARE(made.notes.size(), 1);
        QVector<int> blocks;
        for (const EncodedDocument::Mark &mark : made.marks)
            blocks.append(mark.block);
        QCOMPARE(blocks, QVector<int>({0, 1, 3, 0}));
    }

    // No ESC/POS record of the catalogue prints italics, but one may.
    void italicsOfSomebodyElseAreSwitchedOff_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::newRow("CUSTOM_VKP_80") << QByteArray("\x1B\x34\x00", 3);
        QTest::newRow("GENERAL_EPSON_PROTOCOL") << QByteArray("\x1B\x35");
    }
    void italicsOfSomebodyElseAreSwitchedOff()
    {
        QFETCH(QByteArray, command);
        const PrintTarget usual = target(QTest::currentDataTag());
        PrinterInfo record = usual.record();
        record.setItalic(true);
        const PrintTarget to(usual.profile(), record, 0);
        const auto bytesOf = [](const PrintTarget &printer, bool doInit) {
            return encoded(bareDocument({textBlock("x")}, doInit), printer).bytes;
        };
        const QByteArray bytes = bytesOf(to, false);
        QVERIFY(bytes.contains(command));
        QVERIFY2(!bytes.contains(command + '\0'), bytes.toHex(' '));
        QVERIFY(!bytesOf(to, true).contains(command));
        QVERIFY(!bytesOf(usual, false).contains(command));
    }

    void anEmptyDocumentPrintsNothing_data() { addModels(); }
    void anEmptyDocumentPrintsNothing()
    {
        QFETCH(QString, model);
        const EncodedDocument made = encoded(documentOf({}), target(model));
        QCOMPARE(made.error, QString());
        QVERIFY(made.isFaithful());
        const QVector<Paper> papers = papersOf(made.bytes, target(model).profile());
        QVERIFY(papers.isEmpty() || papers.first().isBlankEnd());
    }

    void notesOfTheLayoutComeFirst()
    {
        const PrintTarget to = target("GENERAL_EPSON_PROTOCOL");
        PrintOptions options;
        options.drawer = PrintOptions::Drawer::After;
        options.drawerPin = 7;
        TextPrinterDocument document = documentOf({textBlock("a\x08")});
        document.setSymbolsPerLine(100);
        const EncodedDocument made = encoded(document, to, options);
        QCOMPARE(made.notes.size(), 3);
        QVERIFY(!made.notes.at(0).isLoss);
        QCOMPARE(made.notes.at(1).block, 1);
        QVERIFY(made.notes.at(2).text.contains("pin 7"));
        QVERIFY(!made.isFaithful());
    }

    void oneEncoderEncodesTheSameTwice()
    {
        const PrintTarget to = target("CUSTOM_VKP_80");
        const DocumentEncoder encoder(to, {});
        const auto document = documentOf({textBlock(QString::fromUtf8("Чек €"))});
        QCOMPARE(encoder.encode(document).bytes, encoder.encode(document).bytes);
    }
};

QTEST_APPLESS_MAIN(TestDocumentEncoder)
#include "tst_documentencoder.moc"
