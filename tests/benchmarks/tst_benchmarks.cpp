// The benchmark programs' frame and the table that is made of their results.

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

struct Outcome
{
    int status = -1;
    QString output;
    QString errors;
};

Outcome run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

Outcome compareTexts(const QString &expected, const QString &found, const QString &argument)
{
    return run(TEXT_COMPARISON, {expected, found, argument});
}

QJsonObject result(const QString &name, const QString &aggregate, double time, const QString &unit)
{
    return {{"name", name + '_' + aggregate},
            {"run_name", name},
            {"aggregate_name", aggregate},
            {"cpu_time", time},
            {"time_unit", unit}};
}

}  // namespace

class tst_Benchmarks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void differingTextsAreAnError_data();
    void differingTextsAreAnError();
    void equalTextsAreMeasured();
    void unknownArgumentIsWrongUsage();
    void ratioIsThatOfTheMedians();
    void countIsComparedWithTheLimitItself();
    void missingBenchmarkIsAnError();
    void badResultsAreAnError_data();
    void badResultsAreAnError();
    void reportWithoutResultsIsWrongUsage();

private:
    QString write(const QString &name, const QByteArray &text) const;
    QString writeResults(const QString &name, const QJsonArray &benchmarks) const;
    QJsonArray report(const QString &results) const;

    QTemporaryDir m_dir;
};

void tst_Benchmarks::differingTextsAreAnError_data()
{
    QTest::addColumn<QString>("expected");
    QTest::addColumn<QString>("found");
    QTest::addColumn<QString>("message");
    QTest::newRow("in the middle") << "a\nb\nc"
                                   << "a\nx\nc"
                                   << "line 2\n  expected: b\n  found:    x\n";
    QTest::newRow("shorter") << "a\nb"
                             << "a"
                             << "line 2\n  expected: b\n  found:    (no line)\n";
    QTest::newRow("longer") << "a"
                            << "a\nb"
                            << "line 2\n  expected: (no line)\n  found:    b\n";
    QTest::newRow("line feed at the end") << "a\n"
                                          << "a"
                                          << "line 2\n";
    QTest::newRow("other letter of UTF-8") << "чай"
                                           << "чаи"
                                           << "line 1\n  expected: чай\n";
}

void tst_Benchmarks::differingTextsAreAnError()
{
    QFETCH(QString, expected);
    QFETCH(QString, found);
    QFETCH(QString, message);
    const Outcome outcome = compareTexts(expected, found, "--quick");
    QCOMPARE(outcome.status, 1);
    QVERIFY2(outcome.errors.contains("the text differs in " + message), qPrintable(outcome.errors));
    QVERIFY(!outcome.output.contains("nothing"));
}

void tst_Benchmarks::equalTextsAreMeasured()
{
    const Outcome outcome = compareTexts("a\nb\n", "a\nb\n", "--quick");
    QCOMPARE(outcome.status, 0);
    QVERIFY(outcome.output.contains("nothing"));
}

void tst_Benchmarks::unknownArgumentIsWrongUsage()
{
    QCOMPARE(compareTexts("a", "a", "--qick").status, 2);
}

void tst_Benchmarks::ratioIsThatOfTheMedians()
{
    const QString results = writeResults(
        "bench_catalogue.json",
        {result("fromResources", "mean", 9, "us"), result("fromResources", "median", 3, "us"),
         result("fromResources", "cv", 0.3, "us"), result("parsedOnce", "median", 2, "ms"),
         result("parsedOnce", "cv", 0.4, "ms"), result("defSymbolsPerLine", "median", 2, "ms")});
    const QJsonArray rows = report(results);
    QCOMPARE(rows.size(), 2);
    QCOMPARE(rows.at(0).toObject().value("ratio").toDouble(), 0.0015);
    QCOMPARE(rows.at(0).toObject().value("spread").toDouble(), 0.5);
    QCOMPARE(rows.at(0).toObject().value("met").toString(), QString("met"));
    QCOMPARE(rows.at(1).toObject().value("ratio").toDouble(), 1.0);
    QCOMPARE(rows.at(1).toObject().value("met").toString(), QString("not met"));
}

void tst_Benchmarks::countIsComparedWithTheLimitItself()
{
    QJsonObject search = result("silentPort/iterations:1/repeats:1/real_time", "median", 170, "s");
    search.insert("over_waits", 1.02);
    const QJsonArray rows = report(writeResults("bench_discovery.json", {search}));
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows.at(0).toObject().value("ratio").toDouble(), 1.02);
    QCOMPARE(rows.at(0).toObject().value("met").toString(), QString("met"));
}

void tst_Benchmarks::missingBenchmarkIsAnError()
{
    const QString results =
        writeResults("bench_catalogue.json", {result("parsedOnce", "median", 2, "ms")});
    const Outcome outcome = run(BENCHMARK_REPORT, {results});
    QCOMPARE(outcome.status, 1);
    QVERIFY2(outcome.errors.contains("characters per line (bench_catalogue)"),
             qPrintable(outcome.errors));
    QCOMPARE(run(BENCHMARK_REPORT, {"--partial", results}).status, 0);
}

void tst_Benchmarks::badResultsAreAnError_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("cut off") << QByteArray("{\"benchmarks\":[");
    QTest::newRow("no benchmarks") << QByteArray("{\"context\":{}}");
    QTest::newRow("a list") << QByteArray("[1]");
}

void tst_Benchmarks::badResultsAreAnError()
{
    QFETCH(QByteArray, text);
    const QString fileName = write("bench_bad.json", text);
    const Outcome outcome = run(BENCHMARK_REPORT, {fileName});
    QCOMPARE(outcome.status, 1);
    QVERIFY2(outcome.errors.contains(fileName), qPrintable(outcome.errors));
}

void tst_Benchmarks::reportWithoutResultsIsWrongUsage()
{
    QCOMPARE(run(BENCHMARK_REPORT, {}).status, 2);
    QCOMPARE(run(BENCHMARK_REPORT, {m_dir.filePath("none.json")}).status, 1);
}

QString tst_Benchmarks::write(const QString &name, const QByteArray &text) const
{
    QFile file(m_dir.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        return QString();
    return file.fileName();
}

QString tst_Benchmarks::writeResults(const QString &name, const QJsonArray &benchmarks) const
{
    return write(name, QJsonDocument(QJsonObject{{"benchmarks", benchmarks}}).toJson());
}

/// The rows of the table that is made of these results.
QJsonArray tst_Benchmarks::report(const QString &results) const
{
    QFile table(m_dir.filePath("table.json"));
    if (run(BENCHMARK_REPORT, {"--json", table.fileName(), results}).status != 0)
        return {};
    return table.open(QIODevice::ReadOnly)
               ? QJsonDocument::fromJson(table.readAll()).object().value("rows").toArray()
               : QJsonArray();
}

QTEST_GUILESS_MAIN(tst_Benchmarks)
#include "tst_benchmarks.moc"
