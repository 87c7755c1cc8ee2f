#include <unistd.h>

#include <QtTest>
#include <clocale>
#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <vector>

#include "printerdocs/expressionevaluator.h"

Q_DECLARE_METATYPE(const void *)

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
const double notANumber = std::numeric_limits<double>::quiet_NaN();

using Tree = std::unique_ptr<te_expr, decltype(&te_free)>;

/// The same number, bit for bit but for the payload of NaN.
bool same(double a, double b)
{
    if (std::isnan(a) || std::isnan(b))
        return std::isnan(a) && std::isnan(b);
    return a == b && std::signbit(a) == std::signbit(b);
}

Tree compiled(const QByteArray &text, const std::vector<te_variable> &variables = {},
              int *error = nullptr)
{
    int ignored = -1;
    return Tree(te_compile(text.constData(), variables.data(), int(variables.size()),
                           error ? error : &ignored),
                te_free);
}

const te_expr *child(const te_expr *node, int index)
{
    return static_cast<const te_expr *>(node->parameters[index]);
}

/// A row for each of the constants, which are numbered from `first` on.
void addNumberedRows(const char *name, const std::vector<int> &constants, int first)
{
    for (int i = 0; i < int(constants.size()); ++i)
        QTest::addRow("%s, %d", name, i) << constants[size_t(i)] << first + i;
}

template <class Function>
const void *address(Function *function)
{
    return reinterpret_cast<const void *>(function);
}

/// Runs a function on a thread with much less stack than clients' threads have.
template <class Function>
void runOnSmallStack(Function function)
{
    std::unique_ptr<QThread> thread(QThread::create(function));
    thread->setStackSize(256 * 1024);
    thread->start();
    QVERIFY(thread->wait());
}

/// What te_print writes to the standard output.
QString printed(const te_expr *tree)
{
    QTemporaryFile file;
    if (!file.open())
        return QStringLiteral("no temporary file");
    fflush(stdout);
    const int before = dup(STDOUT_FILENO);
    dup2(file.handle(), STDOUT_FILENO);
    te_print(tree);
    fflush(stdout);
    dup2(before, STDOUT_FILENO);
    close(before);
    file.seek(0);
    return QString::fromUtf8(file.readAll());
}

QString pointer(const void *p)
{
    return QString::asprintf("%p", p);
}

int calls = 0;

double seven()
{
    return 7;
}

double counted(double a)
{
    ++calls;
    return a + 1;
}

double sum7(double a, double b, double c, double d, double e, double f, double g)
{
    return a + 2 * b + 3 * c + 4 * d + 5 * e + 6 * f + 7 * g;
}

double sum3(double a, double b, double c)
{
    return a + 2 * b + 3 * c;
}

double context0(void *context)
{
    return *static_cast<double *>(context);
}

double context1(void *context, double a)
{
    return *static_cast<double *>(context) - a;
}

double context7(void *context, double a, double b, double c, double d, double e, double f, double g)
{
    return *static_cast<double *>(context) + sum7(a, b, c, d, e, f, g);
}

/// The arguments as the digits of a number.
template <typename... Doubles>
double digits(Doubles... arguments)
{
    double number = 0;
    ((number = number * 10 + arguments), ...);
    return number;
}

template <typename... Doubles>
double digitsBehind(void *context, Doubles... arguments)
{
    return *static_cast<double *>(context) - digits(arguments...);
}

/// A random expression: as text with a bracket around every part, and its value computed apart.
class RandomExpression
{
public:
    explicit RandomExpression(quint32 seed) : m_random(seed) {}

    QByteArray make(int depth, double *value)
    {
        if (depth == 0)
            return number(value);
        switch (m_random() % 8) {
            case 0:
                return negated(depth, value);
            case 1:
                return function(depth, value);
            default:
                return infix(depth, value);
        }
    }

private:
    QByteArray number(double *value)
    {
        *value = double(m_random() % 100000) / 64;
        return QByteArray::number(*value, 'g', 17);
    }

    QByteArray negated(int depth, double *value)
    {
        const QByteArray inner = make(depth - 1, value);
        *value = -*value;
        return "(-" + inner + ")";
    }

    QByteArray function(int depth, double *value)
    {
        const QByteArray inner = make(depth - 1, value);
        switch (m_random() % 4) {
            case 0:
                *value = std::sqrt(*value);
                return "sqrt(" + inner + ")";
            case 1:
                *value = std::floor(*value);
                return "floor(" + inner + ")";
            case 2:
                *value = std::atan2(*value, 2.5);
                return "atan2(" + inner + ",2.5)";
            default:
                *value = std::log10(*value);
                return "log(" + inner + ")";
        }
    }

    QByteArray infix(int depth, double *value)
    {
        double left = 0;
        double right = 0;
        const QByteArray l = make(depth - 1, &left);
        const QByteArray r = make(int(m_random() % uint(depth)), &right);
        const char sign = "+-*/%^,"[m_random() % 7];
        *value = computed(left, sign, right);
        return "(" + l + sign + r + ")";
    }

    static double computed(double left, char sign, double right)
    {
        switch (sign) {
            case '+':
                return left + right;
            case '-':
                return left - right;
            case '*':
                return left * right;
            case '/':
                return left / right;
            case '%':
                return std::fmod(left, right);
            case '^':
                return std::pow(left, right);
            default:
                return right;
        }
    }

    std::mt19937 m_random;
};

}  // namespace

class TestExpressionEvaluator : public QObject
{
    Q_OBJECT

private:
    static void compareBothRoads(const QByteArray &text, double value, int error)
    {
        int position = -1;
        const double direct = te_interp(text.constData(), &position);
        QVERIFY2(same(direct, value),
                 qPrintable(QString("%1 is %2").arg(QString(text)).arg(direct)));
        QCOMPARE(position, error);
        position = -1;
        const Tree tree = compiled(text, {}, &position);
        QCOMPARE(position, error);
        QCOMPARE(tree != nullptr, error == 0);
        QVERIFY(same(te_eval(tree.get()), value));
    }

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

    void nullNameNeverMatches()
    {
        double a = 1;
        const te_variable variable{nullptr, &a, TE_VARIABLE, nullptr};
        int error = 0;
        QVERIFY(te_compile("a", &variable, 1, &error) == nullptr);
        QCOMPARE(error, 1);
    }

    void nestingCountsBracketsAndFunctionsWithArguments()
    {
        const auto nested = [](const char *piece, int times, const char *inner) {
            const QByteArray closing(QByteArray(piece).count('(') * times, ')');
            int error = 0;
            te_interp((QByteArray(piece).repeated(times) + inner + closing).constData(), &error);
            return error;
        };
        QCOMPARE(nested("(", te_max_nesting, "pi"), 0);
        QVERIFY(nested("(", te_max_nesting + 1, "1") != 0);
        QCOMPARE(nested("abs(", te_max_nesting / 2, "1"), 0);
        QVERIFY(nested("abs(", te_max_nesting / 2 + 1, "1") != 0);
        QCOMPARE(nested("abs ", te_max_nesting, "e"), 0);
    }

    void nestingTakesNoStack_data()
    {
        QTest::addColumn<QByteArray>("open");
        QTest::addColumn<QByteArray>("close");
        QTest::addColumn<int>("times");

        QTest::newRow("brackets") << QByteArray("(") << QByteArray(")") << int(te_max_nesting);
        QTest::newRow("signs in brackets")
            << QByteArray("1*-(") << QByteArray(")") << int(te_max_nesting);
        QTest::newRow("functions") << QByteArray("abs ") << QByteArray() << int(te_max_nesting);
        QTest::newRow("functions with brackets")
            << QByteArray("-abs(") << QByteArray(")") << te_max_nesting / 2;
        QTest::newRow("first arguments")
            << QByteArray("pow(") << QByteArray(",1)") << int(te_max_nesting);
        QTest::newRow("last arguments")
            << QByteArray("1+2*3^atan2(0,") << QByteArray(")") << int(te_max_nesting);
        QTest::newRow("lists") << QByteArray("(1,2,") << QByteArray(")") << int(te_max_nesting);
    }

    void nestingTakesNoStack()
    {
        QFETCH(QByteArray, open);
        QFETCH(QByteArray, close);
        QFETCH(int, times);
        const auto text = [&](int depth, const char *inner) {
            return open.repeated(depth) + inner + close.repeated(depth);
        };
        double a = 0;
        runOnSmallStack([&] {
            int error = -1;
            const double value = te_interp(text(times, "0").constData(), &error);
            QCOMPARE(error, 0);
            const Tree tree = compiled(text(times, "a"), {{"a", &a, TE_VARIABLE, nullptr}});
            QVERIFY(tree != nullptr);
            QVERIFY(same(te_eval(tree.get()), value));
            te_interp(text(times + 1, "0").constData(), &error);
            QVERIFY(error > times);
        });
    }

    void nullAddressIsAParseError()
    {
        const te_variable variable{"a", nullptr, TE_VARIABLE, nullptr};
        int error = 0;
        QVERIFY(te_compile("a", &variable, 1, &error) == nullptr);
        QCOMPARE(error, 1);
    }

    void freedArgumentsAreForgotten()
    {
        double a = 1;
        const te_variable variable{"a", &a, TE_VARIABLE, nullptr};
        te_expr *const tree = te_compile("a+a", &variable, 1, nullptr);
        te_free_parameters(tree);
        te_free(tree);
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

    void nullTreeIsHarmless()
    {
        QVERIFY(std::isnan(te_eval(nullptr)));
        te_free(nullptr);
        te_free_parameters(nullptr);
        QCOMPARE(printed(nullptr), QString());
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

    void unknownKindEvaluatesToNaN()
    {
        const Tree tree = compiled("1");
        for (int type : {2, 7, 24, 31}) {
            tree->type = type;
            QVERIFY(std::isnan(te_eval(tree.get())));
        }
        tree->type = TE_CONSTANT;
    }

    void variablesAreReadAtEvaluation()
    {
        double x = 2;
        double y_1 = 3;
        const Tree tree = compiled(
            "x*10+y_1", {{"x", &x, TE_VARIABLE, nullptr}, {"y_1", &y_1, TE_VARIABLE, nullptr}});
        QVERIFY(tree != nullptr);
        QCOMPARE(te_eval(tree.get()), 23.0);
        x = 5;
        y_1 = -1;
        QCOMPARE(te_eval(tree.get()), 49.0);
    }

    void bindingsAreComparedExactlyAndInOrder()
    {
        double first = 1;
        double second = 2;
        const std::vector<te_variable> variables{
            {"ab", &first, TE_VARIABLE, nullptr},
            {"a", &second, TE_VARIABLE, nullptr},
            {"a", &first, TE_VARIABLE, nullptr},
            {"B", &first, TE_VARIABLE, nullptr},
        };
        QCOMPARE(te_eval(compiled("a", variables).get()), 2.0);
        QCOMPARE(te_eval(compiled("ab", variables).get()), 1.0);
        QVERIFY(compiled("abc", variables) == nullptr);
        QVERIFY(compiled("B", variables) == nullptr);
    }

    void bindingHidesBuiltIn()
    {
        double sine = 42;
        const std::vector<te_variable> variables{{"sin", &sine, TE_VARIABLE, nullptr},
                                                 {"pi", address(counted), TE_FUNCTION1, nullptr}};
        QCOMPARE(te_eval(compiled("sin", variables).get()), 42.0);
        QCOMPARE(te_eval(compiled("pi 3", variables).get()), 4.0);
        QVERIFY(compiled("sin(1)", variables) == nullptr);
        QCOMPARE(te_eval(compiled("cos 0", variables).get()), 1.0);
    }

    void functionsAndClosuresTakeUpToSevenArguments()
    {
        double base = 1000;
        const std::vector<te_variable> variables{
            {"f", address(seven), TE_FUNCTION0, nullptr},
            {"f3", address(sum3), TE_FUNCTION3 | TE_FLAG_PURE, nullptr},
            {"f7", address(sum7), TE_FUNCTION7, nullptr},
            {"c", address(context0), TE_CLOSURE0, &base},
            {"c1", address(context1), TE_CLOSURE1, &base},
            {"c7", address(context7), TE_CLOSURE7 | TE_FLAG_PURE, &base},
        };
        const auto value = [&](const char *text) {
            return te_eval(compiled(text, variables).get());
        };
        QCOMPARE(value("f"), 7.0);
        QCOMPARE(value("f()+1"), 8.0);
        QCOMPARE(value("f3(1,2,3)"), 14.0);
        QCOMPARE(value("f7(1,2,3,4,5,6,7)"), 140.0);
        QCOMPARE(value("c"), 1000.0);
        QCOMPARE(value("c()*2"), 2000.0);
        QCOMPARE(value("c1 -1"), 1001.0);
        QCOMPARE(value("c1 2^2"), 996004.0);
        QCOMPARE(value("c7(1,2,3,4,5,6,7)"), 1140.0);
        QCOMPARE(value("f7(f,f3(1,1,1),c1 1,1,1,1,1)"), 7 + 12 + 2997 + 22.0);
        int error = 0;
        QVERIFY(compiled("f7(1,2,3,4,5,6)", variables, &error) == nullptr);
        QCOMPARE(error, 15);
        QVERIFY(compiled("f7(1,2,3,4,5,6,7,8)", variables, &error) == nullptr);
        QCOMPARE(error, 17);
    }

    void argumentsArriveInTheirOrder_data()
    {
        QTest::addColumn<int>("arity");
        QTest::addColumn<const void *>("function");
        QTest::addColumn<const void *>("closure");
        using D = double;
        const auto row = [](int arity, const void *function, const void *closure) {
            QTest::addRow("%d", arity) << arity << function << closure;
        };
        row(0, address(digits<>), address(digitsBehind<>));
        row(1, address(digits<D>), address(digitsBehind<D>));
        row(2, address(digits<D, D>), address(digitsBehind<D, D>));
        row(3, address(digits<D, D, D>), address(digitsBehind<D, D, D>));
        row(4, address(digits<D, D, D, D>), address(digitsBehind<D, D, D, D>));
        row(5, address(digits<D, D, D, D, D>), address(digitsBehind<D, D, D, D, D>));
        row(6, address(digits<D, D, D, D, D, D>), address(digitsBehind<D, D, D, D, D, D>));
        row(7, address(digits<D, D, D, D, D, D, D>), address(digitsBehind<D, D, D, D, D, D, D>));
    }

    void argumentsArriveInTheirOrder()
    {
        QFETCH(int, arity);
        QFETCH(const void *, function);
        QFETCH(const void *, closure);
        double base = 10000000;
        const std::vector<te_variable> variables{
            {"f", function, TE_FUNCTION0 + arity, nullptr},
            {"c", closure, TE_CLOSURE0 + arity, &base},
        };
        const QByteArray number = QByteArray("1234567").left(arity);
        QByteArrayList arguments;
        for (const char digit : number)
            arguments.append(QByteArray(1, digit));
        const QByteArray list = "(" + arguments.join(',') + ")";
        QCOMPARE(te_eval(compiled("f" + list, variables).get()), number.toDouble());
        QCOMPARE(te_eval(compiled("c" + list, variables).get()), base - number.toDouble());
    }

    void unusableBindingIsAnError()
    {
        double x = 1;
        const std::vector<te_variable> variables{
            {"constant", &x, TE_CONSTANT, nullptr},
            {"two", &x, 2, nullptr},
            {"token", &x, TE_TOKEN_NUMBER, nullptr},
        };
        for (const char *name : {"constant", "two", "token"})
            QVERIFY2(compiled(name, variables) == nullptr, name);
        QVERIFY(compiled("pi", variables) != nullptr);
        int error = 0;
        QVERIFY(te_compile("two", nullptr, 0, &error) == nullptr);
        QVERIFY(te_compile("two", variables.data(), -1, &error) == nullptr);
    }

    void constantPartsFold()
    {
        double x = 1;
        const std::vector<te_variable> variables{{"x", &x, TE_VARIABLE, nullptr}};
        QCOMPARE(compiled("1+2*sin 3-pi")->type, int(TE_CONSTANT));
        QCOMPARE(compiled("pi")->type, int(TE_CONSTANT));
        QCOMPARE(compiled("1,2")->type, int(TE_CONSTANT));
        const Tree tree = compiled("x+2*3", variables);
        QCOMPARE(tree->type, TE_FUNCTION2 | TE_FLAG_PURE);
        QCOMPARE(child(tree.get(), 0)->type, int(TE_VARIABLE));
        QCOMPARE(child(tree.get(), 0)->bound, const_cast<const double *>(&x));
        QCOMPARE(child(tree.get(), 1)->type, int(TE_CONSTANT));
        QCOMPARE(child(tree.get(), 1)->value, 6.0);
        const Tree comma = compiled("x,2", variables);
        QCOMPARE(comma->type, TE_FUNCTION2 | TE_FLAG_PURE);
    }

    void signsMakeNodesByParity()
    {
        double x = 1;
        const std::vector<te_variable> variables{{"x", &x, TE_VARIABLE, nullptr}};
        QCOMPARE(compiled("--x", variables)->type, int(TE_VARIABLE));
        QCOMPARE(compiled("+x", variables)->type, int(TE_VARIABLE));
        const Tree odd = compiled("-+--x", variables);
        QCOMPARE(odd->type, TE_FUNCTION1 | TE_FLAG_PURE);
        QCOMPARE(child(odd.get(), 0)->type, int(TE_VARIABLE));
    }

    void impureNodesAndTheirSubtreesStay()
    {
        const std::vector<te_variable> variables{
            {"impure", address(counted), TE_FUNCTION1, nullptr},
            {"pure", address(counted), TE_FUNCTION1 | TE_FLAG_PURE, nullptr}};
        calls = 0;
        const Tree tree = compiled("impure(1+2)+2*3", variables);
        QCOMPARE(calls, 0);
        QCOMPARE(child(tree.get(), 0)->type, int(TE_FUNCTION1));
        QCOMPARE(child(child(tree.get(), 0), 0)->type, TE_FUNCTION2 | TE_FLAG_PURE);
        QCOMPARE(child(tree.get(), 1)->type, int(TE_CONSTANT));
        QCOMPARE(te_eval(tree.get()), 10.0);
        QCOMPARE(te_eval(tree.get()), 10.0);
        QCOMPARE(calls, 2);

        calls = 0;
        const Tree folded = compiled("pure(1+2)+2*3", variables);
        QCOMPARE(folded->type, int(TE_CONSTANT));
        QCOMPARE(calls, 1);
        QCOMPARE(te_eval(folded.get()), 10.0);
        QCOMPARE(calls, 1);

        calls = 0;
        QVERIFY(compiled("pure(1)+", variables) == nullptr);
        QCOMPARE(calls, 0);
    }

    void closureKeepsItsContextBehindItsParameters()
    {
        double base = 10;
        const std::vector<te_variable> impure{{"c", address(context1), TE_CLOSURE1, &base}};
        const Tree tree = compiled("c(4)", impure);
        QCOMPARE(tree->type, int(TE_CLOSURE1));
        QCOMPARE(static_cast<void *>(tree->parameters[1]), static_cast<void *>(&base));
        base = 20;
        QCOMPARE(te_eval(tree.get()), 16.0);
        const Tree pure =
            compiled("c(4)", {{"c", address(context1), TE_CLOSURE1 | TE_FLAG_PURE, &base}});
        QCOMPARE(pure->type, int(TE_CONSTANT));
        QCOMPARE(pure->value, 16.0);
    }

    void printIndentsByDepth()
    {
        double x = 1;
        double base = 1;
        const std::vector<te_variable> variables{{"x", &x, TE_VARIABLE, nullptr},
                                                 {"c", address(context1), TE_CLOSURE1, &base},
                                                 {"f", address(seven), TE_FUNCTION0, nullptr}};
        const Tree tree = compiled("x+c(f-1.5)", variables);
        const te_expr *closure = child(tree.get(), 1);
        const te_expr *minus = child(closure, 0);
        const QString expected = "f2 " + pointer(tree->parameters[0]) + " " + pointer(closure) +
                                 "\n bound " + pointer(&x) + "\n f1 " + pointer(minus) + "\n  f2 " +
                                 pointer(minus->parameters[0]) + " " +
                                 pointer(minus->parameters[1]) + "\n   f0\n   1.500000\n";
        QCOMPARE(printed(tree.get()), expected);
        QCOMPARE(printed(compiled("1/4").get()), QString("0.250000\n"));
    }

    void scannerNamesEachToken()
    {
        double x = 1;
        double base = 1;
        const te_variable variables[] = {{"x", &x, TE_VARIABLE, nullptr},
                                         {"c", address(context1), TE_CLOSURE1, &base},
                                         {"f", address(sum3), TE_FUNCTION3, nullptr}};
        te_state state{};
        state.start = state.next = " 1.5 x c f sin pi +-*/%^ (,) A";
        state.lookup = variables;
        state.lookup_len = 3;
        const auto next = [&] {
            next_token(&state);
            return state.type;
        };
        QCOMPARE(next(), 30);
        QCOMPARE(state.value, 1.5);
        QCOMPARE(int(state.next - state.start), 4);
        QCOMPARE(next(), 31);
        QCOMPARE(state.bound, const_cast<const double *>(&x));
        QCOMPARE(next(), 17);
        QCOMPARE(state.context, static_cast<void *>(&base));
        QCOMPARE(next(), 11);
        QCOMPARE(reinterpret_cast<const void *>(state.function), address(sum3));
        QCOMPARE(next(), 9 | 32);
        QCOMPARE(next(), 8 | 32);
        for (int i = 0; i < 6; ++i)
            QCOMPARE(next(), 32);
        QCOMPARE(next(), 28);
        QCOMPARE(next(), 27);
        QCOMPARE(next(), 29);
        QCOMPARE(next(), 25);
        QCOMPARE(next(), 26);
        QCOMPARE(next(), 26);
        QCOMPARE(*state.next, '\0');
    }

    void randomExpressionsMatchTheirComputation()
    {
        for (quint32 seed = 1; seed <= 3000; ++seed) {
            RandomExpression random(seed);
            double value = 0;
            const QByteArray text = random.make(int(1 + seed % 7), &value);
            compareBothRoads(text, value, 0);
            if (QTest::currentTestFailed())
                return;
        }
    }

    // Any bytes, cut anywhere, give the same answer on both roads and a position in the text.
    void anyTextEndsInAnAnswer()
    {
        const QByteArrayList pieces{"1", ".5",   "2e", "0x1", "+",    "-",   "*",  "^", "(",
                                    ")", ",",    " ",  "sin", "pow(", "pi",  "e",  ".", "ncr(",
                                    "A", "\xff", "%",  "/",   "fac",  "1e9", "()", "x"};
        std::mt19937 random(7);
        for (int i = 0; i < 20000; ++i) {
            QByteArray text;
            for (auto length = random() % 12; length > 0; --length)
                text += pieces.at(int(random() % uint(pieces.size())));
            int error = -1;
            const double direct = te_interp(text.constData(), &error);
            int treeError = -1;
            const Tree tree = compiled(text, {}, &treeError);
            QCOMPARE(treeError, error);
            QVERIFY(error >= 0 && error <= qMax(1, text.size()));
            QVERIFY(same(te_eval(tree.get()), direct));
        }
    }

    void lengthIsNoLimit_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<double>("value");
        QTest::addColumn<int>("error");

        constexpr int million = 1000000;
        const auto times = [](const char *piece, int count) {
            return QByteArray(piece).repeated(count);
        };
        QTest::newRow("closing brackets") << times(")", million) << notANumber << 1;
        QTest::newRow("signs alone") << times("-", million) << notANumber << million;
        QTest::newRow("signs") << times("-", million + 1) + "1" << -1.0 << 0;
        QTest::newRow("sums") << times("1+", million) + "1" << million + 1.0 << 0;
        QTest::newRow("powers") << times("1^", million) + "1" << 1.0 << 0;
        QTest::newRow("commas") << times("1,", million) + "2" << 2.0 << 0;
        QTest::newRow("blanks") << times(" ", million) << notANumber << million;
        QTest::newRow("letters") << times("a", million) << notANumber << million;
        QTest::newRow("digits") << "0." + times("3", million) << 1.0 / 3 << 0;
        QTest::newRow("bytes beyond ASCII") << times("\xff", million) << notANumber << 1;
    }

    void lengthIsNoLimit()
    {
        QFETCH(QByteArray, text);
        QFETCH(double, value);
        QFETCH(int, error);
        runOnSmallStack([&] { compareBothRoads(text, value, error); });
    }

    // Variables keep the tree from folding: it stays as deep as the text is long.
    void deepTreesEvaluate_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<double>("value");

        constexpr int million = 1000000;
        QTest::newRow("sums") << QByteArray("a+").repeated(million) + "a" << million + 1.0;
        QTest::newRow("powers") << QByteArray("a^").repeated(million) + "a" << 1.0;
    }

    void deepTreesEvaluate()
    {
        QFETCH(QByteArray, text);
        QFETCH(double, value);
        double a = 1;
        runOnSmallStack([&] {
            const Tree tree = compiled(text, {{"a", &a, TE_VARIABLE, nullptr}});
            QVERIFY(tree != nullptr);
            QCOMPARE(te_eval(tree.get()), value);
        });
    }

    void deepTreesPrint()
    {
        constexpr int depth = 3000;
        double a = 1;
        runOnSmallStack([&] {
            const Tree tree =
                compiled(QByteArray("a+").repeated(depth) + "a", {{"a", &a, TE_VARIABLE, nullptr}});
            const QString text = printed(tree.get());
            QCOMPARE(text.count('\n'), 2 * depth + 1);
            QVERIFY(text.contains("\n" + QString(depth, ' ') + "bound " + pointer(&a) + "\n"));
        });
    }

    // A tree just around the depth where evaluation leaves the call stack.
    void everyDepthEvaluatesAlike()
    {
        double a = 1;
        for (int depth = 1; depth < 420; ++depth) {
            const Tree tree = compiled(QByteArray("a-2*").repeated(depth) + "a",
                                       {{"a", &a, TE_VARIABLE, nullptr}});
            QCOMPARE(te_eval(tree.get()), 1.0 - 2.0 * depth);
        }
    }
};

QTEST_APPLESS_MAIN(TestExpressionEvaluator)
#include "tst_expressionevaluator.moc"
