#include <QThreadPool>
#include <QtConcurrent>
#include <QtTest>
#include <atomic>

#include "cataloguemodels.h"
#include "printers/textprintermodels.h"
#include "settings/isystemprintersettings.h"
#include "settings/textprintersettings.h"
#include "settingsitems.h"
#include "vtableslot.h"

namespace {

using Settings = TextPrinterSettings;
using cataloguemodels::modelCount;

// Prints images, forms loops, can be moved; four papers; fonts of 10, 14, 14 and 18 dots.
const QString able = "CUSTOM_VKP_80";
// Can nothing of that; the codec can be set; two papers; fonts of 12 dots.
const QString general = "GENERAL_EPSON_PROTOCOL";
// Fonts of 8, 8, 16 and 16 dots, one paper of 384 dots.
const QString narrow = "AV_268";

void resetSettings()
{
    Settings settings;
    settings.setPrinterType(0);
    settings.setPrinterId(able);
    settings.setPaperTypeId(0);
    settings.setCodec("cp866");
    settings.setDefaultFont(QString());
    settings.setPrintAsImage(false);
    settings.setCodePage(0);
    settings.setPrinterId(QString());
    settings.setPaperLoopFlag(PaperLoopNone);
    settings.setCheckMovingTo(50);
    settings.setBaseFiscalFont(1);
    settings.setDefSymbolsPerLine(0);
}

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

QList<QVariant> ownItems(const Settings &settings)
{
    return addedItems(settings.toList());
}

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
        resetSettings();
    }

    void keyConstants()
    {
        QCOMPARE(Settings::PAPER_TYPR_ID, QString("paperTypeId"));
        QCOMPARE(Settings::PRINTER_CODEC, QString("codec"));
        QCOMPARE(Settings::DEFAULT_FONT, QString("defaultFont"));
        QCOMPARE(Settings::PRINT_AS_IMAGE, QString("printAsImage"));
        QCOMPARE(Settings::CODEPAGE, QString("cpage"));
    }

    void operationsOfTheInterfaceKeepTheirSlots()
    {
        using I = ITextPrinterSettings;
        using Name = const QString &;
        const QList<int> slots{
            vtableSlot(&I::availablePrinters),
            vtableSlot(&I::setAvailablePrinters),
            vtableSlot<PrinterInfo (I::*)(Name) const>(&I::printerInfo),
            vtableSlot<PrinterInfo (I::*)() const>(&I::printerInfo),
            vtableSlot<PaperInfo (I::*)(Name) const>(&I::paper),
            vtableSlot<PaperInfo (I::*)() const>(&I::paper),
            vtableSlot<int (I::*)(Name) const>(&I::paperTypeId),
            vtableSlot<int (I::*)() const>(&I::paperTypeId),
            vtableSlot<void (I::*)(Name, int)>(&I::setPaperTypeId),
            vtableSlot<void (I::*)(int)>(&I::setPaperTypeId),
            vtableSlot<bool (I::*)() const>(&I::needCodecSettings),
            vtableSlot<bool (I::*)(Name) const>(&I::needCodecSettings),
            vtableSlot<QString (I::*)() const>(&I::codec),
            vtableSlot<QString (I::*)(Name) const>(&I::codec),
            vtableSlot<void (I::*)(Name)>(&I::setCodec),
            vtableSlot<void (I::*)(Name, Name)>(&I::setCodec),
            vtableSlot(&I::loadAvailablePrinters),
        };
        for (int row = 0; row < slots.size(); ++row)
            QCOMPARE(slots.at(row), row + 2);
    }

    void operationsOfTheClassKeepTheirSlots()
    {
        using T = TextPrinterSettings;
        using Name = const QString &;
        const QList<int> slots{
            vtableSlot<PrinterInfo (T::*)(Name) const>(&T::printerInfo),
            vtableSlot<PrinterInfo (T::*)() const>(&T::printerInfo),
            vtableSlot<PaperInfo (T::*)(Name) const>(&T::paper),
            vtableSlot<PaperInfo (T::*)() const>(&T::paper),
            vtableSlot<int (T::*)(Name) const>(&T::paperTypeId),
            vtableSlot<int (T::*)() const>(&T::paperTypeId),
            vtableSlot<bool (T::*)(Name) const>(&T::imageAvailable),
            vtableSlot<bool (T::*)() const>(&T::imageAvailable),
            vtableSlot<void (T::*)(Name, int)>(&T::setPaperTypeId),
            vtableSlot<void (T::*)(int)>(&T::setPaperTypeId),
            vtableSlot<bool (T::*)() const>(&T::needCodecSettings),
            vtableSlot<QString (T::*)() const>(&T::codec),
            vtableSlot<void (T::*)(Name)>(&T::setCodec),
            vtableSlot<bool (T::*)(Name) const>(&T::needCodecSettings),
            vtableSlot<QString (T::*)(Name) const>(&T::codec),
            vtableSlot<void (T::*)(Name, Name)>(&T::setCodec),
        };
        const int behindTheBase = vtableSlot(&PrinterSettings::defSymbolsPerLine) + 1;
        for (int row = 0; row < slots.size(); ++row)
            QCOMPARE(slots.at(row), row + behindTheBase);
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

    void listOfAPrinterWithCodec()
    {
        Settings settings;
        settings.setPrinterId(general);
        settings.setPaperTypeId(1);
        settings.setCodePage(200);
        const QList<QVariant> items = ownItems(settings);
        QCOMPARE(items, (QList<QVariant>{
                            item(general, "paperTypeId", 1),
                            item(general, "codec", "cp866"),
                            item(general, "cpage", 200U),
                        }));
        QCOMPARE(items.at(0).toMap().value("value").userType(), int(QMetaType::Int));
        QCOMPARE(items.at(2).toMap().value("value").userType(), int(QMetaType::UInt));
    }

    void listOfAPrinterWithImages()
    {
        Settings settings;
        settings.setPrinterId(able);
        settings.setDefaultFont("Arial,10");
        QCOMPARE(ownItems(settings), (QList<QVariant>{
                                         item(able, "paperTypeId", 0),
                                         item(able, "printAsImage", 0),
                                         item(able, "cpage", 0U),
                                     }));
        settings.setPrintAsImage(true);
        QCOMPARE(ownItems(settings), (QList<QVariant>{
                                         item(able, "paperTypeId", 0),
                                         item(able, "printAsImage", 1),
                                         item(able, "defaultFont", "Arial,10"),
                                         item(able, "cpage", 0U),
                                     }));
    }

    void listFillsTheSettings()
    {
        Settings settings;
        settings.setPrinterType(1);
        settings.setPrinterId(able);
        settings.setPaperTypeId(2);
        settings.setPrintAsImage(true);
        settings.setDefaultFont("Arial,10");
        settings.setCodePage(17);
        const QList<QVariant> list = settings.toList();
        resetSettings();
        settings.setList(list);
        QCOMPARE(settings.toList(), list);
    }

    void listOfAnotherPrintersGroupIsPassedOver()
    {
        Settings settings;
        settings.setPrinterId(able);
        settings.setList({item("other", "paperTypeId", 3), item(able, "paperTypeId", 2), QVariant(),
                          QVariantMap{{"key", "paperTypeId"}, {"value", 1}}});
        QCOMPARE(settings.paperTypeId(), 2);
    }

    void codecIsTakenOnlyWhereItCanBeSet()
    {
        Settings settings;
        settings.setPrinterId(able);
        QVERIFY(settings.setValue(item(able, "codec", "koi8-r")));
        QCOMPARE(settings.codec(), QString("cp866"));
        settings.setPrinterId(general);
        QVERIFY(settings.setValue(item(general, "codec", "koi8-r")));
        QCOMPARE(settings.codec(), QString("koi8-r"));
    }

    void itemsOfAPrinterWithImages()
    {
        Settings settings;
        settings.setPrinterId(able);
        QVERIFY(settings.setValue(item(able, "printAsImage", "2")));
        QCOMPARE(settings.printAsImage(), true);
        QVERIFY(settings.setValue(item(able, "defaultFont", "Arial,10")));
        QCOMPARE(settings.defaultFont(), QString("Arial,10"));
        QVERIFY(settings.setValue(item(able, "cpage", 257)));
        QCOMPARE(int(settings.codePage()), 1);
        QVERIFY(settings.setValue(item(able, "unknown", 1)));
        QCOMPARE(settings.printAsImage(), true);
        QCOMPARE(settings.defaultFont(), QString("Arial,10"));
        QVERIFY(settings.setValue(item(able, "printAsImage", -1)));
        QCOMPARE(settings.printAsImage(), false);
    }

    void anyOtherKeySwitchesImagesOffWithoutImages_data()
    {
        QTest::addColumn<QString>("key");
        QTest::newRow("code page") << "cpage";
        QTest::newRow("font") << "defaultFont";
        QTest::newRow("images") << "printAsImage";
        QTest::newRow("unknown") << "unknown";
    }

    void anyOtherKeySwitchesImagesOffWithoutImages()
    {
        QFETCH(QString, key);
        Settings settings;
        settings.setPrintAsImage(true, able);
        settings.setDefaultFont("Arial,10");
        settings.setPrinterId(general);
        QVERIFY(settings.setValue(item(general, key, 7)));
        QCOMPARE(settings.defaultFont(), QString(""));
        QCOMPARE(settings.printAsImage(able), false);
        QCOMPARE(int(settings.codePage()), 0);
    }

    void itemsOfTheBaseComeFirst()
    {
        Settings settings;
        settings.setPrinterId(general);
        settings.setDefaultFont("Arial,10");
        QVERIFY(settings.setValue(item("PRINTER", "emptyStringsAtEnd", 5)));
        QVERIFY(settings.setValue(item(general, "baudRate", 1200)));
        QCOMPARE(settings.port()->portSettings().baudRate(), 1200);
        QCOMPARE(settings.defaultFont(), QString("Arial,10"));
        QVERIFY(!settings.setValue(item("PRINTER", "paperTypeId", 1)));
        QVERIFY(!settings.setValue(item("other", "paperTypeId", 1)));
        QVERIFY(!settings.setValue({{"key", "paperTypeId"}, {"value", 1}}));
        QCOMPARE(settings.paperTypeId(), 0);
    }

    void portItemOfAListSwitchesImagesOffWithoutImages()
    {
        // The list is walked twice, and the second walk doesn't know what the port took.
        Settings settings;
        settings.setPrintAsImage(true, able);
        settings.setDefaultFont("Arial,10");
        settings.setPrinterId(narrow);
        QVERIFY(settings.setValue(item(narrow, "baudRate", 1200)));
        QCOMPARE(settings.defaultFont(), QString("Arial,10"));
        QCOMPARE(settings.printAsImage(able), true);
        settings.setList({item(narrow, "baudRate", 2400)});
        QCOMPARE(settings.port()->portSettings().baudRate(), 2400);
        QCOMPARE(settings.defaultFont(), QString(""));
        QCOMPARE(settings.printAsImage(able), false);
    }

    void portItemOfAListLeavesImagesOfAPrinterThatHasThem()
    {
        Settings settings;
        settings.setPrinterId(able);
        settings.setPrintAsImage(true);
        settings.setDefaultFont("Arial,10");
        settings.setList({item(able, "baudRate", 2400)});
        QCOMPARE(settings.port()->portSettings().baudRate(), 2400);
        QCOMPARE(settings.defaultFont(), QString("Arial,10"));
        QCOMPARE(settings.printAsImage(), true);
    }

    void portItemThatThePortRefusesCountsAsTaken_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("keepsImages");
        QTest::newRow("without images") << narrow << false;
        QTest::newRow("with images") << able << true;
    }

    void portItemThatThePortRefusesCountsAsTaken()
    {
        QFETCH(QString, name);
        QFETCH(bool, keepsImages);
        Settings settings;
        settings.setPrintAsImage(true, able);
        settings.setDefaultFont("Arial,10");
        settings.setPrinterId(name);
        QVERIFY(settings.setValue(item(name, "baudRate", 1200)));
        QVERIFY(settings.setValue(item(name, "baudRate", -1)));
        QCOMPARE(settings.port()->portSettings().baudRate(), 1200);
        QCOMPARE(settings.defaultFont(), QString(keepsImages ? "Arial,10" : ""));
        QCOMPARE(settings.printAsImage(able), keepsImages);
    }

    void nameBehindItsItemsLosesOnlyThePortsItems()
    {
        Settings settings;
        settings.setPrinterId(narrow);
        QVERIFY(settings.setValue(item(narrow, "baudRate", 1200)));
        settings.setList({item(able, "paperTypeId", 2), item(able, "baudRate", 2400),
                          item("PRINTER", "printerName", able)});
        QCOMPARE(settings.printerId(), able);
        QCOMPARE(settings.paperTypeId(), 2);
        QCOMPARE(settings.port()->portSettings().baudRate(), 1200);
    }

    void itemsOfTheFormerNameReachOnlyThePort()
    {
        Settings settings;
        settings.setPrinterId(narrow);
        settings.setList({item(narrow, "paperTypeId", 2), item(narrow, "baudRate", 2400),
                          item("PRINTER", "printerName", able)});
        QCOMPARE(settings.paperTypeId(), 0);
        QCOMPARE(settings.port()->portSettings().baudRate(), 2400);
        QCOMPARE(settings.port()->name(), able);
    }

    // Says little by itself; under ThreadSanitizer it proves that every access is guarded.
    void anyThreadMayUseAnything()
    {
        std::atomic<int> wrong{0};
        QThreadPool pool;
        pool.setMaxThreadCount(4);
        QList<QFuture<void>> running;
        for (int thread = 0; thread < 4; ++thread)
            running.append(QtConcurrent::run(&pool, [&wrong] {
                for (int round = 0; round < 50; ++round)
                    useEverything(round, wrong);
            }));
        for (QFuture<void> &future : running)
            future.waitForFinished();
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
