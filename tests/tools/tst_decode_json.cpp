// What is on the paper, as JSON.
#include <QJsonArray>
#include <QtTest>

#include "decodebench.h"

using namespace decodebench;

namespace {

QJsonObject paperOf(const QByteArray &stream, int index = 0)
{
    return jsonOf(stream)["papers"].toArray().at(index).toObject();
}

/// The first code of the first piece.
QJsonObject codeOf(const QByteArray &stream)
{
    for (const QJsonValue &line : paperOf(stream)["lines"].toArray()) {
        const QJsonArray codes = line.toObject()["codes"].toArray();
        if (!codes.isEmpty())
            return codes.at(0).toObject();
    }
    return {};
}

}  // namespace

class TestDecodeJson : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void modelIsWrittenAsJsonWritesTexts()
    {
        const WorkFolder folder;
        const QString id = "our \"first\" C:\\%1";
        const QJsonArray models{QJsonObject{{"id", id}, {"like", model.last()}}};
        const QString file = folder.file("models.json", QJsonDocument(models).toJson());
        for (const QStringList &form : {QStringList(), QStringList("--pretty")}) {
            const ReceiptRun run = runReceipt(
                QStringList{"decode", "-", "--models", file, "--model", id, "--as", "json"} + form,
                "x\n");
            const QJsonObject json = QJsonDocument::fromJson(run.output.toUtf8()).object();
            QCOMPARE(json["model"].toString(), id);
            QCOMPARE(json["papers"].toArray().size(), 1);
        }
    }

    void jsonTellsCellsAndPlaces()
    {
        const QJsonObject json = jsonOf(
            "\x1B"
            "E\x01"
            "AB"
            "\x1B"
            "E" +
            QByteArray(1, '\0') + "C\n");
        QCOMPARE(json["model"].toString(), QString("GENERAL_EPSON_PROTOCOL"));
        const QJsonObject paper = json["papers"].toArray().at(0).toObject();
        QCOMPARE(paper["width"].toInt(), 576);
        QCOMPARE(paper["isCut"].toBool(true), false);
        QCOMPARE(paper["text"].toString(), QString("ABC\n"));
        const QJsonArray runs = paper["lines"].toArray().at(0).toObject()["cells"].toArray();
        QCOMPARE(runs.size(), 2);
        const QJsonObject bold = runs.at(0).toObject();
        QCOMPARE(bold["text"].toString(), QString("AB"));
        QCOMPARE(bold["left"].toInt(-1), 0);
        QCOMPARE(bold["width"].toInt(), 12);
        QCOMPARE(bold["height"].toInt(), 24);
        QCOMPARE(bold["effects"].toArray(), (QJsonArray{"bold"}));
        QCOMPARE(bold["scale"].toArray(), (QJsonArray{1, 1}));
        QCOMPARE(runs.at(1).toObject()["left"].toInt(), 24);
        QCOMPARE(runs.at(1).toObject()["effects"].toArray(), QJsonArray());
    }

    void jsonTellsCodes()
    {
        const QJsonObject code = codeOf(qrOf("abc"));
        QCOMPARE(code["symbology"].toString(), QString("qrCode"));
        QCOMPARE(code["text"].toString(), QString("abc"));
        QCOMPARE(code["payload"].toString(), QString("YWJj"));
        QCOMPARE(code["fault"].toString(), QString());
        QCOMPARE(code["module"].toArray(), (QJsonArray{4, 4}));
        QCOMPARE(code["modules"].toArray(), (QJsonArray{21, 21}));
        QCOMPARE(code["width"].toInt(), 84);
        QCOMPARE(QByteArray::fromBase64(code["rows"].toString().toLatin1()).size(), 3 * 21);
    }

    void jsonTellsHowCodesLie()
    {
        const QJsonObject upright = codeOf(qrOf("abc"));
        QCOMPARE(upright["quarterTurns"].toInt(-1), 0);
        QCOMPARE(upright["grid"].toArray(), (QJsonArray{0, 0}));
        const QByteArray upwards("\x1BL\x1BT\x01\x1D$\x64\x00", 9);
        const QJsonObject turned = codeOf(upwards + qrOf("abc") + '\x0C');
        QCOMPARE(turned["quarterTurns"].toInt(-1), 3);
        const QJsonObject shaped =
            codeOf(symbol("0A\x02") + symbol("0B\x09") + symbol("0P0text") + symbol("0Q0"));
        QCOMPARE(shaped["symbology"].toString(), QString("pdf417"));
        QCOMPARE(shaped["grid"].toArray(), (QJsonArray{2, 9}));
        const QJsonObject narrow = codeOf(symbol("0A\x02") + symbol("0P0text") + symbol("0Q0"));
        QCOMPARE(narrow["grid"].toArray(), (QJsonArray{2, 0}));
        const QByteArray barcode(
            "\x1Dk\x05"
            "12",
            6);
        QCOMPARE(codeOf(barcode)["grid"].toArray(), (QJsonArray{0, 0}));
    }

    void jsonTellsPictures()
    {
        const QByteArray picture = QByteArray("\x1Dv0\x03\x01\x00\x02\x00\xF0\x0F", 10);
        const QJsonObject line = paperOf(picture)["lines"].toArray().at(0).toObject();
        const QJsonObject shown = line["pictures"].toArray().at(0).toObject();
        QCOMPARE(shown["pixels"].toArray(), (QJsonArray{8, 2}));
        QCOMPARE(shown["dotsPerPixel"].toArray(), (QJsonArray{2, 2}));
        QCOMPARE(shown["rows"].toString(), QString("8A8="));
        QCOMPARE(shown["width"].toInt(), 16);
    }

    void jsonTellsWhatHappens()
    {
        const QJsonArray events =
            paperOf("a\n\x1Bp" + QByteArray("\x00\x19\xFA", 3) + cut)["events"].toArray();
        QStringList kinds;
        for (const QJsonValue &event : events)
            kinds.append(event.toObject()["kind"].toString());
        QVERIFY2(kinds.contains("pulse") && kinds.contains("partialCut"),
                 qPrintable(kinds.join(' ')));
        const QJsonObject pulse = events.at(kinds.indexOf("pulse")).toObject();
        QCOMPARE(pulse["offset"].toInt(), 2);
        QCOMPARE(pulse["pin"].toInt(), 2);
        QCOMPARE(pulse["onMilliseconds"].toInt(), 50);
        QCOMPARE(pulse["offMilliseconds"].toInt(), 500);
    }

    void jsonIsIndentedOnDemand()
    {
        const QByteArray stream = "a\n" + cut + "b\n" + cut;
        const QString plain = decoded(stream, {"--as", "json"}).output;
        QCOMPARE(plain.count('\n'), 4);
        const QString pretty = decoded(stream, {"--as", "json", "--pretty"}).output;
        const QJsonDocument json = QJsonDocument::fromJson(plain.toUtf8());
        QCOMPARE(json.object()["papers"].toArray().size(), 2);
        QCOMPARE(pretty, QString::fromUtf8(json.toJson(QJsonDocument::Indented)));
    }

    void jsonOfNothingPrintedHasNoPapers()
    {
        for (const QStringList &options : {QStringList{}, QStringList{"--pretty"}}) {
            const ReceiptRun run = decoded("\x1B", QStringList{"--as", "json"} + options);
            QCOMPARE(run.status, 0);
            const QJsonDocument json = QJsonDocument::fromJson(run.output.toUtf8());
            QVERIFY(json.isObject());
        }
    }
};

QTEST_GUILESS_MAIN(TestDecodeJson)
#include "tst_decode_json.moc"
