#include <fcntl.h>
#include <grp.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QSerialPort>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>
#include <cstring>

#include "findrun.h"
#include "printerslib/drivers/printeraddress.h"
#include "virtualprinter.h"

using namespace findrun;

namespace {

constexpr int runMilliseconds = 60000;

}  // namespace

/// The search: its output, its ports, and its end.
class TestReceiptFind : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tableNamesPortModelAndLine()
    {
        VirtualPrinter printer(printerOnFirstLine("EPSON_EU_4XX"));
        printer.start();
        const ReceiptRun run = receipt({"--port", "no-such-port", "--port", printer.portPath()});
        QCOMPARE(run.status, 0);
        const QStringList lines = run.output.split('\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 2);
        QCOMPARE(lines.at(0).simplified(), QString("PORT MODEL NAME LINE"));
        QCOMPARE(lines.at(1).simplified(), printer.portPath() +
                                               " EPSON_EU_4XX EPSON EU-4XX 115200 8N1, flow "
                                               "control none");
        QCOMPARE(run.errors, "receipt: find: there is no port /dev/no-such-port\n" +
                                 printer.portName() +
                                 ": line setting 1 of 63, Custom, Citizen, Epson, 115200 baud\n");
    }

    void jsonIsWhatConfirmReads()
    {
        VirtualPrinter printer(printerOnFirstLine("CUSTOM_VKP_80"));
        printer.start();
        const ReceiptRun found = receipt({"--port", printer.portPath(), "--json"});
        QCOMPARE(found.status, 0);
        const QJsonArray expected{deviceJson(printer.portPath(), "CUSTOM_VKP_80")};
        QCOMPARE(QJsonDocument::fromJson(found.output.toUtf8()).array(), expected);

        const ReceiptRun confirmed = confirm(found.output.toUtf8(), {"--json"});
        QCOMPARE(confirmed.status, 0);
        QCOMPARE(confirmed.output, found.output);

        VirtualPrinterOptions silentOptions = printerOnFirstLine("CUSTOM_VKP_80");
        silentOptions.fault = VirtualFault::Silent;
        const VirtualPrinter silent(silentOptions);
        const QJsonArray record{deviceJson(silent.portPath(), "CUSTOM_VKP_80")};
        const ReceiptRun gone = confirm(QJsonDocument(record).toJson(), {"--json"});
        QCOMPARE(gone.status, 1);
        QCOMPARE(QJsonDocument::fromJson(gone.output.toUtf8()).array(), QJsonArray());
    }

    void whatIsFoundIsAnAddressForPrograms()
    {
        VirtualPrinter printer(printerOnFirstLine("CUSTOM_VKP_80"));
        printer.start();
        const ReceiptRun found = receipt({"--port", printer.portPath(), "--json"});
        QString error;
        const auto address =
            printerslib::drivers::PrinterAddress::fromFound(found.output.toUtf8(), &error);
        QVERIFY2(address, qPrintable(error));
        QCOMPARE(address->toString(),
                 QString("serial:%1?baud=115200&parity=none&data=8&stop=1&flow=none")
                     .arg(printer.portPath()));
    }

    void virtualPrinterIsFound()
    {
        const ReceiptRun run = receipt({"--virtual", "CUSTOM_TG_2480_H"});
        QCOMPARE(run.status, 0);
        QVERIFY2(run.output.contains("CUSTOM_TG_2480_H"), qPrintable(run.output));
        QVERIFY2(run.output.contains("57600 8N1, flow control none"), qPrintable(run.output));
    }

    void nothingFoundIsStatusOne()
    {
        const ReceiptRun run = receipt({"--port", "no-such-port"});
        QCOMPARE(run.status, 1);
        QCOMPARE(run.output, QString());
        QCOMPARE(run.errors, QString("receipt: find: there is no port /dev/no-such-port\n"
                                     "receipt: There no devices finded\n"));
    }

    void aliasesOfOnePortAreSearchedOnce()
    {
        VirtualPrinter printer(printerOnFirstLine("EPSON_EU_4XX"));
        printer.start();
        const QTemporaryDir folder;
        const QString alias = folder.filePath("printer");
        QVERIFY(QFile::link(printer.portPath(), alias));
        const ReceiptRun run = receipt({"--port", alias, "--port", printer.portPath(), "--json"});
        QCOMPARE(run.status, 0);
        const QJsonArray expected{deviceJson(alias, "EPSON_EU_4XX")};
        QCOMPARE(QJsonDocument::fromJson(run.output.toUtf8()).array(), expected);
        QCOMPARE(run.errors.count('\n'), 1);
    }

    void portInUseIsNamedBeforeTheSearch()
    {
        VirtualPrinter printer(printerOnFirstLine("CUSTOM_VKP_80"));
        printer.start();
        const VirtualPrinter busy(printerOnFirstLine("CUSTOM_VKP_80"));
        QSerialPort holder(busy.portPath());
        QVERIFY(holder.open(QIODevice::ReadWrite));
        const ReceiptRun run = receipt({"--port", busy.portPath(), "--port", printer.portPath()});
        QCOMPARE(run.status, 0);
        const QString start = QString("receipt: find: %1 is held by process %2 (tst_receipt_fin) ")
                                  .arg(busy.portPath())
                                  .arg(QCoreApplication::applicationPid());
        QVERIFY2(run.errors.startsWith(start), qPrintable(run.errors));
    }

    // As another user, for whom the owner of ports and lock files is a stranger.
    void portsOfOtherUsersAreNamedWithTheReason_data()
    {
        QTest::addColumn<QString>("obstacle");
        QTest::addColumn<QString>("reason");
        QTest::newRow("not permitted") << "mode"
                                       << " is not permitted: user \"root\" may use it";
        QTest::newRow("not permitted, a group may")
            << "group"
            << " is not permitted: members of the group \"dialout\" may use it";
        QTest::newRow("open elsewhere") << "open"
                                        << " is held by another process";
        QTest::newRow("left lock") << "lock"
                                   << " of user root, and no process is behind it; remove it";
        QTest::newRow("unreadable lock") << "secret lock"
                                         << " of user root, who alone may see by which process";
    }

    void portsOfOtherUsersAreNamedWithTheReason()
    {
        QFETCH(QString, obstacle);
        QFETCH(QString, reason);
        constexpr uid_t nobody = 65534;
        if (::geteuid() != 0 || QStandardPaths::findExecutable("setpriv").isEmpty())
            QSKIP("only root can run a program as somebody else");
        const VirtualPrinter printer(printerOnFirstLine("CUSTOM_VKP_80"));
        const QByteArray path = printer.portPath().toLocal8Bit();
        const group *const dialout = ::getgrnam("dialout");
        const bool isPermitted = obstacle == "open" || obstacle.contains("lock");
        QCOMPARE(::chown(path.constData(), isPermitted ? nobody : 0,
                         obstacle == "group" && dialout != nullptr ? dialout->gr_gid : 0),
                 0);
        QCOMPARE(::chmod(path.constData(), obstacle == "group" ? 0660 : 0600), 0);
        const int descriptor = ::open(path.constData(), O_RDWR | O_NOCTTY);
        QFile lock("/var/lock/LCK..pts_" + printer.portName().section('/', 1));
        if (obstacle == "open") {
            QCOMPARE(::ioctl(descriptor, TIOCEXCL), 0);
        } else if (obstacle.contains("lock")) {
            QVERIFY(lock.open(QIODevice::WriteOnly));
            if (obstacle == "secret lock")
                QVERIFY(lock.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner));
            lock.write("999999999\ntill\n" + QSysInfo::machineHostName().toLocal8Bit() + "\n");
            lock.close();
        }
        QProcess program;
        program.start("setpriv", {"--reuid", "65534", "--regid", "65534", "--clear-groups",
                                  RECEIPT_PROGRAM, "find", "--port", printer.portPath()});
        QVERIFY(program.waitForFinished(runMilliseconds));
        ::close(descriptor);
        lock.remove();
        const QString errors = QString::fromUtf8(program.readAllStandardError());
        if (errors.contains("setpriv:"))
            QSKIP("the program isn't for others to run");
        QCOMPARE(program.exitCode(), 1);
        QVERIFY2(errors.startsWith("receipt: find: " + printer.portPath() + ' '),
                 qPrintable(errors));
        QVERIFY2(errors.contains(reason + '\n'), qPrintable(errors));
        QVERIFY2(errors.endsWith("receipt: There no devices finded\n"), qPrintable(errors));
    }

    void loggingRulesOfTheEnvironmentChangeNoProgress()
    {
        VirtualPrinter printer(printerOnFirstLine("CUSTOM_VKP_80"));
        printer.start();
        qputenv("QT_LOGGING_RULES", "*=false");
        const ReceiptRun run = receipt({"--port", printer.portPath()});
        qunsetenv("QT_LOGGING_RULES");
        QCOMPARE(run.errors, printer.portName() +
                                 ": line setting 1 of 63, Custom, Citizen, Epson, 115200 baud\n");
    }

    void interruptLeavesThePortsAsTheyWere()
    {
        VirtualPrinterOptions options = printerOnFirstLine("CUSTOM_VKP_80");
        options.fault = VirtualFault::Silent;
        VirtualPrinter printer(options);
        printer.start();
        for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
            const int descriptor =
                ::open(printer.portPath().toLocal8Bit().constData(), O_RDWR | O_NOCTTY);
            termios before = {};
            termios after = {};
            QCOMPARE(::tcgetattr(descriptor, &before), 0);
            const int sent = printer.received().size();
            QProcess program;
            program.start(RECEIPT_PROGRAM, {"find", "--port", printer.portPath(), "--json"});
            QTRY_VERIFY(printer.received().size() > sent);
            ::kill(static_cast<pid_t>(program.processId()), signal);
            QVERIFY(program.waitForFinished(runMilliseconds));
            QCOMPARE(program.exitStatus(), QProcess::NormalExit);
            QCOMPARE(program.exitCode(), 1);
            QCOMPARE(program.readAllStandardOutput(), QByteArray("[\n]\n"));
            QVERIFY(program.readAllStandardError().endsWith("receipt: cancelled\n"));
            QCOMPARE(::tcgetattr(descriptor, &after), 0);
            ::close(descriptor);
            QVERIFY(std::memcmp(&before, &after, sizeof before) == 0);
            QCOMPARE(
                QDir("/var/lock").entryList({"LCK..pts_" + printer.portName().section('/', 1)}),
                QStringList());
            // No dialogue has gone on behind it, not even that of the AV-268.
            QVERIFY(!printer.received().mid(sent).contains(QByteArray("\x1B\x76")));
        }
    }

    // As behind "| head": a program that is killed leaves half of a command and its lock file.
    void readerThatGoesLeavesThePortsAsTheyWere_data()
    {
        QTest::addColumn<int>("stream");
        QTest::addColumn<QByteArray>("last");
        QTest::newRow("of the output") << STDOUT_FILENO << QByteArray("\x1D\x65\x02");
        QTest::newRow("of the progress") << STDERR_FILENO << QByteArray();
    }

    void readerThatGoesLeavesThePortsAsTheyWere()
    {
        class DeafProcess : public QProcess
        {
        public:
            explicit DeafProcess(int stream) : m_stream(stream)
            {
                m_isReady = ::pipe(m_pipe) == 0 && ::close(m_pipe[0]) == 0;
            }
            ~DeafProcess() override { ::close(m_pipe[1]); }
            bool isReady() const { return m_isReady; }

        protected:
            void setupChildProcess() override { ::dup2(m_pipe[1], m_stream); }

        private:
            const int m_stream;
            int m_pipe[2] = {-1, -1};
            bool m_isReady = false;
        };
        QFETCH(int, stream);
        QFETCH(QByteArray, last);
        VirtualPrinterOptions options = printerOnFirstLine("CUSTOM_VKP_80");
        options.fault = last.isEmpty() ? VirtualFault::Silent : VirtualFault::None;
        VirtualPrinter printer(options);
        printer.start();
        const int descriptor =
            ::open(printer.portPath().toLocal8Bit().constData(), O_RDWR | O_NOCTTY);
        termios before = {};
        termios after = {};
        QCOMPARE(::tcgetattr(descriptor, &before), 0);
        DeafProcess program(stream);
        QVERIFY(program.isReady());
        program.start(RECEIPT_PROGRAM, {"find", "--port", printer.portPath()});
        QVERIFY(program.waitForFinished(runMilliseconds));
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 1);
        QCOMPARE(::tcgetattr(descriptor, &after), 0);
        ::close(descriptor);
        QVERIFY(std::memcmp(&before, &after, sizeof before) == 0);
        QCOMPARE(QDir("/var/lock").entryList({"LCK..pts_" + printer.portName().section('/', 1)}),
                 QStringList());
        // The printer reads on a thread of its own.
        QTRY_VERIFY(printer.received().endsWith(last));
    }

    void interruptCancels()
    {
        QProcess program;
        program.start(RECEIPT_PROGRAM, {"find", "--virtual", "CITIZEN_PPU_231"});
        program.setReadChannel(QProcess::StandardError);
        while (!program.canReadLine())
            QVERIFY(program.waitForReadyRead(runMilliseconds));
        ::kill(static_cast<pid_t>(program.processId()), SIGINT);
        QVERIFY(program.waitForFinished(runMilliseconds));
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 1);
        QVERIFY(program.readAllStandardError().contains("receipt: cancelled\n"));
        QCOMPARE(program.readAllStandardOutput(), QByteArray());
    }

    void wrongUsageIsStatusTwo_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("argument") << QStringList("ttyS0");
        QTest::newRow("option") << QStringList("--ports");
        QTest::newRow("two sources") << QStringList{"--port", "a", "--virtual", "AV_268"};
        QTest::newRow("known ones and a virtual one")
            << QStringList{"--last", "a", "--virtual", "AV_268"};
        QTest::newRow("known ones twice") << QStringList{"--last", "a", "--confirm", "a"};
        QTest::newRow("unknown virtual model") << QStringList{"--virtual", "WPK_833"};
    }

    void wrongUsageIsStatusTwo()
    {
        QFETCH(QStringList, arguments);
        const ReceiptRun run = receipt(arguments);
        QCOMPARE(run.status, 2);
        QVERIFY(!run.errors.isEmpty());
        QCOMPARE(run.output, QString());
    }
};

QTEST_GUILESS_MAIN(TestReceiptFind)
#include "tst_receipt_find.moc"
