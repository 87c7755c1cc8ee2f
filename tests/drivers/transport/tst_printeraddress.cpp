// Addresses of printers, as people write them and as programs keep them.
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <QtTest>

#include "arbitrary.h"
#include "hearth/rs232portsettings.h"
#include "printerslib/drivers/printeraddress.h"
#include "pseudoterminal.h"

using printerslib::drivers::PrinterAddress;

namespace {

PrinterAddress parsed(const QString &text)
{
    QString error;
    const auto address = PrinterAddress::parse(text, &error);
    if (!address)
        qFatal("%s: %s", qPrintable(text), qPrintable(error));
    return *address;
}

/// A line of what a search writes.
QByteArray found(const QByteArray &settings)
{
    return R"([{"deviceType": 3, "deviceId": "CUSTOM_VKP_80", "settings": {)" + settings + "}}]";
}

constexpr char wholeSettings[] = R"("portName": "ttyUSB0", "baudRate": 19200, "dataBits": 7,
    "parity": "even", "stopBits": 2, "flowControl": "software")";

}  // namespace

class TestPrinterAddress : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingIsNoAddress()
    {
        const PrinterAddress none;
        QVERIFY(none.isNull());
        QCOMPARE(none.kind(), PrinterAddress::Kind::None);
        QCOMPARE(none.toString(), QString());
        QCOMPARE(none.lockKey(), QString());
        QCOMPARE(none, PrinterAddress());
    }

    void isReadAndWrittenWhole_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("whole");
        const auto row = [](const char *text, const char *whole) {
            QTest::newRow(text) << QString::fromUtf8(text) << QString::fromUtf8(whole);
        };
        row("serial:/dev/ttyS0?baud=19200&parity=even&data=7&stop=2&flow=hardware",
            "serial:/dev/ttyS0?baud=19200&parity=even&data=7&stop=2&flow=hardware");
        row("serial:/dev/ttyS0", "serial:/dev/ttyS0?baud=9600&parity=none&data=8&stop=1&flow=none");
        row("serial:ttyS0?", "serial:/dev/ttyS0?baud=9600&parity=none&data=8&stop=1&flow=none");
        row("serial:ttyS0?flow=dtr&stop=1.5",
            "serial:/dev/ttyS0?baud=9600&parity=none&data=8&stop=1.5&flow=dtr");
        row("serial:./tty?parity=mark&flow=software",
            "serial:./tty?baud=9600&parity=mark&data=8&stop=1&flow=software");
        row("serial:///dev/ttyS0?parity=space&data=5",
            "serial:/dev/ttyS0?baud=9600&parity=space&data=5&stop=1&flow=none");
        row("serial:x?parity=odd&baud=50&data=6",
            "serial:/dev/x?baud=50&parity=odd&data=6&stop=1&flow=none");
        row("serial:x?baud=4000000",
            "serial:/dev/x?baud=4000000&parity=none&data=8&stop=1&flow=none");
        row("device:/dev/usb/lp0", "device:/dev/usb/lp0");
        row("device:usb/lp0", "device:/dev/usb/lp0");
        row("DEVICE:/dev/usb/lp0", "device:/dev/usb/lp0");
        row("usb:04B8:0e15", "usb:04b8:0e15");
        row("usb:0000:ffff:A%2FB:c d", "usb:0000:ffff:A/B:c%20d");
        row("tcp:printer", "tcp:printer:9100");
        row("tcp:till_printer", "tcp:till_printer:9100");
        row("tcp:Printer.Shop.Example:9101", "tcp:printer.shop.example:9101");
        row("tcp:192.168.0.5:1", "tcp:192.168.0.5:1");
        row("tcp://192.168.0.5:65535/", "tcp:192.168.0.5:65535");
        row("tcp:[::1]", "tcp:[::1]:9100");
        row("tcp:[FE80:0::1%25eth0]:515", "tcp:[fe80::1%25eth0]:515");
        row("file:receipts.bin", "file:receipts.bin");
        row("file:///tmp/a b", "file:/tmp/a%20b");
        row("file:/tmp/100%25%3F%23чек", "file:/tmp/100%25%3F%23%D1%87%D0%B5%D0%BA");
    }
    void isReadAndWrittenWhole()
    {
        QFETCH(QString, text);
        QFETCH(QString, whole);
        QString error = "untouched";
        const auto address = PrinterAddress::parse(text, &error);
        QVERIFY2(address, qPrintable(error));
        QCOMPARE(error, QString("untouched"));
        QCOMPARE(address->toString(), whole);
        QCOMPARE(parsed(whole), *address);
    }

    void partsAreGiven()
    {
        const PrinterAddress serial =
            parsed("serial:ttyS1?baud=38400&parity=odd&data=7&stop=2&flow=dtr");
        QCOMPARE(serial.kind(), PrinterAddress::Kind::Serial);
        QCOMPARE(serial.path(), QString("/dev/ttyS1"));
        QCOMPARE(serial.host(), QString());
        QCOMPARE(serial.line().baudRate, 38400);
        QCOMPARE(serial.line().dataBits, 7);
        QCOMPARE(serial.line().parity, PrinterAddress::Parity::Odd);
        QCOMPARE(serial.line().stopBits, PrinterAddress::StopBits::Two);
        QCOMPARE(serial.line().flow, PrinterAddress::Flow::Dtr);
        const PrinterAddress usb = parsed("usb:04b8:0e15:J4");
        QCOMPARE(usb.kind(), PrinterAddress::Kind::Usb);
        QCOMPARE(usb.vendor(), quint16(0x04B8));
        QCOMPARE(usb.product(), quint16(0x0E15));
        QCOMPARE(usb.serialNumber(), QString("J4"));
        QCOMPARE(usb.path(), QString());
        const PrinterAddress tcp = parsed("tcp:[fe80::1%25eth0]:1234");
        QCOMPARE(tcp.kind(), PrinterAddress::Kind::Tcp);
        QCOMPARE(tcp.host(), QString("fe80::1%eth0"));
        QCOMPARE(tcp.port(), quint16(1234));
        const PrinterAddress file = parsed("file:/tmp/a%3Fb");
        QCOMPARE(file.kind(), PrinterAddress::Kind::File);
        QCOMPARE(file.path(), QString("/tmp/a?b"));
        QCOMPARE(parsed("device:lp").kind(), PrinterAddress::Kind::Device);
    }

    void whatIsWrongIsNamed_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("error");
        const auto row = [](const char *text, const char *error) {
            QTest::newRow(*text == 0 ? "nothing" : text) << QString(text) << QString(error);
        };
        row("",
            "\"\" is no printer's address: expected serial, device, usb, tcp or file, a colon, "
            "and where it is, such as tcp:192.168.0.5 or device:/dev/usb/lp0");
        row("/dev/usb/lp0",
            "\"/dev/usb/lp0\" is no printer's address: expected serial, device, usb, tcp or file, "
            "a "
            "colon, and where it is, such as tcp:192.168.0.5 or device:/dev/usb/lp0");
        row("http://printer",
            "\"http\" is no kind of address: expected serial, device, usb, tcp or file");
        row(":x", "\"\" is no kind of address: expected serial, device, usb, tcp or file");
        row("serial:", "there is no path behind \"serial:\"");
        row("serial:?baud=9600", "there is no path behind \"serial:\"");
        row("device:", "there is no path behind \"device:\"");
        row("file:", "there is no path behind \"file:\"");
        row("serial:x?speed=1",
            "\"speed\" is no setting of a serial line: expected baud, parity, data, stop or flow");
        row("serial:x?baud=9600&baud=9600", "\"baud\" is set twice");
        row("serial:x?baud=49", "baud=49: expected a number from 50 to 4000000");
        row("serial:x?baud=4000001", "baud=4000001: expected a number from 50 to 4000000");
        row("serial:x?baud=fast", "baud=fast: expected a number from 50 to 4000000");
        row("serial:x?baud", "baud=: expected a number from 50 to 4000000");
        row("serial:x?parity=N", "parity=N: expected none, even, odd, space or mark");
        row("serial:x?data=9", "data=9: expected 5, 6, 7 or 8");
        row("serial:x?stop=3", "stop=3: expected 1, 1.5 or 2");
        row("serial:x?flow=rts", "flow=rts: expected none, hardware, software or dtr");
        row("device:/dev/lp0?baud=9600",
            "a device address has no settings behind a question mark; one in a path is written "
            "%3F");
        row("file:a?b",
            "a file address has no settings behind a question mark; one in a path is written %3F");
        row("file:100%", "a percent sign in a path is written %25");
        row("file:100%zz", "a percent sign in a path is written %25");
        row("file:a%00b", "the path holds bytes that are no text");
        row("file:a%ffb", "the path holds bytes that are no text");
        row("usb:04b8:0e15:%00", "the serial number holds bytes that are no text");
        const char *const usb =
            "is no USB printer: expected two numbers of four hexadecimal digits, "
            "such as 04b8:0e15, and perhaps a colon and the serial number";
        for (const char *text : {"", "04b8", "04b8:", "4b8:0e15", "04b8:0e15:", "04b8:0e1g"})
            row(qPrintable(QString("usb:%1").arg(text)),
                qPrintable(QString("\"%1\" %2").arg(text, usb)));
        const char *const tcp =
            "is no host and port: expected HOST, HOST:PORT or [IPv6]:PORT, with a "
            "port from 1 to 65535";
        for (const char *text : {"", ":9100", "printer:0", "printer:65536", "printer:x", "::1",
                                 "[::1", "user@printer", "printer/queue", "printer?a=b", "a b"})
            row(qPrintable(QString("tcp:%1").arg(text)),
                qPrintable(QString("\"%1\" %2").arg(text, tcp)));
    }
    void whatIsWrongIsNamed()
    {
        QFETCH(QString, text);
        QFETCH(QString, error);
        QString told;
        QVERIFY(!PrinterAddress::parse(text, &told));
        QCOMPARE(told, error);
        QVERIFY(!PrinterAddress::parse(text));
    }

    void anyTextIsRefusedOrReadBack()
    {
        VERIFY_LAW([] {
            const QString kind = *rc::gen::element<QString>(
                "serial:", "device:", "usb:04b8:0e15:", "tcp:", "file:", "");
            const QString text =
                kind + *rc::textOf(U"abcXYZ019/:?&=[].% é\n") +
                *rc::gen::element<QString>("", "?baud=1200", "?flow=dtr&stop=2", ":515");
            QString error;
            const auto address = PrinterAddress::parse(text, &error);
            RC_ASSERT(address.has_value() == error.isEmpty());
            if (!address)
                return;
            const auto again = PrinterAddress::parse(address->toString());
            RC_ASSERT(again.has_value());
            RC_ASSERT(again->toString() == address->toString());
            RC_ASSERT(again->path() == address->path());
            RC_ASSERT(again->serialNumber() == address->serialNumber());
        });
    }

    void recordsOfTheSystemAreLines()
    {
        hearth::Rs232PortSettings record;
        record.setPortName("ttyS%0");
        record.setBaudRate(115200);
        record.setParity(QSerialPort::OddParity);
        record.setDataBits(QSerialPort::Data7);
        record.setStopBits(QSerialPort::OneAndHalfStop);
        record.setFlowControl(QSerialPort::HardwareControl);
        const auto address = PrinterAddress::fromPortSettings(record);
        QVERIFY(address);
        QCOMPARE(
            address->toString(),
            QString("serial:/dev/ttyS%250?baud=115200&parity=odd&data=7&stop=1.5&flow=hardware"));
    }

    void wrongRecordsAreRefused_data()
    {
        QTest::addColumn<hearth::Rs232PortSettings>("record");
        QTest::addColumn<QString>("error");
        hearth::Rs232PortSettings record;
        QTest::newRow("no port") << record << "the record of a serial line names no port";
        record.setPortName("ttyS0");
        record.setBaudRate(0);
        QTest::newRow("baud rate")
            << record << "the record of the port ttyS0 has a baud rate that no line has: 0";
        record.setPortName("tty%2");
        QTest::newRow("percent sign")
            << record << "the record of the port tty%2 has a baud rate that no line has: 0";
        record.setPortName("ttyS0");
        record.setBaudRate(9600);
        hearth::Rs232PortSettings wrong = record;
        wrong.setParity(QSerialPort::UnknownParity);
        const QString fault =
            "the record of the port ttyS0 has parity %1, %2 data bits, stop bits "
            "%3 and flow control %4, which no line has";
        QTest::newRow("parity") << wrong << fault.arg(-1).arg(8).arg(1).arg(0);
        wrong = record;
        wrong.setDataBits(QSerialPort::UnknownDataBits);
        QTest::newRow("data bits") << wrong << fault.arg(0).arg(-1).arg(1).arg(0);
        wrong = record;
        wrong.setStopBits(QSerialPort::UnknownStopBits);
        QTest::newRow("stop bits") << wrong << fault.arg(0).arg(8).arg(-1).arg(0);
        for (const int flow : {-1, -2, 3}) {
            wrong = record;
            wrong.setFlowControl(static_cast<QSerialPort::FlowControl>(flow));
            QTest::addRow("flow control %d", flow) << wrong << fault.arg(0).arg(8).arg(1).arg(flow);
        }
    }
    void wrongRecordsAreRefused()
    {
        QFETCH(hearth::Rs232PortSettings, record);
        QFETCH(QString, error);
        QString told;
        QVERIFY(!PrinterAddress::fromPortSettings(record, &told));
        QCOMPARE(told, error);
    }

    void foundPrintersAreLines()
    {
        const auto address = PrinterAddress::fromFound(found(wholeSettings));
        QVERIFY(address);
        QCOMPARE(address->toString(),
                 QString("serial:/dev/ttyUSB0?baud=19200&parity=even&data=7&stop=2&flow=software"));
    }

    void whatWasNotFoundIsRefused_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("error");
        QTest::newRow("nothing") << QByteArray() << "this is no JSON: illegal value";
        QTest::newRow("object") << QByteArray("{}") << "this is no array of found printers";
        QTest::newRow("none") << QByteArray("[]") << "0 printers were found: expected one";
        QTest::newRow("two") << QByteArray("[{},{}]") << "2 printers were found: expected one";
        QTest::newRow("number") << QByteArray("[1]")
                                << "\"settings.baudRate\" of the found printer is missing or wrong";
        const char *const keys[] = {"portName", "baudRate", "dataBits",
                                    "parity",   "stopBits", "flowControl"};
        for (const char *key : keys) {
            const QString error =
                QString("\"settings.%1\" of the found printer is missing or wrong");
            QByteArray settings = wholeSettings;
            QTest::newRow(key) << found(settings.replace(key, "other")) << error.arg(key);
        }
    }
    void whatWasNotFoundIsRefused()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, error);
        QString told;
        QVERIFY(!PrinterAddress::fromFound(json, &told));
        QCOMPARE(told, error);
    }

    void namesOfOneDeviceHaveOneKey()
    {
        const PseudoTerminal terminal;
        QTemporaryDir folder;
        const QString link = folder.filePath("printer");
        QVERIFY(QFile::link(terminal.path(), link));
        struct stat status = {};
        QCOMPARE(::stat(QFile::encodeName(link), &status), 0);
        const QString key =
            QString("char:%1:%2").arg(major(status.st_rdev)).arg(minor(status.st_rdev));
        QCOMPARE(parsed("serial:" + terminal.path()).lockKey(), key);
        QCOMPARE(parsed("serial:" + link + "?baud=1200").lockKey(), key);
        QCOMPARE(parsed("device:" + link).lockKey(), key);
        QCOMPARE(parsed("file:" + link).lockKey(), key);
    }

    void filesAreLockedByTheirPath()
    {
        QTemporaryDir folder;
        const QString path = QDir(folder.path()).canonicalPath() + "/receipts";
        QVERIFY(QFile::link(folder.path(), folder.filePath("link")));
        const PrinterAddress byLink = parsed("file:" + folder.filePath("link/receipts"));
        const QString before = byLink.lockKey();
        QCOMPARE(before, "path:" + path);
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(byLink.lockKey(), before);
        QCOMPARE(parsed("file:" + path).lockKey(), before);
        QCOMPARE(parsed("file:/nonexistent/../nonexistent/x").lockKey(),
                 QString("path:/nonexistent/x"));
        QCOMPARE(parsed("serial:/nonexistent/ttyS0").lockKey(), QString("path:/nonexistent/ttyS0"));
    }

    void hostAndPortAreTheKey()
    {
        QCOMPARE(parsed("tcp:Printer").lockKey(), QString("tcp:printer:9100"));
        QCOMPARE(parsed("tcp:printer:9100").lockKey(), QString("tcp:printer:9100"));
        QCOMPARE(parsed("tcp:[0:0::1]:91").lockKey(), QString("tcp:[::1]:91"));
    }

    void usbPrintersThatAreNotThereHaveTheirNumbers()
    {
        QCOMPARE(parsed("usb:FFFF:FFFE:a").lockKey(), QString("usb:ffff:fffe:a"));
    }

    void anotherSettingIsAnotherAddress()
    {
        QVERIFY(parsed("serial:x?flow=dtr") != parsed("serial:x"));
        QVERIFY(parsed("usb:04b8:0e15:a") != parsed("usb:04b8:0e15"));
        QVERIFY(parsed("tcp:a:1") != parsed("tcp:a:2"));
    }
};

Q_DECLARE_METATYPE(hearth::Rs232PortSettings)

QTEST_GUILESS_MAIN(TestPrinterAddress)
#include "tst_printeraddress.moc"
