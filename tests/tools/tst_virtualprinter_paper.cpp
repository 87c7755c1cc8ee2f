// What a virtual printer prints, and lists, while it plays.
#include <signal.h>

#include <QImage>
#include <QProcess>
#include <QSerialPort>
#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr int patience = 30000;
const QByteArray cut("\x1DVB\x00", 4);
const QByteArray identification("\x1D\x49\x01", 3);

/// The program with a client at its port.
class Bench
{
public:
    /// @param setting commands of a shell that the program starts from
    explicit Bench(const QStringList &options, const QString &setting = ":")
    {
        m_program.start("sh", QStringList{"-c", setting + "; exec \"$0\" \"$@\"",
                                          VIRTUAL_PRINTER_PROGRAM, "--model", "CUSTOM_VKP_80"} +
                                  options);
        if (!nextLine(m_path) || !m_path.startsWith("/dev/pts/"))
            return;
        m_port.setPortName(m_path);
        m_port.setBaudRate(57600);
        m_isOpen = m_port.open(QIODevice::ReadWrite);
    }
    ~Bench() { m_program.kill(), m_program.waitForFinished(); }

    bool isOpen() const { return m_isOpen; }
    void setBaudRate(int rate) { m_port.setBaudRate(rate); }
    void send(const QByteArray &bytes)
    {
        m_port.write(bytes);
        m_port.waitForBytesWritten(patience);
    }
    QByteArray answer()
    {
        return m_port.waitForReadyRead(patience) ? m_port.readAll() : QByteArray();
    }
    /// The next line that isn't of the dialogue in hexadecimal.
    QString nextReport()
    {
        QString line;
        while (nextLine(line)) {
            if (!line.startsWith("57600 none "))
                return line;
        }
        return QString();
    }
    bool nextLine(QString &line)
    {
        while (!m_program.canReadLine()) {
            if (!m_program.waitForReadyRead(patience))
                return false;
        }
        line = QString::fromUtf8(m_program.readLine()).trimmed();
        return true;
    }
    /// Ends it as Ctrl+C does, and gives what it says then.
    QStringList end()
    {
        ::kill(static_cast<pid_t>(m_program.processId()), SIGINT);
        m_program.waitForFinished(patience);
        return QString::fromUtf8(m_program.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
    }
    /// The next line of standard error.
    QString nextComplaint()
    {
        m_program.setReadChannel(QProcess::StandardError);
        QString line;
        const bool hasLine = nextLine(line);
        m_program.setReadChannel(QProcess::StandardOutput);
        return hasLine ? line : QString();
    }
    int status() const
    {
        return m_program.exitStatus() == QProcess::NormalExit ? m_program.exitCode() : -1;
    }

private:
    QProcess m_program;
    QString m_path;
    QSerialPort m_port;
    bool m_isOpen = false;
};

QString contentOf(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

}  // namespace

class TestVirtualPrinterPaper : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pieceIsDrawnAsItIsCut()
    {
        const QTemporaryDir folder;
        const QString papers = folder.filePath("new/papers");
        Bench bench({"--paper", papers});
        QVERIFY(bench.isOpen());
        bench.send("Hello\n" + cut);
        const QString line = bench.nextReport();
        const QImage picture(papers + "/paper-0001.png");
        QCOMPARE(line, QString("paper: %1/paper-0001.png, %2 x %3 dots, cut")
                           .arg(papers)
                           .arg(picture.width())
                           .arg(picture.height()));
        QVERIFY(picture.height() > 24);
        QCOMPARE(contentOf(papers + "/paper-0001.txt"), QString("Hello\n[cut]\n"));
        bench.send("again\n" + cut);
        QVERIFY(bench.nextReport().startsWith("paper: " + papers + "/paper-0002.png, "));
        QCOMPARE(contentOf(papers + "/paper-0002.txt"), QString("again\n[cut]\n"));
        QCOMPARE(bench.end(), QStringList());
        QCOMPARE(bench.status(), 0);
    }

    void whatHangsInThePrinterIsDrawnAtTheEnd()
    {
        const QTemporaryDir folder;
        Bench bench({"--paper", folder.path()});
        bench.send("Hello\n" + identification);
        QCOMPARE(bench.answer(), QByteArray("\x5D"));
        QVERIFY(bench.end().last().endsWith(" dots, not cut"));
        QCOMPARE(contentOf(folder.filePath("paper-0001.txt")), QString("Hello\n"));
    }

    void charactersThatTheStreamDrawsAreRead()
    {
        // One without dots, and one that is no letter.
        const QByteArray define("\x1B&\x03xy\x01\0\0\0\x02\xA5\x5A\xA5\x5A\xA5\x5A\x1B%\x01", 19);
        const QTemporaryDir folder;
        Bench bench({"--paper", folder.path()});
        bench.send(define + "axya\n" + identification);
        QCOMPARE(bench.answer(), QByteArray("\x5D"));
        bench.end();
        QCOMPARE(contentOf(folder.filePath("paper-0001.txt")), QString::fromUtf8("a \uFFFDa\n"));
    }

    void whatThePrinterDoesNotDoIsTold()
    {
        const QTemporaryDir folder;
        Bench bench({"--paper", folder.path()});
        bench.send("a\x1B~\n" + cut);
        QCOMPARE(bench.nextReport(), QString("note: byte 1: ESC ~ isn't known"));
        QVERIFY(bench.nextReport().startsWith("paper: "));
    }

    void nothingPrintedIsNoPiece()
    {
        const QTemporaryDir folder;
        Bench bench({"--paper", folder.path()});
        bench.send(identification);
        QCOMPARE(bench.answer(), QByteArray("\x5D"));
        bench.end();
        QVERIFY(QDir(folder.path()).isEmpty());
    }

    void filesThatAreThereStay()
    {
        const QTemporaryDir folder;
        for (const char *name : {"paper-0001.png", "paper-0002.txt"}) {
            QFile file(folder.filePath(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write("kept");
        }
        Bench bench({"--paper", folder.path()});
        bench.send("Hello\n" + cut);
        QVERIFY(bench.nextReport().startsWith("paper: " + folder.filePath("paper-0003.png")));
        QCOMPARE(contentOf(folder.filePath("paper-0001.png")), QString("kept"));
        QCOMPARE(contentOf(folder.filePath("paper-0002.txt")), QString("kept"));
    }

    void whatComesAtAnotherSpeedIsNotPrinted()
    {
        const QTemporaryDir folder;
        Bench bench({"--paper", folder.path(), "--listing"});
        bench.setBaudRate(9600);
        bench.send("garbage");
        QString line;
        QVERIFY(bench.nextLine(line));
        QCOMPARE(line, QString("9600 none < 67 61 72 62 61 67 65"));
        bench.setBaudRate(57600);
        bench.send("good\n" + cut);
        QVERIFY(bench.nextReport().startsWith("paper: "));
        QCOMPARE(contentOf(folder.filePath("paper-0001.txt")), QString("good\n[cut]\n"));
    }

    void commandsAreListed()
    {
        Bench bench({"--listing"});
        bench.send("\x1B@Hello\n" + identification);
        QCOMPARE(bench.answer(), QByteArray("\x5D"));
        for (const char *expected : {"ESC @", "\"Hello\"", "LF", "GS I"}) {
            QString line;
            QVERIFY(bench.nextLine(line));
            QVERIFY2(line.startsWith("57600 none < 0") && line.contains(expected),
                     qPrintable(line));
        }
        QString line;
        QVERIFY(bench.nextLine(line));
        QCOMPARE(line, QString("57600 none > 5D"));
    }

    void commandInPiecesIsListedOnce()
    {
        Bench bench({"--listing"});
        bench.send("\x1D");
        QTest::qSleep(50);
        bench.send("\x49\x01");
        QCOMPARE(bench.answer(), QByteArray("\x5D"));
        QString line;
        QVERIFY(bench.nextLine(line));
        QVERIFY2(line.contains("1D 49 01"), qPrintable(line));
    }

    void whatIsNotWholeIsListedAtTheEnd()
    {
        Bench bench({"--listing"});
        bench.send(identification + QByteArray("\x1Dv0\x00", 4));
        QCOMPARE(bench.answer(), QByteArray("\x5D"));
        const QStringList lines = bench.end();
        QVERIFY2(lines.last().contains("ends inside GS v 0"), qPrintable(lines.last()));
    }

    void pieceThatCannotBeWrittenIsAFailure()
    {
        const QTemporaryDir folder;
        const QString papers = folder.filePath("papers");
        Bench bench({"--paper", papers});
        QVERIFY(bench.isOpen());
        QVERIFY(QDir(papers).removeRecursively());
        bench.send("lost\n" + cut);
        QCOMPARE(
            bench.nextComplaint(),
            QString("virtual-printer: %1/paper-0001.txt: No such file or directory").arg(papers));
        // It plays on, and draws again what it can.
        QVERIFY(QDir().mkpath(papers));
        bench.send("kept\n" + cut);
        QVERIFY(bench.nextReport().startsWith("paper: " + papers + "/paper-0002.png, "));
        QCOMPARE(bench.end(), QStringList());
        QCOMPARE(bench.status(), 1);
    }

    void pieceThatCannotBeWrittenAtTheEndIsAFailure()
    {
        const QTemporaryDir folder;
        const QString papers = folder.filePath("papers");
        Bench bench({"--paper", papers});
        QVERIFY(bench.isOpen());
        QVERIFY(QDir(papers).removeRecursively());
        bench.send("Hello\n" + identification);
        QCOMPARE(bench.answer(), QByteArray("\x5D"));
        for (const QString &line : bench.end())
            QVERIFY2(line.startsWith("57600 none "), qPrintable(line));
        QCOMPARE(
            bench.nextComplaint(),
            QString("virtual-printer: %1/paper-0001.txt: No such file or directory").arg(papers));
        QCOMPARE(bench.status(), 1);
    }

    void diskThatIsFullIsAFailure_data()
    {
        QTest::addColumn<QString>("blocks");
        QTest::addColumn<QString>("fileName");
        QTest::newRow("for the text") << "0"
                                      << "paper-0001.txt";
        QTest::newRow("for the picture") << "1"
                                         << "paper-0001.png";
    }
    void diskThatIsFullIsAFailure()
    {
        QFETCH(QString, blocks);
        QFETCH(QString, fileName);
        const QTemporaryDir folder;
        // A limit of the files' size stands for the disk.
        Bench bench({"--paper", folder.path()}, "trap '' XFSZ; ulimit -f " + blocks);
        QVERIFY(bench.isOpen());
        bench.send("Hello\n" + cut);
        QCOMPARE(bench.nextComplaint(),
                 QString("virtual-printer: %1: File too large").arg(folder.filePath(fileName)));
        QCOMPARE(bench.end(), QStringList("57600 none < 48 65 6C 6C 6F 0A 1D 56 42 00"));
        QCOMPARE(bench.status(), 1);
    }

    void modelsOfAFileAreRead()
    {
        const QTemporaryDir folder;
        QFile file(folder.filePath("own.json"));
        QVERIFY(file.open(QFile::WriteOnly));
        file.write(R"([{"id": "SHOP_80", "like": "CUSTOM_VKP_80",
                        "codePages": {"0": "CP437", "17": "CP866"}}])");
        file.close();
        // It answers as the model that it is like.
        Bench bench({"--listing", "--model", "SHOP_80", "--models", file.fileName()});
        QVERIFY(bench.isOpen());
        bench.send("\x1Bt\x11" + identification);
        QCOMPARE(bench.answer(), QByteArray("\x5D"));
        QString line;
        QVERIFY(bench.nextLine(line));
        QVERIFY2(line.contains("CP866"), qPrintable(line));
    }

    void faultyFileOfModelsIsAFailure()
    {
        QProcess program;
        program.start(VIRTUAL_PRINTER_PROGRAM,
                      {"--model", "CUSTOM_VKP_80", "--models", "/nowhere/own.json"});
        QVERIFY(program.waitForFinished(patience));
        QCOMPARE(program.exitCode(), 2);
        QCOMPARE(program.readAllStandardError(),
                 QByteArray("virtual-printer: /nowhere/own.json: No such file or directory\n"));
    }

    void folderThatCannotBeUsedIsAFailure_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QByteArray>("complaint");
        const auto row = [](const char *name, const char *folder, const char *complaint) {
            QTest::newRow(name) << QString(folder)
                                << QByteArray("virtual-printer: ") + complaint + '\n';
        };
        row("can't be made", "/dev/null/papers", "/dev/null/papers: the folder can't be made");
        row("a file", "/dev/null", "/dev/null: the folder can't be made");
        row("no name", "", ": the folder can't be made");
        // Not even the superuser makes files there.
        row("can't be written", "/proc", "/proc: No such file or directory");
    }
    void folderThatCannotBeUsedIsAFailure()
    {
        QFETCH(QString, folder);
        QProcess program;
        program.start(VIRTUAL_PRINTER_PROGRAM, {"--model", "CUSTOM_VKP_80", "--paper", folder});
        QVERIFY(program.waitForFinished(patience));
        QCOMPARE(program.exitCode(), 1);
        QTEST(program.readAllStandardError(), "complaint");
        QCOMPARE(program.readAllStandardOutput(), QByteArray());
    }
};

QTEST_GUILESS_MAIN(TestVirtualPrinterPaper)
#include "tst_virtualprinter_paper.moc"
