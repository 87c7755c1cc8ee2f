#include <QtTest>

#include "lintrun.h"

/// The table of what each model makes of a template.
class TestLintModels : public QObject
{
    Q_OBJECT

    static ReceiptRun table(const QByteArray &text, const QStringList &options = {},
                            const QByteArray &document = QByteArray())
    {
        return lintrun::lint(text, QStringList{"--all-models"} + options, document);
    }

    /// The cells of a model's row, which stand at least two blanks apart.
    static QStringList rowOf(const QString &output, const QString &model, const QString &paper)
    {
        const QStringList lines = output.split('\n');
        for (const QString &line : lines) {
            const QStringList cells = line.split(QRegularExpression("  +"));
            if (cells.value(0) == model && cells.value(1) == paper)
                return cells.mid(2);
        }
        return {};
    }

private Q_SLOTS:
    void everyPaperOfEveryModelHasARow()
    {
        const ReceiptRun run = table("Total");
        const QStringList lines = run.output.split('\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.first().simplified(), QString("Model Paper Characters Wrapped lines Loses"));
        int papers = 0;
        const QStringList models =
            runReceipt({"models"}).output.split('\n', Qt::SkipEmptyParts).mid(1);
        for (const QString &model : models) {
            const QString id = model.section(' ', 0, 0);
            QVERIFY2(run.output.contains('\n' + id + ' '), qPrintable(id));
            ++papers;
        }
        QCOMPARE(lines.size() - 1, papers);
        QCOMPARE(run.status, 0);
        QCOMPARE(run.errors, QString());
    }

    void linesThatWrapAreNamed()
    {
        const ReceiptRun run = table("a\n" + QByteArray(33, '=') + "\nb\n" + QByteArray(49, '='));
        QCOMPARE(rowOf(run.output, "NP_F209_2D", "60 mm"), (QStringList{"32", "2, 4", "-"}));
        QCOMPARE(rowOf(run.output, "TSP-TUP", "80 mm"), (QStringList{"48", "4", "-"}));
        QCOMPARE(rowOf(run.output, "CUSTOM_VKP_80", "80 mm"), (QStringList{"51", "-", "-"}));
        QCOMPARE(rowOf(run.output, "CUSTOM_VKP_80", "60 mm"), (QStringList{"40", "4", "-"}));
    }

    void brokenWordsWrapToo()
    {
        const ReceiptRun run = table(QByteArray(33, 'x'));
        QCOMPARE(rowOf(run.output, "NP_F209_2D", "60 mm"), (QStringList{"32", "1", "-"}));
    }

    void valuesCount()
    {
        const QByteArray text = QByteArray(30, '=') + "<SHOP>";
        QCOMPARE(rowOf(table(text).output, "NP_F209_2D", "60 mm"), (QStringList{"32", "-", "-"}));
        QCOMPARE(rowOf(table(text, {}, lintrun::sale()).output, "NP_F209_2D", "60 mm"),
                 (QStringList{"32", "1", "-"}));
    }

    void lossesAreNamedWithTheirLine()
    {
        const QStringList row =
            rowOf(table("a\n<N>italic\n<N>again").output, "CUSTOM_VKP_80", "80 mm");
        QCOMPARE(row.value(1), QString("-"));
        QCOMPARE(row.value(2).count("italic"), 1);
        QVERIFY2(row.value(2).startsWith("line 2"), qPrintable(row.join('|')));
        QVERIFY2(row.value(2).contains("line 3"), qPrintable(row.join('|')));
    }

    void bbCodeIsTriedToo()
    {
        const ReceiptRun run = table("[size=large]Total[/size]\n" + QByteArray(33, '='));
        const QStringList row = rowOf(run.output, "NP_F209_2D", "60 mm");
        QCOMPARE(row.value(1), QString("2"));
        QVERIFY2(row.value(2).contains("isn't larger"), qPrintable(row.join('|')));
        QCOMPARE(rowOf(run.output, "CUSTOM_VKP_80", "80 mm"), (QStringList{"51", "-", "-"}));
    }

    void lossesOfBbCodeAreNamedWithTheirLine()
    {
        const ReceiptRun run = table("[b]Tea[/b]\n\n[i]x[/i]\n[barcode]\xD0\x96[/barcode]");
        const QStringList row = rowOf(run.output, "CUSTOM_VKP_80", "80 mm");
        QVERIFY2(row.value(2).contains("line 3: the model prints no text that is italic"),
                 qPrintable(row.join('|')));
        QVERIFY2(row.value(2).contains("line 4: Barcode: "), qPrintable(row.join('|')));
    }

    void modelsOfAFileAreAmongThem()
    {
        const ReceiptRun run = table("Total", {"--models", "FOLDER/plain.json"});
        QVERIFY(!rowOf(run.output, "PLAIN", "60 mm").isEmpty());
    }

    void strictIsForTheTable()
    {
        QCOMPARE(table("Total", {"--strict"}).status, 0);
        QCOMPARE(table(QByteArray(33, '='), {"--strict"}).status, 1);
        QCOMPARE(table(QByteArray(33, '=')).status, 0);
    }

    void asJson()
    {
        const ReceiptRun run = table(QByteArray(33, '='), {"--json"});
        const QJsonArray rows = QJsonDocument::fromJson(run.output.toUtf8()).array();
        QVERIFY(rows.size() > 20);
        const QJsonObject row = rows.first().toObject();
        QCOMPARE(row.keys(),
                 (QStringList{"characters", "file", "losses", "model", "paper", "wrapped"}));
        for (const QJsonValue &value : rows) {
            const bool isNarrow = value["characters"].toInt() < 33;
            QCOMPARE(value["wrapped"].toArray().size(), isNarrow ? 1 : 0);
        }
    }

    void severalTemplatesHaveTitles()
    {
        const WorkFolder folder;
        const QString a = folder.file("a.cpt", "a");
        const QString b = folder.file("b.cpt", "b");
        const QString output = runReceipt({"lint", "--all-models", a, b}).output;
        QVERIFY(output.startsWith(a + ":\nModel"));
        QVERIFY(output.contains('\n' + b + ":\nModel"));
    }

    /// Of all models those that have it begin with it, as in the preview.
    void linesBeginWithTheCodePage()
    {
        const QByteArray text = "a<152>";
        QCOMPARE(rowOf(table(text).output, "AV_268", "60 mm"), (QStringList{"48", "-", "-"}));
        const QString output = table(text, {"--code-page", "windows-1251"}).output;
        QCOMPARE(rowOf(output, "AV_268", "60 mm"),
                 (QStringList{"48", "-",
                              "line 1: the code 152 (0x98) isn't printed: it is free on the code "
                              "page"}));
        QCOMPARE(rowOf(output, "CUSTOM_VKP_80", "80 mm"), (QStringList{"51", "-", "-"}));
    }

    void otherPapersAreWrongUsage_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::newRow("model") << QStringList{"--model", "AV_268"};
        QTest::newRow("width") << QStringList{"--width", "30"};
        QTest::newRow("form") << QStringList{"--as", "text"};
    }
    void otherPapersAreWrongUsage()
    {
        QFETCH(QStringList, options);
        const ReceiptRun run = table("Total", options);
        QCOMPARE(run.errors, QString("receipt: --all-models excludes --model, --width and --as\n"));
        QCOMPARE(run.status, 2);
    }

    // The library would fill it on and on.
    void endlessValuesAreRefused()
    {
        const ReceiptRun run = table("a\nb <LOOP>", {}, lintrun::sale());
        QVERIFY2(run.errors.contains("t.cpt:2:3: "), qPrintable(run.errors));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 1);
    }
};

QTEST_GUILESS_MAIN(TestLintModels)
#include "tst_lint_models.moc"
