// The program at a port of TCP and on a terminal: who is served, what befalls the printer by
// standard input, by time and by byte, and what is told of it.
#include <signal.h>

#include <QProcess>
#include <QSerialPort>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr int patience = 30000;
constexpr int silence = 300;
const QByteArray cut("\x1DVB\x00", 4);
const QByteArray statusQuestion("\x10\x04\x01", 3);
const QByteArray turnQuestion("\x1Dr\x01", 3);

/// The program, with its input and its lines.
class Program
{
public:
    explicit Program(const QStringList &options)
    {
        m_process.start(VIRTUAL_PRINTER_PROGRAM, options);
    }
    ~Program()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    void say(const QByteArray &line)
    {
        m_process.write(line + '\n');
        m_process.waitForBytesWritten(patience);
    }
    QString nextLine(QProcess::ProcessChannel channel = QProcess::StandardOutput)
    {
        m_process.setReadChannel(channel);
        while (!m_process.canReadLine()) {
            if (!m_process.waitForReadyRead(patience))
                return QString();
        }
        return QString::fromUtf8(m_process.readLine()).trimmed();
    }
    /// Skips lines up to one that begins so.
    QString lineWith(const QString &beginning)
    {
        QString line;
        do
            line = nextLine();
        while (!line.isNull() && !line.startsWith(beginning));
        return line;
    }
    QString complaint() { return nextLine(QProcess::StandardError); }
    /// Says what befalls the printer, and waits until it has.
    void befall(const QString &fault)
    {
        say(fault.toUtf8());
        lineWith("command: " + fault);
    }
    /// What it says meanwhile doesn't hold it up.
    void drain()
    {
        if (m_process.waitForReadyRead(1))
            m_process.readAllStandardOutput();
    }
    void closeInput() { m_process.closeWriteChannel(); }
    void signal(int number) { ::kill(static_cast<pid_t>(m_process.processId()), number); }
    bool ends() { return m_process.waitForFinished(patience); }
    int status() const
    {
        return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    }
    /// Ends it as Ctrl+C does.
    int end()
    {
        signal(SIGINT);
        return ends() ? status() : -1;
    }

private:
    QProcess m_process;
};

/// The program on TCP and a client of it.
class Bench
{
public:
    explicit Bench(const QStringList &options = {}, const QString &model = "CITIZEN_CTS_2000")
        : program(QStringList{"--model", model, "--listen", "127.0.0.1:0"} + options)
    {
        m_port = program.nextLine().section(':', 1).toUShort();
        join(client);
    }

    void join(QTcpSocket &socket) const
    {
        socket.connectToHost(QHostAddress(QHostAddress::LocalHost), m_port);
        socket.waitForConnected(patience);
    }
    QByteArray answer(int size, int wait = patience) { return answerTo(client, size, wait); }
    static QByteArray answerTo(QTcpSocket &socket, int size, int wait = patience)
    {
        while (socket.bytesAvailable() < size && socket.waitForReadyRead(wait)) {
        }
        return socket.readAll();
    }
    QByteArray ask(const QByteArray &question, int size = 1)
    {
        send(question);
        return answer(size);
    }
    void send(const QByteArray &bytes)
    {
        client.write(bytes);
        client.waitForBytesWritten(patience);
    }
    bool isServed() { return ask(statusQuestion) == "\x12"; }
    quint16 port() const { return m_port; }

    Program program;
    QTcpSocket client;

private:
    quint16 m_port = 0;
};

QString contentOf(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

}  // namespace

class TestVirtualPrinterLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void clientIsServedOverTheNetwork()
    {
        const QTemporaryDir folder;
        const QString papers = folder.filePath("papers");
        Bench bench({"--paper", papers});
        QVERIFY(bench.isServed());
        bench.send("Hello\n" + cut);
        QVERIFY(bench.program.lineWith("paper: ").startsWith("paper: " + papers + "/paper-0001"));
        QCOMPARE(contentOf(papers + "/paper-0001.txt"), QString("Hello\n[cut]\n"));
        bench.send("not cut\n");
        QCOMPARE(bench.ask(turnQuestion), QByteArray(1, '\0'));
        QCOMPARE(bench.program.end(), 0);
        QCOMPARE(contentOf(papers + "/paper-0002.txt"), QString("not cut\n"));
    }

    void dialogueOfTheNetworkIsShown()
    {
        Bench bench;
        QVERIFY(bench.isServed());
        QVERIFY(bench.program.nextLine().startsWith("connected: 127.0.0.1:"));
        QCOMPARE(bench.program.nextLine(), QString("tcp < 10 04 01"));
        QCOMPARE(bench.program.nextLine(), QString("tcp > 12"));
    }

    void otherClientsWait()
    {
        Bench bench;
        QVERIFY(bench.isServed());
        QTcpSocket second;
        QTcpSocket third;
        bench.join(second);
        bench.join(third);
        second.write(statusQuestion);
        third.write(turnQuestion);
        second.flush();
        third.flush();
        QVERIFY(!second.waitForReadyRead(silence));
        QVERIFY(bench.isServed());
        bench.client.disconnectFromHost();
        QCOMPARE(Bench::answerTo(second, 1), QByteArray("\x12"));
        QVERIFY(!third.waitForReadyRead(silence));
        second.disconnectFromHost();
        QCOMPARE(Bench::answerTo(third, 1), QByteArray(1, '\0'));
    }

    void whatAClientSentBeforeItLeftIsPrinted()
    {
        const QTemporaryDir folder;
        Bench bench({"--paper", folder.path()});
        QByteArray lines;
        for (int i = 0; i < 20'000; ++i)
            lines += "line\n";
        bench.client.write(lines + cut);
        bench.client.disconnectFromHost();
        while (bench.client.state() != QAbstractSocket::UnconnectedState)
            QVERIFY(bench.client.waitForDisconnected(patience));
        QVERIFY(!bench.program.lineWith("paper: ").isEmpty());
        const QString text = contentOf(folder.filePath("paper-0001.txt"));
        QVERIFY(text.startsWith("line\nline\n"));
    }

    void hostOfAStoppedPrinterWaits()
    {
        Bench bench;
        QVERIFY(bench.isServed());
        bench.program.befall("paper out");
        const int many = 8'000'000;
        bench.client.write(QByteArray(many, '\n') + turnQuestion);
        bench.client.waitForBytesWritten(silence);
        QVERIFY(!bench.client.waitForReadyRead(silence));
        QVERIFY(bench.client.bytesToWrite() > 0);
        bench.program.befall("paper back");
        while (bench.client.bytesToWrite() > 0 || bench.client.bytesAvailable() == 0) {
            bench.program.drain();
            QVERIFY(bench.client.state() == QAbstractSocket::ConnectedState);
            bench.client.waitForReadyRead(1);
        }
        QCOMPARE(bench.client.readAll(), QByteArray(1, '\0'));
    }

    void commandsComeByStandardInput()
    {
        Bench bench;
        QVERIFY(bench.isServed());
        bench.program.befall("cover open");
        QCOMPARE(bench.ask(statusQuestion), QByteArray("\x1A"));
        bench.program.befall("cover closed");
        QVERIFY(bench.isServed());
    }

    void otherCommandsAreTold()
    {
        Bench bench;
        bench.program.say("fire\x1B[31m");
        QCOMPARE(
            bench.program.complaint(),
            QString("virtual-printer: \"fire\\u001b[31m\" is no command; \"help\" lists them"));
        bench.program.say("swallow");
        QCOMPARE(bench.program.complaint(),
                 QString("virtual-printer: \"swallow\" takes a number, not \"\""));
        bench.program.say("\n   \n");
        QVERIFY(bench.isServed());
    }

    void helpListsTheCommands()
    {
        Bench bench;
        bench.program.say("help");
        QVERIFY(!bench.program.lineWith("paper out ").isEmpty());
        QVERIFY(!bench.program.lineWith("change N ").isEmpty());
    }

    void endOfInputChangesNothing()
    {
        Bench bench;
        bench.program.say("paper out");
        bench.program.closeInput();
        QVERIFY(!bench.program.lineWith("command: paper out").isEmpty());
        QCOMPARE(bench.ask(statusQuestion), QByteArray("\x1A"));
        QCOMPARE(bench.program.end(), 0);
    }

    void connectionIsReset()
    {
        Bench bench;
        QVERIFY(bench.isServed());
        bench.program.say("reset connection");
        QVERIFY(bench.client.waitForDisconnected(patience));
        QVERIFY(bench.program.lineWith("disconnected: ").startsWith("disconnected: 127.0.0.1:"));
        QTcpSocket next;
        bench.join(next);
        next.write(statusQuestion);
        QCOMPARE(Bench::answerTo(next, 1), QByteArray("\x12"));
        next.disconnectFromHost();
        QVERIFY(!bench.program.lineWith("disconnected: ").isEmpty());
        bench.program.say("reset connection");
        QCOMPARE(bench.program.lineWith("there is"), QString("there is no connection to reset"));
    }

    void whatTheNextClientHasSentOutlivesAReset()
    {
        Bench bench;
        QVERIFY(bench.isServed());
        QTcpSocket second;
        bench.join(second);
        second.write(statusQuestion);
        second.waitForBytesWritten(patience);
        QVERIFY(bench.isServed());
        bench.program.befall("reset connection");
        QCOMPARE(Bench::answerTo(second, 1), QByteArray("\x12"));
    }

    void powerOffIsSilentAndForgets()
    {
        Bench bench;
        QVERIFY(bench.isServed());
        bench.program.befall("power off");
        bench.send(statusQuestion);
        QVERIFY(!bench.client.waitForReadyRead(silence));
        QTcpSocket second;
        bench.join(second);
        QVERIFY(second.state() != QAbstractSocket::ConnectedState);
        bench.program.befall("power on");
        QVERIFY(bench.client.state() == QAbstractSocket::UnconnectedState ||
                bench.client.waitForDisconnected(patience));
        bench.client.abort();
        bench.join(bench.client);
        QVERIFY(bench.isServed());
    }

    void faultsComeByByteAndTime()
    {
        const QTemporaryDir folder;
        Bench bench({"--at", "byte 2:paper out", "--at", "0:near end", "--paper", folder.path()});
        bench.send("a\nb\n" + cut + QByteArray("\x10\x04\x04", 3));
        QCOMPARE(bench.answer(1), QByteArray("\x7E"));
        bench.program.say("paper back");
        QVERIFY(!bench.program.lineWith("paper: ").isEmpty());
        QCOMPARE(contentOf(folder.filePath("paper-0001.txt")), QString("a\nb\n[cut]\n"));
    }

    void answersComeLate()
    {
        Bench bench;
        bench.program.befall("answers late 400");
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(bench.ask(statusQuestion), QByteArray("\x12"));
        QVERIFY(clock.elapsed() >= 399);
    }

    void headAndLineTakeTheirTime()
    {
        Bench bench({"--pace", "1000,0"});
        QElapsedTimer clock;
        clock.start();
        bench.send(QByteArray(300, '\n') + turnQuestion);
        QCOMPARE(bench.answer(1), QByteArray(1, '\0'));
        QVERIFY(clock.elapsed() >= 270);

        Bench printing({"--pace", "0,50"}, "SWECOIN_TM_20XX");
        clock.start();
        // Ten lines of 34 dots are 42 mm.
        QCOMPARE(printing.ask(QByteArray(10, '\n') + "\x1B\x06\x33"), QByteArray("\x33"));
        QVERIFY(clock.elapsed() >= 800);
    }

    void bytesThatDoNotFitAreTold()
    {
        Program program({"--model", "CITIZEN_CTS_2000"});
        QSerialPort port(program.nextLine());
        QVERIFY(port.open(QIODevice::ReadWrite));
        port.setBaudRate(57600);
        program.befall("cover open");
        port.write(QByteArray(3000, 'x'));
        QVERIFY(port.waitForBytesWritten(patience));
        port.write(QByteArray(1100, 'y') + statusQuestion);
        QVERIFY(port.waitForBytesWritten(patience));
        QVERIFY(port.waitForReadyRead(patience));
        QCOMPARE(port.readAll(), QByteArray("\x1A"));
        int lost = 0;
        while (lost < 7)
            lost += program.lineWith("lost: ").section(' ', 1, 1).toInt();
        QCOMPARE(lost, 7);
    }

    void aSlowLineServesWhoHasWaitedToo()
    {
        const QTemporaryDir folder;
        Bench bench({"--paper", folder.path(), "--pace", "1000,0"});
        QVERIFY(bench.isServed());
        QTcpSocket second;
        bench.join(second);
        second.write("second\n" + cut);
        second.waitForBytesWritten(patience);
        second.disconnectFromHost();
        bench.send(QByteArray(300, 'x') + '\n' + cut);
        bench.client.disconnectFromHost();
        QVERIFY(!bench.program.lineWith("paper: ").isEmpty());
        QVERIFY(!bench.program.lineWith("paper: ").isEmpty());
        QCOMPARE(contentOf(folder.filePath("paper-0002.txt")), QString("second\n[cut]\n"));
    }

    void flowControlHoldsTheHost_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QSerialPort::FlowControl>("flow");
        QTest::newRow("hardware") << "hardware" << QSerialPort::HardwareControl;
        QTest::newRow("software") << "software" << QSerialPort::SoftwareControl;
    }

    void flowControlHoldsTheHost()
    {
        QFETCH(QString, name);
        QFETCH(QSerialPort::FlowControl, flow);
        const QTemporaryDir folder;
        Program program({"--model", "CITIZEN_CTS_2000", "--flow", name, "--paper", folder.path()});
        QSerialPort port(program.nextLine());
        QVERIFY(port.open(QIODevice::ReadWrite));
        port.setBaudRate(57600);
        port.setFlowControl(flow);
        program.befall("paper out");
        QByteArray lines;
        for (int i = 0; i < 1500; ++i)
            lines += QByteArray::number(i) + "\n";
        port.write(lines + cut);
        QTest::qWait(silence);
        program.say("paper back");
        QString line;
        while (!line.startsWith("paper: ")) {
            port.waitForBytesWritten(50);
            line = program.lineWith("");
            QVERIFY(!line.isNull());
            QVERIFY2(!line.startsWith("lost: "), qPrintable(line));
        }
        QCOMPARE(contentOf(folder.filePath("paper-0001.txt")),
                 QString::fromLatin1(lines) + "[cut]\n");
    }

    void recordedSessionIsPlayed()
    {
        const QTemporaryDir folder;
        QFile file(folder.filePath("session"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("# asked once\n0 host 41\n0.01 printer 42 43\n");
        file.close();
        Bench bench({"--replay", file.fileName()});
        QCOMPARE(bench.ask("A", 2), QByteArray("BC"));
        QVERIFY(!bench.program.lineWith("the recording has ended").isEmpty());
        bench.program.say("paper out");
        QCOMPARE(bench.program.complaint(),
                 QString("virtual-printer: a recorded printer takes no commands"));
        QCOMPARE(bench.program.end(), 0);
    }

    void modelsOfNoSearchPrintOnTheNetwork()
    {
        Bench bench({}, "WPK_833");
        QVERIFY(bench.isServed());
    }

    void listingIsOfTheNetworkToo()
    {
        Bench bench({"--listing"});
        bench.send("text\n");
        QVERIFY(bench.program.lineWith("tcp < 00000000").contains("\"text\""));
    }

    void programWithoutInputPlays()
    {
        QProcess process;
        process.start("sh", {"-c", "exec \"$0\" --model AV_268 --listen 127.0.0.1:0 <&-",
                             VIRTUAL_PRINTER_PROGRAM});
        QVERIFY(process.waitForReadyRead(patience));
        QTcpSocket client;
        client.connectToHost(QHostAddress(QHostAddress::LocalHost),
                             process.readLine().trimmed().split(':').last().toUShort());
        client.write(statusQuestion);
        QCOMPARE(Bench::answerTo(client, 1), QByteArray("\x12"));
        ::kill(static_cast<pid_t>(process.processId()), SIGTERM);
        QVERIFY(process.waitForFinished(patience));
        QCOMPARE(process.exitCode(), 0);
    }

    void takenPortIsTold()
    {
        QTcpServer other;
        QVERIFY(other.listen(QHostAddress(QHostAddress::LocalHost), 0));
        const QString address = QStringLiteral("127.0.0.1:%1").arg(other.serverPort());
        Program program({"--model", "AV_268", "--listen", address});
        QCOMPARE(program.complaint(),
                 "virtual-printer: " + address + ": The bound address is already in use");
        QVERIFY(program.ends());
        QCOMPARE(program.status(), 1);
    }

    void wrongUsageIsTold_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("message");
        QTest::addColumn<int>("status");
        const auto row = [](const char *name, const QStringList &options, const char *message,
                            int status = 2) {
            QTest::newRow(name) << options << QString("virtual-printer: ") + message << status;
        };
        row("no address", {"--listen", "nowhere"},
            "\"nowhere\" is no address and port, such as 127.0.0.1:9100", 1);
        row("no port", {"--listen", "127.0.0.1:70000"},
            "\"127.0.0.1:70000\" is no address and port, such as 127.0.0.1:9100", 1);
        row("line settings", {"--listen", "127.0.0.1:0", "--baud", "9600"},
            "--listen doesn't go with --baud");
        row("fault", {"--listen", "127.0.0.1:0", "--fault", "echo"},
            "--fault doesn't go with --listen");
        row("pace", {"--pace", "fast"}, "--pace: \"fast\" is none of its values");
        row("time", {"--at", "paper out"},
            "--at: \"paper out\" is neither SECONDS:COMMAND nor byte N:COMMAND");
        row("command", {"--at", "1:fire"}, "--at: \"fire\" is no command; \"help\" lists them");
        row("file", {"--replay", "/nonexistent/session"},
            "/nonexistent/session: No such file or directory");
        row("recording", {"--replay", VIRTUAL_PRINTER_PROGRAM}, VIRTUAL_PRINTER_PROGRAM);
        row("replay that draws", {"--replay", "x", "--paper", "y"},
            "--replay doesn't go with --paper");
    }

    void wrongUsageIsTold()
    {
        QFETCH(QStringList, options);
        QFETCH(QString, message);
        Program program(QStringList{"--model", "AV_268"} + options);
        QVERIFY(program.ends());
        const QString complaint = program.complaint();
        QVERIFY2(complaint.startsWith(message), qPrintable(complaint));
        QTEST(program.status(), "status");
    }

    void unknownModelOfTheNetworkIsTold()
    {
        Program program({"--model", "NONE", "--listen", "127.0.0.1:0"});
        QVERIFY(program.ends());
        QVERIFY(program.complaint().contains("NP_F209_2D"));
        QCOMPARE(program.status(), 2);
    }
};

QTEST_GUILESS_MAIN(TestVirtualPrinterLine)
#include "tst_virtualprinter_line.moc"
