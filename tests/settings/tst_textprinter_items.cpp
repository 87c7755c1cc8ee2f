#include <QtTest>

#include "settings/textprintersettings.h"
#include "settingsitems.h"
#include "settingsreset.h"

using namespace settingsreset;

namespace {

using Settings = TextPrinterSettings;

QList<QVariant> ownItems(const Settings &settings)
{
    return addedItems(settings.toList());
}

}  // namespace

/// The settings of a text printer as items of a list.
class TestTextPrinterItems : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        IPrintDeviceSettings::setPrintDeviceSettings({});
        resetTextPrinterSettings();
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
        resetTextPrinterSettings();
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
};

QTEST_APPLESS_MAIN(TestTextPrinterItems)
#include "tst_textprinter_items.moc"
