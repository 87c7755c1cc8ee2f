#include <QThreadPool>
#include <QtConcurrent>
#include <QtTest>
#include <atomic>

#include "settings/printersettings.h"
#include "settingsitems.h"
#include "settingsreset.h"

using namespace settingsreset;

namespace {

using Settings = PrinterSettings;

/// Lets the port of the process go, or looks at it as it stands.
class Port : public PrinterSettings
{
public:
    static void drop() { _port.reset(); }
    static QSharedPointer<hearth::RS232Settings> asItStands() { return _port; }
};

// Notes which forms of port() are asked for.
class WatchedPort : public PrinterSettings
{
public:
    using PrinterSettings::port;
    QSharedPointer<hearth::RS232Settings> port() const override
    {
        m_calls.append("port()");
        return PrinterSettings::port();
    }
    QSharedPointer<hearth::RS232Settings> port(const QString &name) const override
    {
        m_calls.append("port(" + name + ")");
        return PrinterSettings::port(name);
    }
    mutable QStringList m_calls;
};

}  // namespace

/// The port of the one printer, by the names it goes by.
class TestPrinterPort : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        IPrintDeviceSettings::setPrintDeviceSettings({});
        resetPrinterSettings();
    }

    void setPrinterIdNamesThePort()
    {
        Settings settings;
        const auto port = settings.port();
        settings.setPrinterId("till");
        QCOMPARE(port->name(), QString("till"));
        QCOMPARE(settings.port(), port);
    }

    void setPrinterIdAsksTheVirtualPort()
    {
        WatchedPort settings;
        settings.setPrinterId("till");
        QCOMPARE(settings.m_calls, QStringList({"port()", "port(till)"}));
        QCOMPARE(settings.port()->name(), QString("till"));
        QCOMPARE(settings.m_calls.mid(2), QStringList({"port()", "port(till)"}));
    }

    void setPortSettingsNamesThePortThatItMakes()
    {
        Settings settings;
        settings.setPrinterId("till");
        Port::drop();
        hearth::RS232Settings source("source");
        source.setText("text");
        settings.setPortSettings("fresh", source);
        QVERIFY(Port::asItStands());
        QCOMPARE(Port::asItStands()->name(), QString("fresh"));
        QCOMPARE(Port::asItStands()->text(), QString("text"));
    }

    void portOfAnotherNameIsTheSameObjectRenamed()
    {
        Settings settings;
        settings.setPrinterId("till");
        const auto port = settings.port("other");
        QCOMPARE(port->name(), QString("other"));
        QCOMPARE(settings.printerId(), QString("till"));
        QCOMPARE(settings.port(), port);
        QCOMPARE(port->name(), QString("till"));
    }

    void portIsMadeWhenThereIsNone()
    {
        Settings settings;
        settings.setPrinterId("till");
        Port::drop();
        QCOMPARE(settings.port("x")->name(), QString("x"));
        Port::drop();
        QVERIFY(settings.setValue(item("till", "baudRate", 4800)));
        QCOMPARE(settings.port()->portSettings().baudRate(), 4800);
        Port::drop();
        hearth::RS232Settings source("source");
        source.setText("text");
        settings.setPortSettings("fresh", source);
        QCOMPARE(settings.port("fresh")->text(), QString("text"));
        Port::drop();
        QCOMPARE(keysOf(settings.toList()), keysOf(sectionItems() + portItems("till")));
    }

    void constructionNamesThePort()
    {
        Settings settings;
        settings.setPrinterId("till");
        const auto port = settings.port("other");
        const Settings another;
        QCOMPARE(port->name(), QString("till"));
    }

    void setPortSettingsCopiesTextAndLineButNoName()
    {
        hearth::RS232Settings source("source");
        source.setText("at the back");
        hearth::Rs232PortSettings line;
        line.setPortName("ttyS4");
        line.setBaudRate(1200);
        source.setPortSettings(line);

        Settings settings;
        settings.setPrinterId("till");
        settings.setPortSettings("unused", source);
        const auto port = settings.port();
        QCOMPARE(port->name(), QString("till"));
        QCOMPARE(port->text(), QString("at the back"));
        QVERIFY(port->portSettings() == line);
        settings.setPortSettings("unused", *port);
        QVERIFY(port->portSettings() == line);
    }

    void nameFromAnItemDoesNotReachThePort()
    {
        Settings settings;
        settings.setPrinterId("old");
        const auto port = settings.port();
        QVERIFY(settings.setValue(item("PRINTER", "printerName", "new")));
        QCOMPARE(port->name(), QString("old"));
        QCOMPARE(settings.printerId(), QString("new"));
        QVERIFY(settings.setValue(item("new", "baudRate", 1200)));
        QCOMPARE(port->name(), QString("new"));
    }

    void portRenamedByAnotherThreadStillTakesAndGivesThePrintersItems()
    {
        constexpr int rounds = 20000;
        Settings settings;
        settings.setPrinterId("till");
        std::atomic<bool> stop{false};
        QThreadPool pool;
        QFuture<void> renaming = QtConcurrent::run(&pool, [&stop] {
            const Settings other;
            while (!stop)
                other.port("other");
        });
        int refused = 0;
        int wrongGroups = 0;
        for (int round = 0; round < rounds; ++round) {
            if (!settings.setValue(item("till", "baudRate", 1200)))
                ++refused;
            if (groupOf(settings.toList().constLast()) != "till")
                ++wrongGroups;
        }
        stop = true;
        renaming.waitForFinished();
        QCOMPARE(refused, 0);
        QCOMPARE(wrongGroups, 0);
    }
};

QTEST_APPLESS_MAIN(TestPrinterPort)
#include "tst_printerport.moc"
