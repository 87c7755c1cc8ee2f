#include <fcntl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <QLockFile>
#include <QSerialPort>
#include <QSignalSpy>
#include <QtTest>
#include <climits>
#include <clocale>
#include <optional>

#include "logcatcher.h"
#include "portsearch.h"
#include "searchprogress.h"
#include "virtualprinter.h"

namespace {

constexpr int searchMilliseconds = 60000;

VirtualPrinterOptions printerOf(const QString &model, VirtualFault fault = VirtualFault::None)
{
    VirtualPrinterOptions options;
    options.model = model;
    options.baudRate = 115200;
    options.flowControl = QSerialPort::NoFlowControl;
    options.fault = fault;
    return options;
}

PrintDeviceInfo record(const QString &port, const QString &id, int baudRate,
                       QSerialPort::FlowControl flowControl = QSerialPort::NoFlowControl)
{
    hearth::Rs232PortSettings settings;
    settings.setPortName(port);
    settings.setBaudRate(baudRate);
    settings.setFlowControl(flowControl);
    PrintDeviceInfo info;
    info.setDeviceType(1);
    info.setDeviceId(id);
    info.setSettings(settings);
    return info;
}

/// The settings of a line, as one can look at them beside the search.
QByteArray lineSettings(const QString &path)
{
    const int descriptor = ::open(path.toLocal8Bit().constData(), O_RDWR | O_NOCTTY);
    termios line = {};
    const bool known = ::tcgetattr(descriptor, &line) == 0;
    ::close(descriptor);
    return known ? QByteArray(reinterpret_cast<const char *>(&line), sizeof line) : QByteArray();
}

QList<PortProgress> portsOf(const QStringList &names)
{
    QList<PortProgress> ports;
    for (const QString &name : names)
        ports.append({name, SearchPlan::ofSearch()});
    return ports;
}

}  // namespace

class TestPortSearch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // At the first opening Qt makes its list of lock folders, which ThreadSanitizer doesn't
        // see.
        QSerialPort().open(QIODevice::ReadWrite);
        m_quiet.emplace();
    }

    void cleanupTestCase() { m_quiet.reset(); }

    // The plan

    void planOfASearchIsTheSumOfItsWaits()
    {
        SearchPlan plan = SearchPlan::ofSearch();
        QCOMPARE(plan.wholeTime(), 63 * 2 * 300 + 63 * 1400 + 24 * 300 + 1000 + 36 * 1000);
        QCOMPARE(plan.restTime(), plan.wholeTime());
        QCOMPARE(plan.toString(),
                 QString("line setting 1 of 63, Custom, Citizen, Epson, 115200 baud"));
        plan.finish();
        QCOMPARE(plan.restTime(), 0);
        QCOMPARE(plan.kind(), QString());
    }

    // A pseudo terminal shows no parity: baud rate and flow control have to do.
    void lineSettingsTellWhereASearchIs()
    {
        SearchPlan plan = SearchPlan::ofSearch();
        const QList<int> rates{115200, 57600, 38400, 19200, 9600, 4800, 1200};
        const auto walk = [&plan](const QList<int> &baudRates, int flowControls, const char *kind) {
            int entry = 0;
            for (const int rate : baudRates) {
                for (int i = 0; i < 3 * flowControls; ++i) {
                    const auto flow = QSerialPort::FlowControl(i % flowControls);
                    // More than one wait on a line setting changes nothing.
                    plan.advance(rate, flow);
                    plan.advance(rate, flow);
                    const QString start = QString("line setting %1 of %2, %3, ")
                                              .arg(++entry)
                                              .arg(3 * flowControls * baudRates.size())
                                              .arg(kind);
                    QVERIFY2(plan.toString().startsWith(start), qPrintable(plan.toString()));
                }
            }
        };
        walk(rates, 3, "Custom, Citizen, Epson");
        walk(rates, 3, "Swecoin");
        walk({38400, 19200, 9600, 4800}, 2, "Star");
        plan.advance(115200, QSerialPort::SoftwareControl);
        QCOMPARE(plan.toString(), QString("AV-268, 115200 baud"));
        walk({19200, 9600, 4800, 1200}, 3, "Citizen PPU-231");
        QCOMPARE(plan.restTime(), 1000);
        plan.advance(300, QSerialPort::NoFlowControl);
        QCOMPARE(plan.restTime(), 1000);
    }

    void planOfRecordsHasTheDialoguesOfTheirModels()
    {
        const QString port = "ttyS0";
        SearchPlan plan = SearchPlan::ofRecords(
            {record(port, "SWECOIN_TM_20XX", 9600), record(port, "TSP-TUP", 9600),
             record(port, "CITIZEN_PPU_231", 38400), record(port, "AV_268", 1200)});
        QCOMPARE(plan.wholeTime(), 1400 + 24 * 300 + 1000);
        QCOMPARE(plan.toString(), QString("line setting 1 of 1, Swecoin, 9600 baud"));
        plan.advance(38400, QSerialPort::NoFlowControl);
        QCOMPARE(plan.toString(), QString("line setting 1 of 24, Star, 38400 baud"));
        QVERIFY(SearchPlan::ofRecords({record(port, "CITIZEN_PPU_231", 38400)}).isEmpty());
    }

    // How it is shown

    void wholeIsAPercentageAndTheRest()
    {
        QList<PortProgress> ports = portsOf({"/dev/ttyS0", "ttyS1"});
        QCOMPARE(searchProgressLines(ports, 0, 0),
                 (QStringList{"0 %, 171 s left",
                              "ttyS0: line setting 1 of 63, Custom, Citizen, Epson, 115200 baud",
                              "ttyS1: line setting 1 of 63, Custom, Citizen, Epson, 115200 baud"}));
        ports[0].plan.finish();
        QCOMPARE(searchProgressLines(ports, 0, 0).constFirst(), QString("0 %, 171 s left"));
        ports[1].plan.finish();
        QCOMPARE(searchProgressLines(ports, 0, 0),
                 (QStringList{"100 %, 0 s left", "ttyS0: done", "ttyS1: done"}));
        QCOMPARE(searchProgressLines({}, 24, 80), QStringList("100 %, 0 s left"));
    }

    void progressFitsTheTerminal_data()
    {
        QTest::addColumn<int>("height");
        QTest::addColumn<int>("lines");
        QTest::addColumn<QString>("last");
        QTest::newRow("all of it") << 8 << 7 << "p6: l";
        QTest::newRow("one too many") << 7 << 6 << "and 2";
        QTest::newRow("few") << 3 << 2 << "and 6";
        QTest::newRow("the whole alone") << 2 << 1 << "0 %, ";
        QTest::newRow("one line") << 1 << 1 << "0 %, ";
        QTest::newRow("not known") << 0 << 7 << "p6: l";
    }

    void progressFitsTheTerminal()
    {
        QFETCH(int, height);
        QFETCH(QString, last);
        const QStringList lines =
            searchProgressLines(portsOf({"p1", "p2", "p3", "p4", "p5", "p6"}), height, 6);
        QTEST(lines.size(), "lines");
        QCOMPARE(lines.constLast(), last);
        for (const QString &line : lines)
            QVERIFY(line.size() < 6);
    }

    // Links to ports may have any name.
    void progressCountsColumns()
    {
        const QString port = QString::fromUtf8("/dev/\u30EC\u30B8\U0001F5A8e\u0301");
        const auto shown = [&port](int width) {
            return searchProgressLines(portsOf({port}), 24, width).constLast();
        };
        const QString name = QString::fromUtf8("\u30EC\u30B8\U0001F5A8e\u0301: l");
        // In a locale that knows no such characters each of them may take two columns.
        for (const char *const locale : {"C.UTF-8", "C"}) {
            QVERIFY(std::setlocale(LC_CTYPE, locale) != nullptr);
            QCOMPARE(shown(2), QString());
            QCOMPARE(shown(3), name.left(1));
            QCOMPARE(shown(4), name.left(1));
            QCOMPARE(shown(5), name.left(2));
            QVERIFY(!shown(6).endsWith(QChar(0xD83D)));
        }
        std::setlocale(LC_CTYPE, "C.UTF-8");
        QVERIFY(shown(11).startsWith(name.left(name.size() - 2)));
    }

    // Ports that can't be used

    void unusablePortsHaveAReason_data()
    {
        QTest::addColumn<QString>("port");
        QTest::addColumn<QString>("reason");
        QTest::newRow("none") << "no-such-port"
                              << "there is no port /dev/no-such-port";
        QTest::newRow("empty") << ""
                               << "/dev/ is no serial port";
        QTest::newRow("file") << "/etc/passwd"
                              << "/etc/passwd is no serial port";
        QTest::newRow("no terminal") << "/dev/null"
                                     << "/dev/null is no serial port: ";
    }

    void unusablePortsHaveAReason()
    {
        QFETCH(QString, port);
        QFETCH(QString, reason);
        const PortUse use(port);
        QVERIFY(!use.isUsable());
        QVERIFY2(use.reason().startsWith(reason), qPrintable(use.reason()));
    }

    void portThatIsOpenNamesItsProcess()
    {
        const VirtualPrinter printer(printerOf("AV_268"));
        const QTemporaryDir folder;
        const QString alias = folder.filePath("printer");
        QVERIFY(QFile::link(printer.portPath(), alias));
        for (const QString &openedBy : {printer.portPath(), alias}) {
            QSerialPort holder(openedBy);
            QVERIFY(holder.open(QIODevice::ReadWrite));
            const PortUse use(alias);
            const QString expected = QString("%1 is held by process %2 (tst_portsearch) of user ")
                                         .arg(alias)
                                         .arg(::getpid());
            QVERIFY2(use.reason().startsWith(expected), qPrintable(use.reason()));
            QCOMPARE(use.canonicalPath(), printer.portPath());
        }
        QVERIFY2(PortUse(alias).isUsable(), qPrintable(PortUse(alias).reason()));
        QVERIFY(!QFile::exists(PortUse::lockFilePath(alias)));
        QVERIFY(!QFile::exists(PortUse::lockFilePath(printer.portPath())));
    }

    // Other makers' programs write no more than the number of their process.
    void lockOfALivingProcessStays_data()
    {
        QTest::addColumn<QString>("form");
        QTest::addColumn<int>("age");
        const QString programs = QString("%1\ntst_portsearch\n%2\n");
        QTest::newRow("other maker's, new") << QString("%1\n") << 0;
        QTest::newRow("other maker's, old") << QString("%1\n") << 3600;
        QTest::newRow("Qt's, new") << programs << 0;
        QTest::newRow("Qt's, old") << programs << 3600;
    }

    void lockOfALivingProcessStays()
    {
        QFETCH(QString, form);
        QFETCH(int, age);
        const VirtualPrinter printer(printerOf("AV_268"));
        QString content = form.arg(::getpid(), 10);
        if (content.contains("%2"))
            content = content.arg(QSysInfo::machineHostName());
        QFile lock(PortUse::lockFilePath(printer.portPath()));
        QVERIFY(lock.open(QIODevice::ReadWrite));
        lock.write(content.toLocal8Bit());
        QVERIFY(lock.flush());
        QVERIFY(lock.setFileTime(QDateTime::currentDateTimeUtc().addSecs(-age),
                                 QFileDevice::FileModificationTime));
        const QString reason = PortUse(printer.portPath()).reason();
        QVERIFY(QFile::remove(lock.fileName()));
        const QString expected = QString("%1 is held by process %2 (tst_portsearch) of user ")
                                     .arg(printer.portPath())
                                     .arg(::getpid());
        QVERIFY2(reason.startsWith(expected), qPrintable(reason));
    }

    void lockOfADeadProcessIsNoObstacle()
    {
        const VirtualPrinter printer(printerOf("AV_268"));
        QFile lock(PortUse::lockFilePath(printer.portPath()));
        QVERIFY(lock.open(QIODevice::WriteOnly));
        lock.write(" 999999999\n");
        lock.close();
        const PortUse use(printer.portPath());
        QVERIFY2(use.isUsable(), qPrintable(use.reason()));
        QVERIFY(!lock.exists());
    }

    // As one of another user is, in a folder from which only its owner may remove it.
    void lockThatNobodyHoldsIsNamedWithItsOwner_data()
    {
        QTest::addColumn<QString>("kind");
        // QLockFile would wait for the one, and fill the memory with the others.
        for (const char *kind : {"folder", "fifo", "device", "huge"})
            QTest::newRow(kind) << QString(kind);
    }
    void lockThatNobodyHoldsIsNamedWithItsOwner()
    {
        QFETCH(QString, kind);
        const VirtualPrinter printer(printerOf("AV_268"));
        const QString lock = PortUse::lockFilePath(printer.portPath());
        QFile file(lock);
        if (kind == "folder")
            QVERIFY(QDir().mkdir(lock));
        else if (kind == "fifo")
            QCOMPARE(::mkfifo(qPrintable(lock), 0644), 0);
        else if (kind == "device")
            QVERIFY(QFile::link("/dev/zero", lock));
        else
            QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(4097));
        const QString reason = PortUse(printer.portPath()).reason();
        QVERIFY(kind == "folder" ? QDir().rmdir(lock) : file.remove());
        const QString owner = QFileInfo(QDir::tempPath()).owner();
        QCOMPARE(reason,
                 QString("%1 is locked by %2 of user %3, and no process is behind it; remove it")
                     .arg(printer.portPath(), lock, owner));
    }

    // The search

    // At 1200 baud the closing bytes keep the port for more than a second.
    void printerIsToldBeforeThePortsAreClosed()
    {
        VirtualPrinterOptions options = printerOf("CUSTOM_VKP_80");
        options.baudRate = 1200;
        VirtualPrinter printer(options);
        VirtualPrinter silent(printerOf("CUSTOM_VKP_80", VirtualFault::Silent));
        const QByteArray before = lineSettings(silent.portPath());
        printer.start();
        silent.start();
        const QString port = printer.portPath();
        PortSearch search({{PortUse(port), {record(port, "CUSTOM_VKP_80", 1200)}},
                           {PortUse(silent.portPath()), {}}});
        QStringList events;
        connect(&search, &PortSearch::found, this, [&](const PrintDeviceInfo &device) {
            events.append(device.deviceId());
            if (QFile::exists(PortUse::lockFilePath(port)))
                events.append("locked");
        });
        connect(&search, &PortSearch::over, this, [&] { events.append("over"); });
        QSignalSpy over(&search, &PortSearch::over);
        search.start();
        QVERIFY(over.wait(searchMilliseconds));
        QCOMPARE(events, (QStringList{"CUSTOM_VKP_80", "locked", "over"}));
        for (const QString &path : {port, silent.portPath()})
            QVERIFY(!QFile::exists(PortUse::lockFilePath(path)));
        QCOMPARE(lineSettings(silent.portPath()), before);
        // The search of the other port hasn't gone on behind it.
        QVERIFY(!silent.received().contains(QByteArray("\x1B\x76")));
        QVERIFY(printer.received().endsWith(QByteArray("\x1D\x65\x02")));
    }

    void recordsOfOnePortAreAskedInTurn()
    {
        VirtualPrinter printer(printerOf("CUSTOM_VKP_80"));
        printer.start();
        const QString port = printer.portPath();
        PortSearch search({{PortUse(port),
                            {record(port, "CUSTOM_VKP_80", 9600), record(port, "AV_268", 9600),
                             record(port, "CUSTOM_VKP_80", 115200)}}});
        QList<PrintDeviceInfo> found;
        connect(&search, &PortSearch::found, this,
                [&found](const PrintDeviceInfo &device) { found.append(device); });
        QSignalSpy over(&search, &PortSearch::over);
        search.start();
        QVERIFY(over.wait(searchMilliseconds));
        QVERIFY(found == QList<PrintDeviceInfo>{record(port, "CUSTOM_VKP_80", 115200)});
    }

    void portThatVanishesInASilentWaitIsNoPrinter()
    {
        VirtualPrinterOptions options = printerOf("AV_268", VirtualFault::HangUp);
        options.flowControl = QSerialPort::SoftwareControl;
        options.faultValue = 10;
        VirtualPrinter printer(options);
        printer.start();
        PortSearch search(
            {{PortUse(printer.portPath()), {record(printer.portPath(), "AV_268", 115200)}}});
        const QSignalSpy found(&search, &PortSearch::found);
        QSignalSpy over(&search, &PortSearch::over);
        search.start();
        QVERIFY(over.wait(searchMilliseconds));
        QCOMPARE(found.size(), 0);
        QCOMPARE(printer.received().size(), 10);
    }

    void interruptClosesAllPorts()
    {
        std::vector<std::unique_ptr<VirtualPrinter>> printers;
        QList<PortTask> tasks;
        for (const VirtualFault fault :
             {VirtualFault::Silent, VirtualFault::Flood, VirtualFault::Echo}) {
            printers.push_back(std::make_unique<VirtualPrinter>(printerOf("AV_268", fault)));
            printers.back()->start();
            tasks.append({PortUse(printers.back()->portPath()), {}});
        }
        PortSearch search(tasks);
        const QSignalSpy found(&search, &PortSearch::found);
        QSignalSpy over(&search, &PortSearch::over);
        search.start();
        QTRY_VERIFY(!printers.at(0)->received().isEmpty());
        search.interrupt();
        QVERIFY(over.wait(searchMilliseconds));
        QCOMPARE(found.size(), 0);
        for (const auto &printer : printers)
            QVERIFY(!QFile::exists(PortUse::lockFilePath(printer->portPath())));
        // Not even the dialogue under way has gone on.
        QVERIFY(printers.at(0)->received().size() < 63 * 6);
    }

    void interruptLeavesClosingBytesTheTimeThatThereIs_data()
    {
        QTest::addColumn<qint64>("leftAfter");
        QTest::addColumn<QStringList>("calls");
        QTest::newRow("not under way any more") << qint64(0) << QStringList{"drop", "close"};
        QTest::newRow("on a slow line") << qint64(50) << QStringList{"empty", "drop", "close"};
        QTest::newRow("on a held line") << qint64(INT_MAX) << QStringList{"drop", "close"};
    }

    void interruptLeavesClosingBytesTheTimeThatThereIs()
    {
        // A driver's queue that is empty after so many milliseconds.
        class SlowOutput : public HurriableOutput
        {
        public:
            SlowOutput(QSerialPort &port, const SearchOrders &orders, qint64 leftAfter)
                : HurriableOutput(port, orders), m_leftAfter(leftAfter)
            {}
            qint64 queued() const override { return now() < m_leftAfter ? 17 : 0; }
            void drop() override
            {
                if (m_leftAfter > 0 && queued() == 0)
                    calls.append("empty");
                calls.append("drop");
            }
            void close() override { calls.append("close"); }

            QStringList calls;

        private:
            const qint64 m_leftAfter;
        };
        QFETCH(qint64, leftAfter);
        const VirtualPrinter printer(printerOf("AV_268"));
        QSerialPort port(printer.portPath());
        QVERIFY(port.open(QIODevice::ReadWrite));
        QVERIFY(port.setBaudRate(QSerialPort::Baud1200));
        SearchOrders orders;
        orders.hurry = true;
        SlowOutput output(port, orders, leftAfter);
        discovery::closePort(output, true);
        QTEST(output.calls, "calls");
    }

    void nothingToSearchIsOver()
    {
        PortSearch search({});
        QSignalSpy over(&search, &PortSearch::over);
        search.start();
        QVERIFY(over.wait(searchMilliseconds));
    }

    void searchThatGoesStopsItsTasks()
    {
        VirtualPrinter silent(printerOf("CUSTOM_VKP_80", VirtualFault::Silent));
        silent.start();
        {
            PortSearch search({{PortUse(silent.portPath()), {}}});
            search.start();
            QTRY_VERIFY(!silent.received().isEmpty());
        }
        QVERIFY(!QFile::exists(PortUse::lockFilePath(silent.portPath())));
    }

private:
    std::optional<QuietLog> m_quiet;
};

QTEST_GUILESS_MAIN(TestPortSearch)
#include "tst_portsearch.moc"
