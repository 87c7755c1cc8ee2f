#include <QtTest>
#include <utility>

#include "printsrvstate/txtprintererror.h"

using EError = TxtPrinterError::EError;
using Flags = QFlags<TxtPrinterError::EError>;

namespace {

Flags flags(int bits)
{
    return Flags(QFlag(bits));
}

}  // namespace

class TestTxtPrinterError : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void defaultHasNoCodeAndNoText()
    {
        const TxtPrinterError error;
        QCOMPARE(static_cast<int>(error.errorCode()), 0);
        QCOMPARE(error.errorText(), QString());
        QVERIFY(!error);
    }

    void codeIsThirtyTwoBitsWide()
    {
        QCOMPARE(sizeof(Flags), std::size_t(4));
        TxtPrinterError error;
        error.setErrorCode(flags(int(0x80000001U)));
        QCOMPARE(static_cast<int>(error.errorCode()), int(0x80000001U));
    }

    void onlyBitsOfTheMaskMakeAnError_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<bool>("isError");
        for (int bit = 0; bit < 32; ++bit) {
            const int code = int(1U << bit);
            const bool isError = bit == 0 || bit == 1 || bit == 5 || bit == 9;
            QTest::addRow("bit %d alone", bit) << code << isError;
        }
        QTest::newRow("no bit") << 0 << false;
        QTest::newRow("a bit outside with one inside") << 0x024 << true;
        QTest::newRow("all bits outside") << int(~0x223U) << false;
        QTest::newRow("all bits") << -1 << true;
    }

    void onlyBitsOfTheMaskMakeAnError()
    {
        QFETCH(const int, code);
        QFETCH(const bool, isError);
        const TxtPrinterError error(flags(code), "text plays no part");
        QCOMPARE(bool(error), isError);
    }

    void constructorsTakeOneFlagOrASet()
    {
        const TxtPrinterError one(TxtPrinterError::Error020, "paper");
        QCOMPARE(static_cast<int>(one.errorCode()), 0x020);
        QCOMPARE(one.errorText(), QString("paper"));

        const TxtPrinterError several(flags(0x221), "head");
        QCOMPARE(static_cast<int>(several.errorCode()), 0x221);
        QCOMPARE(several.errorText(), QString("head"));
    }

    void settersChangeTheirFieldAndTheComparison()
    {
        const TxtPrinterError base;
        TxtPrinterError changed = base;
        QVERIFY(changed == base);
        QVERIFY(!(changed != base));

        changed.setErrorCode(flags(4));
        QVERIFY(changed != base);
        QVERIFY(!(changed == base));
        QCOMPARE(changed.errorText(), QString());

        changed = base;
        changed.setErrorText(QString::fromUtf8("Нет бумаги"));
        QVERIFY(changed != base);
        QCOMPARE(static_cast<int>(changed.errorCode()), 0);
    }

    void copiesAreIndependentAndMovesKeepTheValue()
    {
        TxtPrinterError first(TxtPrinterError::Error001, "one");
        TxtPrinterError second = first;
        second.setErrorText("two");
        QCOMPARE(first.errorText(), QString("one"));
        const TxtPrinterError third = std::move(second);
        QCOMPARE(third.errorText(), QString("two"));
        QCOMPARE(static_cast<int>(third.errorCode()), 1);
    }

    void mapHoldsTheCodeAsAnIntAndTheTextUnderMsg()
    {
        const TxtPrinterError error(flags(0x204), "cover");
        const QMap<QString, QVariant> expected{{"code", 0x204}, {"msg", "cover"}};
        QCOMPARE(error.toMap(), expected);
        QCOMPARE(int(error.toMap().value("code").type()), int(QVariant::Int));
    }

    void roundTripKeepsTheCodeAndLosesTheText()
    {
        const TxtPrinterError written(flags(0x224), "cover");
        TxtPrinterError read(TxtPrinterError::Error001, "from before");
        read.setMap(written.toMap());
        QCOMPARE(static_cast<int>(read.errorCode()), 0x224);
        QCOMPARE(read.errorText(), QString());
    }

    void readsTheTextUnderText()
    {
        TxtPrinterError error;
        error.setMap({{"code", 32}, {"text", "paper"}});
        QVERIFY(error == TxtPrinterError(TxtPrinterError::Error020, "paper"));
    }

    void missingKeysGiveZeroAndEmptyText_data()
    {
        QTest::addColumn<QVariantMap>("map");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("text");
        QTest::newRow("empty map") << QVariantMap{} << 0 << QString();
        QTest::newRow("code alone") << QVariantMap{{"code", 2}} << 2 << QString();
        QTest::newRow("text alone") << QVariantMap{{"text", "t"}} << 0 << QString("t");
        QTest::newRow("code as text") << QVariantMap{{"code", "512"}} << 0x200 << QString();
        QTest::newRow("code as a double") << QVariantMap{{"code", 34.0}} << 0x22 << QString();
        QTest::newRow("code not a number") << QVariantMap{{"code", "x"}} << 0 << QString();
        QTest::newRow("negative code keeps its bits")
            << QVariantMap{{"code", -1}} << -1 << QString();
    }

    void missingKeysGiveZeroAndEmptyText()
    {
        QFETCH(const QVariantMap, map);
        TxtPrinterError error(TxtPrinterError::Error200, "from before");
        error.setMap(map);
        QTEST(static_cast<int>(error.errorCode()), "code");
        QTEST(error.errorText(), "text");
    }
};

QTEST_APPLESS_MAIN(TestTxtPrinterError)
#include "tst_txtprintererror.moc"
