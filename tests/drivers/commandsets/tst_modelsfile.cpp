#include "commandsets/modelsfile_p.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QtTest>

using namespace printerslib::drivers;

class TestModelsFile : public QObject
{
    Q_OBJECT

    static QJsonObject completeRecord()
    {
        const QByteArray json = R"({
            "id": "FIRST", "dialect": "EscPos", "vendor": "Epson", "headDots": 576,
            "dotsPerInch": 203, "motionUnits": [203, 360], "lineSpacing": 30,
            "fonts": [[12, 24], [9, 17]], "codePages": {"0": "CP437", "17": "cp866"},
            "sources": {"dialect": "a", "vendor": "a", "headDots": "a", "dotsPerInch": "a",
                        "motionUnits": "a", "lineSpacing": "a", "fonts": "a", "codePages": "a"}
        })";
        return QJsonDocument::fromJson(json).object();
    }

    static ModelsFile fileOf(const QJsonArray &records)
    {
        return ModelsFile(QJsonDocument(records).toJson(), "models.info");
    }

    /// A second record with a key and its source.
    static ModelsFile fileWith(const QString &key, const QJsonValue &value)
    {
        return fileOf(
            {completeRecord(),
             QJsonObject{{"id", "SECOND"}, {key, value}, {"sources", QJsonObject{{key, "b"}}}}});
    }

private Q_SLOTS:
    void factsOfARecord()
    {
        const ModelsFile file = fileOf({completeRecord()});
        QCOMPARE(file.errors(), QStringList());
        const auto profile = file.profile("FIRST");
        QVERIFY(profile);
        QCOMPARE(profile->vendor(), Vendor::Epson);
        QCOMPARE(profile->motionUnitsPerInch(), QSize(203, 360));
        QCOMPARE(profile->lineSpacingUnitsPerInch(), 0);
        QCOMPARE(profile->fontCells(), (QVector<QSize>{{12, 24}, {9, 17}}));
        QCOMPARE(profile->codePages(), (QMap<int, QString>{{0, "CP437"}, {17, "CP866"}}));
        QCOMPARE(profile->dotsToCutter(), 0);
        QCOMPARE(profile->sourceOf("fonts"), QString("a"));
    }

    void whatIsAbsentIsAsInTheFirst()
    {
        const ModelsFile file = fileWith("headDots", 384);
        QCOMPARE(file.errors(), QStringList());
        QCOMPARE(file.modelIds(), QStringList({"FIRST", "SECOND"}));
        const auto second = file.profile("SECOND");
        QCOMPARE(second->headDots(), 384);
        QCOMPARE(second->sourceOf("headDots"), QString("b"));
        QCOMPARE(second->lineSpacing(), 30);
        QCOMPARE(second->sourceOf("lineSpacing"), QString());
        QCOMPARE(file.profile("FIRST")->headDots(), 576);
    }

    void codePagesOfAnotherModel()
    {
        const ModelsFile file = fileWith("codePages", "FIRST");
        QCOMPARE(file.errors(), QStringList());
        QCOMPARE(file.profile("SECOND")->codePages(), file.profile("FIRST")->codePages());
    }

    void faultsNameFileModelAndKey_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QJsonValue>("value");
        QTest::addColumn<QString>("message");
        const auto row = [](const char *key, const QJsonValue &value, const char *message) {
            QTest::addRow(
                "%s %s", key,
                QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact).constData())
                << QString(key) << value << QString(message);
        };
        row("dialect", "escpos", "\"dialect\" has to be one of EscPos, StarLine, Swecoin");
        row("vendor", 1,
            "\"vendor\" has to be one of General, Epson, Custom, Citizen, Star, Swecoin");
        row("headDots", 7, "\"headDots\" has to be a whole number from 8 to 4096");
        row("headDots", 4097, "\"headDots\" has to be a whole number from 8 to 4096");
        row("headDots", "576", "\"headDots\" has to be a whole number from 8 to 4096");
        row("headDots", 576.5, "\"headDots\" has to be a whole number from 8 to 4096");
        row("dotsPerInch", 0, "\"dotsPerInch\" has to be a whole number from 50 to 1200");
        row("motionUnits", 203, "\"motionUnits\" has to be two whole numbers from 1 to 1440");
        row("motionUnits", QJsonArray{203, 0},
            "\"motionUnits\" has to be two whole numbers from 1 to 1440");
        row("lineSpacing", 0, "\"lineSpacing\" has to be a whole number from 1 to 1000");
        row("fonts", QJsonArray(), "\"fonts\" has to be at least one pair of width and height");
        row("fonts", QJsonArray{QJsonArray{12, 24, 1}},
            "\"fonts\" has to be pairs of whole numbers from 1 to 255");
        // Tab stops are counted in columns of the font: without a width they never end.
        for (const QJsonArray &cell :
             {QJsonArray{0, 24}, QJsonArray{12, 0}, QJsonArray{-12, 24}, QJsonArray{0.5, 24}})
            row("fonts", QJsonArray{QJsonArray{12, 24}, cell},
                "\"fonts\" has to be pairs of whole numbers from 1 to 255");
        row("initialFont", 2, "\"initialFont\" is none of \"fonts\"");
        row("codePages", QJsonObject(),
            "\"codePages\" has to be at least one number with its name");
        row("codePages", QJsonObject{{"256", "CP437"}},
            "\"codePages\" has to be numbers from 0 to 255 with names; \"256\" isn't one");
        row("codePages", QJsonObject{{"0", "CP99999"}},
            "\"codePages\" has to be names of known character sets; \"CP99999\" isn't one");
        row("codePages", "THIRD",
            "\"codePages\" has to be a model that stands before; \"THIRD\" doesn't");
        row("initialCodePage", 1, "\"initialCodePage\" is none of \"codePages\"");
        row("kanjiSet", "CP866",
            "\"kanjiSet\" has to be the name of a set of two-byte characters, or an empty text");
        row("dotsToCutter", -1, "\"dotsToCutter\" has to be a whole number from 0 to 2000");
        row("cutter", 1, "\"cutter\" is no known key");
    }
    void faultsNameFileModelAndKey()
    {
        QFETCH(QString, key);
        QFETCH(QJsonValue, value);
        QFETCH(QString, message);
        const ModelsFile file = fileWith(key, value);
        QCOMPARE(file.errors(), QStringList("models.info: SECOND: " + message));
        QCOMPARE(file.modelIds(), QStringList("FIRST"));
    }

    void everyFactHasASource()
    {
        const ModelsFile file =
            fileOf({completeRecord(), QJsonObject{{"id", "SECOND"}, {"headDots", 384}}});
        QCOMPARE(file.errors(), QStringList("models.info: SECOND: \"headDots\" has no source"));
    }

    void sourcesAreTextsOfFacts()
    {
        const auto errorsOf = [](const QJsonValue &sources) {
            return fileOf({completeRecord(), QJsonObject{{"id", "SECOND"}, {"sources", sources}}})
                .errors();
        };
        QCOMPARE(errorsOf(QJsonObject{{"head", "a"}}),
                 QStringList("models.info: SECOND: \"sources\" has to be facts' keys with texts; "
                             "\"head\" isn't so"));
        QCOMPARE(errorsOf(QJsonObject{{"headDots", 1}}),
                 QStringList("models.info: SECOND: \"sources\" has to be facts' keys with texts; "
                             "\"headDots\" isn't so"));
        QCOMPARE(errorsOf("a"),
                 QStringList("models.info: SECOND: \"sources\" has to be an object of texts"));
    }

    void firstModelHasToHaveAllFacts_data()
    {
        QTest::addColumn<QString>("key");
        for (const char *key :
             {"headDots", "dotsPerInch", "motionUnits", "lineSpacing", "fonts", "codePages"})
            QTest::newRow(key) << QString(key);
    }
    void firstModelHasToHaveAllFacts()
    {
        QFETCH(QString, key);
        QJsonObject record = completeRecord();
        record.remove(key);
        const ModelsFile file = fileOf({record});
        QCOMPARE(file.errors(),
                 QStringList("models.info: FIRST: the first model has to have all facts"));
        QVERIFY(!file.profile("FIRST"));
    }

    void recordsWithoutOwnName()
    {
        QJsonObject nameless = completeRecord();
        nameless.remove("id");
        const ModelsFile file =
            fileOf({completeRecord(), nameless, "text", completeRecord(), QJsonObject{{"id", ""}}});
        QCOMPARE(file.errors(), QStringList({"models.info: model 2: \"id\" is missing",
                                             "models.info: model 3: not an object",
                                             "models.info: FIRST: \"id\" stands there twice",
                                             "models.info: model 5: \"id\" has to be a text"}));
    }

    void whatIsNoJson()
    {
        QCOMPARE(ModelsFile("[{]", "m").errors().size(), 1);
        QVERIFY(ModelsFile("[{]", "m").errors().first().startsWith("m: "));
        QVERIFY(ModelsFile("[{]", "m").errors().first().contains("at byte "));
        QCOMPARE(ModelsFile("{}", "m").errors(), QStringList("m: not an array of models"));
        QCOMPARE(ModelsFile("[]", "m").errors(), QStringList());
        QVERIFY(!ModelsFile("", "m").errors().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestModelsFile)
#include "tst_modelsfile.moc"
