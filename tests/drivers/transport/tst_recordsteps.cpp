// In which order the disk keeps the record beside a lock: whoever comes after a power cut reads the
// old one or the new one, whole.
#include <QtTest>

#include "disksteps.h"
#include "transport/staterecord_p.h"

using namespace printerslib::drivers;
using disksteps::steps;
using disksteps::watch;

namespace {

QString fileName()
{
    return "printer." + QString::number(::geteuid()) + ".state";
}

struct Kept
{
    QTemporaryDir disk;
    QString folder = disk.filePath("locks");
    StateRecord record{folder, "printer"};

    Kept() { QDir().mkpath(folder); }
};

}  // namespace

class TestRecordSteps : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { watch(); }

    void aRecordIsWholeInFrontOfItsName()
    {
        Kept kept;
        for (const QByteArray &bytes : {QByteArray("first"), QByteArray(5000, 'x')}) {
            watch();
            QVERIFY(kept.record.write(bytes));
            QCOMPARE(steps, (QStringList{"sync file", "name " + fileName(), "sync locks"}));
            QCOMPARE(disksteps::written, QFileInfo(kept.folder + '/' + fileName()).size());
        }
    }

    void aRecordThatTheDiskRefusesLeavesTheOldOne()
    {
        for (const int step : {0, 1}) {
            Kept kept;
            QVERIFY(kept.record.write("old"));
            watch(step);
            QVERIFY(!kept.record.write("new"));
            watch();
            QCOMPARE(kept.record.read(), QByteArray("old"));
            QCOMPARE(QDir(kept.folder).entryList(QDir::Files), QStringList(fileName()));
        }
    }

    // It lies on a memory disk as a rule, and is in its place already.
    void aFolderThatCanNotBeSyncedIsNoFault()
    {
        Kept kept;
        watch(2, EINVAL);
        QVERIFY(kept.record.write("new"));
        QCOMPARE(kept.record.read(), QByteArray("new"));
    }
};

QTEST_GUILESS_MAIN(TestRecordSteps)
#include "tst_recordsteps.moc"
