#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include "cataloguemodels.h"
#include "receiptprogram.h"

namespace {

ReceiptRun runModels(const QStringList &arguments)
{
    return runReceipt(QStringList("models") + arguments);
}

}  // namespace

class TestReceiptModels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tableHasALineForEachPaper()
    {
        const ReceiptRun outcome = runModels({});
        QCOMPARE(outcome.status, 0);
        QVERIFY2(outcome.errors.isEmpty(), qPrintable(outcome.errors));
        const QStringList lines = outcome.output.split('\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 1 + cataloguemodels::paperCount);
        // 512 and 400 dots over fonts of 10, 14, 14 and 18.
        QCOMPARE(lines.at(1).simplified(),
                 QString("CUSTOM_VKP_80 Custom VKP-80 80 mm 51 36 36 28"));
        QCOMPARE(lines.at(2).simplified(),
                 QString("CUSTOM_VKP_80 Custom VKP-80 60 mm 40 28 28 22"));
        QVERIFY(lines.last().startsWith(std::end(cataloguemodels::papers)[-1].model));
        QCOMPARE(lines.filter("NP_F209_2D").value(0).simplified(),
                 QString("NP_F209_2D NP-F2092D 60 mm 32 32 32 32"));
        // The columns stand under each other, also behind names that aren't ASCII.
        const int column = lines.at(0).indexOf("Characters");
        for (const QString &line : lines)
            QVERIFY2(line.at(column - 1) == ' ' && line.at(column) != ' ', qPrintable(line));
    }

    void oneModelIsToldWholly()
    {
        const ReceiptRun outcome = runModels({"AV_268"});
        QCOMPARE(outcome.status, 0);
        const QStringList lines = outcome.output.split('\n');
        for (const char *line : {"id: AV_268", "name: AV-268", "inversion: true", "italic: false",
                                 "resolution: 203", "interface: COM",
                                 "paper 0: 60 mm, 48 mm wide, endless (height -1), 384 dots; "
                                 "characters per line: 48 48 24 24",
                                 "font 0: 8 x 16 dots, 1 x 1 mm, monospace, own symbols of 8 x 16",
                                 "font 3: 16 x 32 dots, 2 x 2 mm, monospace"})
            QVERIFY2(lines.contains(line), line);
    }

    void jsonHoldsTheRecords()
    {
        const ReceiptRun all = runModels({"--json"});
        QCOMPARE(all.status, 0);
        const QJsonArray models = QJsonDocument::fromJson(all.output.toUtf8()).array();
        QCOMPARE(models.size(), cataloguemodels::modelCount);
        const ReceiptRun one = runModels({"TSP-TUP", "--json"});
        QCOMPARE(one.status, 0);
        const QJsonObject model = QJsonDocument::fromJson(one.output.toUtf8()).object();
        QCOMPARE(model, models.at(8).toObject());
        QCOMPARE(model.value("name").toString(), QString("Star TSP 600/700/800, TUP 900"));
        QCOMPARE(model.value("paperTypes").toObject().value("0").toObject().value("width").toInt(),
                 72);
    }

    void jsonHoldsTheCharactersPerLine()
    {
        // Dots of the paper over those of each font, rounded down.
        const ReceiptRun one = runModels({"CUSTOM_VKP_80", "--json"});
        QCOMPARE(one.status, 0);
        const QJsonObject papers =
            QJsonDocument::fromJson(one.output.toUtf8()).object().value("paperTypes").toObject();
        QCOMPARE(papers.value("0").toObject().value("charactersPerLine").toArray(),
                 (QJsonArray{51, 36, 36, 28}));
        QCOMPARE(papers.value("1").toObject().value("charactersPerLine").toArray(),
                 (QJsonArray{40, 28, 28, 22}));

        const QJsonArray models =
            QJsonDocument::fromJson(runModels({"--json"}).output.toUtf8()).array();
        for (const QJsonValue model : models) {
            const int fonts = model.toObject().value("fontTypes").toObject().size();
            const QJsonObject all = model.toObject().value("paperTypes").toObject();
            QVERIFY(!all.isEmpty());
            for (const QJsonValue paper : all)
                QCOMPARE(paper.toObject().value("charactersPerLine").toArray().size(), fonts);
        }
    }

    void charactersAreThoseThatFitTheHead()
    {
        // The catalogue has 625 dots, which are 69 characters of 9; the head has 576.
        const ReceiptRun table = runModels({});
        const QStringList lines = table.output.split('\n').filter("CITIZEN_CBM_1000");
        QCOMPARE(lines.value(0).simplified(),
                 QString("CITIZEN_CBM_1000 Citizen CBM-1000 80 mm 64 64 48 48"));
        const ReceiptRun one = runModels({"CITIZEN_CBM_1000"});
        QVERIFY(
            one.output.contains("625 dots; characters per line: 64 64 48 48 (settings have "
                                "69 69 52 52)\n"));
        QVERIFY(one.output.contains("422 dots; characters per line: 46 46 35 35\n"));
        const ReceiptRun json = runModels({"CITIZEN_CBM_1000", "--json"});
        const QJsonObject papers =
            QJsonDocument::fromJson(json.output.toUtf8()).object().value("paperTypes").toObject();
        QCOMPARE(papers.value("0").toObject().value("charactersPerLine").toArray(),
                 (QJsonArray{64, 64, 48, 48}));
    }

    void whatTheDriverKnowsIsToldWithItsSource()
    {
        const QStringList lines = runModels({"TSP-TUP"}).output.split('\n');
        for (const char *line :
             {"driver's cutCommand: StarEscD (Star Line Mode Command Specifications, thermal)",
              "driver's fonts: [[12,24],[9,24]] (Star Line Mode Command Specifications, thermal)",
              "driver's initialFont: 0", "driver's switchesRealTime: false"})
            QVERIFY2(lines.contains(line), line);
        QVERIFY(lines.filter("driver's note").isEmpty());
        QCOMPARE(runModels({"AV_268"}).output.split('\n').filter("driver's note"),
                 QStringList("driver's note: no public manual: taken for a general Epson printer"));
    }

    void jsonHoldsWhatTheDriverKnows()
    {
        const ReceiptRun one = runModels({"SWECOIN_TM_20XX", "--json"});
        const QJsonObject driver =
            QJsonDocument::fromJson(one.output.toUtf8()).object().value("driver").toObject();
        QCOMPARE(driver.value("id").toString(), QString("SWECOIN_TM_20XX"));
        QCOMPARE(driver.value("rasterCommand").toString(), QString("SwecoinRows"));
        QVERIFY(!driver.value("sources").toObject().value("rasterCommand").toString().isEmpty());
    }

    void modelsOfAFile()
    {
        const WorkFolder folder;
        const QString file = folder.file(
            "own.json", R"([{"id": "SHOP_80", "like": "CITIZEN_CBM_1000", "headDots": 540},
                        {"id": "TSP-TUP", "headDots": 448}])");
        const QStringList lines = runModels({"--models", file})
                                      .output.split('\n')
                                      .filter(QRegularExpression("^(SHOP_80|TSP-TUP) "));
        QCOMPARE(lines.size(), 3);
        QCOMPARE(lines.at(0).simplified(),
                 QString("TSP-TUP Star TSP 600/700/800, TUP 900 80 mm 37 37 37 37"));
        QCOMPARE(lines.at(1).simplified(),
                 QString("SHOP_80 like Citizen CBM-1000 80 mm 60 60 45 45"));
        const ReceiptRun one = runModels({"SHOP_80", "--models", file});
        QCOMPARE(one.status, 0);
        QVERIFY(one.output.contains("\nid: SHOP_80\n"));
        QVERIFY(one.output.contains("\ndriver's headDots: 540 (" + file + ")\n"));
        QCOMPARE(runModels({"SHOP_80"}).status, 1);
    }

    void exampleOfAFileIsRead()
    {
        const ReceiptRun run = runModels({"SHOP_80", "--models", example("models.json")});
        QCOMPARE(run.errors, QString());
        QVERIFY(run.output.contains("\ndriver's headDots: 512 (measured)\n"));
        const ReceiptRun changed = runModels({"CUSTOM_VKP_80", "--models", example("models.json")});
        QVERIFY(changed.output.contains("\"17\":\"CP866\""));
    }

    void laterFilesOfModelsPrevail()
    {
        const WorkFolder folder;
        const QString one =
            folder.file("one.json", R"([{"id": "A", "like": "AV_268", "headDots": 200}])");
        const QString two = folder.file("two.json", R"([{"id": "A", "headDots": 320}])");
        const ReceiptRun outcome = runModels({"A", "--models", one, "--models", two});
        QVERIFY(outcome.output.contains("\ndriver's headDots: 320 (" + two + ")\n"));
    }

    void faultsOfAFileOfModels()
    {
        const WorkFolder folder;
        const QString file =
            folder.file("own.json", R"([{"id": "A"}, {"id": "AV_268", "drawers": 3}])");
        const ReceiptRun outcome = runModels({"AV_268", "--models", file});
        QCOMPARE(outcome.status, 1);
        QVERIFY(outcome.output.isEmpty());
        QCOMPARE(outcome.errors,
                 "receipt: " + file +
                     ": A: \"like\" is missing: a new model needs the id of a known one\n"
                     "receipt: " +
                     file + ": AV_268: \"drawers\" has to be a whole number from 0 to 2\n");
        const ReceiptRun missing = runModels({"--models", folder.path("none")});
        QCOMPARE(missing.status, 1);
        QCOMPARE(missing.errors,
                 "receipt: " + folder.path("none") + ": No such file or directory\n");
    }

    void unknownModelIsBadInput()
    {
        const ReceiptRun outcome = runModels({"av_268"});
        QCOMPARE(outcome.status, 1);
        QVERIFY(outcome.output.isEmpty());
        QCOMPARE(outcome.errors,
                 QString("receipt: there is no model \"av_268\"; see \"receipt models\"\n"));
    }

    void wrongUsage()
    {
        QCOMPARE(runModels({"AV_268", "TSP-TUP"}).status, 2);
        QCOMPARE(runModels({"--xml"}).status, 2);
        QCOMPARE(runModels({"--help"}).status, 0);
    }
    /// A mistake in one file hides nothing of another.
    void faultsOfAllFilesAreTold()
    {
        const WorkFolder folder;
        const QString like = folder.file("a.json", "[{\"id\": \"A\", \"like\": \"NONE\"}]");
        const QString broken = folder.file("b.json", "[{");
        const QString broken2 = folder.file("c.json", "{\"x\": }");
        for (const QStringList &files :
             {QStringList{like, broken, broken2}, QStringList{broken2, broken, like}}) {
            QStringList arguments;
            for (const QString &file : files)
                arguments += QStringList{"--models", file};
            const ReceiptRun run = runModels(arguments);
            QCOMPARE(run.errors.count(like + ": "), 1);
            QCOMPARE(run.errors.count(broken + ":1:"), 1);
            QCOMPARE(run.errors.count(broken2 + ":1:"), 1);
            QCOMPARE(run.output, QString());
            QCOMPARE(run.status, 1);
        }
    }
};

QTEST_APPLESS_MAIN(TestReceiptModels)
#include "tst_receipt_models.moc"
