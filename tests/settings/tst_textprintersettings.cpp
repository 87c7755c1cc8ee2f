#include <QtTest>
#include <atomic>

#include "cataloguemodels.h"
#include "printers/textprintermodels.h"
#include "settings/isystemprintersettings.h"
#include "settings/textprintersettings.h"
#include "settingsitems.h"
#include "settingsreset.h"
#include "threads.h"

using cataloguemodels::modelCount;
using namespace settingsreset;

namespace {

using Settings = TextPrinterSettings;

/// Settings of a client's own, which share with ours nothing but the interface.
class ClientsSettings : public ITextPrinterSettings
{
public:
    using ITextPrinterSettings::printerInfo;
    PrinterInfo printerInfo() const override { return {}; }
    PaperInfo paper(const QString &) const override { return {}; }
    PaperInfo paper() const override { return {}; }
    int paperTypeId(const QString &) const override { return 0; }
    int paperTypeId() const override { return 0; }
    void setPaperTypeId(const QString &, int) override {}
    void setPaperTypeId(int) override {}
    bool needCodecSettings() const override { return false; }
    bool needCodecSettings(const QString &) const override { return false; }
    QString codec() const override { return {}; }
    QString codec(const QString &) const override { return {}; }
    void setCodec(const QString &) override {}
    void setCodec(const QString &, const QString &) override {}
};

}  // namespace

class TestTextPrinterSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Has to stay the first: it looks at the process as it starts. So nothing is reset in front of
    // a test, only behind it.
    void startValues()
    {
        Settings settings;
        QCOMPARE(settings.paperTypeId(), 0);
        QCOMPARE(settings.codec(), QString("cp866"));
        QVERIFY(settings.defaultFont().isNull());
        QCOMPARE(settings.printAsImage(able), false);
        QCOMPARE(int(settings.codePage()), 0);
        QCOMPARE(settings.availablePrinters().size(), modelCount);
    }

    void cleanup()
    {
        IPrintDeviceSettings::setPrintDeviceSettings({});
        resetTextPrinterSettings();
    }

    void interfaceIsFoundOnlyOnATextPrinter()
    {
        QVERIFY(IPrintDeviceSettings::textPrinterSettings().isNull());
        IPrintDeviceSettings::setPrintDeviceSettings(
            QSharedPointer<IPrintDeviceSettings>(new PrinterSettings));
        QVERIFY(IPrintDeviceSettings::textPrinterSettings().isNull());
        IPrintDeviceSettings::setPrintDeviceSettings(
            QSharedPointer<IPrintDeviceSettings>(new TextPrinterSettings));
        QVERIFY(IPrintDeviceSettings::textPrinterSettings());
        QCOMPARE(IPrintDeviceSettings::textPrinterSettings()->availablePrinters().size(),
                 modelCount);
        QVERIFY(IPrintDeviceSettings::systemPrinterSettings().isNull());
    }

    void valuesAreOneForAllNames()
    {
        Settings settings;
        settings.setPaperTypeId("a", 3);
        settings.setCodec("a", "koi8-r");
        settings.setDefaultFont("a", "Arial,10");
        QCOMPARE(settings.paperTypeId("b"), 3);
        QCOMPARE(settings.codec("b"), QString("koi8-r"));
        QCOMPARE(settings.defaultFont("b"), QString("Arial,10"));
        const Settings other;
        QCOMPARE(other.paperTypeId(), 3);
        QCOMPARE(other.codec(), QString("koi8-r"));
        QCOMPARE(other.defaultFont(), QString("Arial,10"));
    }

    void catalogueAnswersByName()
    {
        Settings settings;
        QCOMPARE(settings.printerInfo(able).name(), QString("Custom VKP-80"));
        QCOMPARE(settings.imageAvailable(able), true);
        QCOMPARE(settings.paperLoopSupported(able), true);
        QCOMPARE(settings.checkMoveSettingsSupported(able), true);
        QCOMPARE(settings.imageAvailable(general), false);
        QCOMPARE(settings.paperLoopSupported(general), false);
        QCOMPARE(settings.checkMoveSettingsSupported(general), false);
        settings.setPrinterId(able);
        QCOMPARE(settings.printerInfo().id(), able);
        QCOMPARE(settings.imageAvailable(), true);
        QCOMPARE(settings.paperLoopSupported(), true);
        QCOMPARE(settings.checkMoveSettingsSupported(), true);
        settings.setPaperLoopFlag(PaperLoopSecond);
        settings.setCheckMovingTo(9);
        QCOMPARE(settings.paperLoopFlag(), PaperLoopSecond);
        QCOMPARE(int(settings.moveCheckTo()), 9);
        settings.setPrinterId(general);
        QCOMPARE(settings.paperLoopFlag(), PaperLoopNone);
        QCOMPARE(int(settings.moveCheckTo()), 0);
    }

    void unknownNameGivesADefaultRecord()
    {
        Settings settings;
        settings.setPrinterId("nobody");
        QVERIFY(settings.printerInfo() == PrinterInfo());
        QCOMPARE(settings.printerInfo().interface(), QString("serial"));
        QVERIFY(settings.paper() == PaperInfo());
        QCOMPARE(settings.imageAvailable(), false);
        QCOMPARE(settings.paperLoopSupported(), false);
        QCOMPARE(settings.checkMoveSettingsSupported(), false);
        QCOMPARE(settings.defSymbolsPerLine(), 0);
    }

    void paperIsClampedToThePrintersPapers()
    {
        Settings settings;
        settings.setPaperTypeId(3);
        QCOMPARE(settings.paper(able).caption(), QString("82 mm"));
        QCOMPARE(settings.paper(general).caption(), QString("80 mm"));
        QCOMPARE(settings.paper(narrow).caption(), QString("60 mm"));
        settings.setPaperTypeId(-1);
        QCOMPARE(settings.paper(able).caption(), QString("80 mm"));
        settings.setPrinterId(able);
        QCOMPARE(settings.paper().caption(), QString("80 mm"));
    }

    void onlyTheGeneralModelNeedsACodec()
    {
        Settings settings;
        for (const QString &name : settings.availablePrinters().keys())
            QCOMPARE(settings.needCodecSettings(name), name == general);
        QCOMPARE(settings.needCodecSettings("nobody"), false);
        settings.setPrinterId(general);
        QCOMPARE(settings.needCodecSettings(), true);
        QCOMPARE(TextPrinterModels::MODEL_GENERAL_EPSON, general);
    }

    void imagesAreSwitchedOffByAPrinterWithoutThem()
    {
        Settings settings;
        settings.setPrintAsImage(true, able);
        QCOMPARE(settings.printAsImage(able), true);
        QCOMPARE(settings.printAsImage(general), false);
        settings.setPrintAsImage(true, general);
        QCOMPARE(settings.printAsImage(able), false);
        settings.setPrinterId(able);
        settings.setPrintAsImage(true);
        QCOMPARE(settings.printAsImage(), true);
        settings.setPrinterId(general);
        QCOMPARE(settings.printAsImage(), false);
        settings.setPrintAsImage(true);
        settings.setPrinterId(able);
        QCOMPARE(settings.printAsImage(), false);
    }

    void printersOfAnObjectCanBeReplacedAndLoaded()
    {
        Settings settings;
        PrinterInfo own;
        own.setId("own");
        settings.setAvailablePrinters({{"own", own}});
        QCOMPARE(settings.printerInfo("own").id(), QString("own"));
        QVERIFY(settings.printerInfo(able).id().isEmpty());
        QCOMPARE(Settings().availablePrinters().size(), modelCount);
        settings.loadAvailablePrinters();
        QCOMPARE(settings.printerInfo(able).id(), able);
        QCOMPARE(settings.printerInfo("own").id(), QString("own"));
        QCOMPARE(settings.availablePrinters().size(), modelCount + 1);
        own.setId(able);
        own.setName("replaced by the catalogue");
        settings.setAvailablePrinters({{able, own}});
        settings.loadAvailablePrinters();
        QVERIFY(settings.printerInfo(able).name() != own.name());
        QCOMPARE(Settings().availablePrinters().size(), modelCount);
    }

    void settingsOfAClientsOwnKnowTheCatalogue()
    {
        const ClientsSettings settings;
        QCOMPARE(settings.availablePrinters().keys(), Settings().availablePrinters().keys());
        QCOMPARE(settings.printerInfo(able).id(), able);
    }

    void charactersPerLine_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("stored");
        QTest::addColumn<int>("font");
        QTest::addColumn<int>("paper");
        QTest::addColumn<int>("characters");

        QTest::newRow("first font: 512 / 10") << able << 0 << 1 << 0 << 51;
        QTest::newRow("second font: 512 / 14") << able << 0 << 2 << 0 << 36;
        QTest::newRow("fourth font: 512 / 18") << able << 0 << 4 << 0 << 28;
        QTest::newRow("one beyond the fonts is the last") << able << 0 << 5 << 0 << 28;
        QTest::newRow("far beyond the fonts is the last") << able << 0 << 2147483647 << 0 << 28;
        QTest::newRow("font 0 is the first") << able << 0 << 0 << 0 << 51;
        QTest::newRow("negative font is the first")
            << able << 0 << std::numeric_limits<int>::min() << 0 << 51;
        QTest::newRow("narrow paper: 400 / 10") << able << 0 << 1 << 1 << 40;
        QTest::newRow("paper beyond the papers: 625 / 12") << general << 0 << 1 << 9 << 52;
        QTest::newRow("wide font: 384 / 16") << narrow << 0 << 3 << 0 << 24;
        QTest::newRow("23 isn't used") << able << 23 << 1 << 0 << 51;
        QTest::newRow("24 is used") << able << 24 << 1 << 0 << 24;
        QTest::newRow("24 is used for an unknown printer") << "nobody" << 24 << 1 << 0 << 24;
        QTest::newRow("negative isn't used") << able << -50 << 1 << 0 << 51;
        QTest::newRow("unknown printer") << "nobody" << 23 << 1 << 0 << 0;
    }

    void charactersPerLine()
    {
        QFETCH(QString, name);
        QFETCH(int, stored);
        QFETCH(int, font);
        QFETCH(int, paper);
        QFETCH(int, characters);
        Settings settings;
        settings.setPrinterId(name);
        settings.setDefSymbolsPerLine(stored);
        settings.setBaseFiscalFont(font);
        settings.setPaperTypeId(paper);
        QCOMPARE(settings.defSymbolsPerLine(), characters);
        settings.setPrinterType(1);
        QCOMPARE(PrinterSettings().getDefSymbolsPerLine(), characters);
        settings.setPrinterType(0);
        QCOMPARE(PrinterSettings().getDefSymbolsPerLine(), stored);
    }

    void fontWithoutWidthGivesNoCharacters()
    {
        Settings settings;
        PrinterInfo own;
        own.setId("own");
        own.addFontType(FontInfo());
        settings.setAvailablePrinters({{"own", own}});
        settings.setPrinterId("own");
        QCOMPARE(settings.defSymbolsPerLine(), 0);
    }

    // Says little by itself; under ThreadSanitizer it proves that every access is guarded.
    void anyThreadMayUseAnything()
    {
        std::atomic<int> wrong{0};
        runOnThreads(4, [&wrong](int) {
            for (int round = 0; round < 50; ++round)
                useEverything(round, wrong);
        });
        QCOMPARE(wrong.load(), 0);
    }

private:
    static void useEverything(int round, std::atomic<int> &wrong)
    {
        Settings settings;
        settings.setPrinterType(1);
        settings.setPrinterId(round % 2 ? able : general);
        settings.setPaperTypeId(round % 4);
        settings.setCodec(QString("cp%1").arg(round));
        settings.setDefaultFont(QString("Arial,%1").arg(round));
        settings.setPrintAsImage(true);
        settings.setCodePage(static_cast<unsigned char>(round));
        settings.setList(settings.toList());
        settings.setValue(item(able, "paperTypeId", 1));
        settings.printAsImage();
        settings.codePage();
        settings.defaultFont();
        const bool sane = settings.getDefSymbolsPerLine() > 0 && settings.paper().width() > 0 &&
                          settings.paperTypeId() < 4 && settings.codec().startsWith("cp") &&
                          !settings.printerInfo().id().isEmpty();
        if (!sane)
            ++wrong;
    }
};

QTEST_APPLESS_MAIN(TestTextPrinterSettings)
#include "tst_textprintersettings.moc"
