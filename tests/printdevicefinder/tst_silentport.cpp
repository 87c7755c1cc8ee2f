#include <QSignalSpy>
#include <QtTest>

#include "logcatcher.h"
#include "printdevicefinder/printdevicefinder.h"
#include "printerbench.h"

/// The one search with the waits of a real one. It takes near three minutes, nearly all of it
/// asleep, so it has a program of its own that runs beside the others.
class TestSilentPort : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void searchTakesTheSumOfItsWaits()
    {
        const QuietLog quiet;
        VirtualPrinter printer(faultyPrinter(VirtualFault::Silent));
        printer.start();
        PrintDeviceFinder finder(nullptr);
        const QSignalSpy noDevices(&finder, &PrintDeviceFinder::noDevices);
        QSignalSpy finished(&finder, &PrintDeviceFinder::finished);
        constexpr int sumOfWaits = 63 * 2 * 300 + 63 * 1400 + 24 * 300 + 1000 + 36 * 1000;
        constexpr int limit = 2 * sumOfWaits;

        QElapsedTimer clock;
        clock.start();
        finder.start(QStringList(printer.portPath()));
        QVERIFY(finished.wait(limit));
        const qint64 elapsed = clock.elapsed();

        QCOMPARE(noDevices.size(), 1);
        const QStringList lines = linesOf(printer);
        QCOMPARE(lines.constFirst(), QString("115200 none < 1D 49 01"));
        QCOMPARE(lines.constLast(), QString("1200 software < 1B 76"));
        QVERIFY2(elapsed >= sumOfWaits - 1000, qPrintable(QString::number(elapsed)));
        qInfo("%lld ms over the %d ms of the waits", elapsed - sumOfWaits, sumOfWaits);
    }
};

QTEST_GUILESS_MAIN(TestSilentPort)
#include "tst_silentport.moc"
