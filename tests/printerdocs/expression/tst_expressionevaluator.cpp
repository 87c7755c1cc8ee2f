#include <QtTest>
#include <clocale>
#include <cmath>
#include <limits>
#include <vector>

#include "expressionbench.h"
#include "printerdocs/expressionevaluator.h"

using namespace expressionbench;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

/// A row for each of the constants, which are numbered from `first` on.
void addNumberedRows(const char *name, const std::vector<int> &constants, int first)
{
    for (int i = 0; i < int(constants.size()); ++i)
        QTest::addRow("%s, %d", name, i) << constants[size_t(i)] << first + i;
}

}  // namespace

/// What texts give, and where they are wrong.
class TestExpressionEvaluator : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void operators_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<double>("value");

        const struct
        {
            const char *text;
            double value;
        } rows[] = {
            {"1234", 1234},
            {"1+2*3", 7},
            {"(1+2)*3", 9},
            {"7%4", 3},
            {"-7%4", -3},
            {"7.5%2", 1.5},
            {" 1 + 1 ", 2},
            {"2^3^2", 64},
            {"-2^2", 4},
            {"2^-1", 0.5},
            {"2^-2^2", 0.0625},
            {"--3", 3},
            {"---3", -3},
            {"-+-3", 3},
            {"+3", 3},
            {"+-+3", -3},
            {"2--3", 5},
            {"2-+-3", 5},
            {"2*-3", -6},
            {"-(1+2)", -3},
            {"--(1+2)", 3},
            {"10-4-3", 3},
            {"64/4/2", 8},
            {"64/4*2", 32},
            {"7*3%4", 1},
            {"7%4*3", 9},
            {"2*3^2", 18},
            {"2^2*3", 12},
            {"1-2*3+4", -1},
            {"2+3%2", 3},
            {"1,2", 2},
            {"1,2,3", 3},
            {"(1,2)+1", 3},
            {"1+2,3*4", 12},
            {"((((1))))", 1},
            {"(1,2,3)*(4,5)", 15},
            {"pow((1,2),(3,4))", 16},
            {"1/0", infinity},
            {"-1/0", -infinity},
            {"0/0", notANumber},
            {"5%0", notANumber},
            {"sqrt -1", notANumber},
            {"0*-1", -0.0},
            {"-0", -0.0},
        };
        for (const auto &row : rows)
            QTest::newRow(row.text) << QByteArray(row.text) << row.value;
        QTest::newRow("white space") << QByteArray("\t1\r\n+\n1\t") << 2.0;
    }

    void operators()
    {
        QFETCH(QByteArray, text);
        QFETCH(double, value);
        compareBothRoads(text, value, 0);
    }

    void numbersAreThoseOfStrtod_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<double>("value");

        const struct
        {
            const char *text;
            double value;
        } rows[] = {
            {"0", 0.0},
            {"007", 7},
            {".5", 0.5},
            {"5.", 5},
            {"1.5e3", 1500},
            {"1e+2", 100},
            {"1E-2", 0.01},
            {".5e1", 5},
            {"5.e1", 50},
            {"0x10", 16},
            {"0X1F", 31},
            {"0x1.8p1", 3},
            {"0x.8", 0.5},
            {"0xaP-1", 5},
            {"1e400", infinity},
            {"1e99999999999999999999", infinity},
            {"1e-400", 0.0},
            {"1e-99999999999999999999", 0.0},
            {"0e999", 0.0},
            {"5e-324", 5e-324},
            {"2.2250738585072011e-308", 2.2250738585072011e-308},
            {"1.7976931348623157e308", 1.7976931348623157e308},
            {"0.1", 0.1},
            {"9007199254740993", 9007199254740992.0},
            {"123456789012345678901234567890", 123456789012345678901234567890.0},
            {"1e2-1", 99},
            {"1.5-.5", 1},
        };
        for (const auto &row : rows)
            QTest::newRow(row.text) << QByteArray(row.text) << row.value;
        QTest::newRow("a thousand digits") << QByteArray(1000, '9') << infinity;
        QTest::newRow("a long fraction") << "0." + QByteArray(5000, '0') + "1e5000" << 0.1;
    }

    void numbersAreThoseOfStrtod() { operators(); }

    // A client with a decimal comma in its locale still reads templates with a point.
    void numbersDoNotFollowTheLocale()
    {
        const QByteArray before = setlocale(LC_NUMERIC, nullptr);
        bool comma = false;
        for (const char *name : {"de_DE.UTF-8", "ru_RU.UTF-8", "fr_FR.UTF-8", "de_DE", "ru_RU"})
            comma = comma || (setlocale(LC_NUMERIC, name) && *localeconv()->decimal_point == ',');
        const double point = te_interp("1.5", nullptr);
        const double hexadecimal = te_interp("0x1.8p0", nullptr);
        const double list = te_interp("1,5", nullptr);
        setlocale(LC_NUMERIC, before.constData());
        QCOMPARE(point, 1.5);
        QCOMPARE(hexadecimal, 1.5);
        QCOMPARE(list, 5.0);
        if (!comma)
            QSKIP("no locale with a decimal comma is installed; checked in the present one only");
    }

    void builtInFunctions_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<double>("value");

        // Volatile, as what the compiler computes may differ from the library in the last bit.
        volatile double two = 2;

        const struct
        {
            const char *text;
            double value;
        } rows[] = {
            {"abs(-2.5)", 2.5},
            {"acos(0.5)", std::acos(0.5)},
            {"asin(0.5)", std::asin(0.5)},
            {"atan(2)", std::atan(two)},
            {"atan2(1,-2)", std::atan2(1, -2)},
            {"ceil(1.2)", 2},
            {"ceil(-1.2)", -1},
            {"cos(2)", std::cos(two)},
            {"cosh(2)", std::cosh(two)},
            {"e", 2.718281828459045},
            {"e()", 2.718281828459045},
            {"exp(2)", std::exp(two)},
            {"fac(5)", 120},
            {"floor(1.8)", 1},
            {"floor(-1.2)", -2},
            {"ln(10)", std::log(10)},
            {"ln(e)", 1},
            {"log(100)", 2},
            {"log10(1000)", 3},
            {"ncr(5,2)", 10},
            {"npr(5,2)", 20},
            {"pi", 3.141592653589793},
            {"pi()", 3.141592653589793},
            {"pi ( )", 3.141592653589793},
            {"pow(2,10)", 1024},
            {"sin(2)", std::sin(two)},
            {"sinh(2)", std::sinh(two)},
            {"sqrt(2)", std::sqrt(two)},
            {"tan(2)", std::tan(two)},
            {"tanh(2)", std::tanh(two)},
            {"sin 0", 0.0},
            {"sin 2^2", std::sin(two) * std::sin(two)},
            {"sqrt 16+9", 13},
            {"sqrt sqrt 16", 2},
            {"abs -3", 3},
            {"abs --3", 3},
            {"-abs -3", -3},
            {"--abs -3", 3},
            {"abs(1,-2)", 2},
            {"2*pi", 6.283185307179586},
            {"pi*2", 6.283185307179586},
            {"atan2(abs -1,pow(2,1)-1)", std::atan2(1, 1)},
        };
        for (const auto &row : rows)
            QTest::newRow(row.text) << QByteArray(row.text) << row.value;
    }

    void builtInFunctions() { operators(); }

    void countingFunctions_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<double>("value");

        const struct
        {
            const char *text;
            double value;
        } rows[] = {
            {"fac(0)", 1},
            {"fac(1)", 1},
            {"fac(5.9)", 120},
            {"fac(20)", 2432902008176640000.0},
            {"fac(21)", infinity},
            {"fac(4294967295)", infinity},
            {"fac(4294967296)", infinity},
            {"fac(1e300)", infinity},
            {"fac(1/0)", infinity},
            {"fac(-1)", notANumber},
            {"fac(-0.5)", notANumber},
            {"fac(-1/0)", notANumber},
            {"fac(0/0)", notANumber},
            {"ncr(5,0)", 1},
            {"ncr(5,5)", 1},
            {"ncr(5,3)", 10},
            {"ncr(5.9,2.9)", 10},
            {"ncr(0,0)", 1},
            {"ncr(2,5)", notANumber},
            {"ncr(-1,2)", notANumber},
            {"ncr(5,-1)", notANumber},
            {"ncr(0/0,1)", notANumber},
            {"ncr(1,0/0)", notANumber},
            {"ncr(61,30)", 232714176627630544.0},
            {"ncr(100,50)", infinity},
            {"ncr(4294967295,1)", 4294967295.0},
            {"ncr(4294967295,2)", 9223372030412324865.0},
            {"ncr(4294967295,2147483647)", infinity},
            {"ncr(4294967295,4294967294)", 4294967295.0},
            {"ncr(4294967295,4294967295)", 1},
            {"ncr(4294967296,1)", infinity},
            {"ncr(1/0,1)", infinity},
            {"ncr(1/0,1/0)", infinity},
            {"ncr(5,1/0)", notANumber},
            {"ncr(0/0,4294967295)", notANumber},
            {"ncr(0/0,4294967296)", infinity},
            {"ncr(ncr(1,2),10^10)", infinity},
            {"ncr(4294967295,0/0)", notANumber},
            {"ncr(4294967296,0/0)", infinity},
            {"ncr(1/0,0/0)", infinity},
            {"ncr(0/0,0/0)", notANumber},
            {"ncr(0/0,-1)", notANumber},
            {"ncr(-1,0/0)", notANumber},
            {"npr(0/0,10^10)", infinity},
            {"npr(10^10,0/0)", notANumber},
            {"npr(5,5)", 120},
            {"npr(5,0)", 1},
            {"npr(2,5)", notANumber},
            {"npr(30,21)", infinity},
            {"npr(0/0,0/0)", notANumber},
        };
        for (const auto &row : rows)
            QTest::newRow(row.text) << QByteArray(row.text) << row.value;
    }

    void countingFunctions() { operators(); }

    void errorPositionCountsWhatWasRead_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("error");

        const struct
        {
            const char *text;
            int error;
        } rows[] = {
            {"", 1},         {" ", 1},          {"   ", 3},        {"foo", 3},
            {"foo+1", 3},    {"1+foo", 5},      {"1+", 2},         {"1+ ", 3},
            {"1 2", 3},      {"1 234", 5},      {"1 pi", 4},       {"1(2)", 2},
            {"pi 2", 4},     {"ABC", 1},        {"sinX", 4},       {"sins(1)", 4},
            {"_a", 1},       {"1$2", 2},        {"1\v+1", 2},      {"1=1", 2},
            {"\xd0\x9f", 1}, {"1+\xd0\x9f", 3}, {"1\xc2\xa0", 2},  {"*2", 1},
            {"1**2", 3},     {"-*2", 2},        {"2^^2", 3},       {")", 1},
            {"1)", 2},       {"(", 1},          {"()", 2},         {"(1", 2},
            {"((1)", 4},     {"(1,)", 4},       {"(,1)", 2},       {",", 1},
            {"1,", 2},       {",1", 1},         {"pow", 3},        {"pow 1", 5},
            {"pow(", 4},     {"pow()", 5},      {"pow(1", 5},      {"pow(1)", 6},
            {"pow(1,", 6},   {"pow(1,2", 7},    {"pow(1,2,3)", 8}, {"pow(1,(2,3,4)", 13},
            {"pow(,1)", 5},  {"abs", 3},        {"abs()", 5},      {"abs)", 4},
            {"sin sin", 7},  {"sin*2", 4},      {"pi(", 3},        {"pi(1)", 4},
            {"pi()()", 5},   {"-", 1},          {"1-", 2},         {"0xg", 3},
            {"0x", 2},       {"1e", 2},         {"1ee", 3},        {"1e+", 2},
            {"1.2.3", 5},    {".", 1},          {"..5", 1},        {"1+.", 2},
            {"1.e.", 3},     {"(.", 1},         {"inf", 3},        {"nan", 3},
            {"ABC+1", 1},
        };
        for (const auto &row : rows)
            QTest::addRow("\"%s\"", row.text) << QByteArray(row.text) << row.error;
    }

    void errorPositionCountsWhatWasRead()
    {
        QFETCH(QByteArray, text);
        QFETCH(int, error);
        compareBothRoads(text, notANumber, error);
    }

    void errorPlaceMayBeNull()
    {
        QCOMPARE(te_interp("1+1", nullptr), 2.0);
        QVERIFY(std::isnan(te_interp("1+", nullptr)));
        QVERIFY(te_compile("1+", nullptr, 0, nullptr) == nullptr);
        te_expr *tree = te_compile("1+1", nullptr, 0, nullptr);
        QCOMPARE(te_eval(tree), 2.0);
        te_free(tree);
    }

    void nullTextCountsAsEmpty()
    {
        int error = 0;
        QVERIFY(std::isnan(te_interp(nullptr, &error)));
        QCOMPARE(error, 1);
    }

    void lonePointIsAnErrorTokenThatReadsNothing()
    {
        te_state state{};
        state.start = ".";
        state.next = state.start;
        next_token(&state);
        QCOMPARE(state.type, int(TE_TOKEN_ERROR));
        QCOMPARE(state.next, state.start);
    }

    /// Programs in the field have the numbers compiled in.
    void kindsAndLimitsKeepTheirNumbers_data()
    {
        QTest::addColumn<int>("constant");
        QTest::addColumn<int>("number");
        QTest::newRow("TE_VARIABLE") << int(TE_VARIABLE) << 0;
        QTest::newRow("TE_CONSTANT") << int(TE_CONSTANT) << 1;
        const std::vector<int> functions{TE_FUNCTION0, TE_FUNCTION1, TE_FUNCTION2, TE_FUNCTION3,
                                         TE_FUNCTION4, TE_FUNCTION5, TE_FUNCTION6, TE_FUNCTION7};
        const std::vector<int> closures{TE_CLOSURE0, TE_CLOSURE1, TE_CLOSURE2, TE_CLOSURE3,
                                        TE_CLOSURE4, TE_CLOSURE5, TE_CLOSURE6, TE_CLOSURE7};
        const std::vector<int> tokens{TE_TOKEN_NONE,      TE_TOKEN_ERROR,    TE_TOKEN_END,
                                      TE_TOKEN_SEPARATOR, TE_TOKEN_OPEN,     TE_TOKEN_CLOSE,
                                      TE_TOKEN_NUMBER,    TE_TOKEN_VARIABLE, TE_TOKEN_INFIX};
        addNumberedRows("TE_FUNCTION", functions, 8);
        addNumberedRows("TE_CLOSURE", closures, 16);
        addNumberedRows("TE_TOKEN", tokens, 24);
        QTest::newRow("TE_FLAG_PURE") << int(TE_FLAG_PURE) << 32;
        QTest::newRow("te_max_nesting") << int(te_max_nesting) << 2000;
    }

    void kindsAndLimitsKeepTheirNumbers()
    {
        QFETCH(int, constant);
        QTEST(constant, "number");
    }
};

QTEST_APPLESS_MAIN(TestExpressionEvaluator)
#include "tst_expressionevaluator.moc"
