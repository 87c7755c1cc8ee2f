// What holds of any file of models.
#include <rapidcheck.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QtTest>

#include "printerslib/drivers/codepage.h"
#include "printerslib/drivers/printermodels.h"

using namespace printerslib::drivers;

namespace {

/// Values that some key takes, and others.
QJsonValue anyValue()
{
    const int number = *rc::gen::weightedOneOf<int>(
        {{3, rc::gen::inRange(-2, 20)}, {1, rc::gen::inRange(-100000, 100000)}});
    const QJsonArray pair{number, *rc::gen::inRange(0, 30)};
    const QString text = *rc::gen::element<QString>(
        "", "None", "GsV", "EscI", "StarLine", "Swecoin", "Custom", "CP866", "AV_268", "Касса");
    return *rc::gen::element<QJsonValue>(
        number, number + 0.5, text, true, QJsonValue(), pair, QJsonArray{pair}, QJsonArray(),
        QJsonArray{pair, text}, QJsonObject(), QJsonObject{{QString::number(number), text}},
        QJsonObject{{"0", "CP437"}, {QString::number(number), "CP866"}},
        QJsonObject{{"qrCode", number}}, QJsonObject{{text, text}});
}

QString anyOf(const QStringList &texts)
{
    return texts.at(*rc::gen::inRange(0, texts.size()));
}

/// A record of a model, with some facts of another and some values that may be wrong.
QJsonObject anyRecord()
{
    const QStringList ids = PrinterProfile::modelIds();
    const QJsonObject facts = PrinterProfile::forModel(anyOf(ids))->toJson();
    QJsonObject record;
    record.insert("id", *rc::gen::arbitrary<bool>() ? anyOf(ids) : QString("NEW"));
    if (*rc::gen::arbitrary<bool>())
        record.insert("like", anyOf(ids));
    const int taken = *rc::gen::inRange(0, 5);
    for (int i = 0; i < taken; ++i) {
        const QString key = anyOf(facts.keys());
        record.insert(key, facts.value(key));
    }
    const int spoilt = *rc::gen::inRange(0, 3);
    for (int i = 0; i < spoilt; ++i)
        record.insert(anyOf(facts.keys() + QStringList{"like", "cutter", ""}), anyValue());
    return record;
}

/// What encoder and interpreter rely on.
void checkProfile(const PrinterProfile &profile)
{
    RC_ASSERT(!profile.fontCells().isEmpty());
    RC_ASSERT(profile.initialFont() >= 0 && profile.initialFont() < profile.fontCells().size());
    for (const QSize &cell : profile.fontCells())
        RC_ASSERT(!cell.isEmpty() && cell.width() <= profile.headDots());
    RC_ASSERT(profile.codePages().contains(profile.initialCodePage()));
    for (const QString &name : profile.codePages())
        RC_ASSERT(CodePage::forName(name).has_value());
    RC_ASSERT(!profile.motionUnitsPerInch().isEmpty());
    RC_ASSERT(profile.dotsPerInch() >= 50 && profile.lineSpacing() > 0);
    RC_ASSERT(profile.leastModule() >= 1 && profile.leastModule() <= profile.mostModule());
    RC_ASSERT(profile.dotsToCutter() >= 0);
    RC_ASSERT(profile.cutCommand() != CutCommand::None || profile.dotsToCutter() == 0);
    RC_ASSERT(PrinterProfile::forModel(profile.catalogueId()).has_value());
    const bool isSwecoins = profile.rasterCommand() == RasterCommand::SwecoinRows;
    RC_ASSERT(!isSwecoins || profile.dialect() == Dialect::Swecoin);
}

}  // namespace

class TestPrinterModelsLaws : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void recordIsTakenWholeOrToldOnce()
    {
        const bool holds = rc::check([] {
            const QJsonObject record = anyRecord();
            const QString id = record.value("id").toString();
            PrinterModels models;
            const QStringList faults =
                models.add(QJsonDocument(QJsonArray{record}).toJson(), "own.json");
            RC_ASSERT(faults.size() <= 1);
            const PrinterModels known;
            if (faults.isEmpty()) {
                checkProfile(*models.profile(id));
                RC_ASSERT(models.profile(id)->toJson().value("id").toString() == id);
                return;
            }
            RC_ASSERT(faults.first().startsWith("own.json: "));
            RC_ASSERT(faults.first().contains('"'));
            RC_ASSERT(models.modelIds() == known.modelIds());
            for (const QString &knownId : known.modelIds())
                RC_ASSERT(models.profile(knownId)->toJson() == known.profile(knownId)->toJson());
        });
        QVERIFY(holds);
    }

    void whatIsToldIsTakenAgain()
    {
        const bool holds = rc::check([] {
            PrinterModels models;
            const QJsonObject record = anyRecord();
            const QString id = record.value("id").toString();
            if (!models.add(QJsonDocument(QJsonArray{record}).toJson(), "own.json").isEmpty())
                return;
            QJsonObject told = models.profile(id)->toJson();
            const QJsonObject facts = told;
            if (!PrinterProfile::forModel(id))
                told.insert("like", models.profile(id)->catalogueId());
            PrinterModels others;
            const QStringList faults =
                others.add(QJsonDocument(QJsonArray{told}).toJson(), "told.json");
            RC_ASSERT(faults == QStringList());
            QJsonObject again = others.profile(id)->toJson();
            again.insert("sources", facts.value("sources"));
            RC_ASSERT(again == facts);
        });
        QVERIFY(holds);
    }

    void cutFilesAreNoModels()
    {
        const bool holds = rc::check([] {
            const QByteArray json = QJsonDocument(QJsonArray{anyRecord()}).toJson();
            // Behind the last bracket there is a line feed.
            const QByteArray cut = json.left(*rc::gen::inRange(0, json.size() - 2));
            PrinterModels models;
            RC_ASSERT(models.add(cut, "own.json").size() == 1);
            RC_ASSERT(models.modelIds() == PrinterProfile::modelIds());
        });
        QVERIFY(holds);
    }
};

QTEST_APPLESS_MAIN(TestPrinterModelsLaws)
#include "tst_printermodels_laws.moc"
