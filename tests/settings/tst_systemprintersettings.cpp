#include <QFontDatabase>
#include <QtTest>
#include <atomic>

#include "settings/itextprintersettings.h"
#include "settings/systemprintersettings.h"
#include "settingsitems.h"
#include "threads.h"

namespace {

using Settings = SystemPrinterSettings;

// The values of a new process in the group of a printer.
QList<QVariant> startItems(const QString &group)
{
    return {
        item(group, "defaultFont", QString()),  item(group, "unit", 0),
        item(group, "pageSizeKey", QString()),  item(group, "pageWidth", 0.0),
        item(group, "pageHeight", 0.0),         item(group, "autoPageHeight", false),
        item(group, "leftMargin", 0.0),         item(group, "rightMargin", 0.0),
        item(group, "topMargin", 0.0),          item(group, "bottomMargin", 0.0),
        item(group, "orientation", 0),          item(group, "printerMode", 1),
        item(group, "fullJustifyAlignment", 1),
    };
}

void resetSettings()
{
    Settings settings;
    settings.setPrinterType(0);
    settings.setPrinterId(QString());
    settings.setDefSymbolsPerLine(0);
    settings.setPaperLoopFlag(PaperLoopNone);
    settings.setList(startItems(QString()));
}

QList<QVariant> ownItems()
{
    return addedItems(Settings().toList());
}

}  // namespace

class TestSystemPrinterSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Has to stay the first: it looks at the process as it starts. So nothing is reset in front of
    // a test, only behind it.
    void startValues()
    {
        QCOMPARE(ownItems(), startItems(""));
        const QList<QVariant> items = ownItems();
        const QList<int> types{QMetaType::QString, QMetaType::Int,    QMetaType::QString,
                               QMetaType::Double,  QMetaType::Double, QMetaType::Bool,
                               QMetaType::Double,  QMetaType::Double, QMetaType::Double,
                               QMetaType::Double,  QMetaType::Int,    QMetaType::Int,
                               QMetaType::Int};
        QCOMPARE(items.size(), types.size());
        for (int row = 0; row < items.size(); ++row)
            QCOMPARE(items.at(row).toMap().value("value").userType(), types.at(row));
        const Settings settings;
        QCOMPARE(settings.printerMode("x"), QPrinter::PrinterResolution);
        QCOMPARE(settings.fullJustifyAlign("x"), true);
    }

    void cleanup()
    {
        IPrintDeviceSettings::setPrintDeviceSettings({});
        resetSettings();
    }

    void interfaceIsFoundOnlyOnASystemPrinter()
    {
        QVERIFY(IPrintDeviceSettings::systemPrinterSettings().isNull());
        IPrintDeviceSettings::setPrintDeviceSettings(
            QSharedPointer<IPrintDeviceSettings>(new SystemPrinterSettings));
        QVERIFY(IPrintDeviceSettings::systemPrinterSettings());
        QVERIFY(IPrintDeviceSettings::textPrinterSettings().isNull());
    }

    void settersStoreOneValueForAllNames()
    {
        Settings settings;
        settings.setPrinterId("laser");
        settings.setUnit("a", ISystemPrinterSettings::Inch);
        settings.setPageSizeKey("a", "A4");
        settings.setPageWidth("a", 1.5);
        settings.setPageHeight("a", 2.5);
        settings.setAutoPageHeight("a", true);
        settings.setLeftMargin("a", 3.5);
        settings.setRightMargin("a", 4.5);
        settings.setTopMargin("a", 5.5);
        settings.setBottomMargin("a", 6.5);
        settings.setOrientation("a", ISystemPrinterSettings::Landscape);
        settings.setPrinterMode("a", QPrinter::HighResolution);
        settings.setFullJustifyAlign("a", false);

        const Settings reader;
        QCOMPARE(reader.unit("b"), ISystemPrinterSettings::Inch);
        QCOMPARE(reader.pageSizeKey("b"), QString("A4"));
        QCOMPARE(reader.pageWidgth("b"), 1.5);
        QCOMPARE(reader.pageHeight("b"), 2.5);
        QCOMPARE(reader.autoPageHeight("b"), true);
        QCOMPARE(reader.leftMargin("b"), 3.5);
        QCOMPARE(reader.rightMargin("b"), 4.5);
        QCOMPARE(reader.topMargin("b"), 5.5);
        QCOMPARE(reader.bottomMargin("b"), 6.5);
        QCOMPARE(reader.orientation("b"), ISystemPrinterSettings::Landscape);
        QCOMPARE(reader.printerMode("b"), QPrinter::HighResolution);
        QCOMPARE(reader.fullJustifyAlign("b"), false);
        QCOMPARE(ownItems(), (QList<QVariant>{
                                 item("laser", "defaultFont", QString()),
                                 item("laser", "unit", 2),
                                 item("laser", "pageSizeKey", "A4"),
                                 item("laser", "pageWidth", 1.5),
                                 item("laser", "pageHeight", 2.5),
                                 item("laser", "autoPageHeight", true),
                                 item("laser", "leftMargin", 3.5),
                                 item("laser", "rightMargin", 4.5),
                                 item("laser", "topMargin", 5.5),
                                 item("laser", "bottomMargin", 6.5),
                                 item("laser", "orientation", 1),
                                 item("laser", "printerMode", 2),
                                 item("laser", "fullJustifyAlignment", 0),
                             }));
    }

    void itemsAreTaken_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QVariant>("read");

        QTest::newRow("font as written") << "defaultFont" << QVariant("x") << QVariant("x");
        QTest::newRow("unit without a range test") << "unit" << QVariant(6) << QVariant(6);
        QTest::newRow("size") << "pageSizeKey" << QVariant("A5") << QVariant("A5");
        QTest::newRow("width as text") << "pageWidth" << QVariant("1.5") << QVariant(1.5);
        QTest::newRow("no number is 0") << "pageHeight" << QVariant("x") << QVariant(0.0);
        QTest::newRow("truth as text") << "autoPageHeight" << QVariant("true") << QVariant(true);
        QTest::newRow("left") << "leftMargin" << QVariant(1) << QVariant(1.0);
        QTest::newRow("right") << "rightMargin" << QVariant(-1.5) << QVariant(-1.5);
        QTest::newRow("top") << "topMargin" << QVariant(2.5) << QVariant(2.5);
        QTest::newRow("bottom") << "bottomMargin" << QVariant(3.5) << QVariant(3.5);
        QTest::newRow("orientation without a range test")
            << "orientation" << QVariant(5) << QVariant(5);
        QTest::newRow("mode without a range test") << "printerMode" << QVariant(9) << QVariant(9);
        QTest::newRow("justify") << "fullJustifyAlignment" << QVariant(5) << QVariant(1);
        QTest::newRow("no justify") << "fullJustifyAlignment" << QVariant(0) << QVariant(0);
    }

    void itemsAreTaken()
    {
        QFETCH(QString, key);
        QFETCH(QVariant, value);
        QFETCH(QVariant, read);
        for (const bool asList : {false, true}) {
            resetSettings();
            Settings settings;
            settings.setPrinterId("laser");
            if (asList)
                settings.setList({item("laser", key, value)});
            else
                QVERIFY(settings.setValue(item("laser", key, value)));
            QCOMPARE(valueOf(ownItems(), key), read);
        }
    }

    void itemsThatAreNotTaken_data()
    {
        QTest::addColumn<QMap<QString, QVariant>>("refused");

        QTest::newRow("empty") << QMap<QString, QVariant>();
        QTest::newRow("other printer") << item("other", "unit", 1);
        QTest::newRow("section") << item("PRINTER", "unit", 1);
        QTest::newRow("no group") << QMap<QString, QVariant>{{"key", "unit"}, {"value", 1}};
        QTest::newRow("no key") << QMap<QString, QVariant>{{"group", "laser"}, {"value", 1}};
        QTest::newRow("unknown key") << item("laser", "units", 1);
    }

    void itemsThatAreNotTaken()
    {
        using Item = QMap<QString, QVariant>;
        QFETCH(Item, refused);
        Settings settings;
        settings.setPrinterId("laser");
        const QList<QVariant> before = settings.toList();
        QVERIFY(!settings.setValue(refused));
        settings.setList({refused, QVariant()});
        QCOMPARE(settings.toList(), before);
    }

    void itemsOfTheBaseAreTaken()
    {
        Settings settings;
        QVERIFY(settings.setValue(item("PRINTER", "printerName", "laser")));
        QVERIFY(settings.setValue(item("laser", "baudRate", 1200)));
        QCOMPARE(settings.port()->portSettings().baudRate(), 1200);
        settings.setPaperLoopFlag(PaperLoopSecond);
        QCOMPARE(settings.paperLoopFlag(), PaperLoopNone);
        QCOMPARE(int(settings.moveCheckTo()), 0);
    }

    void listFillsTheSettings()
    {
        Settings settings;
        settings.setPrinterId("laser");
        settings.setPageWidth("laser", 12.5);
        settings.setDefaultFont("laser", QFont("Arial", 9));
        const QList<QVariant> list = settings.toList();
        resetSettings();
        settings.setList(list);
        QCOMPARE(settings.toList(), list);
    }

    void nameBehindItsItemsLosesOnlyThePortsItems()
    {
        Settings settings;
        settings.setPrinterId("inkjet");
        QVERIFY(settings.setValue(item("inkjet", "baudRate", 1200)));
        settings.setList({item("laser", "pageWidth", 12.5), item("laser", "baudRate", 2400),
                          item("inkjet", "pageHeight", 7.5),
                          item("PRINTER", "printerName", "laser")});
        QCOMPARE(settings.printerId(), QString("laser"));
        QCOMPARE(settings.pageWidgth("laser"), 12.5);
        QCOMPARE(settings.pageHeight("laser"), 0.0);
        QCOMPARE(settings.port()->portSettings().baudRate(), 1200);
    }

    void portItemThatThePortRefusesIsNotTaken()
    {
        Settings settings;
        settings.setPrinterId("laser");
        QVERIFY(settings.setValue(item("laser", "baudRate", 1200)));
        QVERIFY(!settings.setValue(item("laser", "baudRate", -1)));
        QCOMPARE(settings.port()->portSettings().baudRate(), 1200);
    }

    void unknownModeIsGivenAsItsNumber()
    {
        Settings settings;
        settings.setPrinterId("laser");
        QVERIFY(settings.setValue(item("laser", "printerMode", 9)));
        QCOMPARE(int(settings.printerMode("laser")), 9);
        QCOMPARE(valueOf(ownItems(), "printerMode"), QVariant(9));
        settings.setPrinterMode("laser", QPrinter::HighResolution);
        QCOMPARE(settings.printerMode("laser"), QPrinter::HighResolution);
    }

    void unitsConvertByNumber_data()
    {
        QTest::addColumn<int>("stored");
        QTest::addColumn<int>("converted");
        for (int unit = 0; unit <= 5; ++unit)
            QTest::addRow("unit %d", unit) << unit << unit;
        QTest::newRow("beyond the last is millimetre") << 6 << 0;
        QTest::newRow("negative is millimetre") << -1 << 0;
    }

    void unitsConvertByNumber()
    {
        QFETCH(int, stored);
        QFETCH(int, converted);
        Settings settings;
        settings.setPrinterId("laser");
        QVERIFY(settings.setValue(item("laser", "unit", stored)));
        QCOMPARE(int(settings.unit("laser")), stored);
        QCOMPARE(int(settings.pageLayoutUnit("laser")), converted);
        QCOMPARE(int(settings.pageSizeUnit("laser")), converted);
        if (stored < 0)
            return;
        settings.setUnit("laser", ISystemPrinterSettings::Didot);
        settings.setPageLayoutUnit("laser", static_cast<QPageLayout::Unit>(stored));
        QCOMPARE(int(settings.unit("laser")), stored == converted ? stored : 4);
    }

    void orientationConverts()
    {
        Settings settings;
        settings.setPageLayoutOrientation("x", QPageLayout::Landscape);
        QCOMPARE(settings.orientation("x"), ISystemPrinterSettings::Landscape);
        QCOMPARE(settings.pageLayoutOrientation("x"), QPageLayout::Landscape);
        const volatile int third = 2;
        settings.setPageLayoutOrientation("x", static_cast<QPageLayout::Orientation>(int(third)));
        QCOMPARE(settings.orientation("x"), ISystemPrinterSettings::Landscape);
        settings.setPageLayoutOrientation("x", QPageLayout::Portrait);
        QCOMPARE(settings.orientation("x"), ISystemPrinterSettings::Portrait);
        settings.setOrientation("x", static_cast<ISystemPrinterSettings::Orientation>(2));
        QCOMPARE(settings.pageLayoutOrientation("x"), QPageLayout::Portrait);
    }

    void charactersPerLine_data()
    {
        QTest::addColumn<int>("stored");
        QTest::addColumn<int>("characters");
        QTest::newRow("negative") << -1 << 40;
        QTest::newRow("none") << 0 << 40;
        QTest::newRow("one") << 1 << 1;
        QTest::newRow("23 is used here") << 23 << 23;
        QTest::newRow("many") << 1000 << 1000;
    }

    void charactersPerLine()
    {
        QFETCH(int, stored);
        QFETCH(int, characters);
        Settings settings;
        settings.setDefSymbolsPerLine(stored);
        QCOMPARE(settings.defSymbolsPerLine(), characters);
        settings.setPrinterType(2);
        QCOMPARE(PrinterSettings().getDefSymbolsPerLine(), characters);
    }

    void fontReadsBack()
    {
        Settings settings;
        QFont font("Arial", 9);
        font.setBold(true);
        settings.setDefaultFont("x", font);
        QCOMPARE(settings.defaultFont("y"), font);
        QCOMPARE(valueOf(ownItems(), "defaultFont").toString(), font.toString());
    }

    void preparedFontIsUprightAndOf14Points()
    {
        const QFont font = Settings().prepareDefaultFont();
        QCOMPARE(font.weight(), 50);
        QCOMPARE(font.style(), QFont::StyleNormal);
        QCOMPARE(font.pointSize(), 14);
        const QFontDatabase database;
        const QStringList families = database.families(QFontDatabase::Cyrillic);
        QString expected = QFont().family();
        if (families.contains("Monospace")) {
            expected = "Monospace";
        } else {
            for (int row = families.size() - 1; row >= 0; --row) {
                if (database.isFixedPitch(families.at(row)))
                    expected = families.at(row);
            }
        }
        QCOMPARE(font.family(), expected);
    }

    void unparsableFontGivesThePreparedOneAndStays()
    {
        Settings settings;
        QCOMPARE(settings.defaultFont("x"), settings.prepareDefaultFont());
        settings.setPrinterId("laser");
        QVERIFY(settings.setValue(item("laser", "defaultFont", "a,b,c")));
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression("QFont::fromString: Invalid description.*"));
        QCOMPARE(settings.defaultFont("x"), settings.prepareDefaultFont());
        QCOMPARE(valueOf(ownItems(), "defaultFont"), QVariant("a,b,c"));
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
        const QString name = "laser";
        Settings settings;
        settings.setPrinterType(2);
        settings.setPrinterId(name);
        settings.setUnit(name, ISystemPrinterSettings::Inch);
        settings.setPageLayoutUnit(name, QPageLayout::Pica);
        settings.setPageSizeKey(name, QString("A%1").arg(round));
        settings.setPageWidth(name, round);
        settings.setPageHeight(name, round);
        settings.setAutoPageHeight(name, true);
        settings.setLeftMargin(name, round);
        settings.setRightMargin(name, round);
        settings.setTopMargin(name, round);
        settings.setBottomMargin(name, round);
        settings.setPageLayoutOrientation(name, QPageLayout::Landscape);
        settings.setPrinterMode(name, QPrinter::HighResolution);
        settings.setFullJustifyAlign(name, true);
        settings.setList(settings.toList());
        settings.setValue(item(name, "pageSizeKey", "A0"));
        const double sizes = settings.pageWidgth(name) + settings.pageHeight(name) +
                             settings.leftMargin(name) + settings.rightMargin(name) +
                             settings.topMargin(name) + settings.bottomMargin(name);
        const bool sane = sizes < 1000 && settings.autoPageHeight(name) &&
                          settings.fullJustifyAlign(name) &&
                          settings.pageSizeKey(name).startsWith('A') &&
                          settings.pageLayoutUnit(name) != QPageLayout::Millimeter &&
                          settings.pageSizeUnit(name) != QPageSize::Millimeter &&
                          settings.pageLayoutOrientation(name) == QPageLayout::Landscape &&
                          settings.printerMode(name) == QPrinter::HighResolution &&
                          settings.getDefSymbolsPerLine() == 40;
        if (!sane)
            ++wrong;
    }
};

QTEST_MAIN(TestSystemPrinterSettings)
#include "tst_systemprintersettings.moc"
