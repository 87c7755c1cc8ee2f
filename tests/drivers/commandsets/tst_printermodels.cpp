#include "printerslib/drivers/printermodels.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QtTest>

using namespace printerslib::drivers;

class TestPrinterModels : public QObject
{
    Q_OBJECT

    static QStringList faultsOf(const QByteArray &json)
    {
        return PrinterModels().add(json, "own.json");
    }

private Q_SLOTS:
    void firstTheyAreThoseOfTheCatalogue()
    {
        const PrinterModels models;
        QCOMPARE(models.modelIds(), PrinterProfile::modelIds());
        for (const QString &id : models.modelIds())
            QCOMPARE(models.profile(id)->toJson(), PrinterProfile::forModel(id)->toJson());
        QVERIFY(!models.profile("SHOP_80"));
        QVERIFY(!models.profile(""));
    }

    void knownModelIsChanged()
    {
        PrinterModels models;
        QCOMPARE(models.add(R"([{"id": "CUSTOM_VKP_80", "headDots": 576,
                                 "codePages": {"0": "CP437", "17": "CP866"}}])",
                            "own.json"),
                 QStringList());
        QCOMPARE(models.modelIds(), PrinterProfile::modelIds());
        const PrinterProfile changed = *models.profile("CUSTOM_VKP_80");
        QCOMPARE(changed.headDots(), 576);
        QCOMPARE(changed.codePages().value(17), QString("CP866"));
        // All else stays, and so do the other models.
        QCOMPARE(changed.presenter(), Presenter::Custom);
        QCOMPARE(changed.catalogueId(), QString("CUSTOM_VKP_80"));
        QCOMPARE(models.profile("CUSTOM_TG_2480_H")->headDots(), 640);
        QCOMPARE(PrinterProfile::forModel("CUSTOM_VKP_80")->headDots(), 640);
    }

    void newModelIsLikeAnother()
    {
        PrinterModels models;
        QCOMPARE(models.add(R"([{"id": "SHOP_80", "like": "CITIZEN_PPU_700", "drawers": 1}])",
                            "own.json"),
                 QStringList());
        QCOMPARE(models.modelIds(), PrinterProfile::modelIds() + QStringList{"SHOP_80"});
        const PrinterProfile added = *models.profile("SHOP_80");
        QCOMPARE(added.modelId(), QString("SHOP_80"));
        QCOMPARE(added.catalogueId(), QString("CITIZEN_PPU_700"));
        QCOMPARE(added.drawers(), 1);
        QCOMPARE(added.presenter(), Presenter::Citizen);
        QCOMPARE(added.codePages(), models.profile("CITIZEN_PPU_700")->codePages());
    }

    void newModelMayBeLikeANewOne()
    {
        PrinterModels models;
        QCOMPARE(models.add(R"([{"id": "A", "like": "TSP-TUP", "headDots": 832},
                                {"id": "B", "like": "A", "drawers": 0}])",
                            "own.json"),
                 QStringList());
        QCOMPARE(models.profile("B")->headDots(), 832);
        QCOMPARE(models.profile("B")->catalogueId(), QString("TSP-TUP"));
        QCOMPARE(models.profile("B")->dialect(), Dialect::StarLine);
    }

    void likeSeesWhatTheSameFileChanged()
    {
        PrinterModels models;
        QCOMPARE(models.add(R"([{"id": "TSP-TUP", "headDots": 832},
                                {"id": "A", "like": "TSP-TUP"}])",
                            "own.json"),
                 QStringList());
        QCOMPARE(models.profile("A")->headDots(), 832);
    }

    void laterFilesPrevail()
    {
        PrinterModels models;
        QCOMPARE(models.add(R"([{"id": "WPK_833", "headDots": 512, "drawers": 1}])", "one.json"),
                 QStringList());
        QCOMPARE(models.add(R"([{"id": "WPK_833", "headDots": 448}])", "two.json"), QStringList());
        QCOMPARE(models.profile("WPK_833")->headDots(), 448);
        QCOMPARE(models.profile("WPK_833")->drawers(), 1);
        QCOMPARE(models.profile("WPK_833")->sourceOf("headDots"), QString("two.json"));
        QCOMPARE(models.profile("WPK_833")->sourceOf("drawers"), QString("one.json"));
    }

    void sourcesAreOptional()
    {
        PrinterModels models;
        QCOMPARE(models.add(R"([{"id": "TSP-TUP", "headDots": 832, "drawers": 1,
                                 "sources": {"drawers": "seen"}}])",
                            "own.json"),
                 QStringList());
        const PrinterProfile changed = *models.profile("TSP-TUP");
        QCOMPARE(changed.sourceOf("headDots"), QString("own.json"));
        QCOMPARE(changed.sourceOf("drawers"), QString("seen"));
        QCOMPARE(changed.sourceOf("cutCommand"),
                 PrinterProfile::forModel("TSP-TUP")->sourceOf("cutCommand"));
    }

    void notesAreTheModelsOwn()
    {
        PrinterModels models;
        QCOMPARE(models.add(R"([{"id": "A", "like": "AV_268"}, {"id": "WPK_833", "drawers": 1},
                                {"id": "B", "like": "A", "note": "of the till at the door"}])",
                            "own.json"),
                 QStringList());
        QCOMPARE(models.profile("A")->note(), QString());
        QCOMPARE(models.profile("B")->note(), QString("of the till at the door"));
        QVERIFY(models.profile("WPK_833")->note().contains("no public manual"));
    }

    void faults_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("fault");
        const auto row = [](const char *name, const char *json, const char *fault) {
            QTest::newRow(name) << QByteArray(json) << QString(fault);
        };
        row("no array", "{}", "own.json: not an array of models");
        row("no object", "[1]", "own.json: model 1: not an object");
        row("no id", R"([{"like": "TSP-TUP"}])", "own.json: model 1: \"id\" is missing");
        row("id is a number", R"([{"id": 5, "like": "TSP-TUP"}])",
            "own.json: model 1: \"id\" has to be a text");
        row("empty id", R"([{"id": "", "like": "TSP-TUP"}])",
            "own.json: model 1: \"id\" has to be a text");
        row("new without like", R"([{"id": "A", "headDots": 576}])",
            "own.json: A: \"like\" is missing: a new model needs the id of a known one");
        row("like an unknown one", R"([{"id": "A", "like": "B"}])",
            "own.json: A: \"like\" has to be the id of a known model; \"B\" isn't one");
        row("like itself", R"([{"id": "A", "like": "A"}])",
            "own.json: A: \"like\" has to be the id of a known model; \"A\" isn't one");
        row("like a number", R"([{"id": "A", "like": 1}])",
            "own.json: A: \"like\" has to be the id of a known model; \"\" isn't one");
        row("known one is like another", R"([{"id": "TSP-TUP", "like": "AV_268"}])",
            "own.json: TSP-TUP: \"like\" is for new models; this one is known");
        row("unknown key", R"([{"id": "TSP-TUP", "width": 1}])",
            "own.json: TSP-TUP: \"width\" is no known key");
        row("wrong fact", R"([{"id": "TSP-TUP", "drawers": "2"}])",
            "own.json: TSP-TUP: \"drawers\" has to be a whole number from 0 to 2");
        row("name that isn't ASCII", R"([{"id": "Касса", "like": "AV_268", "cutCommand": "cut"}])",
            "own.json: Касса: \"cutCommand\" has to be one of None, GsV, GsVPartial, EscI, "
            "StarEscD, "
            "SwecoinEscRs");
        row("commands of another dialect",
            R"([{"id": "A", "like": "AV_268", "dialect": "Swecoin"}])",
            "own.json: A: \"rasterCommand\" isn't one of \"dialect\" Swecoin");
        row("first font is gone", R"([{"id": "A", "like": "AV_268", "initialFont": 1}])",
            "own.json: A: \"initialFont\" is none of \"fonts\"");
        row("first page is gone",
            R"([{"id": "GENERAL_EPSON_PROTOCOL", "codePages": {"17": "CP866"}}])",
            "own.json: GENERAL_EPSON_PROTOCOL: \"initialCodePage\" is none of \"codePages\"");
        row("source of no fact", R"([{"id": "TSP-TUP", "sources": {"like": "seen"}}])",
            "own.json: TSP-TUP: \"sources\" has to be facts' keys with texts; \"like\" isn't so");
    }
    void faults()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, fault);
        PrinterModels models;
        QCOMPARE(models.add(json, "own.json"), QStringList(fault));
        QCOMPARE(models.modelIds(), PrinterProfile::modelIds());
        QCOMPARE(models.profile("TSP-TUP")->toJson(),
                 PrinterProfile::forModel("TSP-TUP")->toJson());
    }

    void recordsBesideAFaultyOneAreTaken()
    {
        PrinterModels models;
        QCOMPARE(models.add(R"([{"id": "A", "like": "AV_268"}, {"id": "B"},
                                {"id": "A", "like": "TSP-TUP"}, {"id": "C", "like": "B"},
                                {"id": "D", "like": "A"}])",
                            "own.json"),
                 QStringList({"own.json: B: \"like\" is missing: a new model needs the id of a "
                              "known one",
                              "own.json: A: \"id\" stands there twice",
                              "own.json: C: \"like\" has to be the id of a known model; \"B\" "
                              "isn't one"}));
        QCOMPARE(models.modelIds(), PrinterProfile::modelIds() + QStringList({"A", "D"}));
        QCOMPARE(models.profile("A")->catalogueId(), QString("AV_268"));
    }

    void emptyArrayChangesNothing()
    {
        QCOMPARE(faultsOf("[]"), QStringList());
        QCOMPARE(faultsOf(" \n[ ]\n"), QStringList());
    }

    void whatIsNoJson()
    {
        for (const char *json : {"", "[", "[{\"id\": \"A\"", "\xFF"}) {
            const QStringList faults = faultsOf(json);
            QCOMPARE(faults.size(), 1);
            QVERIFY2(faults.first().startsWith("own.json: "), qPrintable(faults.first()));
            QVERIFY2(faults.first().contains(", at byte "), qPrintable(faults.first()));
        }
    }

    void fileOfModels()
    {
        const QTemporaryDir folder;
        QFile file(folder.filePath("own.json"));
        QVERIFY(file.open(QFile::WriteOnly));
        file.write(R"([{"id": "A", "like": "AV_268", "headDots": 420}])");
        file.close();
        PrinterModels models;
        QCOMPARE(models.addFile(file.fileName()), QStringList());
        QCOMPARE(models.profile("A")->headDots(), 420);
        QCOMPARE(models.profile("A")->sourceOf("headDots"), file.fileName());
    }

    void filesThatCantBeRead()
    {
        const QTemporaryDir folder;
        PrinterModels models;
        const QString missing = folder.filePath("none.json");
        QCOMPARE(models.addFile(missing), QStringList(missing + ": No such file or directory"));
        QCOMPARE(models.addFile(folder.path()).size(), 1);
        QVERIFY(models.addFile(folder.path()).first().startsWith(folder.path() + ": "));
        QCOMPARE(models.addFile(""), QStringList("a file of models has to have a name"));
        QCOMPARE(models.addFile("/dev/zero"), QStringList("/dev/zero: longer than 1048576 bytes"));
        QCOMPARE(models.modelIds(), PrinterProfile::modelIds());
    }

    void whatAModelIsToldAsIsAFileOfItsOwn()
    {
        PrinterModels models;
        QJsonObject record = models.profile("CITIZEN_PPU_231")->toJson();
        record.insert("id", "COPY");
        record.insert("like", "CITIZEN_PPU_231");
        QCOMPARE(models.add(QJsonDocument(QJsonArray{record}).toJson(), "own.json"), QStringList());
        QCOMPARE(models.profile("COPY")->codePages(),
                 models.profile("CITIZEN_PPU_231")->codePages());
        QCOMPARE(models.profile("COPY")->drawnCodes(),
                 models.profile("CITIZEN_PPU_231")->drawnCodes());
    }

    void copiesAreValues()
    {
        PrinterModels models;
        const PrinterModels copy = models;
        QCOMPARE(models.add(R"([{"id": "A", "like": "AV_268"}])", "own.json"), QStringList());
        QVERIFY(models.profile("A"));
        QVERIFY(!copy.profile("A"));
    }
};

QTEST_GUILESS_MAIN(TestPrinterModels)
#include "tst_printermodels.moc"
