#include <QtTest>

#include "hearth/rs232portsettings.h"

using hearth::Rs232PortSettings;

class TestRs232PortSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void defaultsAre9600With8N1AndNoPort()
    {
        const Rs232PortSettings settings;
        QVERIFY(settings.portName().isEmpty());
        QCOMPARE(settings.baudRate(), 9600);
        QCOMPARE(settings.parity(), QSerialPort::NoParity);
        QCOMPARE(settings.dataBits(), QSerialPort::Data8);
        QCOMPARE(settings.stopBits(), QSerialPort::OneStop);
        QCOMPARE(settings.flowControl(), QSerialPort::NoFlowControl);
    }

    void everyFieldReadsBackAndTakesPartInTheComparison()
    {
        const Rs232PortSettings base;
        Rs232PortSettings changed = base;
        QVERIFY(changed == base);
        QVERIFY(!(changed != base));

        changed.setPortName("ttyS7");
        QCOMPARE(changed.portName(), QString("ttyS7"));
        QVERIFY(changed != base);

        changed = base;
        changed.setBaudRate(115200);
        QCOMPARE(changed.baudRate(), 115200);
        QVERIFY(changed != base);

        changed = base;
        changed.setParity(QSerialPort::OddParity);
        QCOMPARE(changed.parity(), QSerialPort::OddParity);
        QVERIFY(changed != base);

        changed = base;
        changed.setDataBits(QSerialPort::Data7);
        QCOMPARE(changed.dataBits(), QSerialPort::Data7);
        QVERIFY(changed != base);

        changed = base;
        changed.setStopBits(QSerialPort::TwoStop);
        QCOMPARE(changed.stopBits(), QSerialPort::TwoStop);
        QVERIFY(changed != base);

        changed = base;
        changed.setFlowControl(QSerialPort::SoftwareControl);
        QCOMPARE(changed.flowControl(), QSerialPort::SoftwareControl);
        QVERIFY(changed != base);
    }

    void copiesAreIndependent()
    {
        Rs232PortSettings first;
        first.setPortName("ttyS0");
        Rs232PortSettings second = first;
        second.setPortName("ttyS1");
        QCOMPARE(first.portName(), QString("ttyS0"));
        QCOMPARE(second.portName(), QString("ttyS1"));
    }
};

QTEST_APPLESS_MAIN(TestRs232PortSettings)
#include "tst_rs232portsettings.moc"
