#include <QtTest>
#include <algorithm>
#include <cmath>
#include <limits>

#include "hearth/rs232settings.h"
#include "settingsitems.h"
#include "threads.h"

using hearth::Rs232PortSettings;
using hearth::RS232Settings;

namespace {

Rs232PortSettings unusualPort()
{
    Rs232PortSettings port;
    port.setPortName("ttyUSB3");
    port.setBaudRate(38400);
    port.setDataBits(QSerialPort::Data7);
    port.setParity(QSerialPort::EvenParity);
    port.setStopBits(QSerialPort::TwoStop);
    port.setFlowControl(QSerialPort::HardwareControl);
    return port;
}

/// Differs from unusualPort() in all but the speed.
Rs232PortSettings otherPort()
{
    Rs232PortSettings port;
    port.setPortName("ttyS10");
    port.setBaudRate(unusualPort().baudRate());
    port.setFlowControl(QSerialPort::SoftwareControl);
    return port;
}

}  // namespace

class TestRs232Settings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newSettingsHaveTheNameAndDefaults()
    {
        const RS232Settings settings("till 1");
        QCOMPARE(settings.name(), QString("till 1"));
        QVERIFY(settings.text().isEmpty());
        QVERIFY(settings.portSettings() == Rs232PortSettings());
    }

    void fieldsReadBack()
    {
        RS232Settings settings("a");
        settings.setName("b");
        settings.setText("under the counter");
        settings.setPortSettings(unusualPort());
        QCOMPARE(settings.name(), QString("b"));
        QCOMPARE(settings.text(), QString("under the counter"));
        QVERIFY(settings.portSettings() == unusualPort());
    }

    void listHasTheNameAsGroupAndOneItemPerField()
    {
        RS232Settings settings("till 1");
        settings.setText("under the counter");
        settings.setPortSettings(unusualPort());
        const QList<QVariant> expected{
            item("till 1", "portName", "ttyUSB3"),
            item("till 1", "baudRate", 38400),
            item("till 1", "dataBits", 7),
            item("till 1", "parity", 2),
            item("till 1", "stopBits", 2),
            item("till 1", "flowControl", 1),
            item("till 1", "portText", "under the counter"),
        };
        QCOMPARE(settings.toList(), expected);
        for (int row = 1; row < 6; ++row)
            QCOMPARE(settings.toList().at(row).toMap().value("value").userType(),
                     int(QMetaType::Int));
    }

    void listOfOneObjectFillsAnother()
    {
        RS232Settings source("x");
        source.setText("текст");
        source.setPortSettings(unusualPort());
        RS232Settings target("x");
        for (const QVariant &listItem : source.toList())
            QVERIFY(target.setValue(listItem.toMap()));
        QCOMPARE(target.text(), source.text());
        QVERIFY(target.portSettings() == source.portSettings());
    }

    void goodValuesAreTaken_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QVariant>("stored");

        QTest::newRow("whole number as text") << "baudRate" << QVariant("19200") << QVariant(19200);
        QTest::newRow("whole number as double")
            << "baudRate" << QVariant(57600.0) << QVariant(57600);
        QTest::newRow("unusual speed") << "baudRate" << QVariant(31250) << QVariant(31250);
        QTest::newRow("five data bits") << "dataBits" << QVariant(5) << QVariant(5);
        QTest::newRow("mark parity") << "parity" << QVariant(5) << QVariant(5);
        QTest::newRow("one and a half stop bits") << "stopBits" << QVariant(3) << QVariant(3);
        QTest::newRow("software flow control") << "flowControl" << QVariant(2) << QVariant(2);
        QTest::newRow("no port") << "portName" << QVariant("") << QVariant("");
        QTest::newRow("a number as text") << "portText" << QVariant(12) << QVariant("12");
    }

    void goodValuesAreTaken()
    {
        QFETCH(QString, key);
        QFETCH(QVariant, value);
        QFETCH(QVariant, stored);
        RS232Settings settings("x");
        settings.setPortSettings(unusualPort());
        QVERIFY(settings.setValue(item("x", key, value)));
        QCOMPARE(valueOf(settings.toList(), key), stored);
    }

    void badItemsAreRefused_data()
    {
        QTest::addColumn<QMap<QString, QVariant>>("refused");

        QTest::newRow("empty") << QMap<QString, QVariant>();
        QTest::newRow("no group") << QMap<QString, QVariant>{{"key", "baudRate"}, {"value", 9600}};
        QTest::newRow("no key") << QMap<QString, QVariant>{{"group", "x"}, {"value", 9600}};
        QTest::newRow("no value") << QMap<QString, QVariant>{{"group", "x"}, {"key", "portName"}};
        QTest::newRow("other group") << item("y", "baudRate", 9600);
        QTest::newRow("unknown key") << item("x", "baudrate", 9600);
        QTest::newRow("no speed") << item("x", "baudRate", 0);
        QTest::newRow("negative speed") << item("x", "baudRate", -9600);
        QTest::newRow("speed is no number") << item("x", "baudRate", "fast");
        QTest::newRow("speed is empty") << item("x", "baudRate", "");
        QTest::newRow("speed is a fraction") << item("x", "baudRate", 9600.5);
        QTest::newRow("speed is infinite")
            << item("x", "baudRate", std::numeric_limits<double>::infinity());
        QTest::newRow("speed isn't a number") << item("x", "baudRate", std::nan(""));
        QTest::newRow("speed is beyond 64 bits") << item("x", "baudRate", 1e300);
        QTest::newRow("speed would wrap around") << item("x", "baudRate", 4294976896LL);
        QTest::newRow("speed as text would wrap around") << item("x", "baudRate", "4294976896");
        QTest::newRow("speed is a truth value") << item("x", "baudRate", true);
        QTest::newRow("speed is a list") << item("x", "baudRate", QVariantList{9600});
        QTest::newRow("four data bits") << item("x", "dataBits", 4);
        QTest::newRow("nine data bits") << item("x", "dataBits", 9);
        QTest::newRow("unused parity number") << item("x", "parity", 1);
        QTest::newRow("parity too great") << item("x", "parity", 6);
        QTest::newRow("no stop bits") << item("x", "stopBits", 0);
        QTest::newRow("four stop bits") << item("x", "stopBits", 4);
        QTest::newRow("flow control too great") << item("x", "flowControl", 3);
        QTest::newRow("port name is a map") << item("x", "portName", QVariantMap{{"a", 1}});
        QTest::newRow("port name is a list of texts")
            << item("x", "portName", QStringList{"ttyS0", "ttyS1"});
    }

    void badItemsAreRefused()
    {
        using Item = QMap<QString, QVariant>;
        QFETCH(Item, refused);
        RS232Settings settings("x");
        settings.setPortSettings(unusualPort());
        const QList<QVariant> before = settings.toList();
        QVERIFY(!settings.setValue(refused));
        QCOMPARE(settings.toList(), before);
    }

    void emptyNameIsAGroup()
    {
        RS232Settings settings{QString()};
        QVERIFY(settings.setValue(item("", "baudRate", 1200)));
        QCOMPARE(settings.portSettings().baudRate(), 1200);
    }

    void operationsOfManyThreadsAreWhole()
    {
        constexpr int rounds = 1000;
        RS232Settings settings("till 1");
        QList<QList<QVariant>> lists;
        for (int kind = 0; kind < 2; ++kind) {
            write(settings, kind);
            lists.append(settings.toList());
        }
        // Each reader calls one operation alone, as the locks of others would order its reads too.
        const std::vector<std::function<bool()>> reads{
            [&] {
                return isOneOf({name(0), name(1)}, settings.name());
            },
            [&] {
                return isOneOf({text(0), text(1)}, settings.text());
            },
            [&] {
                return isOneOf({unusualPort(), otherPort()}, settings.portSettings());
            },
            [&] { return isOfOnePort(settings.toList(), lists); },
        };
        std::atomic<int> wrong{0};
        const int readers = int(reads.size());
        runOnThreads(readers + 2, [&](int thread) {
            for (int round = 0; round < rounds; ++round) {
                if (thread < readers)
                    wrong += !reads[std::size_t(thread)]();
                else
                    write(settings, round % 2);
            }
        });
        QCOMPARE(wrong.load(), 0);
    }

private:
    static QString name(int kind) { return kind == 0 ? "till 1" : "the other till"; }
    static QString text(int kind) { return QString(100 * (kind + 1), QChar('a' + kind)); }

    static void write(RS232Settings &settings, int kind)
    {
        settings.setName(name(kind));
        settings.setText(text(kind));
        settings.setPortSettings(kind == 0 ? unusualPort() : otherPort());
        settings.setValue(item(name(kind), "baudRate", unusualPort().baudRate()));
    }

    template <typename T>
    static bool isOneOf(std::initializer_list<T> written, const T &value)
    {
        return std::find(written.begin(), written.end(), value) != written.end();
    }

    /// The name and the text may be of another write than the port.
    static bool isOfOnePort(const QList<QVariant> &list, const QList<QList<QVariant>> &written)
    {
        return std::any_of(written.cbegin(), written.cend(), [&list](const QList<QVariant> &one) {
            return std::all_of(one.cbegin(), one.cend() - 1, [&list](const QVariant &listItem) {
                return valueOf(list, keyOf(listItem)) == listItem.toMap().value("value");
            });
        });
    }
};

QTEST_APPLESS_MAIN(TestRs232Settings)
#include "tst_rs232settings.moc"
