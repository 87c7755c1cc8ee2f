#include "printerslib/drivers/printerprofile.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QtTest>
#include <algorithm>

#include "commandsets/modelsfile_p.h"
#include "printers/printerinfo.h"
#include "printerslib/drivers/codepage.h"

using namespace printerslib::drivers;

class TestPrinterProfile : public QObject
{
    Q_OBJECT

    static QStringList catalogueIds()
    {
        QStringList ids;
        for (const PrinterInfo &model : PrinterInfo::fromResources())
            ids.append(model.id());
        return ids;
    }

    static void addModels()
    {
        QTest::addColumn<QString>("id");
        for (const QString &id : catalogueIds())
            QTest::newRow(qPrintable(id)) << id;
    }

private Q_SLOTS:
    void shippedModelsHaveNoFault()
    {
        QFile file(":/printerslib/drivers/models.info");
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(ModelsFile(file.readAll(), "models.info").errors(), QStringList());
    }

    void modelsAreThoseOfTheCatalogue()
    {
        QStringList here = PrinterProfile::modelIds();
        QStringList there = catalogueIds();
        here.sort();
        there.sort();
        QCOMPARE(here, there);
    }

    void otherModelsAreUnknown()
    {
        QVERIFY(!PrinterProfile::forModel("PNG"));
        QVERIFY(!PrinterProfile::forModel(""));
        QVERIFY(!PrinterProfile::forModel("custom_vkp_80"));
    }

    void cellsOfTheCatalogueAreThePrinters_data() { addModels(); }
    void cellsOfTheCatalogueAreThePrinters()
    {
        QFETCH(QString, id);
        const auto profile = PrinterProfile::forModel(id);
        const auto models = PrinterInfo::fromResources();
        const auto model = std::find_if(models.begin(), models.end(),
                                        [&id](const auto &m) { return m.id() == id; });
        for (const FontInfo &font : model->fontTypes()) {
            const QSize cell(font.width(), font.height());
            // The large font of this one is its only one, doubled.
            const QSize own = id == "AV_268" && cell == QSize(16, 32) ? cell / 2 : cell;
            QVERIFY2(profile->fontCells().contains(own), qPrintable(font.idAsString()));
        }
    }

    void headsBurnNoMoreThanTheWidestPaperHolds_data() { addModels(); }
    void headsBurnNoMoreThanTheWidestPaperHolds()
    {
        QFETCH(QString, id);
        const auto profile = PrinterProfile::forModel(id);
        const auto models = PrinterInfo::fromResources();
        const auto model = std::find_if(models.begin(), models.end(),
                                        [&id](const auto &m) { return m.id() == id; });
        int widest = 0;
        for (const PaperInfo &paper : model->paperTypes())
            widest = std::max(widest, 8 * paper.width());
        // Custom's heads burn 80 mm, beyond the edges of a line of the catalogue.
        QVERIFY(profile->headDots() == widest ||
                (profile->vendor() == Vendor::Custom && profile->headDots() == 640));
    }

    void dialects()
    {
        for (const QString &id : PrinterProfile::modelIds()) {
            const Dialect dialect = PrinterProfile::forModel(id)->dialect();
            QCOMPARE(dialect == Dialect::StarLine, id == "TSP-TUP");
            QCOMPARE(dialect == Dialect::Swecoin, id == "SWECOIN_TM_20XX");
        }
    }

    void everyPageIsKnown_data() { addModels(); }
    void everyPageIsKnown()
    {
        QFETCH(QString, id);
        const auto profile = PrinterProfile::forModel(id);
        for (const QString &name : profile->codePages())
            QVERIFY2(CodePage::forName(name), qPrintable(name));
        QVERIFY(profile->codePages().contains(profile->initialCodePage()));
    }

    void numberOfCyrillicDependsOnTheModel()
    {
        const auto pages = [](const char *id) { return PrinterProfile::forModel(id)->codePages(); };
        QCOMPARE(pages("GENERAL_EPSON_PROTOCOL").value(17), QString("CP866"));
        QCOMPARE(pages("GENERAL_EPSON_PROTOCOL").value(46), QString("CP1251"));
        QCOMPARE(pages("TSP-TUP").value(10), QString("CP866"));
        QCOMPARE(pages("TSP-TUP").value(34), QString("CP1251"));
        QCOMPARE(pages("CITIZEN_CBM_1000").value(7), QString("CP866"));
        QCOMPARE(pages("CITIZEN_CTS_2000").value(7), QString("CP866"));
        QVERIFY(!pages("CUSTOM_VKP_80").values().contains("CP866"));
        QCOMPARE(pages("CUSTOM_VKP_80").value(19), QString("CP858"));
    }

    void motionUnitsDependOnTheModel()
    {
        const auto units = [](const char *id) {
            return PrinterProfile::forModel(id)->motionUnitsPerInch();
        };
        QCOMPARE(units("GENERAL_EPSON_PROTOCOL"), QSize(203, 203));
        QCOMPARE(units("CUSTOM_VKP_80"), QSize(204, 408));
        QCOMPARE(units("CITIZEN_CBM_1000"), QSize(203, 360));
    }

    void wayOfPicturesDependsOnTheModel()
    {
        for (const QString &id : PrinterProfile::modelIds()) {
            const auto profile = PrinterProfile::forModel(id);
            RasterCommand command = RasterCommand::RasterBlock;
            if (profile->vendor() == Vendor::Custom || id == "CITIZEN_PPU_231")
                command = RasterCommand::BitImage;
            else if (profile->vendor() == Vendor::Star)
                command = RasterCommand::StarRows;
            else if (profile->vendor() == Vendor::Swecoin)
                command = RasterCommand::SwecoinRows;
            QCOMPARE(profile->rasterCommand(), command);
        }
    }

    void presentersDependOnTheModel()
    {
        QMap<QString, Presenter> presenters;
        for (const QString &id : PrinterProfile::modelIds()) {
            const Presenter presenter = PrinterProfile::forModel(id)->presenter();
            if (presenter != Presenter::None)
                presenters.insert(id, presenter);
        }
        QCOMPARE(presenters, (QMap<QString, Presenter>{{"CUSTOM_VKP_80", Presenter::Custom},
                                                       {"CUSTOM_TG_2480_H", Presenter::Custom},
                                                       {"CUSTOM_TG_2480_SE", Presenter::Custom},
                                                       {"CITIZEN_PPU_700", Presenter::Citizen},
                                                       {"CITIZEN_PPU_231", Presenter::Citizen},
                                                       {"SWECOIN_TM_20XX", Presenter::Swecoin}}));
        QCOMPARE(PrinterProfile::forModel("CITIZEN_PPU_700")->presenterTimerStep(), 1000);
        QCOMPARE(PrinterProfile::forModel("CITIZEN_PPU_231")->presenterTimerStep(), 2500);
        QCOMPARE(PrinterProfile::forModel("CUSTOM_VKP_80")->presenterTimerStep(), 0);
    }

    void cuttersDependOnTheDialect_data() { addModels(); }
    void cuttersDependOnTheDialect()
    {
        QFETCH(QString, id);
        const auto profile = PrinterProfile::forModel(id);
        // GS V 0 is ignored by those that leave a bridge.
        CutCommand command = CutCommand::GsVPartial;
        if (id == "CITIZEN_PPU_700" || id == "CITIZEN_CTS_2000")
            command = CutCommand::GsV;
        else if (profile->vendor() == Vendor::Custom || id == "CITIZEN_PPU_231")
            command = CutCommand::EscI;
        else if (profile->dialect() == Dialect::StarLine)
            command = CutCommand::StarEscD;
        else if (profile->dialect() == Dialect::Swecoin)
            command = CutCommand::SwecoinEscRs;
        QCOMPARE(profile->cutCommand(), command);
        QVERIFY(profile->dotsToCutter() > 0);
    }

    void confirmationsDependOnTheDialect_data() { addModels(); }
    void confirmationsDependOnTheDialect()
    {
        QFETCH(QString, id);
        const auto profile = PrinterProfile::forModel(id);
        const QMap<Dialect, Confirmation> expected{
            {Dialect::EscPos, Confirmation::Processed},
            {Dialect::StarLine, Confirmation::StarCounter},
            {Dialect::Swecoin, Confirmation::SwecoinData},
        };
        QCOMPARE(profile->confirmation(), expected.value(profile->dialect()));
    }

    void onlyPrintersKnownForItDrawQrCodes()
    {
        // Others print the payload as text.
        for (const QString &id : PrinterProfile::modelIds()) {
            const auto profile = PrinterProfile::forModel(id);
            QCOMPARE(profile->drawnCodes().contains(Paper::Symbology::QrCode),
                     profile->vendor() == Vendor::General);
        }
    }

    void ownFactsHaveSources_data() { addModels(); }
    void ownFactsHaveSources()
    {
        QFETCH(QString, id);
        const QJsonObject facts = PrinterProfile::forModel(id)->toJson();
        const QJsonObject general = PrinterProfile().toJson();
        for (auto it = facts.begin(); it != facts.end(); ++it) {
            if (it.key() == "id" || it.key() == "note" || it.key() == "sources")
                continue;
            if (it.value() != general.value(it.key()))
                QVERIFY2(!PrinterProfile::forModel(id)->sourceOf(it.key()).isEmpty(),
                         qPrintable(it.key()));
            else
                QVERIFY2(!PrinterProfile().sourceOf(it.key()).isEmpty() || it.key() == "kanjiSet" ||
                             it.key() == "lineSpacingUnits",
                         qPrintable(it.key()));
        }
    }

    void jsonIsARecordOfItsFile_data() { addModels(); }
    void jsonIsARecordOfItsFile()
    {
        QFETCH(QString, id);
        const QJsonObject record = PrinterProfile::forModel(id)->toJson();
        QCOMPARE(record.value("id").toString(), id);
        const ModelsFile file(QJsonDocument(QJsonArray{record}).toJson(), "own.info",
                              {*PrinterProfile::forModel(id)});
        QCOMPARE(file.errors(), QStringList());
        QCOMPARE(file.profile(id)->toJson().value("drawnCodes"), record.value("drawnCodes"));
        QJsonObject again = file.profile(id)->toJson();
        again.insert("sources", record.value("sources"));
        QCOMPARE(again, record);
    }

    void defaultIsAGeneralEpsonPrinter()
    {
        const PrinterProfile profile;
        QCOMPARE(profile.modelId(), QString("GENERAL_EPSON_PROTOCOL"));
        QCOMPARE(profile.headDots(), 576);
        QCOMPARE(profile.fontCells().first(), QSize(12, 24));
        QCOMPARE(profile.codePages().value(profile.initialCodePage()), QString("CP437"));
    }

    void modelsWithoutManualSaySo()
    {
        QStringList ids;
        for (const QString &id : PrinterProfile::modelIds()) {
            const auto profile = PrinterProfile::forModel(id);
            if (!profile->note().contains("no public manual"))
                continue;
            ids.append(id);
            QCOMPARE(profile->vendor(), Vendor::General);
            QCOMPARE(profile->sourceOf("codePages"), QString());
        }
        QCOMPARE(ids, QStringList({"AV_268", "CITIZEN_CPP_8001", "WPK_833", "MERCURY_G80_RS",
                                   "NP_F209_2D"}));
    }

    void copiesAreValues()
    {
        PrinterProfile profile = *PrinterProfile::forModel("TSP-TUP");
        const PrinterProfile copy = profile;
        profile = PrinterProfile();
        QCOMPARE(copy.modelId(), QString("TSP-TUP"));
        QCOMPARE(profile.modelId(), QString("GENERAL_EPSON_PROTOCOL"));
    }
};

QTEST_GUILESS_MAIN(TestPrinterProfile)
#include "tst_printerprofile.moc"
