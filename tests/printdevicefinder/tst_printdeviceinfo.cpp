#include <QtTest>

#include "printdevicefinder/printdeviceinfo.h"

namespace {

PrintDeviceInfo device(unsigned type, const QString &id, const QString &portName)
{
    hearth::Rs232PortSettings settings;
    settings.setPortName(portName);
    PrintDeviceInfo info;
    info.setDeviceType(type);
    info.setDeviceId(id);
    info.setSettings(settings);
    return info;
}

}  // namespace

class TestPrintDeviceInfo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void defaultIsNothingIdentified()
    {
        const PrintDeviceInfo info;
        QCOMPARE(info.deviceType(), 0U);
        QVERIFY(info.deviceId().isNull());
        QCOMPARE(info.settings(), hearth::Rs232PortSettings());
        QVERIFY(!info.isValid());
    }

    void validityNeedsTypeAndId()
    {
        QVERIFY(device(1, "AV_268", "").isValid());
        QVERIFY(device(2, "AV_268", "").isValid());
        QVERIFY(!device(0, "AV_268", "ttyS0").isValid());
        QVERIFY(!device(1, "", "ttyS0").isValid());
    }

    void equalityIsOverAllThreeFields()
    {
        const PrintDeviceInfo info = device(1, "AV_268", "ttyS0");
        QVERIFY(info == device(1, "AV_268", "ttyS0"));
        QVERIFY(info != device(2, "AV_268", "ttyS0"));
        QVERIFY(info != device(1, "TSP-TUP", "ttyS0"));
        QVERIFY(info != device(1, "AV_268", "ttyS1"));
    }

    void copiesAndMovesKeepTheFields()
    {
        PrintDeviceInfo info = device(1, "AV_268", "ttyS0");
        const PrintDeviceInfo copy(info);
        const PrintDeviceInfo moved(std::move(info));
        QVERIFY(copy == moved);
        PrintDeviceInfo assigned;
        assigned = copy;
        QVERIFY(assigned == copy);
        assigned = PrintDeviceInfo();
        QVERIFY(!assigned.isValid());
    }

    void travelsAsAMetatype()
    {
        QVERIFY(QMetaType::type("PrintDeviceInfo") != QMetaType::UnknownType);
        const QVariant variant = QVariant::fromValue(device(1, "AV_268", "ttyS0"));
        QVERIFY(variant.value<PrintDeviceInfo>() == device(1, "AV_268", "ttyS0"));
    }
};

QTEST_APPLESS_MAIN(TestPrintDeviceInfo)
#include "tst_printdeviceinfo.moc"
