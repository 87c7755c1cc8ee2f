#include <QtTest>

#include "printedpaper.h"

using namespace printedpaper;

namespace {

TextPrinterDocument cutDocument()
{
    TextPrinterDocument document = documentOf({textBlock("total")});
    document.setCurrentTicketAction(TicketActionEveryDocument);
    return document;
}

QByteArray bytesFor(const PrintTarget &target)
{
    return DocumentEncoder(target, {}).encode(cutDocument()).bytes;
}

}  // namespace

class TestDocumentEncoderCuts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachModelIsCutByItsOwnCommand_data()
    {
        QTest::addColumn<QByteArray>("command");
        for (const QString &id : PrinterProfile::modelIds()) {
            const QMap<CutCommand, QByteArray> commands{
                {CutCommand::GsV, QByteArray("\x1DV\0", 3)},
                {CutCommand::GsVPartial, "\x1DV\1"},
                {CutCommand::EscI, "\x1Bi"},
                {CutCommand::StarEscD, "\x1B\x64"},
                {CutCommand::SwecoinEscRs, "\x1B\x1E"},
            };
            QTest::newRow(qPrintable(id))
                << commands.value(PrinterProfile::forModel(id)->cutCommand());
        }
    }
    void eachModelIsCutByItsOwnCommand()
    {
        QFETCH(QByteArray, command);
        const QByteArray bytes = bytesFor(targetOf(QTest::currentDataTag()));
        QVERIFY2(bytes.contains(command), bytes.toHex(' ').constData());
    }

    // A TM-T88III ignores GS V 0.
    void fileMayChooseTheCut()
    {
        const char *const model = "GENERAL_EPSON_PROTOCOL";
        QVERIFY(bytesFor(changedTarget(model, R"("cutCommand": "GsV")"))
                    .endsWith(QByteArray("\x1DV\0", 3)));
        QVERIFY(bytesFor(changedTarget(model, R"("cutCommand": "EscI")")).endsWith("\x1Bi"));
        QVERIFY(!bytesFor(changedTarget(model, R"("cutCommand": "None")")).contains("\x1DV"));
    }

    // As it is delivered, a TTP 2000 cuts where the paper is.
    void lastLinesOfSwecoinsPrintersAreFedPastTheCutter()
    {
        const QByteArray bytes = bytesFor(targetOf("SWECOIN_TM_20XX"));
        const int text = bytes.indexOf("total");
        QVERIFY(text >= 0);
        QVERIFY2(bytes.indexOf("\x1BJ\x58", text) > text, bytes.toHex(' ').constData());
        QVERIFY(bytes.indexOf("\x1BJ\x58", text) < bytes.indexOf("\x1B\x1E", text));
    }
};

QTEST_GUILESS_MAIN(TestDocumentEncoderCuts)
#include "tst_documentencoder_cuts.moc"
