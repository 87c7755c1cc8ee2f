// What becomes of a job, against a printer and a line that are the test's own.
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>
#include <QtTest>

#include "jobsetting.h"
#include "pseudoterminal.h"

Q_DECLARE_METATYPE(printerslib::drivers::PrinterProfile)
Q_DECLARE_METATYPE(bool jobparts::Printer::*)

using namespace jobparts;

class TestPrintJob : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // ---- Not begun
    void anEmptyDocumentIsNotBegun();
    void aDocumentWithAnErrorIsNotBegun();
    void anAddressThatIsNoneIsNotBegun();
    void aLineThatDoesNotOpenIsNotBegun();
    void aPrinterThatCanNotPrintGetsNothing_data();
    void aPrinterThatCanNotPrintGetsNothing();
    void aSilentPrinterIsNotBegun();
    void startTwiceRunsOnce();
    void cancelBeforeStartEndsTheJob();

    // ---- Proofs
    void theProofIsThatOfTheModel_data();
    void theProofIsThatOfTheModel();
    void anAnswerThatNeverComesMeansSent_data();
    void anAnswerThatNeverComesMeansSent();
    void whatIsNotConfirmedIsCutOff_data();
    void whatIsNotConfirmedIsCutOff();
    void nothingIsCutOffBehindOneThatNeverConfirms();
    void anAnswerThatComesTwiceCountsOnce();
    void anErrorBehindTheLastByteMeansSent();
    void aLateAnswerOfAJobBeforeProvesNothing();
    void lostAnswersSpoilOneJobAlone();
    void lostAnswersSpoilNoJobOfAPrinterThatTells();
    void lateAnswersInFrontOfTheAutomaticStatusCountForNothing();
    void dataThatStaysMeansSent();
    void aStarThatWasOffInTheMiddleIsNotSaidToHavePrinted();
    void aStarsMarksOfJobsBeforeProveNothing();
    void withoutConfirmationItIsSent();
    void withoutQuestionsNothingIsAsked();
    void aFileIsSentAndAskedNothing();
    void automaticStatusIsSwitchedOffAgain();
    void aLineThatIsLostBehindTheLastByteMeansSent();

    // ---- In its middle
    void lossAtEachByteIsToldAndRepaired();
    void aStuckLineEndsTheJob();
    void whatHandingOverTakesIsNotTheLines();
    void paperThatEndsInTheMiddleEndsTheJob();
    void paperThatEndsInTheMiddleIsWaitedFor();
    void paperIsWaitedForInFront();
    void theWaitEnds();
    void theWaitEndsWithThePrinterMended();
    void timesBelowOneEnd_data();
    void timesBelowOneEnd();
    void progressGrowsToTheTotal();

    // ---- Cancelled
    void cancelAtEachByteLeavesThePrinterWhole();
    void cancelOfAStuckLineLeavesTheRest();
    void cancelWhileItIsConfirmedMeansSent();

    // ---- Turns
    void theTurnIsWaitedFor();
    void deletionInEachSignalIsSafe();
    void deletionInTheMiddleIsRepaired();
    void theNextJobFillsWhatACommandStillLacks_data();
    void theNextJobFillsWhatACommandStillLacks();
    void aRepairCountsWhenThePrinterHasAnswered_data();
    void aRepairCountsWhenThePrinterHasAnswered();
    void aPrinterThatObeysNoCommandIsFilledUp_data();
    void aPrinterThatObeysNoCommandIsFilledUp();
    void aLongFillingIsToldInFrontOfIt();
    void aJobMayGoWhenItTellsOfItsFilling_data();
    void aJobMayGoWhenItTellsOfItsFilling();
    void aStarThatCountsNoMarksIsFilledUp();
    void whatFillsAPrinterUpHasTimeToReachIt();
    void oneThatNeverAnswersInItsTurnIsFilledUpOnce();
    void oneThatAnswersAgainIsNotFilledUp();
    void whatMayBeLostIsRepaired_data();
    void whatMayBeLostIsRepaired();

    // ---- Asked in front of the first byte
    void itIsAskedOnceInFrontOfTheFirstByte();
    void aNoMeansNotBegun();
    void itIsNotAskedWhileThePrinterCanNotPrint();
    void itMayCancelTheJob();
    void itMayDeleteTheJob();
    void anEventLoopInItBeginsNothing();

    // ---- Tickets
    void aTicketIsTakenBack();
    void aTicketStaysIfAnotherJobHasPrinted();
    void aTicketThatWasTakenStays();
    void aTicketThatCanNotBeReachedLeavesTheResult();

    // ---- Lines of the system
    void overTcp();
    void overASerialLine();
    void theLineHasTimeWhileItPrints();
    void intoAFile();
};

void TestPrintJob::anEmptyDocumentIsNotBegun()
{
    Setting setting;
    setting.document = {};
    const auto job = setting.run();
    QCOMPARE(job->end.outcome, Outcome::NotBegun);
    QCOMPARE(job->end.reason, Reason::BadDocument);
    QVERIFY(setting.printer->got.isEmpty());
}

void TestPrintJob::aDocumentWithAnErrorIsNotBegun()
{
    Setting setting;
    setting.document.error = "block 2: no such code";
    const auto job = setting.run();
    QCOMPARE(job->end.reason, Reason::BadDocument);
    QCOMPARE(job->end.text, QString("block 2: no such code"));
}

void TestPrintJob::anAddressThatIsNoneIsNotBegun()
{
    Setting setting;
    setting.where = {};
    const auto job = setting.run();
    QCOMPARE(job->end.outcome, Outcome::NotBegun);
    QCOMPARE(job->end.reason, Reason::Lock);
    QVERIFY(!job->end.text.isEmpty());
}

void TestPrintJob::aLineThatDoesNotOpenIsNotBegun()
{
    Setting setting;
    auto job = setting.job();
    setting.line->failsToOpen = true;
    job->start();
    setting.finish(*job);
    QCOMPARE(job->end.outcome, Outcome::NotBegun);
    QCOMPARE(job->end.reason, Reason::Line);
    QCOMPARE(job->end.error.kind, TransportError::Kind::Refused);
    QCOMPARE(job->end.text, QString("it refuses"));
    QVERIFY(!setting.record().isOpen);
}

void TestPrintJob::aPrinterThatCanNotPrintGetsNothing_data()
{
    using Status = PrinterStatus;
    QTest::addColumn<QString>("model");
    QTest::addColumn<bool Printer::*>("trouble");
    QTest::addColumn<int>("flag");
    const std::tuple<const char *, bool Printer::*, Status::Flag> troubles[] = {
        {"paper", &Printer::isPaperOut, Status::PaperOut},
        {"cover", &Printer::isCoverOpen, Status::CoverOpen},
        {"off line", &Printer::isOffLine, Status::OffLine},
        {"heat", &Printer::isHot, Status::RecoverableError},
        {"cutter", &Printer::isCutterStuck, Status::CutterError},
        {"broken", &Printer::isBroken, Status::UnrecoverableError},
    };
    for (const char *model : {"GENERAL_EPSON_PROTOCOL", "TSP-TUP", "SWECOIN_TM_20XX"}) {
        for (const auto &[name, trouble, flag] : troubles) {
            // One of Swecoin's has no such state.
            if (flag != Status::OffLine || qstrcmp(model, "SWECOIN_TM_20XX") != 0)
                QTest::addRow("%s, %s", name, model) << QString(model) << trouble << int(flag);
        }
    }
}

void TestPrintJob::aPrinterThatCanNotPrintGetsNothing()
{
    QFETCH(QString, model);
    QFETCH(bool Printer::*, trouble);
    QFETCH(int, flag);
    Setting setting(profileOf(model));
    setting.options = {};
    setting.printer.get()->*trouble = true;
    const auto job = setting.run();
    QCOMPARE(job->end.outcome, Outcome::NotBegun);
    QCOMPARE(job->end.reason, Reason::Status);
    QVERIFY(job->end.status.has(PrinterStatus::Flag(flag)));
    QCOMPARE(job->end.text, job->end.status.text());
    QVERIFY(!setting.printer->got.contains("Total"));
    QCOMPARE(job->end.mostBytes, 0);
}

void TestPrintJob::aSilentPrinterIsNotBegun()
{
    Setting setting;
    setting.printer->isSilent = true;
    const auto job = setting.run();
    QCOMPARE(job->end.outcome, Outcome::NotBegun);
    QCOMPARE(job->end.reason, Reason::NoAnswer);
    QVERIFY(job->end.status.has(PrinterStatus::NoAnswer));
    QVERIFY(!setting.printer->got.contains("Total"));
}

void TestPrintJob::startTwiceRunsOnce()
{
    Setting setting;
    auto job = setting.job();
    job->start();
    job->start();
    setting.finish(*job);
    job->start();
    QTest::qWait(5);
    QCOMPARE(job->ends, 1);
    QCOMPARE(setting.printer->got.count("Total"), 1);
}

void TestPrintJob::cancelBeforeStartEndsTheJob()
{
    Setting setting;
    auto job = setting.job();
    job->cancel();
    job->start();
    setting.finish(*job);
    QCOMPARE(job->end.outcome, Outcome::NotBegun);
    QCOMPARE(job->end.reason, Reason::Cancelled);
    QVERIFY(setting.printer->got.isEmpty());
}

void TestPrintJob::theProofIsThatOfTheModel_data()
{
    QTest::addColumn<PrinterProfile>("profile");
    QTest::addColumn<int>("outcome");
    QTest::addRow("GS r") << profileOf("GENERAL_EPSON_PROTOCOL") << int(Outcome::Processed);
    QTest::addRow("GS ( H") << respondingPrinter() << int(Outcome::Printed);
    QTest::addRow("Star") << profileOf("TSP-TUP") << int(Outcome::Printed);
    QTest::addRow("Swecoin") << profileOf("SWECOIN_TM_20XX") << int(Outcome::Printed);
}

void TestPrintJob::theProofIsThatOfTheModel()
{
    QFETCH(PrinterProfile, profile);
    QFETCH(int, outcome);
    Setting setting(profile);
    setting.printer->dataAnswers = 1;
    if (profile.dialect() != Dialect::EscPos)
        setting.document.bytes = "Total 1\n";
    const auto job = setting.run();
    QCOMPARE(int(job->end.outcome), outcome);
    QCOMPARE(job->end.reason, Reason::None);
    QVERIFY(job->end.text.isEmpty());
    QCOMPARE(job->end.sentBytes, setting.document.bytes.size());
    QVERIFY(setting.hasWhole() || setting.printer->got.contains("Total 1\n"));
    QVERIFY(!setting.record().isOpen);
    QCOMPARE(setting.record().due, 0);
}

void TestPrintJob::anAnswerThatNeverComesMeansSent_data()
{
    QTest::addColumn<PrinterProfile>("profile");
    QTest::addRow("GS r") << profileOf("GENERAL_EPSON_PROTOCOL");
    QTest::addRow("GS ( H") << respondingPrinter();
    QTest::addRow("Star") << profileOf("TSP-TUP");
}

void TestPrintJob::anAnswerThatNeverComesMeansSent()
{
    QFETCH(PrinterProfile, profile);
    Setting setting(profile);
    setting.printer->holdsBack = true;
    setting.printer->countsMarks = false;
    const auto job = setting.run();
    QCOMPARE(job->end.outcome, Outcome::Sent);
    QCOMPARE(job->end.reason, Reason::NoConfirmation);
    QVERIFY(!job->end.text.isEmpty());
}

/// The printer may have been off, and have lost the cut with what it held: what it had printed
/// isn't to hang at the next receipt.
void TestPrintJob::whatIsNotConfirmedIsCutOff_data()
{
    QTest::addColumn<QString>("where");
    QTest::addColumn<bool>("isPaperOut");
    for (const char *where : {"serial:/dev/ttyS0", "tcp:192.0.2.1:9100"}) {
        QTest::addRow("no answer, %s", where) << where << false;
        QTest::addRow("paper out, %s", where) << where << true;
    }
}

void TestPrintJob::whatIsNotConfirmedIsCutOff()
{
    QFETCH(QString, where);
    QFETCH(bool, isPaperOut);
    Setting setting;
    setting.where = address(where);
    setting.printer->confirmations = isPaperOut ? 1 : 0;
    auto job = setting.job();
    setting.line->onTaken = [&](qint64) {
        if (setting.printer->got.contains("\x1Dr"))
            setting.printer->isPaperOut = isPaperOut;
    };
    job->start();
    setting.finish(*job);
    QCOMPARE(job->end.outcome, Outcome::Sent);
    QVERIFY(setting.record().isOpen);
    setting.printer->isPaperOut = false;
    setting.printer->confirmations = 1;
    const int before = setting.printer->got.size();
    const auto next = setting.run();
    QVERIFY(
        next->notes.first().startsWith("a job before this one was cut off or wasn't confirmed"));
    const int cut = setting.printer->got.indexOf("\x1DV", before);
    QVERIFY(cut > before && cut < setting.printer->got.indexOf("Total", before));
    QVERIFY(setting.hasWhole(cut));
    QCOMPARE(setting.run()->end.outcome, Outcome::Processed);
    QVERIFY(!setting.record().isOpen);
}

/// Else each of its receipts would be followed by an empty one.
void TestPrintJob::nothingIsCutOffBehindOneThatNeverConfirms()
{
    Setting setting;
    setting.printer->confirmations = 0;
    setting.run();
    setting.run();
    QVERIFY(!setting.record().isOpen);
    const int before = setting.printer->got.count("\x1DV");
    QCOMPARE(setting.run()->end.reason, Reason::NoConfirmation);
    QCOMPARE(setting.printer->got.count("\x1DV"), before + 1);
}

void TestPrintJob::anAnswerThatComesTwiceCountsOnce()
{
    Setting setting;
    setting.printer->confirmations = 2;
    const auto job = setting.run();
    QCOMPARE(job->end.outcome, Outcome::Processed);
    QCOMPARE(setting.record().due, 0);
}

void TestPrintJob::anErrorBehindTheLastByteMeansSent()
{
    Setting setting;
    auto job = setting.job();
    setting.line->onTaken = [&setting](qint64) {
        if (setting.printer->got.contains("\x1Dr"))
            setting.printer->isPaperOut = true;
    };
    job->start();
    setting.finish(*job);
    QCOMPARE(job->end.outcome, Outcome::Sent);
    QCOMPARE(job->end.reason, Reason::Status);
    QVERIFY(job->end.status.has(PrinterStatus::PaperOut));
}

void TestPrintJob::aLateAnswerOfAJobBeforeProvesNothing()
{
    Setting setting;
    setting.printer->holdsBack = true;
    QCOMPARE(setting.run()->end.outcome, Outcome::Sent);
    QCOMPARE(setting.record().due, 1);

    // The answer to the first job's question comes while the second one's is awaited.
    auto job = setting.job();
    setting.line->onTaken = [&setting](qint64) {
        if (setting.printer->got.count("\x1Dr") == 2 && !setting.printer->heldBack.isEmpty()) {
            setting.printer->heldBack.clear();
            QTimer::singleShot(5, setting.line, [line = setting.line] {
                Q_EMIT line->received(QByteArray(1, '\0'));
            });
        }
    };
    job->start();
    setting.finish(*job);
    QCOMPARE(job->end.outcome, Outcome::Sent);
    QCOMPARE(job->end.reason, Reason::NoConfirmation);
}

void TestPrintJob::lostAnswersSpoilOneJobAlone()
{
    Setting setting;
    setting.printer->knowsAutomatic = false;
    setting.printer->holdsBack = true;
    QCOMPARE(setting.run()->end.outcome, Outcome::Sent);
    setting.printer->holdsBack = false;
    QCOMPARE(setting.run()->end.outcome, Outcome::Sent);
    QCOMPARE(setting.run()->end.outcome, Outcome::Processed);
    QCOMPARE(setting.printer->got.count("Total"), 3);
}

void TestPrintJob::lostAnswersSpoilNoJobOfAPrinterThatTells()
{
    Setting setting;
    setting.printer->holdsBack = true;
    QCOMPARE(setting.run()->end.outcome, Outcome::Sent);
    QCOMPARE(setting.record().due, 1);
    setting.printer->holdsBack = false;
    QCOMPARE(setting.run()->end.outcome, Outcome::Processed);
    QCOMPARE(setting.record().due, 0);
}

void TestPrintJob::lateAnswersInFrontOfTheAutomaticStatusCountForNothing()
{
    for (int late = 0; late < 4; ++late) {
        Setting setting;
        for (int i = 0; i < late; ++i) {
            setting.printer->holdsBack = true;
            setting.run();
        }
        // The printer was asked in between, too, whether it obeys commands.
        const int due = setting.record().due;
        QCOMPARE(due, late < 2 ? late : late + 1);
        // They come with the answers of the next job, in front of its automatic status.
        setting.options.confirmMilliseconds = 2000;
        auto job = setting.job();
        setting.line->onTaken = [&setting](qint64) {
            if (setting.printer->got.endsWith(QByteArray("\x1Dr\x01", 3)))
                QTimer::singleShot(0, setting.line, [&setting] {
                    Q_EMIT setting.line->received(std::exchange(setting.printer->heldBack, {}));
                });
        };
        setting.printer->holdsBack = true;
        setting.printer->heldBack = QByteArray(due, '\0');
        job->start();
        setting.finish(*job);
        QCOMPARE(job->end.outcome, Outcome::Processed);
    }
}

void TestPrintJob::dataThatStaysMeansSent()
{
    Setting setting(profileOf("SWECOIN_TM_20XX"));
    setting.document.bytes = "Total 1\n";
    setting.printer->dataAnswers = 1'000'000;
    auto job = setting.job();
    job->start();
    setting.finish(*job);
    // Data exists already in front of the job, which doesn't keep it from being sent.
    QCOMPARE(job->end.outcome, Outcome::Sent);
    QCOMPARE(job->end.reason, Reason::NoConfirmation);
}

void TestPrintJob::aStarThatWasOffInTheMiddleIsNotSaidToHavePrinted()
{
    for (int counter = 0; counter < 32; ++counter) {
        Setting setting(profileOf("TSP-TUP"));
        setting.document.bytes = "\x1B@Total 1\n";
        setting.printer->counter = counter;
        const auto whole = setting.run();
        QCOMPARE(whole->end.outcome, Outcome::Printed);
        setting.printer->counter = counter;
        auto job = setting.job();
        setting.line->perTurn = 1;
        const int before = setting.printer->got.size();
        bool wasOff = false;
        setting.line->onTaken = [&](qint64) {
            if (!wasOff && setting.printer->got.indexOf("Total", before) >= 0) {
                wasOff = true;
                setting.printer->counter = 0;
            }
        };
        job->start();
        setting.finish(*job);
        QVERIFY(wasOff);
        QVERIFY2(job->end.outcome == Outcome::Sent, QByteArray::number(counter));
    }
}

void TestPrintJob::aStarsMarksOfJobsBeforeProveNothing()
{
    Setting setting(profileOf("TSP-TUP"));
    setting.document.bytes = "\x1B@Total 1\n";
    setting.printer->countsMarks = false;
    QCOMPARE(setting.run()->end.outcome, Outcome::Sent);
    QCOMPARE(setting.record().counter, 7);
    // Those that were sent are counted now, and this job's are not.
    auto job = setting.job();
    setting.line->onTaken = [&setting](qint64) { setting.printer->counter = 7; };
    job->start();
    setting.finish(*job);
    QCOMPARE(job->end.outcome, Outcome::Sent);
}

void TestPrintJob::withoutConfirmationItIsSent()
{
    Setting setting;
    setting.options.confirms = false;
    const auto job = setting.run();
    QCOMPARE(job->end.outcome, Outcome::Sent);
    QCOMPARE(job->end.reason, Reason::None);
    QVERIFY(!setting.printer->got.contains("\x1Dr"));
    QVERIFY(!setting.printer->hasAutomatic);
    QCOMPARE(setting.record().due, 0);
}

void TestPrintJob::withoutQuestionsNothingIsAsked()
{
    Setting setting;
    setting.options.asks = false;
    const auto job = setting.run();
    QCOMPARE(job->end.outcome, Outcome::Sent);
    QCOMPARE(setting.printer->got, setting.document.bytes);
}

void TestPrintJob::aFileIsSentAndAskedNothing()
{
    Setting setting;
    setting.where = address("file:" + setting.folder.filePath("receipts.bin"));
    QCOMPARE(setting.run()->end.outcome, Outcome::Sent);
    QCOMPARE(setting.printer->got, setting.document.bytes);
}

void TestPrintJob::automaticStatusIsSwitchedOffAgain()
{
    Setting setting;
    QCOMPARE(setting.run()->end.outcome, Outcome::Processed);
    QCOMPARE(setting.printer->got.count("\x1D"
                                        "a"),
             2);
    QVERIFY(!setting.printer->hasAutomatic);
    // Behind the reset, which would switch it off.
    QVERIFY(setting.printer->got.indexOf("\x1B@") < setting.printer->got.indexOf("\x1D"
                                                                                 "a"));
}

void TestPrintJob::aLineThatIsLostBehindTheLastByteMeansSent()
{
    Setting setting;
    setting.printer->holdsBack = true;
    auto job = setting.job();
    setting.line->onTaken = [&setting](qint64 taken) {
        if (setting.printer->got.contains("\x1Dr"))
            setting.line->breaksAt = taken;
    };
    job->start();
    TRY(job->ends > 0);
    QCOMPARE(job->end.outcome, Outcome::Sent);
    QVERIFY(job->end.reason == Reason::Line || job->end.reason == Reason::NoConfirmation);
}

void TestPrintJob::lossAtEachByteIsToldAndRepaired()
{
    const Setting whole;
    const int questions = 13;  // a zero byte, DLE EOT 1 to 4
    const int automatic = 3;   // GS a
    const int documentSize = whole.document.bytes.size();
    for (int at = 1; at < questions + automatic + documentSize; ++at) {
        Setting setting;
        setting.options = patient();
        auto job = setting.job();
        setting.line->perTurn = 1 + at % 5;
        setting.line->breaksAt = at;
        job->start();
        setting.finish(*job);
        const QByteArray context = "byte " + QByteArray::number(at);
        if (at <= questions) {
            QVERIFY2(job->end.outcome == Outcome::NotBegun || job->end.sentBytes == 0, context);
        } else {
            QVERIFY2(job->end.outcome == Outcome::PartlySent, context);
            const int taken = at - questions;
            const int certain = taken <= 2 ? taken : std::max(2, taken - automatic);
            QVERIFY2(job->end.sentBytes <= certain, context);
            QVERIFY2(job->end.mostBytes >= certain, context);
        }
        QVERIFY2(job->end.reason == Reason::Line, context);

        const int before = setting.printer->got.size();
        const auto next = setting.run();
        QVERIFY2(next->end.outcome == Outcome::Processed, context);
        QVERIFY2(setting.hasWhole(before), context);
        // What the printer makes of all: the end is the second document, command by command.
        const auto wanted = commandsIn(setting.document.bytes.mid(2), setting.profile);
        const auto got = commandsIn(setting.printer->got, setting.profile);
        const int first = got.lastIndexOf(wanted.first());
        QVERIFY2(first >= 0, context);
        QVERIFY2(got.contains(wanted.at(1)), context);
        QVERIFY2(!setting.record().isOpen, context);
    }
}

// The record that is kept in front of each piece takes a while on a busy disk.
void TestPrintJob::whatHandingOverTakesIsNotTheLines()
{
    Setting setting;
    setting.options.asks = false;
    auto job = setting.job();
    setting.line->handingTakes = 2 * setting.options.transport.writeMilliseconds;
    job->start();
    setting.finish(*job);
    QCOMPARE(job->end.outcome, Outcome::Sent);
    QCOMPARE(setting.printer->got, setting.document.bytes);
}

void TestPrintJob::aStuckLineEndsTheJob()
{
    Setting setting;
    auto job = setting.job();
    setting.line->stopsAt = 26;
    job->start();
    setting.finish(*job);
    QCOMPARE(job->end.outcome, Outcome::PartlySent);
    QCOMPARE(job->end.reason, Reason::Line);
    QCOMPARE(job->end.error.kind, TransportError::Kind::TimedOut);
    QCOMPARE(job->end.sentBytes, 10);  // 13 of questions, 3 of GS a
    QCOMPARE(job->end.block, 2);
    QCOMPARE(job->end.line, 0);
    QVERIFY(setting.record().isOpen);
    QCOMPARE(setting.record().last.isEmpty(), false);
}

void TestPrintJob::paperThatEndsInTheMiddleEndsTheJob()
{
    Setting setting;
    auto job = setting.job();
    setting.line->stopsAt = 26;
    setting.line->onTaken = [&setting](qint64 taken) {
        if (taken == 26) {
            setting.printer->isPaperOut = true;
            Q_EMIT setting.line->received(setting.printer->automatic());
        }
    };
    job->start();
    setting.finish(*job);
    QCOMPARE(job->end.outcome, Outcome::PartlySent);
    QCOMPARE(job->end.reason, Reason::Status);
    QVERIFY(job->end.status.has(PrinterStatus::PaperOut));
}

void TestPrintJob::paperThatEndsInTheMiddleIsWaitedFor()
{
    Setting setting;
    setting.options.waitMilliseconds = PrintJobOptions::forEver;
    setting.options.transport.writeMilliseconds = 10;
    auto job = setting.job();
    setting.line->stopsAt = 26;
    setting.line->onTaken = [&setting](qint64 taken) {
        if (taken != 26)
            return;
        setting.line->onTaken = nullptr;
        QTimer::singleShot(0, setting.line, [&setting] {
            setting.printer->isPaperOut = true;
            Q_EMIT setting.line->received(setting.printer->automatic());
        });
        QTimer::singleShot(60, setting.line, [&setting] {
            setting.printer->isPaperOut = false;
            Q_EMIT setting.line->received(setting.printer->automatic());
            setting.line->goOn();
        });
    };
    job->start();
    setting.finish(*job);
    QCOMPARE(job->end.outcome, Outcome::Processed);
    QCOMPARE(setting.printer->got.count("Total"), 1);
}

void TestPrintJob::paperIsWaitedForInFront()
{
    Setting setting;
    setting.options.waitMilliseconds = PrintJobOptions::forEver;
    setting.printer->isPaperOut = true;
    auto job = setting.job();
    job->start();
    TRY(setting.printer->questions > 12);
    QCOMPARE(job->ends, 0);
    QVERIFY(!setting.printer->got.contains("Total"));
    setting.printer->isSilent = true;  // switched off, to change the paper
    QTest::qWait(50);
    setting.printer->isSilent = false;
    setting.printer->isPaperOut = false;
    setting.finish(*job);
    QCOMPARE(job->end.outcome, Outcome::Processed);
}

void TestPrintJob::theWaitEnds()
{
    Setting setting;
    setting.options.waitMilliseconds = 20;
    setting.printer->isPaperOut = true;
    const auto job = setting.run();
    QCOMPARE(job->end.outcome, Outcome::NotBegun);
    QCOMPARE(job->end.reason, Reason::Status);
}

void TestPrintJob::theWaitEndsWithThePrinterMended()
{
    Setting setting;
    setting.options.waitMilliseconds = 1000;
    setting.options.confirmMilliseconds = 60000;
    setting.printer->holdsBack = true;
    auto job = setting.job();
    const auto tell = [&setting](bool isPaperOut) {
        setting.printer->isPaperOut = isPaperOut;
        Q_EMIT setting.line->received(setting.printer->automatic());
    };
    setting.line->perTurn = 1;
    setting.line->onTaken = [&](qint64 taken) {
        if (taken == 26)
            QTimer::singleShot(0, setting.line, [tell] { tell(true); });
    };
    job->start();
    TRY(setting.printer->got.contains("\x1Dr"));
    tell(false);
    QTest::qWait(1200);  // the printer goes on for longer than it would have been waited for
    QCOMPARE(job->ends, 0);
    Q_EMIT setting.line->received(setting.printer->heldBack);
    setting.finish(*job);
    QCOMPARE(job->end.outcome, Outcome::Processed);
}

void TestPrintJob::timesBelowOneEnd_data()
{
    QTest::addColumn<bool>("isSilent");
    QTest::addColumn<int>("outcome");
    QTest::newRow("of the status") << true << int(Outcome::NotBegun);
    QTest::newRow("of the confirmation") << false << int(Outcome::Sent);
}

void TestPrintJob::timesBelowOneEnd()
{
    QFETCH(bool, isSilent);
    QFETCH(int, outcome);
    Setting setting;
    setting.printer->isSilent = isSilent;
    setting.printer->holdsBack = true;
    (isSilent ? setting.options.statusMilliseconds : setting.options.confirmMilliseconds) = -1;
    setting.options.pollMilliseconds = -1;
    const auto job = setting.run();
    QCOMPARE(int(job->end.outcome), outcome);
}

void TestPrintJob::progressGrowsToTheTotal()
{
    Setting setting;
    setting.document.bytes += QByteArray(20000, 'x');
    auto job = setting.job();
    setting.line->perTurn = 700;
    job->start();
    setting.finish(*job);
    QVERIFY(job->steps.size() > 3);
    QVERIFY(std::is_sorted(job->steps.begin(), job->steps.end()));
    QCOMPARE(job->steps.last(), setting.document.bytes.size());
    QVERIFY(setting.hasWhole());
}

void TestPrintJob::cancelAtEachByteLeavesThePrinterWhole()
{
    for (int at = 13; at < 51; ++at) {
        Setting setting;
        setting.where = address("serial:/dev/ttyS0");
        setting.document.bytes += QByteArray(4000, 'y') + "\n";
        setting.options = patient();
        setting.options.stepBytes = 512;
        auto job = setting.job();
        setting.line->perTurn = 1;
        bool isCancelled = false;
        setting.line->onTaken = [&](qint64 taken) {
            if (taken == at && !isCancelled) {
                isCancelled = true;
                QTimer::singleShot(0, job.get(), [&job] { job->cancel(); });
            }
        };
        job->start();
        setting.finish(*job);
        const QByteArray context = "byte " + QByteArray::number(at);
        QVERIFY2(job->end.outcome == Outcome::PartlySent, context);
        QVERIFY2(job->end.reason == Reason::Cancelled, context);
        QVERIFY2(setting.printer->got.size() < 2000, context);
        // Reset and cut behind whole commands.
        const auto commands = commandsIn(setting.printer->got, setting.profile);
        QVERIFY2(commands.last() == QByteArray("\x1DV\x01", 3), context);
        QVERIFY2(!setting.record().isOpen, context);
    }
}

void TestPrintJob::cancelOfAStuckLineLeavesTheRest()
{
    Setting setting;
    setting.options.transport.writeMilliseconds = 0;
    auto job = setting.job();
    setting.line->stopsAt = 30;
    setting.line->onTaken = [&](qint64 taken) {
        if (taken == 30)
            QTimer::singleShot(5, job.get(), [&job] { job->cancel(); });
    };
    job->start();
    setting.finish(*job);
    QCOMPARE(job->end.outcome, Outcome::PartlySent);
    QCOMPARE(job->end.reason, Reason::Cancelled);
    QVERIFY(setting.record().isOpen);
    QVERIFY(setting.record().fill > 0);
}

void TestPrintJob::cancelWhileItIsConfirmedMeansSent()
{
    Setting setting;
    setting.options.confirmMilliseconds = 60000;
    setting.printer->holdsBack = true;
    auto job = setting.job();
    job->start();
    TRY(setting.printer->got.contains("\x1Dr"));
    QTest::qWait(5);
    job->cancel();
    setting.finish(*job);
    QCOMPARE(job->end.outcome, Outcome::Sent);
    QCOMPARE(job->end.reason, Reason::Cancelled);
    QCOMPARE(setting.record().due, 1);
}

void TestPrintJob::theTurnIsWaitedFor()
{
    Setting setting;
    Lock other(setting.where, setting.folder.path());
    QVERIFY(other.waitFor(500));
    auto job = setting.job();
    job->start();
    TRY(!job->places.isEmpty());
    QCOMPARE(job->places.first(), 1);
    QVERIFY(setting.printer->got.isEmpty());
    other.release();
    setting.finish(*job);
    QCOMPARE(job->end.outcome, Outcome::Processed);
}

void TestPrintJob::deletionInEachSignalIsSafe()
{
    for (int which = 0; which < 4; ++which) {
        Setting setting;
        auto job = setting.job();
        bool isGone = false;
        const auto remove = [&] {
            isGone = true;
            job.reset();
        };
        if (which == 0)
            connect(job.get(), &PrintJob::statusChanged, job.get(), remove);
        else if (which == 1)
            connect(job.get(), &PrintJob::progress, job.get(), remove);
        else if (which == 2)
            connect(job.get(), &PrintJob::finished, job.get(), remove);
        else
            connect(job.get(), &PrintJob::note, job.get(), remove);
        if (which == 3) {
            Lock lock(setting.where, setting.folder.path());
            QVERIFY(lock.waitFor(500));
            QVERIFY(lock.setRecord("of another version"));
        }
        job->start();
        TRY(isGone);
        QTest::qWait(3);
        const int before = setting.printer->got.size();
        // An answer that was lost with the job makes the next one say less.
        QVERIFY(setting.run()->end.isSent());
        QVERIFY(setting.hasWhole(before));
        QCOMPARE(setting.run()->end.outcome, Outcome::Processed);
    }
}

void TestPrintJob::deletionInTheMiddleIsRepaired()
{
    Setting setting;
    auto job = setting.job();
    setting.line->stopsAt = 30;  // within the picture
    job->start();
    TRY(setting.printer->got.size() == 30);
    job.reset();
    QVERIFY(setting.record().isOpen);
    const auto next = setting.run();
    QCOMPARE(next->end.outcome, Outcome::Processed);
    QCOMPARE(next->notes.size(), 1);
    QVERIFY(setting.hasWhole(30));
    const auto commands = commandsIn(setting.printer->got, setting.profile);
    QCOMPARE(commands.count(setting.document.bytes.mid(10, 24)), 1);
}

/// Else the printer takes the next receipt, with its reset, for the rest of a picture.
void TestPrintJob::theNextJobFillsWhatACommandStillLacks_data()
{
    QTest::addColumn<QString>("where");
    QTest::addColumn<int>("stop");
    for (const char *where : {"serial:/dev/ttyS0", "tcp:192.0.2.1:9100"}) {
        // The picture is in the bytes from 26 to 2034.
        for (const int stop : {27, 30, 33, 34, 1000, 2033})
            QTest::addRow("%s, byte %d", where, stop) << where << stop;
    }
}

void TestPrintJob::theNextJobFillsWhatACommandStillLacks()
{
    QFETCH(QString, where);
    QFETCH(int, stop);
    constexpr int pictureEnd = 2034;
    Setting setting;
    setting.options = {};
    setting.where = address(where);
    const QByteArray picture = QByteArray("\x1Dv0\0\x02\0\xE8\x03", 8) + QByteArray(2000, 'X');
    setting.document.bytes = "\x1B@Total 1\n" + picture + "Thanks\n\x1DV\x01";
    auto job = setting.job();
    setting.line->stopsAt = stop;
    job->start();
    TRY(setting.printer->got.size() == stop);
    job.reset();
    const auto next = setting.run();
    QCOMPARE(next->end.outcome, Outcome::Processed);
    const QByteArray filling(pictureEnd - stop, '\0');
    QVERIFY(setting.printer->got.mid(stop).startsWith(filling));
    // What the printer makes of all: one picture of the two is the receipt's.
    const auto commands = commandsIn(setting.printer->got, setting.profile);
    QCOMPARE(commands.count(picture), 1);
    QCOMPARE(commands.mid(commands.indexOf(picture) + 1, 2),
             (QVector<QByteArray>{"\n", "\x1DV\x01"}));
    QVERIFY(setting.hasWhole(stop));
}

/// What a line has taken may be lost with its connection, or with the printer's power.
void TestPrintJob::aRepairCountsWhenThePrinterHasAnswered_data()
{
    QTest::addColumn<QString>("where");
    QTest::newRow("network") << "tcp:192.0.2.1:9100";
    QTest::newRow("device") << "device:/dev/usb/lp0";
    QTest::newRow("serial line") << "serial:/dev/ttyS0";
}

void TestPrintJob::aRepairCountsWhenThePrinterHasAnswered()
{
    QFETCH(QString, where);
    Setting setting;
    setting.where = address(where);
    auto job = setting.job();
    setting.line->stopsAt = 30;  // within the picture
    job->start();
    TRY(setting.printer->got.size() == 30);
    job.reset();
    setting.printer->isSilent = true;
    QCOMPARE(setting.run()->end.reason, Reason::NoAnswer);
    QVERIFY(setting.record().isOpen);
    setting.printer->isSilent = false;
    const int before = setting.printer->got.size();
    const auto next = setting.run();
    QCOMPARE(next->end.outcome, Outcome::Processed);
    QCOMPARE(next->notes.size(), 1);
    QVERIFY(setting.hasWhole(before));
    QVERIFY(!setting.record().isOpen);
}

/// It has the bytes, but may lose them: a network when the job has left it, all with the power.
void TestPrintJob::whatMayBeLostIsRepaired_data()
{
    QTest::addColumn<QString>("where");
    QTest::addColumn<bool>("isCancelled");
    for (const bool isCancelled : {false, true}) {
        const char *what = isCancelled ? "cancelled" : "paper out";
        QTest::addRow("network, %s", what) << "tcp:192.0.2.1:9100" << isCancelled;
        QTest::addRow("device, %s", what) << "device:/dev/usb/lp0" << isCancelled;
        QTest::addRow("serial line, %s", what) << "serial:/dev/ttyS0" << isCancelled;
    }
}

void TestPrintJob::whatMayBeLostIsRepaired()
{
    QFETCH(QString, where);
    QFETCH(bool, isCancelled);
    Setting setting;
    setting.where = address(where);
    setting.options.confirmMilliseconds = 60000;
    setting.printer->holdsBack = true;
    auto job = setting.job();
    job->start();
    TRY(setting.printer->got.contains("\x1Dr"));
    QTest::qWait(5);
    if (isCancelled) {
        job->cancel();
    } else {
        setting.printer->isPaperOut = true;
        Q_EMIT setting.line->received(setting.printer->automatic());
    }
    setting.finish(*job);
    QCOMPARE(job->end.outcome, Outcome::Sent);
    QCOMPARE(job->end.reason, isCancelled ? Reason::Cancelled : Reason::Status);
    QVERIFY(setting.record().isOpen);
    setting.printer->holdsBack = false;
    setting.printer->isPaperOut = false;
    const int before = setting.printer->got.size();
    QVERIFY(setting.run()->end.isSent());
    QVERIFY(setting.hasWhole(before));
    QVERIFY(!setting.record().isOpen);
}

/// Bytes of a picture were lost on the line, and it waits for them.
void TestPrintJob::aPrinterThatObeysNoCommandIsFilledUp_data()
{
    QTest::addColumn<QString>("where");
    QTest::addColumn<QString>("time");
    // However slow it is: half of the filling would leave it deaf.
    QTest::newRow("slow line") << "serial:/dev/ttyS0?baud=1200"
                               << ": at 1200 baud in 137 s";
    QTest::newRow("usual line") << "serial:/dev/ttyS0?baud=9600"
                                << ": at 9600 baud in 17 s";
    QTest::newRow("fast line") << "serial:/dev/ttyS0?baud=115200"
                               << ": at 115200 baud in 1 s";
    QTest::newRow("network") << "tcp:192.0.2.1:9100"
                             << "";
}

void TestPrintJob::aPrinterThatObeysNoCommandIsFilledUp()
{
    QFETCH(QString, where);
    QFETCH(QString, time);
    const QByteArray filling(16384, '\0');
    Setting setting;
    setting.where = address(where);
    setting.printer->confirmations = 0;
    QCOMPARE(setting.run()->end.reason, Reason::NoConfirmation);
    const int before = setting.printer->got.size();
    const auto job = setting.job();
    setting.line->onTaken = [&](qint64) {
        if (setting.printer->got.indexOf(filling, before) >= 0)
            setting.printer->confirmations = 1;
    };
    job->start();
    setting.finish(*job);
    QCOMPARE(job->end.outcome, Outcome::Processed);
    QCOMPARE(job->notes.size(), 3);
    QCOMPARE(job->notes.at(1),
             "what a job before this one lacks is filled up first, by 16384 zero bytes" + time);
    QVERIFY(job->notes.last().startsWith("the printer answered, but obeyed no command"));
    QVERIFY(setting.printer->got.indexOf(filling + "\x1B=\x01", before) >= 0);
    QVERIFY(setting.hasWhole(before + filling.size()));
    QCOMPARE(setting.record().reading, JobRecord::Reads);
}

namespace {

/// Bytes of a picture of 2 by 8000 bytes that the line takes before the job is gone.
constexpr int cutOffAt = 100;

/// Leaves most of a picture to be filled up.
void cutOffInAPicture(Setting &setting)
{
    const QByteArray picture = QByteArray("\x1Dv0\0\x02\0\x40\x1F", 8) + QByteArray(16000, 'X');
    setting.document.bytes = "\x1B@Total 1\n" + picture + "Thanks\n\x1DV\x01";
    auto job = setting.job();
    setting.line->stopsAt = cutOffAt;
    job->start();
    TRY(setting.printer->got.size() == cutOffAt);
}

}  // namespace

/// It takes a while, in which nothing is printed.
void TestPrintJob::aLongFillingIsToldInFrontOfIt()
{
    Setting setting;
    setting.options = patient();
    cutOffInAPicture(setting);
    const auto job = setting.job();
    int gotWhenTold = -1;
    connect(job.get(), &PrintJob::note, job.get(), [&](const QString &text) {
        if (text.startsWith("what a job before this one lacks is filled up first, by "))
            gotWhenTold = setting.printer->got.size();
    });
    job->start();
    setting.finish(*job);
    QCOMPARE(job->end.outcome, Outcome::Processed);
    QCOMPARE(gotWhenTold, cutOffAt);
    QCOMPARE(job->notes.size(), 2);
}

void TestPrintJob::aJobMayGoWhenItTellsOfItsFilling_data()
{
    QTest::addColumn<bool>("isDeleted");
    QTest::newRow("deleted") << true;
    QTest::newRow("cancelled") << false;
}

void TestPrintJob::aJobMayGoWhenItTellsOfItsFilling()
{
    QFETCH(bool, isDeleted);
    Setting setting;
    setting.options = patient();
    cutOffInAPicture(setting);
    auto job = setting.job();
    int times = 0;
    connect(job.get(), &PrintJob::note, job.get(), [&] {
        times++;
        if (isDeleted)
            job.reset();
        else
            job->cancel();
    });
    job->start();
    TRY(times > 0 && (!job || job->ends > 0));
    if (job)
        QCOMPARE(job->end.reason, Reason::Cancelled);
    job.reset();
    QVERIFY(setting.record().isOpen);
    QCOMPARE(setting.run()->end.outcome, Outcome::Processed);
    QCOMPARE(times, 1);
    QVERIFY(setting.hasWhole(cutOffAt));
}

void TestPrintJob::aStarThatCountsNoMarksIsFilledUp()
{
    Setting setting(profileOf("TSP-TUP"));
    setting.where = address("serial:/dev/ttyS0?baud=9600");
    setting.document.bytes = "Total 1\n";
    setting.printer->countsMarks = false;
    QCOMPARE(setting.run()->end.reason, Reason::NoConfirmation);
    setting.printer->countsMarks = true;
    const int before = setting.printer->got.size();
    const auto job = setting.run();
    QVERIFY(job->end.isSent());
    // Bytes that were changed may have told it to print no more (DC3).
    QVERIFY(setting.printer->got.indexOf(QByteArray(16384, '\0') + "\x11\x1B@", before) >= 0);
    QVERIFY(setting.hasWhole(before + 16384));
    QCOMPARE(setting.run()->end.outcome, Outcome::Printed);
    QCOMPARE(setting.record().reading, JobRecord::Reads);
}

/// A network takes it at once, and hands it on slowly.
void TestPrintJob::whatFillsAPrinterUpHasTimeToReachIt()
{
    Setting setting(profileOf("TSP-TUP"));
    setting.document.bytes = "Total 1\n";
    setting.printer->countsMarks = false;
    QCOMPARE(setting.run()->end.reason, Reason::NoConfirmation);
    setting.printer->countsMarks = true;
    const QByteArray filling(16384, '\0');
    const auto job = setting.job();
    bool isUnderWay = false;
    setting.line->onTaken = [&](qint64) {
        if (isUnderWay || !setting.printer->got.contains(filling))
            return;
        isUnderWay = setting.printer->isSilent = true;
        QTimer::singleShot(5 * setting.options.statusMilliseconds, setting.line, [&] {
            setting.printer->isSilent = false;
            Q_EMIT setting.line->received(setting.printer->take("\x1B\x06\x01"));
        });
    };
    job->start();
    setting.finish(*job);
    QVERIFY(isUnderWay);
    QVERIFY(job->end.isSent());
}

void TestPrintJob::oneThatNeverAnswersInItsTurnIsFilledUpOnce()
{
    Setting setting;
    setting.where = address("serial:/dev/ttyS0?baud=19200");
    setting.printer->confirmations = 0;
    const QByteArray filling(16384, '\0');
    for (const bool isFilled : {false, true, false, false}) {
        const int before = setting.printer->got.size();
        QCOMPARE(setting.run()->end.outcome, Outcome::Sent);
        QCOMPARE(setting.printer->got.indexOf(filling, before) >= 0, isFilled);
    }
    setting.printer->confirmations = 1;
    QVERIFY(setting.run()->end.isSent());
    QCOMPARE(setting.run()->end.outcome, Outcome::Processed);
    QCOMPARE(setting.record().reading, JobRecord::Reads);
}

void TestPrintJob::oneThatAnswersAgainIsNotFilledUp()
{
    Setting setting;
    setting.printer->confirmations = 0;
    QCOMPARE(setting.run()->end.outcome, Outcome::Sent);
    QCOMPARE(setting.record().reading, JobRecord::Unread);
    setting.printer->confirmations = 1;
    const int before = setting.printer->got.size();
    const auto job = setting.run();
    QVERIFY(job->end.isSent());
    QVERIFY(!setting.printer->got.mid(before).contains(QByteArray(100, '\0')));
}

void TestPrintJob::itIsAskedOnceInFrontOfTheFirstByte()
{
    Setting setting;
    int asked = 0;
    setting.options.beforeSending = [&] {
        asked++;
        return !setting.printer->got.contains("Total");
    };
    const auto job = setting.run();
    QCOMPARE(job->end.outcome, Outcome::Processed);
    QCOMPARE(asked, 1);
    QVERIFY(setting.hasWhole());
}

void TestPrintJob::aNoMeansNotBegun()
{
    Setting setting;
    setting.options.beforeSending = [] { return false; };
    const auto job = setting.run();
    QCOMPARE(job->end.outcome, Outcome::NotBegun);
    QCOMPARE(job->end.reason, Reason::Refused);
    QCOMPARE(job->end.text, QString("refused in front of the first byte"));
    QCOMPARE(job->end.mostBytes, 0);
    QVERIFY(!setting.printer->got.contains("Total"));
    QVERIFY(!setting.record().isOpen);
}

void TestPrintJob::itIsNotAskedWhileThePrinterCanNotPrint()
{
    Setting setting;
    int asked = 0;
    setting.options.beforeSending = [&] { return ++asked > 0; };
    setting.printer->isPaperOut = true;
    QCOMPARE(setting.run()->end.reason, Reason::Status);
    QCOMPARE(asked, 0);
    setting.options.waitMilliseconds = PrintJobOptions::forEver;
    const auto job = setting.job();
    job->start();
    TRY(setting.printer->questions > 12);
    QCOMPARE(asked, 0);
    setting.printer->isPaperOut = false;
    Setting::finish(*job);
    QCOMPARE(job->end.outcome, Outcome::Processed);
    QCOMPARE(asked, 1);
}

void TestPrintJob::itMayCancelTheJob()
{
    Setting setting;
    PrintJob *cancelled = nullptr;
    setting.options.beforeSending = [&] {
        cancelled->cancel();
        return true;
    };
    const auto job = setting.job();
    cancelled = job.get();
    job->start();
    Setting::finish(*job);
    QCOMPARE(job->end.outcome, Outcome::NotBegun);
    QCOMPARE(job->end.reason, Reason::Cancelled);
    QVERIFY(!setting.printer->got.contains("Total"));
}

void TestPrintJob::itMayDeleteTheJob()
{
    Setting setting;
    std::unique_ptr<Job> job;
    bool isAsked = false;
    setting.options.beforeSending = [&] {
        job.reset();
        return isAsked = true;
    };
    job = setting.job();
    job->start();
    TRY(isAsked);
    QTest::qWait(5);
    QVERIFY(!setting.printer->got.contains("Total"));
    setting.options.beforeSending = nullptr;
    QCOMPARE(setting.run()->end.outcome, Outcome::Processed);
}

void TestPrintJob::anEventLoopInItBeginsNothing()
{
    Setting setting;
    int asked = 0;
    setting.options.beforeSending = [&] {
        asked++;
        QTest::qWait(2 * setting.options.statusMilliseconds);
        return !setting.printer->got.contains("Total");
    };
    const auto job = setting.run();
    QCOMPARE(job->end.outcome, Outcome::Processed);
    QCOMPARE(asked, 1);
}

void TestPrintJob::aTicketIsTakenBack()
{
    Setting setting;
    setting.document.retractAfterSeconds = 5;
    setting.document.retraction = QByteArray(
        "\x1D"
        "e\x02",
        3);
    auto job = setting.run();
    QVERIFY(job->isRetracting() || !job->retractions.isEmpty());
    TRY(!job->retractions.isEmpty());
    QCOMPARE(job->retractions, QVector<bool>{true});
    QVERIFY(!job->isRetracting());
    QVERIFY(setting.printer->got.endsWith(setting.document.retraction));
}

void TestPrintJob::aTicketStaysIfAnotherJobHasPrinted()
{
    Setting setting;
    setting.options = patient();
    setting.document.retractAfterSeconds = 60;
    setting.document.retraction = QByteArray(
        "\x1D"
        "e\x02",
        3);
    const auto job = setting.job();
    job->start();
    setting.document.retraction.clear();
    // It has its turn before the ticket's, however long the machine takes.
    const auto next = setting.job();
    next->start();
    Setting::finish(*next);
    QCOMPARE(next->end.outcome, Outcome::Processed);
    TRY(!job->retractions.isEmpty());
    QCOMPARE(job->retractions, QVector<bool>{false});
    QVERIFY(
        !setting.printer->got.contains(QByteArray("\x1D"
                                                  "e\x02",
                                                  3)));
}

void TestPrintJob::aTicketThatWasTakenStays()
{
    Setting setting;
    setting.document.retractAfterSeconds = 60000;
    setting.document.retraction = QByteArray(
        "\x1D"
        "e\x02",
        3);
    auto job = setting.run();
    QVERIFY(job->isRetracting());
    job->cancel();
    TRY(!job->retractions.isEmpty());
    QCOMPARE(job->retractions, QVector<bool>{false});
    QCOMPARE(job->end.outcome, Outcome::Processed);
}

void TestPrintJob::aTicketThatCanNotBeReachedLeavesTheResult()
{
    Setting setting;
    setting.document.retractAfterSeconds = 60;
    setting.document.retraction = "back";
    setting.options = patient();
    const auto job = setting.job();
    // The next time that it is opened.
    setting.line->onTaken = [&setting](qint64) { setting.line->failsToOpen = true; };
    job->start();
    TRY(!job->retractions.isEmpty());
    QCOMPARE(job->retractions, QVector<bool>{false});
    QCOMPARE(job->result().reason, Reason::None);
    QCOMPARE(job->result().error.kind, TransportError::Kind::None);
}

void TestPrintJob::overTcp()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    Printer printer(profileOf("GENERAL_EPSON_PROTOCOL"));
    connect(&server, &QTcpServer::newConnection, &server, [&] {
        QTcpSocket *const socket = server.nextPendingConnection();
        connect(socket, &QTcpSocket::readyRead, socket,
                [&printer, socket] { socket->write(printer.take(socket->readAll())); });
    });
    EncodedDocument document = receipt();
    document.bytes += QByteArray(100'000, 'z');
    PrintJob job(document, profileOf("GENERAL_EPSON_PROTOCOL"),
                 address(QString("tcp:127.0.0.1:%1").arg(server.serverPort())));
    QSignalSpy ends(&job, &PrintJob::finished);
    job.start();
    TRY(!ends.isEmpty());
    QVERIFY2(job.result().outcome == Outcome::Processed, qPrintable(job.result().text));
    QVERIFY(printer.got.contains(document.bytes.mid(2)));
}

void TestPrintJob::overASerialLine()
{
    PseudoTerminal terminal;
    Printer printer(profileOf("GENERAL_EPSON_PROTOCOL"));
    QTimer reading;
    connect(&reading, &QTimer::timeout, &reading,
            [&] { terminal.write(printer.take(terminal.read())); });
    reading.start(1);
    EncodedDocument document = receipt();
    document.bytes += QByteArray(20'000, 'z');
    PrintJob job(document, profileOf("GENERAL_EPSON_PROTOCOL"),
                 address("serial:" + terminal.path() + "?baud=115200"));
    QSignalSpy ends(&job, &PrintJob::finished);
    job.start();
    TRY(!ends.isEmpty());
    QVERIFY2(job.result().outcome == Outcome::Processed, qPrintable(job.result().text));
    QVERIFY(printer.got.contains(document.bytes.mid(2)));
}

void TestPrintJob::theLineHasTimeWhileItPrints()
{
    // A line that takes nothing: the event loop has its turns, and the job an end.
    Setting setting;
    auto job = setting.job();
    setting.line->stopsAt = 20;
    int turns = 0;
    QTimer heart;
    connect(&heart, &QTimer::timeout, &heart, [&turns] { ++turns; });
    heart.start(1);
    job->start();
    setting.finish(*job);
    QVERIFY(turns > 3);
    QCOMPARE(job->end.outcome, Outcome::PartlySent);
}

void TestPrintJob::intoAFile()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("receipt.bin");
    PrintJob job(receipt(), profileOf("GENERAL_EPSON_PROTOCOL"), address("file:" + path));
    QSignalSpy ends(&job, &PrintJob::finished);
    job.start();
    TRY(!ends.isEmpty());
    QCOMPARE(job.result().outcome, Outcome::Sent);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), receipt().bytes);
}

QTEST_GUILESS_MAIN(TestPrintJob)
#include "tst_printjob.moc"
