// Records of the bus that are read, and those that are refused.
#include <rapidcheck.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include "printerslib/drivers/servicestatereader.h"
#include "printsrvstate/printservicestatecorvidwrapper.h"

using printerslib::drivers::ServiceStateReader;

namespace {

const char *const wholeRecord =
    R"({"serviceState":1,"deviceState":2,"deviceErrorCode":4,"deviceNativeCode":4294967295,)"
    R"("deviceErrorMsg":"Лента","tapeAvailable":false})";

QJsonObject record()
{
    return QJsonDocument::fromJson(wholeRecord).object();
}

QByteArray textOf(const QJsonObject &object)
{
    return QJsonDocument(object).toJson();
}

}  // namespace

class TestServiceStateReader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wholeRecordIsRead();
    void recordOfTheBusIsRead();
    void whatIsPublishedIsRead();
    void statesThatAreNotSetAreRead();
    void furtherKeysArePassedOver();
    void missingKeyIsNamed_data();
    void missingKeyIsNamed();
    void wrongValueIsNamed_data();
    void wrongValueIsNamed();
    void limitsAreRead_data();
    void limitsAreRead();
    void whatIsNoRecordIsRefused_data();
    void whatIsNoRecordIsRefused();
    void errorIsOptionalAndClearedByASuccess();
    void anyTextIsReadOrRefused();
};

void TestServiceStateReader::wholeRecordIsRead()
{
    QString error("left over");
    const auto state = ServiceStateReader::readJson(wholeRecord, &error);
    QVERIFY(state);
    QVERIFY(error.isEmpty());
    QCOMPARE(int(state->serviceState()), 1);
    QCOMPARE(int(state->deviceState()), 2);
    QCOMPARE(state->deviceErrorCode(), 4U);
    QCOMPARE(state->deviceNativeCode(), 4294967295U);
    QCOMPARE(state->deviceErrorMsg(), QStringLiteral("Лента"));
    QCOMPARE(state->tapeAvailable(), false);
}

void TestServiceStateReader::recordOfTheBusIsRead()
{
    corvid::ClientState client;
    client.setState(QString::fromUtf8(wholeRecord));
    QVERIFY(ServiceStateReader::read(client));
    client.setState(R"({"deviceState": "fatal"})");
    QString error;
    QVERIFY(!ServiceStateReader::read(client, &error));
    QCOMPARE(error, QString("serviceState: is missing"));
    client.setState(QString());
    QVERIFY(!ServiceStateReader::read(client));
}

void TestServiceStateReader::whatIsPublishedIsRead()
{
    for (int service = 0; service < 6; ++service) {
        for (int device = 0; device < 5; ++device) {
            PrintServiceState state;
            state.setServiceState(PrintServiceState::EServiceState(service));
            state.setDeviceState(PrintServiceState::EDeviceState(device));
            state.setDeviceErorMsg("a \"quoted\" text");
            const auto read =
                ServiceStateReader::read(PrintServiceStateCorvidWrapper(state).toClientState());
            QVERIFY(read);
            QVERIFY(*read == state);
        }
    }
}

void TestServiceStateReader::statesThatAreNotSetAreRead()
{
    const auto read = ServiceStateReader::read(
        PrintServiceStateCorvidWrapper(PrintServiceState()).toClientState());
    QVERIFY(read);
    QVERIFY(*read == PrintServiceState());
}

void TestServiceStateReader::furtherKeysArePassedOver()
{
    QJsonObject object = record();
    object.insert("roll", "80 mm");
    QVERIFY(ServiceStateReader::readJson(textOf(object)));
}

void TestServiceStateReader::missingKeyIsNamed_data()
{
    QTest::addColumn<QString>("key");
    const QStringList keys = record().keys();
    QCOMPARE(keys.size(), 6);
    for (const QString &key : keys)
        QTest::newRow(qPrintable(key)) << key;
}

void TestServiceStateReader::missingKeyIsNamed()
{
    QFETCH(QString, key);
    QJsonObject object = record();
    object.remove(key);
    QString error;
    QVERIFY(!ServiceStateReader::readJson(textOf(object), &error));
    QCOMPARE(error, key + ": is missing");
}

void TestServiceStateReader::wrongValueIsNamed_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("fault");
    const auto row = [](const char *key, const char *value, const char *fault) {
        QTest::addRow("%s %s", key, value) << QString(key) << QString(value) << QString(fault);
    };
    const char *const most16 = " isn't a whole number from 0 to 65535";
    const char *const most32 = " isn't a whole number from 0 to 4294967295";
    const auto number = [&row](const char *key, const char *value, const char *rest) {
        row(key, value, qPrintable(QString(value) + rest));
    };
    number("deviceState", "\"fatal\"", " isn't a number");
    number("deviceState", "\"4\"", " isn't a number");
    number("deviceState", "null", " isn't a number");
    number("deviceState", "true", " isn't a number");
    number("deviceState", "[3]", " isn't a number");
    number("deviceState", "-1", most16);
    number("deviceState", "2.5", most16);
    number("deviceState", "65536", most16);
    number("deviceState", "5", " is no state of a device: 0 to 4, or 255 for none");
    number("deviceState", "256", " is no state of a device: 0 to 4, or 255 for none");
    number("serviceState", "\"1\"", " isn't a number");
    number("serviceState", "65537", most16);
    number("serviceState", "-1", most16);
    number("deviceErrorCode", "-1", most32);
    number("deviceErrorCode", "4294967296", most32);
    number("deviceNativeCode", "0.5", most32);
    number("deviceNativeCode", "{}", " isn't a number");
    number("deviceErrorMsg", "7", " isn't a text");
    number("deviceErrorMsg", "null", " isn't a text");
    number("tapeAvailable", "1", " is neither true nor false");
    number("tapeAvailable", "\"false\"", " is neither true nor false");
    row("tapeAvailable", "\"0123456789012345678901234567890123456789\"",
        "\"012345678901234567890123456789012345678... is neither true nor false");
}

void TestServiceStateReader::wrongValueIsNamed()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QString, fault);
    QJsonObject object = record();
    object.remove(key);
    QByteArray text = QJsonDocument(object).toJson(QJsonDocument::Compact);
    text.chop(1);
    text += QString(",\"%1\":%2}").arg(key, value).toUtf8();
    QString error;
    QVERIFY(!ServiceStateReader::readJson(text, &error));
    QCOMPARE(error, key + ": " + fault);
}

void TestServiceStateReader::limitsAreRead_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<qint64>("value");
    QTest::newRow("service") << "serviceState" << qint64(65535);
    QTest::newRow("no service") << "serviceState" << qint64(255);
    QTest::newRow("device") << "deviceState" << qint64(4);
    QTest::newRow("no device") << "deviceState" << qint64(255);
    QTest::newRow("code") << "deviceErrorCode" << qint64(4294967295);
    QTest::newRow("zero") << "deviceNativeCode" << qint64(0);
}

void TestServiceStateReader::limitsAreRead()
{
    QFETCH(QString, key);
    QFETCH(qint64, value);
    QJsonObject object = record();
    object.insert(key, value);
    const auto state = ServiceStateReader::readJson(textOf(object));
    QVERIFY(state);
    QCOMPARE(state->toMap().value(key).toLongLong(), value);
}

void TestServiceStateReader::whatIsNoRecordIsRefused_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("error");
    QTest::newRow("empty") << QByteArray() << "not JSON: ";
    QTest::newRow("words") << QByteArray("not json") << "not JSON: ";
    QTest::newRow("cut short") << QByteArray(R"({"serviceState":1)") << "not JSON: ";
    QTest::newRow("list") << QByteArray("[1]") << "the JSON isn't an object";
    QTest::newRow("behind") << QByteArray("{} x")
                            << "not JSON: garbage at the end of the document "
                               "at byte 3";
    QTest::newRow("empty object") << QByteArray("{}") << "serviceState: is missing";
}

void TestServiceStateReader::whatIsNoRecordIsRefused()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, error);
    QString told;
    QVERIFY(!ServiceStateReader::readJson(text, &told));
    QVERIFY2(told.startsWith(error), qPrintable(told));
}

void TestServiceStateReader::errorIsOptionalAndClearedByASuccess()
{
    QVERIFY(!ServiceStateReader::readJson("{"));
    QString error;
    QVERIFY(!ServiceStateReader::readJson("{", &error));
    QVERIFY(!error.isEmpty());
    QVERIFY(ServiceStateReader::readJson(wholeRecord, &error));
    QVERIFY(error.isEmpty());
}

/// What is read is what stands there, and what isn't has an error.
void TestServiceStateReader::anyTextIsReadOrRefused()
{
    const bool holds = rc::check("any record with values of any kind", [] {
        QJsonObject object = record();
        const QStringList keys = object.keys();
        const QString key = keys.at(*rc::gen::inRange(0, keys.size()));
        object.insert(key, *rc::gen::element<QJsonValue>(QJsonValue(), 3, 7.25, -4, 1e300, true,
                                                         "3", QJsonObject(), 255));
        QByteArray text = textOf(object);
        if (*rc::gen::inRange(0, 4) == 0)
            text.truncate(*rc::gen::inRange(0, text.size()));
        QString error;
        const auto state = ServiceStateReader::readJson(text, &error);
        RC_ASSERT(state.has_value() == error.isEmpty());
        if (state)
            RC_ASSERT(QJsonObject::fromVariantMap(state->toMap()).value(key) == object.value(key));
    });
    QVERIFY(holds);
}

QTEST_APPLESS_MAIN(TestServiceStateReader)
#include "tst_servicestatereader.moc"
