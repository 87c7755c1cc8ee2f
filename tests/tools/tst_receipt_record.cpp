// "receipt record": what programs and a printer say to each other through it, the file of it, which
// a virtual printer replays, and how it ends.
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QTcpSocket>

#include "playedprinter.h"
#include "printerslib/drivers/devicelock.h"
#include "recording.h"

using printerslib::drivers::DeviceLock;
using printerslib::drivers::PrinterAddress;

namespace {

const QString model = "CITIZEN_CTS_2000";

/// A recorder that is ready for programs.
class Recorder : public RunningReceipt
{
public:
    explicit Recorder(const QStringList &options)
        : RunningReceipt(QStringList("record") + options), m_name(outputLine())
    {}

    /// Of its line: a path, or host and port.
    QString name() const { return m_name; }
    QString address() const { return (m_name.startsWith('/') ? "device:" : "tcp:") + m_name; }
    QString outputLine()
    {
        setReadChannel(StandardOutput);
        while (!canReadLine()) {
            if (!waitForReadyRead(printerPatience))
                return QString();
        }
        return QString::fromUtf8(readLine()).trimmed();
    }
    ReceiptRun interrupted()
    {
        interrupt();
        return result();
    }

private:
    QString m_name;
};

/// A port at which connections are made that nobody takes, and others don't get through.
class BusyHost
{
public:
    BusyHost() : m_server(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof(address);
        ::bind(m_server, reinterpret_cast<sockaddr *>(&address), size);
        ::listen(m_server, 0);
        ::getsockname(m_server, reinterpret_cast<sockaddr *>(&address), &size);
        m_port = ntohs(address.sin_port);
        m_client.connectToHost(QHostAddress::LocalHost, m_port);
        m_client.waitForConnected(printerPatience);
    }
    ~BusyHost()
    {
        ::close(m_taken);
        ::close(m_server);
    }
    QString address() const { return QString("tcp:127.0.0.1:%1").arg(m_port); }
    /// Another one gets through from now on.
    void take() { m_taken = ::accept(m_server, nullptr, nullptr); }

private:
    int m_server;
    int m_taken = -1;
    quint16 m_port = 0;
    QTcpSocket m_client;
};

/// What is recorded, of one side.
QByteArray bytesOf(const QVector<RecordedPiece> &pieces, bool fromPrinter)
{
    QByteArray bytes;
    for (const RecordedPiece &piece : pieces) {
        if (piece.fromPrinter == fromPrinter)
            bytes += piece.bytes;
    }
    return bytes;
}

ReceiptRun selfTest(const QString &address, const QString &parts = "fonts")
{
    return runReceipt(
        {"selftest", "--to", address, "--model", model, "--only", parts, "--no-questions"});
}

}  // namespace

class TestReceiptRecord : public QObject
{
    Q_OBJECT

private:
    WorkFolder m_folder;

    QString newFile() const
    {
        static int number = 0;
        return m_folder.path(QString("session-%1.txt").arg(++number));
    }
    static QVector<RecordedPiece> recordingOf(const QString &file)
    {
        QFile content(file);
        QString error;
        const auto pieces = content.open(QIODevice::ReadOnly)
                                ? readRecording(content.readAll(), &error)
                                : std::nullopt;
        if (!pieces)
            qWarning("%s", qPrintable(file + ": " + error));
        return pieces.value_or(QVector<RecordedPiece>());
    }

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("XDG_CONFIG_HOME", "/nonexistent");
        qputenv("XDG_CONFIG_DIRS", "/nonexistent");
    }

    void jobGoesThroughTheTerminalAndItsRecordingReplays()
    {
        const QString file = newFile();
        ReceiptRun printed;
        {
            const PlayedPrinter printer(model);
            Recorder recorder({"--to", printer.address(), file});
            QVERIFY(recorder.name().startsWith("/dev/"));
            printed = selfTest(recorder.address());
            QCOMPARE(printed.status, 0);
            QVERIFY2(printed.output.contains("processed"), qPrintable(printed.output));
            QCOMPARE(recorder.interrupted().status, 0);
        }
        const QVector<RecordedPiece> pieces = recordingOf(file);
        QVERIFY(bytesOf(pieces, false).contains("SELF TEST"));
        QVERIFY(!bytesOf(pieces, true).isEmpty());

        QProcess replay;
        replay.start(VIRTUAL_PRINTER_PROGRAM,
                     {"--replay", file, "--model", model, "--listen", "127.0.0.1:0"});
        QVERIFY(replay.waitForReadyRead(printerPatience));
        const ReceiptRun again = selfTest("tcp:" + QString(replay.readLine()).trimmed());
        QCOMPARE(again.status, 0);
        QCOMPARE(again.output.section(": ", 1), printed.output.section(": ", 1));
        replay.kill();
        replay.waitForFinished();
        const QString told = replay.readAllStandardOutput();
        QVERIFY2(told.contains("the recording has ended"), qPrintable(told));
        QVERIFY2(!told.contains("differs"), qPrintable(told));
    }

    void programsOnTcpAreHeardOneBehindTheOther()
    {
        const PlayedPrinter printer(model);
        const QString file = newFile();
        Recorder recorder({"--to", printer.address(), file, "--listen", "127.0.0.1:0"});
        QVERIFY(recorder.name().startsWith("127.0.0.1:"));
        for (int i = 0; i < 3; ++i)
            QCOMPARE(selfTest(recorder.address()).status, 0);
        const ReceiptRun run = recorder.interrupted();
        QCOMPARE(run.status, 0);
        QCOMPARE(run.output.count("disconnected: "), 3);
        QCOMPARE(bytesOf(recordingOf(file), false).count("SELF TEST"), 3);
    }

    void programIsRunWithTheAddressAndEndsTheRecording()
    {
        const PlayedPrinter printer(model);
        for (const QStringList &line : {QStringList(), QStringList({"--listen", "127.0.0.1:0"})}) {
            const QString file = newFile();
            const ReceiptRun run =
                runReceipt(QStringList({"record", "--to", printer.address(), file}) + line +
                           QStringList({"--", RECEIPT_PROGRAM, "selftest", "--to", "{}", "--model",
                                        model, "--only", "fonts", "--no-questions"}));
            QCOMPARE(run.status, 0);
            QVERIFY2(run.output.contains(": processed: self test of "), qPrintable(run.output));
            QVERIFY(run.output.contains(file + ": "));
            QVERIFY(bytesOf(recordingOf(file), false).contains("SELF TEST"));
        }
    }

    // A program that waits for no answer is gone before the printer has all of it.
    void whatAProgramLeavesOnTheLineStillGoesToThePrinter()
    {
        QByteArray all;
        for (int i = 0; i < 20000; ++i)
            all += QByteArray::number(i);
        const QString sent = m_folder.file("sent", all);
        const Host host("");
        const QString file = newFile();
        RunningReceipt recorder({"record", "--to", host.address(), file, "--", "sh", "-c",
                                 "cat \"$1\" >\"${2#device:}\"", "sh", sent, "{}"});
        QCOMPARE(recorder.result().status, 0);
        QVERIFY(bytesOf(recordingOf(file), false) == all);
    }

    void statusOfTheProgramIsThatOfTheRecorder()
    {
        const PlayedPrinter printer(model);
        const QStringList options = {"record", "--to", printer.address()};
        QCOMPARE(runReceipt(options + QStringList({newFile(), "--", "sh", "-c", "exit 5"})).status,
                 5);
        const ReceiptRun killed =
            runReceipt(options + QStringList({newFile(), "--", "sh", "-c", "kill -9 $$"}));
        QCOMPARE(killed.status, 1);
        QVERIFY2(killed.errors.contains("receipt: sh: "), qPrintable(killed.errors));
        const ReceiptRun none =
            runReceipt(options + QStringList({newFile(), "--", "/nonexistent"}));
        QCOMPARE(none.status, 1);
        QVERIFY2(none.errors.contains("receipt: /nonexistent: "), qPrintable(none.errors));
    }

    void linkLeadsToTheTerminalAndIsGoneInTheEnd()
    {
        const PlayedPrinter printer(model);
        const QString link = m_folder.path("printer");
        Recorder recorder({"--to", printer.address(), newFile(), "--link", link});
        QCOMPARE(QFileInfo(link).symLinkTarget(), recorder.name());
        QCOMPARE(selfTest("device:" + link).status, 0);
        QCOMPARE(recorder.interrupted().status, 0);
        QVERIFY(!QFileInfo(link).isSymLink());
    }

    void allBytesPassUnchangedBothWays()
    {
        QByteArray all;
        for (int i = 0; i < 0x300; ++i)
            all += static_cast<char>(i);
        const Host host(all);
        const QString file = newFile();
        Recorder recorder({"--to", host.address(), file, "--listen", "127.0.0.1:0"});
        QTcpSocket client;
        client.connectToHost("127.0.0.1", recorder.name().section(':', 1).toUShort());
        client.write(all);
        QTRY_COMPARE(client.bytesAvailable() % all.size(), 0);
        QTRY_VERIFY(client.bytesAvailable() >= all.size());
        QCOMPARE(client.read(all.size()), all);
        const ReceiptRun run = recorder.interrupted();
        QCOMPARE(bytesOf(recordingOf(file), false), all);
        QVERIFY(bytesOf(recordingOf(file), true).startsWith(all));
        QVERIFY(run.output.contains("768 bytes to the printer"));
    }

    void terminalHearsItsClientOnAnySetting()
    {
        const PlayedPrinter printer(model);
        Recorder recorder({"--to", printer.address(), newFile()});
        for (const char *baud : {"1200", "115200"})
            QCOMPARE(
                selfTest(QString("serial:%1?baud=%2&flow=none").arg(recorder.name(), baud)).status,
                0);
        QCOMPARE(recorder.interrupted().status, 0);
    }

    void longJobIsHeldBackByASlowPrinterAndWhole()
    {
        QProcess slow;
        // What it tells goes to a file, as nobody reads it meanwhile.
        const QString told = m_folder.path("told");
        slow.setStandardOutputFile(told);
        slow.start(VIRTUAL_PRINTER_PROGRAM,
                   {"--model", model, "--listen", "127.0.0.1:0", "--pace", "60000,0"});
        QTRY_VERIFY(m_folder.content("told").contains('\n'));
        const QString printer = "tcp:" + m_folder.content("told").split('\n').constFirst();
        const QString file = newFile();
        Recorder recorder({"--to", printer, file, "--listen", "127.0.0.1:0"});
        const QString direct = m_folder.path("direct.bin");
        QCOMPARE(selfTest("file:" + direct, "ruler,pages,pictures,codes,cuts").status, 0);
        QCOMPARE(selfTest(recorder.address(), "ruler,pages,pictures,codes,cuts").status, 0);
        QCOMPARE(recorder.interrupted().status, 0);
        const QByteArray sent = bytesOf(recordingOf(file), false);
        const QByteArray whole = m_folder.content("direct.bin");
        // The job adds the printer's own status behind each reset.
        QVERIFY(sent.size() >= whole.size());
        QVERIFY(sent.contains(whole.right(1000)));
        slow.kill();
        slow.waitForFinished();
    }

    void pieceIsInTheFileBeforeTheRecorderEnds()
    {
        const Host host("");
        const QString file = newFile();
        Recorder recorder({"--to", host.address(), file, "--listen", "127.0.0.1:0"});
        QTcpSocket client;
        client.connectToHost("127.0.0.1", recorder.name().section(':', 1).toUShort());
        client.write("one");
        QTRY_COMPARE(bytesOf(recordingOf(file), false), QByteArray("one"));
        // As by a power cut.
        recorder.kill();
        QCOMPARE(recorder.result().status, -1);
        QCOMPARE(bytesOf(recordingOf(file), false), QByteArray("one"));
    }

    void fileThatIsThereIsReplacedByForceAlone()
    {
        const PlayedPrinter printer(model);
        const QString file = m_folder.file("there.txt", "0.1 host 41\n");
        const ReceiptRun run = runReceipt({"record", "--to", printer.address(), file});
        QCOMPARE(run.status, 1);
        QCOMPARE(run.errors, "receipt: " + file + ": is there already; --force replaces it\n");
        QCOMPARE(m_folder.content("there.txt"), QByteArray("0.1 host 41\n"));
        Recorder recorder({"--to", printer.address(), file, "--force"});
        QVERIFY(!recorder.name().isEmpty());
        QCOMPARE(recorder.interrupted().status, 0);
        QCOMPARE(recordingOf(file).size(), 0);
        QVERIFY(m_folder.content("there.txt").startsWith("# recorded by receipt "));
    }

    void fullDiskEndsItWithAWholeFile()
    {
        const Host host("");
        // The smallest disk that can be had without being root: a limit on the size of files.
        QProcess recorder;
        const QString file = newFile();
        recorder.start("/bin/sh",
                       {"-c", "trap '' XFSZ; ulimit -f 1; exec \"$@\"", "sh", RECEIPT_PROGRAM,
                        "record", "--to", host.address(), file, "--listen", "127.0.0.1:0"});
        QVERIFY(recorder.waitForReadyRead(printerPatience));
        const QString name = QString(recorder.readLine()).trimmed();
        QTcpSocket client;
        client.connectToHost("127.0.0.1", name.section(':', 1).toUShort());
        QVERIFY(client.waitForConnected(printerPatience));
        // A busy machine joins what comes behind it to a piece that is more than the disk takes.
        client.write(QByteArray(100, 'x'));
        QTRY_VERIFY_WITH_TIMEOUT(!recordingOf(file).isEmpty(), printerPatience);
        for (int i = 0; i < 30 && recorder.state() == QProcess::Running; ++i) {
            client.write(QByteArray(100, 'x'));
            client.waitForBytesWritten(1000);
            QTest::qWait(20);
        }
        QTRY_COMPARE_WITH_TIMEOUT(recorder.state(), QProcess::NotRunning, printerPatience);
        QCOMPARE(recorder.exitCode(), 1);
        const QString errors = recorder.readAllStandardError();
        QVERIFY2(errors.contains(file + ": "), qPrintable(errors));
        QVERIFY(!recordingOf(file).isEmpty());
    }

    // What was taken from a program isn't lost with the recording of the rest.
    void fullDiskKeepsNothingFromThePrinter()
    {
        const QString all = m_folder.file("long", QByteArray(200000, 'x'));
        const QString pipe = m_folder.path("slow");
        QCOMPARE(::mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
        const int printer = ::open(pipe.toLocal8Bit().constData(), O_RDONLY | O_NONBLOCK);
        QVERIFY(printer >= 0);
        ::fcntl(printer, F_SETPIPE_SZ, 4096);
        const QString file = newFile();
        QProcess recorder;
        recorder.start("/bin/sh", {"-c", "trap '' XFSZ; ulimit -f 200; exec \"$@\"", "sh",
                                   RECEIPT_PROGRAM, "record", "--to", "device:" + pipe, file, "--",
                                   "sh", "-c", "cat \"$1\" >\"${2#device:}\"", "sh", all, "{}"});
        QVERIFY(recorder.waitForStarted());
        QByteArray printed;
        const auto read = [&] {
            QByteArray bytes(500, '\0');
            const ssize_t count = ::read(printer, bytes.data(), std::size_t(bytes.size()));
            printed += bytes.left(std::max(int(count), 0));
            return count > 0;
        };
        while (!recorder.waitForFinished(1))
            read();
        while (read()) {
        }
        ::close(printer);
        QCOMPARE(recorder.exitCode(), 1);
        const int recorded = bytesOf(recordingOf(file), false).size();
        QVERIFY(recorded > 20000);
        QVERIFY2(printed.size() >= recorded, qPrintable(QString::number(printed.size())));
    }

    void printerThatIsNotThereIsTold()
    {
        QTcpServer closed;
        QVERIFY(closed.listen(QHostAddress::LocalHost));
        const QString address = QString("tcp:127.0.0.1:%1").arg(closed.serverPort());
        closed.close();
        const QString file = newFile();
        const ReceiptRun run = runReceipt({"record", "--to", address, file});
        QCOMPARE(run.status, 1);
        QVERIFY2(run.errors.contains("refuses the connection"), qPrintable(run.errors));
        QCOMPARE(run.output, QString());
        QVERIFY(!QFile::exists(file));
        // Nor is a recording lost.
        const QString old = m_folder.file("old.txt", "0.1 host 41\n");
        QCOMPARE(runReceipt({"record", "--to", address, old, "--force"}).status, 1);
        QCOMPARE(m_folder.content("old.txt"), QByteArray("0.1 host 41\n"));
    }

    void printerThatGoesAndComesIsWaitedFor()
    {
        PlayedPrinter printer(model);
        const QString file = newFile();
        Recorder recorder({"--to", printer.address(), file, "--listen", "127.0.0.1:0"});
        QCOMPARE(selfTest(recorder.address()).status, 0);
        QVERIFY(printer.befall("reset connection"));
        QString line;
        do
            line = recorder.outputLine();
        while (!line.isNull() && line != "the printer is back");
        QCOMPARE(line, QString("the printer is back"));
        QCOMPARE(selfTest(recorder.address()).status, 0);
        QCOMPARE(recorder.interrupted().status, 0);
        QFile content(file);
        QVERIFY(content.open(QIODevice::ReadOnly));
        const QByteArray text = content.readAll();
        QVERIFY(text.contains("\n# the printer has gone: "));
        QVERIFY(text.contains("\n# the printer is back\n"));
        QCOMPARE(bytesOf(recordingOf(file), false).count("SELF TEST"), 2);
    }

    void interruptBeforeThePrinterIsReachedLeavesNoFile()
    {
        const BusyHost host;
        const QString file = newFile();
        const QString link = m_folder.path("unreached");
        RunningReceipt recorder({"record", "--to", host.address(), file, "--link", link});
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo(link).isSymLink(), printerPatience);
        recorder.interrupt();
        const ReceiptRun run = recorder.result();
        QCOMPARE(run.errors, QString("receipt: cancelled\n"));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 1);
        QVERIFY(!QFile::exists(file));
    }

    void clientThatIsThereBeforeThePrinterIsHeardBehindIt()
    {
        BusyHost host;
        const QString file = newFile();
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        const quint16 port = server.serverPort();
        server.close();
        const QString name = QString("127.0.0.1:%1").arg(port);
        RunningReceipt recorder({"record", "--to", host.address(), file, "--listen", name});
        QTcpSocket client;
        const auto isConnected = [&] {
            client.connectToHost(QHostAddress::LocalHost, port);
            return client.waitForConnected(printerPatience);
        };
        QTRY_VERIFY_WITH_TIMEOUT(isConnected(), printerPatience);
        client.write("one");
        QVERIFY(!recorder.waitForFinished(300));
        host.take();
        QTRY_COMPARE_WITH_TIMEOUT(bytesOf(recordingOf(file), false), QByteArray("one"),
                                  printerPatience);
        recorder.interrupt();
        const ReceiptRun run = recorder.result();
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
        const QStringList lines = run.output.split('\n');
        QCOMPARE(lines.at(0), name);
        QVERIFY2(lines.at(1).startsWith("connected: "), qPrintable(run.output));
        QFile content(file);
        QVERIFY(content.open(QIODevice::ReadOnly));
        const QByteArrayList kept = content.readAll().split('\n');
        QVERIFY(kept.at(0).startsWith("# recorded by receipt "));
        QVERIFY2(kept.at(1).startsWith("# connected: "), kept.join('\n').constData());
    }

    void printerOfAFileIsTaken()
    {
        const PlayedPrinter printer(model);
        const QString config =
            m_folder.file("shop.conf", "to=" + printer.address().toUtf8() + "\nmodel=TSP-TUP\n");
        const QString file = newFile();
        Recorder recorder({"--config", config, file});
        QCOMPARE(selfTest(recorder.address()).status, 0);
        QCOMPARE(recorder.interrupted().status, 0);
        QVERIFY(bytesOf(recordingOf(file), false).contains("SELF TEST"));
    }

    void fileThatIsThereIsToldBeforeTheTurnIsWaitedFor()
    {
        const PlayedPrinter printer(model);
        DeviceLock lock(*PrinterAddress::parse(printer.address()));
        QVERIFY(lock.waitFor(500));
        const QString file = m_folder.file("before.txt", "");
        QCOMPARE(runReceipt({"record", "--to", printer.address(), file}).errors,
                 "receipt: " + file + ": is there already; --force replaces it\n");
    }

    void turnIsWaitedForAndHeld()
    {
        const PlayedPrinter printer(model);
        DeviceLock lock(*PrinterAddress::parse(printer.address()));
        QVERIFY(lock.waitFor(500));
        RunningReceipt recorder({"record", "--to", printer.address(), newFile()});
        const QString line = recorder.errorLine();
        QVERIFY2(line.contains("1 job is in front"), qPrintable(line));
        lock.release();
        recorder.setReadChannel(QProcess::StandardOutput);
        QTRY_VERIFY_WITH_TIMEOUT(recorder.canReadLine(), printerPatience);
        QVERIFY(!lock.waitFor(200));
        recorder.interrupt();
        QCOMPARE(recorder.result().status, 0);
        QVERIFY(lock.waitFor(500));
    }

    void interruptEndsTheWaitForTheTurn()
    {
        const PlayedPrinter printer(model);
        DeviceLock lock(*PrinterAddress::parse(printer.address()));
        QVERIFY(lock.waitFor(500));
        const QString file = newFile();
        RunningReceipt recorder({"record", "--to", printer.address(), file});
        recorder.errorLine();
        recorder.interrupt();
        const ReceiptRun run = recorder.result();
        QCOMPARE(run.status, 1);
        QVERIFY(run.errors.contains("cancelled"));
        QVERIFY(!QFile::exists(file));
    }

    void wrongUsageIsTold_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("message");
        QTest::newRow("no printer") << QStringList("x") << "record needs --to URL";
        QTest::newRow("no file") << QStringList({"--to", "tcp:localhost"})
                                 << "wrong number of arguments";
        QTest::newRow("no address") << QStringList({"--to", "nowhere", "x"}) << "--to: ";
        QTest::newRow("file") << QStringList({"--to", "file:printed", "x"})
                              << "--to: file:printed is a file, which answers nothing";
        QTest::newRow("link and port")
            << QStringList({"--to", "tcp:localhost", "x", "--link", "y", "--listen", "z"})
            << "--link doesn't go with --listen";
    }
    void wrongUsageIsTold()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, message);
        const ReceiptRun run = runReceipt(QStringList("record") + arguments);
        QCOMPARE(run.status, 2);
        QVERIFY2(run.errors.contains(message), qPrintable(run.errors));
    }

    void lineThatCannotBeMadeIsTold()
    {
        const QString there = m_folder.file("taken", "");
        const ReceiptRun link =
            runReceipt({"record", "--to", "tcp:127.0.0.1:1", newFile(), "--link", there});
        QCOMPARE(link.status, 1);
        QCOMPARE(link.errors, "receipt: " + there + ": File exists\n");
        QVERIFY(QFile::exists(there));
        const ReceiptRun port =
            runReceipt({"record", "--to", "tcp:127.0.0.1:1", newFile(), "--listen", "nowhere:1"});
        QCOMPARE(port.status, 1);
        QVERIFY2(port.errors.startsWith("receipt: --listen: "), qPrintable(port.errors));
    }
};

QTEST_GUILESS_MAIN(TestReceiptRecord)
#include "tst_receipt_record.moc"
