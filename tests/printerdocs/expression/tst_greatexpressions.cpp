#include <QtTest>
#include <cmath>
#include <memory>
#include <random>

#include "expressionbench.h"
#include "printerdocs/expressionevaluator.h"

using namespace expressionbench;

namespace {

/// Runs a function on a thread with much less stack than clients' threads have.
template <class Function>
void runOnSmallStack(Function function)
{
    std::unique_ptr<QThread> thread(QThread::create(function));
    thread->setStackSize(256 * 1024);
    thread->start();
    QVERIFY(thread->wait());
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

/// Expressions that are long, deep or random.
class TestGreatExpressions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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
};

QTEST_APPLESS_MAIN(TestGreatExpressions)
#include "tst_greatexpressions.moc"
