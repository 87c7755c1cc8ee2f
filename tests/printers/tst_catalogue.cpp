#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QResource>
#include <QtTest>
#include <atomic>

#include "cataloguemodels.h"
#include "printers/printerinfo.h"
#include "printers/textprintermodels.h"
#include "threads.h"

int qInitResources_devinfo();

namespace {

using cataloguemodels::fontCount;
using cataloguemodels::modelCount;
using cataloguemodels::models;
using cataloguemodels::paperCount;

/// A flag of the file, and the operation that gives it, if there is one.
struct Flag
{
    const char *name;
    bool (PrinterInfo::*read)() const;
};

constexpr Flag flags[] = {
    {"doubleWidth", &PrinterInfo::doubleWidth},
    {"doubleHeight", &PrinterInfo::doubleHeight},
    {"bold", &PrinterInfo::bold},
    {"italic", &PrinterInfo::italic},
    {"underline", &PrinterInfo::underline},
    {"inversion", &PrinterInfo::inversion},
    {"alignCenter", &PrinterInfo::alignCenter},
    {"alignRight", &PrinterInfo::alignRight},
    {"alignLeft", &PrinterInfo::alignLeft},
    {"alignJustify", &PrinterInfo::alignJustify},
    {"customSymbols", nullptr},
    {"customImages", &PrinterInfo::customImages},
    {"lineSpacing", &PrinterInfo::lineSpacing},
    {"retraction", &PrinterInfo::retraction},
    {"ejection", nullptr},
    {"retractTimeout", &PrinterInfo::retractTimeout},
    {"paperLoopSupported", &PrinterInfo::paperLoopSupported},
    {"checkMoveSettings", &PrinterInfo::checkMoveSettingsSupported},
    {"plainText", nullptr},
};

QStringList flagsOf(const cataloguemodels::Model &model)
{
    return QString(model.flags).split(' ', Qt::SkipEmptyParts);
}

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
                if (catalogue.size() != modelCount || catalogue.at(6).paperType(9).width() != 48)
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
        QCOMPARE(catalogue.size(), modelCount);
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
            const QStringList names = flagsOf(models[row]);
            QCOMPARE(info.interface(), QString(models[row].interface));
            QCOMPARE(info.resolution(), models[row].resolution);
            for (const Flag &flag : flags) {
                if (flag.read != nullptr)
                    QCOMPARE((info.*flag.read)(), names.contains(flag.name));
            }
            // Not what the file says, but what clients know.
            QCOMPARE(info.customSymbols(), info.customImages());
            QCOMPARE(info.ejection(), false);
        }
    }

    void fileHoldsAllFlags()
    {
        const QJsonArray catalogue = rawCatalogue();
        QCOMPARE(catalogue.size(), modelCount);
        for (int row = 0; row < modelCount; ++row) {
            const QJsonObject object = catalogue.at(row).toObject();
            QStringList left = flagsOf(models[row]);
            for (const Flag &flag : flags) {
                const QJsonValue value = object.value(flag.name);
                QVERIFY(value.isBool() || value.isUndefined());
                QCOMPARE(value.toBool(), left.removeAll(flag.name) == 1);
            }
            QCOMPARE(left, QStringList());
        }
    }

    void paperTypes()
    {
        int count = 0;
        const QList<PrinterInfo> catalogue = PrinterInfo::fromResources();
        for (const PrinterInfo &info : catalogue) {
            const QMap<int, PaperInfo> loaded = info.paperTypes();
            count += loaded.size();
            for (const cataloguemodels::Paper &paper : cataloguemodels::papers) {
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
        QCOMPARE(count, paperCount);
    }

    void fontTypes()
    {
        const QList<PrinterInfo> info = PrinterInfo::fromResources();
        const QJsonArray raw = rawCatalogue();
        QCOMPARE(info.size(), modelCount);
        int checked = 0;
        int all = 0;
        for (int row = 0; row < modelCount; ++row) {
            const QList<FontInfo> loaded = info.at(row).fontTypes();
            const QJsonObject listed = raw.at(row).toObject().value("fontTypes").toObject();
            QCOMPARE(listed.size(), loaded.size());
            for (const cataloguemodels::Font &expected : cataloguemodels::fonts) {
                if (info.at(row).id() != expected.model)
                    continue;
                for (int id = expected.first; id <= expected.last; ++id, ++checked) {
                    QVERIFY(id < loaded.size());
                    compareFont(loaded.at(id), id, expected);
                    const QJsonObject object = listed.value(QString::number(id)).toObject();
                    QCOMPARE(object.value("customWidth").toInt(-1), expected.listedWidth);
                    QCOMPARE(object.value("customHeight").toInt(-1), expected.listedHeight);
                }
            }
            all += loaded.size();
        }
        QCOMPARE(checked, all);
        QCOMPARE(checked, fontCount);
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
        QCOMPARE(PrinterInfo::fromResources().size(), modelCount);
        QCOMPARE(PrinterInfo::fromResources().first().id(), QString("CUSTOM_VKP_80"));
    }

private:
    static void compareFont(const FontInfo &font, int id, const cataloguemodels::Font &expected)
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
