#include <QtTest>
#include <vector>

#include "expressionbench.h"
#include "printerdocs/expressionevaluator.h"

using namespace expressionbench;

namespace {

double sum7(double a, double b, double c, double d, double e, double f, double g)
{
    return a + 2 * b + 3 * c + 4 * d + 5 * e + 6 * f + 7 * g;
}

double context0(void *context)
{
    return *static_cast<double *>(context);
}

double context7(void *context, double a, double b, double c, double d, double e, double f, double g)
{
    return *static_cast<double *>(context) + sum7(a, b, c, d, e, f, g);
}

template <typename... Doubles>
double digitsBehind(void *context, Doubles... arguments)
{
    return *static_cast<double *>(context) - digits(arguments...);
}

}  // namespace

/// Variables, functions and closures of the caller.
class TestExpressionBindings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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

    void nullNameNeverMatches()
    {
        double a = 1;
        const te_variable variable{nullptr, &a, TE_VARIABLE, nullptr};
        int error = 0;
        QVERIFY(te_compile("a", &variable, 1, &error) == nullptr);
        QCOMPARE(error, 1);
    }
};

QTEST_APPLESS_MAIN(TestExpressionBindings)
#include "tst_expressionbindings.moc"
