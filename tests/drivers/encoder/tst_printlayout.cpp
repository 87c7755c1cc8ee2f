// What a document becomes on the paper of a model, block by block.
#include <QtTest>

#include "laiddocuments.h"

using namespace laiddocuments;

class TestPrintLayout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void blocksStandOneBelowTheOther()
    {
        DocumentBlock picture;
        picture.setType(DocumentBlock::BlockImage);
        picture.setImg(MonochromeImage(8, 2, QByteArray(2, '\xFF')));
        DocumentBlock barcode;
        barcode.setBarCode("123", DocumentBlock::BarcodeBbCode);
        DocumentBlock qr;
        qr.setQrCode("abc");
        const PrintLayout layout =
            layoutOf(documentOf({textBlock("ab\nc"), picture, barcode, qr, textBlock("d")}),
                     targetOf("EPSON_EU_4XX"));
        QCOMPARE(textsOf(layout),
                 QStringList({"ab", "c", "[picture]", "[feed 8]", "[code]", "[feed 8]", "[feed 24]",
                              "[code]", "[feed 24]", "d"}));
        QCOMPARE(layout.error, QString());
        QCOMPARE(notesOf(layout), QStringList());
    }
};

QTEST_GUILESS_MAIN(TestPrintLayout)
#include "tst_printlayout.moc"
