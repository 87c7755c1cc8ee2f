#include <QDateTime>
#include <QRegularExpression>
#include <QtTest>

#include "hearth/appversionmanager.h"
#include "printerslib.h"

namespace {

/// What the register was told, in order; made on first use, as the library registers itself while
/// static objects are constructed.
QStringList &registered()
{
    static QStringList calls;
    return calls;
}

}  // namespace

// This program's register stands before that of the system.
namespace hearth {

AppVersion AppVersionManager::addVersion(const QString &name, const AppVersion &version)
{
    registered().append("version of " + name + ": " + version.version());
    return AppVersion(version.version() + " as registered", version.buildDate());
}

void AppVersionManager::addLocalisation(const QString &name)
{
    registered().append("localisation of " + name);
}

}  // namespace hearth

class TestPrintersLib : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void loadingRegistersTheVersionAndThenTheLocalisation()
    {
        QCOMPARE(registered(),
                 (QStringList{"version of printerslib: 5.0.28", "localisation of printerslib"}));
    }

    void versionIsTheOneTheRegisterGaveBack()
    {
        QVERIFY(PrintersLib::version().isValid());
        QCOMPARE(PrintersLib::version().version(), QString("5.0.28 as registered"));
    }

    void buildDateIsTheCompilersInIsoForm()
    {
        const QString date = PrintersLib::version().buildDate();
        const QRegularExpression form("^20\\d\\d-[01]\\d-[0-3]\\dT[0-2]\\d:[0-5]\\d:[0-5]\\d$");
        QVERIFY2(form.match(date).hasMatch(), qPrintable(date));
        const QDateTime built = QDateTime::fromString(date, Qt::ISODate);
        QVERIFY(built.isValid());
        QVERIFY(built <= QDateTime::currentDateTime().addDays(1));
    }

    void anotherObjectRegistersTheLocalisationAlone()
    {
        registered().clear();
        {
            const PrintersLib another;
        }
        QCOMPARE(registered(), QStringList("localisation of printerslib"));
        QCOMPARE(PrintersLib::version().version(), QString("5.0.28 as registered"));
    }
};

QTEST_APPLESS_MAIN(TestPrintersLib)
#include "tst_printerslib.moc"
