#include <QtTest>

#include <QTemporaryDir>
#include <QTranslator>
#include <memory>

#include "printerdocs/printerdocumentformatter.h"
#include "settings/checktemplatessettings.h"
#include "settings/printersettings.h"

namespace {

using Attributes = QMap<QString, QVariant>;

PrinterDocument document(const Attributes &attributes = {}, const QString &entries = QString())
{
    PrinterDocument made;
    made.setAttributes(attributes);
    made.setEntries(entries);
    return made;
}

PrinterDocument copyOf(PrinterDocument made)
{
    made.setIsCopy(true);
    return made;
}

const QString cell = R"(<tr><td colspan="2" align = "left"> <font size = 1>%1</font> </td></tr>)";
const QString documentHead =
    R"(<html><head><meta http-equiv="Content-Type" content="text/html; charset=UTF-8"></head>)"
    R"(<body><table width="100%" cellspacing=0 cellpadding=0>)";
const QString documentTail = "</table></body></html>";
const QString fragmentHead = R"(<p><table width="100%"cellspacing=0 cellpadding=0>)";
const QString plainFragmentHead = R"(<p><table width="100%" cellspacing=0 cellpadding=0>)";
const QString fragmentTail = "</table></p>";

QString cellOf(const QString &text)
{
    return cell.arg(text);
}

QString html(const QString &head, const QStringList &rows, const QString &tail)
{
    return (QStringList(head) + rows + QStringList(tail)).join("\n");
}

QString hexOf(const QList<QByteArray> &lines)
{
    QStringList shown;
    for (const QByteArray &bytes : lines)
        shown << QString::fromLatin1(bytes.toHex());
    return shown.join("|");
}

QList<QByteArray> zeroBytesFor(const QStringList &lines)
{
    QList<QByteArray> bytes;
    for (const QString &text : lines)
        bytes << QByteArray(text.length(), '\0');
    return bytes;
}

/// A block in one line: alignment, its lines parted by "|", and what isn't zero of all the rest.
QString shown(const DocumentBlock &block)
{
    static const char *const names[] = {"left", "right", "center", "justify"};
    const QString alignment = names[block.alignment() & 3];
    if (block.isQrCode())
        return "qr " + alignment + ": " + block.text().join("|");
    if (!block.isText())
        return "no text";
    QString text = alignment + ": " + block.text().join("|");
    if (block.format() != zeroBytesFor(block.text()))
        text += " formats " + hexOf(block.format());
    if (block.font() != zeroBytesFor(block.text()))
        text += " fonts " + hexOf(block.font());
    for (const int spacing : block.lineSpacing()) {
        if (spacing != 0)
            text += QString(" spacing %1").arg(spacing);
    }
    return text;
}

QStringList shown(const TextPrinterDocument &printable)
{
    QStringList blocks;
    for (const DocumentBlock &block : printable.blocks())
        blocks << shown(block);
    return blocks;
}

void setCharactersMode(int mode)
{
    const auto settings = QSharedPointer<PrinterSettings>::create();
    settings->setCharactersMode(IPrintDeviceSettings::ECharactersMode(mode));
    IPrintDeviceSettings::setPrintDeviceSettings(settings);
}

void writeFile(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
        file.write(content) != content.size())
        qFatal("can't write %s", qPrintable(path));
}

QByteArray symbolFile(int code)
{
    return R"(<SpecialSymbolImages><Font Width="8" Height="1"><Symbol Code=")" +
           QByteArray::number(code) +
           R"("><Line>10000001</Line></Symbol></Font></SpecialSymbolImages>)";
}

class CopyTranslator : public QTranslator
{
public:
    CopyTranslator(const QByteArray &context, const QString &word)
        : m_context(context), m_word(word)
    {}
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *source, const char *, int) const override
    {
        return m_context == context && qstrcmp(source, "<C>CHECK_COPY") == 0 ? m_word : QString();
    }

private:
    QByteArray m_context;
    QString m_word;
};

int loggedMessages = 0;

void countMessage(QtMsgType, const QMessageLogContext &, const QString &)
{
    ++loggedMessages;
}

QString manyLines(const QString &line, int count)
{
    QString text = (line + "\n").repeated(count);
    text.chop(1);
    return text;
}

}  // namespace

class TestPipeline : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QLoggingCategory::setFilterRules("default.warning=false");
        QVERIFY(m_folder.isValid());
    }

    void init() { m_formatter = std::make_unique<PrinterDocumentFormatter>(0, nullptr); }

    void cleanup()
    {
        setCharactersMode(0);
        IPrintDeviceSettings::setPrintDeviceSettings({});
        m_formatter.reset();
    }

    // ---- the copy mark ----

    void copyMarkStandsBehindTheFirstDocumentNumber_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QStringList>("marked");
        const QString mark = "<C>CHECK_COPY";
        QTest::newRow("alone") << QStringList{"<DOCNO>"} << QStringList{"<DOCNO>", mark};
        QTest::newRow("in the middle of a line, between lines")
            << QStringList{"a", "No <DOCNO>.", "b"} << QStringList{"a", "No <DOCNO>.", mark, "b"};
        QTest::newRow("behind the first only") << QStringList{"<DOCNO>", "x", "<DOCNO>"}
                                               << QStringList{"<DOCNO>", mark, "x", "<DOCNO>"};
        QTest::newRow("twice on a line")
            << QStringList{"<DOCNO><DOCNO>"} << QStringList{"<DOCNO><DOCNO>", mark};
        QTest::newRow("lower case") << QStringList{"<docno>"} << QStringList{"<docno>", mark};
        QTest::newRow("mixed case") << QStringList{"ж<DocNo>"} << QStringList{"ж<DocNo>", mark};
        QTest::newRow("behind letters that are two in upper case")
            << QStringList{"ßß<docno>"} << QStringList{"ßß<docno>", mark};
        QTest::newRow("with a format it is another tag")
            << QStringList{"<DOCNO,000>"} << QStringList{"<DOCNO,000>"};
        QTest::newRow("without brackets it is no tag")
            << QStringList{"DOCNO"} << QStringList{"DOCNO"};
        QTest::newRow("no tag, no mark") << QStringList{"a", ""} << QStringList{"a", ""};
        QTest::newRow("no lines") << QStringList() << QStringList();
    }
    void copyMarkStandsBehindTheFirstDocumentNumber()
    {
        QFETCH(QStringList, lines);
        QFETCH(QStringList, marked);
        QStringList unmarked = lines;
        m_formatter->addCopyInfo(unmarked, document());
        QCOMPARE(unmarked, lines);
        m_formatter->addCopyInfo(lines, copyOf(document()));
        QCOMPARE(lines, marked);
    }

    void copyMarkPrintsCentred()
    {
        m_formatter->setTemplate("No <DOCNO>");
        const PrinterDocument copy = copyOf(document({{"DOCNO", 17}}));
        QCOMPARE(m_formatter->prepareDocument(copy), (QStringList{"No 17", "<C>CHECK_COPY"}));
        QCOMPARE(m_formatter->toPlainText(copy, 20), (QStringList{"No 17", "     CHECK_COPY"}));
        QCOMPARE(shown(m_formatter->toTextPrinterDocument(copy)),
                 (QStringList{"left: No 17", "center: CHECK_COPY"}));
        QCOMPARE(m_formatter->toPlainText(document({{"DOCNO", 17}}), 20), QStringList{"No 17"});
    }

    void copyMarkStaysWhereTheDocumentNumberVanishes()
    {
        m_formatter->setTemplate("a\n<docno>\nb");
        QCOMPARE(m_formatter->prepareDocument(copyOf(document({{"DOCNO", 17}}))),
                 (QStringList{"a", "<C>CHECK_COPY", "b"}));
    }

    void copyOfATemplateWithoutDocumentNumberHasNoMark()
    {
        m_formatter->setTemplate("a\nb");
        QCOMPARE(m_formatter->prepareDocument(copyOf(document())), (QStringList{"a", "b"}));
    }

    void copyMarkIsTranslated()
    {
        CopyTranslator translator("PrinterDocumentFormatter", "<C>КОПИЯ ЧЕКА");
        QVERIFY(QCoreApplication::installTranslator(&translator));
        m_formatter->setTemplate("<DOCNO>");
        const PrinterDocument copy = copyOf(document({{"DOCNO", 17}}));
        QCOMPARE(shown(m_formatter->toTextPrinterDocument(copy)),
                 (QStringList{"left: 17", "center: КОПИЯ ЧЕКА"}));
        QCoreApplication::removeTranslator(&translator);
        QCOMPARE(m_formatter->prepareDocument(copy), (QStringList{"17", "<C>CHECK_COPY"}));
    }

    void translationOfAnotherContextDoesNotTouchTheCopyMark()
    {
        CopyTranslator translator("TextPrinterDocument", "<C>КОПИЯ");
        QVERIFY(QCoreApplication::installTranslator(&translator));
        QStringList lines{"<DOCNO>"};
        m_formatter->addCopyInfo(lines, copyOf(document()));
        QCOMPARE(lines, (QStringList{"<DOCNO>", "<C>CHECK_COPY"}));
        QCoreApplication::removeTranslator(&translator);
    }

    // ---- entries ----

    void entriesAreUnpacked_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QString>("entries");
        QTest::addColumn<QStringList>("unpacked");
        const QString two = "Total=10\tTax=2";
        QTest::newRow("two entries")
            << QStringList{"<ENTRIES>"} << two << QStringList{"Total<S>10", "Tax<S>2"};
        QTest::newRow("every equals sign")
            << QStringList{"<ENTRIES>"} << "a=b=c" << QStringList{"a<S>b<S>c"};
        QTest::newRow("text before and behind")
            << QStringList{"x <ENTRIES> y"} << two << QStringList{"x Total<S>10", "Tax<S>2 y"};
        QTest::newRow("text before and behind one entry")
            << QStringList{"x <ENTRIES> y"} << "a=1" << QStringList{"x a<S>1 y"};
        QTest::newRow("lower case") << QStringList{"x<entries>y"} << "a" << QStringList{"xay"};
        QTest::newRow("mixed case, non-ASCII in front")
            << QStringList{"Итог<EntRies>!"} << "a\tb" << QStringList{"Итогa", "b!"};
        QTest::newRow("equals signs of the template stay")
            << QStringList{"p=q", "k=<ENTRIES>=k"} << "a=1" << QStringList{"p=q", "k=a<S>1=k"};
        QTest::newRow("letter that is two in upper case in front")
            << QStringList{"ß<entries>z"} << "e\tf" << QStringList{"ß<e", "f"};
        QTest::newRow("such a letter in front, one entry")
            << QStringList{"ß<ENTRIES>x"} << "a=1" << QStringList{"ß<a<S>1"};
        QTest::newRow("such a letter behind")
            << QStringList{"x<ENTRIES>ß"} << "a\tb" << QStringList{"xa", "bß"};
        QTest::newRow("three letters of one")
            << QStringList{"ΐ<ENTRIES>1234"} << "a\tb" << QStringList{"ΐ<Ea", "b34"};
        QTest::newRow("more letters of upper case than the line has")
            << QStringList{QString(20, L'ß') + "<ENTRIES>"} << "a\tb"
            << QStringList{QString(20, L'ß') + "<ENTRIES>a", "b"};
        QTest::newRow("such letters between two tags")
            << QStringList{"<ENTRIES>ßß<ENTRIES>1234"} << "a\tb"
            << QStringList{"a", "bßß<Ea", "b34"};
        QTest::newRow("such a letter in front of two tags")
            << QStringList{"ß<ENTRIES>-<ENTRIES>1234"} << "a\tb"
            << QStringList{"ß<a", "ba", "b1234"};
        QTest::newRow("letter beyond 16 bits in front")
            << QStringList{"𐐨<entries>z"} << "a\tb" << QStringList{"𐐨a", "bz"};
        QTest::newRow("long s and dotless i")
            << QStringList{"<entrıeſ>"} << "a" << QStringList{"a"};
        QTest::newRow("such a letter in the last entry, and a tag behind it")
            << QStringList{"<ENTRIES>-<ENTRIES>ABC"} << "a\tß" << QStringList{"a", "ß-<a", "ßBC"};
        QTest::newRow("no entries") << QStringList{"x<ENTRIES>y"} << "" << QStringList{"xy"};
        QTest::newRow("no entries, null")
            << QStringList{"x<ENTRIES>y"} << QString() << QStringList{"xy"};
        QTest::newRow("no entries and nothing else leave an empty line")
            << QStringList{"a", "<ENTRIES>", "b"} << "" << QStringList{"a", "", "b"};
        QTest::newRow("empty entries are kept")
            << QStringList{"<ENTRIES>"} << "\ta=1\t\t" << QStringList{"", "a<S>1", "", ""};
        QTest::newRow("no tag") << QStringList{"a", "ENTRIES", "<ENTRIES"} << two
                                << QStringList{"a", "ENTRIES", "<ENTRIES"};
        QTest::newRow("with a format it is another tag")
            << QStringList{"<ENTRIES,0>"} << two << QStringList{"<ENTRIES,0>"};
        QTest::newRow("on several lines") << QStringList{"<ENTRIES>", "-", "<ENTRIES>"} << "a\tb"
                                          << QStringList{"a", "b", "-", "a", "b"};
        QTest::newRow("on neighbouring lines, one entry")
            << QStringList{"<ENTRIES>", "<ENTRIES>"} << "a" << QStringList{"a", "a"};
        QTest::newRow("twice on a line")
            << QStringList{"<ENTRIES>|<ENTRIES>"} << "a\tb" << QStringList{"a", "b|a", "b"};
        QTest::newRow("three times on a line") << QStringList{"1<ENTRIES>2<ENTRIES>3<ENTRIES>4"}
                                               << "a\tb" << QStringList{"1a", "b2a", "b3a", "b4"};
        QTest::newRow("twice on a line, one entry: the first new line isn't looked at again")
            << QStringList{"<ENTRIES>|<ENTRIES>", "<ENTRIES>"} << "a"
            << QStringList{"a|<ENTRIES>", "a"};
        QTest::newRow("twice on a line, no entries")
            << QStringList{"<ENTRIES><ENTRIES>"} << "" << QStringList{"<ENTRIES>"};
        QTest::newRow("a tag in the first entry isn't looked at")
            << QStringList{"x<ENTRIES>"} << "<ENTRIES>\tb" << QStringList{"x<ENTRIES>", "b"};
        QTest::newRow("a tag in another entry stays as text, since unpacking it would never end")
            << QStringList{"<ENTRIES>"} << "a\t<ENTRIES>" << QStringList{"a", "<ENTRIES>"};
        QTest::newRow("a tag in lower case in another entry stays as text")
            << QStringList{"x<ENTRIES>y"} << "a\t<entries>\tb"
            << QStringList{"xa", "<entries>", "by"};
        QTest::newRow("a tag made of the last entry and the text behind")
            << QStringList{"<ENTRIES>IES>"} << "a\t<ENTR" << QStringList{"a", "a", "<ENTR"};
        QTest::newRow("no lines") << QStringList() << two << QStringList();
    }
    void entriesAreUnpacked()
    {
        QFETCH(QStringList, lines);
        QFETCH(QString, entries);
        QFETCH(QStringList, unpacked);
        m_formatter->unpackEntries(lines, document({}, entries));
        QCOMPARE(lines, unpacked);
    }

    void entryHoldingTheTagIsUnpackedOnce()
    {
        QStringList lines{"x<ENTRIES>y"};
        m_formatter->unpackEntries(lines, document({}, "a\t<entries>\tb"));
        QCOMPARE(lines, (QStringList{"xa", "<entries>", "by"}));
    }

    void entryHoldingTheTagPrintsNothing()
    {
        m_formatter->setTemplate("x<ENTRIES>y");
        QCOMPARE(m_formatter->prepareDocument(document({}, "a\tb<entries>\t<ENTRIES>\tc")),
                 (QStringList{"xa", "b", "cy"}));
        QCOMPARE(m_formatter->prepareDocument(document({{"ENTRIES", 5}}, "a\t<ENTRIES>")),
                 (QStringList{"xa", "5y"}));
    }

    void manyEntriesTagsOnALineBeforeAnotherScript()
    {
        QStringList lines{QString("<ENTRIES>").repeated(50000) + "ß"};
        m_formatter->unpackEntries(lines, document({}, "a\tb"));
        QCOMPARE(lines.size(), 50001);
        QCOMPARE(lines.first(), QString("a"));
        QCOMPARE(lines.at(1), QString("ba"));
        QCOMPARE(lines.last(), QString("bß"));
    }

    void noLinesAreOneBlankLine()
    {
        for (const bool remove : {false, true}) {
            QStringList lines;
            m_formatter->removeXParts(lines, remove);
            QCOMPARE(lines, QStringList{""});
        }
    }

    void wildWidthsAndMarginsDoNoHarm()
    {
        const int wild = std::numeric_limits<int>::max();
        const QStringList lines = m_formatter->plainTextToFormattedPlainText("", wild);
        QCOMPARE(lines.size(), 1);
        QVERIFY(lines.first().trimmed().isEmpty());
        QCOMPARE(m_formatter->plainTextToFormattedPlainText("", -1), QStringList{QString()});
        const PrinterDocumentFormatter wideFormatter(wild, nullptr);
        const QStringList shifted = wideFormatter.plainTextToFormattedPlainText("x", 10);
        QCOMPARE(shifted.size(), 1);
        QCOMPARE(shifted.first().trimmed(), QString("x"));
        DocumentBlock justified = DocumentBlock::emptyBlock(1, AlignJustify, 0);
        QCOMPARE(justified.toStringList(wild), QStringList{QString()});
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

    void entriesPrintAtBothEdges()
    {
        m_formatter->setTemplate("<ENTRIES>");
        const PrinterDocument sale = document({}, "Total=10\tTax=2");
        QCOMPARE(m_formatter->toPlainText(sale, 10), (QStringList{"Total   10", "Tax      2"}));
        QCOMPARE(shown(m_formatter->toTextPrinterDocument(sale)),
                 QStringList{"justify: Total\t10|Tax\t2"});
    }

    // ---- special symbols ----

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
        m_formatter->setSpecCharsPath(m_folder.path());
        m_formatter->loadSpecSymbols(lines);
        QCOMPARE(lines, left);
    }

    void unfinishedSpecialSymbolLineIsText()
    {
        m_formatter->setTemplate("<SPECSYMBOLS=abc\n  <SPECSYMBOLS=abc>  ");
        QCOMPARE(m_formatter->prepareDocument(document()), QStringList{"<SPECSYMBOLS=abc"});
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

    void lowestSpecialSymbolLineWins()
    {
        const QString path = symbolFolder();
        m_formatter->setSpecCharsPath(path);
        m_formatter->setTemplate("<SPECSYMBOLS=one>\na\n<SPECSYMBOLS=two>\nb");
        QCOMPARE(loadedCodes(), QList<signed char>{2});
        QCOMPARE(m_formatter->toPlainText(document(), 0), (QStringList{"a", "b"}));
    }

    void missingLowestFileIsPassedOverAndTheUpperLineIsNotTried()
    {
        m_formatter->setSpecCharsPath(symbolFolder());
        m_formatter->setTemplate("<SPECSYMBOLS=one>\n<SPECSYMBOLS=none>");
        QCOMPARE(loadedCodes(), QList<signed char>());
    }

    void missingFileIsSilentAndKeepsTheSet()
    {
        m_formatter->setSpecCharsPath(symbolFolder());
        m_formatter->setTemplate("<SPECSYMBOLS=one>");
        QCOMPARE(loadedCodes(), QList<signed char>{1});
        QStringList lines{"<SPECSYMBOLS=none>"};
        loggedMessages = 0;
        const QtMessageHandler before = qInstallMessageHandler(countMessage);
        m_formatter->loadSpecSymbols(lines);
        qInstallMessageHandler(before);
        QCOMPARE(loggedMessages, 0);
        QCOMPARE(lines, QStringList());
        m_formatter->setTemplate("a");
        QCOMPARE(loadedCodes(), QList<signed char>{1});
    }

    void loadedSetStaysUntilAnotherIsLoaded()
    {
        m_formatter->setSpecCharsPath(symbolFolder());
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
        m_formatter->setSpecCharsPath(symbolFolder());
        m_formatter->setTemplate("<SPECSYMBOLS=one>\na");
        m_formatter->prepareDocument(document());
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

    void symbolPicturesGoWithTheDocument()
    {
        m_formatter->setSpecCharsPath(symbolFolder());
        m_formatter->setTemplate("<SPECSYMBOLS=one>\n<#1>");
        const TextPrinterDocument made = m_formatter->toTextPrinterDocument(document());
        QCOMPARE(made.charImages().size(), 1);
        QCOMPARE(made.charImages().value(1), MonochromeImage(8, 1, QByteArray("\x81", 1)));
        QCOMPARE(shown(made), QStringList{QString("left: ") + QChar(1)});
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

    // ---- parts marked for removal ----

    void markedPartsAreRemoved_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QStringList>("removed");
        QTest::addColumn<QStringList>("kept");
        QTest::newRow("in a line")
            << QStringList{"a<X:>b<:X>c"} << QStringList{"ac"} << QStringList{"abc"};
        QTest::newRow("over lines joins what is left")
            << QStringList{"a<X:>b", "c", "d<:X>e"} << QStringList{"ae"}
            << QStringList{"ab", "c", "de"};
        QTest::newRow("tags on lines of their own")
            << QStringList{"a", "<X:>", "b", "<:X>", "c"} << QStringList{"a", "", "c"}
            << QStringList{"a", "", "b", "", "c"};
        QTest::newRow("several") << QStringList{"<X:>a<:X>b<X:>c", "d<:X>e"} << QStringList{"be"}
                                 << QStringList{"abc", "de"};
        QTest::newRow("everything")
            << QStringList{"<X:>a", "b<:X>"} << QStringList{""} << QStringList{"a", "b"};
        QTest::newRow("empty part")
            << QStringList{"a<X:><:X>b"} << QStringList{"ab"} << QStringList{"ab"};
        QTest::newRow("no close tag")
            << QStringList{"a<X:>b", "c"} << QStringList{"a<X:>b", "c"} << QStringList{"ab", "c"};
        QTest::newRow("no open tag")
            << QStringList{"a<:X>b"} << QStringList{"a<:X>b"} << QStringList{"ab"};
        QTest::newRow("close tag first")
            << QStringList{"<:X>a<X:>b"} << QStringList{"<:X>a<X:>b"} << QStringList{"ab"};
        QTest::newRow("close tag, then a part")
            << QStringList{"<:X>a<X:>b<:X>c"} << QStringList{"<:X>ac"} << QStringList{"abc"};
        QTest::newRow("parts don't nest")
            << QStringList{"<X:>a<X:>b<:X>c<:X>d"} << QStringList{"c<:X>d"} << QStringList{"abcd"};
        QTest::newRow("open tag that a removal completes, without a close")
            << QStringList{"a<X<X:>q<:X>:>r"} << QStringList{"a<X:>r"} << QStringList{"a<Xq:>r"};
        QTest::newRow("a part that removal makes is removed too")
            << QStringList{"<X<X:>q<:X>:>r<:X>s"} << QStringList{"s"} << QStringList{"<Xq:>rs"};
        QTest::newRow("open tags are taken out before close tags")
            << QStringList{"<:<X:>X>a"} << QStringList{"<:<X:>X>a"} << QStringList{"a"};
        QTest::newRow("an open tag made of the rest stays")
            << QStringList{"<X<:X>:>a"} << QStringList{"<X<:X>:>a"} << QStringList{"<X:>a"};
        QTest::newRow("lower case is text")
            << QStringList{"<x:>a<:x>"} << QStringList{"<x:>a<:x>"} << QStringList{"<x:>a<:x>"};
        QTest::newRow("empty lines stay")
            << QStringList{"", "a", "", ""} << QStringList{"", "a", "", ""}
            << QStringList{"", "a", "", ""};
        QTest::newRow("a line feed in a line parts it, with no tag too")
            << QStringList{"a\nb", "c"} << QStringList{"a", "b", "c"} << QStringList{"a", "b", "c"};
        QTest::newRow("line tags are another matter")
            << QStringList{"<X>a", "b"} << QStringList{"<X>a", "b"} << QStringList{"<X>a", "b"};
    }
    void markedPartsAreRemoved()
    {
        QFETCH(QStringList, lines);
        QFETCH(QStringList, removed);
        QFETCH(QStringList, kept);
        QStringList others = lines;
        m_formatter->removeXParts(lines, true);
        QCOMPARE(lines, removed);
        m_formatter->removeXParts(others, false);
        QCOMPARE(others, kept);
    }

    void markedLineIsEmptied_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("removed");
        QTest::addColumn<QString>("kept");
        QTest::newRow("in front") << "<X>text"
                                  << ""
                                  << "text";
        QTest::newRow("in the middle, twice") << "a<X>b<X>c"
                                              << ""
                                              << "abc";
        QTest::newRow("alone") << "<X>"
                               << ""
                               << "";
        QTest::newRow("no tag") << "text"
                                << "text"
                                << "text";
        QTest::newRow("lower case") << "<x>text"
                                    << "<x>text"
                                    << "<x>text";
        QTest::newRow("tags of parts") << "<X:>a<:X>"
                                       << "<X:>a<:X>"
                                       << "<X:>a<:X>";
        QTest::newRow("empty") << ""
                               << ""
                               << "";
    }
    void markedLineIsEmptied()
    {
        QFETCH(QString, line);
        QFETCH(QString, removed);
        QFETCH(QString, kept);
        QString other = line;
        m_formatter->removeXParts(line, true);
        QCOMPARE(line, removed);
        m_formatter->removeXParts(other, false);
        QCOMPARE(other, kept);
    }

    // ---- the template as a whole ----

    void templateIsPrepared_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("prepared");
        QTest::newRow("one empty line") << "" << QStringList{""};
        QTest::newRow("unknown attribute alone vanishes") << "<ABCD>" << QStringList{""};
        QTest::newRow("vanishing lines next to each other")
            << "a\n<ABCD>\n<EFGH>\nb" << QStringList{"a", "b"};
        QTest::newRow("vanishing lines first and last") << "<ABCD>\na\n<ABCD>" << QStringList{"a"};
        QTest::newRow("all lines vanish") << "<ABCD>\n<ABCD>" << QStringList{""};
        QTest::newRow("lines that vanish for different reasons")
            << "<ABCD>\n<SPECSYMBOLS=x>\n[<ZERO>]" << QStringList{""};
        QTest::newRow("nothing but a line of symbols") << "<SPECSYMBOLS=x>" << QStringList{""};
        QTest::newRow("blank lines stay") << "\na\n\n\nb\n"
                                          << QStringList{"", "a", "", "", "b", ""};
        QTest::newRow("a line of blanks stays") << "  " << QStringList{"  "};
        QTest::newRow("a blank beside the attribute keeps the line")
            << " <ABCD>" << QStringList{" "};
        QTest::newRow("attribute") << "Sum <SUMM>" << QStringList{"Sum 1250"};
        QTest::newRow("value with a line feed is two lines")
            << "a<BOTH>b" << QStringList{"aone", "twob"};
        QTest::newRow("group of zero vanishes with its line")
            << "[off <ZERO>]\nb" << QStringList{"b"};
        QTest::newRow("fiscal markers are unknown attributes")
            << "<FISCAL_HEADER>\na\n<FISCAL_BODY>\nx<FISCAL_QR>" << QStringList{"a", "x"};
        QTest::newRow("marked part") << "a<X:>b\nc<:X>d" << QStringList{"ad"};
        QTest::newRow("line emptied by a marked part stays")
            << "a\n<X:>b<:X>\nc" << QStringList{"a", "", "c"};
        QTest::newRow("all in a marked part is one empty line")
            << "<X:>a\nb<:X>" << QStringList{""};
        QTest::newRow("open tag alone is text") << "a<X:>b" << QStringList{"a<X:>b"};
        QTest::newRow("close tag alone is text") << "a<:X>b" << QStringList{"a<:X>b"};
        QTest::newRow("marked part is found after substitution")
            << "<OPEN>a<:X>b" << QStringList{"b"};
        QTest::newRow("marked line stays empty") << "a\n<X>text\nb" << QStringList{"a", "", "b"};
        QTest::newRow("marked line is emptied from behind") << "text<X>" << QStringList{""};
        QTest::newRow("marked line is found after substitution") << "text<LINE>" << QStringList{""};
        QTest::newRow("line tag inside a marked part goes with it")
            << "a<X:><X><:X>b" << QStringList{"ab"};
        QTest::newRow("image alone vanishes with its line")
            << "<I>10 20 data</I>\na" << QStringList{"a"};
        QTest::newRow("image in text") << "a<I>1 2 d</I>b" << QStringList{"ab"};
        QTest::newRow("images on one line") << "a<I>1 2 d</I>b<I>3 4 e</I>c" << QStringList{"abc"};
        QTest::newRow("images alone on one line")
            << "<I>1 2 d</I><I>3 4 e</I>\nx" << QStringList{"x"};
        QTest::newRow("images on lines next to each other")
            << "<I>1 2 d</I>\n<I>3 4 e</I>\nx" << QStringList{"x"};
        QTest::newRow("nothing but images") << "<I>1 2 d</I>\n<I>3 4 e</I>" << QStringList();
        QTest::newRow("the line behind an image is looked at")
            << "<I>1 2 d</I>\n<X>q\na<I>1 1 b</I>" << QStringList{"", "a"};
        QTest::newRow("blanks beside an image keep the line")
            << " <I>1 2 d</I>" << QStringList{" "};
        QTest::newRow("empty image") << "<I></I>" << QStringList();
        QTest::newRow("image of words") << "a<I>x y z</I>" << QStringList{"a"};
        QTest::newRow("image of great and negative sizes")
            << "a<I> 99999999999   -5  чек </I>" << QStringList{"a"};
        QTest::newRow("image with a size only") << "a<I> 7 </I>b" << QStringList{"ab"};
        QTest::newRow("image without end") << "a<I>1 2 d" << QStringList{"a<I>1 2 d"};
        QTest::newRow("image does not span lines")
            << "<I>1 2 d\n</I>" << QStringList{"<I>1 2 d", "</I>"};
        QTest::newRow("image end in front") << "</I>a<I>" << QStringList{"</I>a<I>"};
        QTest::newRow("image end in front, image behind")
            << "</I>a<I>1 1 b</I>c" << QStringList{"</I>ac"};
        QTest::newRow("image inside an image leaves its end")
            << "<I>1<I>2</I>3</I>" << QStringList{"3</I>"};
        QTest::newRow("image that a removal makes is removed too")
            << "<I<I>1</I>>2</I>a" << QStringList{"a"};
        QTest::newRow("image in lower case is text")
            << "<i>1 1 a</i>" << QStringList{"<i>1 1 a</i>"};
        QTest::newRow("image and line tag") << "<I>1 1 a</I><X>" << QStringList{""};
        QTest::newRow("line tag and image") << "<X><I>1 1 a</I>" << QStringList{""};
        QTest::newRow("line tag inside an image goes with it")
            << "a<I>1 <X></I>b" << QStringList{"ab"};
        QTest::newRow("marked parts go before images")
            << "a<I>1 <X:>b</I>c<:X>d" << QStringList{"a<I>1 d"};
        QTest::newRow("attributes inside an image are substituted before")
            << "a<I><CLOSE>b</I>" << QStringList{"ab</I>"};
        QTest::newRow("markup tags stay") << "<C><B>a<S>[<#3>]" << QStringList{"<C><B>a<S>[<#3>]"};
        QTest::newRow("QR tag stays") << "a<QR><SUMM>" << QStringList{"a<QR>1250"};
    }
    void templateIsPrepared()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, prepared);
        m_formatter->setTemplate(text);
        const QStringList before = m_formatter->getTemplate();
        const PrinterDocument sale = document({{"SUMM", 1250},
                                               {"ZERO", 0},
                                               {"BOTH", "one\ntwo"},
                                               {"OPEN", "<X:>"},
                                               {"CLOSE", "</I>"},
                                               {"LINE", "<X>"}});
        QCOMPARE(m_formatter->prepareDocument(sale), prepared);
        QCOMPARE(m_formatter->getTemplate(), before);
        QCOMPARE(m_formatter->prepareDocument(sale), prepared);
    }

    void stagesActInTheirOrder_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("entries");
        QTest::addColumn<QStringList>("prepared");
        QTest::newRow("copy mark before entries: a number tag in an entry gets none")
            << "<ENTRIES>"
            << "No=<DOCNO>" << QStringList{"No<S>17"};
        QTest::newRow("copy mark before entries: the mark stands behind all of them")
            << "<DOCNO><ENTRIES>"
            << "a\tb" << QStringList{"17a", "b", "<C>CHECK_COPY"};
        QTest::newRow("copy mark before special symbols")
            << "<SPECSYMBOLS=<DOCNO>\na"
            << "" << QStringList{"<C>CHECK_COPY", "a"};
        QTest::newRow("copy mark before marked parts") << "a\n<X:>\n<DOCNO>\n<:X>b"
                                                       << "" << QStringList{"a", "b"};
        QTest::newRow("entries before special symbols") << "<SPECSYM<ENTRIES>BOLS=x>\na"
                                                        << "" << QStringList{"a"};
        QTest::newRow("entries hold no special symbol lines, as their equals sign is gone")
            << "<ENTRIES>"
            << "a\t<SPECSYMBOLS=x>" << QStringList{"a", "x>"};
        QTest::newRow("entries before substitution")
            << "<ENTRIES>"
            << "Sum=<SUMM>\tNone=<ABCD>" << QStringList{"Sum<S>5", "None<S>"};
        QTest::newRow("an entry of an unknown attribute vanishes")
            << "<ENTRIES>"
            << "<ABCD>\tb" << QStringList{"b"};
        QTest::newRow("no entries: the empty line stays") << "a\n<ENTRIES>"
                                                          << "" << QStringList{"a", ""};
        QTest::newRow("a second tag behind one entry is an attribute then")
            << "<ENTRIES>-<ENTRIES>"
            << "a" << QStringList{"a-attribute"};
        QTest::newRow("entries before marked parts") << "<X:><ENTRIES><:X>z"
                                                     << "a\tb" << QStringList{"z"};
        QTest::newRow("entries before images") << "x<I><ENTRIES>y"
                                               << "1\t2</I>" << QStringList{"x<I>1", "2</I>y"};
    }
    void stagesActInTheirOrder()
    {
        QFETCH(QString, text);
        QFETCH(QString, entries);
        QFETCH(QStringList, prepared);
        m_formatter->setTemplate(text);
        const Attributes attributes{{"DOCNO", 17}, {"SUMM", 5}, {"ENTRIES", "attribute"}};
        QCOMPARE(m_formatter->prepareDocument(copyOf(document(attributes, entries))), prepared);
    }

    void specialSymbolsAreLoadedBeforeSubstitution()
    {
        m_formatter->setSpecCharsPath(symbolFolder());
        m_formatter->setTemplate("<NAME>\na");
        const PrinterDocument sale = document({{"NAME", "<SPECSYMBOLS=one>"}});
        const TextPrinterDocument made = m_formatter->toTextPrinterDocument(sale);
        QVERIFY(made.charImages().isEmpty());
        QCOMPARE(shown(made), QStringList{"left: a"});
    }

    void formattedTextIsSubstitutionAlone()
    {
        m_formatter->setTemplate(
            "<DOCNO>\n\n<ENTRIES>\n<X>a<:X>\n<ABCD>\n<B>b<I>1 1 c</I>\n[x<ABCD>]");
        const PrinterDocument sale = copyOf(document({{"DOCNO", 17}}, "a=1\tb=2"));
        setCharactersMode(1);
        QCOMPARE(m_formatter->toFormattedText(sale),
                 (QStringList{"17", "", "", "<X>a<:X>", "", "<B>b<I>1 1 c</I>", ""}));
    }

    void noTemplateGivesNothing()
    {
        const PrinterDocument sale = copyOf(document({}, "a=1"));
        QCOMPARE(m_formatter->prepareDocument(sale), QStringList());
        QCOMPARE(m_formatter->toFormattedText(sale), QStringList());
        QCOMPARE(m_formatter->toPlainText(sale, 20), QStringList());
        QCOMPARE(m_formatter->toHtml(sale, false), html(fragmentHead, {}, fragmentTail));
        QCOMPARE(m_formatter->toHtmlDocument(sale, false), html(documentHead, {}, documentTail));
        TextPrinterDocument nothing;
        nothing.setCurrentTicketAction(QFlags<EPrinterTicketAction>(QFlag(9)));
        QVERIFY(m_formatter->toTextPrinterDocument(sale) == nothing);
    }

    void templateOfVanishingLinesIsABlankLine()
    {
        m_formatter->setTemplate("<ABCD>\n<SPECSYMBOLS=x>");
        QCOMPARE(m_formatter->toPlainText(document(), 3), QStringList{"   "});
        QCOMPARE(m_formatter->toHtml(document(), true), html(fragmentHead, {"<br>"}, fragmentTail));
        const auto blocks = m_formatter->toTextPrinterDocument(document()).blocks();
        QCOMPARE(blocks.size(), 1);
        QCOMPARE(blocks.first().text(), QStringList{""});
    }

    void templateOfVanishingImagesGivesNothing()
    {
        m_formatter->setTemplate("<ABCD>\n<I>1 1 a</I>");
        QCOMPARE(m_formatter->toPlainText(document(), 20), QStringList());
        QCOMPARE(m_formatter->toHtml(document(), true), html(fragmentHead, {}, fragmentTail));
        QVERIFY(m_formatter->toTextPrinterDocument(document()).blocks().isEmpty());
    }

    // ---- plain text ----

    void plainTextIsLaidOut_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("width");
        QTest::addColumn<QStringList>("lines");
        QTest::newRow("left") << "abc" << 6 << QStringList{"abc"};
        QTest::newRow("right") << "<R>abc" << 6 << QStringList{"   abc"};
        QTest::newRow("centre") << "<C>abc" << 6 << QStringList{" abc"};
        QTest::newRow("justify") << "a<S>b" << 6 << QStringList{"a    b"};
        QTest::newRow("empty line is as wide as the paper")
            << "a\n\nb" << 6 << QStringList{"a", "      ", "b"};
        QTest::newRow("empty line behind a right-aligned one") << "<R>a\n"
                                                               << 3 << QStringList{"  a", "   "};
        QTest::newRow("width 0") << "a\n" << 0 << QStringList{"a", ""};
        QTest::newRow("negative width") << "a\n" << -5 << QStringList{"a", ""};
        QTest::newRow("overflowing line is not cut")
            << "abcdef<S>g" << 3 << QStringList{"abcdef g"};
        QTest::newRow("nothing but tags gives no line")
            << "a\n<B><C>\nb" << 6 << QStringList{"a", "b"};
        QTest::newRow("QR tag is text") << "a<QR>b" << 6 << QStringList{"a<QR>b"};
        QTest::newRow("line of blanks") << "  " << 6 << QStringList{"  "};
    }
    void plainTextIsLaidOut()
    {
        QFETCH(QString, text);
        QFETCH(int, width);
        QFETCH(QStringList, lines);
        m_formatter->setTemplate(text);
        QCOMPARE(m_formatter->toPlainText(document(), width), lines);
        QCOMPARE(m_formatter->plainTextToFormattedPlainText(text, width), lines);
    }

    void unfinishedMarkedPartPrintsItsTag()
    {
        m_formatter->setTemplate("<X:>a\nb");
        QCOMPARE(m_formatter->toPlainText(document(), 9), (QStringList{"<X:>a", "b"}));
    }

    void leftMarginStandsInFrontOfLinesWithText()
    {
        PrinterDocumentFormatter formatter(2, nullptr);
        formatter.setTemplate("x\n\n<C>y");
        QCOMPARE(formatter.toPlainText(document(), 7), (QStringList{"  x", "       ", "    y"}));
        QCOMPARE(shown(formatter.toTextPrinterDocument(document())),
                 (QStringList{"left:   x|", "center:   y"}));
    }

    // ---- HTML ----

    void htmlFrames()
    {
        const QString text = "ab";
        m_formatter->setTemplate(text);
        const QStringList rows{cellOf("ab")};
        QCOMPARE(m_formatter->toHtml(document(), false), html(fragmentHead, rows, fragmentTail));
        QCOMPARE(m_formatter->plainTextToHtml(text, false),
                 html(plainFragmentHead, rows, fragmentTail));
        QCOMPARE(m_formatter->toHtmlDocument(document(), false),
                 html(documentHead, rows, documentTail));
        QCOMPARE(m_formatter->plainTextToHtmlDocument(text, false),
                 html(documentHead, rows, documentTail));
    }

    void htmlRows_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("rows");
        QTest::newRow("lines") << "a\nb" << QStringList{cellOf("a"), cellOf("b")};
        QTest::newRow("blank line") << "a\n\nb" << QStringList{cellOf("a"), "<br>", cellOf("b")};
        QTest::newRow("blank line only") << "" << QStringList{"<br>"};
        QTest::newRow("nothing but tags gives no output")
            << "a\n<B:>\n<C>\n<:B>\nb" << QStringList{cellOf("a"), cellOf("b")};
        QTest::newRow("centre")
            << "<C>a"
            << QStringList{
                   R"(<tr><td colspan="2" align = "center"> <font size = 1>a</font> </td></tr>)"};
        QTest::newRow("format is carried to the next line")
            << "<B:>a\nb<:B>" << QStringList{cellOf("<b>a</b>"), cellOf("<b>b</b>")};
        QTest::newRow("font is carried to the next line")
            << "<F3>a\n\nb"
            << QStringList{QString(cellOf("a")).replace("size = 1", "size = 3"), "<br>",
                           QString(cellOf("b")).replace("size = 1", "size = 3")};
        QTest::newRow("QR tag is text") << "a<QR>b" << QStringList{cellOf("a<QR>b")};
        QTest::newRow("text is not escaped") << "a & b < c" << QStringList{cellOf("a & b < c")};
    }
    void htmlRows()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, rows);
        m_formatter->setTemplate(text);
        QCOMPARE(m_formatter->toHtml(document(), false), html(fragmentHead, rows, fragmentTail));
        QCOMPARE(m_formatter->toHtmlDocument(document(), false),
                 html(documentHead, rows, documentTail));
        QCOMPARE(m_formatter->plainTextToHtml(text, false),
                 html(plainFragmentHead, rows, fragmentTail));
        QCOMPARE(m_formatter->plainTextToHtmlDocument(text, false),
                 html(documentHead, rows, documentTail));
    }

    void htmlFlagAlignsTheSecondCell()
    {
        const QString row = R"(<tr><td align = "left" width="50%"> <font size = 1>a</font> </td>)"
                            R"(<td align = "%1" width="50%"> <font size = 1>b</font> </td></tr>)";
        m_formatter->setTemplate("a<S>b");
        for (const bool right : {false, true}) {
            const QStringList rows{QString(row).replace("%1", right ? "right" : "left")};
            QCOMPARE(m_formatter->toHtml(document(), right),
                     html(fragmentHead, rows, fragmentTail));
            QCOMPARE(m_formatter->toHtmlDocument(document(), right),
                     html(documentHead, rows, documentTail));
            QCOMPARE(m_formatter->plainTextToHtml("a<S>b", right),
                     html(plainFragmentHead, rows, fragmentTail));
            QCOMPARE(m_formatter->plainTextToHtmlDocument("a<S>b", right),
                     html(documentHead, rows, documentTail));
        }
    }

    void htmlIsMadeOfPreparedLines()
    {
        m_formatter->setTemplate("<DOCNO>\n<ABCD>\n<ENTRIES>\n<X>q");
        const PrinterDocument copy = copyOf(document({{"DOCNO", 17}}, "t"));
        const QStringList rows{cellOf("17"),
                               QString(cellOf("CHECK_COPY")).replace("\"left\"", "\"center\""),
                               cellOf("t"), "<br>"};
        QCOMPARE(m_formatter->toHtml(copy, false), html(fragmentHead, rows, fragmentTail));
        QCOMPARE(m_formatter->toHtmlDocument(copy, false), html(documentHead, rows, documentTail));
    }

    // ---- blocks ----

    void documentOfOneLine()
    {
        m_formatter->setTemplate("<F2>A");
        const TextPrinterDocument made = m_formatter->toTextPrinterDocument(document());
        TextPrinterDocument told;
        told.setBlocks({DocumentBlock::createSimpleBlock(QStringList{"A"}, AlignLeft, 1, 0, 0, 0)});
        told.setCurrentTicketAction(QFlags<EPrinterTicketAction>(QFlag(9)));
        QVERIFY(made == told);
        QCOMPARE(QJsonDocument::fromVariant(made.toMap()).toJson(QJsonDocument::Compact),
                 QByteArray(R"({"blocks":[{"align":0,"fmt":["AA=="],"fnt":["AQ=="],"ls":[0],)"
                            R"("txt":["A"],"type":0}],"cta":9,"init":true,"loop":0,"pta":0})"));
    }

    void blocksAreMade_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("blocks");
        QTest::newRow("one empty line") << "" << QStringList{"left: "};
        QTest::newRow("neighbours of one alignment merge")
            << "a\nb\nc" << QStringList{"left: a|b|c"};
        QTest::newRow("other alignments don't merge")
            << "a\n<C>b\nc" << QStringList{"left: a", "center: b", "left: c"};
        QTest::newRow("each alignment merges with its like")
            << "<C>a\n<C>b\n<R>c\n<R>d\n<S>e\n<S>f"
            << QStringList{"center: a|b", "right: c|d", "justify: \te|\tf"};
        QTest::newRow("empty lines take the last alignment")
            << "\n<C>a\n\n\nb\n"
            << QStringList{"left: ", "center: a||", "left: b|"};
        QTest::newRow("a line of nothing but tags keeps the last alignment")
            << "<R>a\n<C>\n\nb" << QStringList{"right: a|", "left: b"};
        QTest::newRow("a line of nothing but tags parts no block")
            << "a\n<C><B>\nb" << QStringList{"left: a|b"};
        QTest::newRow("format is carried over lines")
            << "a<B:>b\n\nc<:B>d\ne" << QStringList{"left: ab||cd|e formats 0001||0100|00"};
        QTest::newRow("format is carried over other alignments")
            << "a<U:>b\n<C>c" << QStringList{"left: ab formats 0008", "center: c formats 08"};
        QTest::newRow("font is carried over lines")
            << "a<F2>b\n\nc\n<F1>d" << QStringList{"left: ab||c|d fonts 0001||01|00"};
        QTest::newRow("whole-line format is not carried")
            << "<B>a\nb" << QStringList{"left: a|b formats 01|00"};
        QTest::newRow("spacing is each line's own")
            << "<LS2>a\nb" << QStringList{"left: a|b spacing 2"};
        QTest::newRow("blanks are text") << "  \na" << QStringList{"left:   |a"};
    }
    void blocksAreMade()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, blocks);
        m_formatter->setTemplate(text);
        QCOMPARE(shown(m_formatter->toTextPrinterDocument(document())), blocks);
        QCOMPARE(shown(m_formatter->plainTextToTextPrinterDocument(text)), blocks);
    }

    void valuesMayHoldMarkup()
    {
        m_formatter->setTemplate("a<NAME>b");
        QCOMPARE(shown(m_formatter->toTextPrinterDocument(document({{"NAME", "<U:>x<:U>"}}))),
                 QStringList{"left: axb formats 000800"});
    }

    void shortCodesReachTheMarkupAndLongOnesAreAttributes()
    {
        m_formatter->setTemplate("<123><#12>|<1234><#123>");
        QCOMPARE(shown(m_formatter->toTextPrinterDocument(document())),
                 QStringList{QString("left: {%1|1234.00 formats 40").arg(QChar(12)) +
                             QString("00").repeated(9)});
        QCOMPARE(shown(m_formatter->plainTextToTextPrinterDocument("<1234><#123>")),
                 QStringList{QString("left: %1{ formats 4000").arg(QChar(1234 & 255))});
    }

    void qrCodes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("blocks");
        const auto qr = [](const QByteArray &data) {
            return "qr center: " + QString::fromLatin1(data.toBase64());
        };
        QTest::newRow("text in front") << "text<QR>data" << QStringList{"left: text", qr("data")};
        QTest::newRow("alone") << "<QR>data" << QStringList{qr("data")};
        QTest::newRow("blanks in front are no text") << "  \t<QR>data" << QStringList{qr("data")};
        QTest::newRow("blanks around the text in front stay")
            << "  ab  <QR>x" << QStringList{"left:   ab  ", qr("x")};
        QTest::newRow("blanks around the data go") << "<QR>  da ta \t" << QStringList{qr("da ta")};
        QTest::newRow("data in UTF-8") << "<QR>Чек №1" << QStringList{qr("Чек №1")};
        QTest::newRow("no data") << "a<QR>" << QStringList{"left: a", "qr center: "};
        QTest::newRow("blank data") << "<QR>  " << QStringList{"qr center: "};
        QTest::newRow("second tag is data")
            << "a<QR>b<QR>c" << QStringList{"left: a", qr("b<QR>c")};
        QTest::newRow("markup in the data is data")
            << "<QR>[a]<B><65>" << QStringList{qr("[a]<B><65>")};
        QTest::newRow("nothing but tags in front") << "<B><C><QR>x" << QStringList{qr("x")};
        QTest::newRow("markup in front")
            << "<R><B>a<QR>x" << QStringList{"right: a formats 01", qr("x")};
        QTest::newRow("text in front merges with the lines before")
            << "a\nb<QR>x\nc" << QStringList{"left: a|b", qr("x"), "left: c"};
        QTest::newRow("codes don't merge") << "<QR>x\n<QR>y" << QStringList{qr("x"), qr("y")};
        QTest::newRow("centred text doesn't merge with a code")
            << "<C>a\n<QR>x\n<C>b" << QStringList{"center: a", qr("x"), "center: b"};
        QTest::newRow("empty line behind takes the text's alignment, not the code's")
            << "<R>a<QR>x\n"
            << QStringList{"right: a", qr("x"), "right: "};
        QTest::newRow("empty line behind a code alone takes the last text's alignment")
            << "a\n<QR>x\n"
            << QStringList{"left: a", qr("x"), "left: "};
        QTest::newRow("format of the text in front is carried on")
            << "<B:>a<QR>x\nb" << QStringList{"left: a formats 01", qr("x"), "left: b formats 01"};
        QTest::newRow("font of the text in front is carried on")
            << "<F2>a<QR>x\nb" << QStringList{"left: a fonts 01", qr("x"), "left: b fonts 01"};
        QTest::newRow("format of tags alone in front is carried on")
            << "<B:><QR>x\nb" << QStringList{qr("x"), "left: b formats 01"};
        QTest::newRow("lower case is text") << "a<qr>b" << QStringList{"left: a<qr>b"};
        QTest::newRow("data from an attribute") << "<QR><LINK>" << QStringList{qr("t=1&s=2")};
        QTest::newRow("tag from an attribute") << "a<CODE>b" << QStringList{"left: a", qr("xb")};
        QTest::newRow("in a marked part") << "a<X:><QR>b<:X>c" << QStringList{"left: ac"};
        QTest::newRow("on a marked line") << "a<X><QR>b" << QStringList{"left: "};
    }
    void qrCodes()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, blocks);
        m_formatter->setTemplate(text);
        const PrinterDocument sale = document({{"LINK", "t=1&s=2"}, {"CODE", "<QR>x"}});
        QCOMPARE(shown(m_formatter->toTextPrinterDocument(sale)), blocks);
    }

    void qrPayloadReadsBack()
    {
        m_formatter->setTemplate("<QR>Чек");
        const QList<DocumentBlock> blocks = m_formatter->toTextPrinterDocument(document()).blocks();
        QCOMPARE(blocks.size(), 1);
        QCOMPARE(blocks.first().qrCode(), QByteArray("Чек"));
    }

    // ---- case folding ----

    void caseIsFoldedByTheCharactersMode_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("folded");
        QTest::newRow("as written") << 0 << "aB чЕк";
        QTest::newRow("upper") << 1 << "AB ЧЕК";
        QTest::newRow("lower") << 2 << "ab чек";
    }
    void caseIsFoldedByTheCharactersMode()
    {
        QFETCH(int, mode);
        QFETCH(QString, folded);
        const QString text = "aB <U:>чЕк";
        m_formatter->setTemplate(text);
        setCharactersMode(mode);
        const QStringList lines{folded};
        QCOMPARE(m_formatter->toPlainText(document(), 9), lines);
        QCOMPARE(m_formatter->plainTextToFormattedPlainText(text, 9), lines);
        const QStringList blocks{"left: " + folded + " formats 000000080808"};
        QCOMPARE(shown(m_formatter->toTextPrinterDocument(document())), blocks);
        QCOMPARE(shown(m_formatter->plainTextToTextPrinterDocument(text)), blocks);
        const QStringList rows{
            cellOf(folded.left(3) + "</font><font size = 1><u>" + folded.mid(3) + "</u>")};
        QCOMPARE(m_formatter->toHtml(document(), false), html(fragmentHead, rows, fragmentTail));
        QCOMPARE(m_formatter->toHtmlDocument(document(), false),
                 html(documentHead, rows, documentTail));
        QCOMPARE(m_formatter->plainTextToHtml(text, false),
                 html(plainFragmentHead, rows, fragmentTail));
        QCOMPARE(m_formatter->plainTextToHtmlDocument(text, false),
                 html(documentHead, rows, documentTail));
    }

    void caseStaysWithoutSettings()
    {
        setCharactersMode(1);
        IPrintDeviceSettings::setPrintDeviceSettings({});
        m_formatter->setTemplate("aB");
        QCOMPARE(m_formatter->toPlainText(document(), 9), QStringList{"aB"});
        QCOMPARE(shown(m_formatter->toTextPrinterDocument(document())), QStringList{"left: aB"});
        QCOMPARE(m_formatter->toHtml(document(), false),
                 html(fragmentHead, {cellOf("aB")}, fragmentTail));
    }

    void preparedLinesAreNotFolded()
    {
        setCharactersMode(1);
        m_formatter->setTemplate("aB <NAME>");
        QCOMPARE(m_formatter->prepareDocument(document({{"NAME", "x"}})), QStringList{"aB x"});
    }

    // Clients depend on the untouched text in front of a code and on the folded payload.
    void textInFrontOfACodeKeepsItsCaseAndThePayloadIsFolded_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QStringList>("blocks");
        QTest::newRow("as written")
            << 0 << QStringList{"left: Before|Text", "qr center: YWJj", "left: After"};
        QTest::newRow("upper") << 1
                               << QStringList{"left: BEFORE|Text", "qr center: YWJJ",
                                              "left: AFTER"};
        QTest::newRow("lower") << 2
                               << QStringList{"left: before|Text", "qr center: ywjj",
                                              "left: after"};
    }
    void textInFrontOfACodeKeepsItsCaseAndThePayloadIsFolded()
    {
        QFETCH(int, mode);
        QFETCH(QStringList, blocks);
        setCharactersMode(mode);
        m_formatter->setTemplate("Before\nText<QR>abc\nAfter");
        QCOMPARE(shown(m_formatter->toTextPrinterDocument(document())), blocks);
    }

    void tagsAreReadBeforeTheCaseIsFolded()
    {
        setCharactersMode(1);
        QCOMPARE(shown(m_formatter->plainTextToTextPrinterDocument("<b>x<c>")),
                 QStringList{"left: <B>X<C>"});
    }

    // ---- text without attributes ----

    void textWithoutAttributesReadsMarkupAlone_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("attribute") << "<ABCD>";
        QTest::newRow("expression") << "<A + B>";
        QTest::newRow("document number") << "<DOCNO>";
        QTest::newRow("entries") << "<ENTRIES>";
        QTest::newRow("special symbols") << "<SPECSYMBOLS=one>";
        QTest::newRow("marked part") << "<X:>a<:X>";
        QTest::newRow("marked line") << "<X>a";
        QTest::newRow("image") << "<I>1 1 a</I>";
        QTest::newRow("QR code") << "a<QR>data";
        QTest::newRow("fiscal marker") << "<FISCAL_BODY>";
        QTest::newRow("carriage return stays") << "a\r";
    }
    void textWithoutAttributesReadsMarkupAlone()
    {
        QFETCH(QString, text);
        m_formatter->setSpecCharsPath(symbolFolder());
        m_formatter->setTemplate("template");
        QCOMPARE(m_formatter->plainTextToFormattedPlainText(text, 0), QStringList{text});
        const TextPrinterDocument made = m_formatter->plainTextToTextPrinterDocument(text);
        QCOMPARE(shown(made), QStringList{"left: " + text});
        QVERIFY(made.charImages().isEmpty());
        QCOMPARE(m_formatter->plainTextToHtml(text, false),
                 html(plainFragmentHead, {cellOf(text)}, fragmentTail));
    }

    void textWithoutAttributesMakesAFullDocument()
    {
        TextPrinterDocument told;
        told.setBlocks({DocumentBlock::emptyBlock(1, AlignLeft, 0)});
        told.setCurrentTicketAction(QFlags<EPrinterTicketAction>(QFlag(9)));
        QVERIFY(m_formatter->plainTextToTextPrinterDocument("") == told);
        QCOMPARE(m_formatter->plainTextToFormattedPlainText("", 3), QStringList{"   "});
    }

    // ---- from call to call ----

    void nothingIsCarriedFromOneCallToTheNext()
    {
        const QString text = "\na<B:><F2>\n<R>b<F3>c<U:>";
        m_formatter->setTemplate(text);
        const QStringList blocks{"left: |a", "right: bc formats 0101 fonts 0002"};
        const QStringList plain{"    ", "a", "  bc"};
        const QStringList rows{
            "<br>", cellOf("a"),
            R"(<tr><td colspan="2" align = "right"> <font size = 1><b>b</b></font>)"
            R"(<font size = 3><b>c</b></font> </td></tr>)"};
        for (int run = 0; run < 2; ++run) {
            QCOMPARE(m_formatter->toPlainText(document(), 4), plain);
            QCOMPARE(m_formatter->plainTextToFormattedPlainText(text, 4), plain);
            QCOMPARE(shown(m_formatter->toTextPrinterDocument(document())), blocks);
            QCOMPARE(shown(m_formatter->plainTextToTextPrinterDocument(text)), blocks);
            QCOMPARE(m_formatter->toHtml(document(), false),
                     html(fragmentHead, rows, fragmentTail));
            QCOMPARE(m_formatter->plainTextToHtmlDocument(text, false),
                     html(documentHead, rows, documentTail));
        }
    }

    void formattersDoNotShareTheirSymbols()
    {
        m_formatter->setSpecCharsPath(symbolFolder());
        m_formatter->setTemplate("<SPECSYMBOLS=one>");
        QCOMPARE(loadedCodes(), QList<signed char>{1});
        const PrinterDocumentFormatter other(0, nullptr);
        QVERIFY(other.toTextPrinterDocument(document()).charImages().isEmpty());
    }

    // ---- great templates ----

    void templateOfManyLinesComesToAnEnd()
    {
        m_formatter->setTemplate(manyLines("Line <NUMB>\n<ABCD>\n\n<I>1 1 a</I>\n<X>z", 20000));
        const PrinterDocument sale = document({{"NUMB", 7}});
        const QStringList prepared = m_formatter->prepareDocument(sale);
        QCOMPARE(prepared.size(), 60000);
        QCOMPARE(prepared.mid(59997), (QStringList{"Line 7", "", ""}));
        QCOMPARE(m_formatter->toPlainText(sale, 4).size(), 60000);
        QCOMPARE(m_formatter->toHtml(sale, true).count('\n'), 60001);
        const QList<DocumentBlock> blocks = m_formatter->toTextPrinterDocument(sale).blocks();
        QCOMPARE(blocks.size(), 1);
        QCOMPARE(blocks.first().text(), prepared);
    }

    void manyLinesOfOneKindComeToAnEnd_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("lines");
        QTest::newRow("vanishing lines") << manyLines("<ABCD>", 100000) << 1;
        QTest::newRow("images") << manyLines("<I>1 1 a</I>", 100000) << 0;
        QTest::newRow("special symbol lines") << manyLines("<SPECSYMBOLS=none>", 100000) << 1;
        QTest::newRow("marked parts") << manyLines("<X:>a<:X>", 100000) << 100000;
        QTest::newRow("marked parts over line ends") << manyLines("<X:>a\n<:X>", 100000) << 100000;
        QTest::newRow("marked parts without end") << manyLines("<X:>a", 100000) << 100000;
        QTest::newRow("entries on every line") << manyLines("<ENTRIES>", 100000) << 200000;
        QTest::newRow("entries on one line") << QString("<ENTRIES>").repeated(10000) << 10001;
        QTest::newRow("images on one line") << QString("<I>1 1 a</I>").repeated(50000) << 0;
        QTest::newRow("image starts on one line") << QString("<I>").repeated(200000) << 1;
        QTest::newRow("line tags on one line") << QString("<X>").repeated(200000) << 1;
    }
    void manyLinesOfOneKindComeToAnEnd()
    {
        QFETCH(QString, text);
        QFETCH(int, lines);
        m_formatter->setSpecCharsPath(m_folder.path());
        m_formatter->setTemplate(text);
        QCOMPARE(m_formatter->prepareDocument(document({}, "a=1\tb=2")).size(), lines);
    }

    void entriesOnOneLineKeepTheirOrder()
    {
        QStringList lines{QString("<ENTRIES>").repeated(3000)};
        m_formatter->unpackEntries(lines, document({}, "a\tb"));
        QCOMPARE(lines.size(), 3001);
        QCOMPARE(lines.first(), QString("a"));
        QCOMPARE(lines.last(), QString("b"));
        QCOMPARE(lines.count("ba"), 2999);
    }

    void manyCodesComeToAnEnd()
    {
        m_formatter->setTemplate(manyLines("a<QR>b", 50000));
        QCOMPARE(m_formatter->toTextPrinterDocument(document()).blocks().size(), 100000);
    }

private:
    QList<signed char> loadedCodes()
    {
        return m_formatter->toTextPrinterDocument(document()).charImages().keys();
    }

    /// Folder with "one.ssi", which draws the code 1, and "two.ssi", which draws the code 2.
    QString symbolFolder()
    {
        writeFile(m_folder.filePath("symbols/one.ssi"), symbolFile(1));
        writeFile(m_folder.filePath("symbols/two.ssi"), symbolFile(2));
        return m_folder.filePath("symbols");
    }

    QTemporaryDir m_folder;
    std::unique_ptr<PrinterDocumentFormatter> m_formatter;
};

QTEST_GUILESS_MAIN(TestPipeline)
#include "tst_pipeline.moc"
