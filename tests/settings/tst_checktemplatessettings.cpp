#include <QtTest>
#include <atomic>

#include "settings/checktemplatessettings.h"
#include "settingsitems.h"
#include "threads.h"

namespace {

using Settings = CheckTemplatesSettings;

}  // namespace

class TestCheckTemplatesSettings : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;
    QByteArray m_configuration;

private Q_SLOTS:
    void initTestCase()
    {
        m_configuration = qgetenv("TARN_CONF");
        qputenv("TARN_CONF", QFile::encodeName(m_folder.filePath("etc/tarn.conf")));
    }

    void cleanupTestCase() { qputenv("TARN_CONF", m_configuration); }

    void cleanup()
    {
        Settings settings;
        settings.setCheckTemplatesPath(QString());
        settings.setDefaultCheckTemplate("default.cpt");
    }

    // Has to stay the first: it looks at the process as it starts.
    void startValues()
    {
        const Settings settings;
        QCOMPARE(settings.defaultCheckTemplate(), QString("default.cpt"));
        QCOMPARE(settings.checkTemplatesPath(), m_folder.filePath("templates"));
        QCOMPARE(settings.toList(),
                 (QList<QVariant>{
                     item("CHECK_TEMPLATES", "checkTemplatesPath", QString()),
                     item("CHECK_TEMPLATES", "defaultCheckTemplate", "default.cpt"),
                 }));
    }

    void keyConstants()
    {
        QCOMPARE(Settings::SECTION, QString("CHECK_TEMPLATES"));
        QCOMPARE(Settings::CHECK_TEMPLATES_PATH, QString("checkTemplatesPath"));
        QCOMPARE(Settings::DEFAULT_CHECK_TEMPLATE, QString("defaultCheckTemplate"));
        QCOMPARE(Settings::SPEC_SYMBOLS_PATH, QString("specsymbolsPath"));
        QCOMPARE(Settings::Z_TEMPLATES_PATH, QString("z_templatesPath"));
        QCOMPARE(Settings::FISCAL_TEMPLATES_PATH, QString("fiscalTemplatesPath"));
    }

    void defaultFolderFollowsTheConfiguration()
    {
        QTemporaryDir other;
        const QByteArray before = qgetenv("TARN_CONF");
        QCOMPARE(Settings().checkTemplatesPath(), m_folder.filePath("templates"));
        qputenv("TARN_CONF", QFile::encodeName(other.filePath("etc/tarn.conf")));
        QCOMPARE(Settings().checkTemplatesPath(), other.filePath("templates"));
        QVERIFY(QFileInfo(other.filePath("printsrv")).isDir());
        QVERIFY(QFileInfo(other.filePath("png")).isDir());
        QVERIFY(!QFileInfo::exists(other.filePath("templates")));
        qputenv("TARN_CONF", before);
    }

    void storedFolderTouchesNothing()
    {
        QTemporaryDir other;
        const QByteArray before = qgetenv("TARN_CONF");
        qputenv("TARN_CONF", QFile::encodeName(other.filePath("etc/tarn.conf")));
        Settings settings;
        settings.setCheckTemplatesPath("/srv/templates/");
        QCOMPARE(settings.checkTemplatesPath(), QString("/srv/templates/"));
        QVERIFY(QDir(other.path()).isEmpty());
        qputenv("TARN_CONF", before);
    }

    void everyObjectIsAViewOnTheSameValues()
    {
        Settings writer;
        writer.setCheckTemplatesPath("/a");
        writer.setDefaultCheckTemplate("чек.cpt");
        const Settings reader;
        QCOMPARE(reader.checkTemplatesPath(), QString("/a"));
        QCOMPARE(reader.defaultCheckTemplate(), QString("чек.cpt"));
    }

    void itemsAreTaken()
    {
        Settings settings;
        QVERIFY(settings.setValue(item("CHECK_TEMPLATES", "checkTemplatesPath", "/a")));
        QVERIFY(settings.setValue(item("CHECK_TEMPLATES", "defaultCheckTemplate", "b.cpt")));
        QCOMPARE(settings.checkTemplatesPath(), QString("/a"));
        QCOMPARE(settings.defaultCheckTemplate(), QString("b.cpt"));
    }

    void listFillsTheSettings()
    {
        Settings settings;
        settings.setList({
            QVariant(),
            item("PRINTER", "checkTemplatesPath", "/wrong"),
            item("CHECK_TEMPLATES", "checkTemplatesPath", "/a"),
            item("CHECK_TEMPLATES", "specsymbolsPath", "/wrong"),
            item("CHECK_TEMPLATES", "defaultCheckTemplate", "b.cpt"),
        });
        const QList<QVariant> list = settings.toList();
        QCOMPARE(list, (QList<QVariant>{
                           item("CHECK_TEMPLATES", "checkTemplatesPath", "/a"),
                           item("CHECK_TEMPLATES", "defaultCheckTemplate", "b.cpt"),
                       }));
        cleanup();
        settings.setList(list);
        QCOMPARE(settings.toList(), list);
    }

    void itemsThatAreNotTaken_data()
    {
        QTest::addColumn<QMap<QString, QVariant>>("refused");

        QTest::newRow("empty") << QMap<QString, QVariant>();
        QTest::newRow("printer's group") << item("PRINTER", "checkTemplatesPath", "/a");
        QTest::newRow("no group") << QMap<QString, QVariant>{{"key", "checkTemplatesPath"},
                                                             {"value", "/a"}};
        QTest::newRow("no key") << QMap<QString, QVariant>{{"group", "CHECK_TEMPLATES"}};
        QTest::newRow("key of clients") << item("CHECK_TEMPLATES", "specsymbolsPath", "/a");
    }

    void itemsThatAreNotTaken()
    {
        using Item = QMap<QString, QVariant>;
        QFETCH(Item, refused);
        Settings settings;
        const QList<QVariant> before = settings.toList();
        QVERIFY(!settings.setValue(refused));
        QCOMPARE(settings.toList(), before);
    }

    // Says little by itself; under ThreadSanitizer it proves that every access is guarded.
    void anyThreadMayUseAnything()
    {
        std::atomic<int> wrong{0};
        runOnThreads(4, [&wrong](int) {
            for (int round = 0; round < 50; ++round) {
                Settings settings;
                settings.setCheckTemplatesPath(round % 2 ? QString("/a") : QString());
                settings.setDefaultCheckTemplate(QString("/b %1").arg(round));
                settings.setList(settings.toList());
                settings.setValue(item("CHECK_TEMPLATES", "checkTemplatesPath", ""));
                if (!settings.checkTemplatesPath().startsWith('/') ||
                    !settings.defaultCheckTemplate().startsWith("/b "))
                    ++wrong;
            }
        });
        QCOMPARE(wrong.load(), 0);
    }
};

QTEST_APPLESS_MAIN(TestCheckTemplatesSettings)
#include "tst_checktemplatessettings.moc"
