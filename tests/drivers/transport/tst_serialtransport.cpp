// Serial lines, on pseudo terminals.
#include <QtTest>

#include "pseudoterminal.h"
#include "transport/portuse_p.h"
#include "transport/serialtransport_p.h"
#include "transportwatch.h"

using namespace transportwatch;
using printerslib::drivers::PortUse;
using printerslib::drivers::SerialTransport;

namespace {

using Flow = PrinterAddress::Flow;

PrinterAddress lineOf(const QString &path, const QString &settings = QString())
{
    return addressOf("serial:" + path + "?" + settings);
}

/// More than any pseudo terminal takes.
const QByteArray tooMuch(4 * 1024 * 1024, 'x');

/// With a wire that pseudo terminals lack.
class PinnedTransport : public SerialTransport
{
public:
    using SerialTransport::SerialTransport;
    bool isReady = false;
    int looks = 0;

protected:
    bool isDataSetReady(QSerialPort &) override
    {
        ++looks;
        return isReady;
    }
};

}  // namespace

class TestSerialTransport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bytesGoBothWays()
    {
        PseudoTerminal terminal;
        const auto transport = Transport::make(lineOf(terminal.path()));
        Watch watch(*transport);
        QCOMPARE(transport->state(), State::Closed);
        transport->open();
        QCOMPARE(transport->state(), State::Opening);
        QVERIFY(watch.told.isEmpty());
        TRY_COMPARE(watch.told, QStringList("opened"));
        QCOMPARE(transport->state(), State::Open);
        const QByteArray bytes = pattern(3000);
        QVERIFY(transport->write(bytes.left(1)));
        QVERIFY(transport->write(bytes.mid(1)));
        QCOMPARE(transport->bytesToWrite(), 3000);
        QByteArray printed;
        TRY_COMPARE((printed += terminal.read(), printed.size()), 3000);
        QCOMPARE(printed, bytes);
        TRY_COMPARE(transport->bytesWritten(), 3000);
        QCOMPARE(transport->bytesToWrite(), 0);
        QCOMPARE(watch.totals.last(), 3000);
        QVERIFY(std::is_sorted(watch.totals.begin(), watch.totals.end()));
        terminal.write(QByteArray("\x12\0\x0D\n\xFF", 5));
        TRY_COMPARE(watch.received, QByteArray("\x12\0\x0D\n\xFF", 5));
        transport->close();
        QCOMPARE(transport->state(), State::Closed);
        QCOMPARE(watch.told, QStringList({"opened", "closed"}));
        QCOMPARE(transport->bytesWritten(), 3000);
        transport->close();
        QCOMPARE(watch.told.size(), 2);
    }

    // Somebody else has asked for it, as a program that is gone.
    void answersFromBeforeAreNotHeard()
    {
        PseudoTerminal terminal;
        terminal.write("\x1A\x32");
        QVERIFY(terminal.hasForPrograms());
        const auto transport = Transport::make(lineOf(terminal.path()));
        Watch watch(*transport);
        transport->open();
        TRY_COMPARE(watch.told, QStringList("opened"));
        terminal.write("\x12");
        TRY_COMPARE(watch.received, QByteArray("\x12"));
    }

    void bytesWaitForTheLine()
    {
        PseudoTerminal terminal;
        const auto transport = Transport::make(lineOf(terminal.path()));
        QVERIFY(!transport->write("too early"));
        transport->open();
        QVERIFY(transport->write("in time"));
        QByteArray printed;
        TRY_COMPARE((printed += terminal.read()), QByteArray("in time"));
        transport->close();
        QVERIFY(!transport->write("too late"));
    }

    void countsBeginAnewWithEachOpening()
    {
        PseudoTerminal terminal;
        const auto transport = Transport::make(lineOf(terminal.path()));
        for (int i = 0; i < 3; ++i) {
            transport->open();
            transport->open();
            QVERIFY(transport->write("abc"));
            TRY_COMPARE(transport->bytesWritten(), 3);
            transport->close();
        }
        QCOMPARE(terminal.read(), QByteArray("abcabcabc"));
    }

    // Any byte of the printer would else resume a line that it has stopped.
    void onlyXonResumes()
    {
        PseudoTerminal terminal;
        SerialTransport transport(lineOf(terminal.path(), "flow=software"), {});
        Watch watch(transport);
        QVERIFY(!transport.setFlow(Flow::Software));
        for (int opening = 0; opening < 2; ++opening) {
            transport.open();
            TRY_COMPARE(transport.state(), State::Open);
            QCOMPARE(terminal.settings().c_iflag & (IXON | IXOFF | IXANY), uint(IXON | IXOFF));
            QVERIFY(transport.setFlow(Flow::Hardware));
            QCOMPARE(terminal.settings().c_iflag & (IXON | IXOFF | IXANY), 0U);
            QVERIFY(terminal.settings().c_cflag & CRTSCTS);
            QVERIFY(transport.setFlow(Flow::Software));
            QCOMPARE(terminal.settings().c_iflag & (IXON | IXOFF | IXANY), uint(IXON | IXOFF));
            QVERIFY(transport.setFlow(Flow::None));
            QCOMPARE(terminal.settings().c_iflag & (IXON | IXOFF | IXANY), 0U);
            transport.close();
        }
    }

    void xoffStopsTheLineUntilXon()
    {
        PseudoTerminal terminal;
        const auto transport = Transport::make(lineOf(terminal.path(), "flow=software"));
        Watch watch(*transport);
        transport->open();
        TRY_COMPARE(watch.told, QStringList("opened"));
        terminal.write("\x13");
        QTest::qWait(50);
        QVERIFY(transport->write("stopped"));
        terminal.write("status");
        TRY_COMPARE(watch.received, QByteArray("status"));
        QTest::qWait(100);
        QCOMPARE(terminal.read(), QByteArray());
        terminal.write("\x11");
        QByteArray printed;
        TRY_COMPARE((printed += terminal.read()), QByteArray("stopped"));
        QCOMPARE(watch.received, QByteArray("status"));
    }

    void printersDtrHoldsTheLine()
    {
        PseudoTerminal terminal;
        PinnedTransport transport(lineOf(terminal.path(), "flow=dtr&baud=115200"), {});
        bool &isReady = transport.isReady;
        int &looks = transport.looks;
        Watch watch(transport);
        transport.open();
        const QByteArray bytes = pattern(500);
        QVERIFY(transport.write(bytes));
        TRY_VERIFY(looks > 20);
        QCOMPARE(terminal.read(), QByteArray());
        QCOMPARE(transport.bytesWritten(), 0);
        bool wasHeld = false;
        connect(&transport, &Transport::written, this, [&](qint64 total) {
            isReady = wasHeld || total < 100;
            wasHeld = wasHeld || !isReady;
        });
        isReady = true;
        TRY_VERIFY(transport.bytesWritten() >= 100);
        TRY_VERIFY(!isReady);
        const qint64 before = transport.bytesWritten();
        const int looksBefore = looks;
        TRY_VERIFY(looks > looksBefore + 20);
        // No more than one portion was under way.
        QVERIFY(transport.bytesWritten() <= before + 16);
        QVERIFY(transport.bytesWritten() < bytes.size());
        isReady = true;
        TRY_COMPARE(transport.bytesWritten(), bytes.size());
        QByteArray printed;
        TRY_COMPARE((printed += terminal.read()), bytes);
    }

    // A pseudo terminal has no pins at all, which is a DTR that is never up.
    void withoutTheWireThatIsSaid()
    {
        PseudoTerminal terminal;
        const auto transport = Transport::make(lineOf(terminal.path(), "flow=dtr"), impatient());
        Watch watch(*transport);
        transport->open();
        QVERIFY(transport->write("12345"));
        TRY_COMPARE(watch.told, QStringList({"opened", "failed"}));
        QCOMPARE(watch.error.kind, Kind::TimedOut);
        QCOMPARE(watch.error.text,
                 lineOf(terminal.path(), "flow=dtr").toString() +
                     " took no byte for 0.3 s, 5 of them being left: our DSR is down: it is off or "
                     "out of paper, its cover is open, or the cable lacks that wire");
    }

    void stuckLineFailsAndBlocksNothing_data()
    {
        QTest::addColumn<QString>("settings");
        QTest::addColumn<QString>("reason");
        QTest::newRow("none") << ""
                              << "the line itself is stuck";
        QTest::newRow("hardware")
            << "flow=hardware"
            << "its CTS is down: it is off or out of paper, its cover is open, "
               "or the cable lacks that wire";
        QTest::newRow("software") << "flow=software"
                                  << "it has sent XOFF: it is out of paper, or its cover is open";
    }
    void stuckLineFailsAndBlocksNothing()
    {
        QFETCH(QString, settings);
        QFETCH(QString, reason);
        bool isBeating = false;
        for (int i = 0; i < Heart::tries && !isBeating; ++i) {
            PseudoTerminal terminal;
            const auto transport = Transport::make(lineOf(terminal.path(), settings), impatient());
            Watch watch(*transport);
            transport->open();
            QVERIFY(transport->write(tooMuch));
            TRY_VERIFY(transport->bytesWritten() > 0);
            const Heart heart(impatient().writeMilliseconds);
            TRY_COMPARE(watch.told, QStringList({"opened", "failed"}));
            QCOMPARE(watch.error.kind, Kind::TimedOut);
            QVERIFY2(watch.error.text.endsWith(": " + reason), qPrintable(watch.error.text));
            QCOMPARE(transport->error().text, watch.error.text);
            QCOMPARE(transport->state(), State::Closed);
            QCOMPARE(transport->bytesToWrite(), 0);
            QCOMPARE(transport->bytesWritten(), watch.totals.last());
            QByteArray printed;
            TRY_COMPARE((printed += terminal.read(), printed.size()), transport->bytesWritten());
            isBeating = heart.isBeating();
        }
        QVERIFY(isBeating);
    }

    // The count starts anew with each byte taken.
    void slowLineDoesNotTimeOut()
    {
        PseudoTerminal terminal;
        const auto transport = Transport::make(lineOf(terminal.path()), impatient());
        Watch watch(*transport);
        transport->open();
        const QByteArray bytes = pattern(40 * 1024);
        QVERIFY(transport->write(bytes));
        QByteArray printed;
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < 1200) {
            QTest::qWait(100);
            if (watch.told.contains("failed"))
                break;
            printed += terminal.read();
        }
        TRY_COMPARE((printed += terminal.read()), bytes);
        QCOMPARE(watch.told, QStringList("opened"));
    }

    void noTimeOutIsForEver()
    {
        PseudoTerminal terminal;
        TransportOptions options;
        options.writeMilliseconds = 0;
        const auto transport = Transport::make(lineOf(terminal.path()), options);
        Watch watch(*transport);
        transport->open();
        QVERIFY(transport->write(tooMuch));
        TRY_VERIFY(transport->bytesWritten() > 0);
        QTest::qWait(500);
        QCOMPARE(watch.told, QStringList("opened"));
    }

    void discardedBytesAreNotSent()
    {
        PseudoTerminal terminal;
        const auto transport = Transport::make(lineOf(terminal.path()), impatient());
        Watch watch(*transport);
        transport->open();
        QVERIFY(transport->write("never"));
        transport->discard();
        TRY_COMPARE(watch.told, QStringList("opened"));
        QCOMPARE(transport->bytesToWrite(), 0);
        QVERIFY(transport->write(tooMuch));
        TRY_VERIFY(transport->bytesWritten() > 0);
        transport->discard();
        QVERIFY(transport->bytesToWrite() < 4096);
        const qint64 taken = transport->bytesWritten();
        QByteArray printed;
        TRY_VERIFY((printed += terminal.read()).size() >= taken);
        QVERIFY(transport->write("\x1B@"));
        TRY_VERIFY((printed += terminal.read()).endsWith("\x1B@"));
        TRY_COMPARE(transport->bytesToWrite(), 0);
        QCOMPARE(watch.told, QStringList("opened"));
    }

    void pulledOutLineIsLost()
    {
        PseudoTerminal terminal;
        const auto transport = Transport::make(lineOf(terminal.path()), impatient());
        Watch watch(*transport);
        transport->open();
        TRY_COMPARE(watch.told, QStringList("opened"));
        terminal.hangUp();
        TRY_COMPARE(watch.told, QStringList({"opened", "failed"}));
        QCOMPARE(watch.error.kind, Kind::Lost);
        QCOMPARE(watch.error.text, terminal.path() +
                                       " has gone: the printer was switched off, or its cable "
                                       "pulled out");
        QCOMPARE(transport->state(), State::Closed);
    }

    void whatWasNotTakenIsNotCounted()
    {
        PseudoTerminal terminal;
        const auto transport = Transport::make(lineOf(terminal.path()));
        Watch watch(*transport);
        transport->open();
        QVERIFY(transport->write(tooMuch));
        TRY_VERIFY(transport->bytesWritten() > 0);
        terminal.hangUp();
        TRY_COMPARE(watch.told, QStringList({"opened", "failed"}));
        QVERIFY(transport->bytesWritten() < tooMuch.size() / 2);
        QCOMPARE(transport->bytesToWrite(), 0);
    }

    void whatComesBackIsOpenedAgain()
    {
        QTemporaryDir folder;
        const QString link = folder.filePath("printer");
        auto terminal = std::make_unique<PseudoTerminal>();
        QVERIFY(QFile::link(terminal->path(), link));
        const auto transport =
            Transport::make(lineOf(link, "flow=software&baud=38400"), comingBack());
        Watch watch(*transport);
        transport->open();
        QVERIFY(transport->write("one"));
        TRY_COMPARE(transport->bytesWritten(), 3);
        terminal.reset();
        TRY_COMPARE(watch.told, QStringList({"opened", "lost"}));
        QCOMPARE(transport->state(), State::Lost);
        QVERIFY(!transport->write("nobody"));
        QVERIFY(QFile::remove(link));
        TRY_COMPARE(transport->error().kind, Kind::NotFound);
        QCOMPARE(transport->bytesWritten(), 3);
        terminal = std::make_unique<PseudoTerminal>();
        QVERIFY(QFile::link(terminal->path(), link));
        TRY_COMPARE(watch.told, QStringList({"opened", "lost", "opened"}));
        QVERIFY(!transport->error());
        QCOMPARE(transport->bytesWritten(), 0);
        QCOMPARE(terminal->settings().c_iflag & (IXON | IXANY), uint(IXON));
        const termios line = terminal->settings();
        QCOMPARE(uint(::cfgetospeed(&line)), uint(B38400));
        QVERIFY(transport->write("two"));
        QByteArray printed;
        TRY_COMPARE((printed += terminal->read()), QByteArray("two"));
    }

    void lookingForTheLostEndsWithClose()
    {
        auto terminal = std::make_unique<PseudoTerminal>();
        const auto transport = Transport::make(lineOf(terminal->path()), comingBack());
        Watch watch(*transport);
        transport->open();
        TRY_COMPARE(watch.told, QStringList("opened"));
        terminal.reset();
        TRY_COMPARE(watch.told, QStringList({"opened", "lost"}));
        transport->close();
        QCOMPARE(watch.told, QStringList({"opened", "lost", "closed"}));
        QCOMPARE(transport->state(), State::Closed);
        QTest::qWait(60);
        QCOMPARE(watch.told.size(), 3);
    }

    // Who reopens what was lost still wants to know of an address that leads nowhere.
    void firstOpeningFailsAtOnce()
    {
        const auto transport = Transport::make(lineOf("/nonexistent/ttyS0"), comingBack());
        Watch watch(*transport);
        transport->open();
        QVERIFY(watch.told.isEmpty());
        TRY_COMPARE(watch.told, QStringList("failed"));
        QCOMPARE(watch.error.kind, Kind::NotFound);
        QCOMPARE(watch.error.text,
                 QString("there is no /nonexistent/ttyS0: the printer is off, its cable is out, or "
                         "it has another name now"));
    }

    void timeOutIsNoLoss()
    {
        PseudoTerminal terminal;
        const auto transport = Transport::make(lineOf(terminal.path()), comingBack());
        Watch watch(*transport);
        transport->open();
        QVERIFY(transport->write(tooMuch));
        TRY_COMPARE(watch.told, QStringList({"opened", "failed"}));
        QCOMPARE(watch.error.kind, Kind::TimedOut);
    }

    void whatIsNoLineIsRefused_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<QString>("text");
        QTest::newRow("folder") << "/tmp" << Kind::BadAddress << "/tmp is no printer, but a folder";
        QTest::newRow("file") << "/etc/passwd" << Kind::BadAddress
                              << "/etc/passwd is no printer, but a file, which is written "
                                 "file:/etc/passwd";
        QTest::newRow("below a file")
            << "/etc/passwd/tty" << Kind::NotFound
            << "there is no /etc/passwd/tty: the printer is off, its cable "
               "is out, or it has another name now";
    }
    void whatIsNoLineIsRefused()
    {
        QFETCH(QString, path);
        QFETCH(Kind, kind);
        QFETCH(QString, text);
        const auto transport = Transport::make(lineOf(path));
        Watch watch(*transport);
        transport->open();
        TRY_COMPARE(watch.told, QStringList("failed"));
        QCOMPARE(watch.error.kind, kind);
        QCOMPARE(watch.error.text, text);
    }

    void lockedLineIsBusy()
    {
        PseudoTerminal terminal;
        QFile lock(PortUse::lockFilePath(terminal.path()));
        QVERIFY(lock.open(QIODevice::WriteOnly));
        lock.write("         1\n");
        lock.close();
        const auto transport = Transport::make(lineOf(terminal.path()));
        Watch watch(*transport);
        transport->open();
        TRY_COMPARE(watch.told, QStringList("failed"));
        QVERIFY(lock.remove());
        QCOMPARE(watch.error.kind, Kind::Busy);
        QVERIFY2(watch.error.text.startsWith(terminal.path() + " is held by process 1 "),
                 qPrintable(watch.error.text));
    }

    // The system's own close waits for such a line.
    void stuckLineIsClosedAtOnce()
    {
        PseudoTerminal terminal;
        const auto transport = Transport::make(lineOf(terminal.path()));
        transport->open();
        QVERIFY(transport->write(tooMuch));
        TRY_VERIFY(transport->bytesWritten() > 0);
        QElapsedTimer clock;
        clock.start();
        transport->close();
        QVERIFY(clock.elapsed() < 5000);
        QVERIFY(!QFile::exists(PortUse::lockFilePath(terminal.path())));
    }

    void stuckLineIsDeletedAtOnce()
    {
        PseudoTerminal terminal;
        auto transport = Transport::make(lineOf(terminal.path()));
        transport->open();
        QVERIFY(transport->write(tooMuch));
        TRY_VERIFY(transport->bytesWritten() > 0);
        QElapsedTimer clock;
        clock.start();
        transport.reset();
        QVERIFY(clock.elapsed() < 5000);
        QVERIFY(!QFile::exists(PortUse::lockFilePath(terminal.path())));
    }
};

Q_DECLARE_METATYPE(TransportError::Kind)

QTEST_GUILESS_MAIN(TestSerialTransport)
#include "tst_serialtransport.moc"
