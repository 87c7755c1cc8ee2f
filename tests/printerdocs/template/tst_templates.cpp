#include <QtTest>

#include "logcatcher.h"
#include "printerdocs/printerdocumentformatter.h"
#include "settings/checktemplatessettings.h"

using Parts = QList<QPair<CheckBlockType, QSharedPointer<PrinterDocumentFormatter>>>;

/// "0:a|b" is a piece of text of two lines, "2" the place of a section.
static QStringList describe(const Parts &parts)
{
    QStringList result;
    for (const auto &part : parts) {
        QString text = QString::number(part.first);
        if (part.second)
            text += ":" + part.second->getTemplate().join("|");
        result.append(text);
    }
    return result;
}

/// Templates: loading, and cutting at fiscal markers.
class TestTemplates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void freshFormatterHasNoTemplate()
    {
        const PrinterDocumentFormatter formatter(0, nullptr);
        QVERIFY(!formatter.isValid());
        QVERIFY(formatter.getTemplate().isEmpty());
        QCOMPARE(formatter.specCharsPath(), CheckTemplatesSettings().checkTemplatesPath());
    }

    void templateIsSplitAtLineFeeds_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("lines");
        QTest::newRow("empty text is one empty line") << "" << QStringList{""};
        QTest::newRow("one line") << "a" << QStringList{"a"};
        QTest::newRow("line feed at the end") << "a\n" << QStringList{"a", ""};
        QTest::newRow("empty lines stay") << "a\n\nb" << QStringList{"a", "", "b"};
        QTest::newRow("carriage returns stay") << "a\r\nb" << QStringList{"a\r", "b"};
    }

    void templateIsSplitAtLineFeeds()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, lines);
        PrinterDocumentFormatter formatter(0, nullptr);
        formatter.setTemplate("old\ntemplate");
        formatter.setTemplate(text);
        QCOMPARE(formatter.getTemplate(), lines);
        QVERIFY(formatter.isValid());
    }

    void specCharsPathIsStored()
    {
        PrinterDocumentFormatter formatter(0, nullptr);
        formatter.setSpecCharsPath("/somewhere");
        QCOMPARE(formatter.specCharsPath(), QString("/somewhere"));
    }

    void fileIsReadInItsEncoding_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("codec");
        QTest::addColumn<QStringList>("lines");
        QTest::newRow("UTF-8") << QByteArray("Чек\nИтого") << QByteArray("UTF-8")
                               << QStringList{"Чек", "Итого"};
        QTest::newRow("cp866") << QByteArray("\x97\xa5\xaa\n") << QByteArray("cp866")
                               << QStringList{"Чек"};
        QTest::newRow("windows-1251")
            << QByteArray("\xd7\xe5\xea") << QByteArray("windows-1251") << QStringList{"Чек"};
        QTest::newRow("carriage returns go")
            << QByteArray("a\r\nb\r\n") << QByteArray("UTF-8") << QStringList{"a", "b"};
        QTest::newRow("empty lines stay")
            << QByteArray("\n\na") << QByteArray("UTF-8") << QStringList{"", "", "a"};
        QTest::newRow("nothing but a byte order mark is an empty line")
            << QByteArray("\xEF\xBB\xBF") << QByteArray("UTF-8") << QStringList{""};
    }

    void fileIsReadInItsEncoding()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, codec);
        QFETCH(QStringList, lines);
        PrinterDocumentFormatter formatter(0, nullptr);
        formatter.setTemplate("old");
        QVERIFY(formatter.loadTemplate(fileWith(bytes), codec.constData()));
        QCOMPARE(formatter.getTemplate(), lines);
    }

    void emptyFileLeavesNoTemplateAndNoLogLine()
    {
        PrinterDocumentFormatter formatter(0, nullptr);
        formatter.setTemplate("old");
        const LogCatcher log;
        QVERIFY(!formatter.loadTemplate(fileWith(QByteArray()), "UTF-8"));
        QVERIFY(!formatter.isValid());
        QCOMPARE(log.lines(), QStringList());
    }

    void fileThatGivesLessThanItsSizeComesToAnEnd()
    {
        const QString file = "/sys/kernel/mm/transparent_hugepage/enabled";
        if (!QFile::exists(file))
            QSKIP("no file of the kernel's own here");
        PrinterDocumentFormatter formatter(0, nullptr);
        QVERIFY(formatter.loadTemplate(file, "UTF-8"));
        QCOMPARE(formatter.getTemplate().size(), 1);
    }

    void unknownCodecReadsInTheLocalesEncoding()
    {
        PrinterDocumentFormatter formatter(0, nullptr);
        QVERIFY(formatter.loadTemplate(fileWith("abc"), "no-such-codec"));
        QCOMPARE(formatter.getTemplate(), QStringList{"abc"});
        QVERIFY(formatter.loadTemplate(fileWith("abc"), nullptr));
        QCOMPARE(formatter.getTemplate(), QStringList{"abc"});
    }

    void missingFileIsLoggedInTheDefaultCategory()
    {
        const LogCatcher log;
        PrinterDocumentFormatter(0, nullptr).loadTemplate("/no such/file.cpt", "UTF-8");
        QCOMPARE(log.lines().size(), 1);
        QVERIFY2(log.lines().first().startsWith("default "), qPrintable(log.lines().first()));
    }

    void missingFileIsLoggedAndKeepsTheTemplate()
    {
        PrinterDocumentFormatter formatter(0, nullptr);
        formatter.setTemplate("old");
        QTest::ignoreMessage(QtWarningMsg, "/no such/file.cpt\tNo such file or directory");
        QVERIFY(!formatter.loadTemplate("/no such/file.cpt", "UTF-8"));
        QCOMPARE(formatter.getTemplate(), QStringList{"old"});
    }

    void partsHoldTheSixMarkersInOrder()
    {
        const QList<QPair<CheckBlockType, QString>> expected{
            {FiscalHeader, "<FISCAL_HEADER>"},
            {FiscalBody, "<FISCAL_BODY>"},
            {FiscalOperations, "<FISCAL_OPERATIONS>"},
            {FiscalSummary, "<FISCAL_SUMMARY>"},
            {FiscalQr, "<FISCAL_QR>"},
            {FiscalFooter, "<FISCAL_FOOTER>"}};
        QCOMPARE(PrinterDocumentFormatter::PARTS, expected);
        for (int i = 0; i < expected.size(); ++i)
            QCOMPARE(int(expected.at(i).first), i + 1);
        QCOMPARE(int(CheckBlockType::Unsplit), 0);
        QCOMPARE(sizeof(CheckBlockType), std::size_t(1));
    }

    void splitAtOneMarker_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("pieces");  // each piece's lines joined by "|"
        QTest::newRow("in the middle") << "A\n<FISCAL_QR>\nB" << QStringList{"A", "B"};
        QTest::newRow("lower case") << "A\n<fiscal_qr>\nB" << QStringList{"A", "B"};
        QTest::newRow("text in front keeps its case")
            << "aBc<Fiscal_Qr>dEf" << QStringList{"aBc", "dEf"};
        QTest::newRow("text beside is trimmed") << "  x <FISCAL_QR> y  " << QStringList{"x", "y"};
        QTest::newRow("blanks beside leave no line")
            << "A\n  <FISCAL_QR>  \nB" << QStringList{"A", "B"};
        QTest::newRow("absent: one piece") << "A\n\nB" << QStringList{"A||B"};
        QTest::newRow("nothing in front: first piece is empty")
            << "<FISCAL_QR>\nB" << QStringList{"", "B"};
        QTest::newRow("nothing behind: one piece") << "A\n<FISCAL_QR>" << QStringList{"A"};
        QTest::newRow("marker alone: nothing") << "<FISCAL_QR>" << QStringList{};
        QTest::newRow("second on another line is dropped")
            << "A\n<FISCAL_QR>\nB\nc <FISCAL_QR> d\nE" << QStringList{"A", "B|c|d|E"};
        QTest::newRow("second on the same line stays")
            << "a<FISCAL_QR>b<FISCAL_QR>c" << QStringList{"a", "b<FISCAL_QR>c"};
        QTest::newRow("untouched lines keep their blanks")
            << "  A  \n<FISCAL_QR>\n  B  " << QStringList{"  A  ", "  B  "};
        QTest::newRow("letter that is two in upper case in front")
            << "Straße<fiscal_qr>abc" << QStringList{"Straße<", "bc"};
        QTest::newRow("blanks around it") << "straße <fiscal_qr> x" << QStringList{"straße <", "x"};
        QTest::newRow("two such letters") << "ßß<FISCAL_QR>abc" << QStringList{"ßß<F", "c"};
        QTest::newRow("more of them than the line is long behind the marker")
            << "ßßßß<FISCAL_QR>abc" << QStringList{"ßßßß<FIS"};
        QTest::newRow("more of them than the line is long")
            << QString(20, L'ß') + "<FISCAL_QR>" << QStringList{QString(20, L'ß') + "<FISCAL_QR>"};
        QTest::newRow("such a letter behind") << "a<FISCAL_QR>ß" << QStringList{"a", "ß"};
        QTest::newRow("a marker with a ligature is shorter than it is long")
            << "a<ﬁscal_qr>bcd" << QStringList{"a", "cd"};
        QTest::newRow("dotless i") << "a<fıscal_qr>b" << QStringList{"a", "b"};
        QTest::newRow("Cyrillic in front") << "Итог<fiscal_qr>" << QStringList{"Итог"};
    }

    void splitAtOneMarker()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, pieces);
        PrinterDocumentFormatter formatter(0, nullptr);
        formatter.setTemplate(text);
        QStringList actual;
        for (const auto &piece : formatter.splitByFiscalInfo("<FISCAL_QR>"))
            actual.append(piece->getTemplate().join("|"));
        QCOMPARE(actual, pieces);
        QCOMPARE(formatter.getTemplate(), text.split("\n"));
    }

    void emptyFirstPieceIsInvalid()
    {
        PrinterDocumentFormatter formatter(0, nullptr);
        formatter.setTemplate("<FISCAL_QR>\nB");
        const auto pieces = formatter.splitByFiscalInfo("<FISCAL_QR>");
        QCOMPARE(pieces.size(), 2);
        QVERIFY(!pieces.first()->isValid());
    }

    void lowerCaseMarkerArgumentNeverMatches()
    {
        PrinterDocumentFormatter formatter(0, nullptr);
        formatter.setTemplate("A\n<fiscal_qr>\nB");
        const auto pieces = formatter.splitByFiscalInfo("<fiscal_qr>");
        QCOMPARE(pieces.size(), 1);
        QCOMPARE(pieces.first()->getTemplate(), formatter.getTemplate());
    }

    void emptyTemplateSplitsIntoNothing()
    {
        PrinterDocumentFormatter formatter(0, nullptr);
        QVERIFY(formatter.splitByFiscalInfo("<FISCAL_QR>").isEmpty());
        bool found = false;
        QVERIFY(formatter.splitByFiscalParts(found, PrinterDocumentFormatter::PARTS).isEmpty());
        QVERIFY(!found);
    }

    void splitAtAllMarkers_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("parts");
        QTest::addColumn<bool>("found");
        QTest::newRow("one section")
            << "A\n<FISCAL_BODY>\nB" << QStringList{"0:A", "2", "0:B"} << true;
        QTest::newRow("no marker") << "A\nB" << QStringList{"0:A|B"} << false;
        QTest::newRow("order of the text, not of the list")
            << "A\n<FISCAL_FOOTER>\nB\n<FISCAL_HEADER>\nC"
            << QStringList{"0:A", "6", "0:B", "1", "0:C"} << true;
        QTest::newRow("all six") << "<FISCAL_HEADER>\n<FISCAL_BODY>\n<FISCAL_OPERATIONS>\n<FISCAL_"
                                    "SUMMARY>\n<FISCAL_QR>\n<FISCAL_FOOTER>"
                                 << QStringList{"1", "2", "3", "4", "5", "6"} << true;
        QTest::newRow("two of one kind are one place")
            << "A\n<FISCAL_BODY>\nB\n<FISCAL_BODY>\nC" << QStringList{"0:A", "2", "0:B|C"} << true;
        QTest::newRow("two sections on one line")
            << "a <fiscal_qr> b <FISCAL_BODY> c" << QStringList{"0:a", "5", "0:b", "2", "0:c"}
            << true;
        QTest::newRow("twice on one line")
            << "a <FISCAL_BODY> b <FISCAL_BODY> c" << QStringList{"0:a", "2", "0:b <FISCAL_BODY> c"}
            << true;
        QTest::newRow("markers only beside blanks") << " <FISCAL_QR> " << QStringList{"5"} << true;
        QTest::newRow("one empty line") << "" << QStringList{"0:"} << false;
    }

    void splitAtAllMarkers()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, parts);
        QFETCH(bool, found);
        PrinterDocumentFormatter formatter(0, nullptr);
        formatter.setTemplate(text);
        bool actuallyFound = false;
        const Parts actual =
            formatter.splitByFiscalParts(actuallyFound, PrinterDocumentFormatter::PARTS);
        QCOMPARE(describe(actual), parts);
        QCOMPARE(actuallyFound, found);
        QCOMPARE(formatter.getTemplate(), text.split("\n"));
        for (const auto &part : actual)
            QCOMPARE(part.second.isNull(), part.first != Unsplit);
    }

    void foundIsNeverCleared()
    {
        PrinterDocumentFormatter formatter(0, nullptr);
        formatter.setTemplate("A");
        bool found = true;
        formatter.splitByFiscalParts(found, PrinterDocumentFormatter::PARTS);
        QVERIFY(found);
    }

    void emptyListOfPartsGivesTheWholeTemplate()
    {
        PrinterDocumentFormatter formatter(0, nullptr);
        bool found = false;
        QCOMPARE(describe(formatter.splitByFiscalParts(found, {})), QStringList{"0:"});
        formatter.setTemplate("A\n<FISCAL_BODY>\nB");
        QCOMPARE(describe(formatter.splitByFiscalParts(found, {})),
                 QStringList{"0:A|<FISCAL_BODY>|B"});
        QVERIFY(!found);
    }

    void longListOfPartsNeedsNoStack()
    {
        QList<QPair<CheckBlockType, QString>> parts;
        for (int i = 0; i < 200000; ++i)
            parts.append({FiscalBody, "<NOWHERE>"});
        PrinterDocumentFormatter formatter(0, nullptr);
        formatter.setTemplate("A");
        bool found = false;
        QCOMPARE(describe(formatter.splitByFiscalParts(found, parts)), QStringList{"0:A"});
    }

    void piecesTakeMarginAndParentButNotTheSymbolFolder()
    {
        QObject parent;
        PrinterDocumentFormatter formatter(3, &parent);
        formatter.setSpecCharsPath("/somewhere");
        formatter.setTemplate("A\n<FISCAL_BODY>\nB");
        bool found = false;
        const Parts parts = formatter.splitByFiscalParts(found, PrinterDocumentFormatter::PARTS);
        const auto pieces = formatter.splitByFiscalInfo("<FISCAL_BODY>");
        for (const auto &piece :
             {parts.first().second, parts.last().second, pieces.first(), pieces.last()}) {
            QCOMPARE(piece->parent(), &parent);
            QVERIFY(piece->specCharsPath() != QString("/somewhere"));
            QCOMPARE(piece->specCharsPath(), CheckTemplatesSettings().checkTemplatesPath());
            unsigned char format = 0;
            unsigned char font = 0;
            ETextAlignment alignment = AlignLeft;
            const DocumentBlock block = piece->formatPrintStr("x", format, font, alignment, 0);
            QCOMPARE(block.text(), QStringList{"   x"});
        }
    }

    void onlyTheResultStaysAmongTheParentsChildren()
    {
        QObject parent;
        PrinterDocumentFormatter formatter(0, &parent);
        formatter.setTemplate("A\n<FISCAL_BODY>\nB\n<FISCAL_QR>\nC");
        bool found = false;
        {
            const Parts parts =
                formatter.splitByFiscalParts(found, PrinterDocumentFormatter::PARTS);
            QCOMPARE(parts.size(), 5);
            QCOMPARE(parent.children().size(), 1 + 3);
        }
        QCOMPARE(parent.children().size(), 1);
    }

private:
    QString fileWith(const QByteArray &bytes)
    {
        const QString name = m_folder.filePath(QString("template%1.cpt").arg(++m_files));
        QFile file(name);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("the test's own file can't be written");
        return name;
    }

    QTemporaryDir m_folder;
    int m_files = 0;
};

QTEST_GUILESS_MAIN(TestTemplates)
#include "tst_templates.moc"
