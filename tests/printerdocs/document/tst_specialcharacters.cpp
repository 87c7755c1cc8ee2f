#include <QTemporaryDir>
#include <QTextCodec>
#include <QXmlStreamReader>
#include <QtTest>
#include <limits>
#include <memory>

#include "logcatcher.h"
#include "printerdocs/specialcharacters.h"

namespace {

constexpr int maximum = std::numeric_limits<int>::max();
constexpr int minimum = std::numeric_limits<int>::min();

QByteArray symbol(int code, int width, int height)
{
    const QByteArray line = "<Line>" + QByteArray(width, '1') + "</Line>\n";
    return "<Symbol Code=\"" + QByteArray::number(code) + "\">\n" + line.repeated(height) +
           "</Symbol>\n";
}

QByteArray font(int width, int height, const QByteArray &symbols)
{
    return "<Font Width=\"" + QByteArray::number(width) + "\" Height=\"" +
           QByteArray::number(height) + "\">\n" + symbols + "</Font>\n";
}

QByteArray file(const QByteArray &fonts)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<SpecialSymbolImages>\n" + fonts +
           "</SpecialSymbolImages>\n";
}

MonochromeImage filled(int width, int height)
{
    MonochromeImage image = MonochromeImage::createEmpty(width, height, 8);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, true, 8);
    }
    return image;
}

SpecialCharacters tableOf(int code, const MonochromeImage &image)
{
    SpecialCharacters table;
    table.insert(static_cast<signed char>(code), image);
    return table;
}

}  // namespace

class TestSpecialCharacters : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;

    QString write(const QByteArray &content)
    {
        const QString name = m_folder.filePath("symbols.ssi");
        QFile output(name);
        if (!output.open(QIODevice::WriteOnly) || output.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(name));
        return name;
    }

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

    void stepsReadTheirElements()
    {
        SpecialCharacters table;
        QXmlStreamReader images(file(font(4, 1, symbol(1, 4, 1))));
        QVERIFY(images.readNextStartElement());
        QCOMPARE(table.parseImages(&images), true);
        QVERIFY(table == tableOf(1, filled(4, 1)));
        QVERIFY(images.isEndElement() && images.name() == QString("SpecialSymbolImages"));

        table.clear();
        QXmlStreamReader fonts(font(4, 1, symbol(2, 4, 1) + "<Note/>"));
        QVERIFY(fonts.readNextStartElement());
        QCOMPARE(table.parseFonts(&fonts), true);
        QVERIFY(table == tableOf(2, filled(4, 1)));
        QVERIFY(fonts.isEndElement() && fonts.name() == QString("Font"));

        table.clear();
        QXmlStreamReader symbols(symbol(3, 4, 2));
        QVERIFY(symbols.readNextStartElement());
        QCOMPARE(table.parseSymbols(&symbols, 4, 2), true);
        QVERIFY(table == tableOf(3, filled(4, 2)));
        QVERIFY(symbols.isEndElement() && symbols.name() == QString("Symbol"));
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

    void imageIsMadeOfItsLines()
    {
        SpecialCharacters table;
        QCOMPARE(table.createImage(3, {"101", "010"}, 3, 2), true);
        QVERIFY(table == tableOf(3, MonochromeImage(3, 2, "\xa0\x40")));
        QVERIFY(table.value(3).fileName().isNull());
    }

    void linesBeyondTheHeightAreConvertedToo()
    {
        SpecialCharacters table;
        QCOMPARE(table.createImage(3, {"101", "010"}, 3, 1), true);
        QVERIFY(table == tableOf(3, MonochromeImage(3, 1, "\xa0\x40")));
        QCOMPARE(table.createImage(3, {"101", "1"}, 3, 1), false);
        QCOMPARE(table.size(), 1);
    }

    void imageOfWrongLinesIsRefused()
    {
        SpecialCharacters table;
        QCOMPARE(table.createImage(3, {"101"}, 3, 0), false);
        QCOMPARE(table.createImage(3, {"101"}, 3, -1), false);
        QCOMPARE(table.createImage(3, {"101"}, 3, 2), false);
        QCOMPARE(table.createImage(3, {"101", "10"}, 3, 2), false);
        QCOMPARE(table.createImage(3, {"101"}, 0, 1), false);
        QCOMPARE(table.createImage(3, {}, 3, 0), false);
        QVERIFY(table.isEmpty());
    }

    void newerImagesStandInFront()
    {
        SpecialCharacters table;
        table.createImage(3, {"1"}, 1, 1);
        table.createImage(3, {"11"}, 2, 1);
        QCOMPARE(table.values(3).at(0).width(), 2);
        QCOMPARE(table.values(3).at(1).width(), 1);
    }

    void stepsRefuseAReaderThatStandsAtNoElement()
    {
        SpecialCharacters table;
        QString line("old");
        QCOMPARE(table.parseImages(nullptr), false);
        QCOMPARE(table.parseFonts(nullptr), false);
        QCOMPARE(table.parseSymbols(nullptr, 1, 1), false);
        QCOMPARE(table.parseLines(nullptr, line), false);
        QXmlStreamReader reader(QString("<Line>101</Line>"));
        QCOMPARE(table.parseImages(&reader), false);
        QCOMPARE(table.parseFonts(&reader), false);
        QCOMPARE(table.parseSymbols(&reader, 1, 1), false);
        QCOMPARE(table.parseLines(&reader, line), false);
        QCOMPARE(line, QString("old"));
        QVERIFY(reader.readNextStartElement());
        QCOMPARE(table.parseLines(&reader, line), true);
        QCOMPARE(line, QString("101"));
    }

    void largestImageThatFitsTheCellIsTaken_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("height");
        QTest::addColumn<int>("found");  // 0: blank
        QTest::newRow("larger cell") << 20 << 20 << 16;
        QTest::newRow("exactly the large one") << 16 << 16 << 16;
        QTest::newRow("one too narrow") << 15 << 16 << 8;
        QTest::newRow("one too low") << 16 << 15 << 8;
        QTest::newRow("between") << 10 << 10 << 8;
        QTest::newRow("smaller cell") << 4 << 4 << 0;
        QTest::newRow("wild cell") << maximum << maximum << 16;
        QTest::newRow("no cell") << 0 << 0 << 0;
        QTest::newRow("negative cell") << minimum << minimum << 0;
    }

    void largestImageThatFitsTheCellIsTaken()
    {
        QFETCH(int, width);
        QFETCH(int, height);
        QFETCH(int, found);
        SpecialCharacters table;
        QVERIFY(
            table.load(write(file(font(16, 16, symbol(3, 16, 16)) + font(8, 8, symbol(3, 8, 8))))));
        const MonochromeImage image = table.getImage(3, width, height);
        QVERIFY(image ==
                (found ? filled(found, found) : MonochromeImage::createEmpty(width, height)));
        QCOMPARE(table.size(), 2);
    }

    void areaDecidesAmongTheFitting()
    {
        SpecialCharacters table = tableOf(1, filled(10, 10));
        table.insert(1, filled(50, 1));
        QVERIFY(table.getImage(1, 60, 60) == filled(10, 10));
    }

    void imageThatIsNotValidIsPassedOver()
    {
        SpecialCharacters table = tableOf(1, filled(8, 8));
        table.insert(1, MonochromeImage(16, 16, "short"));
        table.insert(1, MonochromeImage(-4, -4, "negative"));
        QVERIFY(table.getImage(1, 20, 20) == filled(8, 8));
    }

    void unknownCodeIsABlankImage()
    {
        SpecialCharacters table;
        const MonochromeImage image = table.getImage(5, 12, 2);
        QCOMPARE(image.width(), 12);
        QCOMPARE(image.height(), 2);
        QCOMPARE(image.image(), QByteArray(2, '\0'));
        QVERIFY(table.getImage(5, 16, 2).isValid());
        QVERIFY(!table.getImage(5, maximum, maximum).isValid());
        QVERIFY(!table.getImage(5, minimum, maximum).isValid());
    }

    void codesAreNarrowedToASignedByte()
    {
        SpecialCharacters table;
        QVERIFY(table.load(write(file(font(8, 1, symbol(200, 8, 1))))));
        QVERIFY(table.contains(-56));
        QVERIFY(table.getImage(200, 8, 1) == filled(8, 1));
        QVERIFY(table.getImage(-56, 8, 1) == filled(8, 1));
        QVERIFY(table.getImage(456, 8, 1) == filled(8, 1));
        QVERIFY(table.getImage(100, 8, 1) != filled(8, 1));
    }

    void pictureIsMirroredInGroupsOfEight()
    {
        // Three rows of 10 pixels: leftmost, 8th and 10th pixel set; all set; (not painted).
        SpecialCharacters table =
            tableOf(1, MonochromeImage(10, 3, QByteArray("\x81\x40\xff\xc0\xff\xc0", 6)));
        const QImage picture = table.getPngImage(1, 10, 3);
        QCOMPARE(picture.size(), QSize(10, 3));
        QCOMPARE(picture.format(), QImage::Format_RGB32);
        const QStringList rows{"X......X..", "XXXXXXXX..", ".........."};
        for (int y = 0; y < 3; ++y) {
            QString row;
            for (int x = 0; x < 10; ++x)
                row += (picture.pixel(x, y) & 0xffffffU) == 0 ? 'X' : '.';
            QCOMPARE(row, rows.at(y));
        }
        QCOMPARE(picture.pixel(1, 0), 0xffffffffU);
    }

    void lowBitsArePaintedFirst()
    {
        SpecialCharacters table = tableOf(1, MonochromeImage(8, 2, QByteArray("\x80\x00", 2)));
        const QImage picture = table.getPngImage(1, 8, 2);
        QCOMPARE(picture.pixel(7, 0) & 0xffffffU, 0U);
        QCOMPARE(picture.pixel(0, 0), 0xffffffffU);
    }

    // QImage::pixel() makes every pixel of such a picture opaque, so the memory is looked at.
    void blackIsZero()
    {
        SpecialCharacters table = tableOf(1, MonochromeImage(8, 2, QByteArray("\x01\x00", 2)));
        const QImage picture = table.getPngImage(1, 8, 2);
        const auto *row = reinterpret_cast<const QRgb *>(picture.constScanLine(0));
        QCOMPARE(row[0], 0U);
        QCOMPARE(row[1], 0xffffffffU);
    }

    void onlyRowStaysWhite()
    {
        SpecialCharacters table = tableOf(1, filled(8, 1));
        const QImage picture = table.getPngImage(1, 8, 1);
        for (int x = 0; x < 8; ++x)
            QCOMPARE(picture.pixel(x, 0), 0xffffffffU);
    }

    void rowsBehindTheDataStayWhite()
    {
        // Valid with 2 bytes, as the padding doesn't count: 9 * 2 / 8 is 2.
        SpecialCharacters table = tableOf(1, MonochromeImage(9, 2, QByteArray("\xff\xff", 2)));
        const QImage picture = table.getPngImage(1, 9, 2);
        for (int y = 0; y < 2; ++y) {
            for (int x = 0; x < 9; ++x)
                QCOMPARE(picture.pixel(x, y), 0xffffffffU);
        }
        table = tableOf(1, MonochromeImage(8, 1, QByteArray(1000, '\xff')));
        QCOMPARE(table.getPngImage(1, 8, 1).pixel(0, 0) & 0xffffffU, 0U);
    }

    void blankPictureIsWhite()
    {
        SpecialCharacters table;
        const QImage picture = table.getPngImage(1, 16, 2);
        QCOMPARE(picture.size(), QSize(16, 2));
        QCOMPARE(picture.pixel(15, 1), 0xffffffffU);
    }

    void pictureOfNoOrAWildCellIsNull()
    {
        SpecialCharacters table;
        QVERIFY(table.getPngImage(1, 0, 0).isNull());
        QVERIFY(table.getPngImage(1, -1, 5).isNull());
        QVERIFY(table.getPngImage(1, 5, -1).isNull());
        QVERIFY(table.getPngImage(1, maximum, maximum).isNull());
        QVERIFY(table.getPngImage(1, minimum, minimum).isNull());
        QVERIFY(table.getPngImage(1, maximum, 1).isNull());
        QVERIFY(table.getPngImage(1, 1, maximum).isNull());
        QVERIFY(table.getPngImage(1, 65536, 65536).isNull());
    }

    void clearEmptiesTheTable()
    {
        SpecialCharacters table = tableOf(1, filled(8, 8));
        const SpecialCharacters copy = table;
        table.clear();
        QVERIFY(table.isEmpty());
        QVERIFY(table == SpecialCharacters());
        QVERIFY(table != copy);
        QVERIFY(copy == tableOf(1, filled(8, 8)));
        const SpecialCharacters moved = std::move(table);
        QVERIFY(moved.isEmpty());
    }

    void tableIsPassedWhereTheMapIsExpected()
    {
        const QMultiMap<signed char, MonochromeImage> &map = tableOf(1, filled(8, 8));
        QCOMPARE(map.size(), 1);
        QVERIFY(tableOf(1, filled(8, 8)) != tableOf(2, filled(8, 8)));
        QVERIFY(tableOf(1, filled(8, 8)) != tableOf(1, filled(8, 9)));
    }
};

QTEST_GUILESS_MAIN(TestSpecialCharacters)
#include "tst_specialcharacters.moc"
