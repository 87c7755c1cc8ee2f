#include <QtTest>
#include <cmath>
#include <limits>
#include <random>

#include "hearth/fixnumber.h"

using hearth::FixNumber;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr qint64 most = std::numeric_limits<qint64>::max();

QString plain(quint32 multiplier, double value)
{
    return FixNumber(multiplier, value).toString('.', QChar());
}

}  // namespace

class TestFixNumber : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void roundsTheDecimalThatIsSeen_data()
    {
        QTest::addColumn<quint32>("multiplier");
        QTest::addColumn<double>("number");
        QTest::addColumn<qint64>("value");
        QTest::addColumn<QString>("text");

        QTest::newRow("zero") << 100u << 0.0 << 0LL << "0.00";
        QTest::newRow("negative zero") << 100u << -0.0 << 0LL << "0.00";
        QTest::newRow("whole") << 100u << 7.0 << 700LL << "7.00";
        QTest::newRow("half below its binary neighbour") << 100u << 1.005 << 101LL << "1.01";
        QTest::newRow("another such half") << 100u << 2.675 << 268LL << "2.68";
        QTest::newRow("exact half goes up") << 100u << 0.125 << 13LL << "0.13";
        QTest::newRow("negative half goes down") << 100u << -0.125 << -13LL << "-0.13";
        QTest::newRow("just below half") << 100u << 1.00499 << 100LL << "1.00";
        QTest::newRow("carry through nines") << 100u << 9.995 << 1000LL << "10.00";
        QTest::newRow("sum of tenths") << 10u << 0.1 + 0.2 << 3LL << "0.3";
        QTest::newRow("all digits of the fraction")
            << 1000000000u << 0.123456789 << 123456789LL << "0.123456789";
        QTest::newRow("sign stays in front of zero") << 10u << -0.5 << -5LL << "-0.5";
        QTest::newRow("rounds to zero without sign") << 10u << -0.04 << 0LL << "0.0";
        QTest::newRow("half a part is one part") << 100u << 0.005 << 1LL << "0.01";
        QTest::newRow("less than half a part") << 100u << 0.0049999 << 0LL << "0.00";
        QTest::newRow("multiplier 1") << 1u << 2.5 << 3LL << "3";
        QTest::newRow("multiplier 0 rounds to whole") << 0u << 2.5 << 3LL << "3";
        QTest::newRow("multiplier 0, negative") << 0u << -2.5 << -3LL << "-3";
        QTest::newRow("multiplier 0, below half") << 0u << 2.4 << 2LL << "2";
        QTest::newRow("positive exponent")
            << 100u << 1e15 << 100000000000000000LL << "1000000000000000.00";
        QTest::newRow("whole number of 17 digits that has a shorter neighbour")
            << 0u << 64630188059318592.0 << 64630188059318592LL << "64630188059318592";
        QTest::newRow("the same with decimals")
            << 100u << -64630188059318592.0 << -6463018805931859200LL << "-64630188059318592.00";
        QTest::newRow("last one without gaps")
            << 1u << 9007199254740991.0 << 9007199254740991LL << "9007199254740991";
        QTest::newRow("first one with gaps")
            << 1000u << 9007199254740994.0 << 9007199254740994000LL << "9007199254740994.000";
        QTest::newRow("17 digits")
            << 1u << 12345678901234568.0 << 12345678901234568LL << "12345678901234568";
    }

    void roundsTheDecimalThatIsSeen()
    {
        QFETCH(quint32, multiplier);
        QFETCH(double, number);
        QFETCH(qint64, value);
        QFETCH(QString, text);
        const FixNumber fixed(multiplier, number);
        QCOMPARE(fixed.value(), value);
        QCOMPARE(fixed.toString('.', QChar()), text);
    }

    void extremesCountAsZeroOrSaturate_data()
    {
        QTest::addColumn<quint32>("multiplier");
        QTest::addColumn<double>("number");
        QTest::addColumn<qint64>("value");
        QTest::addColumn<QString>("text");

        const double nan = std::numeric_limits<double>::quiet_NaN();
        const double tiny = std::numeric_limits<double>::denorm_min();
        const double huge = std::numeric_limits<double>::max();
        QTest::newRow("NaN") << 100u << nan << 0LL << "0.00";
        QTest::newRow("infinity") << 100u << infinity << 0LL << "0.00";
        QTest::newRow("negative infinity") << 100u << -infinity << 0LL << "0.00";
        QTest::newRow("smallest") << 1000000000u << tiny << 0LL << "0.000000000";
        QTest::newRow("smallest negative") << 1000000000u << -tiny << 0LL << "0.000000000";
        QTest::newRow("largest") << 1u << huge << most << "9223372036854775807";
        QTest::newRow("most negative") << 1u << -huge << -most << "-9223372036854775807";
        QTest::newRow("largest with decimals") << 100u << huge << most << "92233720368547758.07";
        QTest::newRow("most negative with decimals")
            << 100u << -huge << -most << "-92233720368547758.07";
        QTest::newRow("in range until multiplied")
            << 1000u << 1e17 << most << "9223372036854775.807";
        QTest::newRow("just in range")
            << 10u << 9e17 << 9000000000000000000LL << "900000000000000000.0";
        QTest::newRow("2 to the power of 63")
            << 1u << 9223372036854775808.0 << most << "9223372036854775807";
        QTest::newRow("largest multiplier") << 4294967295u << huge << most << "2147483648";
    }

    void extremesCountAsZeroOrSaturate() { roundsTheDecimalThatIsSeen(); }

    // Ten or more decimals in a template's format give such multipliers: 10^10 does not fit.
    void multiplierNeedsNoPowerOfTen_data()
    {
        QTest::addColumn<quint32>("multiplier");
        QTest::addColumn<double>("number");
        QTest::addColumn<qint64>("value");
        QTest::addColumn<QString>("text");

        QTest::newRow("quarters") << 4u << 1.25 << 5LL << "1";
        QTest::newRow("quarters, half goes up") << 4u << 1.5 << 6LL << "2";
        QTest::newRow("quarters, rounded to zero") << 4u << -0.25 << -1LL << "0";
        QTest::newRow("zeros count behind the last other digit") << 250u << 1.5 << 375LL << "1.5";
        QTest::newRow("trailing digit rounds") << 20u << 0.25 << 5LL << "0.3";
        QTest::newRow("trailing digit rounds, negative") << 20u << -0.25 << -5LL << "-0.3";
        QTest::newRow("10^10 in 32 bits") << 1410065408u << 2.0 << 2820130816LL << "2";
        QTest::newRow("10^11 in 32 bits") << 1215752192u << 0.5 << 607876096LL << "1";
    }

    void multiplierNeedsNoPowerOfTen() { roundsTheDecimalThatIsSeen(); }

    void separatorsAreTheCallers_data()
    {
        QTest::addColumn<quint32>("multiplier");
        QTest::addColumn<double>("number");
        QTest::addColumn<QChar>("decimal");
        QTest::addColumn<QChar>("group");
        QTest::addColumn<QString>("text");

        const QChar blank(' ');
        const QChar comma(',');
        QTest::newRow("no group") << 100u << 1234567.5 << comma << QChar() << "1234567,50";
        QTest::newRow("groups of three") << 100u << 1234567.5 << comma << blank << "1 234 567,50";
        QTest::newRow("exactly one group") << 100u << 123.5 << comma << blank << "123,50";
        QTest::newRow("first digit of a group") << 1u << -1000.0 << comma << blank << "-1 000";
        QTest::newRow("no grouping in the fraction")
            << 1000000u << 0.5 << comma << blank << "0,500000";
        QTest::newRow("beyond ASCII") << 10u << 1000.5 << QChar(0x066b) << QChar(0x00a0)
                                      << QString::fromUtf8("1\u00a0000\u066b5");
        QTest::newRow("longest") << 1u << -1e300 << comma << blank << "-9 223 372 036 854 775 807";
    }

    void separatorsAreTheCallers()
    {
        QFETCH(quint32, multiplier);
        QFETCH(double, number);
        QFETCH(QChar, decimal);
        QFETCH(QChar, group);
        QFETCH(QString, text);
        QCOMPARE(FixNumber(multiplier, number).toString(decimal, group), text);
    }

    // Every amount of a till reads back as itself, and every half cent goes away from zero.
    void amountsOfCentsAndHalfCentsAreExact()
    {
        for (int cents = 0; cents < 200000; ++cents) {
            const double amount = cents / 100.0;
            const QString text =
                QString("%1.%2").arg(cents / 100).arg(cents % 100, 2, 10, QChar('0'));
            QCOMPARE(plain(100, amount), text);
            const double halfCent = (text + "5").toDouble();
            QCOMPARE(FixNumber(100, halfCent).value(), qint64(cents + 1));
            QCOMPARE(FixNumber(100, -halfCent).value(), qint64(-cents - 1));
        }
    }

    void anyBitsAndAnyMultiplierGiveANumber()
    {
        std::mt19937_64 random(20261121);
        const QRegularExpression number("^-?[0-9]+(\\.[0-9]+)?$");
        for (int i = 0; i < 20000; ++i) {
            const quint64 bits = random();
            double value;
            memcpy(&value, &bits, sizeof value);
            const auto multiplier = static_cast<quint32>(random());
            const FixNumber fixed(multiplier, value);
            QVERIFY(number.match(fixed.toString('.', QChar())).hasMatch());
            if (std::isfinite(value)) {
                QCOMPARE(FixNumber(multiplier, -value).value(), -fixed.value());
            }
        }
    }
};

QTEST_APPLESS_MAIN(TestFixNumber)
#include "tst_fixnumber.moc"
