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
