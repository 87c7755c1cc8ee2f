#include <QJsonDocument>
#include <QtTest>

#include "logcatcher.h"
#include "printsrvstate/printservicestatecorvidwrapper.h"

using corvid::ClientState;
using Wrapper = PrintServiceStateCorvidWrapper;

namespace {

/// A record as the bus delivers it, with a description.
class Record : public ClientState
{
public:
    Record(int type, const QDateTime &dt, const QString &state)
    {
        setStateType(EStateType(type));
        setDt(dt);
        setDescription("from the bus");
        setState(state);
    }
};

const QDateTime noon(QDate(2026, 3, 1), QTime(12, 0), Qt::OffsetFromUTC, 3 * 3600);
/// JSON with ' for ", which keeps the texts below readable.
QString json(const char *text)
{
    return QString::fromUtf8(text).replace('\'', '"');
}

const QString workingJson = json(
    "{'serviceState':1,'deviceState':2,'deviceErrorCode':5,'deviceNativeCode':6,"
    "'deviceErrorMsg':'low','tapeAvailable':false}");
const QString serviceOnlyJson = json("{'serviceState':3}");
const QString statesOnlyJson = json("{'serviceState':1,'deviceState':2}");

PrintServiceState stateOf(int service, int device)
{
    PrintServiceState state;
    state.setServiceState(PrintServiceState::EServiceState(service));
    state.setDeviceState(PrintServiceState::EDeviceState(device));
    return state;
}

Wrapper receivedWith(int service, int device)
{
    return Wrapper(Record(0, noon, Wrapper(stateOf(service, device)).toClientState().state()));
}

}  // namespace

class TestPrintServiceStateCorvidWrapper : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void defaultIsNeitherValidNorWorkable()
    {
        const Wrapper wrapper;
        QCOMPARE(int(wrapper.stateType()), 255);
        QCOMPARE(wrapper.stateDescription(), QString());
        QVERIFY(!wrapper.stateDt().isValid());
        QVERIFY(wrapper.state() == PrintServiceState());
        QVERIFY(!wrapper.isValid());
        QVERIFY(!wrapper.isWorkable());
        QCOMPARE(wrapper.toMap().value("stateType"), QVariant(-1));
        QCOMPARE(wrapper.toMap().value("stateDescription"), QVariant("INVALID"));
        QCOMPARE(wrapper.toMap().value("stateDt"), QVariant(QString("")));
    }

    void stateTypeIsEightBitsWide() { QCOMPARE(sizeof(ClientState::EStateType), std::size_t(1)); }

    void constructedFromAStateLeavesTheRestUnset()
    {
        const Wrapper wrapper(stateOf(1, 0));
        QVERIFY(wrapper.state() == stateOf(1, 0));
        QCOMPARE(int(wrapper.stateType()), 255);
        QCOMPARE(wrapper.stateDescription(), QString());
        QVERIFY(!wrapper.stateDt().isValid());
        QVERIFY(!wrapper.isValid());
    }

    void constructedFromARecordReadsIt()
    {
        const Wrapper wrapper(Record(1, noon, workingJson));
        QCOMPARE(int(wrapper.stateType()), 1);
        QCOMPARE(wrapper.stateDescription(), QString("from the bus"));
        QCOMPARE(wrapper.stateDt(), noon);
        QCOMPARE(int(wrapper.state().serviceState()), 1);
        QCOMPARE(int(wrapper.state().deviceState()), 2);
        QCOMPARE(wrapper.state().deviceErrorCode(), 5U);
        QCOMPARE(wrapper.state().deviceNativeCode(), 6U);
        QCOMPARE(wrapper.state().deviceErrorMsg(), QString("low"));
        QCOMPARE(wrapper.state().tapeAvailable(), false);
        QVERIFY(wrapper.isValid());
        QVERIFY(wrapper.isWorkable());
    }

    void busTypeFollowsFromTheStates_data()
    {
        QTest::addColumn<int>("service");
        QTest::addColumn<int>("device");
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("workable");
        const auto row = [](int service, int device, int type, bool workable) {
            QTest::addRow("service %d, device %d", service, device)
                << service << device << type << workable;
        };
        row(0, 0, 0, false);
        row(0, 1, 0, false);
        row(0, 2, 1, false);
        row(0, 3, 2, false);
        row(0, 4, 3, false);
        row(0, 5, 255, false);
        for (int service = 1; service <= 3; ++service) {
            row(service, 0, 0, true);
            row(service, 1, 0, true);
            row(service, 2, 1, true);
            row(service, 3, 2, false);
            row(service, 4, 3, false);
            row(service, 5, 255, false);
            row(service, 254, 255, false);
            row(service, 255, 255, false);
            row(service, 65535, 255, false);
        }
        for (const int service : {4, 5, 254, 256, 65535}) {
            row(service, 0, 2, false);
            row(service, 2, 2, false);
            row(service, 4, 2, false);
            row(service, 255, 2, false);
        }
        row(255, 0, 255, false);
        row(255, 3, 255, false);
        row(255, 255, 255, false);
    }

    void busTypeFollowsFromTheStates()
    {
        QFETCH(const int, service);
        QFETCH(const int, device);
        QTEST(int(Wrapper(stateOf(service, device)).toClientState().stateType()), "type");
        QTEST(receivedWith(service, device).isWorkable(), "workable");
    }

    void validNeedsTypeTimeAndBothStates_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QDateTime>("dt");
        QTest::addColumn<int>("service");
        QTest::addColumn<int>("device");
        QTest::addColumn<bool>("valid");
        QTest::newRow("all set") << 0 << noon << 1 << 0 << true;
        QTest::newRow("graver type") << 3 << noon << 1 << 0 << true;
        QTest::newRow("type without a name") << 77 << noon << 1 << 0 << true;
        QTest::newRow("service doesn't work") << 0 << noon << 0 << 0 << true;
        QTest::newRow("device without a name") << 0 << noon << 2 << 300 << true;
        QTest::newRow("no type") << 255 << noon << 1 << 0 << false;
        QTest::newRow("no time") << 0 << QDateTime() << 1 << 0 << false;
        QTest::newRow("no service state") << 0 << noon << 255 << 0 << false;
        QTest::newRow("no device state") << 0 << noon << 1 << 255 << false;
    }

    void validNeedsTypeTimeAndBothStates()
    {
        QFETCH(const int, type);
        QFETCH(const QDateTime, dt);
        QFETCH(const int, service);
        QFETCH(const int, device);
        const QString json = Wrapper(stateOf(service, device)).toClientState().state();
        const Wrapper wrapper(Record(type, dt, json));
        QTEST(wrapper.isValid(), "valid");
        if (!wrapper.isValid())
            QVERIFY(!wrapper.isWorkable());
    }

    void publishedRecordIgnoresTheWrappersOwnFields()
    {
        Wrapper wrapper(Record(3, noon, workingJson));
        const QDateTime before = QDateTime::currentDateTime();
        const ClientState published = wrapper.toClientState();
        QCOMPARE(int(published.stateType()), 1);
        QCOMPARE(published.description(), QString());
        QVERIFY(published.dt() >= before);
        QVERIFY(published.dt() <= QDateTime::currentDateTime());
        QVERIFY(published.isValid());
    }

    void publishedTextIsTheStatesMapAsCompactJson()
    {
        PrintServiceState state = stateOf(1, 2);
        state.setDeviceErorMsg(QString::fromUtf8("Мало бумаги \"A\""));
        const QString expected = json(
            "{'deviceErrorCode':0,'deviceErrorMsg':'Мало бумаги \\'A\\'',"
            "'deviceNativeCode':0,'deviceState':2,'serviceState':1,"
            "'tapeAvailable':true}");
        QCOMPARE(Wrapper(state).toClientState().state(), expected);
    }

    void stateRoundTripsWithANewTime()
    {
        const Wrapper received(Record(1, noon, workingJson));
        const Wrapper again(received.toClientState());
        QVERIFY(again.state() == received.state());
        QVERIFY(again.stateDt() != received.stateDt());
        QVERIFY(again != received);
        QVERIFY(again.isWorkable());
    }

    void highestCodesRoundTrip()
    {
        PrintServiceState state = stateOf(1, 4);
        state.setDeviceErrorCode(4294967295U);
        state.setDeviceNativeCode(4294967294U);
        QVERIFY(Wrapper(Wrapper(state).toClientState()).state() == state);
    }

    void badJsonResetsEverythingButTheTape_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("no JSON") << "not json";
        QTest::newRow("no text") << "";
        QTest::newRow("cut off") << json("{'deviceErrorMsg':'low'");
        QTest::newRow("not ASCII") << QString::fromUtf8("печать");
    }

    void badJsonResetsEverythingButTheTape()
    {
        QFETCH(const QString, text);
        QJsonParseError reason;
        QJsonDocument::fromJson(text.toUtf8(), &reason);
        for (const bool tape : {false, true}) {
            PrintServiceState state = Wrapper(Record(1, noon, workingJson)).state();
            state.setTapeAvailable(tape);
            Wrapper wrapper(Record(1, noon, Wrapper(state).toClientState().state()));
            QVERIFY(wrapper.isValid());

            const QString line = "JSON PARSING ERROR: " + reason.errorString() + "\t" + text;
            const LogCatcher log;
            QCOMPARE(wrapper.setClientState(Record(0, noon, text)), false);
            QCOMPARE(log.lines(), QStringList("default warning " + line));

            PrintServiceState reset;
            reset.setTapeAvailable(tape);
            QVERIFY(wrapper == Wrapper(reset));
            QVERIFY(!wrapper.isValid());
        }
    }

    void constructedFromABadRecordIsDefault()
    {
        const LogCatcher log;
        QVERIFY(Wrapper(ClientState()) == Wrapper());
        QCOMPARE(log.lines(), QStringList("default warning JSON PARSING ERROR: illegal value\t"));
    }

    void missingFieldsOfARecordAreReset()
    {
        Wrapper wrapper(Record(1, noon, workingJson));
        QVERIFY(wrapper.setClientState(Record(2, noon, serviceOnlyJson)));
        PrintServiceState expected = stateOf(3, 255);
        expected.setTapeAvailable(false);
        QVERIFY(wrapper.state() == expected);
        QCOMPARE(int(wrapper.stateType()), 2);
    }

    void jsonThatIsNoObjectGivesNoFields()
    {
        Wrapper wrapper;
        QCOMPARE(wrapper.setClientState(Record(0, noon, "[1,2]")), true);
        QVERIFY(wrapper.state() == PrintServiceState());
        QVERIFY(!wrapper.isValid());
    }

    void resultIsThatOfTheRecordAndTheDataIsHeldAnyway()
    {
        Wrapper wrapper;
        QCOMPARE(wrapper.setClientState(Record(0, QDateTime(), workingJson)), false);
        QCOMPARE(int(wrapper.state().serviceState()), 1);
        QCOMPARE(wrapper.stateDescription(), QString("from the bus"));
        QCOMPARE(wrapper.setClientState(Record(255, noon, workingJson)), false);
        QCOMPARE(wrapper.stateDt(), noon);
        QVERIFY(!wrapper.isValid());
        // The record's validity says nothing about the state inside it.
        QCOMPARE(wrapper.setClientState(Record(0, noon, "{}")), true);
        QVERIFY(!wrapper.isValid());
    }

    void mapDescribesTheTypeInWords_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("number");
        QTest::addColumn<QString>("name");
        QTest::newRow("normal") << 0 << 0 << "NORMAL";
        QTest::newRow("warning") << 1 << 1 << "WARNING";
        QTest::newRow("critical") << 2 << 2 << "CRITICAL";
        QTest::newRow("fatal") << 3 << 3 << "FATAL";
        QTest::newRow("invalid") << 255 << -1 << "INVALID";
        QTest::newRow("just above") << 4 << 4 << "";
        QTest::newRow("highest positive") << 127 << 127 << "";
        QTest::newRow("lowest negative") << 128 << -128 << "";
        QTest::newRow("just below invalid") << 254 << -2 << "";
    }

    void mapDescribesTheTypeInWords()
    {
        QFETCH(const int, type);
        QFETCH(const int, number);
        QFETCH(const QString, name);
        const QMap<QString, QVariant> map = Wrapper(Record(type, noon, workingJson)).toMap();
        QCOMPARE(map.value("stateType"), QVariant(number));
        QCOMPARE(int(map.value("stateType").type()), int(QVariant::Int));
        QCOMPARE(map.value("stateDescription"), QVariant(name));
    }

    void mapHoldsTheTapeUnderItsMisspeltKey()
    {
        const QMap<QString, QVariant> map = Wrapper(Record(1, noon, workingJson)).toMap();
        QCOMPARE(map.value("tapeAvailablle"), QVariant(false));
        QVERIFY(!map.contains("tapeAvailable"));
    }

    void mapHoldsNineFields()
    {
        const QMap<QString, QVariant> map = Wrapper(Record(1, noon, workingJson)).toMap();
        const QMap<QString, QVariant> expected{
            {"stateType", 1},          {"stateDt", "2026-03-01T09:00:00Z"},
            {"serviceState", 1},       {"stateDescription", "WARNING"},
            {"deviceState", 2},        {"deviceErrorCode", 5U},
            {"deviceNativeCode", 6U},  {"deviceErrorMsg", "low"},
            {"tapeAvailablle", false},
        };
        QCOMPARE(map, expected);
        QCOMPARE(int(map.value("serviceState").type()), int(QVariant::Int));
        QCOMPARE(int(map.value("deviceState").type()), int(QVariant::Int));
        QCOMPARE(int(map.value("deviceErrorCode").type()), int(QVariant::UInt));
        QCOMPARE(int(map.value("deviceNativeCode").type()), int(QVariant::UInt));
    }

    void comparisonTakesAllFourFields()
    {
        const Wrapper base(Record(1, noon, workingJson));
        QVERIFY(base == Wrapper(Record(1, noon, workingJson)));
        QVERIFY(base != Wrapper(Record(0, noon, workingJson)));
        QVERIFY(base != Wrapper(Record(1, noon.addSecs(1), workingJson)));
        QVERIFY(base != Wrapper(Record(1, noon, statesOnlyJson)));
        ClientState undescribed;
        undescribed.setStateType(ClientState::StateWarning);
        undescribed.setDt(noon);
        undescribed.setState(workingJson);
        QVERIFY(base != Wrapper(undescribed));
        QVERIFY(!(base == Wrapper(undescribed)));
    }

    void assignmentCopiesAllFields()
    {
        const Wrapper base(Record(1, noon, workingJson));
        Wrapper other;
        other = base;
        QVERIFY(other == base);
        const Wrapper copy(base);
        QVERIFY(copy == base);
    }
};

QTEST_APPLESS_MAIN(TestPrintServiceStateCorvidWrapper)
#include "tst_printservicestatecorvidwrapper.moc"
