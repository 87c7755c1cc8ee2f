// Devices and files; USB printers in a folder that stands for sysfs.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QtTest>
#include <csignal>

#include "pseudoterminal.h"
#include "sysfolder.h"
#include "transport/devicetransport_p.h"
#include "transportwatch.h"

using namespace transportwatch;
using printerslib::drivers::DeviceTransport;

namespace {

const QByteArray tooMuch(4 * 1024 * 1024, 'x');

/// A FIFO with a reader that takes what it is asked to.
class Fifo
{
public:
    Fifo()
    {
        if (::mkfifo(QFile::encodeName(path()).constData(), S_IRUSR | S_IWUSR) != 0)
            qFatal("no FIFO");
    }
    ~Fifo() { closeReader(); }
    QString path() const { return m_folder.filePath("printer"); }
    void openReader()
    {
        m_reader = ::open(QFile::encodeName(path()).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    }
    void closeReader()
    {
        if (m_reader >= 0)
            ::close(m_reader);
        m_reader = -1;
    }
    QByteArray read()
    {
        char piece[65536];
        const ssize_t count = ::read(m_reader, piece, sizeof piece);
        return QByteArray(piece, static_cast<int>(qMax<ssize_t>(0, count)));
    }

private:
    QTemporaryDir m_folder;
    int m_reader = -1;
};

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

}  // namespace

class TestDeviceTransport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bytesGoBothWaysAsTheyAre()
    {
        PseudoTerminal terminal;
        termios cooked = terminal.settings();
        const tcflag_t before = cooked.c_oflag;
        const auto transport = Transport::make(addressOf("device:" + terminal.path()));
        Watch watch(*transport);
        transport->open();
        const QByteArray bytes = pattern(3000) + "\n\r\x13";
        QVERIFY(transport->write(bytes));
        QByteArray printed;
        TRY_COMPARE((printed += terminal.read()), bytes);
        TRY_COMPARE(transport->bytesWritten(), bytes.size());
        terminal.write("\x13\x11\r\x03");
        TRY_COMPARE(watch.received, QByteArray("\x13\x11\r\x03"));
        transport->close();
        QCOMPARE(terminal.settings().c_oflag, before);
        QCOMPARE(watch.told, QStringList({"opened", "closed"}));
    }

    // Somebody else has asked for it, as a program that is gone.
    void answersFromBeforeAreNotHeard()
    {
        PseudoTerminal terminal;
        terminal.write("\x1A\x32");
        QVERIFY(terminal.hasForPrograms());
        const auto transport = Transport::make(addressOf("device:" + terminal.path()));
        Watch watch(*transport);
        transport->open();
        TRY_COMPARE(watch.told, QStringList("opened"));
        terminal.write("\x12");
        TRY_COMPARE(watch.received, QByteArray("\x12"));
    }

    void stuckDeviceFailsAndBlocksNothing()
    {
        bool isBeating = false;
        for (int i = 0; i < Heart::tries && !isBeating; ++i) {
            PseudoTerminal terminal;
            const auto transport =
                Transport::make(addressOf("device:" + terminal.path()), impatient());
            Watch watch(*transport);
            transport->open();
            QVERIFY(transport->write(tooMuch));
            TRY_VERIFY(transport->bytesWritten() > 0);
            const Heart heart(impatient().writeMilliseconds);
            TRY_COMPARE(watch.told, QStringList({"opened", "failed"}));
            QCOMPARE(watch.error.kind, Kind::TimedOut);
            QVERIFY2(
                watch.error.text.endsWith(
                    "of them being left: it is off line or out of paper, or its cover is open"),
                qPrintable(watch.error.text));
            isBeating = heart.isBeating();
        }
        QVERIFY(isBeating);
    }

    void percentSignsInNamesStandAsTheyAre()
    {
        PseudoTerminal terminal;
        QTemporaryDir folder;
        QVERIFY(QFile::link(terminal.path(), folder.filePath("\x12")));
        const QString address = "device:" + folder.path() + "/%12";
        const auto transport = Transport::make(addressOf(address), impatient());
        Watch watch(*transport);
        transport->open();
        QVERIFY(transport->write(tooMuch));
        TRY_COMPARE(watch.told, QStringList({"opened", "failed"}));
        QVERIFY2(watch.error.text.startsWith(address + " took no byte for 0.3 s, "),
                 qPrintable(watch.error.text));
    }

    void deviceThatGoesIsLost()
    {
        PseudoTerminal terminal;
        const auto transport = Transport::make(addressOf("device:" + terminal.path()));
        Watch watch(*transport);
        transport->open();
        TRY_COMPARE(watch.told, QStringList("opened"));
        terminal.hangUp();
        TRY_COMPARE(watch.told, QStringList({"opened", "failed"}));
        QCOMPARE(watch.error.kind, Kind::Lost);
    }

    void everythingIsTakenByAReader()
    {
        Fifo fifo;
        fifo.openReader();
        const auto transport = Transport::make(addressOf("device:" + fifo.path()));
        Watch watch(*transport);
        transport->open();
        const QByteArray bytes = pattern(500000);
        QVERIFY(transport->write(bytes));
        QByteArray printed;
        TRY_COMPARE((printed += fifo.read(), printed.size()), bytes.size());
        QCOMPARE(printed, bytes);
        TRY_COMPARE(transport->bytesWritten(), bytes.size());
    }

    // Without a signal that ends the process.
    void readerThatGoesIsALoss()
    {
        Fifo fifo;
        fifo.openReader();
        const auto transport = Transport::make(addressOf("device:" + fifo.path()), comingBack());
        Watch watch(*transport);
        transport->open();
        TRY_COMPARE(watch.told, QStringList("opened"));
        fifo.closeReader();
        QVERIFY(transport->write("nobody reads this"));
        TRY_COMPARE(watch.told, QStringList({"opened", "lost"}));
        QCOMPARE(transport->bytesWritten(), 0);
        TRY_COMPARE(transport->error().kind, Kind::NotFound);
        QCOMPARE(transport->error().text, "nobody reads from " + fifo.path());
        fifo.openReader();
        TRY_COMPARE(watch.told, QStringList({"opened", "lost", "opened"}));
        QVERIFY(transport->write("again"));
        QByteArray printed;
        TRY_COMPARE((printed += fifo.read()), QByteArray("again"));
    }

    void signalOfTheClientsOwnStays()
    {
        Fifo fifo;
        fifo.openReader();
        sigset_t pipe;
        sigset_t before;
        sigset_t pending;
        ::sigemptyset(&pipe);
        ::sigaddset(&pipe, SIGPIPE);
        ::pthread_sigmask(SIG_BLOCK, &pipe, &before);
        ::pthread_kill(::pthread_self(), SIGPIPE);
        const auto transport = Transport::make(addressOf("device:" + fifo.path()));
        Watch watch(*transport);
        transport->open();
        TRY_COMPARE(watch.told, QStringList("opened"));
        fifo.closeReader();
        QVERIFY(transport->write("x"));
        TRY_COMPARE(watch.told, QStringList({"opened", "failed"}));
        ::sigpending(&pending);
        QCOMPARE(::sigismember(&pending, SIGPIPE), 1);
        const timespec now = {};
        QCOMPARE(::sigtimedwait(&pipe, nullptr, &now), SIGPIPE);
        ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    }

    void fullDeviceFails()
    {
        const auto transport = Transport::make(addressOf("device:/dev/full"), comingBack());
        Watch watch(*transport);
        transport->open();
        QVERIFY(transport->write("x"));
        TRY_COMPARE(watch.told, QStringList({"opened", "failed"}));
        QCOMPARE(watch.error.kind, Kind::Failed);
        QCOMPARE(watch.error.text,
                 QString("/dev/full can't be written to: No space left on device"));
    }

    // It is always readable, and never has anything.
    void silentDeviceTakesNoTime()
    {
        const auto transport = Transport::make(addressOf("device:/dev/null"));
        Watch watch(*transport);
        transport->open();
        TRY_COMPARE(watch.told, QStringList("opened"));
        QVERIFY(transport->write(pattern(100000)));
        TRY_COMPARE(transport->bytesWritten(), 100000);
        const clock_t before = std::clock();
        QTest::qWait(500);
        QVERIFY((std::clock() - before) * 1000 / CLOCKS_PER_SEC < 250);
        QCOMPARE(watch.told, QStringList("opened"));
    }

    void whatIsNoDeviceIsRefused_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("text");
        QTest::newRow("none") << QString() << int(Kind::BadAddress) << "no printer is named";
        QTest::newRow("folder") << "device:/tmp" << int(Kind::BadAddress)
                                << "/tmp is no printer, but a folder";
        QTest::newRow("file") << "device:/etc/passwd" << int(Kind::BadAddress)
                              << "/etc/passwd is no printer, but a file, which is written "
                                 "file:/etc/passwd";
        QTest::newRow("folder as a file")
            << "file:/tmp" << int(Kind::BadAddress) << "/tmp is no printer, but a folder";
        QTest::newRow("nothing") << "device:/dev/usb/lp99" << int(Kind::NotFound)
                                 << "there is no /dev/usb/lp99: the printer is off, its cable is "
                                    "out, or it has another name now";
        QTest::newRow("no folder")
            << "file:/nonexistent/x" << int(Kind::NotFound)
            << "there is no /nonexistent/x: the printer is off, its cable is "
               "out, or it has another name now";
        QTest::newRow("no USB printer")
            << "usb:ffff:fffe" << int(Kind::NotFound)
            << "there is no USB printer usb:ffff:fffe: it is off, or its cable is out";
    }
    void whatIsNoDeviceIsRefused()
    {
        QFETCH(QString, address);
        QFETCH(int, kind);
        QFETCH(QString, text);
        const auto transport =
            Transport::make(address.isEmpty() ? PrinterAddress() : addressOf(address));
        Watch watch(*transport);
        transport->open();
        QVERIFY(watch.told.isEmpty());
        TRY_COMPARE(watch.told, QStringList("failed"));
        QCOMPARE(int(watch.error.kind), kind);
        QCOMPARE(watch.error.text, text);
    }

    void fileIsAddedTo()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath("a receipt");
        const auto transport = Transport::make(addressOf("file:" + folder.path() + "/a%20receipt"));
        Watch watch(*transport);
        const QByteArray bytes = pattern(1000000);
        for (int i = 0; i < 2; ++i) {
            transport->open();
            QVERIFY(transport->write(bytes));
            TRY_COMPARE(transport->bytesWritten(), bytes.size());
            transport->close();
        }
        QCOMPARE(contentOf(path), bytes + bytes);
        QCOMPARE(watch.told, QStringList({"opened", "closed", "opened", "closed"}));
    }

    void devicesAndFifosCanBeNamedAsFiles()
    {
        Fifo fifo;
        fifo.openReader();
        for (const QString &path : {fifo.path(), QString("/dev/null")}) {
            const auto transport = Transport::make(addressOf("file:" + path));
            transport->open();
            QVERIFY(transport->write("bytes"));
            TRY_COMPARE(transport->bytesWritten(), 5);
        }
        QCOMPARE(fifo.read(), QByteArray("bytes"));
    }

    void usbPrinterIsFoundByItsNumbers()
    {
        PseudoTerminal terminal;
        SysFolder system;
        system.plugIn("1-1", "04b8", "0e15", "A", "usb/lp0", "/dev/null");
        system.plugIn("1-2", "0519", "0003", "B", "usb/lp1", terminal.path());
        DeviceTransport transport(addressOf("usb:0519:0003"), {}, system.roots());
        transport.open();
        QVERIFY(transport.write("bytes"));
        QByteArray printed;
        TRY_COMPARE((printed += terminal.read()), QByteArray("bytes"));
    }

    // What was lp0 is lp1 behind a reset of the bus.
    void usbPrinterIsFoundUnderItsNewName()
    {
        auto terminal = std::make_unique<PseudoTerminal>();
        SysFolder system;
        system.plugIn("1-1", "04b8", "0e15", "A", "usb/lp0", terminal->path());
        DeviceTransport transport(addressOf("usb:04b8:0e15:A"), comingBack(), system.roots());
        Watch watch(transport);
        transport.open();
        TRY_COMPARE(watch.told, QStringList("opened"));
        system.pullOut("1-1", "usb/lp0");
        terminal->hangUp();
        TRY_COMPARE(watch.told, QStringList({"opened", "lost"}));
        TRY_COMPARE(transport.error().kind, Kind::NotFound);
        terminal = std::make_unique<PseudoTerminal>();
        system.plugIn("1-4", "04b8", "0e15", "A", "usb/lp1", terminal->path());
        TRY_COMPARE(watch.told, QStringList({"opened", "lost", "opened"}));
        QVERIFY(transport.write("bytes"));
        QByteArray printed;
        TRY_COMPARE((printed += terminal->read()), QByteArray("bytes"));
    }
};

QTEST_GUILESS_MAIN(TestDeviceTransport)
#include "tst_devicetransport.moc"
