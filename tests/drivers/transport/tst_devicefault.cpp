// What is wrong with a device, in words; permissions don't count for root, so they are told to the
// function that words them.
#include <sys/stat.h>

#include <QtTest>

#include "sysfolder.h"
#include "transport/devicefault_p.h"
#include "transport/deviceholder_p.h"
#include "transportwatch.h"

using namespace printerslib::drivers;
using devicefault::Circumstances;
using transportwatch::addressOf;
using Kind = TransportError::Kind;

namespace {

Circumstances device(int error, mode_t mode = 0, const QString &owner = QString(),
                     const QString &group = QString())
{
    Circumstances circumstances;
    circumstances.path = "/dev/usb/lp0";
    circumstances.error = error;
    circumstances.isThere = true;
    circumstances.mode = mode;
    circumstances.owner = owner;
    circumstances.group = group;
    return circumstances;
}

constexpr char heldByCups[] =
    "CUPS holds %1: it prints there now; wait until it has, or take the printer out of CUPS "
    "(\"lpstat -v\" tells its queue)";

}  // namespace

class TestDeviceFault : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void openingIsExplained_data()
    {
        QTest::addColumn<Circumstances>("circumstances");
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("text");
        const auto row = [](const char *name, const Circumstances &circumstances, Kind kind,
                            const QString &text) {
            QTest::newRow(name) << circumstances << int(kind) << text;
        };
        const QString gone =
            "there is no /dev/usb/lp0: the printer is off, its cable is out, or it has another "
            "name "
            "now";
        row("nothing there", device(ENOENT), Kind::NotFound, gone);
        row("unplugged", device(ENODEV), Kind::NotFound, gone);
        row("no reader", device(ENXIO), Kind::NotFound, "nobody reads from /dev/usb/lp0");
        row("group", device(EACCES, S_IFCHR | 0660, "root", "lp"), Kind::NotPermitted,
            "/dev/usb/lp0 is not permitted: members of the group \"lp\" may use it; \"adduser USER "
            "lp\" adds a user, who then logs in anew");
        const QString rule =
            "/dev/usb/lp0 is not permitted: user \"root\" may use it; the udev rule "
            "70-printerslib.rules of this package gives printers to the group \"lp\"";
        row("owner alone", device(EACCES, S_IFCHR | 0600, "root", "lp"), Kind::NotPermitted, rule);
        row("group may only read", device(EPERM, S_IFCHR | 0640, "root", "lp"), Kind::NotPermitted,
            rule);
        row("group of root", device(EACCES, S_IFCHR | 0660, "root", "root"), Kind::NotPermitted,
            rule);
        row("held", device(EBUSY), Kind::Busy, "/dev/usb/lp0 is held by another process");
        Circumstances held = device(EBUSY);
        held.holder = "process 4711 (till) of user shop";
        row("held by a process", held, Kind::Busy,
            "/dev/usb/lp0 is held by process 4711 (till) of user shop");
        held.isHeldByCups = true;
        row("held by CUPS", held, Kind::HeldByCups, QString(heldByCups).arg("/dev/usb/lp0"));
        Circumstances taken = device(ENOENT);
        taken.isTaken = true;
        row("taken by a program", taken, Kind::Busy, "/dev/usb/lp0 is held by another process");
        row("anything else", device(EMFILE), Kind::Failed,
            "/dev/usb/lp0 can't be opened: Too many open files");
    }
    void openingIsExplained()
    {
        QFETCH(Circumstances, circumstances);
        QFETCH(int, kind);
        QFETCH(QString, text);
        const TransportError error = devicefault::ofOpening(circumstances);
        QCOMPARE(int(error.kind), kind);
        QCOMPARE(error.text, text);
    }

    void ruleIsShippedUnderTheNameThatIsTold()
    {
        QFile rules(PRINTERSLIB_PACKAGING "/udev/70-printerslib.rules");
        QVERIFY(rules.open(QIODevice::ReadOnly));
        QVERIFY(rules.readAll().contains("KERNEL==\"lp[0-9]*\", GROUP=\"lp\", MODE=\"0660\""));
    }

    void kindsOfFilesAreNamed()
    {
        const auto text = [](mode_t mode) { return devicefault::ofKind("/x", mode).text; };
        QCOMPARE(text(S_IFBLK), QString("/x is no printer, but a disk"));
        QCOMPARE(text(S_IFSOCK), QString("/x is no printer, but a socket"));
        QCOMPARE(text(S_IFDIR), QString("/x is no printer, but a folder"));
        QCOMPARE(text(S_IFREG), QString("/x is no printer, but a file, which is written file:/x"));
        QCOMPARE(devicefault::ofKind("/x", S_IFBLK).kind, Kind::BadAddress);
    }

    void lossesAreToldFromFaults()
    {
        for (const int error : {EIO, ENODEV, ENXIO, EPIPE})
            QCOMPARE(devicefault::ofWriting("/x", error).kind, Kind::Lost);
        const TransportError fault = devicefault::ofWriting("/x", ENOSPC);
        QCOMPARE(fault.kind, Kind::Failed);
        QCOMPARE(fault.text, QString("/x can't be written to: No space left on device"));
    }

    void modeAndNamesAreLookedUp()
    {
        QTemporaryDir folder;
        QFile file(folder.filePath("device"));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner));
        const Circumstances found = devicefault::lookAt(file.fileName(), EACCES, {});
        QVERIFY(found.isThere);
        QCOMPARE(found.path, file.fileName());
        QCOMPARE(found.error, EACCES);
        QCOMPARE(found.mode & 07777, 0600U);
        QCOMPARE(found.owner, QFileInfo(file).owner());
        QCOMPARE(found.group, QFileInfo(file).group());
        QVERIFY(!found.isHeldByCups);
        QVERIFY(!devicefault::lookAt("/nonexistent", ENOENT, {}).isThere);
    }

    void holderIsFound()
    {
        QTemporaryDir folder;
        const QString path = QDir(folder.path()).canonicalPath() + "/device";
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QProcess process;
        process.setStandardInputFile(path);
        process.start("sleep", {"60"});
        QVERIFY(process.waitForStarted());
        QTRY_VERIFY(devicefault::lookAt(path, EBUSY, {}).holder.contains("(sleep)"));
        const Circumstances found = devicefault::lookAt(path, EBUSY, {});
        QCOMPARE(found.holder, QString("process %1 (sleep) of user %2")
                                   .arg(process.processId())
                                   .arg(QFileInfo(file).owner()));
        process.kill();
        process.waitForFinished();
        QCOMPARE(devicefault::lookAt(path, EBUSY, {}).holder, QString());
    }

    void cupsIsToldByItsBackend_data()
    {
        QTest::addColumn<QByteArray>("commandLine");
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("isHeld");
        const QByteArray usb("usb://EPSON/TM-T20?serial=J4\0007\0shop\0receipt\0001\0", 43);
        QTest::newRow("USB") << usb << "/dev/usb/lp0" << true;
        QTest::newRow("USB and a line") << usb << "/dev/ttyS0" << false;
        const QByteArray line("serial:/dev/ttyS0?baud=9600+flow=hard\0007\0", 40);
        QTest::newRow("line") << line << "/dev/ttyS0" << true;
        QTest::newRow("another line") << line << "/dev/ttyS" << false;
        QTest::newRow("parallel") << QByteArray("parallel:/dev/lp0") << "/dev/lp0" << true;
        QTest::newRow("argument") << QByteArray("vim\0parallel:/dev/lp0", 21) << "/dev/lp0"
                                  << false;
        QTest::newRow("kernel") << QByteArray() << "/dev/lp0" << false;
    }
    void cupsIsToldByItsBackend()
    {
        QFETCH(QByteArray, commandLine);
        QFETCH(QString, path);
        QFETCH(bool, isHeld);
        SysFolder system;
        system.start(1, "/sbin/init");
        system.start(4711, commandLine);
        QCOMPARE(deviceholder::isHeldByCups(path, system.roots().proc), isHeld);
    }

    void usbPrintersAreFound_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<QString>("deviceFile");
        QTest::addColumn<QString>("fault");
        QTest::newRow("only one") << "usb:0519:0003"
                                  << "usb/lp2" << QString();
        QTest::newRow("serial number") << "usb:04b8:0e15:B"
                                       << "usb/lp1" << QString();
        QTest::newRow("two") << "usb:04b8:0e15" << QString()
                             << "2 printers are usb:04b8:0e15: add one of their serial numbers to "
                                "the address: A, B";
        QTest::newRow("another serial number")
            << "usb:04b8:0e15:C" << QString()
            << "there is no USB printer usb:04b8:0e15:C: it is off, or its cable is out";
        QTest::newRow("no printer")
            << "usb:046d:c31c" << QString()
            << "there is no USB printer usb:046d:c31c: it is off, or its cable is out";
        QTest::newRow("not served")
            << "usb:0dd4:0001" << QString()
            << "usb:0dd4:0001 is plugged in, but has no device file: the system's driver \"usblp\" "
               "doesn't serve it; \"modprobe usblp\" loads it";
        QTest::newRow("taken") << "usb:0dd4:0002" << QString()
                               << "usb:0dd4:0002 is held by another process";
    }
    void usbPrintersAreFound()
    {
        QFETCH(QString, address);
        QFETCH(QString, deviceFile);
        QFETCH(QString, fault);
        SysFolder system;
        system.plugIn("1-2", "04b8", "0e15", "B", "usb/lp1", "/dev/null");
        system.plugIn("1-1", "04b8", "0e15", "A", "usb/lp0", "/dev/null");
        system.plugIn("2-1.4", "0519", "0003", "", "usb/lp2", "/dev/null");
        system.plugIn("3-1", "046d", "c31c", "", "", "", "03", "usbhid");
        system.plugIn("3-2", "0dd4", "0001", "", "", "", "07", "");
        system.plugIn("3-3", "0dd4", "0002", "", "", "", "07", "usbfs");
        const devicefault::FoundUsb found =
            devicefault::findUsb(addressOf(address), system.roots());
        QCOMPARE(found.path,
                 deviceFile.isEmpty() ? QString() : system.roots().dev + "/" + deviceFile);
        QCOMPARE(found.error.text, fault);
        QCOMPARE(bool(found.error), !fault.isEmpty());
    }

    // CUPS prints past the system's driver, whose device file is away meanwhile.
    void printerThatCupsTookIsHeldByIt()
    {
        SysFolder system;
        system.plugIn("1-1", "04b8", "0e15", "A", "", "", "07", "usbfs");
        const QString path = system.roots().dev + "/usb/lp0";
        QCOMPARE(devicefault::ofOpening(devicefault::lookAt(path, ENOENT, system.roots())).kind,
                 Kind::Busy);
        system.start(99, "usb://EPSON/TM-T20");
        const TransportError byPath =
            devicefault::ofOpening(devicefault::lookAt(path, ENOENT, system.roots()));
        QCOMPARE(byPath.kind, Kind::HeldByCups);
        QCOMPARE(byPath.text, QString(heldByCups).arg(path));
        const TransportError byNumbers =
            devicefault::findUsb(addressOf("usb:04b8:0e15"), system.roots()).error;
        QCOMPARE(byNumbers.kind, Kind::HeldByCups);
        QCOMPARE(byNumbers.text, QString(heldByCups).arg("usb:04b8:0e15"));
        system.pullOut("1-1", "usb/lp0");
        QCOMPARE(devicefault::ofOpening(devicefault::lookAt(path, ENOENT, system.roots())).kind,
                 Kind::NotFound);
    }
};

Q_DECLARE_METATYPE(printerslib::drivers::devicefault::Circumstances)

QTEST_GUILESS_MAIN(TestDeviceFault)
#include "tst_devicefault.moc"
