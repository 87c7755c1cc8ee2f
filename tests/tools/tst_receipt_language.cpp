#include <QtTest>

#include "receiptprogram.h"

namespace {

struct Shipped
{
    const char *language;
    const char *name;
    const char *mark;
};

// In the order of the file names.
constexpr Shipped shipped[] = {
    {"de", "German", "KOPIE"},
    {"en", "English", "COPY"},
    {"ru", "Russian", "КОПИЯ"},
};

/// How a complaint about the option ends, beside the languages of a site's own.
QString thereAre(QStringList languages = {})
{
    for (const Shipped &row : shipped)
        languages.append(row.language);
    languages.sort();
    return "there are: " + languages.join(", ") + "\n";
}

}  // namespace

class TestReceiptLanguage : public QObject
{
    Q_OBJECT

    /// The configuration of the tests' own, before it is that of one test.
    QByteArray m_configuration;
    WorkFolder m_system;

    static QStringList cafeCopy(const QStringList &options)
    {
        return QStringList{"render", example("cafe.cpt"), example("cafe-copy.json")} + options;
    }

    /// The line of the mark in a rendered copy.
    static QString markOf(const ReceiptRun &run)
    {
        return run.output.section('\n', 4, 4).trimmed();
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_configuration = qgetenv("TARN_CONF");
        QVERIFY(QDir().mkpath(m_system.path("etc")));
        QVERIFY(QDir().mkpath(m_system.path("translations")));
        qputenv("TARN_CONF", QFile::encodeName(m_system.path("etc/tarn.conf")));
    }
    void cleanupTestCase() { qputenv("TARN_CONF", m_configuration); }

    void copyIsMarkedInTheLanguage_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("mark");
        QTest::newRow("none") << QStringList{} << "CHECK_COPY";
        for (const Shipped &row : shipped)
            QTest::newRow(row.name) << QStringList{"--language", row.language} << row.mark;
        QTest::newRow("in capitals or not")
            << QStringList{"--language", "de", "--case", "lower"} << "kopie";
    }
    void copyIsMarkedInTheLanguage()
    {
        QFETCH(QStringList, options);
        QFETCH(QString, mark);
        const ReceiptRun run = runReceipt(cafeCopy(options));
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
        QCOMPARE(markOf(run), mark);
    }

    void markStandsInTheMiddle()
    {
        const ReceiptRun run = runReceipt(cafeCopy({"--language", "en", "--width", "42"}));
        QCOMPARE(run.output.section('\n', 4, 4), QString(19, ' ') + "COPY");
    }

    void firstPrintHasNoMark()
    {
        const QStringList command{"render", example("cafe.cpt"), example("cafe.json")};
        const ReceiptRun plain = runReceipt(command);
        const ReceiptRun translated = runReceipt(command + QStringList{"--language", "ru"});
        QCOMPARE(translated.status, 0);
        QCOMPARE(translated.output, plain.output);
    }

    void everyCommandThatMakesReceiptsKnowsTheLanguage_data()
    {
        QTest::addColumn<QStringList>("command");
        QTest::newRow("render") << QStringList{"render", "--as", "json"};
        QTest::newRow("preview") << QStringList{"preview", "--output", m_system.path("copy.svg")};
        QTest::newRow("document save")
            << QStringList{"document", "save", m_system.path("kept"), "--from"};
        QTest::newRow("lint") << QStringList{"lint", "--width", "8", "--data"};
    }
    void everyCommandThatMakesReceiptsKnowsTheLanguage()
    {
        QFETCH(QStringList, command);
        const bool documentFirst = command.constLast().startsWith("--data");
        const QString templateFile = m_system.file("copy.cpt", "<DOCNO>\n");
        const QString data =
            m_system.file("copy.json", R"({"attributes": {"DOCNO": 1}, "isCopy": true})");
        const QStringList files =
            documentFirst ? QStringList{data, templateFile} : QStringList{templateFile, data};
        const ReceiptRun unknown = runReceipt(command + files + QStringList{"--language", "xx"});
        QCOMPARE(unknown.errors,
                 "receipt: --language: there is no translation to \"xx\"; " + thereAre());
        QCOMPARE(unknown.status, 2);
        QCOMPARE(unknown.output, QString());
        const ReceiptRun run = runReceipt(command + files + QStringList{"--language", "de"});
        QCOMPARE(run.status, 0);
    }

    void savedCopyAndItsPictureKeepTheWord()
    {
        const QString path = m_system.path("receipt");
        const ReceiptRun saved = runReceipt({"document", "save", path, example("cafe-copy.json"),
                                             "--from", example("cafe.cpt"), "--language", "ru"});
        QCOMPARE(saved.errors, QString());
        QCOMPARE(saved.status, 0);
        QVERIFY(runReceipt({"document", "show", path}).output.contains(QString::fromUtf8("КОПИЯ")));

        QHash<QString, QByteArray> pictures;
        for (const QString language : {"ru", "de"}) {
            const QString name = "copy_" + language + ".svg";
            const ReceiptRun drawn =
                runReceipt({"preview", example("cafe.cpt"), example("cafe-copy.json"), "--output",
                            m_system.path(name), "--language", language});
            QCOMPARE(drawn.errors, QString());
            pictures.insert(language, m_system.content(name));
        }
        QVERIFY(!pictures.value("ru").isEmpty());
        QVERIFY(pictures.value("ru") != pictures.value("de"));
    }

    // The raw word is 10 characters long, the German one 5.
    void lintMeasuresTheTranslatedMark()
    {
        const QString templateFile = m_system.file("narrow.cpt", "<DOCNO>\n");
        const QString data =
            m_system.file("narrow.json", R"({"attributes": {"DOCNO": 1}, "isCopy": true})");
        const QStringList command{"lint", templateFile, "--data", data, "--width", "8"};
        const ReceiptRun raw = runReceipt(command);
        QVERIFY2(raw.output.contains("[broken-word]"), qPrintable(raw.output));
        QCOMPARE(runReceipt(command + QStringList{"--language", "de"}).output, QString());
    }

    void unknownLanguageIsWrongUsage_data()
    {
        QTest::addColumn<QString>("language");
        for (const char *language : {"xx", "", "RU", "ru_RU", "../ru", "printerslib_ru"})
            QTest::newRow(language) << language;
    }
    void unknownLanguageIsWrongUsage()
    {
        QFETCH(QString, language);
        const ReceiptRun run = runReceipt(cafeCopy({"--language", language}));
        QCOMPARE(run.errors,
                 QString("receipt: --language: there is no translation to \"%1\"; ").arg(language) +
                     thereAre());
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 2);
    }

    void optionWithoutAValueIsWrongUsage()
    {
        const ReceiptRun run = runReceipt(cafeCopy({"--language"}));
        QCOMPARE(run.errors, QString("receipt: Missing value after '--language'.\n"));
        QCOMPARE(run.status, 2);
    }

    void commandsWithoutReceiptsDoNotKnowTheOption()
    {
        for (const QString command : {"models", "find", "fill"}) {
            const ReceiptRun run = runReceipt({command, "--language", "ru"});
            QCOMPARE(run.status, 2);
            QVERIFY2(run.errors.contains("language"), qPrintable(run.errors));
        }
    }

    // As docs/languages.md says.
    void siteAddsALanguageAndChangesAnother()
    {
        const QString text = example("translations/printerslib_kk.ts");
        for (const QString language : {"kk", "ru"}) {
            const QString translation =
                m_system.path("translations/printerslib_" + language + ".qm");
            QCOMPARE(QProcess::execute(LRELEASE_PROGRAM, {"-silent", text, "-qm", translation}), 0);
            const ReceiptRun run = runReceipt(cafeCopy({"--language", language}));
            QCOMPARE(run.errors, QString());
            QCOMPARE(markOf(run), QString::fromUtf8("КӨШІРМЕ"));
        }
        QVERIFY(runReceipt(cafeCopy({"--language", "xx"})).errors.endsWith(thereAre({"kk"})));
        QVERIFY(QFile::remove(m_system.path("translations/printerslib_ru.qm")));
        QVERIFY(QFile::remove(m_system.path("translations/printerslib_kk.qm")));
    }

    void damagedTranslationOfTheSiteIsLoggedAndPassedOver()
    {
        m_system.file("translations/printerslib_de.qm", "no translation");
        const ReceiptRun silent = runReceipt(cafeCopy({"--language", "de"}));
        QCOMPARE(silent.errors, QString());
        QCOMPARE(markOf(silent), QString("KOPIE"));
        const ReceiptRun verbose = runReceipt(cafeCopy({"--language", "de", "-v"}));
        QVERIFY2(verbose.errors.contains("printerslib_de.qm: this is no translation"),
                 qPrintable(verbose.errors));
        QVERIFY(QFile::remove(m_system.path("translations/printerslib_de.qm")));
    }

    void environmentChoosesNoLanguage()
    {
        const QByteArray locale = qgetenv("LC_ALL");
        for (const char *name : {"LANG", "LANGUAGE", "LC_ALL", "LC_MESSAGES"})
            qputenv(name, "ru_RU.UTF-8");
        m_system.file("etc/tarn.conf", "locale=ru\n");
        QCOMPARE(markOf(runReceipt(cafeCopy({}))), QString("CHECK_COPY"));
        QCOMPARE(markOf(runReceipt(cafeCopy({"--language", "de"}))), QString("KOPIE"));
        for (const char *name : {"LANG", "LANGUAGE", "LC_MESSAGES"})
            qunsetenv(name);
        qputenv("LC_ALL", locale);
    }
};

QTEST_APPLESS_MAIN(TestReceiptLanguage)
#include "tst_receipt_language.moc"
