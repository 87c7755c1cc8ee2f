// Each bit of each answer, and answers among other bytes.
#include <QtTest>

#include "answersof.h"

using namespace answersof;

namespace {

/// Hexadecimal flags of an answer's bits, from bit 0 on; "-": the bit is fixed.
struct ByteRow
{
    const char *model;
    StatusQuestion question;
    const char *answer;
    int at;
    const char *flagsOfBits;
};

// PaperOut 1, CoverOpen 2, CutterError 4, RecoverableError 8, UnrecoverableError 10, OffLine 20,
// DataLost 80, PaperNearEnd 100, PaperInPresenter 200, PrintDataExists 400, PowerWasOff 800.
const ByteRow byteRows[] = {
    {"GENERAL_EPSON_PROTOCOL", StatusQuestion::Printer, "12", 0, "- - 0 20 - 0 0 -"},
    {"GENERAL_EPSON_PROTOCOL", StatusQuestion::OffLineCause, "12", 0, "- - 2 20 - 1 20 -"},
    {"GENERAL_EPSON_PROTOCOL", StatusQuestion::Errors, "12", 0, "- - 8 4 - 10 8 -"},
    {"GENERAL_EPSON_PROTOCOL", StatusQuestion::Paper, "12", 0, "- - 100 100 - 1 1 -"},
    {"GENERAL_EPSON_PROTOCOL", StatusQuestion::BufferRead, "00", 0, "100 100 1 1 - 0 0 -"},
    {"GENERAL_EPSON_PROTOCOL", StatusQuestion::Automatic, "10000000", 0, "- - 0 20 - 2 20 -"},
    {"GENERAL_EPSON_PROTOCOL", StatusQuestion::Automatic, "10000000", 1, "0 0 8 4 - 10 8 -"},
    {"GENERAL_EPSON_PROTOCOL", StatusQuestion::Automatic, "10000000", 2, "100 100 1 1 - 0 0 -"},
    {"GENERAL_EPSON_PROTOCOL", StatusQuestion::Automatic, "10000000", 3, "0 0 0 0 - 0 0 -"},
    {"CITIZEN_PPU_700", StatusQuestion::Printer, "12", 0, "- - 0 20 - 0 0 -"},
    {"CITIZEN_PPU_700", StatusQuestion::Errors, "12", 0, "- - 8 4 - 10 8 -"},
    {"CITIZEN_PPU_700", StatusQuestion::Paper, "12", 0, "- - 100 100 - 1 200 -"},
    {"CITIZEN_PPU_700", StatusQuestion::ErrorDetails, "12", 0, "- - 2 8 - 10 10 -"},
    {"CITIZEN_PPU_700", StatusQuestion::MoreErrorDetails, "12", 0, "- - 10 10 - 8 10 -"},
    {"CITIZEN_PPU_700", StatusQuestion::Automatic, "10000800", 1, "0 0 8 4 - 10 8 -"},
    {"CITIZEN_PPU_700", StatusQuestion::Automatic, "10000000", 2, "100 100 1 0 - 0 0 -"},
    {"CITIZEN_PPU_700", StatusQuestion::BufferRead, "00", 0, "100 100 1 0 - 0 0 -"},
    {"CITIZEN_CBM_1000", StatusQuestion::Errors, "12", 0, "- - 0 4 - 10 8 -"},
    {"CITIZEN_CBM_1000", StatusQuestion::Paper, "12", 0, "- - 100 100 - 1 0 -"},
    {"CITIZEN_CBM_1000", StatusQuestion::Automatic, "10000000", 1, "0 0 0 4 - 10 8 -"},
    {"CUSTOM_VKP_80", StatusQuestion::Printer, "12", 0, "- - 0 20 - 0 0 0"},
    {"CUSTOM_VKP_80", StatusQuestion::OffLineCause, "12", 0, "- - 2 20 - 1 20 0"},
    {"CUSTOM_VKP_80", StatusQuestion::FullStatus, "100f00000000", 2, "1 0 100 0 0 200 100 0"},
    {"CUSTOM_VKP_80", StatusQuestion::FullStatus, "100f00000000", 3, "2 2 400 0 0 0 0 0"},
    {"CUSTOM_VKP_80", StatusQuestion::FullStatus, "100f00000000", 4, "8 80 0 8 0 0 8 8"},
    {"CUSTOM_VKP_80", StatusQuestion::FullStatus, "100f00000000", 5, "4 2 10 10 0 0 0 0"},
    {"TSP-TUP", StatusQuestion::Automatic, "230600000000000000", 1, "- 0 0 0 - 0 0 0"},
    {"TSP-TUP", StatusQuestion::Automatic, "230600000000000000", 2, "- 0 0 20 - 2 20 -"},
    {"TSP-TUP", StatusQuestion::Automatic, "230600000000000000", 3, "- 0 8 4 - 10 8 -"},
    {"TSP-TUP", StatusQuestion::Automatic, "230600000000000000", 4, "- 2 8 8 - 0 80 -"},
    {"TSP-TUP", StatusQuestion::Automatic, "230600000000000000", 5, "- 100 100 1 - 0 0 -"},
    {"TSP-TUP", StatusQuestion::Automatic, "230600000000000000", 6, "- 0 0 0 - 0 0 -"},
    {"TSP-TUP", StatusQuestion::Automatic, "230600000000000000", 8, "- 0 0 0 - 0 0 -"},
    {"SWECOIN_TM_20XX", StatusQuestion::Sensors, "0000", 0, "0 0 0 8 0 800 400 0"},
    {"SWECOIN_TM_20XX", StatusQuestion::Sensors, "0000", 1, "1 100 0 200 4 2 0 0"},
};

}  // namespace

class TestStatusDialogueAnswers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bitMeans_data();
    void bitMeans();
    void codeOfSwecoinMeans_data();
    void codeOfSwecoinMeans();
    void counterOfStarIsRead();
    void lengthsOfStarAreRead_data();
    void lengthsOfStarAreRead();
    void ticketInThePresenterOfStarIsSeenWhereThereIsOne();
    void answersAreFoundAmongOthers_data();
    void answersAreFoundAmongOthers();
    void everySplitGivesTheSame_data();
    void everySplitGivesTheSame();
};

void TestStatusDialogueAnswers::bitMeans_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<StatusQuestion>("question");
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("flags");
    for (const ByteRow &row : byteRows) {
        const QStringList bits = QString(row.flagsOfBits).split(' ');
        QCOMPARE(bits.size(), 8);
        for (int bit = 0; bit < 8; ++bit) {
            if (bits.at(bit) == "-")
                continue;
            QByteArray answer = hex(row.answer);
            answer[row.at] = char(quint8(answer.at(row.at)) | (1U << unsigned(bit)));
            QTest::addRow("%s, question %d, byte %d, bit %d", row.model, int(row.question), row.at,
                          bit)
                << QString(row.model) << row.question << answer << bits.at(bit).toInt(nullptr, 16);
        }
    }
}

void TestStatusDialogueAnswers::bitMeans()
{
    QFETCH(QString, model);
    QFETCH(StatusQuestion, question);
    QFETCH(QByteArray, answer);
    QFETCH(int, flags);
    StatusDialogue dialogue(*PrinterProfile::forModel(model));
    QVERIFY(!dialogue.ask(question).isEmpty());
    const QVector<StatusAnswer> answers = dialogue.read(answer);
    QCOMPARE(answers.size(), 1);
    QCOMPARE(int(answers.first().question), int(question));
    QCOMPARE(answers.first().bytes, answer);
    QCOMPARE(int(answers.first().flags), flags);
    QVERIFY(dialogue.expected().isEmpty());
    QCOMPARE(dialogue.strayBytes(), qint64(0));
    if (question != StatusQuestion::BufferRead)
        QCOMPARE(int(dialogue.status().flags()), flags);
}

void TestStatusDialogueAnswers::codeOfSwecoinMeans_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("flags");
    const auto row = [](const char *name, const char *answer, int flags) {
        QTest::newRow(name) << hex(answer) << flags;
    };
    row("none", "06", 0);
    row("paper left in the presenter", "1501", 0x08);
    row("cutter", "1502", 0x14);
    row("paper out", "1503", 0x01);
    row("head lifted", "1504", 0x02);
    row("paper round the platen", "1505", 0x10);
    row("too hot", "1506", 0x08);
    row("presenter", "1507", 0x08);
    row("jam", "1508", 0x08);
    row("black mark", "150a", 0x08);
    row("calibration", "150b", 0x08);
    row("index", "150c", 0x08);
    row("checksum", "150d", 0x10);
    row("firmware of another", "150e", 0x10);
    row("no firmware", "150f", 0x10);
    row("untaken ticket withdrawn", "1510", 0);
    row("unknown", "1564", 0x08);
}

void TestStatusDialogueAnswers::codeOfSwecoinMeans()
{
    QFETCH(QByteArray, answer);
    QFETCH(int, flags);
    StatusDialogue dialogue(model("SWECOIN_TM_20XX"));
    dialogue.askStatus();
    const QVector<StatusAnswer> answers = dialogue.read(answer + hex("0002"));
    QCOMPARE(answers.size(), 2);
    QCOMPARE(answers.at(0).bytes, answer);
    QCOMPARE(int(answers.at(0).flags), flags);
    QCOMPARE(int(dialogue.status().flags()), flags | PrinterStatus::PaperNearEnd);
}

void TestStatusDialogueAnswers::counterOfStarIsRead()
{
    for (unsigned int counter = 0; counter < 32; ++counter) {
        QByteArray answer = hex("230600000000000000");
        answer[7] = char((counter & 7U) << 1U | (counter & 0x18U) << 2U);
        StatusDialogue dialogue(model("TSP-TUP"));
        const QVector<StatusAnswer> answers = dialogue.read(answer);
        QCOMPARE(answers.size(), 1);
        QCOMPARE(answers.first().counter, int(counter));
        QCOMPARE(int(answers.first().flags), 0);
    }
}

void TestStatusDialogueAnswers::lengthsOfStarAreRead_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<int>("size");
    QTest::newRow("7") << hex("0f") << 7;
    QTest::newRow("8") << hex("21") << 8;
    QTest::newRow("9") << hex("23") << 9;
    QTest::newRow("15") << hex("2f") << 15;
    QTest::newRow("31") << hex("6f") << 31;
    QTest::newRow("6 is too short") << hex("0d") << 0;
    QTest::newRow("0 is too short") << hex("01") << 0;
}

void TestStatusDialogueAnswers::lengthsOfStarAreRead()
{
    QFETCH(QByteArray, header);
    QFETCH(int, size);
    StatusDialogue dialogue(model("TSP-TUP"));
    const QVector<StatusAnswer> answers = dialogue.read(header + QByteArray(40, '\0'));
    QCOMPARE(answers.size(), size == 0 ? 0 : 1);
    if (size > 0)
        QCOMPARE(answers.first().bytes.size(), size);
    QCOMPARE(dialogue.strayBytes(), qint64(41 - size));
    // The counter is the eighth byte.
    if (size > 0)
        QCOMPARE(answers.first().counter, size < 8 ? -1 : 0);
}

void TestStatusDialogueAnswers::ticketInThePresenterOfStarIsSeenWhereThereIsOne()
{
    QJsonObject facts = model("TSP-TUP").toJson();
    QCOMPARE(facts.value("presenter").toString(), QString("None"));
    StatusDialogue dialogue(model("TSP-TUP"));
    dialogue.read(hex("230600000000020000"));
    QVERIFY(!dialogue.status().has(PrinterStatus::PaperInPresenter));
}

void TestStatusDialogueAnswers::answersAreFoundAmongOthers_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("answers");
    QTest::addColumn<int>("strays");
    const auto row = [](const char *name, const char *id, const char *bytes,
                        const QStringList &answers, int strays = 0) {
        QTest::newRow(name) << QString(id) << hex(bytes) << answers << strays;
    };
    const char *const epson = "GENERAL_EPSON_PROTOCOL";
    const char *const custom = "CUSTOM_VKP_80";
    const char *const star = "TSP-TUP";
    // DLE EOT 1 to 4 are due, then GS r and the full status of Custom.
    row("XON and XOFF", epson, "11121312", {"DLE EOT 1: 12", "DLE EOT 2: 12"});
    row("automatic status between", epson, "121000000012",
        {"DLE EOT 1: 12", "automatic: 10000000", "DLE EOT 2: 12"});
    row("inside an automatic status", epson, "1800120c11001600",
        {"DLE EOT 1: 12", "automatic: 18000c00 +21", "DLE EOT 2: 16 +2", "GS r: 00"});
    row("automatic status anew", epson, "18001000000000", {"automatic: 10000000", "GS r: 00"}, 2);
    row("two automatic ones", epson, "1000000038000c00",
        {"automatic: 10000000", "automatic: 38000c00 +23"});
    row("automatic status in which a byte has bit 4", epson, "100014000000",
        {"automatic: 14000000"}, 2);
    row("rubbish", epson, "ff80c1953132", {"DLE EOT 1: 32"}, 5);
    row("GS r between", epson, "120012", {"DLE EOT 1: 12", "GS r: 00", "DLE EOT 2: 12"});
    row("GS r twice", epson, "0000", {"GS r: 00"}, 1);
    row("GS I", epson, "5f544d2d5438380012", {"text: 5f544d2d54383800", "DLE EOT 1: 12"});
    row("GS I with XOFF", epson, "5f544d13543800", {"text: 5f544d543800"});
    row("GS ( H", epson, "123722303034320012",
        {"DLE EOT 1: 12", "GS ( H: 37223030343200 id 0042", "DLE EOT 2: 12"});
    row("GS ( H off line", epson, "3723404000", {"text: 3723404000"});
    row("GS ( H too short", epson, "372230303400", {"text: 372230303400"});
    row("GS ( H that breaks off", epson, "3722303012", {"DLE EOT 1: 12"}, 4);
    row("answers beyond the questions", epson, "1212121212",
        {"DLE EOT 1: 12", "DLE EOT 2: 12", "DLE EOT 3: 12", "DLE EOT 4: 12"}, 1);
    row("the key of Custom", custom, "9212", {"DLE EOT 1: 92", "DLE EOT 2: 12"});
    row("not of others", epson, "9212", {"DLE EOT 1: 12"}, 1);
    row("full status", custom, "12100f04000000",
        {"DLE EOT 1: 12", "DLE EOT 20: 100f04000000 +100"});
    row("flow control isn't looked for in it", custom, "100f11131200",
        {"DLE EOT 20: 100f11131200 +83"});
    row("second of its kind is automatic", custom, "100f00000000100f0000",
        {"DLE EOT 20: 100f00000000", "automatic: 100f0000 +c"});
    row("Star behind rubbish", star, "000f00ff230600000000000000",
        {"automatic: 230600000000000000 counter 0"}, 4);
    row("Star anew", star, "2306000023060000000c000000",
        {"automatic: 23060000000c000000 +101 counter 0"}, 4);
    row("Star with flow control", star, "2311061300000000000000",
        {"automatic: 230600000000000000 counter 0"});
    row("Star with more in its header", star, "238600000000000000",
        {"automatic: 238600000000000000 counter 0"});
    row("Swecoin behind rubbish", "SWECOIN_TM_20XX", "00ff06a002",
        {"ESC ENQ 1: 06", "ESC ENQ 6: a002 +900"}, 2);
    row("Swecoin and more", "SWECOIN_TM_20XX", "15030001060000",
        {"ESC ENQ 1: 1503 +1", "ESC ENQ 6: 0001 +1"}, 3);
}

static void askAll(StatusDialogue &dialogue)
{
    dialogue.askStatus();
    dialogue.ask(StatusQuestion::BufferRead);
    dialogue.ask(StatusQuestion::FullStatus);
}

void TestStatusDialogueAnswers::answersAreFoundAmongOthers()
{
    QFETCH(QString, model);
    QFETCH(QByteArray, bytes);
    QFETCH(QStringList, answers);
    QFETCH(int, strays);
    StatusDialogue dialogue(*PrinterProfile::forModel(model));
    askAll(dialogue);
    QCOMPARE(told(dialogue.read(bytes)), answers);
    dialogue.giveUp();
    QCOMPARE(dialogue.strayBytes(), qint64(strays));
}

void TestStatusDialogueAnswers::everySplitGivesTheSame_data()
{
    answersAreFoundAmongOthers_data();
}

void TestStatusDialogueAnswers::everySplitGivesTheSame()
{
    QFETCH(QString, model);
    QFETCH(QByteArray, bytes);
    QFETCH(QStringList, answers);
    for (unsigned int cuts = 0; cuts < 1U << unsigned(bytes.size() - 1); cuts += 1 + cuts / 64) {
        StatusDialogue dialogue(*PrinterProfile::forModel(model));
        askAll(dialogue);
        QStringList found;
        int begin = 0;
        for (int end = 1; end <= bytes.size(); ++end) {
            if (end < bytes.size() && (cuts >> unsigned(end - 1) & 1U) == 0)
                continue;
            found += told(dialogue.read(bytes.mid(begin, end - begin)));
            begin = end;
        }
        QCOMPARE(found, answers);
    }
}

QTEST_APPLESS_MAIN(TestStatusDialogueAnswers)
#include "tst_statusdialogue_answers.moc"
