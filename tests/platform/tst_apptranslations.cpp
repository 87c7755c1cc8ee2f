#include <sys/stat.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QProcess>
#include <QtTest>
#include <atomic>
#include <memory>

#include "hearth/apptranslations.h"
#include "hearth/appversionmanager.h"
#include "hearth/dircreator.h"
#include "logcatcher.h"
#include "printdevicefinder/printdevicefinder.h"
#include "printerdocs/printerdocumentformatter.h"
#include "threads.h"

using hearth::AppTranslations;
using hearth::AppVersionManager;

namespace {

QString copyMark()
{
    return PrinterDocumentFormatter::tr("<C>CHECK_COPY");
}

QStringList printedCopy()
{
    PrinterDocument document;
    document.setAttributes({{"DOCNO", 17}});
    document.setIsCopy(true);
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate("No <DOCNO>");
    return formatter.toPlainText(document, 20);
}

constexpr uid_t nobody = 65534;

const QString untranslated = QStringLiteral("<C>CHECK_COPY");

struct Shipped
{
    const char *language;
    const char *name;
    const char *copy;
    const char *noPorts;
    const char *noConfigurations;
    const char *noDevices;
};

// In the order of the file names.
constexpr Shipped shipped[] = {
    {"de", "German", "<C>KOPIE", "Es gibt keine verfügbaren Anschlüsse",
     "Es gibt keine verfügbaren Druckereinstellungen", "Es wurde kein Drucker gefunden"},
    {"en", "English", "<C>COPY", "There are no available ports",
     "There are no available configurations", "No devices were found"},
    {"ru", "Russian", "<C>КОПИЯ", "Нет доступных портов", "Нет доступных настроек принтеров",
     "Принтеры не найдены"},
};

/// Those that are shipped, and a site's own.
QStringList languagesWith(QStringList languages)
{
    for (const Shipped &row : shipped)
        languages.append(row.language);
    languages.sort();
    return languages;
}

/// Notes the copy's mark whenever the application's translators change.
class MarkWatcher : public QObject
{
public:
    QStringList marks;

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::LanguageChange)
            marks.append(copyMark());
        return false;
    }
};

/// What the library's own registration does, and what a client must not do: ask at this time.
const bool usedDuringStaticConstruction = AppTranslations::use("ru");

}  // namespace

class TestAppTranslations : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_workFolder;
    std::unique_ptr<QCoreApplication> m_application;
    QByteArray m_configuration;

    void makeApplication()
    {
        static int count = 1;
        static char name[] = "tst_apptranslations";
        static char *arguments[] = {name, nullptr};
        m_application = std::make_unique<QCoreApplication>(count, arguments);
    }

    QString siteFile(const QString &language, const QString &component = "printerslib") const
    {
        return m_workFolder->filePath(QString("translations/%1_%2.qm").arg(component, language));
    }

    static bool write(const QString &fileName, const QByteArray &bytes)
    {
        QFile file(fileName);
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    }

    /// Makes a translation as a site does.
    bool addTranslation(const QString &language, const QByteArray &context,
                        const QByteArray &source, const QByteArray &translation,
                        const QString &component = "printerslib") const
    {
        const QString text = m_workFolder->filePath("site.ts");
        return write(text,
                     "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!DOCTYPE TS>\n"
                     "<TS version=\"2.1\"><context><name>" +
                         context + "</name><message><source>" + source + "</source><translation>" +
                         translation + "</translation></message></context></TS>\n") &&
               QProcess::execute(LRELEASE_PROGRAM,
                                 {"-silent", text, "-qm", siteFile(language, component)}) == 0;
    }
    bool addCopyMark(const QString &language, const QByteArray &translation) const
    {
        return addTranslation(language, "PrinterDocumentFormatter", "&lt;C&gt;CHECK_COPY",
                              translation);
    }

    static void expectWarning(const QString &pattern)
    {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(pattern));
    }

private Q_SLOTS:
    void initTestCase() { m_configuration = qgetenv("TARN_CONF"); }

    void init()
    {
        m_workFolder = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir(m_workFolder->path()).mkpath("translations"));
        qputenv("TARN_CONF", QFile::encodeName(m_workFolder->filePath("etc/tarn.conf")));
        makeApplication();
    }

    void cleanup()
    {
        m_application.reset();
        qputenv("TARN_CONF", m_configuration);
        QLocale::setDefault(QLocale::c());
    }

    void libraryHasEnteredItsName()
    {
        QCOMPARE(AppVersionManager::localisations(), QStringList("printerslib"));
        AppVersionManager::addLocalisation("printerslib");
        QCOMPARE(AppVersionManager::localisations(), QStringList("printerslib"));
    }

    void nothingIsInstalledDuringStaticConstruction()
    {
        QVERIFY(!usedDuringStaticConstruction);
        QCOMPARE(copyMark(), untranslated);
    }

    void nothingIsInstalledWithoutAnApplication()
    {
        m_application.reset();
        expectWarning("^The language \"ru\" can't be used: there is no application object yet$");
        QVERIFY(!AppTranslations::use("ru"));
        QCOMPARE(copyMark(), untranslated);
        QCOMPARE(AppTranslations::languages(), languagesWith({}));
        makeApplication();
        QCOMPARE(copyMark(), untranslated);
    }

    void shippedWords_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("copy");
        QTest::addColumn<QStringList>("finder");

        for (const Shipped &row : shipped)
            QTest::newRow(row.name)
                << row.language << row.copy
                << QStringList{row.noPorts, row.noConfigurations, row.noDevices, row.noDevices};
        QTest::newRow("none") << ""
                              << "<C>CHECK_COPY"
                              << QStringList{"There are no available ports",
                                             "There are no available configs",
                                             "There no devices finded", "There no devices found"};
    }
    void shippedWords()
    {
        QFETCH(QString, language);
        QFETCH(QString, copy);
        QFETCH(QStringList, finder);
        QVERIFY(AppTranslations::use(language));
        QCOMPARE(copyMark(), copy);
        QVERIFY(copyMark().startsWith("<C>"));
        QCOMPARE(PrintDeviceFinder::tr("There are no available ports"), finder.at(0));
        QCOMPARE(PrintDeviceFinder::tr("There are no available configs"), finder.at(1));
        QCOMPARE(PrintDeviceFinder::tr("There no devices finded"), finder.at(2));
        QCOMPARE(PrintDeviceFinder::tr("There no devices found"), finder.at(3));
    }

    void finderSpeaksTheLanguage()
    {
        QVERIFY(AppTranslations::use("de"));
        PrintDeviceFinder finder;
        QString told;
        QObject::connect(&finder, &PrintDeviceFinder::noDevices,
                         [&told](const QString &text) { told = text; });
        finder.start(QStringList());
        QCOMPARE(told, QString::fromUtf8("Es gibt keine verfügbaren Anschlüsse"));
    }

    void receiptFollowsEachSwitch()
    {
        QCOMPARE(printedCopy(), (QStringList{"No 17", "     CHECK_COPY"}));
        QVERIFY(AppTranslations::use("ru"));
        QCOMPARE(printedCopy(), (QStringList{"No 17", QString::fromUtf8("       КОПИЯ")}));
        QVERIFY(AppTranslations::use("de"));
        QCOMPARE(printedCopy(), (QStringList{"No 17", "       KOPIE"}));
        QVERIFY(AppTranslations::use("de"));
        QCOMPARE(printedCopy(), (QStringList{"No 17", "       KOPIE"}));
        QVERIFY(AppTranslations::use(QString()));
        QCOMPARE(printedCopy(), (QStringList{"No 17", "     CHECK_COPY"}));
    }

    void clientsOwnTranslatorStays()
    {
        QVERIFY(addCopyMark("kk", "&lt;C&gt;SITE"));
        QTranslator own;
        QVERIFY(own.load(siteFile("kk")));
        QVERIFY(QCoreApplication::installTranslator(&own));
        QVERIFY(AppTranslations::use("ru"));
        QCOMPARE(copyMark(), QString::fromUtf8("<C>КОПИЯ"));
        QVERIFY(AppTranslations::use(QString()));
        QCOMPARE(copyMark(), QString("<C>SITE"));
    }

    void unknownLanguageLeavesTheOneInUse()
    {
        QVERIFY(AppTranslations::use("ru"));
        expectWarning(
            "^There is no translation of printerslib to \"xx\" in "
            "/.*/share/printerslib/translations, /.*/translations$");
        QVERIFY(!AppTranslations::use("xx"));
        QCOMPARE(copyMark(), QString::fromUtf8("<C>КОПИЯ"));
    }

    void nameOfALanguageIsExact_data()
    {
        QTest::addColumn<QString>("language");
        for (const char *language : {"RU", "ru_RU", "r", "rus", "ru_", "russian"})
            QTest::newRow(language) << language;
    }
    void nameOfALanguageIsExact()
    {
        QFETCH(QString, language);
        expectWarning("^There is no translation of printerslib to \"" + language + "\" in ");
        QVERIFY(!AppTranslations::use(language));
        QCOMPARE(copyMark(), untranslated);
    }

    void pathIsNoLanguage_data()
    {
        QTest::addColumn<QString>("language");
        QTest::newRow("above") << "../de";
        QTest::newRow("folder") << "x/../../printerslib_de";
        QTest::newRow("absolute") << "/etc/passwd";
        QTest::newRow("suffix") << "de.qm";
        QTest::newRow("blank") << "de ";
        QTest::newRow("line feed") << "de\n";
        QTest::newRow("null character") << QString("de") + QChar(0);
        QTest::newRow("not ASCII") << QString::fromUtf8("русский");
    }
    void pathIsNoLanguage()
    {
        QFETCH(QString, language);
        // So that only the name is wrong.
        QVERIFY(QDir(m_workFolder->path()).mkpath("translations/printerslib_x"));
        expectWarning("this is no language's name$");
        QVERIFY(!AppTranslations::use(language));
        QCOMPARE(copyMark(), untranslated);
    }

    void siteAddsALanguage()
    {
        QVERIFY(addCopyMark("kk", "&lt;C&gt;КӨШІРМЕ"));
        QVERIFY(addCopyMark("sr@latin", "&lt;C&gt;KOPIJA"));
        QCOMPARE(AppTranslations::languages(), languagesWith({"kk", "sr@latin"}));
        QVERIFY(AppTranslations::use("kk"));
        QCOMPARE(printedCopy().at(1), QString::fromUtf8("      КӨШІРМЕ"));
        QVERIFY(AppTranslations::use("sr@latin"));
        QCOMPARE(copyMark(), QString("<C>KOPIJA"));
        QCOMPARE(PrintDeviceFinder::tr("There no devices finded"),
                 QString("There no devices finded"));
    }

    void workFolderPrevailsAndTheShareGivesTheRest()
    {
        QVERIFY(addCopyMark("ru", "&lt;C&gt;ДУБЛИКАТ"));
        QVERIFY(AppTranslations::use("ru"));
        QCOMPARE(copyMark(), QString::fromUtf8("<C>ДУБЛИКАТ"));
        QCOMPARE(PrintDeviceFinder::tr("There no devices finded"),
                 QString::fromUtf8("Принтеры не найдены"));
        QVERIFY(QFile::remove(siteFile("ru")));
        QVERIFY(AppTranslations::use("ru"));
        QCOMPARE(copyMark(), QString::fromUtf8("<C>КОПИЯ"));
    }

    void otherFilesAreNoLanguages()
    {
        for (const char *name : {"printerslib_.qm", "printerslib_kk.ts", "printerslib.qm", "kk.qm",
                                 "other_kk.qm", "printerslib_k k.qm", "printerslib_kk.qm.bak"})
            QVERIFY(write(m_workFolder->filePath(QString("translations/") + name), "x"));
        QVERIFY(QDir(m_workFolder->path()).mkpath("translations/printerslib_uz.qm"));
        QCOMPARE(AppTranslations::languages(), languagesWith({}));
    }

    void uselessFileGivesWayToTheShare_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("fault");
        QTest::newRow("empty") << QByteArray() << "this is no translation";
        QTest::newRow("text") << QByteArray("KOPIE\n") << "this is no translation";
        QTest::newRow("huge") << QByteArray(16 * 1024 * 1024 + 1, '<')
                              << "this is larger than 16777216 bytes";
    }
    void uselessFileGivesWayToTheShare()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, fault);
        QVERIFY(write(siteFile("de"), bytes));
        expectWarning('^' + QRegularExpression::escape(siteFile("de") + ": " + fault) + '$');
        QVERIFY(AppTranslations::use("de"));
        QCOMPARE(copyMark(), QString("<C>KOPIE"));
    }

    void cutOffFileMeansNoCrash()
    {
        QFile whole(siteFile("de"));
        QVERIFY(addCopyMark("de", "&lt;C&gt;GEKÜRZT"));
        QVERIFY(whole.open(QIODevice::ReadOnly));
        const QByteArray bytes = whole.readAll();
        const QuietLog quiet;
        QSet<QString> marks;
        for (int length = 0; length < bytes.size(); ++length) {
            write(siteFile("de"), bytes.left(length));
            AppTranslations::use("de");
            marks.insert(copyMark());
        }
        const QSet<QString> possible{"<C>KOPIE", QString::fromUtf8("<C>GEKÜRZT")};
        QVERIFY2(possible.contains(marks), qPrintable(marks.values().join(", ")));
    }

    void pipeAndFolderAreNoTranslation()
    {
        QCOMPARE(::mkfifo(QFile::encodeName(siteFile("de")).constData(), 0600), 0);
        expectWarning("printerslib_de.qm: this is no file$");
        QVERIFY(AppTranslations::use("de"));
        QVERIFY(QDir(m_workFolder->path()).mkpath("translations/printerslib_en.qm"));
        expectWarning("printerslib_en.qm: this is no file$");
        QVERIFY(AppTranslations::use("en"));
        QCOMPARE(copyMark(), QString("<C>COPY"));
    }

    void unreadableFileIsNamed()
    {
        QVERIFY(addCopyMark("kk", "&lt;C&gt;X"));
        QVERIFY(QFile::setPermissions(siteFile("kk"), QFileDevice::WriteOwner));
        QVERIFY(QFile::setPermissions(m_workFolder->path(), hearth::DirCreator::DEFAULT_ALL));
        // Root reads everything.
        const bool isRoot = ::geteuid() == 0;
        QVERIFY(!isRoot || ::seteuid(nobody) == 0);
        expectWarning("printerslib_kk.qm: .+");
        expectWarning("^There is no translation of printerslib to \"kk\"");
        const bool used = AppTranslations::use("kk");
        QVERIFY(!isRoot || ::seteuid(0) == 0);
        QVERIFY(!used);
    }

    void fileThatIsWrittenOverLaterChangesNothing()
    {
        QVERIFY(addCopyMark("kk", "&lt;C&gt;КӨШІРМЕ"));
        QVERIFY(AppTranslations::use("kk"));
        QVERIFY(QFile::resize(siteFile("kk"), 0));
        QCOMPARE(copyMark(), QString::fromUtf8("<C>КӨШІРМЕ"));
        QVERIFY(QFile::remove(siteFile("kk")));
        QCOMPARE(copyMark(), QString::fromUtf8("<C>КӨШІРМЕ"));
    }

    void localeChoosesNothing()
    {
        m_application.reset();
        for (const char *name : {"LANG", "LANGUAGE", "LC_ALL", "LC_MESSAGES"})
            qputenv(name, "ru_RU.UTF-8");
        QLocale::setDefault(QLocale(QLocale::Russian, QLocale::Russia));
        QVERIFY(QDir(m_workFolder->path()).mkpath("etc"));
        QVERIFY(write(m_workFolder->filePath("etc/tarn.conf"), "locale=ru\n"));
        makeApplication();
        QCOMPARE(printedCopy().at(1), QString("     CHECK_COPY"));
        QVERIFY(AppTranslations::use("de"));
        QCOMPARE(printedCopy().at(1), QString("       KOPIE"));
        for (const char *name : {"LANG", "LANGUAGE", "LC_MESSAGES"})
            qunsetenv(name);
        qputenv("LC_ALL", "C.UTF-8");
    }

    void translationsGoWithTheApplication()
    {
        QVERIFY(AppTranslations::use("ru"));
        m_application.reset();
        QCOMPARE(copyMark(), untranslated);
        makeApplication();
        QCOMPARE(copyMark(), untranslated);
        QVERIFY(AppTranslations::use("ru"));
        QCOMPARE(copyMark(), QString::fromUtf8("<C>КОПИЯ"));
    }

    void onlyTheThreadOfTheApplicationChooses()
    {
        expectWarning(
            "^The language \"ru\" can't be used: only the thread of the application "
            "object may do that$");
        std::atomic<bool> used{true};
        runOnThreads(1, [&used](int) { used = AppTranslations::use("ru"); });
        QVERIFY(!used);
        QCOMPARE(copyMark(), untranslated);
    }

    // The application is told of each translator that comes or goes.
    void eachStepOfASwitchHasTranslatedWords()
    {
        QVERIFY(AppTranslations::use("ru"));
        MarkWatcher watcher;
        m_application->installEventFilter(&watcher);
        QVERIFY(AppTranslations::use("de"));
        QCOMPARE(watcher.marks, (QStringList{"<C>KOPIE", "<C>KOPIE"}));
    }

    void noThreadPrintsUntranslatedWordsDuringASwitch()
    {
        QVERIFY(AppTranslations::use("ru"));
        std::atomic<bool> done{false};
        std::atomic<int> seen{0};
        std::atomic<int> wrong{0};
        std::thread printer([&] {
            while (!done) {
                const QString mark = copyMark();
                wrong += mark != QString::fromUtf8("<C>КОПИЯ") && mark != "<C>KOPIE";
                ++seen;
            }
        });
        for (int turn = 0; turn < 200 || seen < 200; ++turn)
            AppTranslations::use(turn % 2 == 0 ? "de" : "ru");
        done = true;
        printer.join();
        QCOMPARE(wrong.load(), 0);
    }

    // Enters a component that stays for the rest of the process, so these two are the last ones.
    void componentWithoutTheLanguageKeepsItsWords()
    {
        AppVersionManager::addLocalisation("drawer");
        QCOMPARE(AppTranslations::languages(), QStringList());
        QVERIFY(addTranslation("ru", "Drawer", "open", "открыт", "drawer"));
        QCOMPARE(AppTranslations::languages(), QStringList("ru"));
        QVERIFY(AppTranslations::use("ru"));
        expectWarning("^There is no translation of drawer to \"de\"");
        QVERIFY(!AppTranslations::use("de"));
        QCOMPARE(copyMark(), QString("<C>KOPIE"));
        QCOMPARE(QCoreApplication::translate("Drawer", "open"), QString::fromUtf8("открыт"));
        QVERIFY(AppTranslations::use(QString()));
        QCOMPARE(QCoreApplication::translate("Drawer", "open"), QString("open"));
    }

    void nameOfAnUnloadedLibraryIsKept()
    {
        QString name("unloaded");
        AppVersionManager::addLocalisation(QString::fromRawData(name.constData(), name.size()));
        name[0] = 'X';
        QCOMPARE(AppVersionManager::localisations().constLast(), QString("unloaded"));
    }
};

QTEST_APPLESS_MAIN(TestAppTranslations)
#include "tst_apptranslations.moc"
