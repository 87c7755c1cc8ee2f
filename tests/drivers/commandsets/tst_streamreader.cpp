// Which commands a stream holds.
#include <QtTest>

#include "streamreading.h"

using namespace streamreading;

class TestStreamReader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void streamsAreCutIntoCommands_data();
    void streamsAreCutIntoCommands();
    void commandsOfOtherDialects_data();
    void commandsOfOtherDialects();
    void whatASearchSends_data();
    void whatASearchSends();
    void offsetsCountFromTheStart();
    void operandsAndPayloadAreApart();
    void countedOperandsMayBeMissing();
    void textIsNotLookedForInPayloads();
    void rasterModeHasCommandsOfItsOwn();
    void lettersAreTextOutsideTheRasterMode();
    void emptyStreamHasNoCommands();
    void nextStreamBeginsAnew();
    void readerKeepsNothingOfTheCallers();
};

void TestStreamReader::streamsAreCutIntoCommands_data()
{
    QTest::addColumn<QByteArray>("stream");
    QTest::addColumn<QByteArray>("commands");
    const auto row = [](const char *name, const char *stream, const char *commands) {
        QTest::newRow(name) << QByteArray(stream) << QByteArray(commands);
    };
    row("text", "'Total'", "'Total'");
    row("text of high bytes", "80ff7f", "'\x80\xff\x7f'");
    row("text between commands", "1b40'A'0a'B'0a", "ESC @; 'A'; LF; 'B'; LF");
    row("operands", "1b4501 1d2111 1b330a", "ESC E 01; GS ! 11; ESC 3 0a");
    row("operand that looks like a command", "1b451b'A'", "ESC E 1b; 'A'");
    row("introducer of three bytes", "1b633001", "unknown 1b6330; unknown 01");
    row("introducer of three bytes, known", "1b633301", "ESC c 3 01");
    row("unknown escape", "1b01'A'", "unknown 1b01; 'A'");
    row("unknown control characters", "0100'A'", "unknown 01; unknown 00; 'A'");
    row("unknown real-time", "1005ff'A'", "unknown 1005ff; 'A'");
    row("real-time with two operands", "10040701'A'", "DLE EOT 0701; 'A'");
    row("real-time of another vendor", "100414'A'", "unknown 100414; 'A'");
    row("tab stops", "1b44081000'A'", "ESC D 081000; 'A'");
    row("tab stops that fall", "1b44100841", "ESC D 10; unknown 08; 'A'");
    row("tab stops, none", "1b4400", "ESC D 00");
    row("raster picture", "1d763000 0200 0300 'abcdef' 'A'", "GS v 0 0002000300616263646566; 'A'");
    row("raster picture without rows", "1d763000 0200 0000 'A'", "GS v 0 0002000000; 'A'");
    row("columns of one byte", "1b2a00 0300 'abc' 'A'", "ESC * 000300616263; 'A'");
    row("columns of three bytes", "1b2a21 0100 'abc' 'A'", "ESC * 210100616263; 'A'");
    row("defined picture", "1d2a0101'01234567''A'", "GS * 01013031323334353637; 'A'");
    row("barcode with an end", "1d6b02'400638133393'00'A'",
        "GS k 0234303036333831333333393300; 'A'");
    row("barcode with a length", "1d6b4904'{B12''A'", "GS k 49047b423132; 'A'");
    row("barcode of no symbology", "1d6b07'A'", "unknown 1d6b07; 'A'");
    row("code", "1d286b0600315030'abc''A'", "GS ( k 0600315030616263; 'A'");
    row("code, unknown function", "1d286b040031ff3030'A'", "skipped GS ( 6b040031ff3030; 'A'");
    row("code, unknown symbology", "1d286b0200ffff'A'", "skipped GS ( 6b0200ffff; 'A'");
    row("code, too short for a function", "1d286b01003150'A'", "skipped GS ( 6b010031; 'PA'");
    row("unknown with a length", "1d28790300'abc''A'", "skipped GS ( 790300616263; 'A'");
    row("unknown with a long length", "1d385a03000000'abc''A'",
        "skipped GS 8 5a03000000616263; 'A'");
    row("unknown of ESC (", "1b284301000a'A'", "skipped ESC ( 4301000a; 'A'");
    row("unknown of FS (", "1c285a0000'A'", "skipped FS ( 5a0000; 'A'");
    row("graphics", "1d384c0c000000 3070300101310800 0200 1122'A'",
        "GS 8 L 0c0000003070300101310800020011 22; 'A'");
    row("cut", "1d5600'A'", "GS V 00; 'A'");
    row("cut with feed", "1d564205'A'", "GS V 4205; 'A'");
    row("cut of no known kind", "1d5605'A'", "GS V 05; 'A'");
    row("user's characters", "1b26034142 01'abc' 00 'A'", "ESC & 03414201616263 00; 'A'");
    row("user's characters, none", "1b26034241'A'", "ESC & 034241; 'A'");
    row("stored pictures", "1c7102 01000100'01234567' 00000000 'A'",
        "FS q 0201000100303132333435363700000000; 'A'");
    row("bitmap", "1d4430433031 3031 31 '' 424d08000000'ab''A'",
        "GS D 30433031303131424d080000006162; 'A'");
    row("counter", "1d433b'1;2;3;4;5;''A'", "GS C ; 313b323b333b343b353b; 'A'");
    row("counter without its end", "1d433b'1;2''A'", "GS C ; 313b32; 'A'");
    row("two-byte characters", "1c26 b1b2 1c2e", "FS &; '\xb1\xb2'; FS .");
    row("pulse", "1b700019fa", "ESC p 0019fa");
    row("buzzer", "1b420203", "ESC B 0203");
    row("pulse at once", "1014010001", "DLE DC4 010001");
    row("buffer clear", "101408 01031401060208", "DLE DC4 0801031401060208");
    row("italics with an operand", "1b3401'A'", "ESC 4 01; 'A'");
    row("italics without one", "1b34'A'1b35", "ESC 4; 'A'; ESC 5");
    row("ejector of another vendor", "1d6505", "unknown 1d65; unknown 05");
}

void TestStreamReader::streamsAreCutIntoCommands()
{
    QFETCH(QByteArray, stream);
    QFETCH(QByteArray, commands);
    QByteArray wanted = commands;
    QByteArray found = told(stream);
    QCOMPARE(found.replace(" ", ""), wanted.replace(" ", ""));
    isTheSameByteByByte(streamOf(stream), profileOf());
}

void TestStreamReader::commandsOfOtherDialects_data()
{
    QTest::addColumn<QByteArray>("model");
    QTest::addColumn<QByteArray>("stream");
    QTest::addColumn<QByteArray>("commands");
    const auto row = [](const char *name, const char *model, const char *stream,
                        const char *commands) {
        QTest::newRow(name) << QByteArray(model) << QByteArray(stream) << QByteArray(commands);
    };
    row("Custom: eject", "CUSTOM_VKP_80", "1d6505'A'", "GS e 05; 'A'");
    row("Custom: present by steps", "CUSTOM_VKP_80", "1d65030c'A'", "GS e 030c; 'A'");
    row("Custom: italics take an operand", "CUSTOM_VKP_80", "1b3441'A'", "ESC 4 41; 'A'");
    row("Custom: full status", "CUSTOM_VKP_80", "100414'A'", "DLE EOT 14; 'A'");
    row("Citizen: errors", "CITIZEN_PPU_700", "100405'A'", "DLE EOT 05; 'A'");
    row("Citizen: retract", "CITIZEN_PPU_700", "1d5230'A'", "GS R 30; 'A'");
    row("Citizen: timer", "CITIZEN_PPU_700", "1d523105'A'", "GS R 3105; 'A'");
    row("Star: code page", "TSP-TUP", "1b1d740a'A'", "ESC GS t 0a; 'A'");
    row("Star: bold", "TSP-TUP", "1b45'A'1b46", "ESC E; 'A'; ESC F");
    row("Star: QR", "TSP-TUP", "1b1d79443100 0300'abc' 1b1d7950",
        "ESC GS y D 1 000300616263; ESC GS y P");
    row("Star: barcode", "TSP-TUP", "1b6236010250'123'1e'A'", "ESC b 360102503132331e; 'A'");
    row("Star: 24 rows", "TSP-TUP", "1b6b0100'012345678901234567890123''A'",
        "ESC k 0100303132333435363738393031323334353637383930313233; 'A'");
    row("Star: form's length in inches", "TSP-TUP", "1b43000c'A'", "ESC C 000c; 'A'");
    row("Star: form's length in lines", "TSP-TUP", "1b430c'A'", "ESC C 0c; 'A'");
    row("Star: status", "TSP-TUP", "05041b0601", "ENQ; EOT; ESC ACK SOH");
    row("Star: drawers", "TSP-TUP", "071c191a", "BEL; FS; EM; SUB");
    row("Swecoin: cuts", "SWECOIN_TM_20XX", "1e1b1e1b0c0a1905", "RS; ESC RS; ESC FF 0a; EM 05");
    row("Swecoin: status", "SWECOIN_TM_20XX", "051b0506", "ENQ; ESC ENQ 06");
    row("Swecoin: text with a length", "SWECOIN_TM_20XX", "1b74 0001 0002 03 'abc''A'",
        "ESC t 0001000203616263; 'A'");
    row("Swecoin: text with an end", "SWECOIN_TM_20XX", "1b74 0001 0002 00 'abc' 00 'A'",
        "ESC t 000100020061626300; 'A'");
    row("Swecoin: row of dots", "SWECOIN_TM_20XX", "1b7303'abc''A' 1b6c 0003'abc''A'",
        "ESC s 03616263; 'A'; ESC l 0003616263; 'A'");
    row("Swecoin: long row of dots", "SWECOIN_TM_20XX", "1b6c0100'a'", "incomplete ESC l 5/260");
    row("Swecoin: packing", "SWECOIN_TM_20XX", "1b730001'A' 1b6c000000'A'",
        "ESC s 0001; 'A'; ESC l 000000; 'A'");
    row("Swecoin: barcode", "SWECOIN_TM_20XX", "1b4257 00'7331'00'A' 1b4201'B'",
        "ESC B W 003733333100; 'A'; ESC B 01; 'B'");
    row("Star: bytes thrown away", "TSP-TUP", "1b2a7241 1b2a724e '3' 00 'abc' 620100'x'",
        "ESC * r A; ESC * r N 3300616263; b 010078");
    row("Star: no bytes thrown away", "TSP-TUP", "1b2a724e 00 'abc'", "ESC * r N 00; 'abc'");
    row("Custom: status by GS v", "CUSTOM_VKP_80", "1d76'A' 1d763000 0100 0100 'x'",
        "GS v; 'A'; GS v 0 000100010078");
    row("Custom: closing of the search", "CUSTOM_VKP_80", "1cc0aa0fee0b34'A'",
        "FS 0xC0 0xAA SI 0xEE VT 4; 'A'");
    row("Custom: reset", "CUSTOM_VKP_80", "1cc01810141a'A'", "FS 0xC0 CAN DLE DC4 SUB; 'A'");
    row("Swecoin: parameter", "SWECOIN_TM_20XX", "1b26500113'A'", "ESC & P 0113; 'A'");
    row("Swecoin: parameters", "SWECOIN_TM_20XX", "1b2650000f020506'A'", "ESC & P 000f020506; 'A'");
}

void TestStreamReader::commandsOfOtherDialects()
{
    QFETCH(QByteArray, model);
    QFETCH(QByteArray, stream);
    QFETCH(QByteArray, commands);
    QCOMPARE(told(stream, model.constData()), commands);
    isTheSameByteByByte(streamOf(stream), profileOf(model.constData()));
}

void TestStreamReader::whatASearchSends_data()
{
    QTest::addColumn<QByteArray>("model");
    QTest::addColumn<QByteArray>("stream");
    QTest::addColumn<QByteArray>("commands");
    const auto row = [](const char *model, const char *stream, const char *commands) {
        QTest::newRow(model) << QByteArray(model) << QByteArray(stream) << QByteArray(commands);
    };
    row("CUSTOM_VKP_80", "1d4901 1d4931 1b69 200a200a 1d6502",
        "GS I 01; GS I 31; ESC i; ' '; LF; ' '; LF; GS e 02");
    row("CUSTOM_TG_2480_H", "1d4901 1cc0aa0fee0b34", "GS I 01; FS 0xC0 0xAA SI 0xEE VT 4");
    row("CUSTOM_TG_2480_SE", "1d4901 1cc0aa0fee0b34", "GS I 01; FS 0xC0 0xAA SI 0xEE VT 4");
    for (const char *model : {"CITIZEN_CBM_1000", "CITIZEN_CPP_8001", "CITIZEN_PPU_700"})
        row(model, "1d4901 1b33ff0a 1b69", "GS I 01; ESC 3 ff; LF; ESC i");
    row("CITIZEN_CTS_2000", "1d4901 200a200a 1b69 200a",
        "GS I 01; ' '; LF; ' '; LF; ESC i; ' '; LF");
    // No mode of the cut that a manual knows, and a letter.
    row("EPSON_EU_4XX", "1d4901 1d5666a0", "GS I 01; GS V 66; '\xA0'");
    row("SWECOIN_TM_20XX", "1b0507 1b0501 1b0611 1b0612",
        "ESC ENQ 07; ESC ENQ 01; ESC ACK 11; ESC ACK 12");
    row("TSP-TUP", "1b1e6002 1b0601 05 04 'STA' 1b6432",
        "ESC RS ` 02; ESC ACK SOH; ENQ; EOT; 'STA'; ESC d 32");
    for (const char *model : {"AV_268", "CITIZEN_PPU_231"})
        row(model, "1b76 1b76 1b69", "ESC v; ESC v; ESC i");
}

void TestStreamReader::whatASearchSends()
{
    QFETCH(QByteArray, model);
    QFETCH(QByteArray, stream);
    QTEST(told(stream, model.constData()), "commands");
}

void TestStreamReader::offsetsCountFromTheStart()
{
    StreamReader reader(profileOf());
    QVector<StreamCommand> commands = reader.read("\x1B@Total\n\x1B");
    commands += reader.read("E\x01");
    QVector<qint64> offsets;
    for (const StreamCommand &command : qAsConst(commands))
        offsets.append(command.offset);
    QCOMPARE(offsets, (QVector<qint64>{0, 2, 7, 8}));
}

void TestStreamReader::operandsAndPayloadAreApart()
{
    const auto commands =
        StreamReader::commandsOf(streamOf("1d76300130000100'") + QByteArray(48, 'x'), profileOf());
    QCOMPARE(commands.size(), 1);
    QCOMPARE(commands.first().operand(0), 1);
    QCOMPARE(commands.first().word(1), 48);
    QCOMPARE(commands.first().word(3), 1);
    QCOMPARE(commands.first().operand(5), 0);
    QCOMPARE(commands.first().payload(), QByteArray(48, 'x'));
}

// The row of GS ( E names one operand behind the length; a printer takes what is counted.
void TestStreamReader::countedOperandsMayBeMissing()
{
    const auto commands = commandsOf("1d28450000'A'");
    QCOMPARE(told(commands), QByteArray("GS ( E 0000; 'A'"));
    QCOMPARE(commands.first().operand(2), 0);
    QVERIFY(commands.first().payload().isEmpty());
}

void TestStreamReader::textIsNotLookedForInPayloads()
{
    QCOMPARE(told("1d763000020002 00 1b40 0a0a"), QByteArray("GS v 0 00020002001b400a0a"));
}

void TestStreamReader::rasterModeHasCommandsOfItsOwn()
{
    QCOMPARE(
        told("1b2a7241 620200'ab' 6b0100'c' 1b2a725931300a00 'A' 1b0c00 1b2a7242 'bA'", "TSP-TUP"),
        QByteArray("ESC * r A; b 02006162; k 010063; ESC * r Y 31300a00; unknown 41; "
                   "ESC FF NUL; ESC * r B; 'bA'"));
}

void TestStreamReader::lettersAreTextOutsideTheRasterMode()
{
    QCOMPARE(told("620200", "TSP-TUP"), QByteArray("'b'; unknown 02; unknown 00"));
}

void TestStreamReader::emptyStreamHasNoCommands()
{
    StreamReader reader(profileOf());
    QVERIFY(reader.read(QByteArray()).isEmpty());
    QVERIFY(reader.finish().isEmpty());
    QVERIFY(reader.finish().isEmpty());
}

void TestStreamReader::nextStreamBeginsAnew()
{
    StreamReader reader(profileOf("TSP-TUP"));
    reader.read(streamOf("1b2a7241 1b"));
    reader.finish();
    const auto commands = reader.read("b");
    QCOMPARE(told(commands), QByteArray("'b'"));
    QCOMPARE(commands.first().offset, qint64(0));
}

void TestStreamReader::readerKeepsNothingOfTheCallers()
{
    StreamReader reader(profileOf());
    char buffer[] = "A\x1B";
    const auto texts = reader.read(QByteArray::fromRawData(buffer, 2));
    buffer[0] = 'x';
    buffer[1] = 'x';
    QCOMPARE(told(texts), QByteArray("'A'"));
    QCOMPARE(told(reader.read("@")), QByteArray("ESC @"));
}

QTEST_APPLESS_MAIN(TestStreamReader)
#include "tst_streamreader.moc"
