#include <QtTest>
#include <atomic>

#include "settings/printersettings.h"
#include "settingsitems.h"
#include "settingsreset.h"
#include "threads.h"

using namespace settingsreset;

namespace {

using Settings = PrinterSettings;

// A printer of which everything is supported under the name "able".
class AbleSettings : public PrinterSettings
{
public:
    bool paperLoopSupported() const override { return paperLoopSupported(printerId()); }
    bool paperLoopSupported(const QString &name) const override { return name == "able"; }
    bool checkMoveSettingsSupported() const override
    {
        return checkMoveSettingsSupported(printerId());
    }
    bool checkMoveSettingsSupported(const QString &name) const override { return name == "able"; }
};

int stored(const QString &key)
{
    return valueOf(Settings().toList(), key).toInt();
}

}  // namespace

class TestPrinterSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Has to stay the first: it looks at the process as it starts. So nothing is reset in front of
    // a test, only behind it.
    void startValues()
    {
        Settings settings;
        QCOMPARE(settings.printerType(), 0U);
        QVERIFY(settings.printerId().isNull());
        QCOMPARE(settings.emptyStringsAtEnd(), 5);
        QCOMPARE(settings.spacessBeforeString(), 0);
        QCOMPARE(stored("paperLoopFlag"), 0);
        QCOMPARE(stored("moveCheckTo"), 50);
        QCOMPARE(settings.charactersMode(), Settings::CharactersAsWritten);
        QCOMPARE(settings.portLoggingEnabled(), false);
        QCOMPARE(settings.baseFiscalFont(), 1);
        QCOMPARE(settings.defSymbolsPerLine(), 0);
        QVERIFY(settings.port());
        QVERIFY(settings.port()->name().isEmpty());
        QVERIFY(IPrintDeviceSettings::printDeviceSettings().isNull());
    }

    void cleanup()
    {
        IPrintDeviceSettings::setPrintDeviceSettings({});
        resetPrinterSettings();
    }

    void everyObjectIsAViewOnTheSameValues()
    {
        Settings writer;
        writer.setPrinterType(2);
        writer.setPrinterId("till");
        writer.setEmptyStringsAtEnd(9);
        writer.setSpacesBeforeString(3);
        writer.setCharactersMode(Settings::CharactersLowerCase);
        writer.setPortLoggingEnabled(true);
        writer.setBaseFiscalFont(4);
        writer.setDefSymbolsPerLine(42);

        Settings reader;
        QCOMPARE(reader.printerType(), 2U);
        QCOMPARE(reader.printerId(), QString("till"));
        QCOMPARE(reader.emptyStringsAtEnd(), 9);
        QCOMPARE(reader.spacessBeforeString(), 3);
        QCOMPARE(reader.charactersMode(), Settings::CharactersLowerCase);
        QCOMPARE(reader.portLoggingEnabled(), true);
        QCOMPARE(reader.baseFiscalFont(), 4);
        QCOMPARE(reader.defSymbolsPerLine(), 42);
    }

    void typeAboveTwoIsNoneFromTheSetterAndKeptFromAnItem()
    {
        Settings settings;
        settings.setPrinterType(2);
        QCOMPARE(settings.printerType(), 2U);
        settings.setPrinterType(3);
        QCOMPARE(settings.printerType(), 0U);
        QVERIFY(settings.setValue(item("PRINTER", "printerType", 3)));
        QCOMPARE(settings.printerType(), 3U);
    }

    void unknownTypeAsksThisObjectForItsCharactersPerLine()
    {
        class Wide : public PrinterSettings
        {
        public:
            int defSymbolsPerLine() override { return 77; }
        };
        Wide settings;
        QCOMPARE(settings.getDefSymbolsPerLine(), 77);
        QVERIFY(settings.setValue(item("PRINTER", "printerType", 3)));
        QCOMPARE(settings.getDefSymbolsPerLine(), 77);
        PrinterSettings plain;
        plain.setDefSymbolsPerLine(33);
        QCOMPARE(plain.getDefSymbolsPerLine(), 33);
    }

    void settersStoreUnknownNumbers()
    {
        Settings settings;
        settings.setCharactersMode(Settings::ECharactersMode(7));
        settings.setPaperLoopFlag(EPaperLoopFlag(7));
        QCOMPARE(int(settings.charactersMode()), 7);
        QCOMPARE(stored("characterMode"), 7);
        QCOMPARE(stored("paperLoopFlag"), 7);
    }

    void sectionNameIsEscaped()
    {
        QCOMPARE(Settings().printerNameToSection("a<b>&\"c\""),
                 QString("a&lt;b&gt;&amp;&quot;c&quot;"));
    }

    void unsupportedValuesReadAsZeroAndAreExported()
    {
        Settings settings;
        settings.setPaperLoopFlag(PaperLoopSecond);
        settings.setCheckMovingTo(-7);
        QCOMPARE(settings.paperLoopSupported(), false);
        QCOMPARE(settings.paperLoopSupported("able"), false);
        QCOMPARE(settings.checkMoveSettingsSupported(), false);
        QCOMPARE(settings.checkMoveSettingsSupported("able"), false);
        QCOMPARE(settings.paperLoopFlag(), PaperLoopNone);
        QCOMPARE(settings.paperLoopFlag("able"), PaperLoopNone);
        QCOMPARE(int(settings.moveCheckTo()), 0);
        QCOMPARE(int(settings.moveCheckTo("able")), 0);
        QCOMPARE(stored("paperLoopFlag"), 2);
        QCOMPARE(stored("moveCheckTo"), -7);
    }

    void supportedValuesReadBack()
    {
        AbleSettings settings;
        settings.setPaperLoopFlag(PaperLoopSecond);
        settings.setCheckMovingTo(-7);
        QCOMPARE(settings.paperLoopFlag("able"), PaperLoopSecond);
        QCOMPARE(int(settings.moveCheckTo("able")), -7);
        QCOMPARE(settings.paperLoopFlag(), PaperLoopNone);
        QCOMPARE(int(settings.moveCheckTo()), 0);
        settings.setPrinterId("able");
        QCOMPARE(settings.paperLoopFlag(), PaperLoopSecond);
        QCOMPARE(int(settings.moveCheckTo()), -7);
        QCOMPARE(settings.paperLoopFlag("weak"), PaperLoopNone);
        QCOMPARE(int(settings.moveCheckTo("weak")), 0);
    }

    void namedSettersDifferWhenNotSupported()
    {
        AbleSettings settings;
        settings.setPaperLoopFlag(PaperLoopSecond, "able");
        settings.setCheckMovingTo("able", 20);
        QCOMPARE(stored("paperLoopFlag"), 2);
        QCOMPARE(stored("moveCheckTo"), 20);
        settings.setPaperLoopFlag(PaperLoopFirst, "weak");
        settings.setCheckMovingTo("weak", 30);
        QCOMPARE(stored("paperLoopFlag"), 0);
        QCOMPARE(stored("moveCheckTo"), 20);
    }

    void listHoldsTheSectionThenThePort()
    {
        Settings settings;
        QVERIFY(settings.setValue(item("PRINTER", "printerType", 1)));
        settings.setPrinterId("till");
        settings.setCharactersMode(Settings::CharactersUpperCase);
        settings.setPortLoggingEnabled(true);
        settings.port("other");
        QList<QVariant> expected = sectionItems() + portItems("till");
        expected = withValue(expected, "printerType", 1);
        expected = withValue(expected, "printerName", "till");
        expected = withValue(expected, "characterMode", 1);
        expected = withValue(expected, "enablePortLogging", 1);
        const QList<QVariant> list = settings.toList();
        QCOMPARE(list, expected);
        for (int row = 0; row < list.size(); ++row)
            QCOMPARE(list.at(row).toMap().value("value").userType(),
                     expected.at(row).toMap().value("value").userType());
        QCOMPARE(settings.port()->name(), QString("till"));
    }

    void listFillsTheSettings()
    {
        Settings settings;
        settings.setPrinterType(2);
        settings.setPrinterId("till");
        settings.setEmptyStringsAtEnd(1);
        settings.setPaperLoopFlag(PaperLoopFirst);
        hearth::RS232Settings port("till");
        port.setText("text");
        settings.setPortSettings("till", port);
        const QList<QVariant> list = settings.toList();
        resetPrinterSettings();
        QVERIFY(settings.toList() != list);
        settings.setList(list);
        QCOMPARE(settings.toList(), list);
    }

    void itemOfTheDefaultSection_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QVariant>("read");

        QTest::newRow("type without a range test") << "printerType" << QVariant(9) << QVariant(9);
        QTest::newRow("negative type is no number") << "printerType" << QVariant(-1) << QVariant(0);
        QTest::newRow("name") << "printerName" << QVariant("Касса") << QVariant("Касса");
        QTest::newRow("lines at the end") << "emptyStringsAtEnd" << QVariant("12") << QVariant(12);
        QTest::newRow("no number is 0") << "emptyStringsAtEnd" << QVariant("many") << QVariant(0);
        QTest::newRow("beyond int is 0")
            << "emptyStringsAtEnd" << QVariant("4294967297") << QVariant(0);
        QTest::newRow("whole double") << "emptyStringsAtEnd" << QVariant(7.0) << QVariant(7);
        QTest::newRow("spaces") << "spacesBeforeString" << QVariant(-4) << QVariant(-4);
        QTest::newRow("loop 1") << "paperLoopFlag" << QVariant(1) << QVariant(1);
        QTest::newRow("loop 2") << "paperLoopFlag" << QVariant(2) << QVariant(2);
        QTest::newRow("loop 3 is 0") << "paperLoopFlag" << QVariant(3) << QVariant(0);
        QTest::newRow("loop 7 is 0") << "paperLoopFlag" << QVariant(7) << QVariant(0);
        QTest::newRow("loop -1 is 0") << "paperLoopFlag" << QVariant(-1) << QVariant(0);
        QTest::newRow("movement") << "moveCheckTo" << QVariant(-128) << QVariant(-128);
        QTest::newRow("movement is cut to a byte")
            << "moveCheckTo" << QVariant(200) << QVariant(-56);
        QTest::newRow("movement is cut to a byte again")
            << "moveCheckTo" << QVariant(257) << QVariant(1);
        QTest::newRow("upper case") << "characterMode" << QVariant(1) << QVariant(1);
        QTest::newRow("lower case") << "characterMode" << QVariant("2") << QVariant(2);
        QTest::newRow("unknown case is 0") << "characterMode" << QVariant(3) << QVariant(0);
        QTest::newRow("logging") << "enablePortLogging" << QVariant(5) << QVariant(1);
        QTest::newRow("logging off") << "enablePortLogging" << QVariant(0) << QVariant(0);
        QTest::newRow("a truth value is no number")
            << "enablePortLogging" << QVariant(true) << QVariant(0);
        QTest::newRow("font") << "baseFiscFont" << QVariant(3) << QVariant(3);
        QTest::newRow("characters") << "defSymPerLine" << QVariant(-1) << QVariant(-1);
    }

    void itemOfTheDefaultSection()
    {
        QFETCH(QString, key);
        QFETCH(QVariant, value);
        QFETCH(QVariant, read);
        for (const bool asList : {false, true}) {
            resetPrinterSettings();
            Settings settings;
            settings.setPaperLoopFlag(PaperLoopFirst);
            settings.setCharactersMode(Settings::CharactersUpperCase);
            const auto one = item("PRINTER", key, value);
            if (asList)
                settings.setList({one});
            else
                QVERIFY(settings.setValue(one));
            QCOMPARE(valueOf(settings.toList(), key), read);
        }
    }

    void itemWithoutValueIsEmptyOrZero_data()
    {
        QTest::addColumn<QString>("key");
        for (const QString &key : keysOf(sectionItems()))
            QTest::newRow(qPrintable(key)) << key;
    }

    void itemWithoutValueIsEmptyOrZero()
    {
        QFETCH(QString, key);
        Settings settings;
        const QStringList keys = keysOf(sectionItems());
        for (const QString &other : keys)
            QVERIFY(settings.setValue(item("PRINTER", other, 1)));
        QVERIFY(settings.setValue({{"group", "PRINTER"}, {"key", key}}));
        const QList<QVariant> list = settings.toList();
        for (const QVariant &one : list.mid(0, keys.size()))
            QCOMPARE(one.toMap().value("value").toString(), keyOf(one) != key      ? "1"
                                                            : key == "printerName" ? ""
                                                                                   : "0");
    }

    void itemsThatAreNotTaken_data()
    {
        QTest::addColumn<QMap<QString, QVariant>>("refused");

        QTest::newRow("empty") << QMap<QString, QVariant>();
        QTest::newRow("no group") << QMap<QString, QVariant>{{"key", "emptyStringsAtEnd"},
                                                             {"value", 1}};
        QTest::newRow("unknown key") << item("PRINTER", "EmptyStringsAtEnd", 1);
        QTest::newRow("no key") << QMap<QString, QVariant>{{"group", "PRINTER"}, {"value", 1}};
        QTest::newRow("section in lower case") << item("printer", "emptyStringsAtEnd", 1);
        QTest::newRow("other printer") << item("other", "baudRate", 1200);
        QTest::newRow("empty group while a name is set") << item("", "baudRate", 1200);
        QTest::newRow("setting in the printer's group") << item("till", "emptyStringsAtEnd", 1);
        QTest::newRow("bad value of the port") << item("till", "parity", 77);
    }

    void itemsThatAreNotTaken()
    {
        using Item = QMap<QString, QVariant>;
        QFETCH(Item, refused);
        Settings settings;
        settings.setPrinterId("till");
        const QList<QVariant> before = settings.toList();
        QVERIFY(!settings.setValue(refused));
        QCOMPARE(settings.toList(), before);
        settings.setList({refused, QVariant(), QVariant(5), QVariant("text")});
        QCOMPARE(settings.toList(), before);
    }

    void emptyGroupIsThePrintersWhileItHasNoName()
    {
        Settings settings;
        QVERIFY(settings.setValue(item("", "baudRate", 1200)));
        QCOMPARE(settings.port()->portSettings().baudRate(), 1200);
    }

    void nameHasToPrecedeItsGroupInAList()
    {
        Settings settings;
        settings.setList({item("till", "baudRate", 1200), item("PRINTER", "printerName", "till")});
        QCOMPARE(settings.port()->portSettings().baudRate(), 9600);
        settings.setList({item("PRINTER", "printerName", "bar"), item("bar", "baudRate", 1200),
                          item("till", "baudRate", 4800)});
        QCOMPARE(settings.port()->portSettings().baudRate(), 1200);
    }

    void printerNamedAsTheSectionKeepsTheSection()
    {
        Settings settings;
        settings.setPrinterId("PRINTER");
        QVERIFY(!settings.setValue(item("PRINTER", "baudRate", 1200)));
        QVERIFY(settings.setValue(item("PRINTER", "emptyStringsAtEnd", 2)));
        QCOMPARE(settings.port()->portSettings().baudRate(), 9600);
    }

    void settingsObjectOfTheProcess()
    {
        const QSharedPointer<IPrintDeviceSettings> settings(new PrinterSettings);
        IPrintDeviceSettings::setPrintDeviceSettings(settings);
        QCOMPARE(IPrintDeviceSettings::printDeviceSettings(), settings);
        IPrintDeviceSettings::setPrintDeviceSettings({});
        QVERIFY(IPrintDeviceSettings::printDeviceSettings().isNull());
    }

    void replacedObjectMayAskForTheSettingsWhileItDies()
    {
        class Asking : public PrinterSettings
        {
        public:
            explicit Asking(bool &died) : m_died(died) {}
            ~Asking() override { m_died = IPrintDeviceSettings::printDeviceSettings().isNull(); }

        private:
            bool &m_died;
        };
        bool died = false;
        IPrintDeviceSettings::setPrintDeviceSettings(
            QSharedPointer<IPrintDeviceSettings>(new Asking(died)));
        IPrintDeviceSettings::setPrintDeviceSettings({});
        QVERIFY(died);
    }

    // Says little by itself; under ThreadSanitizer it proves that every access is guarded.
    void anyThreadMayUseAnything()
    {
        constexpr int threads = 4;
        constexpr int rounds = 200;
        std::atomic<int> wrong{0};
        runOnThreads(threads, [&wrong](int thread) {
            for (int round = 0; round < rounds; ++round)
                useEverything(QString("printer %1").arg(thread), round, wrong);
        });
        QCOMPARE(wrong.load(), 0);
    }

private:
    static void useEverything(const QString &name, int round, std::atomic<int> &wrong)
    {
        AbleSettings settings;
        settings.setPrinterType(unsigned(round) % 3);
        settings.setPrinterId(name);
        settings.setEmptyStringsAtEnd(round);
        settings.setSpacesBeforeString(round);
        settings.setPaperLoopFlag(PaperLoopFirst);
        settings.setPaperLoopFlag(PaperLoopSecond, "able");
        settings.setCheckMovingTo(1);
        settings.setCheckMovingTo("able", 2);
        settings.setCharactersMode(Settings::CharactersUpperCase);
        settings.setPortLoggingEnabled(round % 2 != 0);
        settings.setBaseFiscalFont(round);
        settings.setDefSymbolsPerLine(round);
        hearth::RS232Settings source(name);
        source.setText(name);
        settings.setPortSettings(name, source);
        settings.setList(settings.toList());
        settings.setValue(item("PRINTER", "printerName", name));
        settings.setValue(item(name, "baudRate", 1200));
        IPrintDeviceSettings::setPrintDeviceSettings(
            QSharedPointer<IPrintDeviceSettings>(new PrinterSettings));
        const auto installed = IPrintDeviceSettings::printDeviceSettings();

        const bool sane =
            settings.printerType() <= 2 && settings.printerId().startsWith("printer ") &&
            settings.port() && settings.port(name)->text().startsWith("printer ") && installed &&
            settings.emptyStringsAtEnd() < 1000 && settings.spacessBeforeString() < 1000 &&
            settings.paperLoopFlag("able") != PaperLoopNone &&
            settings.paperLoopFlag() == PaperLoopNone && settings.moveCheckTo("able") != 0 &&
            settings.moveCheckTo() == 0 && settings.baseFiscalFont() < 1000 &&
            settings.defSymbolsPerLine() < 1000 &&
            settings.charactersMode() == Settings::CharactersUpperCase &&
            installed->printerId().startsWith("printer ");
        settings.portLoggingEnabled();
        if (!sane)
            ++wrong;
    }
};

QTEST_APPLESS_MAIN(TestPrinterSettings)
#include "tst_printersettings.moc"
