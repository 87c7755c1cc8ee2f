// How a shop prints: what its settings say.
#include <QtTest>

#include "printers/textprintermodels.h"
#include "printerslib/drivers/printoptions.h"
#include "settings/textprintersettings.h"

using namespace printerslib::drivers;

class TestPrintOptions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void defaultsPrintPlainly()
    {
        const PrintOptions options;
        QCOMPARE(options.codePage, 0);
        QCOMPARE(options.codec, QString());
        QCOMPARE(options.isPicture, false);
        QCOMPARE(options.emptyLinesAtEnd, 0);
        QCOMPARE(options.spacesInFront, 0);
        QCOMPARE(options.paperLoop, 0);
        QCOMPARE(options.ticketMove, 0);
        QCOMPARE(options.allowedRawCodes, QByteArray());
        QCOMPARE(options.drawer, PrintOptions::Drawer::Shut);
        QCOMPARE(options.drawerPin, 2);
        QCOMPARE(options.drawerOnMilliseconds, 100);
        QCOMPARE(options.drawerOffMilliseconds, 100);
    }

    // Settings are of the whole process: nothing has set any before.
    void settingsThatNobodySetAreTaken()
    {
        TextPrinterSettings settings;
        settings.setPrinterId(TextPrinterModels::MODEL_CUSTOM_VKP_80);
        const PrintOptions options = PrintOptions::fromSettings(settings);
        QCOMPARE(options.codePage, 0);
        QCOMPARE(options.codec, QString("cp866"));
        QCOMPARE(options.isPicture, false);
        QCOMPARE(options.emptyLinesAtEnd, 5);
        QCOMPARE(options.spacesInFront, 0);
        QCOMPARE(options.paperLoop, 0);
        QCOMPARE(options.ticketMove, 50);
    }

    void settingsAreTaken()
    {
        TextPrinterSettings settings;
        settings.setPrinterId(TextPrinterModels::MODEL_CUSTOM_VKP_80);
        settings.setCodePage(19);
        settings.setCodec("cp1251");
        settings.setPrintAsImage(true);
        settings.setEmptyStringsAtEnd(3);
        settings.setSpacesBeforeString(4);
        settings.setPaperLoopFlag(PaperLoopSecond);
        settings.setCheckMovingTo(70);
        const PrintOptions options = PrintOptions::fromSettings(settings);
        QCOMPARE(options.codePage, 19);
        QCOMPARE(options.codec, QString("cp1251"));
        QCOMPARE(options.isPicture, true);
        QCOMPARE(options.emptyLinesAtEnd, 3);
        QCOMPARE(options.spacesInFront, 4);
        QCOMPARE(options.paperLoop, 2);
        QCOMPARE(options.ticketMove, 70);
        QCOMPARE(options.allowedRawCodes, QByteArray());
        QCOMPARE(options.drawer, PrintOptions::Drawer::Shut);
    }

    void numbersOfPagesAreBytes()
    {
        TextPrinterSettings settings;
        settings.setCodePage(255);
        QCOMPARE(PrintOptions::fromSettings(settings).codePage, 255);
    }

    void negativeMoveOfTheTicketIsNone()
    {
        TextPrinterSettings settings;
        settings.setPrinterId(TextPrinterModels::MODEL_CUSTOM_VKP_80);
        settings.setCheckMovingTo(-1);
        QCOMPARE(PrintOptions::fromSettings(settings).ticketMove, 0);
        settings.setCheckMovingTo(127);
        QCOMPARE(PrintOptions::fromSettings(settings).ticketMove, 127);
    }

    /// What the model lacks by its record is as if it weren't set.
    void settingsThatTheModelLacksDoNotCount()
    {
        TextPrinterSettings settings;
        settings.setPrinterId(TextPrinterModels::MODEL_CUSTOM_VKP_80);
        settings.setPrintAsImage(true);
        settings.setPaperLoopFlag(PaperLoopFirst);
        settings.setCheckMovingTo(70);
        settings.setPrinterId(TextPrinterModels::MODEL_GENERAL_EPSON);
        const PrintOptions options = PrintOptions::fromSettings(settings);
        QCOMPARE(options.isPicture, false);
        QCOMPARE(options.paperLoop, 0);
        QCOMPARE(options.ticketMove, 0);
    }
};

QTEST_GUILESS_MAIN(TestPrintOptions)
#include "tst_printoptions.moc"
