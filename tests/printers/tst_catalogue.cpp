#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QResource>
#include <QtTest>
#include <atomic>

#include "printers/printerinfo.h"
#include "printers/textprintermodels.h"
#include "threads.h"

int qInitResources_devinfo();

namespace {

// What people know of the models, written down a second time: italic, inversion, centred, right,
// left, own symbols, images, line spacing, retraction, ejection, retraction after a time.
struct Model
{
    const char *id;
    const char *name;
    const char *flags;
};

constexpr Model models[] = {
    {"CUSTOM_VKP_80", "Custom VKP-80", "- Y Y Y Y Y Y Y Y Y -"},
    {"CUSTOM_TG_2480_H", "Custom TG 2480 H (TG 2460 H)", "- Y Y Y Y Y Y Y Y Y -"},
    {"CUSTOM_TG_2480_SE", "Custom TG 2480 (TG 2460 SE)", "- Y Y Y Y Y Y Y Y Y -"},
    {"CITIZEN_PPU_700", "Citizen PPU-700", "- Y Y Y Y Y - Y Y - Y"},
    {"CITIZEN_CBM_1000", "Citizen CBM-1000", "- Y Y Y Y Y - Y - - -"},
    {"CITIZEN_CTS_2000", "Citizen CT-S2000", "- Y Y Y Y Y - Y Y - Y"},
    {"AV_268", "AV-268", "- Y - - - Y - Y - - -"},
    // The second word is a Latin letter.
    {"GENERAL_EPSON_PROTOCOL", "Принтер \x63 EPSON протоколом", "- - - - - - - Y - - -"},
    {"TSP-TUP", "Star TSP 600/700/800, TUP 900", "- Y Y Y Y Y - Y - - -"},
    {"CITIZEN_PPU_231", "Citizen PPU-231", "- Y Y Y Y Y - Y Y - Y"},
    {"EPSON_EU_4XX", "EPSON EU-4XX", "- Y Y Y Y Y - Y Y - Y"},
    {"SWECOIN_TM_20XX", "Swecoin TM 20xx", "Y Y Y Y Y - - - Y Y -"},
    {"CITIZEN_CPP_8001", "CPP-8001", "- Y Y Y Y Y - Y Y - Y"},
    {"WPK_833", "WinPos WPK 833", "- Y Y Y Y Y Y Y Y - Y"},
    {"MERCURY_G80_RS", "Меркурий G80 (RS232)", "- Y Y Y Y Y - Y - - -"},
    {"NP_F209_2D", "NP-F2092D", "- Y - - - Y - Y - - -"},
};

struct Paper
{
    const char *model;
    int id;
    int width;
    int pointsToLine;
    const char *caption;
};

constexpr Paper papers[] = {
    {"CUSTOM_VKP_80", 0, 74, 512, "80 mm"},
    {"CUSTOM_VKP_80", 1, 54, 400, "60 mm"},
    {"CUSTOM_VKP_80", 2, 70, 512, "76 mm"},
    {"CUSTOM_VKP_80", 3, 76, 512, "82 mm"},
    {"CUSTOM_TG_2480_H", 0, 74, 640, "80 mm"},
    {"CUSTOM_TG_2480_SE", 0, 72, 640, "80 mm"},
    {"CITIZEN_PPU_700", 0, 72, 576, "80 mm"},
    {"CITIZEN_CBM_1000", 0, 72, 625, "80 mm"},
    {"CITIZEN_CBM_1000", 1, 50, 422, "58 mm"},
    {"CITIZEN_CTS_2000", 0, 72, 625, "80 mm"},
    {"CITIZEN_CTS_2000", 1, 66, 558, "72 mm"},
    {"CITIZEN_CTS_2000", 2, 50, 422, "54.5 mm"},
    {"CITIZEN_CTS_2000", 3, 48, 406, "54 mm"},
    {"AV_268", 0, 48, 384, "60 mm"},
    {"GENERAL_EPSON_PROTOCOL", 0, 48, 384, "60 mm"},
    {"GENERAL_EPSON_PROTOCOL", 1, 72, 625, "80 mm"},
    {"TSP-TUP", 0, 72, 640, "80 mm"},
    {"CITIZEN_PPU_231", 0, 72, 576, "80 mm"},
    {"EPSON_EU_4XX", 0, 80, 640, "82.5 mm"},
    {"EPSON_EU_4XX", 1, 72, 576, "79.5 mm"},
    {"EPSON_EU_4XX", 2, 56, 448, "60 mm"},
    {"EPSON_EU_4XX", 3, 54, 432, "58 mm"},
    {"SWECOIN_TM_20XX", 0, 72, 640, "80 mm"},
    {"CITIZEN_CPP_8001", 0, 72, 576, "80 mm"},
    {"WPK_833", 0, 72, 576, "80 mm"},
    {"MERCURY_G80_RS", 0, 72, 576, "80 mm"},
    {"NP_F209_2D", 0, 48, 384, "60 mm"},
};

// Fonts that follow each other and are alike stand in one row: first and last id, cell in dots,
// size in millimetres, whether own symbols fit in, and their cell as the file lists it.
struct Font
{
    const char *model;
    int first;
    int last;
    int width;
    int height;
    double mwidth;
    double mheight;
    bool customSymbols;
    int listedWidth;
    int listedHeight;
};

constexpr Font fonts[] = {
    {"CUSTOM_VKP_80", 0, 0, 10, 24, 1.3, 3.0, true, 10, 24},
    {"CUSTOM_VKP_80", 1, 2, 14, 24, 1.75, 3.0, true, 13, 24},
    {"CUSTOM_VKP_80", 3, 3, 18, 24, 2.18, 3.0, true, 16, 24},
    {"CUSTOM_TG_2480_H", 0, 0, 10, 24, 1.24, 3.0, true, 10, 24},
    {"CUSTOM_TG_2480_H", 1, 2, 14, 24, 1.73, 3.0, true, 13, 24},
    {"CUSTOM_TG_2480_H", 3, 3, 18, 24, 2.23, 3.0, true, 16, 24},
    {"CUSTOM_TG_2480_SE", 0, 1, 10, 24, 1.26, 3.0, true, 10, 24},
    {"CUSTOM_TG_2480_SE", 2, 3, 14, 24, 1.72, 3.0, true, 13, 24},
    {"CITIZEN_PPU_700", 0, 0, 8, 16, 1.0, 2.0, true, 8, 16},
    {"CITIZEN_PPU_700", 1, 2, 9, 17, 1.13, 2.13, true, 9, 17},
    {"CITIZEN_PPU_700", 3, 3, 12, 24, 1.5, 3.0, true, 12, 24},
    {"CITIZEN_CBM_1000", 0, 1, 9, 24, 1.13, 3.0, true, 9, 24},
    {"CITIZEN_CBM_1000", 2, 3, 12, 24, 1.53, 3.0, true, 12, 24},
    {"CITIZEN_CTS_2000", 0, 0, 8, 16, 1.0, 2.0, true, 8, 16},
    {"CITIZEN_CTS_2000", 1, 2, 9, 24, 1.125, 3.0, true, 9, 24},
    {"CITIZEN_CTS_2000", 3, 3, 12, 24, 1.5, 3.0, true, 12, 24},
    {"AV_268", 0, 1, 8, 16, 1.0, 1.0, true, 8, 16},
    {"AV_268", 2, 3, 16, 32, 2.0, 2.0, false, 16, 32},
    {"GENERAL_EPSON_PROTOCOL", 0, 3, 12, 24, 1.4, 3.0, false, 8, 16},
    {"TSP-TUP", 0, 3, 12, 24, 1.5, 3.0, true, 12, 24},
    {"CITIZEN_PPU_231", 0, 1, 9, 24, 1.125, 3.0, true, 9, 24},
    {"CITIZEN_PPU_231", 2, 3, 12, 24, 1.5, 3.0, true, 12, 24},
    {"EPSON_EU_4XX", 0, 1, 9, 17, 1.13, 2.13, true, 9, 17},
    {"EPSON_EU_4XX", 2, 3, 12, 24, 1.5, 3.0, true, 12, 24},
    {"SWECOIN_TM_20XX", 0, 3, 18, 24, 1.32, 3.0, false, 18, 24},
    {"CITIZEN_CPP_8001", 0, 0, 9, 24, 1.274, 3.0, true, 9, 24},
    {"CITIZEN_CPP_8001", 1, 1, 9, 24, 1.28, 3.0, true, 9, 24},
    {"CITIZEN_CPP_8001", 2, 3, 12, 24, 1.68, 3.0, true, 12, 24},
    {"WPK_833", 0, 0, 9, 24, 1.274, 3.0, true, 9, 24},
    {"WPK_833", 1, 1, 9, 24, 1.28, 3.0, true, 9, 24},
    {"WPK_833", 2, 3, 12, 24, 1.68, 3.0, true, 12, 24},
    {"MERCURY_G80_RS", 0, 1, 9, 24, 1.125, 3.0, true, 9, 24},
    {"MERCURY_G80_RS", 2, 3, 12, 24, 1.5, 3.0, true, 12, 24},
    {"NP_F209_2D", 0, 3, 12, 24, 1.5, 3.0, false, 12, 24},
};

constexpr int modelCount = int(std::size(models));

QJsonArray rawCatalogue()
{
    QFile file(PrinterInfo::RC_INFO_FILENAME);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(file.readAll()).array();
}

}  // namespace

class TestCatalogue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The first test, as the resource is read once in a process.
    void anyThreadMayReadTheCatalogue()
    {
        std::atomic<int> wrong{0};
        runOnThreads(4, [&wrong](int) {
            for (int round = 0; round < 50; ++round) {
                const QList<PrinterInfo> catalogue = PrinterInfo::fromResources();
                if (catalogue.size() != 16 || catalogue.at(6).paperType(9).width() != 48)
                    ++wrong;
            }
        });
        QCOMPARE(wrong.load(), 0);
    }

    void resourceIsRegisteredAtLoadUnderItsName()
    {
        QCOMPARE(PrinterInfo::RC_INFO_FILENAME, QString(":/printinfo/printers.info"));
        const QResource resource(PrinterInfo::RC_INFO_FILENAME);
        QVERIFY(resource.isValid());
        QCOMPARE(resource.compressionAlgorithm(), QResource::ZlibCompression);
        QVERIFY(qInitResources_devinfo() != 0);
    }

    void modelsAreInOrder()
    {
        const QList<PrinterInfo> catalogue = PrinterInfo::fromResources();
        QCOMPARE(catalogue.size(), 16);
        QCOMPARE(modelCount, 16);
        for (int row = 0; row < modelCount; ++row) {
            QCOMPARE(catalogue.at(row).id(), QString(models[row].id));
            QCOMPARE(catalogue.at(row).name(), QString(models[row].name));
        }
    }

    void loadedFlags()
    {
        const QList<PrinterInfo> catalogue = PrinterInfo::fromResources();
        for (int row = 0; row < modelCount; ++row) {
            const PrinterInfo &info = catalogue.at(row);
            const QStringList flags = QString(models[row].flags).split(' ');
            QCOMPARE(flags.size(), 11);
            const auto flag = [&flags](int column) { return flags.at(column) == "Y"; };
            QCOMPARE(info.interface(), QString("COM"));
            QCOMPARE(info.resolution(), 203);
            QVERIFY(info.doubleWidth() && info.doubleHeight() && info.bold() && info.underline());
            QVERIFY(!info.alignJustify());
            QCOMPARE(info.italic(), flag(0));
            QCOMPARE(info.inversion(), flag(1));
            QCOMPARE(info.alignCenter(), flag(2));
            QCOMPARE(info.alignRight(), flag(3));
            QCOMPARE(info.alignLeft(), flag(4));
            QCOMPARE(info.customImages(), flag(6));
            QCOMPARE(info.lineSpacing(), flag(7));
            QCOMPARE(info.retraction(), flag(8));
            QCOMPARE(info.retractTimeout(), flag(10));
            // Not what the file says, but what clients know.
            QCOMPARE(info.customSymbols(), info.customImages());
            QCOMPARE(info.ejection(), false);
            const bool first = row == 0;
            QCOMPARE(info.paperLoopSupported(), first);
            QCOMPARE(info.checkMoveSettingsSupported(), first);
        }
    }

    void fileHoldsWhatIsLostInLoading()
    {
        const QJsonArray catalogue = rawCatalogue();
        QCOMPARE(catalogue.size(), modelCount);
        for (int row = 0; row < modelCount; ++row) {
            const QJsonObject object = catalogue.at(row).toObject();
            const QStringList flags = QString(models[row].flags).split(' ');
            QVERIFY(object.value("customSymbols").isBool());
            QCOMPARE(object.value("customSymbols").toBool(), flags.at(5) == "Y");
            QVERIFY(object.value("ejection").isBool());
            QCOMPARE(object.value("ejection").toBool(), flags.at(9) == "Y");
            const bool isVkp = object.value("id") == "CUSTOM_VKP_80";
            QCOMPARE(object.value("checkMoveSettings"),
                     isVkp ? QJsonValue(true) : QJsonValue(QJsonValue::Undefined));
            QCOMPARE(object.value("paperLoopSupported"),
                     isVkp ? QJsonValue(true) : QJsonValue(QJsonValue::Undefined));
            const bool isMercury = object.value("id") == "MERCURY_G80_RS";
            QCOMPARE(object.value("plainText"),
                     isMercury ? QJsonValue(true) : QJsonValue(QJsonValue::Undefined));
        }
    }

    void paperTypes()
    {
        int count = 0;
        const QList<PrinterInfo> catalogue = PrinterInfo::fromResources();
        for (const PrinterInfo &info : catalogue) {
            const QMap<int, PaperInfo> loaded = info.paperTypes();
            count += loaded.size();
            for (const Paper &paper : papers) {
                if (info.id() != paper.model)
                    continue;
                const PaperInfo type = loaded.value(paper.id);
                QCOMPARE(int(type.id()), paper.id);
                QCOMPARE(int(type.width()), paper.width);
                QCOMPARE(int(type.height()), -1);
                QCOMPARE(type.pointsToLine(), paper.pointsToLine);
                QCOMPARE(type.caption(), QString(paper.caption));
            }
        }
        QCOMPARE(count, int(std::size(papers)));
    }

    void fontTypes()
    {
        const QList<PrinterInfo> catalogue = PrinterInfo::fromResources();
        const QJsonArray raw = rawCatalogue();
        int checked = 0;
        for (int row = 0; row < modelCount; ++row) {
            const QList<FontInfo> loaded = catalogue.at(row).fontTypes();
            QCOMPARE(loaded.size(), 4);
            const QJsonObject listed = raw.at(row).toObject().value("fontTypes").toObject();
            QCOMPARE(listed.keys(), QStringList({"0", "1", "2", "3"}));
            for (const Font &expected : fonts) {
                if (catalogue.at(row).id() != expected.model)
                    continue;
                for (int id = expected.first; id <= expected.last; ++id, ++checked) {
                    compareFont(loaded.at(id), id, expected);
                    const QJsonObject object = listed.value(QString::number(id)).toObject();
                    QCOMPARE(object.value("customWidth").toInt(-1), expected.listedWidth);
                    QCOMPARE(object.value("customHeight").toInt(-1), expected.listedHeight);
                }
            }
        }
        QCOMPARE(checked, 64);
    }

    void imageFileModelHasNoRow()
    {
        for (const PrinterInfo &info : PrinterInfo::fromResources())
            QVERIFY(info.id() != TextPrinterModels::MODEL_PNG);
    }

    void changeOfAListLeavesTheCatalogue()
    {
        QList<PrinterInfo> catalogue = PrinterInfo::fromResources();
        catalogue.first().setId("other");
        catalogue.removeLast();
        QCOMPARE(PrinterInfo::fromResources().size(), 16);
        QCOMPARE(PrinterInfo::fromResources().first().id(), QString("CUSTOM_VKP_80"));
    }

private:
    static void compareFont(const FontInfo &font, int id, const Font &expected)
    {
        QCOMPARE(int(font.id()), id);
        QCOMPARE(int(font.width()), expected.width);
        QCOMPARE(int(font.height()), expected.height);
        QCOMPARE(font.mwidth(), expected.mwidth);
        QCOMPARE(font.mheight(), expected.mheight);
        QCOMPARE(font.monospace(), true);
        QCOMPARE(font.customSymbols(), expected.customSymbols);
        QCOMPARE(int(font.customWidth()), expected.customSymbols ? expected.listedWidth : 0);
        QCOMPARE(int(font.customHeight()), expected.customSymbols ? expected.listedHeight : 0);
    }
};

QTEST_APPLESS_MAIN(TestCatalogue)
#include "tst_catalogue.moc"
