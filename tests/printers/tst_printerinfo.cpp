#include <QJsonDocument>
#include <QtTest>

#include "logcatcher.h"
#include "printers/printerinfo.h"

namespace {

struct Flag
{
    const char *readKey;
    const char *writtenKey;
    bool (PrinterInfo::*get)() const;
    void (PrinterInfo::*set)(bool);
};

const Flag flags[] = {
    {"doubleWidth", "doubleWidth", &PrinterInfo::doubleWidth, &PrinterInfo::setDoubleWidth},
    {"doubleHeight", "doubleHeight", &PrinterInfo::doubleHeight, &PrinterInfo::setDoubleHeight},
    {"bold", "bold", &PrinterInfo::bold, &PrinterInfo::setBold},
    {"italic", "italic", &PrinterInfo::italic, &PrinterInfo::setItalic},
    {"underline", "underline", &PrinterInfo::underline, &PrinterInfo::setUnderline},
    {"inversion", "inversion", &PrinterInfo::inversion, &PrinterInfo::setInversion},
    {"alignCenter", "alignCenter", &PrinterInfo::alignCenter, &PrinterInfo::setAlignCenter},
    {"alignRight", "alignRight", &PrinterInfo::alignRight, &PrinterInfo::setAlignRight},
    {"alignLeft", "alignLeft", &PrinterInfo::alignLeft, &PrinterInfo::setAlignLeft},
    {"alignJustify", "alignJustify", &PrinterInfo::alignJustify, &PrinterInfo::setAlignJustify},
    {"customImages", "customSymbols", &PrinterInfo::customSymbols, &PrinterInfo::setCustomSymbols},
    {"customImages", "customImages", &PrinterInfo::customImages, &PrinterInfo::setCustomImages},
    {"lineSpacing", "lineSpacing", &PrinterInfo::lineSpacing, &PrinterInfo::setLineSpacing},
    {"ejection_", "ejection", &PrinterInfo::ejection, &PrinterInfo::setEjection},
    {"retraction", "retraction", &PrinterInfo::retraction, &PrinterInfo::setRetraction},
    {"retractTimeout", "retractTimeout", &PrinterInfo::retractTimeout,
     &PrinterInfo::setRetractTimeout},
    {"paperLoopSupported", "paperLoopSupported", &PrinterInfo::paperLoopSupported,
     &PrinterInfo::setPaperLoopSupported},
    {"checkMoveSettings", "checkMoveSettings", &PrinterInfo::checkMoveSettingsSupported,
     &PrinterInfo::setCheckMoveSettingsSupported},
};

PaperInfo paper(int id, int width = 0)
{
    PaperInfo info;
    info.setId(static_cast<signed char>(id));
    info.setWidth(static_cast<short>(width));
    return info;
}

FontInfo font(int id)
{
    FontInfo info;
    info.setId(static_cast<signed char>(id));
    return info;
}

FontInfo unusualFont()
{
    FontInfo info;
    info.setId(2);
    info.setWidth(200);
    info.setHeight(255);
    info.setMwidth(1.25);
    info.setMheight(3.5);
    info.setMonospace(false);
    info.setCustomSymbols(true);
    info.setCustomWidth(8);
    info.setCustomHeight(16);
    return info;
}

PaperInfo unusualPaper()
{
    PaperInfo info = paper(3, 80);
    info.setHeight(-1);
    info.setPointsToLine(576);
    info.setCaption("80 мм");
    return info;
}

template <typename Record>
Record changed(const Record &record, void (*change)(Record &))
{
    Record copy = record;
    change(copy);
    return copy;
}

}  // namespace

class TestPrinterInfo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fontDefaults()
    {
        const FontInfo info;
        QCOMPARE(int(info.id()), -1);
        QCOMPARE(int(info.width()), 0);
        QCOMPARE(int(info.height()), 0);
        QCOMPARE(info.mwidth(), 0.0);
        QCOMPARE(info.mheight(), 0.0);
        QCOMPARE(info.monospace(), true);
        QCOMPARE(info.customSymbols(), false);
        QCOMPARE(int(info.customWidth()), 0);
        QCOMPARE(int(info.customHeight()), 0);
        QCOMPARE(info.idAsString(), QString("-1"));
    }

    void fontMapHasNoId()
    {
        const QMap<QString, QVariant> expected{
            {"width", 200},       {"height", 255},         {"mwidth", 1.25},   {"mheight", 3.5},
            {"monospace", false}, {"customSymbols", true}, {"customWidth", 8}, {"customHeight", 16},
        };
        QCOMPARE(unusualFont().toMap(), expected);
        QCOMPARE(unusualFont().idAsString(), QString("2"));
        FontInfo plain = unusualFont();
        plain.setCustomSymbols(false);
        QVERIFY(!plain.toMap().contains("customWidth"));
        QVERIFY(!plain.toMap().contains("customHeight"));
        QCOMPARE(plain.toMap().size(), 6);
    }

    void fontReadsItsMap()
    {
        QMap<QString, QVariant> map = unusualFont().toMap();
        map.insert("id", 2);
        FontInfo read;
        read.setMap(map);
        QVERIFY(read == unusualFont());
        map.insert("customSymbols", false);
        read.setMap(map);
        QCOMPARE(int(read.customWidth()), 0);
        QCOMPARE(int(read.customHeight()), 0);
    }

    void fontNumbersAreCut()
    {
        FontInfo read;
        read.setMap({{"id", 130},
                     {"width", 256},
                     {"height", 300},
                     {"customSymbols", true},
                     {"customWidth", -1},
                     {"customHeight", 511}});
        QCOMPARE(int(read.id()), -126);
        QCOMPARE(int(read.width()), 0);
        QCOMPARE(int(read.height()), 44);
        QCOMPARE(int(read.customWidth()), 255);
        QCOMPARE(int(read.customHeight()), 255);
    }

    void emptyMapClearsAFont()
    {
        FontInfo read = unusualFont();
        read.setMap({});
        FontInfo expected;
        expected.setId(0);
        expected.setMonospace(false);
        QVERIFY(read == expected);
    }

    void everyFontFieldIsCompared()
    {
        const FontInfo base = unusualFont();
        QVERIFY(base == unusualFont());
        QVERIFY(!(base != unusualFont()));
        const auto differs = [&base](void (*change)(FontInfo &)) {
            return changed(base, change) != base;
        };
        QVERIFY(differs([](FontInfo &info) { info.setId(1); }));
        QVERIFY(differs([](FontInfo &info) { info.setWidth(1); }));
        QVERIFY(differs([](FontInfo &info) { info.setHeight(1); }));
        QVERIFY(differs([](FontInfo &info) { info.setMwidth(1); }));
        QVERIFY(differs([](FontInfo &info) { info.setMheight(1); }));
        QVERIFY(differs([](FontInfo &info) { info.setMonospace(true); }));
        QVERIFY(differs([](FontInfo &info) { info.setCustomSymbols(false); }));
        QVERIFY(differs([](FontInfo &info) { info.setCustomWidth(1); }));
        QVERIFY(differs([](FontInfo &info) { info.setCustomHeight(1); }));
    }

    void paperDefaults()
    {
        const PaperInfo info;
        QCOMPARE(int(info.id()), -1);
        QCOMPARE(int(info.width()), 0);
        QCOMPARE(int(info.height()), 0);
        QCOMPARE(info.pointsToLine(), 0);
        QVERIFY(info.caption().isEmpty());
        QCOMPARE(info.idAsString(), QString("-1"));
    }

    void paperMapHasNoId()
    {
        const QMap<QString, QVariant> expected{
            {"width", 80}, {"height", -1}, {"pointsToLine", 576}, {"caption", "80 мм"}};
        QCOMPARE(unusualPaper().toMap(), expected);
        QCOMPARE(unusualPaper().idAsString(), QString("3"));
    }

    void paperReadsItsMap()
    {
        QMap<QString, QVariant> map = unusualPaper().toMap();
        map.insert("id", 3);
        PaperInfo read;
        read.setMap(map);
        QVERIFY(read == unusualPaper());
        read.setMap({});
        QVERIFY(read == paper(0));
    }

    void paperNumbersAreCut()
    {
        PaperInfo read;
        read.setMap({{"id", 257}, {"width", 65537}, {"height", -1.0}, {"pointsToLine", -5}});
        QCOMPARE(int(read.id()), 1);
        QCOMPARE(int(read.width()), 1);
        QCOMPARE(int(read.height()), -1);
        QCOMPARE(read.pointsToLine(), -5);
    }

    void everyPaperFieldIsCompared()
    {
        const PaperInfo base = unusualPaper();
        QVERIFY(base == unusualPaper());
        QVERIFY(!(base != unusualPaper()));
        const auto differs = [&base](void (*change)(PaperInfo &)) {
            return changed(base, change) != base;
        };
        QVERIFY(differs([](PaperInfo &info) { info.setId(1); }));
        QVERIFY(differs([](PaperInfo &info) { info.setWidth(1); }));
        QVERIFY(differs([](PaperInfo &info) { info.setHeight(1); }));
        QVERIFY(differs([](PaperInfo &info) { info.setPointsToLine(1); }));
        QVERIFY(differs([](PaperInfo &info) { info.setCaption("1"); }));
    }

    void printerDefaults()
    {
        const PrinterInfo info;
        QVERIFY(info.id().isEmpty());
        QVERIFY(info.name().isEmpty());
        QCOMPARE(info.interface(), QString("serial"));
        for (const Flag &flag : flags)
            QCOMPARE((info.*flag.get)(), false);
        QCOMPARE(info.resolution(), 0);
        QVERIFY(info.paperTypes().isEmpty());
        QVERIFY(info.fontTypes().isEmpty());
    }

    void everyFlagHasItsKeys()
    {
        for (const Flag &flag : flags) {
            PrinterInfo written;
            (written.*flag.set)(true);
            QVERIFY((written.*flag.get)());
            int on = 0;
            for (const Flag &other : flags) {
                QCOMPARE(written.toMap().value(other.writtenKey).userType(), int(QMetaType::Bool));
                on += written.toMap().value(other.writtenKey).toBool() ? 1 : 0;
            }
            QCOMPARE(on, 1);
            QVERIFY(written.toMap().value(flag.writtenKey).toBool());

            PrinterInfo read;
            read.setMap({{flag.readKey, true}});
            for (const Flag &other : flags)
                QCOMPARE((read.*other.get)(), qstrcmp(other.readKey, flag.readKey) == 0);
        }
    }

    void writtenMapHasExactlyItsKeys()
    {
        PrinterInfo info;
        info.setId("X");
        info.setName("Икс");
        info.setInterface("COM");
        info.setResolution(203);
        info.addPaperType(unusualPaper());
        info.addFontType(unusualFont());
        const QMap<QString, QVariant> map = info.toMap();
        QCOMPARE(map.size(), 6 + int(std::size(flags)));
        QCOMPARE(map.value("id"), QVariant("X"));
        QCOMPARE(map.value("name"), QVariant("Икс"));
        QCOMPARE(map.value("interface"), QVariant("COM"));
        QCOMPARE(map.value("resolution"), QVariant(203));
        QCOMPARE(map.value("paperTypes").toMap(), (QVariantMap{{"3", unusualPaper().toMap()}}));
        QCOMPARE(map.value("fontTypes").toMap(), (QVariantMap{{"2", unusualFont().toMap()}}));

        PrinterInfo read;
        read.setMap(map);
        QVERIFY(read == info);
        QVERIFY(read.paperTypes() == info.paperTypes());
        QVERIFY(read.fontTypes() == info.fontTypes());
    }

    void writtenMapLosesEjectionAndCustomSymbols()
    {
        PrinterInfo info;
        info.setEjection(true);
        info.setCustomSymbols(true);
        PrinterInfo read;
        read.setMap(info.toMap());
        QCOMPARE(read.ejection(), false);
        QCOMPARE(read.customSymbols(), false);
        info.setCustomSymbols(false);
        info.setCustomImages(true);
        read.setMap(info.toMap());
        QCOMPARE(read.customSymbols(), true);
        QCOMPARE(read.customImages(), true);
    }

    void emptyMapClearsEverything()
    {
        PrinterInfo info;
        info.setId("X");
        info.setName("X");
        info.setResolution(5);
        for (const Flag &flag : flags)
            (info.*flag.set)(true);
        info.addPaperType(unusualPaper());
        info.addFontType(unusualFont());
        info.setMap({{"plainText", true}});
        PrinterInfo expected;
        expected.setInterface("");
        QVERIFY(info == expected);
        QVERIFY(info.interface().isEmpty());
        QVERIFY(info.paperTypes().isEmpty());
        QVERIFY(info.fontTypes().isEmpty());
    }

    void paperAndFontsDontTakePartInTheComparison()
    {
        PrinterInfo first;
        PrinterInfo second;
        first.addPaperType(unusualPaper());
        second.addFontType(unusualFont());
        QVERIFY(first == second);
        QVERIFY(!(first != second));
    }

    void everyOtherFieldIsCompared()
    {
        const PrinterInfo base;
        for (const Flag &flag : flags) {
            PrinterInfo other;
            (other.*flag.set)(true);
            QVERIFY(other != base);
        }
        const auto differs = [&base](void (*change)(PrinterInfo &)) {
            return changed(base, change) != base;
        };
        QVERIFY(differs([](PrinterInfo &info) { info.setId("x"); }));
        QVERIFY(differs([](PrinterInfo &info) { info.setName("x"); }));
        QVERIFY(differs([](PrinterInfo &info) { info.setInterface("x"); }));
        QVERIFY(differs([](PrinterInfo &info) { info.setResolution(1); }));
    }

    void paperTypeIsClampedToTheIds_data()
    {
        QTest::addColumn<QList<int>>("ids");
        QTest::addColumn<int>("asked");
        QTest::addColumn<int>("found");

        QTest::newRow("no paper") << QList<int>{} << 0 << -1;
        QTest::newRow("exact") << QList<int>{0, 1} << 1 << 1;
        QTest::newRow("above") << QList<int>{0, 1} << 5 << 1;
        QTest::newRow("below") << QList<int>{0, 1} << -3 << 0;
        QTest::newRow("gap") << QList<int>{0, 2} << 1 << -1;
        QTest::newRow("one paper, below") << QList<int>{4} << 0 << 4;
        QTest::newRow("one paper, above") << QList<int>{4} << 100000 << 4;
        QTest::newRow("negative ids") << QList<int>{-5, -2} << -9 << -5;
    }

    void paperTypeIsClampedToTheIds()
    {
        QFETCH(QList<int>, ids);
        QFETCH(int, asked);
        QFETCH(int, found);
        PrinterInfo info;
        for (const int id : ids)
            info.addPaperType(paper(id));
        QCOMPARE(int(info.paperType(asked).id()), found);
    }

    void paperOfTheSameIdIsReplacedAndFontsAreAppended()
    {
        PrinterInfo info;
        info.addPaperType(paper(1, 10));
        info.addPaperType(paper(1, 20));
        QCOMPARE(info.paperTypes().size(), 1);
        QCOMPARE(int(info.paperTypes().value(1).width()), 20);
        info.addFontType(font(1));
        info.addFontType(font(1));
        QCOMPARE(info.fontTypes().size(), 2);
        info.setFontTypes({font(7)});
        QCOMPARE(info.fontTypes().size(), 1);
        info.setPaperTypes({{9, paper(2)}});
        QCOMPARE(info.paperTypes().keys(), QList<int>{9});
    }

    void idComesFromTheKeyInTheOrderOfText()
    {
        PrinterInfo info;
        info.addFontType(font(5));
        info.addPaperType(paper(5));
        const QVariantMap inner{{"id", 77}, {"width", 4}};
        info.fontFromMap({{"2", inner}, {"10", inner}, {"1", inner}});
        QCOMPARE(info.fontTypes().size(), 3);
        QCOMPARE(int(info.fontTypes().at(0).id()), 1);
        QCOMPARE(int(info.fontTypes().at(1).id()), 10);
        QCOMPARE(int(info.fontTypes().at(2).id()), 2);
        QCOMPARE(int(info.fontTypes().at(2).width()), 4);
        info.paperFromMap({{"2", inner}, {"x", inner}, {"-3", QVariantMap()}});
        QCOMPARE(info.paperTypes().keys(), (QList<int>{0, 2}));
        QCOMPARE(int(info.paperTypes().value(2).width()), 4);
    }

    void listMakesOneRecordPerElement()
    {
        const QList<PrinterInfo> records = PrinterInfo::fromList(
            {QVariantMap{{"id", "a"}, {"bold", true}}, QVariant(), QVariantMap{{"id", "b"}}});
        QCOMPARE(records.size(), 3);
        QCOMPARE(records.at(0).id(), QString("a"));
        QVERIFY(records.at(0).bold());
        QVERIFY(records.at(1).id().isEmpty());
        QVERIFY(!records.at(1).bold());
        QCOMPARE(records.at(2).id(), QString("b"));
        QVERIFY(PrinterInfo::fromList({}).isEmpty());
    }

    void jsonArrayIsRead()
    {
        const QList<PrinterInfo> records = PrinterInfo::fromJson(
            R"([{"id": "a", "resolution": 203, "paperTypes": {"1": {"height": -1}}}, 5])");
        QCOMPARE(records.size(), 2);
        QCOMPARE(records.at(0).resolution(), 203);
        QCOMPARE(int(records.at(0).paperType(1).height()), -1);
        QVERIFY(records.at(1).id().isEmpty());
    }

    void jsonThatIsNoArrayGivesNothing()
    {
        const LogCatcher log;
        QVERIFY(PrinterInfo::fromJson("{\"id\": \"a\"}").isEmpty());
        QVERIFY(PrinterInfo::fromJson("[]").isEmpty());
        QCOMPARE(log.lines(), QStringList());
    }

    void textThatIsNoJsonIsLoggedInTheParsersWords()
    {
        for (const QByteArray text : {"", "[1, 2", "[{\"id\": }]", "[1] 2", "\xff"}) {
            QJsonParseError error;
            QJsonDocument::fromJson(text, &error);
            QVERIFY(error.error != QJsonParseError::NoError);
            const LogCatcher log;
            QVERIFY(PrinterInfo::fromJson(text).isEmpty());
            QCOMPARE(log.lines(), QStringList("default critical " + error.errorString()));
        }
    }

    void missingFileIsLogged()
    {
        const LogCatcher log;
        QVERIFY(PrinterInfo::fromFile("/nonexistent/printers.info").isEmpty());
        QCOMPARE(log.lines(), QStringList("default critical No such file or directory"));
    }

    void fileThatIsNoJsonIsLoggedOnce()
    {
        QTemporaryFile file;
        QVERIFY(file.open());
        file.write("[1, 2");
        file.close();
        QJsonParseError error;
        QJsonDocument::fromJson("[1, 2", &error);
        const LogCatcher log;
        QVERIFY(PrinterInfo::fromFile(file.fileName()).isEmpty());
        QCOMPARE(log.lines(), QStringList("default critical " + error.errorString()));
    }

    void fileIsRead()
    {
        QTemporaryFile file;
        QVERIFY(file.open());
        file.write(R"([{"id": "a"}])");
        file.close();
        QCOMPARE(PrinterInfo::fromFile(file.fileName()).size(), 1);
    }
};

QTEST_APPLESS_MAIN(TestPrinterInfo)
#include "tst_printerinfo.moc"
