#include <QDir>
#include <QtTest>

#include "commandsets/commandrow_p.h"
#include "printerslib/drivers/streamlisting.h"
#include "printerslib/drivers/streamreader.h"
#include "printerstreams.h"
#include "streamnotation.h"

using namespace printerslib::drivers;

namespace {

QString listed(const QByteArray &notation, const char *model = "GENERAL_EPSON_PROTOCOL",
               int codePage = -1)
{
    const PrinterProfile profile = profileOf(model);
    StreamListing listing(profile, codePage);
    QString lines;
    for (const StreamCommand &command : StreamReader::commandsOf(streamOf(notation), profile))
        lines += listing.linesOf(command);
    return lines;
}

/// The columns of the lines, each run of blanks as one.
QStringList columns(const QString &lines)
{
    QStringList all;
    const QStringList single = lines.split('\n', Qt::SkipEmptyParts);
    for (const QString &line : single)
        all.append(line.simplified());
    return all;
}

/// What the lines say of texts.
QStringList textsIn(const QString &lines)
{
    QStringList texts;
    const QStringList single = lines.split('\n', Qt::SkipEmptyParts);
    for (const QString &line : single) {
        if (line.section('"', 0, 0).simplified().endsWith(QLatin1String(" text")))
            texts.append(line.section('"', 1, -2));
    }
    return texts;
}

}  // namespace

class TestStreamListing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linesHaveColumns();
    void commandsAreListed_data();
    void commandsAreListed();
    void longDataIsShortened();
    void longPlainDataIsShortened();
    void longTextIsWhole();
    void textIsOfTheCodePageInForce_data();
    void textIsOfTheCodePageInForce();
    void codePageOfTheStartCanBeChosen();
    void initializeTakesTheCodePageBack();
    void codePagesAreNamed();
    void whatATerminalObeysIsReplaced();
    void twoByteTextIsOfItsSet();
    void codesOfTwoByteTextAreThoseOfThePrinter();
    void resetsTakeTheCodePageBack();
    void whatIsForTheNeighbourChangesNoTexts();
    void twoByteCharactersMayBeParted();
    void realTimeCommandsInDataHaveLines();
    void switchedOffCommandsSaySo();
    void streamsThatEndInsideACommandSaySo_data();
    void streamsThatEndInsideACommandSaySo();
    void unknownIsSaidOfUnknownCommandsOnly();
    void listingIsComplete();
    void othersStreamsHaveNothingUnknown();
    void pageShowsAListing();
};

void TestStreamListing::linesHaveColumns()
{
    QCOMPARE(listed("1b40 'Total' 0a 1d763000 0100 0800 'abcdefgh'"),
             QStringLiteral(
                 "00000000  1B 40                             ESC @"
                 "                                           resets to the state after power-on\n"
                 "00000002  54 6F 74 61 6C                    text            \"Total\"\n"
                 "00000007  0A                                LF"
                 "                                              prints the line and feeds\n"
                 "00000008  1D 76 30 00 01 00 .. 16 bytes     GS v 0          "
                 "m=0 x=1 y=8 data=\"abcdefgh\"     prints a raster picture\n"));
}

void TestStreamListing::commandsAreListed_data()
{
    QTest::addColumn<QByteArray>("stream");
    QTest::addColumn<QString>("line");
    const auto row = [](const char *name, const char *stream, const char *line) {
        QTest::newRow(name) << QByteArray(stream) << QString::fromLatin1(line);
    };
    row("without operands", "1b40", "1B 40 ESC @ resets to the state after power-on");
    row("an operand", "1b4d01", "1B 4D 01 ESC M n=1 chooses the font");
    row("a word", "1b242001", "1B 24 20 01 ESC $ n=288 goes to a place of the line");
    row("words behind a mode", "1d763000 3000 0000",
        "1D 76 30 00 30 00 00 00 GS v 0 m=0 x=48 y=0 prints a raster picture");
    row("words of several letters", "1b57 0000 0000 4002 2003",
        "1B 57 00 00 00 00 40 02 20 03 ESC W x=0 y=0 dx=576 dy=800 sets the area of the page");
    row("data with an end", "1d6b02'400638133393'00",
        "1D 6B 02 34 30 30 .. 16 bytes GS k m=2 data=\"400638133393\" prints an EAN-13");
    row("data with a length", "1d6b4904'{B12'",
        "1D 6B 49 04 7B 42 31 32 GS k m=73 n=4 data=\"{B12\" prints a Code 128");
    row("data that isn't text", "1b44081000",
        "1B 44 08 10 00 ESC D data=3 bytes sets the tab stops");
    row("data of one byte", "1d763000 0100 0100 ff",
        "1D 76 30 00 01 00 01 00 FF GS v 0 m=0 x=1 y=1 data=1 byte prints a raster picture");
    row("unknown escape", "1b01", "1B 01 ESC SOH unknown");
    row("unknown letters", "1b7e", "1B 7E ESC ~ unknown");
    row("unknown control character", "00", "00 NUL unknown");
    row("unknown high byte", "1dfa", "1D FA GS 0xFA unknown");
    row("a length of four bytes", "1d385a03000000'abc'",
        "1D 38 5A 03 00 00 00 61 62 63 GS 8 Z p=3 data=\"abc\" unknown, skipped by its length");
    row("skipped", "1d28790300'abc'",
        "1D 28 79 03 00 61 62 63 GS ( y p=3 data=\"abc\" unknown, skipped by its length");
}

void TestStreamListing::commandsAreListed()
{
    QFETCH(QByteArray, stream);
    QFETCH(QString, line);
    QCOMPARE(columns(listed(stream)), QStringList{"00000000 " + line});
}

void TestStreamListing::longDataIsShortened()
{
    const QString lines = listed("1d763000 3000 7800 " + QByteArray(5760 * 2, '0'));
    QCOMPARE(columns(lines),
             QStringList{"00000000 1D 76 30 00 30 00 .. 5,768 bytes GS v 0 m=0 x=48 y=120 "
                         "data=5,760 bytes prints a raster picture"});
}

void TestStreamListing::longPlainDataIsShortened()
{
    const QString lines = listed("1d286b 6700 315030 '" + QByteArray(100, 'x') + "'");
    QVERIFY(lines.contains("data=\"" + QString(60, 'x') + "\" .. 100 bytes"));
}

void TestStreamListing::longTextIsWhole()
{
    const QByteArray text(5000, 'x');
    QCOMPARE(textsIn(listed('\'' + text + '\'')), QStringList{QString::fromLatin1(text)});
}

void TestStreamListing::textIsOfTheCodePageInForce_data()
{
    QTest::addColumn<QByteArray>("model");
    QTest::addColumn<QByteArray>("stream");
    QTest::addColumn<QStringList>("texts");
    const auto row = [](const char *name, const char *model, const char *stream,
                        const QStringList &texts) {
        QTest::newRow(name) << QByteArray(model) << QByteArray(stream) << texts;
    };
    row("the printer's own", "GENERAL_EPSON_PROTOCOL", "809b", {QStringLiteral("Ç¢")});
    row("ESC t", "GENERAL_EPSON_PROTOCOL", "80 1b7411 80 1b742e c0",
        {QStringLiteral("Ç"), QStringLiteral("А"), QStringLiteral("А")});
    row("ESC t of a number that isn't there", "GENERAL_EPSON_PROTOCOL", "1b7411 1b74fe 80",
        {QStringLiteral("А")});
    row("ESC R", "GENERAL_EPSON_PROTOCOL", "'[]' 1b5202 '[]' 1b5200 '[]'",
        {"[]", QStringLiteral("ÄÜ"), "[]"});
    row("ESC R of a number that isn't there", "GENERAL_EPSON_PROTOCOL", "1b5202 1b5263 '[]'",
        {QStringLiteral("ÄÜ")});
    row("ESC GS t", "TSP-TUP", "1b1d740a 80", {QStringLiteral("А")});
    row("a byte that the set leaves free", "GENERAL_EPSON_PROTOCOL", "1b742d 98",
        {QString(QChar::ReplacementCharacter)});
}

void TestStreamListing::textIsOfTheCodePageInForce()
{
    QFETCH(QByteArray, model);
    QFETCH(QByteArray, stream);
    QFETCH(QStringList, texts);
    QCOMPARE(textsIn(listed(stream, model.constData())), texts);
}

void TestStreamListing::codePageOfTheStartCanBeChosen()
{
    QCOMPARE(textsIn(listed("80", "GENERAL_EPSON_PROTOCOL", 17)), QStringList{QStringLiteral("А")});
    QCOMPARE(textsIn(listed("80", "GENERAL_EPSON_PROTOCOL", 254)),
             QStringList{QStringLiteral("Ç")});
}

void TestStreamListing::initializeTakesTheCodePageBack()
{
    QCOMPARE(textsIn(listed("1b7400 80 1b5202 1b40 80'['", "GENERAL_EPSON_PROTOCOL", 17)),
             (QStringList{QStringLiteral("Ç"), QStringLiteral("А[")}));
}

void TestStreamListing::codePagesAreNamed()
{
    QVERIFY(listed("1b7411").endsWith("chooses the code page: CP866\n"));
    QVERIFY(listed("1b74fe").endsWith("chooses the code page: the printer has no such one\n"));
}

// ISO 8859 has control characters from 80 on.
void TestStreamListing::whatATerminalObeysIsReplaced()
{
    QCOMPARE(textsIn(listed("1b740f 9b", "GENERAL_EPSON_PROTOCOL")),
             QStringList{QString(QChar::ReplacementCharacter)});
}

// Chinese, unless the model's data says otherwise.
void TestStreamListing::twoByteTextIsOfItsSet()
{
    QCOMPARE(textsIn(listed("1c26 c4e3'A'bac3 1c2e c4")),
             (QStringList{QStringLiteral("你A好"), QStringLiteral("─")}));
    QCOMPARE(textsIn(listed("1b70 3021 1b71 3021", "TSP-TUP")),
             (QStringList{QStringLiteral("亜"), "0!"}));
}

void TestStreamListing::codesOfTwoByteTextAreThoseOfThePrinter()
{
    QCOMPARE(textsIn(listed("1c4302 1c26 82a0")), QStringList{QStringLiteral("あ")});
    QCOMPARE(textsIn(listed("1c4301 1c4308 1c26 82a0")), QStringList{QStringLiteral("あ")});
    QCOMPARE(textsIn(listed("1b2401 82a0 1b2400 'A'", "TSP-TUP")),
             (QStringList{QStringLiteral("あ"), "A"}));
}

void TestStreamListing::resetsTakeTheCodePageBack()
{
    const QStringList texts{QStringLiteral("А"), QStringLiteral("Ç")};
    QCOMPARE(textsIn(listed("1b1d740a 80 18 80", "TSP-TUP")), texts);
    QCOMPARE(textsIn(listed("1b1d740a 80 1b3f0a00 80", "TSP-TUP")), texts);
    QCOMPARE(textsIn(listed("1b7411 80 18 80")),
             (QStringList{QStringLiteral("А"), QStringLiteral("А")}));
}

void TestStreamListing::whatIsForTheNeighbourChangesNoTexts()
{
    QCOMPARE(textsIn(listed("1b7411 1b3d02 1b40 1b3d01 80")), QStringList{QStringLiteral("А")});
    QCOMPARE(textsIn(listed("1b3d02 1b7411 1b3d01 80")), QStringList{QStringLiteral("Ç")});
    QCOMPARE(textsIn(listed("1b1d740a 13 1b40 11 80", "TSP-TUP")),
             QStringList{QStringLiteral("А")});
}

void TestStreamListing::twoByteCharactersMayBeParted()
{
    const PrinterProfile profile = profileOf("GENERAL_EPSON_PROTOCOL");
    StreamReader reader(profile);
    StreamListing listing(profile);
    QString lines;
    for (const char *piece : {"\x1C&", "\xC4", "\xE3"}) {
        for (const StreamCommand &command : reader.read(piece))
            lines += listing.linesOf(command);
    }
    QCOMPARE(textsIn(lines), (QStringList{"", QStringLiteral("你")}));
}

void TestStreamListing::realTimeCommandsInDataHaveLines()
{
    QCOMPARE(columns(listed("'A' 1d763000 0500 0100 1014010001 'B'")),
             (QStringList{"00000000 41 text \"A\"",
                          "00000001 1D 76 30 00 05 00 .. 13 bytes GS v 0 m=0 x=5 y=1 data=5 bytes "
                          "prints a raster picture",
                          "00000009 10 14 01 00 01 DLE DC4 fn=1 m=0 t=1 opens the drawer at pin 2; "
                          "at once, inside the data above",
                          "0000000e 42 text \"B\""}));
}

void TestStreamListing::switchedOffCommandsSaySo()
{
    const QStringList lines =
        columns(listed("1d28440300140100 1014010001 1d763000 0500 0100 1014010001"));
    QVERIFY(lines.at(1).endsWith("opens the drawer at pin 2; switched off by GS ( D"));
    QVERIFY(lines.at(3).endsWith(
        "opens the drawer at pin 2; at once, inside the data above; switched off by GS ( D"));
}

void TestStreamListing::streamsThatEndInsideACommandSaySo_data()
{
    QTest::addColumn<QByteArray>("stream");
    QTest::addColumn<QString>("end");
    const auto row = [](const char *name, const QByteArray &stream, const char *end) {
        QTest::newRow(name) << stream << QString::fromLatin1(end);
    };
    row("data", "1d763000 6000 6000 " + QByteArray(1204 * 2, '0'),
        "ends inside GS v 0, 1,204 of 9,216 bytes");
    row("before data", "1d763000 6000 6000", "ends inside GS v 0, 0 of 9,216 bytes");
    row("operands of what has data", "1d763000 60", "ends inside GS v 0");
    row("operands", "1b7000", "ends inside ESC p, 3 of 5 bytes");
    row("introducer", "1b", "ends inside ESC");
    row("data without an end", "1d6b02'4006'", "ends inside GS k");
    row("unknown with a length", "1d28790300'ab'", "ends inside GS ( y, 2 of 3 bytes");
    row("function", "1d286b0300 31", "ends inside GS ( k, 6 of 8 bytes");
}

void TestStreamListing::streamsThatEndInsideACommandSaySo()
{
    QFETCH(QByteArray, stream);
    QFETCH(QString, end);
    QVERIFY2(listed(stream).endsWith(' ' + end + '\n'), qPrintable(listed(stream)));
}

void TestStreamListing::unknownIsSaidOfUnknownCommandsOnly()
{
    const auto law = [](const QByteArray &stream, const PrinterProfile &profile) {
        StreamListing listing(profile);
        for (const StreamCommand &command : StreamReader::commandsOf(stream, profile)) {
            const bool isUnknown =
                command.kind == StreamCommand::Unknown || command.kind == StreamCommand::Skipped;
            RC_ASSERT(listing.linesOf(command).contains("unknown") == isUnknown);
        }
    };
    QVERIFY(printerstreams::holds("unknown", law));
}

void TestStreamListing::listingIsComplete()
{
    const auto law = [](const QByteArray &stream, const PrinterProfile &profile) {
        StreamListing listing(profile);
        for (const StreamCommand &command : StreamReader::commandsOf(stream, profile)) {
            const QString lines = listing.linesOf(command);
            RC_ASSERT(lines.count('\n') == 1 + command.realTime.size());
            RC_ASSERT(lines.endsWith('\n'));
            RC_ASSERT(lines.startsWith(QString::number(command.offset, 16).rightJustified(8, '0')));
            const bool isClean = std::none_of(lines.begin(), lines.end(), [](QChar c) {
                return c != '\n' && c.category() == QChar::Other_Control;
            });
            RC_ASSERT(isClean);
        }
    };
    QVERIFY(printerstreams::holds("a line for each", law));
}

// An encoder that leaves the times of a pulse out has the printer eat two bytes for them.
void TestStreamListing::othersStreamsHaveNothingUnknown()
{
    const QDir folder(QStringLiteral(PRINTERSLIB_TEST_DATA) + "/streams");
    const QStringList names = folder.entryList({"*.json"});
    QVERIFY(names.size() >= 10);
    for (const QString &name : names) {
        QFile description(folder.filePath(name));
        QFile stream(folder.filePath(QString(name).replace(".json", ".bin")));
        QVERIFY(description.open(QFile::ReadOnly) && stream.open(QFile::ReadOnly));
        const QJsonObject facts = QJsonDocument::fromJson(description.readAll()).object();
        QCOMPARE(facts["command"].toString() + ".json", "node make-streams.js FOLDER " + name);
        const PrinterProfile profile = PrinterProfile::forModel(facts["model"].toString()).value();
        int unknown = 0;
        const QByteArray sent = stream.readAll();
        QByteArray together;
        for (const StreamCommand &command : StreamReader::commandsOf(sent, profile)) {
            together += command.bytes;
            unknown +=
                command.kind != StreamCommand::Text && command.kind != StreamCommand::Command;
        }
        QCOMPARE(together, sent);
        QVERIFY2(unknown == (name.startsWith("thermal-epson-drawer") ? 1 : 0), qPrintable(name));
    }
}

void TestStreamListing::pageShowsAListing()
{
    QFile page(QStringLiteral(PRINTERSLIB_DOCS) + "/streams.md");
    QVERIFY(page.open(QFile::ReadOnly));
    const QByteArray shop = "8ca0a3a0a7a8ad20'\"'9faaaee0ec'\"'";
    const QString lines =
        listed("1b40 1b7411" + shop + "0a 1d763000 0500 0100 1014010001 1b7e 1d564200");
    QVERIFY2(QString::fromUtf8(page.readAll()).contains("```text\n" + lines + "```\n"),
             qPrintable(lines));
}

QTEST_APPLESS_MAIN(TestStreamListing)
#include "tst_streamlisting.moc"
