#include <QtTest>
#include <limits>

#include "printedpaper.h"
#include "printerslib/drivers/printermodels.h"

using namespace printedpaper;

namespace {

constexpr int cutBit = 1;
constexpr int ejectBit = 4;
constexpr int holdBit = 8;

/// "cut", "eject", "present" and "retract" in their order.
QStringList movesOf(const QVector<Paper> &papers)
{
    QStringList moves;
    for (const Paper &paper : papers) {
        for (const Paper::Event &event : paper.events) {
            if (event.kind == Paper::Event::Cut || event.kind == Paper::Event::PartialCut)
                moves.append("cut");
            if (event.kind == Paper::Event::Eject)
                moves.append("eject");
            if (event.kind == Paper::Event::Present)
                moves.append("present");
            if (event.kind == Paper::Event::Retract)
                moves.append("retract");
        }
    }
    return moves;
}

TextPrinterDocument ticket(int current, int previous = 0, int seconds = 0)
{
    TextPrinterDocument document = documentOf({textBlock("ticket")});
    document.setCurrentTicketAction(QFlags<EPrinterTicketAction>(QFlag(current)));
    document.setPrevTicketAction(QFlags<EPrinterTicketAction>(QFlag(previous)));
    document.setRetractionTimeout(seconds);
    return document;
}

/// A model of each kind of presenter, with 12 mm to a cutter that knows both cuts.
PrintTarget targetWith(Presenter presenter)
{
    static const QMap<Presenter, QByteArray> models = {
        {Presenter::None, R"("WPK_833", "cutCommand": "GsV")"},
        {Presenter::Custom, R"("CUSTOM_VKP_80")"},
        {Presenter::Citizen, R"("CITIZEN_PPU_700", "cutCommand": "GsV")"},
        {Presenter::Star, R"("TSP-TUP", "presenter": "Star", "presenterTimerStep": 500)"},
        {Presenter::Swecoin, R"("SWECOIN_TM_20XX")"},
    };
    const QByteArray model = models.value(presenter);
    PrinterModels known;
    known.add("[{\"id\": " + model + ", \"dotsToCutter\": 96}]", QStringLiteral("test"));
    const QByteArray id = model.mid(1, model.indexOf('"', 1) - 1);
    return PrintTarget(*known.profile(id), targetOf(id.constData()).record(), 0);
}

QByteArray endOf(const EncodedDocument &made)
{
    return made.bytes.mid(made.marks.last().offset);
}

/// In front of the text.
QStringList firstCommands(const EncodedDocument &made, const PrintTarget &to)
{
    const QStringList commands = commandsOf(made.bytes, to.profile());
    return commands.mid(0, commands.indexOf("ticket"));
}

QString endCommands(const EncodedDocument &made, const PrintTarget &to)
{
    return commandsOf(endOf(made), to.profile()).join(", ");
}

}  // namespace

class TestDocumentEncoderTickets : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachActionIsTaken_data()
    {
        QTest::addColumn<int>("presenter");
        QTest::newRow("None") << int(Presenter::None);
        QTest::newRow("Custom") << int(Presenter::Custom);
        QTest::newRow("Citizen") << int(Presenter::Citizen);
        QTest::newRow("Star") << int(Presenter::Star);
        QTest::newRow("Swecoin") << int(Presenter::Swecoin);
    }
    void eachActionIsTaken()
    {
        QFETCH(int, presenter);
        const PrintTarget to = targetWith(Presenter(presenter));
        QCOMPARE(int(to.profile().presenter()), presenter);
        const bool isNone = Presenter(presenter) == Presenter::None;
        const bool isTold =
            Presenter(presenter) == Presenter::Custom || Presenter(presenter) == Presenter::Swecoin;
        for (int current = 0; current < 16; ++current) {
            for (int previous = 0; previous < 16; ++previous) {
                QStringList moves;
                if ((previous & cutBit) != 0)
                    moves.append("cut");
                if ((previous & ejectBit) != 0 && isTold)
                    moves.append("eject");
                if ((previous & holdBit) != 0 && !isNone)
                    moves.append("retract");
                const bool isCut =
                    (current & (isNone ? cutBit | holdBit : cutBit | ejectBit | holdBit)) != 0;
                if (isCut)
                    moves.append("cut");
                if ((current & ejectBit) != 0 && isTold)
                    moves.append("eject");
                else if ((current & holdBit) != 0 && isTold)
                    moves.append("present");
                const EncodedDocument made = encoded(ticket(current, previous), to);
                QCOMPARE(made.error, QString());
                QCOMPARE(movesOf(papersOf(made.bytes, to.profile())), moves);
                QCOMPARE(made.pieces, int(moves.count("cut")));
                QVERIFY(made.retraction.isEmpty());
            }
        }
    }

    void ticketsAreWholeWhenTheyAreCut_data()
    {
        QTest::addColumn<QString>("model");
        for (const QString &model : models())
            QTest::newRow(qPrintable(model)) << model;
    }
    void ticketsAreWholeWhenTheyAreCut()
    {
        QFETCH(QString, model);
        const PrintTarget to = targetOf(model.toLatin1().constData());
        const EncodedDocument made = encoded(ticket(cutBit), to);
        const QVector<Paper> papers = papersOf(made.bytes, to.profile());
        QVERIFY(!papers.isEmpty() && papers.first().isCut);
        QVERIFY(eventsOf(papers).isEmpty());
        const QString text = papers.first().toText();
        QVERIFY2(text.startsWith("ticket\n") && text.endsWith("\n[cut]\n"), qPrintable(text));
    }

    void commandsOfEachEnd_data()
    {
        QTest::addColumn<int>("presenter");
        QTest::addColumn<int>("actions");
        QTest::addColumn<int>("seconds");
        QTest::addColumn<QString>("commands");
        const auto row = [](const char *name, Presenter presenter, int actions, int seconds,
                            const char *commands) {
            QTest::newRow(name) << int(presenter) << actions << seconds << QString(commands);
        };
        row("none, cut", Presenter::None, 1, 0, "1b 4a 60, 1d 56 00");
        row("none, eject", Presenter::None, 4, 0, "");
        row("none, hold is a cut", Presenter::None, 8, 5, "1b 4a 60, 1d 56 00");
        row("Custom, cut and leave", Presenter::Custom, 1, 5, "1b 4a c0, 1b 69");
        row("Custom, eject", Presenter::Custom, 5, 5, "1b 4a c0, 1b 69, 1d 65 05");
        row("Custom, hold", Presenter::Custom, 9, 0, "1b 4a c0, 1b 69, 1d 65 03 0c");
        row("Citizen, cut and leave", Presenter::Citizen, 1, 5, "1b 4a aa, 1d 56 00");
        row("Citizen, eject", Presenter::Citizen, 5, 5, "1b 4a aa, 1d 52 31 00, 1d 56 00");
        row("Citizen, hold", Presenter::Citizen, 9, 9, "1b 4a aa, 1d 52 31 09, 1d 56 00");
        row("Citizen, hold for ever", Presenter::Citizen, 9, 0, "1b 4a aa, 1d 52 31 00, 1d 56 00");
        row("Star, hold", Presenter::Star, 8, 10, "1b 49 60, 1b 16 31 14, 1b 64 30");
        row("Star, eject", Presenter::Star, 12, 10, "1b 49 60, 1b 16 31 00, 1b 64 30");
        row("Swecoin, cut and leave", Presenter::Swecoin, 1, 0, "1b 4a 60, 1b 1e");
        row("Swecoin, eject", Presenter::Swecoin, 5, 0, "1b 4a 60, 1e");
        row("Swecoin, hold", Presenter::Swecoin, 9, 0, "1b 4a 60, 1b 1e, 1b 0c 3c");
    }
    void commandsOfEachEnd()
    {
        QFETCH(int, presenter);
        QFETCH(int, actions);
        QFETCH(int, seconds);
        QFETCH(QString, commands);
        const PrintTarget to = targetWith(Presenter(presenter));
        QCOMPARE(endCommands(encoded(ticket(actions, 0, seconds), to), to), commands);
    }

    void retractionIsThePrintersOrTheHosts_data()
    {
        QTest::addColumn<int>("presenter");
        QTest::addColumn<int>("actions");
        QTest::addColumn<int>("seconds");
        QTest::addColumn<int>("retractAfter");
        QTest::addColumn<QByteArray>("retraction");
        const auto row = [](const char *name, Presenter presenter, int actions, int seconds,
                            int after, const QByteArray &retraction) {
            QTest::newRow(name) << int(presenter) << actions << seconds << after << retraction;
        };
        row("none", Presenter::None, 8, 10, 0, {});
        row("Custom", Presenter::Custom, 9, 10, 10, "\x1D\x65\x02");
        row("Custom, ejected", Presenter::Custom, 5, 10, 0, {});
        row("Custom, for ever", Presenter::Custom, 9, 0, 0, {});
        row("Custom, negative", Presenter::Custom, 9, -5, 0, {});
        row("Citizen", Presenter::Citizen, 9, 9, 0, {});
        row("Citizen, longer than its timer", Presenter::Citizen, 9, 10, 10, "\x1D\x52\x30");
        row("Star", Presenter::Star, 9, 127, 0, {});
        row("Star, longer than its timer", Presenter::Star, 9, 128, 128,
            QByteArray("\x1B\x16\x30\x00", 4));
        row("Swecoin", Presenter::Swecoin, 8, 10, 10, "\x19\xFF");
    }
    void retractionIsThePrintersOrTheHosts()
    {
        QFETCH(int, presenter);
        QFETCH(int, actions);
        QFETCH(int, seconds);
        QFETCH(int, retractAfter);
        QFETCH(QByteArray, retraction);
        const PrintTarget to = targetWith(Presenter(presenter));
        const EncodedDocument made = encoded(ticket(actions, 0, seconds), to);
        QCOMPARE(made.retractAfterSeconds, retractAfter);
        QCOMPARE(made.retraction, retraction);
    }

    // Steps of 2.5 s: a customer never has less time than the document gives.
    void stepsOfAClockAreRoundedUp_data()
    {
        QTest::addColumn<int>("seconds");
        QTest::addColumn<QString>("timer");
        QTest::addColumn<int>("retractAfter");
        QTest::newRow("whole steps") << 10 << "1d 52 31 04" << 0;
        QTest::newRow("the shortest") << 1 << "1d 52 31 01" << 0;
        QTest::newRow("more") << 11 << "1d 52 31 05" << 0;
        QTest::newRow("the longest") << 22 << "1d 52 31 09" << 0;
        QTest::newRow("longer") << 23 << "1d 52 31 00" << 23;
        QTest::newRow("longest of all")
            << std::numeric_limits<int>::max() << "1d 52 31 00" << std::numeric_limits<int>::max();
    }
    void stepsOfAClockAreRoundedUp()
    {
        QFETCH(int, seconds);
        QFETCH(QString, timer);
        const PrintTarget to = target("CITIZEN_PPU_231");
        const EncodedDocument made = encoded(ticket(holdBit, 0, seconds), to);
        QCOMPARE(commandsOf(endOf(made), to.profile()).filter("1d 52"), QStringList{timer});
        QTEST(made.retractAfterSeconds, "retractAfter");
    }

    void presenterWithoutClockIsTheHosts()
    {
        const PrintTarget to = changedTarget("CITIZEN_PPU_700", R"("presenterTimerStep": 0)");
        const EncodedDocument made = encoded(ticket(holdBit, 0, 5), to);
        QVERIFY(!made.bytes.contains("\x1DR"));
        QCOMPARE(made.retraction, QByteArray("\x1D\x52\x30"));
        QCOMPARE(made.retractAfterSeconds, 5);
    }

    void emptyLinesAreFedButNeverLessThanToTheCutter()
    {
        const PrintTarget to = targetWith(Presenter::None);
        PrintOptions options;
        const auto endOfLines = [&](int lines, int actions) {
            options.emptyLinesAtEnd = lines;
            return endCommands(encoded(ticket(actions), to, options), to);
        };
        QCOMPARE(endOfLines(0, 0), QString());
        QCOMPARE(endOfLines(1, 0), QString("1b 4a 18"));
        QCOMPARE(endOfLines(1, 1), QString("1b 4a 60, 1d 56 00"));
        QCOMPARE(endOfLines(10, 1), QString("1b 4a f0, 1d 56 00"));
        QCOMPARE(endOfLines(11, 1), QString("1b 4a fe, 1b 4a 0a, 1d 56 00"));
        QCOMPARE(endOfLines(-3, 0), QString());
    }

    void previousTicketIsFedToTheCutter()
    {
        const PrintTarget to = targetWith(Presenter::None);
        const QStringList usual = firstCommands(encoded(ticket(0), to), to);
        QCOMPARE(firstCommands(encoded(ticket(0, cutBit), to), to),
                 usual + QStringList({"1b 4a 60", "1d 56 00"}));
    }

    void modelWithoutCutterIsFedEmptyLinesAlone()
    {
        const PrintTarget to =
            changedTarget("WPK_833", R"("cutCommand": "None", "dotsToCutter": 96)");
        PrintOptions options;
        options.emptyLinesAtEnd = 1;
        const EncodedDocument made = encoded(ticket(cutBit, cutBit), to, options);
        QCOMPARE(firstCommands(made, to), firstCommands(encoded(ticket(0), to), to));
        QCOMPARE(endCommands(made, to), QString("1b 4a 18"));
        QCOMPARE(made.pieces, 0);
        QCOMPARE(made.notes.size(), 1);
        QCOMPARE(made.notes.first().text, QString("the model has no cutter"));
        QVERIFY(made.isFaithful());
    }

    void emptyLinesAreOfTheBaseFont()
    {
        PrintOptions options;
        options.emptyLinesAtEnd = 2;
        for (const int font : {0, 3}) {
            const PrintTarget to = target("EPSON_EU_4XX", 0, font);
            const auto lengthOf = [&to](const EncodedDocument &made) {
                return papersOf(made.bytes, to.profile()).first().length;
            };
            QCOMPARE(lengthOf(encoded(ticket(0), to, options)) - lengthOf(encoded(ticket(0), to)),
                     2 * to.font(0).cell.height());
        }
    }

    void emptyLinesAtEndAreNoMoreThanARoll()
    {
        const PrintTarget to = targetWith(Presenter::None);
        const auto bytesFor = [&to](int lines) {
            PrintOptions options;
            options.emptyLinesAtEnd = lines;
            return encoded(ticket(1), to, options).bytes;
        };
        const QByteArray roll = bytesFor(PrintLayout::longest);
        QVERIFY(roll.count("\x1BJ") > PrintLayout::longest / 255);
        QVERIFY(roll.count("\x1BJ") < PrintLayout::longest / 250);
        QVERIFY(bytesFor(std::numeric_limits<int>::max()) == roll);
    }

    void ticketsAreMovedInMillimetres()
    {
        PrintOptions options;
        options.ticketMove = 73;
        const PrintTarget custom = targetWith(Presenter::Custom);
        QVERIFY(endOf(encoded(ticket(9), custom, options)).endsWith("\x1D\x65\x03\x0A"));
        const PrintTarget swecoin = targetWith(Presenter::Swecoin);
        QVERIFY(endOf(encoded(ticket(9), swecoin, options)).endsWith("\x1B\x0C\x49"));
        const EncodedDocument none = encoded(ticket(9), targetWith(Presenter::None), options);
        QCOMPARE(none.notes.size(), 1);
        QVERIFY(none.isFaithful());
    }

    void ticketsAreMovedAsFarAsTheCommandGoes_data()
    {
        QTest::addColumn<int>("presenter");
        QTest::addColumn<int>("millimetres");
        QTest::addColumn<QByteArray>("command");
        QTest::newRow("Custom, a step at least")
            << int(Presenter::Custom) << 1 << QByteArray("\x1D\x65\x03\x01");
        QTest::newRow("Custom, rounded down")
            << int(Presenter::Custom) << 76 << QByteArray("\x1D\x65\x03\x0A");
        QTest::newRow("Custom, rounded up")
            << int(Presenter::Custom) << 77 << QByteArray("\x1D\x65\x03\x0B");
        QTest::newRow("Custom, 255 steps at most")
            << int(Presenter::Custom) << 9999 << QByteArray("\x1D\x65\x03\xFF");
        QTest::newRow("Custom, below 0 as 0")
            << int(Presenter::Custom) << -1 << QByteArray("\x1D\x65\x03\x0C");
        QTest::newRow("Swecoin, a millimetre")
            << int(Presenter::Swecoin) << 1 << QByteArray("\x1B\x0C\x01");
        QTest::newRow("Swecoin, 255 mm at most")
            << int(Presenter::Swecoin) << 9999 << QByteArray("\x1B\x0C\xFF");
        QTest::newRow("Swecoin, below 0 as 0")
            << int(Presenter::Swecoin) << -1 << QByteArray("\x1B\x0C\x3C");
    }
    void ticketsAreMovedAsFarAsTheCommandGoes()
    {
        QFETCH(int, presenter);
        QFETCH(int, millimetres);
        QFETCH(QByteArray, command);
        PrintOptions options;
        options.ticketMove = millimetres;
        const EncodedDocument made =
            encoded(ticket(holdBit), targetWith(Presenter(presenter)), options);
        QVERIFY2(made.bytes.endsWith(command), made.bytes.toHex(' ').constData());
        QVERIFY(made.notes.isEmpty());
    }

    void moveThatHasNoEffectIsTold()
    {
        PrintOptions options;
        options.ticketMove = 73;
        for (const Presenter presenter : {Presenter::Citizen, Presenter::Star})
            QCOMPARE(encoded(ticket(holdBit), targetWith(presenter), options).notes.size(), 1);
    }

    void paperLoopIsTold()
    {
        PrintOptions options;
        options.paperLoop = 1;
        const PrintTarget to = targetWith(Presenter::Custom);
        QCOMPARE(encoded(ticket(0), to, options).notes.size(), 1);
        TextPrinterDocument document = ticket(0);
        document.setLoopPolicy(PaperLoopSecond);
        QCOMPARE(encoded(document, to).notes.size(), 1);
        QVERIFY(encoded(document, to).isFaithful());
        QVERIFY(encoded(ticket(0), to).notes.isEmpty());
    }

    void pulsesOfADrawer_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<int>("pin");
        QTest::addColumn<int>("on");
        QTest::addColumn<int>("off");
        QTest::addColumn<QByteArray>("bytes");
        const auto row = [](const char *name, const char *model, int pin, int on, int off,
                            const QByteArray &bytes) {
            QTest::newRow(name) << QString(model) << pin << on << off << bytes;
        };
        row("pin 2", "WPK_833", 2, 100, 200, QByteArray("\x1B\x70\x00\x32\x64", 5));
        row("pin 5", "WPK_833", 5, 100, 200, QByteArray("\x1B\x70\x01\x32\x64", 5));
        row("rounded up", "WPK_833", 2, 101, 103, QByteArray("\x1B\x70\x00\x33\x34", 5));
        row("shortest", "WPK_833", 2, 0, -1, QByteArray("\x1B\x70\x00\x01\x01", 5));
        row("longest", "WPK_833", 2, 511, 9999, QByteArray("\x1B\x70\x00\xFF\xFF", 5));
        row("never off for less than on", "WPK_833", 2, 100, 10,
            QByteArray("\x1B\x70\x00\x32\x32", 5));
        row("no command in the times", "WPK_833", 2, 32, 40, QByteArray("\x1B\x70\x00\x10\x15", 5));
        row("Star's first", "TSP-TUP", 2, 100, 255, QByteArray("\x1B\x07\x0A\x1A\x07", 5));
        row("Star's first, longest", "TSP-TUP", 2, 9999, 0, QByteArray("\x1B\x07\x7F\x01\x07", 5));
        row("Star's second", "TSP-TUP", 5, 100, 100, "\x19");
        row("another pin", "WPK_833", 3, 100, 100, {});
        row("no drawer", "CUSTOM_VKP_80", 2, 100, 100, {});
        row("no drawer at Swecoin's", "SWECOIN_TM_20XX", 2, 100, 100, {});
    }
    void pulsesOfADrawer()
    {
        QFETCH(QString, model);
        QFETCH(int, pin);
        QFETCH(int, on);
        QFETCH(int, off);
        QFETCH(QByteArray, bytes);
        const PrintTarget to = targetOf(model.toLatin1().constData());
        PrintOptions options;
        options.drawerPin = pin;
        options.drawerOnMilliseconds = on;
        options.drawerOffMilliseconds = off;
        const QByteArray shut = encoded(ticket(1), to, options).bytes;
        options.drawer = PrintOptions::Drawer::After;
        const EncodedDocument after = encoded(ticket(1), to, options);
        QCOMPARE(after.bytes, shut + bytes);
        QCOMPARE(after.isFaithful(), !bytes.isEmpty());
        options.drawer = PrintOptions::Drawer::Before;
        const QByteArray before = encoded(ticket(1), to, options).bytes;
        QCOMPARE(before.size(), shut.size() + bytes.size());
        QVERIFY(before.indexOf(bytes) < before.indexOf("ticket"));
    }

    void oneDrawerIsAtPinTwo()
    {
        const PrintTarget to = changedTarget("WPK_833", R"("drawers": 1)");
        PrintOptions options;
        options.drawer = PrintOptions::Drawer::After;
        QVERIFY(encoded(ticket(1), to, options).isFaithful());
        options.drawerPin = 5;
        const EncodedDocument made = encoded(ticket(1), to, options);
        QVERIFY(!made.bytes.contains("\x1Bp"));
        QVERIFY(!made.isFaithful());
    }

    void aPulseThatIsTooLongIsTold()
    {
        PrintOptions options;
        options.drawer = PrintOptions::Drawer::After;
        options.drawerOnMilliseconds = 511;
        const EncodedDocument made = encoded(ticket(1), targetOf("WPK_833"), options);
        QCOMPARE(made.notes.size(), 1);
        QVERIFY(made.notes.first().text.contains("510 ms"));
        QVERIFY(made.isFaithful());
        options.drawerOnMilliseconds = 510;
        QVERIFY(encoded(ticket(1), targetOf("WPK_833"), options).notes.isEmpty());
    }

    void aPulseIsOneEvent()
    {
        const PrintTarget to = targetOf("GENERAL_EPSON_PROTOCOL");
        PrintOptions options;
        options.drawer = PrintOptions::Drawer::Before;
        options.drawerPin = 5;
        options.drawerOnMilliseconds = 120;
        options.drawerOffMilliseconds = 240;
        const QVector<Paper> papers = papersOf(encoded(ticket(9), to, options).bytes, to.profile());
        const auto &events = papers.first().events;
        const auto pulse = std::find_if(events.begin(), events.end(), [](const auto &event) {
            return event.kind == Paper::Event::Pulse;
        });
        QVERIFY(pulse != events.end());
        QCOMPARE(pulse->pin, 5);
        QCOMPARE(pulse->onMilliseconds, 120);
        QCOMPARE(pulse->offMilliseconds, 240);
    }
};

QTEST_APPLESS_MAIN(TestDocumentEncoderTickets)
#include "tst_documentencoder_tickets.moc"
