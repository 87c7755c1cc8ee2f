// Texts of others on a receipt: what an attacker puts into a name, and what is left of it.
#include <QTextCodec>
#include <QtTest>

#include "printerdocs/printerdocumentformatter.h"
#include "printerslib/drivers/documentcleaner.h"

using printerslib::drivers::DocumentCleaner;

Q_DECLARE_METATYPE(DocumentCleaner::Rules)

namespace {

PrinterDocument documentOf(const QVariant &name, const QString &entries = QString())
{
    PrinterDocument document;
    document.setAttributes({{"NAME", name}, {"TOTAL", 6.65}});
    document.setEntries(entries);
    return document;
}

/// The receipt's lines, 30 characters wide.
QStringList printed(const PrinterDocument &document, const QString &text)
{
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate(text);
    return formatter.toPlainText(document, 30);
}

QStringList printedClean(const PrinterDocument &document, const QString &text)
{
    return printed(DocumentCleaner::cleanedDocument(document), text);
}

/// The name as a driver gets it, in the map form of the document.
QString printableText(const PrinterDocument &document)
{
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate("<NAME>");
    const QVariantMap map = formatter.toTextPrinterDocument(document).toMap();
    QStringList lines;
    for (const QVariant &block : map.value("blocks").toList())
        lines += block.toMap().value("txt").toStringList();
    return lines.join('\n');
}

/// All characters that a rule acts on, with the rule's number.
QMap<ushort, uint> cleanedCharacters()
{
    const QList<QPair<uint, QList<QPair<int, int>>>> ranges{
        {0x01, {{'<', '<'}}},
        {0x02, {{'[', '['}, {']', ']'}}},
        {0x04, {{0, 0x1F}, {0x7F, 0x9F}, {0x2028, 0x2029}}},
        {0x08, {{0x61C, 0x61C}, {0x200E, 0x200F}, {0x202A, 0x202E}, {0x2066, 0x2069}}},
        {0x10,
         {{0xAD, 0xAD},
          {0x180E, 0x180E},
          {0x200B, 0x200D},
          {0x2060, 0x2064},
          {0x206A, 0x206F},
          {0xFEFF, 0xFEFF},
          {0xFFF9, 0xFFFB}}}};
    QMap<ushort, uint> characters;
    for (const auto &rule : ranges) {
        for (const auto &range : rule.second) {
            for (int code = range.first; code <= range.second; ++code)
                characters.insert(static_cast<ushort>(code), rule.first);
        }
    }
    return characters;
}

}  // namespace

class TestDocumentCleaner : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nameWithLineFeedsPrintsNoLinesOfItsOwn()
    {
        const PrinterDocument document =
            documentOf(QString::fromLatin1("Ann\nTotal<S>0.00\n\r\x85x"));
        const QString text = "Customer <NAME>\nTotal<S><TOTAL>";
        // Uncleaned, the attack works.
        QCOMPARE(printed(document, text).size(), 4);
        QCOMPARE(printed(document, text).at(1), QString("Total                     0.00"));
        const QStringList lines = printedClean(document, text);
        QCOMPARE(lines.size(), 2);
        QCOMPARE(lines.first(), QString("Customer Ann Total S>0.00   x"));
        QCOMPARE(lines.last(), QString("Total                     6.65"));
    }

    void nameWithBracketsRemovesNoGroup()
    {
        // The value's bracket shortens the group around the missing discount.
        const PrinterDocument document = documentOf("Ann][");
        const QString text = "[<NAME> gave <NONE1> today]x";
        QCOMPARE(printed(document, text), QStringList{"Annx"});
        QCOMPARE(printedClean(document, text), QStringList{"x"});
        QCOMPARE(printedClean(document, "<NAME>"), QStringList{"Ann)("});
    }

    void nameWithEscapesReachesNoDriver()
    {
        const PrinterDocument document = documentOf("A\x1B@\x1D\x56\x42\x01Z\x7F");
        // Uncleaned, the attack works, and prints a special symbol besides.
        QVERIFY(printableText(document).contains("\x1B@\x1D\x56\x42\x01"));
        QCOMPARE(printableText(DocumentCleaner::cleanedDocument(document)), QString("A @ VB Z "));
        QCOMPARE(printedClean(document, "<NAME>"), QStringList{"A @ VB Z "});
    }

    void nameWithTagsIsNoTag()
    {
        const PrinterDocument document = documentOf("<TOTAL*2><C><#1><NAME>");
        QCOMPARE(printedClean(document, "<NAME>"), QStringList{" TOTAL*2> C> #1> NAME>"});
    }

    void everyCharacterOfTheBasicPlaneFollowsItsRuleAlone()
    {
        const QMap<ushort, uint> expected = cleanedCharacters();
        for (int code = 0; code <= 0xFFFF; ++code) {
            const QString text = QString("a") + QChar(code) + "b";
            const uint rule = expected.value(static_cast<ushort>(code), 0);
            for (const DocumentCleaner::NamedRule &named : DocumentCleaner::namedRules()) {
                const bool changed = DocumentCleaner::cleanedText(text, named.rule) != text;
                QVERIFY2(changed == (rule == named.rule),
                         qPrintable(QString::number(code, 16) + ' ' + named.name));
            }
        }
    }

    void replacements_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("cleaned");
        QTest::newRow("null") << QString() << QString();
        QTest::newRow("empty") << QString("") << QString("");
        QTest::newRow("ordinary")
            << QString::fromUtf8("Чай, 2 × \"Größe\" & Co. > 1 \xF0\x9F\x8D\xB5")
            << QString::fromUtf8("Чай, 2 × \"Größe\" & Co. > 1 \xF0\x9F\x8D\xB5");
        QTest::newRow("first and last") << QString("<a[") << QString(" a(");
        QTest::newRow("nothing but marks") << QString(3, QChar(0x202E)) << QString();
        QTest::newRow("digits stay apart") << QString("12\n34<56") << QString("12 34 56");
        QTest::newRow("turned around")
            << QString("no.") + QChar(0x202E) + "21" + QChar(0x202C) << QString("no.21");
        QTest::newRow("equals signs") << QString("a=b=c") << QString("a=b=c");
        QTest::newRow("nul") << QString("a") + QChar(0) + "b" << QString("a b");
        QTest::newRow("lone surrogate")
            << QString("a") + QChar(0xD800) << QString("a") + QChar(0xD800);
    }

    void replacements()
    {
        QFETCH(QString, text);
        const QString cleaned = DocumentCleaner::cleanedText(text);
        QTEST(cleaned, "cleaned");
        QCOMPARE(DocumentCleaner::cleanedText(cleaned), cleaned);
    }

    void noRuleCleansNothing()
    {
        QString text;
        for (int code = 0; code <= 0xFFFF; ++code)
            text += QChar(code);
        QCOMPARE(DocumentCleaner::cleanedText(text, DocumentCleaner::Rules()), text);
    }

    void rulesHaveNamesInTheOrderOfTheirNumbers()
    {
        QStringList names;
        DocumentCleaner::Rules all;
        for (const DocumentCleaner::NamedRule &named : DocumentCleaner::namedRules()) {
            QVERIFY(named.rule == 1U << static_cast<uint>(names.size()));
            QVERIFY(!named.effect.isEmpty());
            names.append(named.name);
            all |= named.rule;
        }
        QCOMPARE(names, (QStringList{"tags", "brackets", "controls", "bidirectional", "invisible",
                                     "equals"}));
        QVERIFY(all == DocumentCleaner::CleanAll);
    }

    void pagesNameEachRuleAndItsCharacters()
    {
        const QString project = PRINTERSLIB_EXAMPLES "/../";
        for (const char *page : {"SECURITY.md", "docs/callers.md", "docs/template-authors.md"}) {
            QFile file(project + page);
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QString text = QString::fromUtf8(file.readAll());
            for (const DocumentCleaner::NamedRule &named : DocumentCleaner::namedRules())
                QVERIFY2(text.contains('`' + named.name + '`'), qPrintable(page + named.name));
            const QMap<ushort, uint> characters = cleanedCharacters();
            for (auto it = characters.begin(); it != characters.end(); ++it) {
                // The ends of ranges stand there.
                if (it.key() == '<' || it.key() == '[' || it.key() == ']' ||
                    (characters.value(it.key() - 1) == *it &&
                     characters.value(it.key() + 1) == *it))
                    continue;
                const QString code =
                    "U+" + QString::number(it.key(), 16).toUpper().rightJustified(4, '0');
                QVERIFY2(text.contains(code), qPrintable(page + code));
            }
        }
    }

    void valuesThatAreNoTextKeepTheirType_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QVariant>("cleaned");
        const auto same = [](const char *name, const QVariant &value) {
            QTest::newRow(name) << value << value;
        };
        same("invalid", QVariant());
        same("null text", QVariant(QString()));
        same("number", -12.5);
        same("whole number", 7ULL);
        same("bool", true);
        same("date and time", QDateTime(QDate(2026, 5, 9), QTime(14, 30)));
        same("clean bytes", QByteArray("007"));
        same("map", QVariantMap{{"<", "<"}});
        QTest::newRow("bytes") << QVariant(QByteArray("a\nb")) << QVariant(QByteArray("a b"));
        QTest::newRow("bytes behind a nul")
            << QVariant(QByteArray("a\0<", 3)) << QVariant(QByteArray("a  "));
        QTest::newRow("character") << QVariant(QChar('<')) << QVariant(QChar(' '));
        QTest::newRow("invisible character") << QVariant(QChar(0x202E)) << QVariant(QChar(' '));
        QTest::newRow("list of one text") << QVariant(QStringList{"a\nb"}) << QVariant("a b");
        QTest::newRow("address") << QVariant(QUrl("http://[::1]/x")) << QVariant("http://(::1)/x");
    }

    void valuesThatAreNoTextKeepTheirType()
    {
        QFETCH(QVariant, value);
        QFETCH(QVariant, cleaned);
        const QVariant actual = DocumentCleaner::cleanedValue(value);
        QCOMPARE(actual.userType(), cleaned.userType());
        QCOMPARE(actual, cleaned);
        QCOMPARE(actual.isNull(), cleaned.isNull());
    }

    void namesOfAttributesAndTheMarkOfACopyStay()
    {
        PrinterDocument document;
        document.setAttributes({{"A[1]<", "x<"}, {"A(1) ", "y"}});
        document.setIsCopy(true);
        const PrinterDocument cleaned = DocumentCleaner::cleanedDocument(document);
        QCOMPARE(cleaned.attributes(), (QVariantMap{{"A[1]<", "x "}, {"A(1) ", "y"}}));
        QVERIFY(cleaned.isCopy());
    }

    void cleanDocumentComesBackAsItIs()
    {
        PrinterDocument document = documentOf("Ann", "Total=10\t\tTax=2\tplain\t");
        QVERIFY(DocumentCleaner::cleanedDocument(document) == document);
        document.setEntries(QString());
        QVERIFY(DocumentCleaner::cleanedDocument(document).entries().isNull());
    }

    void entriesKeepTheirLinesAndLoseTheRest_data()
    {
        QTest::addColumn<QString>("entries");
        QTest::addColumn<QString>("cleaned");
        QTest::newRow("both sides") << "[a]\n=<b>\tc\x1B=d"
                                    << "(a) = b>\tc =d";
        QTest::newRow("forged column") << "Tea=0.00=2.40"
                                       << "Tea=0.00 2.40";
        QTest::newRow("no name") << "==1"
                                 << "= 1";
        QTest::newRow("no value") << "x<"
                                  << "x ";
        QTest::newRow("empty ones") << "\t=\t"
                                    << "\t=\t";
    }

    void entriesKeepTheirLinesAndLoseTheRest()
    {
        QFETCH(QString, entries);
        QTEST(DocumentCleaner::cleanedEntries(entries), "cleaned");
    }

    void equalsSignsStayInEntriesWithoutTheirRule()
    {
        const DocumentCleaner::Rules others =
            DocumentCleaner::Rules(DocumentCleaner::CleanAll) & ~DocumentCleaner::CleanEqualsSigns;
        QCOMPARE(DocumentCleaner::cleanedEntries("a=b=<", others), QString("a=b= "));
        QCOMPARE(DocumentCleaner::cleanedEntries("a=b=<", DocumentCleaner::CleanEqualsSigns),
                 QString("a=b <"));
    }

    void eachPairIsOneLineWhateverItHolds()
    {
        const QString entries = DocumentCleaner::joinedEntries(
            {{"Tea\tTotal=0.00", "1=2\t3"}, {"", ""}, {"<C>[x]", "y\n"}});
        QCOMPARE(entries, QString("Tea Total 0.00=1 2 3\t=\t C>(x)=y "));
        QCOMPARE(printed(documentOf("", entries), "<ENTRIES>"),
                 (QStringList{"Tea Total 0.00           1 2 3", QString(30, ' '),
                              " C>(x)                      y "}));
        QCOMPARE(DocumentCleaner::joinedEntries({}), QString());
        QCOMPARE(DocumentCleaner::joinedEntries({{"<\t", "="}}, DocumentCleaner::Rules()),
                 QString("< = "));
    }

    void cleanTextIsNoControlInAPrintersCodePage_data()
    {
        QTest::addColumn<QByteArray>("codePage");
        for (const char *name :
             {"IBM437",       "IBM850",       "IBM852",       "IBM855",       "IBM857",
              "IBM858",       "IBM862",       "IBM864",       "IBM866",       "KOI8-R",
              "windows-1250", "windows-1251", "windows-1252", "windows-1253", "windows-1254",
              "windows-1255", "windows-1256", "windows-1257", "ISO-8859-5",   "ISO-8859-15",
              "TIS-620",      "UTF-8",        "GBK",          "Big5",         "Shift_JIS",
              "EUC-KR"})
            QTest::newRow(name) << QByteArray(name);
    }
    void cleanTextIsNoControlInAPrintersCodePage()
    {
        QFETCH(QByteArray, codePage);
        const QTextCodec *codec = QTextCodec::codecForName(codePage);
        QVERIFY(codec != nullptr);
        QString text;
        for (int code = 0; code < 0xFFFE; ++code)
            text += QChar(code);
        const QByteArray bytes = codec->fromUnicode(DocumentCleaner::cleanedText(text));
        QVERIFY(bytes.size() > 0xF000);
        for (const char byte : bytes) {
            const auto code = static_cast<unsigned char>(byte);
            QVERIFY2(code >= 0x20 && code != 0x7F && code != '<',
                     qPrintable(QString::number(code)));
        }
    }

    // What no rule stops, and the pages therefore name.

    void paddedNameStillGoesOnBelow()
    {
        const QString total = "Total                     0.00";
        const QString line =
            printedClean(documentOf("Ann" + QString(27, ' ') + total), "<NAME>").first();
        // A printer breaks the line of 30 columns here.
        QCOMPARE(line.mid(30), total);
        const QString name = DocumentCleaner::cleanedText("Ann" + QString(27, ' ') + total);
        QCOMPARE(printedClean(documentOf(name.simplified().left(9)), "<NAME>"),
                 QStringList{"Ann Total"});
    }

    void nameThatReadsAsNumberStillPrintsAsOne_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("line");
        const QString unfilled = "<TOTAL>";
        QTest::newRow("zero") << QString("0") << unfilled;
        QTest::newRow("no number") << QString("nan") << unfilled;
        QTest::newRow("nothing") << QString() << unfilled;
        QTest::newRow("nothing is left of it") << QString(3, QChar(0x202E)) << unfilled;
        QTest::newRow("exponent") << QString("1e9") << QString("For 1000000000.006.65");
        QTest::newRow("word") << QString("Ann") << QString("For Ann6.65");
    }
    void nameThatReadsAsNumberStillPrintsAsOne()
    {
        QFETCH(QString, name);
        QTEST(printedClean(documentOf(name), "[For <NAME>]<TOTAL>").join('|'), "line");
    }

    void textInAnExpressionStillIsPartOfIt()
    {
        PrinterDocument document = documentOf("2*0");
        QCOMPARE(printedClean(document, "<TOTAL*NAME>"), QStringList{"0.00"});
        // So are names of attributes, whatever the expression means by such a figure.
        document.setAttributes({{"TOTAL", 6.65}, {"2", "0"}});
        QCOMPARE(printedClean(document, "<TOTAL*2>"), QStringList{"0.00"});
    }

    void pagesNameWhatNoRuleStops()
    {
        for (const char *page : {"SECURITY.md", "docs/callers.md", "docs/template-authors.md"}) {
            QFile file(QString(PRINTERSLIB_EXAMPLES "/../") + page);
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QString text = QString::fromUtf8(file.readAll());
            for (const char *example : {"goes on below", "`nan`", "`2*0`"})
                QVERIFY2(text.contains(example), qPrintable(QString(page) + ": " + example));
        }
    }

    void hugeTextIsCleaned()
    {
        const int count = 4 * 1024 * 1024;
        QCOMPARE(DocumentCleaner::cleanedText(QString(count, '<')), QString(count, ' '));
        QCOMPARE(DocumentCleaner::cleanedText(QString(count, QChar(0x200B))), QString(""));
    }
};

QTEST_APPLESS_MAIN(TestDocumentCleaner)
#include "tst_documentcleaner.moc"
