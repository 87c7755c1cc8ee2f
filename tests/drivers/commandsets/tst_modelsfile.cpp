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

    void factsOfTheDriver()
    {
        QJsonObject record = completeRecord();
        const QJsonObject facts{
            {"vendor", "Citizen"},
            {"rasterCommand", "BitImage"},
            {"ownCharacters", 95},
            {"drawnCodes", QJsonObject{{"ean13", 13}, {"qrCode", 2953}}},
            {"leastModule", 1},
            {"mostModule", 8},
            {"cutCommand", "EscI"},
            {"dotsToCutter", 120},
            {"presenter", "Citizen"},
            {"presenterTimerStep", 2500},
            {"drawers", 1},
            {"bufferBytes", 4096},
            {"handshake", "XonXoff"},
            {"confirmation", "ResponseId"},
            {"switchesRealTime", true},
            {"keepsMacro", true},
        };
        QJsonObject sources = record.value("sources").toObject();
        for (auto it = facts.begin(); it != facts.end(); ++it) {
            record.insert(it.key(), it.value());
            sources.insert(it.key(), "c");
        }
        record.insert("sources", sources);
        const ModelsFile file = fileOf({record});
        QCOMPARE(file.errors(), QStringList());
        const PrinterProfile profile = *file.profile("FIRST");
        QCOMPARE(profile.rasterCommand(), RasterCommand::BitImage);
        QCOMPARE(profile.ownCharacters(), 95);
        QCOMPARE(profile.drawnCodes(),
                 (QMap<Paper::Symbology, int>{{Paper::Symbology::Ean13, 13},
                                              {Paper::Symbology::QrCode, 2953}}));
        QCOMPARE(profile.leastModule(), 1);
        QCOMPARE(profile.mostModule(), 8);
        QCOMPARE(profile.cutCommand(), CutCommand::EscI);
        QCOMPARE(profile.dotsToCutter(), 120);
        QCOMPARE(profile.presenter(), Presenter::Citizen);
        QCOMPARE(profile.presenterTimerStep(), 2500);
        QCOMPARE(profile.drawers(), 1);
        QCOMPARE(profile.bufferBytes(), 4096);
        QCOMPARE(profile.handshake(), Handshake::XonXoff);
        QCOMPARE(profile.confirmation(), Confirmation::ResponseId);
        QVERIFY(profile.switchesRealTime());
        QVERIFY(profile.keepsMacro());
        for (auto it = facts.begin(); it != facts.end(); ++it) {
            QCOMPARE(profile.toJson().value(it.key()), it.value());
            QCOMPARE(profile.sourceOf(it.key()), QString("c"));
        }
    }

    void noDistanceToACutterThatIsntThere()
    {
        QJsonObject record = completeRecord();
        QJsonObject sources = record.value("sources").toObject();
        sources.insert("dotsToCutter", "d");
        sources.insert("cutCommand", "d");
        record.insert("sources", sources);
        record.insert("dotsToCutter", 120);
        QCOMPARE(fileOf({record}).profile("FIRST")->dotsToCutter(), 120);
        record.insert("cutCommand", "None");
        const ModelsFile file = fileOf({record});
        QCOMPARE(file.errors(), QStringList());
        QCOMPARE(file.profile("FIRST")->dotsToCutter(), 0);
    }

    void noCodesIsAnEmptyObject()
    {
        const ModelsFile file = fileWith("drawnCodes", QJsonObject());
        QCOMPARE(file.errors(), QStringList());
        QVERIFY(file.profile("SECOND")->drawnCodes().isEmpty());
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
        row("headDots", 8, "\"fonts\" has one that is wider than \"headDots\"");
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
        row("like", "FIRST", "\"like\" is no known key");
        row("rasterCommand", "GS v 0",
            "\"rasterCommand\" has to be one of None, RasterBlock, BitImage, StarRows, "
            "SwecoinRows");
        row("rasterCommand", "StarRows", "\"rasterCommand\" isn't one of \"dialect\" EscPos");
        row("ownCharacters", 96, "\"ownCharacters\" has to be a whole number from 0 to 95");
        row("ownCharacters", -1, "\"ownCharacters\" has to be a whole number from 0 to 95");
        const QString codes =
            "upcA, upcE, ean13, ean8, code39, itf, codabar, code93, code128, "
            "gs1_128, gs1DataBar, qrCode";
        row("drawnCodes", QJsonArray{"qrCode"},
            "\"drawnCodes\" has to be an object of codes and the bytes that each takes");
        row("drawnCodes", QJsonObject{{"qr", 1}},
            qPrintable("\"drawnCodes\" has to be of codes among " + codes + "; \"qr\" isn't one"));
        for (const QJsonValue &bytes : {QJsonValue(0), QJsonValue(7090), QJsonValue("all")})
            row("drawnCodes", QJsonObject{{"qrCode", bytes}},
                "\"drawnCodes\" has to be of codes with numbers of bytes from 1 to 7089; that of "
                "\"qrCode\" isn't one");
        row("leastModule", 0, "\"leastModule\" has to be a whole number from 1 to 16");
        row("leastModule", 7, "\"leastModule\" is more than \"mostModule\"");
        row("mostModule", 17, "\"mostModule\" has to be a whole number from 1 to 16");
        row("mostModule", 1, "\"leastModule\" is more than \"mostModule\"");
        row("cutCommand", "GS V",
            "\"cutCommand\" has to be one of None, GsV, GsVPartial, EscI, StarEscD, SwecoinEscRs");
        row("cutCommand", "SwecoinEscRs", "\"cutCommand\" isn't one of \"dialect\" EscPos");
        row("presenter", true,
            "\"presenter\" has to be one of None, Custom, Citizen, Star, Swecoin");
        row("presenter", "Star", "\"presenter\" isn't one of \"dialect\" EscPos");
        row("presenter", "Custom", "\"presenter\" isn't one of \"vendor\" Epson");
        row("presenter", "Citizen", "\"presenter\" isn't one of \"vendor\" Epson");
        row("presenterTimerStep", 60001,
            "\"presenterTimerStep\" has to be a whole number from 0 to 60000");
        row("drawers", 3, "\"drawers\" has to be a whole number from 0 to 2");
        row("bufferBytes", -1, "\"bufferBytes\" has to be a whole number from 0 to 16777216");
        row("handshake", "rtscts", "\"handshake\" has to be one of None, RtsCts, DtrDsr, XonXoff");
        row("confirmation", "Printed",
            "\"confirmation\" has to be one of None, Processed, ResponseId, StarCounter, "
            "SwecoinData");
        row("confirmation", "StarCounter", "\"confirmation\" isn't one of \"dialect\" EscPos");
        row("switchesRealTime", 1, "\"switchesRealTime\" has to be true or false");
        row("keepsMacro", "yes", "\"keepsMacro\" has to be true or false");
        // What the other model prints by isn't of this dialect.
        row("dialect", "Swecoin", "\"rasterCommand\" isn't one of \"dialect\" Swecoin");
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
