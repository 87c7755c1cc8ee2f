#include <QJsonDocument>
#include <QtTest>
#include <limits>

#include "printsrvstate/printservicestate.h"

using Service = PrintServiceState::EServiceState;
using Device = PrintServiceState::EDeviceState;

namespace {

constexpr unsigned int highest = std::numeric_limits<unsigned int>::max();

PrintServiceState everyFieldSet()
{
    PrintServiceState state;
    state.setServiceState(Service(2));
    state.setDeviceState(Device(1));
    state.setDeviceErrorCode(7);
    state.setDeviceNativeCode(highest);
    state.setDeviceErorMsg(QString::fromUtf8("Крышка открыта"));
    state.setTapeAvailable(false);
    return state;
}

}  // namespace

class TestPrintServiceState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void defaultStatesAreUnsetAndThereIsPaper()
    {
        const PrintServiceState state;
        QCOMPARE(int(state.serviceState()), 255);
        QCOMPARE(int(state.deviceState()), 255);
        QCOMPARE(state.deviceErrorCode(), 0U);
        QCOMPARE(state.deviceNativeCode(), 0U);
        QCOMPARE(state.deviceErrorMsg(), QString());
        QCOMPARE(state.tapeAvailable(), true);
    }

    void statesAreSixteenBitsWide()
    {
        QCOMPARE(sizeof(Service), std::size_t(2));
        QCOMPARE(sizeof(Device), std::size_t(2));
    }

    void everyFieldReadsBackAndTakesPartInTheComparison()
    {
        const PrintServiceState base;
        PrintServiceState changed = base;
        QVERIFY(changed == base);
        QVERIFY(!(changed != base));

        changed.setServiceState(Service(65535));
        QCOMPARE(int(changed.serviceState()), 65535);
        QVERIFY(changed != base);
        QVERIFY(!(changed == base));

        changed = base;
        changed.setDeviceState(Device(4));
        QCOMPARE(int(changed.deviceState()), 4);
        QVERIFY(changed != base);

        changed = base;
        changed.setDeviceErrorCode(highest);
        QCOMPARE(changed.deviceErrorCode(), highest);
        QVERIFY(changed != base);

        changed = base;
        changed.setDeviceNativeCode(1);
        QCOMPARE(changed.deviceNativeCode(), 1U);
        QVERIFY(changed != base);

        changed = base;
        changed.setDeviceErorMsg("jam");
        QCOMPARE(changed.deviceErrorMsg(), QString("jam"));
        QVERIFY(changed != base);

        changed = base;
        changed.setTapeAvailable(false);
        QCOMPARE(changed.tapeAvailable(), false);
        QVERIFY(changed != base);
    }

    void noMessageAndAnEmptyOneAreEqual()
    {
        PrintServiceState empty;
        empty.setDeviceErorMsg("");
        QVERIFY(empty == PrintServiceState());
    }

    void copiesAreIndependent()
    {
        PrintServiceState first = everyFieldSet();
        PrintServiceState second = first;
        second.setDeviceErorMsg("other");
        QVERIFY(first == everyFieldSet());
        first = second;
        QVERIFY(first == second);
    }

    void mapHoldsEveryFieldUnderItsNameAndType()
    {
        const QMap<QString, QVariant> map = everyFieldSet().toMap();
        QCOMPARE(map.keys(), (QStringList{"deviceErrorCode", "deviceErrorMsg", "deviceNativeCode",
                                          "deviceState", "serviceState", "tapeAvailable"}));
        QCOMPARE(map.value("serviceState"), QVariant(2));
        QCOMPARE(int(map.value("serviceState").type()), int(QVariant::Int));
        QCOMPARE(map.value("deviceState"), QVariant(1));
        QCOMPARE(int(map.value("deviceState").type()), int(QVariant::Int));
        QCOMPARE(map.value("deviceErrorCode"), QVariant(qint64(7)));
        QCOMPARE(int(map.value("deviceErrorCode").type()), int(QVariant::LongLong));
        QCOMPARE(map.value("deviceNativeCode"), QVariant(qint64(4294967295)));
        QCOMPARE(int(map.value("deviceNativeCode").type()), int(QVariant::LongLong));
        QCOMPARE(map.value("deviceErrorMsg"), QVariant(QString::fromUtf8("Крышка открыта")));
        QCOMPARE(map.value("tapeAvailable"), QVariant(false));
    }

    void mapGoesThroughJsonUnchanged()
    {
        const QByteArray json = QJsonDocument::fromVariant(everyFieldSet().toMap()).toJson();
        PrintServiceState read;
        read.setMap(QJsonDocument::fromJson(json).toVariant().toMap());
        QVERIFY(read == everyFieldSet());
    }

    void emptyMapChangesNothing()
    {
        PrintServiceState state = everyFieldSet();
        state.setMap({});
        QVERIFY(state == everyFieldSet());
    }

    void unknownKeysChangeNothing()
    {
        PrintServiceState state = everyFieldSet();
        state.setMap({{"tapeAvailablle", true}, {"ServiceState", 9}});
        QVERIFY(state == everyFieldSet());
    }

    void presentKeyChangesItsFieldAlone_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QVariant>("stored");
        const auto row = [](const char *name, const char *key, const QVariant &value,
                            const QVariant &stored) {
            QTest::newRow(name) << QString(key) << value << stored;
        };
        row("service state", "serviceState", 3, 3);
        row("service state cut to 16 bits", "serviceState", 65536 + 3, 3);
        row("service state -1 is 65535", "serviceState", -1, 65535);
        row("service state of a text", "serviceState", "4", 4);
        row("service state of no number", "serviceState", "busy", 0);
        row("device state", "deviceState", 4, 4);
        row("device state cut to 16 bits", "deviceState", 0x10000 + 255, 255);
        row("device state of a double", "deviceState", 2.0, 2);
        row("error code", "deviceErrorCode", 4294967295.0, qint64(4294967295));
        row("error code 0", "deviceErrorCode", 0, qint64(0));
        row("native code", "deviceNativeCode", 12, qint64(12));
        row("native code of a null", "deviceNativeCode", QVariant(), qint64(0));
        row("message", "deviceErrorMsg", "jam", "jam");
        row("message of a null", "deviceErrorMsg", QVariant(), "");
        row("tape", "tapeAvailable", true, true);
        row("tape of the text false", "tapeAvailable", "false", false);
        row("tape of a number", "tapeAvailable", 1, true);
    }

    void presentKeyChangesItsFieldAlone()
    {
        QFETCH(const QString, key);
        QFETCH(const QVariant, value);
        QFETCH(const QVariant, stored);
        PrintServiceState state = everyFieldSet();
        state.setMap({{key, value}});
        QMap<QString, QVariant> expected = everyFieldSet().toMap();
        expected.insert(key, stored);
        QCOMPARE(state.toMap(), expected);
    }
};

QTEST_APPLESS_MAIN(TestPrintServiceState)
#include "tst_printservicestate.moc"
