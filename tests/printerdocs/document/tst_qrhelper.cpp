#include <QtTest>

#include "printerdocs/qrhelper.h"

class TestQrHelper : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textAndItsUtf8BytesAreTheSamePayload()
    {
        QVERIFY(QrHelper(QString("a")) == QrHelper(QByteArray("a")));
        QVERIFY(QrHelper(QString("чек")) == QrHelper(QByteArray("\xd1\x87\xd0\xb5\xd0\xba")));
        QVERIFY(!(QrHelper(QString("a")) != QrHelper(QByteArray("a"))));
    }

    void otherBytesOrLengthAreAnotherPayload()
    {
        QVERIFY(QrHelper(QByteArray("a")) != QrHelper(QByteArray("b")));
        QVERIFY(QrHelper(QByteArray("a")) != QrHelper(QByteArray("a\0", 2)));
    }

    void imageIsAlwaysNull()
    {
        const QrHelper helper(QByteArray("t=20260102&s=10.00"));
        const QImage image = helper;
        QVERIFY(image.isNull());
    }

    void copiesAndMovesCarryThePayload()
    {
        const QrHelper first(QByteArray("first"));
        QrHelper second(QByteArray("second"));
        second = first;
        QVERIFY(second == first);
        const QrHelper third = std::move(second);
        QVERIFY(third == first);
        QrHelper fourth(QString{});
        fourth = QrHelper(QByteArray("first"));
        QVERIFY(fourth == first);
    }
};

QTEST_APPLESS_MAIN(TestQrHelper)
#include "tst_qrhelper.moc"
