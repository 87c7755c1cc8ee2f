// What is said of a receipt is true, and no weaker than what is known: with late answers, paper
// that ends, and a printer that is switched off and on within the job.
#include <QtTest>
#include <functional>

#include "jobsetting.h"

Q_DECLARE_METATYPE(printerslib::drivers::PrinterProfile)
Q_DECLARE_METATYPE(bool jobparts::Printer::*)

using namespace jobparts;

namespace {

constexpr const char *keeper = "CITIZEN_CTS_2000";
constexpr const char *plain = "GENERAL_EPSON_PROTOCOL";

/// A printer that answers GS ( H, and keeps a macro.
PrinterProfile respondingKeeper()
{
    PrinterModels models;
    const QStringList faults =
        models.add(R"([{"id": "SHOP", "like": "CITIZEN_CTS_2000", "confirmation": "ResponseId"}])",
                   "models.json");
    if (!faults.isEmpty())
        qFatal("%s", qPrintable(faults.join('\n')));
    return PrintTarget::forModel(models, "SHOP", 0)->profile();
}

struct Kept : Setting
{
    explicit Kept(const PrinterProfile &model = profileOf(keeper)) : Setting(model)
    {
        options.confirmMilliseconds = 300;
        options.statusMilliseconds = 300;
        options.cancelMilliseconds = 2000;
        options.transport.writeMilliseconds = 1000;
    }
};

/// A long receipt, within which something befalls the printer, once.
struct Befallen : Kept
{
    bool isBefallen = false;

    explicit Befallen(const PrinterProfile &model = profileOf(keeper)) : Kept(model)
    {
        options.stepBytes = 512;
        document.bytes += QByteArray(4000, 'y') + "\n";
    }
    /// A job that has begun.
    /// @param befall is called when the line has taken `byte` bytes
    std::unique_ptr<Job> begin(const std::function<void()> &befall, int byte = 300,
                               int perTurn = 64)
    {
        auto one = job();
        line->perTurn = perTurn;
        line->onTaken = [this, befall, byte](qint64 taken) {
            if (taken >= byte && !std::exchange(isBefallen, true))
                befall();
        };
        one->start();
        return one;
    }
    /// What the printer tells by itself.
    void tell() { Q_EMIT line->received(printer->automatic()); }
    /// That it is off line, and nothing else.
    void tellOffLine() { Q_EMIT line->received(QByteArray::fromHex("18000000")); }
};

int lengthOfJob(const PrinterProfile &profile)
{
    Kept setting(profile);
    const auto job = setting.run();
    return setting.printer->got.size();
}

}  // namespace

class TestJobTruth : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // ---- Switched off and on
    void theMacroIsPlayedInFrontAndAtTheEnd();
    void aPrinterIsProvenHoweverItTakesTheMacro_data();
    void aPrinterIsProvenHoweverItTakesTheMacro();
    void switchedOffAtAnyByteItIsNotProven_data();
    void switchedOffAtAnyByteItIsNotProven();
    void itIsSaidThatItWasOff();
    void anErrorAtTheEndIsNotTakenForItsPower_data();
    void anErrorAtTheEndIsNotTakenForItsPower();
    void otherModelsGetNoMacro();
    void withoutConfirmationThereIsNoMacro();
    void macroAnswersThatComeLateAreWaitedFor();
    void aJobBehindOneThatWasOffIsProven();
    void cutOffWithinTheMacroTheNextJobIsProven();

    // ---- Paused
    void mendedWithoutTellingIsFoundByAsking_data();
    void mendedWithoutTellingIsFoundByAsking();
    void anUnansweredQuestionIsAskedAnew();
    void nothingIsAskedWithinAPicture();
    void piecesEndWhereCommandsDo();
    void offLineHoldsBackWhatIsNotSent();
    void offLineForLongEndsTheJob();
    void offLineIsWaitedForIfPaperIs();

    // ---- Cancelled
    void cancelBehindTheLastByteSwitchesTheAutomaticStatusOff();
    void whatTheLineHasNotTakenOfAQuestionIsRepaired();

    // ---- Answers without a number
    void lateAnswersAreNotTakenForOthers();
    void whatItTellsBehindItsAnswerDelaysNothing();
    void theWaitIsNotOverForAPrinterThatIsMended();
};

void TestJobTruth::theMacroIsPlayedInFrontAndAtTheEnd()
{
    Kept setting;
    const auto job = setting.run();
    QCOMPARE(job->end.outcome, Outcome::Processed);
    const QByteArray on = QByteArray::fromHex("1d610e");
    const QByteArray macro = QByteArray::fromHex("1d3a1d72011d3a1d5e020000");
    QVERIFY(setting.printer->got.contains("\x1B@" + on + macro + on + "Total 1"));
    QVERIFY(setting.printer->got.contains(QByteArray::fromHex("1d61001d5e0100001d7201")));
    QCOMPARE(setting.record().due, 0);
    QVERIFY(!setting.record().isOpen);
}

void TestJobTruth::aPrinterIsProvenHoweverItTakesTheMacro_data()
{
    QTest::addColumn<bool>("responds");
    QTest::addColumn<bool>("plays");
    QTest::addColumn<bool>("obeys");
    for (const bool responds : {false, true}) {
        for (const bool plays : {false, true}) {
            for (const bool obeys : {false, true})
                QTest::addRow("%s, %s, %s", responds ? "GS ( H" : "GS r",
                              plays ? "plays it" : "has none",
                              obeys ? "obeys it while it is defined" : "keeps it alone")
                    << responds << plays << obeys;
        }
    }
}

void TestJobTruth::aPrinterIsProvenHoweverItTakesTheMacro()
{
    QFETCH(bool, responds);
    QFETCH(bool, plays);
    QFETCH(bool, obeys);
    Kept setting(responds ? respondingKeeper() : profileOf(keeper));
    setting.printer->playsMacros = plays;
    setting.printer->obeysWhatIsDefined = obeys;
    for (int i = 0; i < 3; ++i) {
        const auto job = setting.run();
        QCOMPARE(job->end.outcome, responds ? Outcome::Printed : Outcome::Processed);
        QCOMPARE(setting.record().due, 0);
    }
}

void TestJobTruth::switchedOffAtAnyByteItIsNotProven_data()
{
    QTest::addColumn<PrinterProfile>("profile");
    QTest::addColumn<bool>("obeys");
    QTest::newRow("GS r") << profileOf(keeper) << true;
    QTest::newRow("GS r, kept alone") << profileOf(keeper) << false;
    QTest::newRow("GS ( H") << respondingKeeper() << true;
}

void TestJobTruth::switchedOffAtAnyByteItIsNotProven()
{
    QFETCH(PrinterProfile, profile);
    QFETCH(bool, obeys);
    const int length = lengthOfJob(profile);
    const int front = 13 + 2;  // the status, and the reset
    const int macro = 3 + (profile.confirmation() == Confirmation::ResponseId ? 15 : 7) + 5 + 3;
    for (int at = front; at < length; at += 3) {
        Kept setting(profile);
        setting.options.confirmMilliseconds = 20;
        setting.printer->obeysWhatIsDefined = obeys;
        auto job = setting.job();
        setting.line->perTurn = 1;
        int documentEnd = 0;
        setting.line->onTaken = [&](qint64 taken) {
            if (setting.hasWhole() && documentEnd == 0)
                documentEnd = int(taken);
            if (taken == at)
                setting.printer->switchOffAndOn();
        };
        job->start();
        setting.finish(*job);
        // In front of the document nothing of it is lost; behind its end all was read.
        const QByteArray context = QByteArray::number(at) + " of " + QByteArray::number(length);
        const bool isProven = job->end.outcome >= Outcome::Processed;
        if (at > front + macro && (documentEnd == 0 || at <= documentEnd))
            QVERIFY2(!isProven, context);
        QVERIFY2(job->end.isSent(), context);
        QVERIFY2(setting.record().isOpen == !isProven, context);
    }
}

void TestJobTruth::itIsSaidThatItWasOff()
{
    for (const PrinterProfile &profile : {profileOf(keeper), respondingKeeper()}) {
        Kept setting(profile);
        setting.options.confirmMilliseconds = 20000;
        auto job = setting.job();
        setting.line->perTurn = 1;
        setting.line->onTaken = [&](qint64) {
            if (setting.printer->got.endsWith("Thanks"))
                setting.printer->switchOffAndOn();
        };
        job->start();
        setting.finish(*job);
        QCOMPARE(job->end.outcome, Outcome::Sent);
        QCOMPARE(job->end.reason, Reason::NoConfirmation);
        QCOMPARE(
            job->end.text,
            QString("the printer was switched off and on within the job: what it held is lost"));
    }
}

void TestJobTruth::anErrorAtTheEndIsNotTakenForItsPower_data()
{
    QTest::addColumn<bool Printer::*>("what");
    QTest::addColumn<int>("wait");
    QTest::addColumn<int>("flag");
    const int forEver = PrintJobOptions::forEver;
    QTest::newRow("off line") << &Printer::isOffLine << 0 << int(PrinterStatus::OffLine);
    QTest::newRow("hot head") << &Printer::isHot << 0 << int(PrinterStatus::RecoverableError);
    QTest::newRow("no paper, which is waited for")
        << &Printer::isPaperOut << forEver << int(PrinterStatus::PaperOut);
    QTest::newRow("cover open, which is waited for")
        << &Printer::isCoverOpen << forEver << int(PrinterStatus::CoverOpen);
}

void TestJobTruth::anErrorAtTheEndIsNotTakenForItsPower()
{
    QFETCH(bool Printer::*, what);
    QFETCH(int, wait);
    QFETCH(int, flag);
    Kept setting;
    setting.options.waitMilliseconds = wait;
    auto job = setting.job();
    setting.line->perTurn = 1;
    setting.line->onTaken = [&](qint64) {
        // The last question in its turn, behind that of the macro.
        if (setting.printer->got.endsWith(QByteArray::fromHex("1d5e0100001d7201")))
            (*setting.printer).*what = true;
    };
    job->start();
    setting.finish(*job);
    QCOMPARE(job->end.outcome, Outcome::Sent);
    QVERIFY(job->end.status.has(PrinterStatus::Flag(flag)));
    QCOMPARE(job->end.reason, Reason::Status);
    QCOMPARE(job->end.text, job->end.status.text());
}

void TestJobTruth::otherModelsGetNoMacro()
{
    Kept setting(profileOf(plain));
    QCOMPARE(setting.run()->end.outcome, Outcome::Processed);
    QVERIFY(!setting.printer->got.contains("\x1D:"));
    QVERIFY(!setting.printer->got.contains("\x1D^"));
}

void TestJobTruth::withoutConfirmationThereIsNoMacro()
{
    for (const bool asks : {false, true}) {
        Kept setting;
        setting.options.asks = asks;
        setting.options.confirms = false;
        QCOMPARE(setting.run()->end.outcome, Outcome::Sent);
        QVERIFY(!setting.printer->got.contains("\x1D:"));
    }
}

void TestJobTruth::macroAnswersThatComeLateAreWaitedFor()
{
    Kept setting;
    setting.options.confirmMilliseconds = 20000;
    setting.printer->holdsBack = true;
    auto job = setting.job();
    job->start();
    TRY(setting.printer->got.endsWith(QByteArray("\x1D\x61\0", 3)));
    QTest::qWait(10);
    // Nothing is asked until it is known whether the macro plays.
    QVERIFY(!setting.printer->got.contains(QByteArray("\x1D^\x01", 3)));
    setting.printer->holdsBack = false;
    Q_EMIT setting.line->received(setting.printer->heldBack);
    setting.finish(*job);
    QCOMPARE(job->end.outcome, Outcome::Processed);
    QVERIFY(setting.printer->got.contains(QByteArray("\x1D^\x01", 3)));
}

void TestJobTruth::aJobBehindOneThatWasOffIsProven()
{
    Kept setting;
    auto job = setting.job();
    setting.line->perTurn = 1;
    setting.line->onTaken = [&](qint64) {
        if (setting.printer->got.endsWith("Thanks"))
            setting.printer->switchOffAndOn();
    };
    job->start();
    setting.finish(*job);
    QCOMPARE(job->end.outcome, Outcome::Sent);
    QCOMPARE(setting.run()->end.outcome, Outcome::Processed);
}

void TestJobTruth::cutOffWithinTheMacroTheNextJobIsProven()
{
    const QByteArray until = QByteArray::fromHex("1d610e1d3a1d72011d3a1d5e0200001d610e");
    for (int at = 16; at < 16 + until.size(); ++at) {
        Kept setting;
        auto job = setting.job();
        setting.line->stopsAt = at;
        job->start();
        TRY(setting.printer->got.size() == at);
        job.reset();
        for (int i = 0; i < 2; ++i) {
            const auto next = setting.run();
            QVERIFY2(next->end.outcome == Outcome::Processed, QByteArray::number(at));
        }
        QVERIFY(setting.printer->got.contains(QByteArray("\x1D^\x01", 3)));
    }
}

void TestJobTruth::mendedWithoutTellingIsFoundByAsking_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<bool>("wasOff");
    QTest::addColumn<int>("outcome");
    QTest::newRow("it hadn't told") << plain << false << int(Outcome::Sent);
    QTest::newRow("it was off") << plain << true << int(Outcome::Sent);
    QTest::newRow("with a macro, it hadn't told") << keeper << false << int(Outcome::Processed);
    QTest::newRow("with a macro, it was off") << keeper << true << int(Outcome::Sent);
}

void TestJobTruth::mendedWithoutTellingIsFoundByAsking()
{
    QFETCH(QString, model);
    QFETCH(bool, wasOff);
    QFETCH(int, outcome);
    Befallen setting(profileOf(model));
    setting.options.waitMilliseconds = PrintJobOptions::forEver;
    int asked = 0;
    const auto job = setting.begin([&] {
        asked = setting.printer->questions;
        setting.printer->isPaperOut = true;
        setting.tell();
    });
    TRY(asked > 0 && setting.printer->questions > asked);
    QVERIFY(!job->isFinished());
    const int before = setting.printer->got.count('y');
    QVERIFY(before < 2000);
    if (wasOff)
        setting.printer->switchOffAndOn();
    setting.printer->isPaperOut = false;
    setting.finish(*job);
    QCOMPARE(int(job->end.outcome), outcome);
    QCOMPARE(setting.record().isOpen, job->end.outcome == Outcome::Sent);
    QCOMPARE(setting.printer->got.count('y'), 4000);
    QCOMPARE(job->steps.last(), setting.document.bytes.size());
    if (job->end.outcome == Outcome::Sent) {
        QCOMPARE(job->end.reason, Reason::NoConfirmation);
        QVERIFY2(job->end.text.contains("switched off"), qPrintable(job->end.text));
    }
}

void TestJobTruth::anUnansweredQuestionIsAskedAnew()
{
    Befallen setting;
    setting.options.waitMilliseconds = PrintJobOptions::forEver;
    const auto job = setting.begin([&] {
        setting.printer->isPaperOut = true;
        setting.printer->isSilent = true;
        setting.tell();
    });
    TRY(setting.isBefallen);
    const int asked = setting.printer->questions;
    TRY(setting.printer->questions > asked + 8);  // twice, and on
    setting.printer->isSilent = false;
    setting.printer->isPaperOut = false;
    setting.finish(*job);
    QVERIFY(job->end.isSent());
    QCOMPARE(setting.printer->got.count('y'), 4000);
}

void TestJobTruth::nothingIsAskedWithinAPicture()
{
    Befallen setting(profileOf(plain));
    setting.options.waitMilliseconds = PrintJobOptions::forEver;
    setting.document.bytes =
        "\x1B@" + QByteArray("\x1Dv0\0\x40\0\x40\0", 8) + QByteArray(4096, 'y') + "Thanks\n";
    const auto job = setting.begin([&] {
        setting.printer->isPaperOut = true;
        setting.tell();
    });
    TRY(setting.isBefallen);
    QTest::qWait(50);
    const int sent = setting.printer->got.count('y');
    QVERIFY(sent < 2000);
    setting.printer->isPaperOut = false;
    setting.tell();
    setting.finish(*job);
    QCOMPARE(job->end.outcome, Outcome::Processed);
    QVERIFY(setting.hasWhole());
}

void TestJobTruth::piecesEndWhereCommandsDo()
{
    // Pictures of 100 bytes: a piece that is handed over ends behind one.
    Befallen setting(profileOf(plain));
    setting.options.waitMilliseconds = PrintJobOptions::forEver;
    const QByteArray picture = QByteArray("\x1Dv0\0\x04\0\x17\0", 8) + QByteArray(92, 'y');
    setting.document.bytes = "\x1B@" + picture.repeated(40);
    const auto job = setting.begin(
        [&] {
            setting.printer->isPaperOut = true;
            setting.tell();
        },
        700, 7);
    TRY(setting.isBefallen && setting.printer->questions > 4 + 8);
    setting.printer->isPaperOut = false;
    setting.tell();
    setting.finish(*job);
    const QVector<QByteArray> commands = commandsIn(setting.printer->got, setting.profile);
    QCOMPARE(commands.count(picture), 40);
    QVERIFY(job->end.isSent());
}

void TestJobTruth::offLineHoldsBackWhatIsNotSent()
{
    Befallen setting(profileOf(plain));
    const auto job = setting.begin([&] {
        setting.printer->isSilent = true;  // to the questions while it is paused
        setting.tellOffLine();
    });
    TRY(setting.isBefallen);
    QTest::qWait(60);
    QVERIFY(!job->isFinished());
    QVERIFY(setting.printer->got.count('y') < 2000);
    setting.printer->isSilent = false;
    setting.tell();
    setting.finish(*job);
    QCOMPARE(job->end.outcome, Outcome::Processed);
    QCOMPARE(setting.printer->got.count('y'), 4000);
}

void TestJobTruth::offLineForLongEndsTheJob()
{
    Befallen setting(profileOf(plain));
    setting.options.transport.writeMilliseconds = 60;
    const auto job = setting.begin([&] {
        setting.printer->isSilent = true;
        setting.tellOffLine();
    });
    setting.finish(*job);
    QCOMPARE(job->end.outcome, Outcome::PartlySent);
    QCOMPARE(job->end.reason, Reason::Status);
    QVERIFY(job->end.status.has(PrinterStatus::OffLine));
    QVERIFY(setting.record().isOpen);
}

void TestJobTruth::offLineIsWaitedForIfPaperIs()
{
    Befallen setting(profileOf(plain));
    setting.options.waitMilliseconds = PrintJobOptions::forEver;
    setting.options.transport.writeMilliseconds = 200;
    const auto job = setting.begin([&] {
        setting.printer->isSilent = true;
        setting.tellOffLine();
    });
    TRY(setting.isBefallen);
    QTest::qWait(500);
    QVERIFY(!job->isFinished());
    setting.printer->isSilent = false;
    setting.tell();
    setting.finish(*job);
    QCOMPARE(job->end.outcome, Outcome::Processed);
}

void TestJobTruth::cancelBehindTheLastByteSwitchesTheAutomaticStatusOff()
{
    Kept setting(profileOf(plain));
    const int questions = 13;
    const int all = questions + 3 + setting.document.bytes.size();
    auto job = setting.job();
    setting.line->perTurn = 1;
    setting.line->onTaken = [&](qint64 taken) {
        if (taken == all - 1)
            job->cancel();
    };
    job->start();
    setting.finish(*job);
    QCOMPARE(job->end.outcome, Outcome::Sent);
    QCOMPARE(job->end.reason, Reason::Cancelled);
    QVERIFY(setting.printer->got.endsWith(QByteArray("\x1D\x61\0", 3)));
    QVERIFY(!setting.printer->hasAutomatic);
}

void TestJobTruth::whatTheLineHasNotTakenOfAQuestionIsRepaired()
{
    Kept setting(profileOf(plain));
    const int all = 13 + 3 + setting.document.bytes.size();
    auto job = setting.job();
    setting.line->stopsAt = all + 1;  // of GS a
    job->start();
    TRY(setting.printer->got.size() == all + 1);
    QTest::qWait(5);
    job->cancel();
    setting.finish(*job);
    QCOMPARE(job->end.outcome, Outcome::Sent);
    QVERIFY(setting.record().isOpen);
    QVERIFY(setting.record().fill >= 2);
    QCOMPARE(setting.run()->end.outcome, Outcome::Processed);
}

void TestJobTruth::lateAnswersAreNotTakenForOthers()
{
    // How many of the late answers come while it is asked anew.
    for (int late = 0; late <= 4; ++late) {
        Kept setting(profileOf(plain));
        setting.options.waitMilliseconds = PrintJobOptions::forEver;
        setting.printer->isPaperOut = true;
        auto job = setting.job();
        job->start();
        TRY(setting.printer->questions >= 4);
        setting.printer->isSilent = true;
        const int asked = setting.printer->questions;
        TRY(setting.printer->questions >= asked + 4);
        setting.printer->isSilent = false;
        // Late answers of one that has paper, in front of those to the next questions.
        bool isTold = false;
        setting.line->onTaken = [&](qint64) {
            if (!std::exchange(isTold, true))
                Q_EMIT setting.line->received(QByteArray(late, '\x12'));
        };
        TRY(isTold);
        QTest::qWait(60);
        // Were they taken for others, paper out would be an error or nothing.
        QVERIFY2(!setting.printer->got.contains("Total"), QByteArray::number(late));
        setting.printer->isPaperOut = false;
        setting.finish(*job);
        QCOMPARE(job->end.outcome, Outcome::Processed);
        QVERIFY(!job->end.status.has(PrinterStatus::PaperOut));
    }
}

/// Questions of a pause stay without an answer, and in one read with the answer at the end it tells
/// how it is.
void TestJobTruth::whatItTellsBehindItsAnswerDelaysNothing()
{
    Befallen setting(profileOf(plain));
    setting.options.waitMilliseconds = PrintJobOptions::forEver;
    setting.options.statusMilliseconds = 5000;
    setting.options.confirmMilliseconds = 5000;
    int asked = 0;
    const auto job = setting.begin([&] {
        asked = setting.printer->questions;
        setting.printer->isPaperOut = true;
        setting.printer->isSilent = true;
        setting.tell();
    });
    TRY(setting.isBefallen && setting.printer->questions > asked);
    setting.printer->isPaperOut = false;
    setting.printer->isSilent = false;
    setting.printer->holdsBack = true;
    setting.tell();
    TRY(setting.printer->got.endsWith("\x1Dr\x01"));
    QVERIFY(!job->isFinished());
    setting.printer->holdsBack = false;
    Q_EMIT setting.line->received(setting.printer->heldBack + setting.printer->automatic());
    setting.finish(*job);
    QCOMPARE(job->end.outcome, Outcome::Processed);
}

void TestJobTruth::theWaitIsNotOverForAPrinterThatIsMended()
{
    // Asked at 0, 600 and 1230 ms; believed at 1830.
    Kept setting(profileOf(plain));
    setting.options.pollMilliseconds = 600;
    setting.options.statusMilliseconds = 30;
    setting.options.waitMilliseconds = 1500;
    setting.options.confirmMilliseconds = 10000;
    setting.printer->isPaperOut = true;
    auto job = setting.job();
    job->start();
    TRY(setting.printer->questions >= 4);
    QTest::qWait(5);
    setting.printer->isSilent = true;
    TRY(setting.printer->questions >= 8);
    setting.printer->isSilent = false;
    setting.printer->isPaperOut = false;
    setting.finish(*job);
    QCOMPARE(job->end.outcome, Outcome::Processed);
}

QTEST_GUILESS_MAIN(TestJobTruth)
#include "tst_jobtruth.moc"
