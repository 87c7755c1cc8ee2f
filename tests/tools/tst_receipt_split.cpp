#include <QtTest>

#include "receiptprogram.h"

class TestReceiptSplit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sectionsOfTheFiscalExample()
    {
        const ReceiptRun run = runReceipt({"split", example("fiscal.cpt")});
        QCOMPARE(run.output, QString::fromUtf8("== <FISCAL_HEADER>\n"
                                               "== text, lines: 2\n"
                                               "<C><SHOP>\n"
                                               "<C>Смена <SHIFT,0000>, чек <DOCNO>\n"
                                               "== <FISCAL_BODY>\n"
                                               "== text, lines: 1\n"
                                               "[Вам начислено бонусов<S><BONUS>]\n"
                                               "== <FISCAL_OPERATIONS>\n"
                                               "== text, lines: 1\n"
                                               "Оплата принята <SALE_DT,dd.mm.yyyy hh:nn>\n"
                                               "== <FISCAL_SUMMARY>\n"
                                               "== text, lines: 1\n"
                                               "Проверьте чек, не отходя от кассы:\n"
                                               "== <FISCAL_QR>\n"
                                               "== <FISCAL_FOOTER>\n"
                                               "== text, lines: 1\n"
                                               "<C>Ждём вас снова!\n"));
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
    }

    void orderIsThatOfTheText()
    {
        const ReceiptRun run =
            runReceipt({"split", "-"}, "<FISCAL_QR>\n  x <fiscal_body> y  \n<FISCAL_BODY>z\n");
        QCOMPARE(run.output, QString("== <FISCAL_QR>\n== text, lines: 1\nx\n== <FISCAL_BODY>\n"
                                     "== text, lines: 2\ny\nz\n"));
        QCOMPARE(run.status, 0);
    }

    void templateWithoutMarkersIsOnePieceAndNoted()
    {
        const ReceiptRun run = runReceipt({"split", "-"}, "a\n\nb\n");
        QCOMPARE(run.output, QString("== text, lines: 3\na\n\nb\n"));
        QCOMPARE(run.errors, QString("receipt: -: note: there is no fiscal marker\n"));
        QCOMPARE(run.status, 0);
    }

    void encodingOfTheTemplateIsRead()
    {
        const ReceiptRun run =
            runReceipt({"split", "-", "--codec", "cp866"}, "<FISCAL_QR>\n\x88\x92\x8E\x83");
        QCOMPARE(run.output, QString::fromUtf8("== <FISCAL_QR>\n== text, lines: 1\nИТОГ\n"));
    }

    void badTemplatesAreBadInput()
    {
        const ReceiptRun missing = runReceipt({"split", "/nowhere/a.cpt"});
        QCOMPARE(missing.errors, QString("receipt: /nowhere/a.cpt: No such file or directory\n"));
        QCOMPARE(missing.status, 1);
        const ReceiptRun empty = runReceipt({"split", "-"});
        QCOMPARE(empty.errors, QString("receipt: -: the template is empty\n"));
        QCOMPARE(empty.status, 1);
    }
};

QTEST_GUILESS_MAIN(TestReceiptSplit)
#include "tst_receipt_split.moc"
