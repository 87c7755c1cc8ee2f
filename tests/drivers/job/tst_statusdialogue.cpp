// Which bytes ask a printer, and what is known of it by its answers.
#include <QtTest>

#include "answersof.h"

using namespace answersof;

class TestStatusDialogue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void asksInTheModelsCommands_data();
    void asksInTheModelsCommands();
    void everyModelCanBeAsked();
    void wholeStatusIsAskedInOneGo_data();
    void wholeStatusIsAskedInOneGo();
    void whatIsDueIsNotAskedAgain();
    void responseHasAnIdOfFourCharacters();
    void automaticStatusIsSwitchedOff();
    void nothingIsKnownUntilAllIsAnswered();
    void answersAreTakenInTheOrderOfTheQuestions();
    void automaticStatusSaysAllAnew();
    void laterAnswersPrevailOverAnAutomaticStatus();
    void paperBackIsSeenBehindAFullStatus();
    void readBufferSaysNothingOfTheStatus();
    void givenUpQuestionsCountNoMore();
    void lateAnswersAreThrownAway();
    void halfAnAnswerIsGivenUp();
    void resetForgetsAll();
    void nativeBytesAreThoseOfTheAnswers();
};

void TestStatusDialogue::asksInTheModelsCommands_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<StatusQuestion>("question");
    QTest::addColumn<QByteArray>("bytes");
    const auto row = [](const char *id, StatusQuestion question, const char *bytes) {
        QTest::addRow("%s %d", id, int(question)) << QString(id) << question << hex(bytes);
    };
    const char *const epson = "GENERAL_EPSON_PROTOCOL";
    row(epson, StatusQuestion::Printer, "100401");
    row(epson, StatusQuestion::OffLineCause, "100402");
    row(epson, StatusQuestion::Errors, "100403");
    row(epson, StatusQuestion::Paper, "100404");
    row(epson, StatusQuestion::ErrorDetails, "");
    row(epson, StatusQuestion::MoreErrorDetails, "");
    row(epson, StatusQuestion::FullStatus, "");
    row(epson, StatusQuestion::BufferRead, "1d7201");
    row(epson, StatusQuestion::Automatic, "1d610e");
    row(epson, StatusQuestion::Response, "");
    row(epson, StatusQuestion::Text, "");
    row(epson, StatusQuestion::StatusCode, "");
    row("CITIZEN_PPU_700", StatusQuestion::ErrorDetails, "100405");
    row("CITIZEN_PPU_700", StatusQuestion::MoreErrorDetails, "100406");
    row("CUSTOM_VKP_80", StatusQuestion::FullStatus, "100414");
    row("CUSTOM_VKP_80", StatusQuestion::Paper, "100404");
    row("TSP-TUP", StatusQuestion::Automatic, "1b0601");
    row("TSP-TUP", StatusQuestion::Printer, "");
    row("TSP-TUP", StatusQuestion::BufferRead, "");
    row("SWECOIN_TM_20XX", StatusQuestion::StatusCode, "1b0501");
    row("SWECOIN_TM_20XX", StatusQuestion::Sensors, "1b0506");
    row("SWECOIN_TM_20XX", StatusQuestion::Automatic, "");
}

void TestStatusDialogue::asksInTheModelsCommands()
{
    QFETCH(QString, model);
    QFETCH(StatusQuestion, question);
    QFETCH(QByteArray, bytes);
    StatusDialogue dialogue(*PrinterProfile::forModel(model));
    QVERIFY(dialogue.expected().isEmpty());
    QCOMPARE(dialogue.ask(question), bytes);
    const QVector<StatusQuestion> due =
        bytes.isEmpty() ? QVector<StatusQuestion>() : QVector<StatusQuestion>{question};
    QCOMPARE(dialogue.expected(), due);
    if (question != StatusQuestion::Response)
        QCOMPARE(dialogue.has(question), !bytes.isEmpty());
}

void TestStatusDialogue::everyModelCanBeAsked()
{
    for (const QString &id : PrinterProfile::modelIds()) {
        StatusDialogue dialogue(*PrinterProfile::forModel(id));
        QVERIFY2(!dialogue.askStatus().isEmpty(), qPrintable(id));
        QVERIFY2(!dialogue.expected().isEmpty(), qPrintable(id));
    }
}

void TestStatusDialogue::wholeStatusIsAskedInOneGo_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QByteArray>("questions");
    QTest::addColumn<QByteArray>("answers");
    const auto row = [](const char *id, const char *questions, const char *answers) {
        QTest::newRow(id) << QString(id) << hex(questions) << hex(answers);
    };
    row("EPSON_EU_4XX", "100401100402100403100404", "12121212");
    row("CUSTOM_VKP_80", "100401100402100403100404", "92121212");
    row("CITIZEN_CTS_2000", "100401100402100403100404", "16121212");
    row("TSP-TUP", "1b0601", "23060000000000000000");
    row("SWECOIN_TM_20XX", "1b05011b0506", "060080");
}

void TestStatusDialogue::wholeStatusIsAskedInOneGo()
{
    QFETCH(QString, model);
    QFETCH(QByteArray, questions);
    QFETCH(QByteArray, answers);
    StatusDialogue dialogue(*PrinterProfile::forModel(model));
    QVERIFY(!dialogue.status().isKnown());
    QCOMPARE(dialogue.askStatus(), questions);
    dialogue.read(answers);
    QVERIFY(dialogue.expected().isEmpty());
    QVERIFY(dialogue.status().isKnown());
    QVERIFY(dialogue.status().canPrint());
    QCOMPARE(int(dialogue.status().flags()), 0);
}

void TestStatusDialogue::whatIsDueIsNotAskedAgain()
{
    StatusDialogue dialogue(model("AV_268"));
    dialogue.askStatus();
    dialogue.read(hex("1212"));
    QCOMPARE(dialogue.askStatus(), hex("100401100402"));
    QCOMPARE(dialogue.expected(),
             (QVector<StatusQuestion>{StatusQuestion::Errors, StatusQuestion::Paper,
                                      StatusQuestion::Printer, StatusQuestion::OffLineCause}));
}

void TestStatusDialogue::responseHasAnIdOfFourCharacters()
{
    StatusDialogue dialogue(model("EPSON_EU_4XX"));
    QVERIFY(dialogue.has(StatusQuestion::Response));
    QCOMPARE(dialogue.askResponse("0042"), hex("1d28480600303030303432"));
    QCOMPARE(dialogue.askResponse(" ~AZ"), hex("1d284806003030207e415a"));
    QVERIFY(dialogue.askResponse("042").isEmpty());
    QVERIFY(dialogue.askResponse("00042").isEmpty());
    QVERIFY(dialogue.askResponse(hex("30301f30")).isEmpty());
    QVERIFY(dialogue.askResponse(hex("3030307f")).isEmpty());
    QVERIFY(dialogue.askResponse(hex("303030e0")).isEmpty());
    QCOMPARE(dialogue.expected().size(), 2);
    // The second may be answered alone, if the first was lost.
    QCOMPARE(told(dialogue.read(hex("3722207e415a00"))),
             QStringList{"GS ( H: 3722207e415a00 id  ~AZ"});
    QCOMPARE(dialogue.expected().size(), 1);
    QCOMPARE(told(dialogue.read(hex("37223030343200"))),
             QStringList{"GS ( H: 37223030343200 id 0042"});
    QVERIFY(dialogue.expected().isEmpty());
    for (const char *const other : {"TSP-TUP", "SWECOIN_TM_20XX"}) {
        StatusDialogue none(model(other));
        QVERIFY(!none.has(StatusQuestion::Response));
        QVERIFY(none.askResponse("0042").isEmpty());
        QVERIFY(none.expected().isEmpty());
    }
}

void TestStatusDialogue::automaticStatusIsSwitchedOff()
{
    QCOMPARE(StatusDialogue(model("AV_268")).automaticOff(), hex("1d6100"));
    QCOMPARE(StatusDialogue(model("TSP-TUP")).automaticOff(), QByteArray());
    QCOMPARE(StatusDialogue(model("SWECOIN_TM_20XX")).automaticOff(), QByteArray());
}

void TestStatusDialogue::nothingIsKnownUntilAllIsAnswered()
{
    StatusDialogue dialogue(model("AV_268"));
    QVERIFY(dialogue.status() == PrinterStatus());
    dialogue.askStatus();
    dialogue.read(hex("121612"));
    QVERIFY(!dialogue.status().isKnown());
    QVERIFY(dialogue.status().has(PrinterStatus::CoverOpen));
    dialogue.read(hex("12"));
    QVERIFY(dialogue.status().isKnown());
    QCOMPARE(int(dialogue.status().flags()), int(PrinterStatus::CoverOpen));
}

void TestStatusDialogue::answersAreTakenInTheOrderOfTheQuestions()
{
    StatusDialogue dialogue(model("AV_268"));
    dialogue.ask(StatusQuestion::Paper);
    dialogue.ask(StatusQuestion::BufferRead);
    dialogue.ask(StatusQuestion::Printer);
    // The one of GS r waits for its turn in the buffer.
    QCOMPARE(told(dialogue.read(hex("1e1a00"))),
             (QStringList{"DLE EOT 4: 1e +100", "DLE EOT 1: 1a +20", "GS r: 00"}));
}

void TestStatusDialogue::automaticStatusSaysAllAnew()
{
    StatusDialogue dialogue(model("AV_268"));
    dialogue.askStatus();
    dialogue.read(hex("1a36127e"));
    QVERIFY(dialogue.status().has(PrinterStatus::PaperOut));
    dialogue.read(hex("10000000"));
    QVERIFY(dialogue.status().canPrint());
    dialogue.read(hex("38000c00"));
    QCOMPARE(int(dialogue.status().flags()),
             int(PrinterStatus::OffLine | PrinterStatus::CoverOpen | PrinterStatus::PaperOut));
}

void TestStatusDialogue::laterAnswersPrevailOverAnAutomaticStatus()
{
    StatusDialogue dialogue(model("AV_268"));
    dialogue.read(hex("38080300"));
    QVERIFY(dialogue.status().isKnown());
    dialogue.askStatus();
    dialogue.read(hex("12"));
    QVERIFY(!dialogue.status().has(PrinterStatus::OffLine));
    QVERIFY(dialogue.status().has(PrinterStatus::CoverOpen));
    dialogue.read(hex("121212"));
    QVERIFY(dialogue.status().canPrint());
    QVERIFY(!dialogue.status().flags());
}

void TestStatusDialogue::paperBackIsSeenBehindAFullStatus()
{
    StatusDialogue dialogue(model("CUSTOM_VKP_80"));
    dialogue.ask(StatusQuestion::FullStatus);
    dialogue.read(hex("100f05000000"));
    QVERIFY(dialogue.status().has(PrinterStatus::PaperOut));
    QVERIFY(!dialogue.status().isKnown());
    dialogue.askStatus();
    dialogue.read(hex("12121212"));
    QVERIFY(dialogue.status().canPrint());
    QVERIFY(!dialogue.status().flags());
}

void TestStatusDialogue::readBufferSaysNothingOfTheStatus()
{
    StatusDialogue dialogue(model("AV_268"));
    dialogue.ask(StatusQuestion::BufferRead);
    QCOMPARE(told(dialogue.read(hex("0f"))), QStringList{"GS r: 0f +101"});
    QVERIFY(dialogue.status() == PrinterStatus());
}

void TestStatusDialogue::givenUpQuestionsCountNoMore()
{
    StatusDialogue dialogue(model("AV_268"));
    QVERIFY(dialogue.giveUp().isEmpty());
    dialogue.askStatus();
    dialogue.read(hex("12121212"));
    QVERIFY(dialogue.status().isKnown());
    dialogue.askStatus();
    dialogue.read(hex("1216"));
    QCOMPARE(dialogue.giveUp(),
             (QVector<StatusQuestion>{StatusQuestion::Errors, StatusQuestion::Paper}));
    QVERIFY(dialogue.expected().isEmpty());
    QVERIFY(!dialogue.status().isKnown());
    QVERIFY(dialogue.status().has(PrinterStatus::CoverOpen));
}

void TestStatusDialogue::lateAnswersAreThrownAway()
{
    for (const auto &[id, answers] :
         {std::pair{"AV_268", "12121212"}, std::pair{"SWECOIN_TM_20XX", "060000"}}) {
        StatusDialogue dialogue(model(id));
        dialogue.askStatus();
        dialogue.giveUp();
        QVERIFY(dialogue.read(hex(answers)).isEmpty());
        QCOMPARE(dialogue.strayBytes(), qint64(hex(answers).size()));
        QVERIFY(!dialogue.status().isKnown());
        dialogue.askStatus();
        dialogue.read(hex(answers));
        QVERIFY(dialogue.status().canPrint());
    }
}

void TestStatusDialogue::halfAnAnswerIsGivenUp()
{
    StatusDialogue dialogue(model("AV_268"));
    dialogue.ask(StatusQuestion::BufferRead);
    QVERIFY(dialogue.read(hex("5f4550534f4e")).isEmpty());
    dialogue.giveUp();
    QCOMPARE(dialogue.strayBytes(), qint64(6));
    dialogue.ask(StatusQuestion::BufferRead);
    QCOMPARE(told(dialogue.read(hex("00"))), QStringList{"GS r: 00"});
}

void TestStatusDialogue::resetForgetsAll()
{
    StatusDialogue dialogue(model("CITIZEN_PPU_700"));
    dialogue.read(hex("38000c00ff30"));
    dialogue.ask(StatusQuestion::ErrorDetails);
    dialogue.reset();
    QVERIFY(dialogue.status() == PrinterStatus());
    QVERIFY(dialogue.expected().isEmpty());
    QCOMPARE(dialogue.strayBytes(), qint64(0));
    QVERIFY(dialogue.read(hex("000000")).isEmpty());
    QCOMPARE(dialogue.ask(StatusQuestion::ErrorDetails), hex("100405"));
}

void TestStatusDialogue::nativeBytesAreThoseOfTheAnswers()
{
    const auto nativeOf = [](const char *id, const char *answers) {
        StatusDialogue dialogue(model(id));
        dialogue.askStatus();
        dialogue.read(hex(answers));
        return dialogue.status().native();
    };
    QCOMPARE(nativeOf("AV_268", "1216321e"), hex("1216321e"));
    QCOMPARE(nativeOf("AV_268", "38000c00"), hex("38000c00"));
    QCOMPARE(nativeOf("TSP-TUP", "23062800000c000000"), hex("2800000c000000"));
    QCOMPARE(nativeOf("SWECOIN_TM_20XX", "1503a081"), hex("03a081"));
    QCOMPARE(nativeOf("SWECOIN_TM_20XX", "060002"), hex("000002"));
}

QTEST_APPLESS_MAIN(TestStatusDialogue)
#include "tst_statusdialogue.moc"
