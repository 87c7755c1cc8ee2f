#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include "cataloguemodels.h"
#include "receiptprogram.h"

namespace {

ReceiptRun runModels(const QStringList &arguments)
{
    return runReceipt(QStringList("models") + arguments);
}

}  // namespace

class TestReceiptModels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tableHasALineForEachPaper()
    {
        const ReceiptRun outcome = runModels({});
        QCOMPARE(outcome.status, 0);
        QVERIFY2(outcome.errors.isEmpty(), qPrintable(outcome.errors));
        const QStringList lines = outcome.output.split('\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 1 + cataloguemodels::paperCount);
        // 512 and 400 dots over fonts of 10, 14, 14 and 18.
        QCOMPARE(lines.at(1).simplified(),
                 QString("CUSTOM_VKP_80 Custom VKP-80 80 mm 51 36 36 28"));
        QCOMPARE(lines.at(2).simplified(),
                 QString("CUSTOM_VKP_80 Custom VKP-80 60 mm 40 28 28 22"));
        QVERIFY(lines.last().startsWith(std::end(cataloguemodels::papers)[-1].model));
        QCOMPARE(lines.filter("NP_F209_2D").value(0).simplified(),
                 QString("NP_F209_2D NP-F2092D 60 mm 32 32 32 32"));
        // The columns stand under each other, also behind names that aren't ASCII.
        const int column = lines.at(0).indexOf("Characters");
        for (const QString &line : lines)
            QVERIFY2(line.at(column - 1) == ' ' && line.at(column) != ' ', qPrintable(line));
    }

    void oneModelIsToldWholly()
    {
        const ReceiptRun outcome = runModels({"AV_268"});
        QCOMPARE(outcome.status, 0);
        const QStringList lines = outcome.output.split('\n');
        for (const char *line : {"id: AV_268", "name: AV-268", "inversion: true", "italic: false",
                                 "resolution: 203", "interface: COM",
                                 "paper 0: 60 mm, 48 mm wide, endless (height -1), 384 dots; "
                                 "characters per line: 48 48 24 24",
                                 "font 0: 8 x 16 dots, 1 x 1 mm, monospace, own symbols of 8 x 16",
                                 "font 3: 16 x 32 dots, 2 x 2 mm, monospace"})
            QVERIFY2(lines.contains(line), line);
    }

    void jsonHoldsTheRecords()
    {
        const ReceiptRun all = runModels({"--json"});
        QCOMPARE(all.status, 0);
        const QJsonArray models = QJsonDocument::fromJson(all.output.toUtf8()).array();
        QCOMPARE(models.size(), cataloguemodels::modelCount);
        const ReceiptRun one = runModels({"TSP-TUP", "--json"});
        QCOMPARE(one.status, 0);
        const QJsonObject model = QJsonDocument::fromJson(one.output.toUtf8()).object();
        QCOMPARE(model, models.at(8).toObject());
        QCOMPARE(model.value("name").toString(), QString("Star TSP 600/700/800, TUP 900"));
        QCOMPARE(model.value("paperTypes").toObject().value("0").toObject().value("width").toInt(),
                 72);
    }

    void jsonHoldsTheCharactersPerLine()
    {
        // Dots of the paper over those of each font, rounded down.
        const ReceiptRun one = runModels({"CUSTOM_VKP_80", "--json"});
        QCOMPARE(one.status, 0);
        const QJsonObject papers =
            QJsonDocument::fromJson(one.output.toUtf8()).object().value("paperTypes").toObject();
        QCOMPARE(papers.value("0").toObject().value("charactersPerLine").toArray(),
                 (QJsonArray{51, 36, 36, 28}));
        QCOMPARE(papers.value("1").toObject().value("charactersPerLine").toArray(),
                 (QJsonArray{40, 28, 28, 22}));

        const QJsonArray models =
            QJsonDocument::fromJson(runModels({"--json"}).output.toUtf8()).array();
        for (const QJsonValue model : models) {
            const int fonts = model.toObject().value("fontTypes").toObject().size();
            const QJsonObject all = model.toObject().value("paperTypes").toObject();
            QVERIFY(!all.isEmpty());
            for (const QJsonValue paper : all)
                QCOMPARE(paper.toObject().value("charactersPerLine").toArray().size(), fonts);
        }
    }

    void unknownModelIsBadInput()
    {
        const ReceiptRun outcome = runModels({"av_268"});
        QCOMPARE(outcome.status, 1);
        QVERIFY(outcome.output.isEmpty());
        QCOMPARE(outcome.errors,
                 QString("receipt: there is no model \"av_268\"; see \"receipt models\"\n"));
    }

    void wrongUsage()
    {
        QCOMPARE(runModels({"AV_268", "TSP-TUP"}).status, 2);
        QCOMPARE(runModels({"--xml"}).status, 2);
        QCOMPARE(runModels({"--help"}).status, 0);
    }
};

QTEST_APPLESS_MAIN(TestReceiptModels)
#include "tst_receipt_models.moc"
