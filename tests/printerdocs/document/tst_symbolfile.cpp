#include <QTemporaryDir>
#include <QTextCodec>
#include <QXmlStreamReader>
#include <QtTest>
#include <memory>

#include "logcatcher.h"
#include "printerdocs/specialcharacters.h"
#include "symbolfiles.h"

using namespace symbolfiles;

/// Files of symbols: what loads, what is refused, what is logged.
class TestSymbolFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void goodFileLoadsAndLogsNothing()
    {
        const QString name = write(
            file(font(8, 8, symbol(1, 8, 8) + symbol(2, 8, 8)) + font(16, 16, symbol(1, 16, 16))) +
            "<!-- the end -->\n\n");
        SpecialCharacters table;
        const LogCatcher log;
        QCOMPARE(table.load(name), true);
        QCOMPARE(log.lines(), QStringList());
        QCOMPARE(table.size(), 3);
        QVERIFY(table.values(1).at(0) == filled(16, 16));
        QVERIFY(table.values(1).at(1) == filled(8, 8));
        QVERIFY(table.values(2) == QList<MonochromeImage>{filled(8, 8)});
        QVERIFY(table.fileName().isNull());
    }

    void fileWithoutSymbolsLoads_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("empty root") << QByteArray("<SpecialSymbolImages/>");
        QTest::newRow("root with blanks") << file("");
        QTest::newRow("empty font") << file(font(8, 8, ""));
        QTest::newRow("symbol of no lines in a font without height")
            << file("<Font Width=\"8\"><Symbol Code=\"1\"/></Font>");
    }

    void fileWithoutSymbolsLoads()
    {
        QFETCH(QByteArray, content);
        const QString name = write(content);
        SpecialCharacters table = tableOf(1, filled(8, 8));
        const LogCatcher log;
        QCOMPARE(table.load(name), true);
        QVERIFY(table.isEmpty());
        QCOMPARE(log.lines(), QStringList());
    }

    void fileThatCannotBeOpenedIsCritical()
    {
        SpecialCharacters table = tableOf(1, filled(8, 8));
        const LogCatcher log;
        QCOMPARE(table.load(m_folder.filePath("missing.ssi")), false);
        QVERIFY(table.isEmpty());
        const int openError = QFileDevice::OpenError;
        QCOMPARE(log.lines(),
                 QStringList(
                     QString("default critical %1 \"No such file or directory\"").arg(openError)));
    }

    void folderAndEmptyNameCannotBeOpened()
    {
        SpecialCharacters table;
        const LogCatcher log;
        QCOMPARE(table.load(m_folder.path()), false);
        QCOMPARE(table.load(QString()), false);
        // Qt adds a warning of its own about the empty name.
        QCOMPARE(log.lines("default critical ").size(), 2);
    }

    void otherRootIsNoSymbolFile()
    {
        const QString name = write("<Images>" + font(8, 1, symbol(1, 8, 1)) + "</Images>");
        SpecialCharacters table = tableOf(1, filled(8, 8));
        const LogCatcher log;
        QCOMPARE(table.load(name), false);
        QVERIFY(table.isEmpty());
        QCOMPARE(log.lines(), QStringList());
    }

    void unknownElementsAreSkipped()
    {
        const QString name = write(file("<Note><Font><Symbol/></Font></Note>" +
                                        font(8, 1,
                                             "<Note>" + symbol(5, 8, 9) + "</Note>" +
                                                 "<Symbol Code=\"1\"><Note><Line>1</Line></Note>"
                                                 "<Line>11111111</Line><Note/></Symbol>")));
        SpecialCharacters table;
        const LogCatcher log;
        QCOMPARE(table.load(name), true);
        QVERIFY(table == tableOf(1, filled(8, 1)));
        QCOMPARE(log.lines(), QStringList());
    }

    void missingAttributesCountAsZero()
    {
        SpecialCharacters table;
        QCOMPARE(table.load(write(file("<Font Width=\"1\" Height=\"1\"><Symbol>"
                                       "<Line>1</Line></Symbol></Font>"))),
                 true);
        QVERIFY(table == tableOf(0, filled(1, 1)));
        QCOMPARE(table.load(write(file("<Font Height=\"1\"><Symbol Code=\"1\">"
                                       "<Line>1</Line></Symbol></Font>"))),
                 false);
        QCOMPARE(table.load(write(file("<Font Height=\"1\"><Symbol Code=\"1\">"
                                       "<Line></Line></Symbol></Font>"))),
                 true);
        QVERIFY(table.isEmpty());
    }

    void wrongSymbolEndsTheLoading_data()
    {
        QTest::addColumn<QByteArray>("wrong");
        QTest::newRow("line too short")
            << QByteArray("<Symbol Code=\"2\"><Line>111</Line></Symbol>");
        QTest::newRow("line too long")
            << QByteArray("<Symbol Code=\"2\"><Line>11111</Line></Symbol>");
        QTest::newRow("white space counts")
            << QByteArray("<Symbol Code=\"2\"><Line> 1111</Line></Symbol>");
        QTest::newRow("no line") << QByteArray("<Symbol Code=\"2\"/>");
        QTest::newRow("a line too many")
            << QByteArray("<Symbol Code=\"2\"><Line>1111</Line><Line>1111</Line></Symbol>");
    }

    void wrongSymbolEndsTheLoading()
    {
        QFETCH(QByteArray, wrong);
        const QString name = write(file(font(4, 1, symbol(1, 4, 1) + wrong + symbol(3, 4, 1))));
        SpecialCharacters table;
        const LogCatcher log;
        QCOMPARE(table.load(name), false);
        QVERIFY(table == tableOf(1, filled(4, 1)));
        QCOMPARE(log.lines(), QStringList());
    }

    void wildSizesAreWrongSymbols()
    {
        SpecialCharacters table;
        for (const int size : {2000000000, maximum, minimum, -1}) {
            QCOMPARE(table.load(write(file(font(size, 1, symbol(1, 4, 1))))), false);
            QCOMPARE(table.load(write(file(font(4, size, symbol(1, 4, 1))))), false);
        }
        QCOMPARE(table.load(write(file("<Font Width=\"99999999999\" Height=\"x\"><Symbol "
                                       "Code=\"x\"><Line>1</Line></Symbol></Font>"))),
                 false);
        QVERIFY(table.isEmpty());
    }

    void syntaxErrorBetweenSymbolsKeepsWhatWasRead()
    {
        const QString name = write("<SpecialSymbolImages>\n<Font Width=\"4\" Height=\"1\">\n" +
                                   symbol(1, 4, 1) + "</Wrong>");
        SpecialCharacters table;
        const LogCatcher log;
        QCOMPARE(table.load(name), true);
        QVERIFY(table == tableOf(1, filled(4, 1)));
        QCOMPARE(log.lines().size(), 1);
        QCOMPARE(log.lines("default critical ").size(), 1);
        const int syntaxError = QXmlStreamReader::NotWellFormedError;
        QVERIFY(log.lines().first().startsWith("default critical " + QString::number(syntaxError) +
                                               " \""));
        // The symbol takes the lines 3 to 5; the wrong tag ends at column 8 of line 6.
        QVERIFY(log.lines().first().endsWith("\" 6 8"));
    }

    void syntaxErrorInAnUnfinishedSymbolFails()
    {
        const QString name =
            write("<SpecialSymbolImages><Font Width=\"4\" Height=\"2\">" + symbol(1, 4, 2) +
                  "<Symbol Code=\"2\"><Line>1111</Line></Wrong>");
        SpecialCharacters table;
        const LogCatcher log;
        QCOMPARE(table.load(name), false);
        QVERIFY(table == tableOf(1, filled(4, 2)));
        QCOMPARE(log.lines().size(), 1);
        QCOMPARE(log.lines("default critical ").size(), 1);
    }

    void syntaxErrorBehindTheLastLineOfASymbolKeepsIt()
    {
        const QString name = write(
            "<SpecialSymbolImages><Font Width=\"4\" Height=\"1\">"
            "<Symbol Code=\"1\"><Line>1111</Line></Wrong>");
        SpecialCharacters table;
        const LogCatcher log;
        QCOMPARE(table.load(name), true);
        QVERIFY(table == tableOf(1, filled(4, 1)));
        QCOMPARE(log.lines().size(), 1);
    }

    void fileThatEndsEarlyOrIsNoXmlIsLogged_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("empty file") << QByteArray();
        QTest::newRow("no XML") << QByteArray("width 8 height 8");
        QTest::newRow("cut behind the root's start") << QByteArray("<SpecialSymbolImages>");
        QTest::newRow("zero bytes") << QByteArray(64, '\0');
        QTest::newRow("text behind the root") << QByteArray("<SpecialSymbolImages/>x");
        QTest::newRow("second root") << QByteArray("<SpecialSymbolImages/><SpecialSymbolImages/>");
    }

    void fileThatEndsEarlyOrIsNoXmlIsLogged()
    {
        QFETCH(QByteArray, content);
        const QString name = write(content);
        SpecialCharacters table;
        const LogCatcher log;
        QCOMPARE(table.load(name), true);
        QVERIFY(table.isEmpty());
        QCOMPARE(log.lines().size(), 1);
        QCOMPARE(log.lines("default critical ").size(), 1);
    }

    /// What would make Qt's reader take time and memory out of proportion.
    void fileOutOfBoundsIsRefused_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QByteArray>("reason");
        const QByteArray good = font(1, 1, symbol(1, 1, 1));
        const auto root = [&](const QByteArray &content) {
            return "<SpecialSymbolImages>" + good + content + "</SpecialSymbolImages>";
        };
        const auto utf16 = [](const QString &text) {
            return QByteArray(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);
        };
        const auto typed = [&](const QByteArray &type) {
            return "<!DOCTYPE a " + type + ">" + root("");
        };
        const QByteArray entities = "a document type declaration with entities";
        QTest::newRow("entity") << typed("[<!ENTITY e \"x\">]") << entities;
        QTest::newRow("entity of a parameter") << typed("[<!ENTITY % e \"x\">]") << entities;
        QTest::newRow("entity behind other declarations")
            << typed(
                   "SYSTEM \"]>\" [<!-- ]> --><!ELEMENT a ANY><?b ]>?><!NOTATION c SYSTEM \"<!--\">"
                   "<!ENTITY e \"x\">]")
            << entities;
        QTest::newRow("list of attributes")
            << typed("[<!ATTLIST Font Width CDATA \"8\">]") << entities;
        QTest::newRow("entity, declaration cut off")
            << QByteArray("<!DOCTYPE a [<!ENTITY e \"x\">") << entities;
        QByteArray attributes;
        for (int i = 0; i < 100000; ++i)
            attributes += " a" + QByteArray::number(i) + "=''";
        const QByteArray tags = "start tags of more than 1024 characters";
        QTest::newRow("100,000 attributes") << root("<a" + attributes + "/>") << tags;
        QTest::newRow("100,000 attributes, cut off") << "<SpecialSymbolImages" + attributes << tags;
        QTest::newRow("brackets in values")
            << root("<a" + QByteArray(" b='>'").repeated(200) + "/>") << tags;
        QTest::newRow("deep elements") << root(QByteArray("<a>").repeated(400)) << tags;
        QTest::newRow("deep name spaces")
            << root(QByteArray("<a xmlns:b=\"c\">").repeated(70)) << tags;
        QTest::newRow("behind a comment that looks open")
            << root("<![CDATA[<!--]]><a" + QByteArray(" b='>'").repeated(200) + "/>") << tags;
        for (const char *codec :
             {"UTF-16", "UTF-16BE", "UTF-16LE", "UTF-32BE", "UTF-32LE", "UTF-32"}) {
            QTest::newRow(codec) << QTextCodec::codecForName(codec)->fromUnicode(
                                        QString(typed("[<!ENTITY e \"x\">]")))
                                 << entities;
        }
        const QByteArray otherEncoding = "an XML declaration in another encoding than it names";
        const QByteArray declaration = "<?xml version=\"1.0\" encoding=\"IBM037\"?>";
        QTest::newRow("EBCDIC") << declaration + QTextCodec::codecForName("IBM037")->fromUnicode(
                                                     QString(typed("[<!ENTITY e \"x\">]")))
                                << otherEncoding;
        // 39 characters, of which UTF-16 makes 20 and a comment; the reader goes on behind it.
        const QByteArray hidden =
            "<?xml version=\"1.0\" encoding=\"UTF-16\"?> " +
            utf16(QStringLiteral("<!--").leftJustified(39 - 20, QLatin1Char('x')) +
                  QString(root("<a" + QByteArray(" b='>'").repeated(200) + "/>")));
        QTest::newRow("tags hidden by a change of the encoding") << hidden << otherEncoding;
        QTest::newRow("long declaration")
            << QByteArray(declaration).replace(" encoding", QByteArray(5000, ' ') + "encoding")
            << QByteArray("an XML declaration of more than");
        QTest::newRow("more than 16 MiB") << root(QByteArray(16 << 20, ' '))
                                          << QByteArray("the file has more than 16777216 bytes");
    }

    void fileOutOfBoundsIsRefused()
    {
        QFETCH(QByteArray, content);
        QFETCH(QByteArray, reason);
        SpecialCharacters table = tableOf(7, filled(8, 8));
        const QString name = write(content);
        const LogCatcher log;
        QCOMPARE(table.load(name), false);
        QVERIFY(table.isEmpty());
        QCOMPARE(log.lines().size(), 1);
        QCOMPARE(log.lines("default critical ").size(), 1);
        QVERIFY2(log.lines().first().contains(name), qPrintable(log.lines().first()));
        QVERIFY2(log.lines().first().contains(reason), qPrintable(log.lines().first()));
    }

    void fileWithinBoundsIsRead_data()
    {
        QTest::addColumn<QByteArray>("content");
        const QByteArray good = font(1, 1, symbol(1, 1, 1));
        const QByteArray root = "<SpecialSymbolImages>" + good + "</SpecialSymbolImages>";
        QTest::newRow("document type") << "<!DOCTYPE SpecialSymbolImages SYSTEM \"a.dtd\">" + root;
        QTest::newRow("document type with elements")
            << "<!DOCTYPE a [<!ELEMENT a ANY><!-- <!ENTITY --><!NOTATION n SYSTEM \"x\">]>" + root;
        QTest::newRow("comment of a document type")
            << "<!-- <!DOCTYPE a [<!ENTITY e \"x\">]> -->" + root;
        QTest::newRow("long comment") << "<!--" + QByteArray(5000, '<') + "-->" + root;
        QTest::newRow("long instruction") << "<?a " + QByteArray(5000, 'b') + "?>" + root;
        QTest::newRow("many elements side by side")
            << "<SpecialSymbolImages>" + QByteArray("<a b=\"c\"/><a></a>").repeated(1000) + good +
                   "</SpecialSymbolImages>";
        // 21 characters of the root, and 4 of what closes the tag.
        QTest::newRow("as many characters as may be open")
            << "<SpecialSymbolImages><" + QByteArray(1024 - 21 - 3, 'a') + "/>" + good +
                   "</SpecialSymbolImages>";
        QTest::newRow("usual entities")
            << "<SpecialSymbolImages>" +
                   font(3, 1, "<Symbol Code=\"1\"><Line>&lt;&amp;&#49;</Line></Symbol>") +
                   "</SpecialSymbolImages>";
        QTest::newRow("just 16 MiB") << root + QByteArray((16 << 20) - root.size(), ' ');
        for (const char *codec : {"UTF-16", "UTF-16BE", "UTF-16LE", "UTF-32BE", "UTF-32LE"})
            QTest::newRow(codec) << QTextCodec::codecForName(codec)->fromUnicode(QString(root));
        for (const char *codec : {"UTF-8", "UTF-16", "UTF-32"}) {
            const QString declared =
                QStringLiteral("\xFEFF<?xml version=\"1.0\" encoding=\"%1\"?>");
            const std::unique_ptr<QTextEncoder> encoder(
                QTextCodec::codecForName(codec)->makeEncoder(QTextCodec::IgnoreHeader));
            QTest::newRow(qPrintable(QStringLiteral("named %1").arg(codec)))
                << encoder->fromUnicode(declared.arg(codec) + QString(root));
        }
        QTest::newRow("windows-1251")
            << "<?xml version=\"1.0\" encoding=\"windows-1251\"?><!-- \xE0 -->" + root;
    }

    void fileWithinBoundsIsRead()
    {
        QFETCH(QByteArray, content);
        SpecialCharacters table;
        const LogCatcher log;
        QCOMPARE(table.load(write(content)), true);
        QCOMPARE(log.lines(), QStringList());
        QCOMPARE(table.values(1).size(), 1);
    }

    void fileThatIsShorterThanItsSizeEndsTheLoading_data()
    {
        QTest::addColumn<QString>("source");
        // The kernel says of both that they have 4096 bytes; lo has neither an alias nor a speed.
        QTest::newRow("no bytes") << "/sys/class/net/lo/ifalias";
        QTest::newRow("read error") << "/sys/class/net/lo/speed";
    }

    void fileThatIsShorterThanItsSizeEndsTheLoading()
    {
        QFETCH(QString, source);
        QFile kernelFile(source);
        if (!kernelFile.open(QIODevice::ReadOnly) || kernelFile.size() == 0 ||
            !kernelFile.readAll().isEmpty())
            QSKIP("this kernel has no such file");
        const QString name = m_folder.filePath("linked.ssi");
        QFile::remove(name);
        QVERIFY(QFile::link(source, name));
        SpecialCharacters table = tableOf(1, filled(8, 8));
        const LogCatcher log;
        QCOMPARE(table.load(name), true);
        QVERIFY(table.isEmpty());
        QCOMPARE(log.lines().size(), 1);
        QCOMPARE(log.lines("default critical ").size(), 1);
        const int endedEarly = QXmlStreamReader::PrematureEndOfDocumentError;
        QVERIFY(log.lines().first().startsWith("default critical " + QString::number(endedEarly) +
                                               " \""));
    }

    void fileThatEndsInsideASymbolFails_data()
    {
        QTest::addColumn<QByteArray>("last");
        QTest::newRow("in the digits of a line") << QByteArray("<Line>1111</Line><Line>11");
        QTest::newRow("behind the last digit") << QByteArray("<Line>1111</Line><Line>1111");
        QTest::newRow("in the tag of a line") << QByteArray("<Line>1111</Line><Li");
        QTest::newRow("between the lines") << QByteArray("<Line>1111</Line>");
        QTest::newRow("in the digits of an early line") << QByteArray("<Line>1111");
    }

    void fileThatEndsInsideASymbolFails()
    {
        QFETCH(QByteArray, last);
        const QString name = write("<SpecialSymbolImages><Font Width=\"4\" Height=\"2\">" +
                                   symbol(1, 4, 2) + "<Symbol Code=\"2\">" + last);
        SpecialCharacters table;
        const LogCatcher log;
        QCOMPARE(table.load(name), false);
        QVERIFY(table == tableOf(1, filled(4, 2)));
        QCOMPARE(log.lines().size(), 1);
        QCOMPARE(log.lines("default critical ").size(), 1);
        const int endedEarly = QXmlStreamReader::PrematureEndOfDocumentError;
        QVERIFY(log.lines().first().startsWith("default critical " + QString::number(endedEarly) +
                                               " \""));
    }

    // The text of a line is complete as soon as its end tag begins.
    void fileThatEndsBehindTheLastLineOfASymbolKeepsIt()
    {
        SpecialCharacters table;
        for (const char *endTag : {"</Line>", "</Line", "</"}) {
            const QString name = write(
                "<SpecialSymbolImages><Font Width=\"4\" Height=\"2\">"
                "<Symbol Code=\"1\"><Line>1111</Line><Line>1111" +
                QByteArray(endTag));
            const LogCatcher log;
            QCOMPARE(table.load(name), true);
            QVERIFY(table == tableOf(1, filled(4, 2)));
            QCOMPARE(log.lines().size(), 1);
        }
    }

    void wrongSymbolKeepsLaterFontsFromBeingRead()
    {
        QXmlStreamReader reader(
            file(font(4, 1, symbol(1, 4, 1) + symbol(2, 3, 1)) + font(8, 1, symbol(3, 8, 1))));
        QVERIFY(reader.readNextStartElement());
        SpecialCharacters table;
        QCOMPARE(table.parseImages(&reader), false);
        QVERIFY(table == tableOf(1, filled(4, 1)));
    }

    void elementInsideALineIsAnError()
    {
        SpecialCharacters table;
        const LogCatcher log;
        QCOMPARE(table.load(write(file(font(1, 1,
                                            "<Symbol Code=\"1\"><Line><b>1</b></Line>"
                                            "</Symbol>")))),
                 false);
        QCOMPARE(log.lines().size(), 1);
    }

    void everyCharacterButZeroSetsAPixel_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<int>("width");
        QTest::addColumn<QByteArray>("data");
        QTest::newRow("ones and zeros") << "1010" << 4 << QByteArray("\xa0", 1);
        QTest::newRow("any character") << "x0x0" << 4 << QByteArray("\xa0", 1);
        QTest::newRow("blank is set") << " 0О0" << 4 << QByteArray("\xa0", 1);
        QTest::newRow("nine pixels") << "101010101" << 9 << QByteArray("\xaa\x80", 2);
        QTest::newRow("eight pixels") << "00000001" << 8 << QByteArray("\x01", 1);
        QTest::newRow("sixteen pixels") << "0000000110000000" << 16 << QByteArray("\x01\x80", 2);
        QTest::newRow("only the width counts") << "11111111" << 3 << QByteArray("\xe0", 1);
        QTest::newRow("one pixel") << "0" << 1 << QByteArray("\x00", 1);
    }

    void everyCharacterButZeroSetsAPixel()
    {
        QFETCH(QString, line);
        QFETCH(int, width);
        QByteArray data("old content");
        QVERIFY(SpecialCharacters().strToData(line, width, data));
        QTEST(data, "data");
    }

    void lineShorterThanTheWidthIsRefused()
    {
        SpecialCharacters table;
        QByteArray data("old");
        for (const int width : {0, -1, 4, maximum, minimum})
            QCOMPARE(table.strToData("101", width, data), false);
        QCOMPARE(data, QByteArray("old"));
    }

private:
    QTemporaryDir m_folder;
    QString write(const QByteArray &content) const
    {
        return symbolfiles::writeTo(m_folder, content);
    }
};

QTEST_GUILESS_MAIN(TestSymbolFile)
#include "tst_symbolfile.moc"
