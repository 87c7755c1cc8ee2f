#include <QtTest>
#include <algorithm>
#include <cfenv>
#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#include "expressionbench.h"
#include "printerdocs/expressionevaluator.h"

using namespace expressionbench;

namespace {

// Compilers would multiply where they know the exponent.
const volatile double two = 2;

double pow2(double a)
{
    return std::pow(a, two);
}

quint64 bitsOf(double value)
{
    quint64 bits = 0;
    std::memcpy(&bits, &value, sizeof value);
    return bits;
}

double ofBits(quint64 bits)
{
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

/// Sets how sums and products are rounded, until it goes.
class Rounding
{
public:
    explicit Rounding(int direction) : m_before(std::fegetround()) { std::fesetround(direction); }
    ~Rounding() { std::fesetround(m_before); }
    Rounding(const Rounding &) = delete;
    Rounding &operator=(const Rounding &) = delete;

private:
    int m_before;
};

/// Amounts, numbers of all magnitudes, and those at which magnitudes end.
std::vector<double> numbersToSquare()
{
    std::vector<double> numbers{0.0,      1e-320,  5e-324,    1e308,      0x1p-64,  0x1p64,
                                0x1p-511, 0x1p512, 0x1p-1022, notANumber, HUGE_VAL, 0x1p-65};
    for (int cents = 1; cents < 100000; ++cents)
        numbers.push_back(cents / 100.0);
    std::mt19937_64 random(1);
    for (int i = 0; i < 50000; ++i)
        numbers.push_back(ofBits(random()));
    // Within the magnitudes of amounts, and those that lie next to an end of them.
    for (int i = 0; i < 200000; ++i)
        numbers.push_back(ofBits((random() & 0x800FFFFFFFFFFFFF) | ((958 + random() % 130) << 52)));
    return numbers;
}

std::vector<double> calledWith;  ///< the arguments of all calls of the functions below
double a = 0;

template <typename... Doubles>
double noted(Doubles... arguments)
{
    calledWith.push_back(sizeof...(arguments));
    (calledWith.push_back(arguments), ...);
    a += 0.5;  // what stands to the right of the call sees it
    return (0.25 + ... + arguments);
}

template <typename... Doubles>
double notedBehind(void *context, Doubles... arguments)
{
    calledWith.push_back(*static_cast<double *>(context));
    return noted(arguments...);
}

double callByTheLetter(const te_expr *node, const std::vector<double> &arguments)
{
    using D = double;
    const auto as = [node](auto *function) {
        return reinterpret_cast<decltype(function)>(const_cast<void *>(node->function));
    };
    const auto *x = arguments.data();
    const bool isClosure = (node->type & 0x1F) >= TE_CLOSURE0;
    void *const context = isClosure ? node->parameters[arguments.size()] : nullptr;
    switch (arguments.size()) {
        case 0:
            return isClosure ? as(notedBehind<>)(context) : as(noted<>)();
        case 1:
            return isClosure ? as(notedBehind<D>)(context, x[0]) : as(noted<D>)(x[0]);
        case 2:
            return isClosure ? as(notedBehind<D, D>)(context, x[0], x[1])
                             : as(noted<D, D>)(x[0], x[1]);
        default:
            return isClosure ? as(notedBehind<D, D, D>)(context, x[0], x[1], x[2])
                             : as(noted<D, D, D>)(x[0], x[1], x[2]);
    }
}

/// The function behind an operator.
const void *functionOf(const char *formula)
{
    static const double any = 0;
    return compiled(formula, {{"x", &any, TE_VARIABLE, nullptr}})->function;
}

/// The value of a tree as the interface tells it, node by node.
double valueByTheLetter(const te_expr *node)
{
    static const void *const power = functionOf("x^x");
    if (!node)
        return notANumber;
    const int kind = node->type & 0x1F;
    if (kind == TE_VARIABLE)
        return *node->bound;
    if (kind == TE_CONSTANT)
        return node->value;
    if (kind < TE_FUNCTION0 || kind > TE_CLOSURE7)
        return notANumber;
    std::vector<double> arguments;
    for (int i = 0; i < (kind & 7); ++i)
        arguments.push_back(valueByTheLetter(static_cast<const te_expr *>(node->parameters[i])));
    if (kind == TE_FUNCTION2 && node->function == power)
        return std::pow(arguments[0], arguments[1]);
    return callByTheLetter(node, arguments);
}

/// Makes formulas over functions that note their calls.
class RandomFormula
{
public:
    explicit RandomFormula(quint32 seed) : m_random(seed)
    {
        using D = double;
        for (double &value : m_values)
            value = number();
        m_variables = {{"a", &a, TE_VARIABLE, nullptr},
                       {"b", &m_values[0], TE_VARIABLE, nullptr},
                       {"c", &m_values[1], TE_VARIABLE, nullptr},
                       {"n", address(noted<>), TE_FUNCTION0, nullptr},
                       {"na", address(noted<D>), TE_FUNCTION1, nullptr},
                       {"nb", address(noted<D, D>), TE_FUNCTION2, nullptr},
                       {"nc", address(noted<D, D, D>), TE_FUNCTION3, nullptr},
                       {"k", address(notedBehind<>), TE_CLOSURE0, &m_values[2]},
                       {"ka", address(notedBehind<D>), TE_CLOSURE1, &m_values[2]},
                       {"kb", address(notedBehind<D, D>), TE_CLOSURE2, &m_values[2]},
                       {"kc", address(notedBehind<D, D, D>), TE_CLOSURE3, &m_values[2]}};
    }

    double number()
    {
        static const double unusual[] = {0.0, -0.0, notANumber, HUGE_VAL, -HUGE_VAL, 2, 95.97};
        const quint32 choice = below(40);
        return choice < 7 ? unusual[choice] : (double(m_random() % 200000) - 50000) / 100;
    }

    QByteArray text(int depth)
    {
        static const char *const leaves[] = {"a", "b", "c", "2", "2", "3.5", "n", "k"};
        static const char *const infixes[] = {"+", "-", "*", "/", "%", "^", "^", ","};
        static const char *const functions[] = {"sqrt", "sqrt", "abs", "-", "na", "ka"};
        static const char *const pairs[] = {"nb", "kb", "pow", "atan2"};
        if (depth == 0)
            return leaves[m_random() % 8];
        const QByteArray inner = "(" + text(depth - 1);
        const auto other = [&] { return text(int(m_random() % quint32(depth))) + ")"; };
        switch (m_random() % 8) {
            case 0:
            case 1:
                return functions[m_random() % 6] + inner + ")";
            case 2:
                return pairs[m_random() % 4] + inner + "," + other();
            case 3:
                return QByteArray(m_random() % 2 ? "nc" : "kc") + inner + "," + text(depth - 1) +
                       "," + other();
            default:
                return "(" + inner + ")" + infixes[m_random() % 8] + "(" + other() + ")";
        }
    }

    quint32 below(quint32 count) { return quint32(m_random()) % count; }
    const std::vector<te_variable> &variables() const { return m_variables; }

private:
    std::mt19937 m_random;
    double m_values[3] = {};
    std::vector<te_variable> m_variables;
};

void collectNodes(te_expr *node, std::vector<te_expr *> &nodes)
{
    if (!node)
        return;
    nodes.push_back(node);
    const int kind = node->type & 0x1F;
    for (int i = 0; kind >= TE_FUNCTION0 && i < (kind & 7); ++i)
        collectNodes(static_cast<te_expr *>(node->parameters[i]), nodes);
}

/// What an evaluation did: the bits of its value, but for those of NaN, and the calls.
std::vector<quint64> outcomeOf(double (*evaluate)(const te_expr *), const te_expr *tree)
{
    calledWith.clear();
    a = 3.25;
    const double value = evaluate(tree);
    calledWith.push_back(value);
    calledWith.push_back(a);
    std::vector<quint64> outcome;
    for (const double number : calledWith)
        outcome.push_back(bitsOf(std::isnan(number) ? notANumber : number));
    return outcome;
}

}  // namespace

/// te_eval takes short ways for what formulas do most; none of them shows.
class TestFormulas : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void squaresAreThoseOfTheMathematicalLibrary_data()
    {
        QTest::addColumn<int>("direction");
        QTest::newRow("to the nearest") << FE_TONEAREST;
        QTest::newRow("upwards") << FE_UPWARD;
        QTest::newRow("downwards") << FE_DOWNWARD;
        QTest::newRow("to zero") << FE_TOWARDZERO;
    }

    void squaresAreThoseOfTheMathematicalLibrary()
    {
        QFETCH(int, direction);
        double x = 0;
        const std::vector<te_variable> variables{{"x", &x, TE_VARIABLE, nullptr}};
        const Tree leaf = compiled("x^2", variables);
        const Tree inner = compiled("abs(x)^(2*1)", variables);
        int products = 0;
        int others = 0;
        for (const double number : numbersToSquare()) {
            x = number;
            const Rounding rounding(direction);
            const double expected = pow2(x);
            QVERIFY2(same(te_eval(leaf.get()), expected), QByteArray::number(number, 'g', 17));
            QVERIFY2(same(te_eval(inner.get()), expected), QByteArray::number(number, 'g', 17));
            ++(same(number * number, expected) ? products : others);
        }
        QVERIFY(products > 200000);
        QVERIFY(others > 100);  // these are what a plain multiplication would get wrong
    }

    void interpretedSquaresAreTheSame()
    {
        for (int cents = 1; cents < 20000; ++cents) {
            const QByteArray text = QByteArray::number(cents / 100.0, 'f', 2);
            QVERIFY(same(te_interp(text + "^2", nullptr), pow2(text.toDouble())));
        }
        QVERIFY(!same(te_interp("95.97^2", nullptr), te_interp("95.97*95.97", nullptr)));
    }

    void rootsOfNegativeNumbersAreNone()
    {
        double x = -1;
        const Tree tree = compiled("sqrt(x)", {{"x", &x, TE_VARIABLE, nullptr}});
        QVERIFY(std::isnan(te_eval(tree.get())));
        x = -0.0;
        QVERIFY(same(te_eval(tree.get()), -0.0));
        x = HUGE_VAL;
        QCOMPARE(te_eval(tree.get()), HUGE_VAL);
    }

    void formulasHaveTheValuesAndCallsOfTheLetter()
    {
        for (quint32 seed = 1; seed <= 40000; ++seed) {
            RandomFormula random(seed);
            const QByteArray text = random.text(int(1 + seed % 6));
            const Tree tree = compiled(text, random.variables());
            QVERIFY2(tree != nullptr, text);
            QVERIFY2(outcomeOf(te_eval, tree.get()) == outcomeOf(valueByTheLetter, tree.get()),
                     text + ", seed " + QByteArray::number(seed));
        }
    }

    // Clients change nodes between evaluations.
    void changedNodesCountAtTheNextEvaluation()
    {
        for (quint32 seed = 1; seed <= 20000; ++seed) {
            RandomFormula random(seed);
            const Tree tree = compiled(random.text(int(1 + seed % 5)), random.variables());
            QVERIFY(tree != nullptr);
            te_eval(tree.get());
            std::vector<te_expr *> nodes;
            collectNodes(tree.get(), nodes);
            te_expr *const node = nodes[random.below(quint32(nodes.size()))];
            const te_expr before = *node;
            const bool isPair = (node->type & 0x1F) == TE_FUNCTION2;
            switch (random.below(6)) {
                case 0:
                    te_free_parameters(node);
                    break;
                case 1:
                    node->type ^= TE_FLAG_PURE;
                    break;
                case 2:
                    node->type |= 64;
                    break;
                case 3:
                    node->function = isPair ? address(noted<double, double>) : node->function;
                    break;
                case 4:
                    node->function = isPair ? functionOf("x^x") : node->function;
                    break;
                default:
                    node->type = random.below(2) ? 2 : 31;
            }
            const bool isAlike =
                outcomeOf(te_eval, tree.get()) == outcomeOf(valueByTheLetter, tree.get());
            node->type = before.type;
            QVERIFY2(isAlike, "seed " + QByteArray::number(seed));
        }
    }
};

QTEST_APPLESS_MAIN(TestFormulas)
#include "tst_formulas.moc"
