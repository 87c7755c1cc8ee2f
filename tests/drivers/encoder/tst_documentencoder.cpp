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
            return QByteArray(
                "\x1DP\x64\x64\x1B!\xB9\x1D!\x22\x1B-\x02\x1BE\x01\x1BG\x01\x1D\x42\x01"
                "\x1B\x20\x05\x1BV\x01\x1BR\x03\x1B%\x01\x1B&\x03\x41\x41\x01\xFF\xFF\xFF"
                "\x1B\x33\x50\x1BM\x01\x1Bt\x00\x1B\x61\x02\x1B{\x01\x1DL\x40\x00"
                "\x1DW\x00\x01\x1C&",
                73);
        case Dialect::StarLine:
            return QByteArray(
                       "\x1B\x1E\x46\x01\x1Bi\x01\x01\x1B\x45\x1B\x34\x1B-\x01\x1B_\x00\x1B\x1E"
                       "i\x01\x1B\x20\x05\x1BR\x03\x1B%\x01\x1B\x26\x01\x01\x41",
                       41) +
                   QByteArray(48, '\xFF') +
                   QByteArray("\x1B\x1D\x61\x02\x1Bl\x05\x1BQ\x20\x0F\x1B\x33\x50", 15);
        case Dialect::Swecoin:
            break;
    }
    return QByteArray(
        "\x1B\x42\x01\x1Bi\x01\x1BT\x01\x1Bu\x02\x1Bh\x02\x1Bw\x02\x1B\x33\x60"
        "\x1Bs\x00\x01",
        25);
}

}  // namespace

class TestDocumentEncoder : public QObject
{
    Q_OBJECT

private:
    static void addModels()
    {
        QTest::addColumn<QString>("model");
        for (const QString &model : models())
            QTest::newRow(qPrintable(model)) << model;
    }
    static PrintTarget target(const QString &model)
    {
        return targetOf(model.toLatin1().constData());
    }

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
            "1b 40|1c 2e|1b 4d 00|1b 74 00|Sum |1b 45 01|1|1b 33 1c|0a|1b 45 00|1d 21 11|2|1b 33 "
            "34|0a");
        row("GENERAL_EPSON_PROTOCOL", false,
            "1c 2e|1d 50 00 00|1b 21 00|1d 21 00|1b 2d 00|1b 45 00|1b 47 00|1d 42 00|1b 7b 00|"
            "1b 56 00|1b 61 00|1b 20 00|1b 52 00|1b 25 00|1d 4c 00 00|1d 57 40 02|1b 4d 00|1b 74 "
            "00|"
            "Sum |1b 45 01|1|1b 33 1c|0a|1b 45 00|1d 21 11|2|1b 33 34|0a");
        row("CUSTOM_VKP_80", true,
            "1b 40|1c 2e|1b c1 01|1b 4d 01|1b 74 00|Sum |1b 45 01|1|1b 33 38|0a|1b 45 00|1d 21 "
            "11|2|"
            "1b 33 68|0a");
        row("CITIZEN_CBM_1000", true,
            "1b 40|1c 2e|1b 4d 01|1b 74 00|Sum |1b 45 01|1|1b 33 32|0a|1b 45 00|1d 21 11|2|1b 33 "
            "5c|0a");
        row("TSP-TUP", true,
            "1b 40|1b 1e 46 30|1b 1d 74 00|1b 7a 00|Sum |1b 45|1|1b 49 1c|1b 46|1b 69 31 31|2|1b "
            "7a 01|"
            "1b 49 34");
        row("SWECOIN_TM_20XX", true,
            "18|1b 21 30|1b 42 00|1b 69 00|1b 54 00|1b 75 00|1b 68 00|1b 77 00|1b 73 00 00|Sum |"
            "1b 42 01|1|1b 33 18|0a|1b 42 00|1b 68 01|1b 77 01|2|1b 33 30|0a");
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
