#include <QtTest>

#include "settings/systemprintersettings.h"
#include "settings/textprintersettings.h"
#include "vtableslot.h"

/// What programs in the field are compiled with: keys, numbers and places of operations.
class TestSettingsInterface : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keysOfPrinterSettings()
    {
        QCOMPARE(PrinterSettings::SECTION, QString("PRINTER"));
        QCOMPARE(PrinterSettings::PRINTER_TYPE, QString("printerType"));
        QCOMPARE(PrinterSettings::PRINTER_ID, QString("printerName"));
        QCOMPARE(PrinterSettings::EMPTY_STRINGS_AT_END, QString("emptyStringsAtEnd"));
        QCOMPARE(PrinterSettings::SPACES_BEFORE_STRING, QString("spacesBeforeString"));
        QCOMPARE(PrinterSettings::PAPER_LOOP_FLAG, QString("paperLoopFlag"));
        QCOMPARE(PrinterSettings::MOVE_CHECK_TO, QString("moveCheckTo"));
        QCOMPARE(PrinterSettings::CHARACTER_MODE, QString("characterMode"));
        QCOMPARE(PrinterSettings::ENABLE_PORT_LOGGING, QString("enablePortLogging"));
        QCOMPARE(PrinterSettings::BASE_FISCAL_FONT, QString("baseFiscFont"));
        QCOMPARE(PrinterSettings::DEFAULT_SYMBOLS_PER_LINE, QString("defSymPerLine"));
        QCOMPARE(PrinterSettings::MAPPED_EMPTY_STRINGS_AT_END,
                 QString("PRINT_EMPTY_STRINGS_AT_END"));
        QCOMPARE(PrinterSettings::MAPPED_SPACES_BEFORE_STRING,
                 QString("PRINT_SPACES_BEFORE_STRING"));
        QCOMPARE(PrinterSettings::MAPPED_PAPER_LOOP_FLAG, QString("PAPER_LOOP_FLAG"));
        QCOMPARE(PrinterSettings::MAPPED_MOVE_CHECK_TO, QString("MOVE_TICKET_TO"));
        QCOMPARE(PrinterSettings::MAPPED_PRINTER_CHARACTER_MODE, QString("PRINTER_CHARACTER_MODE"));
    }

    void keysOfTextPrinterSettings()
    {
        QCOMPARE(TextPrinterSettings::PAPER_TYPR_ID, QString("paperTypeId"));
        QCOMPARE(TextPrinterSettings::PRINTER_CODEC, QString("codec"));
        QCOMPARE(TextPrinterSettings::DEFAULT_FONT, QString("defaultFont"));
        QCOMPARE(TextPrinterSettings::PRINT_AS_IMAGE, QString("printAsImage"));
        QCOMPARE(TextPrinterSettings::CODEPAGE, QString("cpage"));
    }

    void keysOfSystemPrinterSettings()
    {
        QCOMPARE(SystemPrinterSettings::DEFAULT_FONT, QString("defaultFont"));
        QCOMPARE(SystemPrinterSettings::UNIT, QString("unit"));
        QCOMPARE(SystemPrinterSettings::PAGE_SIZE_KEY, QString("pageSizeKey"));
        QCOMPARE(SystemPrinterSettings::PAGE_WIDTH, QString("pageWidth"));
        QCOMPARE(SystemPrinterSettings::PAGE_HEIGHT, QString("pageHeight"));
        QCOMPARE(SystemPrinterSettings::AUTO_PAGE_HEIGHT, QString("autoPageHeight"));
        QCOMPARE(SystemPrinterSettings::LEFT_MARGIN, QString("leftMargin"));
        QCOMPARE(SystemPrinterSettings::RIGHT_MARGIN, QString("rightMargin"));
        QCOMPARE(SystemPrinterSettings::TOP_MARGIN, QString("topMargin"));
        QCOMPARE(SystemPrinterSettings::BOTTOM_MARGIN, QString("bottomMargin"));
        QCOMPARE(SystemPrinterSettings::ORIENTATION, QString("orientation"));
        QCOMPARE(SystemPrinterSettings::PRINTER_MODE, QString("printerMode"));
        QCOMPARE(SystemPrinterSettings::FULL_JUSTIFY_ALIGN, QString("fullJustifyAlignment"));
    }

    void enumerationsHaveTheirNumbers()
    {
        QCOMPARE(int(PrinterSettings::CharactersAsWritten), 0);
        QCOMPARE(int(PrinterSettings::CharactersUpperCase), 1);
        QCOMPARE(int(PrinterSettings::CharactersLowerCase), 2);
        QCOMPARE(int(PaperLoopNone), 0);
        QCOMPARE(int(PaperLoopFirst), 1);
        QCOMPARE(int(PaperLoopSecond), 2);
        QCOMPARE(sizeof(PrinterSettings::ECharactersMode), sizeof(int));
        QCOMPARE(sizeof(EPaperLoopFlag), sizeof(int));
    }

    void operationsOfPrinterSettingsKeepTheirSlots()
    {
        using I = IPrintDeviceSettings;
        using P = PrinterSettings;
        using Name = const QString &;
        using Port = QSharedPointer<hearth::RS232Settings>;
        const QList<int> slots{
            vtableSlot<Port (I::*)(Name) const>(&I::port),
            vtableSlot<Port (I::*)() const>(&I::port),
            vtableSlot(&I::printerType),
            vtableSlot(&I::setPrinterType),
            vtableSlot(&I::printerId),
            vtableSlot(&I::setPrinterId),
            vtableSlot(&I::portLoggingEnabled),
            vtableSlot(&I::setPortLoggingEnabled),
            vtableSlot(&I::emptyStringsAtEnd),
            vtableSlot(&I::setEmptyStringsAtEnd),
            vtableSlot(&I::spacessBeforeString),
            vtableSlot(&I::setSpacesBeforeString),
            vtableSlot(&I::charactersMode),
            vtableSlot(&I::setCharactersMode),
            vtableSlot<bool (P::*)() const>(&P::paperLoopSupported),
            vtableSlot<bool (P::*)(Name) const>(&P::paperLoopSupported),
            vtableSlot<EPaperLoopFlag (P::*)() const>(&P::paperLoopFlag),
            vtableSlot<void (P::*)(EPaperLoopFlag)>(&P::setPaperLoopFlag),
            vtableSlot<EPaperLoopFlag (P::*)(Name)>(&P::paperLoopFlag),
            vtableSlot<void (P::*)(EPaperLoopFlag, Name)>(&P::setPaperLoopFlag),
            vtableSlot<bool (P::*)() const>(&P::checkMoveSettingsSupported),
            vtableSlot<bool (P::*)(Name) const>(&P::checkMoveSettingsSupported),
            vtableSlot(&P::baseFiscalFont),
            vtableSlot(&P::setBaseFiscalFont),
            vtableSlot(&P::getDefSymbolsPerLine),
            vtableSlot(&P::setDefSymbolsPerLine),
            vtableSlot(&P::toList),
            vtableSlot(&P::setList),
            vtableSlot(&P::setValue),
            vtableSlot(&P::defSymbolsPerLine),
        };
        for (int row = 0; row < slots.size(); ++row)
            QCOMPARE(slots.at(row), row + 2);
    }

    void operationsOfTheTextInterfaceKeepTheirSlots()
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

    void operationsOfTextPrinterSettingsKeepTheirSlots()
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

    void operationsOfTheSystemInterfaceKeepTheirSlots()
    {
        using I = ISystemPrinterSettings;
        const QList<int> slots{
            vtableSlot(&I::defaultFont),
            vtableSlot(&I::setDefaultFont),
            vtableSlot(&I::unit),
            vtableSlot(&I::setUnit),
            vtableSlot(&I::pageSizeKey),
            vtableSlot(&I::setPageSizeKey),
            vtableSlot(&I::pageWidgth),
            vtableSlot(&I::setPageWidth),
            vtableSlot(&I::pageHeight),
            vtableSlot(&I::setPageHeight),
            vtableSlot(&I::autoPageHeight),
            vtableSlot(&I::setAutoPageHeight),
            vtableSlot(&I::leftMargin),
            vtableSlot(&I::setLeftMargin),
            vtableSlot(&I::rightMargin),
            vtableSlot(&I::setRightMargin),
            vtableSlot(&I::topMargin),
            vtableSlot(&I::setTopMargin),
            vtableSlot(&I::bottomMargin),
            vtableSlot(&I::setBottomMargin),
            vtableSlot(&I::orientation),
            vtableSlot(&I::setOrientation),
            vtableSlot(&I::printerMode),
            vtableSlot(&I::setPrinterMode),
            vtableSlot(&I::fullJustifyAlign),
            vtableSlot(&I::setFullJustifyAlign),
        };
        for (int row = 0; row < slots.size(); ++row)
            QCOMPARE(slots.at(row), row + 2);
    }
};

QTEST_APPLESS_MAIN(TestSettingsInterface)
#include "tst_settings_interface.moc"
