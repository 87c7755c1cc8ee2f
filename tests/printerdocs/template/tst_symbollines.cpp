#include <QtTest>
#include <memory>

#include "formatterbench.h"
#include "logcatcher.h"
#include "settings/checktemplatessettings.h"

using namespace formatterbench;

class TestSymbolLines : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLoggingCategory::setFilterRules("default.warning=false"); }

    void init() { m_formatter = std::make_unique<PrinterDocumentFormatter>(0, nullptr); }

    void specialSymbolLinesGo_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QStringList>("left");
        QTest::newRow("alone") << QStringList{"<SPECSYMBOLS=abc>"} << QStringList();
        QTest::newRow("between lines")
            << QStringList{"a", "<SPECSYMBOLS=abc>", "", "b"} << QStringList{"a", "", "b"};
        QTest::newRow("all of them")
            << QStringList{"<SPECSYMBOLS=a>", "x", "<SPECSYMBOLS=b>", "<SPECSYMBOLS=c>"}
            << QStringList{"x"};
        QTest::newRow("blanks around")
            << QStringList{"  <SPECSYMBOLS=abc>  ", "\t<SPECSYMBOLS=abc>\t"} << QStringList();
        QTest::newRow("empty name") << QStringList{"<SPECSYMBOLS=>"} << QStringList();
        QTest::newRow("> in the name") << QStringList{"<SPECSYMBOLS=a> b>"} << QStringList();
        QTest::newRow("no end") << QStringList{"<SPECSYMBOLS=abc"}
                                << QStringList{"<SPECSYMBOLS=abc"};
        QTest::newRow("text in front")
            << QStringList{"x <SPECSYMBOLS=abc>"} << QStringList{"x <SPECSYMBOLS=abc>"};
        QTest::newRow("text behind")
            << QStringList{"<SPECSYMBOLS=abc> x"} << QStringList{"<SPECSYMBOLS=abc> x"};
        QTest::newRow("lower case")
            << QStringList{"<specsymbols=abc>"} << QStringList{"<specsymbols=abc>"};
        QTest::newRow("blank in front of the equals sign")
            << QStringList{"<SPECSYMBOLS =abc>"} << QStringList{"<SPECSYMBOLS =abc>"};
        QTest::newRow("blank lines stay") << QStringList{"", "  "} << QStringList{"", "  "};
    }
    void specialSymbolLinesGo()
    {
        QFETCH(QStringList, lines);
        QFETCH(QStringList, left);
        m_formatter->setSpecCharsPath(m_symbols.path());
        m_formatter->loadSpecSymbols(lines);
        QCOMPARE(lines, left);
    }

    void unfinishedSpecialSymbolLineIsText()
    {
        m_formatter->setTemplate("<SPECSYMBOLS=abc\n  <SPECSYMBOLS=abc>  ");
        QCOMPARE(m_formatter->prepareDocument(documentOf()), QStringList{"<SPECSYMBOLS=abc"});
    }

    void specialSymbolFileIsNamed_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("line");
        QTest::addColumn<bool>("loaded");
        QTest::newRow("suffix is added") << "sym.ssi"
                                         << "<SPECSYMBOLS=sym>" << true;
        QTest::newRow("suffix is there") << "sym.ssi"
                                         << "<SPECSYMBOLS=sym.ssi>" << true;
        QTest::newRow("suffix in upper case") << "sym.SSI"
                                              << "<SPECSYMBOLS=sym.SSI>" << true;
        QTest::newRow("suffix in mixed case is none") << "sym.Ssi.ssi"
                                                      << "<SPECSYMBOLS=sym.Ssi>" << true;
        QTest::newRow("suffix inside the name") << "sym.ssi.old"
                                                << "<SPECSYMBOLS=sym.ssi.old>" << true;
        QTest::newRow("upper case inside the name") << "a.SSIb"
                                                    << "<SPECSYMBOLS=a.SSIb>" << true;
        QTest::newRow("file without suffix is not read") << "sym"
                                                         << "<SPECSYMBOLS=sym>" << false;
        QTest::newRow("upper case file isn't tried") << "sym.SSI"
                                                     << "<SPECSYMBOLS=sym>" << false;
        QTest::newRow("folder in the name") << "in/sym.ssi"
                                            << "<SPECSYMBOLS=in/sym>" << true;
        QTest::newRow("blanks around the line") << "sym.ssi"
                                                << "  <SPECSYMBOLS=sym>\t" << true;
        QTest::newRow("blanks inside belong to the name") << " sym .ssi"
                                                          << "<SPECSYMBOLS= sym >" << true;
        QTest::newRow("non-ASCII name") << "знаки.ssi"
                                        << "<SPECSYMBOLS=знаки>" << true;
        QTest::newRow("percent signs are no places") << "%1%2.ssi"
                                                     << "<SPECSYMBOLS=%1%2>" << true;
        QTest::newRow("empty name") << ".ssi"
                                    << "<SPECSYMBOLS=>" << true;
        QTest::newRow("lower-case keyword") << "sym.ssi"
                                            << "<specsymbols=sym>" << false;
    }
    void specialSymbolFileIsNamed()
    {
        QFETCH(QString, file);
        QFETCH(QString, line);
        QFETCH(bool, loaded);
        QTemporaryDir folder;
        writeFile(folder.filePath(file), symbolFile(3));
        m_formatter->setSpecCharsPath(folder.path());
        m_formatter->setTemplate(line);
        QCOMPARE(loadedCodes(), loaded ? QList<signed char>{3} : QList<signed char>());
    }

    void suffixInTheFolderCountsForTheFile()
    {
        QTemporaryDir folder;
        const QString symbols = folder.filePath("x.ssi");
        QVERIFY(QDir().mkpath(symbols));
        QFile file(symbols + "/sym");
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(
            "<SpecialSymbolImages><Font Width=\"4\" Height=\"1\"><Symbol Code=\"3\">"
            "<Line>1010</Line></Symbol></Font></SpecialSymbolImages>");
        file.close();
        m_formatter->setSpecCharsPath(symbols);
        m_formatter->setTemplate("<SPECSYMBOLS=sym>\nx");
        QCOMPARE(m_formatter->toTextPrinterDocument(PrinterDocument()).charImages().size(), 1);
    }

    void lowestSpecialSymbolLineWins()
    {
        m_formatter->setSpecCharsPath(m_symbols.path());
        m_formatter->setTemplate("<SPECSYMBOLS=one>\na\n<SPECSYMBOLS=two>\nb");
        QCOMPARE(loadedCodes(), QList<signed char>{2});
        QCOMPARE(m_formatter->toPlainText(documentOf(), 0), (QStringList{"a", "b"}));
    }

    void missingLowestFileIsPassedOverAndTheUpperLineIsNotTried()
    {
        m_formatter->setSpecCharsPath(m_symbols.path());
        m_formatter->setTemplate("<SPECSYMBOLS=one>\n<SPECSYMBOLS=none>");
        QCOMPARE(loadedCodes(), QList<signed char>());
    }

    void missingFileIsSilentAndKeepsTheSet()
    {
        m_formatter->setSpecCharsPath(m_symbols.path());
        m_formatter->setTemplate("<SPECSYMBOLS=one>");
        QCOMPARE(loadedCodes(), QList<signed char>{1});
        QStringList lines{"<SPECSYMBOLS=none>"};
        const LogCatcher log;
        m_formatter->loadSpecSymbols(lines);
        QCOMPARE(log.lines(), QStringList());
        QCOMPARE(lines, QStringList());
        m_formatter->setTemplate("a");
        QCOMPARE(loadedCodes(), QList<signed char>{1});
    }

    void loadedSetStaysUntilAnotherIsLoaded()
    {
        m_formatter->setSpecCharsPath(m_symbols.path());
        m_formatter->setTemplate("<SPECSYMBOLS=one>\na");
        QCOMPARE(loadedCodes(), QList<signed char>{1});
        m_formatter->setTemplate("a");
        QCOMPARE(loadedCodes(), QList<signed char>{1});
        QCOMPARE(m_formatter->plainTextToTextPrinterDocument("x").charImages().keys(),
                 QList<signed char>{1});
        m_formatter->setTemplate("<SPECSYMBOLS=two>\na");
        QCOMPARE(loadedCodes(), QList<signed char>{2});
    }

    void everyPreparationLoadsTheSet()
    {
        m_formatter->setSpecCharsPath(m_symbols.path());
        m_formatter->setTemplate("<SPECSYMBOLS=one>\na");
        m_formatter->prepareDocument(documentOf());
        m_formatter->setTemplate("a");
        QCOMPARE(loadedCodes(), QList<signed char>{1});
    }

    void fileIsReadAgainAtEachRun()
    {
        QTemporaryDir folder;
        m_formatter->setSpecCharsPath(folder.path());
        m_formatter->setTemplate("<SPECSYMBOLS=sym>");
        QCOMPARE(loadedCodes(), QList<signed char>());
        writeFile(folder.filePath("sym.ssi"), symbolFile(4));
        QCOMPARE(loadedCodes(), QList<signed char>{4});
        writeFile(folder.filePath("sym.ssi"), symbolFile(5));
        QCOMPARE(loadedCodes(), QList<signed char>{5});
        writeFile(folder.filePath("sym.ssi"), "<SpecialSymbolImages/>");
        QCOMPARE(loadedCodes(), QList<signed char>());
    }

    void fileOfAnotherKindEmptiesTheSet()
    {
        QTemporaryDir folder;
        m_formatter->setSpecCharsPath(folder.path());
        m_formatter->setTemplate("<SPECSYMBOLS=sym>");
        writeFile(folder.filePath("sym.ssi"), symbolFile(4));
        QCOMPARE(loadedCodes(), QList<signed char>{4});
        writeFile(folder.filePath("sym.ssi"), "<Other/>");
        QCOMPARE(loadedCodes(), QList<signed char>());
    }

    void specialSymbolsAreLoadedBeforeSubstitution()
    {
        m_formatter->setSpecCharsPath(m_symbols.path());
        m_formatter->setTemplate("<NAME>\na");
        const PrinterDocument sale = documentOf({{"NAME", "<SPECSYMBOLS=one>"}});
        const TextPrinterDocument made = m_formatter->toTextPrinterDocument(sale);
        QVERIFY(made.charImages().isEmpty());
        QCOMPARE(shown(made), QStringList{"left: a"});
    }

    void symbolPicturesGoWithTheDocument()
    {
        m_formatter->setSpecCharsPath(m_symbols.path());
        m_formatter->setTemplate("<SPECSYMBOLS=one>\n<#1>");
        const TextPrinterDocument made = m_formatter->toTextPrinterDocument(documentOf());
        QCOMPARE(made.charImages().size(), 1);
        QCOMPARE(made.charImages().value(1), MonochromeImage(8, 1, QByteArray("\x81", 1)));
        QCOMPARE(shown(made), QStringList{QString("left: ") + QChar(1)});
    }

    void formattersDoNotShareTheirSymbols()
    {
        m_formatter->setSpecCharsPath(m_symbols.path());
        m_formatter->setTemplate("<SPECSYMBOLS=one>");
        QCOMPARE(loadedCodes(), QList<signed char>{1});
        const PrinterDocumentFormatter other(0, nullptr);
        QVERIFY(other.toTextPrinterDocument(documentOf()).charImages().isEmpty());
    }

    void folderOfSpecialSymbolsIsTheTemplateFolder()
    {
        CheckTemplatesSettings settings;
        const QString before = settings.checkTemplatesPath();
        QCOMPARE(m_formatter->specCharsPath(), before);
        QVERIFY(before.endsWith("/templates"));
        settings.setCheckTemplatesPath("/somewhere/else");
        QCOMPARE(m_formatter->specCharsPath(), before);
        QCOMPARE(PrinterDocumentFormatter(0, nullptr).specCharsPath(), QString("/somewhere/else"));
        settings.setCheckTemplatesPath(QString());
    }

private:
    QList<signed char> loadedCodes()
    {
        return m_formatter->toTextPrinterDocument(documentOf()).charImages().keys();
    }

    const SymbolFolder m_symbols;
    std::unique_ptr<PrinterDocumentFormatter> m_formatter;
};

QTEST_GUILESS_MAIN(TestSymbolLines)
#include "tst_symbollines.moc"
