#include <QtTest>
#include <cmath>
#include <vector>

#include "expressionbench.h"
#include "printerdocs/expressionevaluator.h"

using namespace expressionbench;

namespace {

const te_expr *child(const te_expr *node, int index)
{
    return static_cast<const te_expr *>(node->parameters[index]);
}

}  // namespace

/// The nodes of compiled expressions: what folds, what is freed, how they print.
class TestExpressionTrees : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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

    void nullTreeIsHarmless()
    {
        QVERIFY(std::isnan(te_eval(nullptr)));
        te_free(nullptr);
        te_free_parameters(nullptr);
        QCOMPARE(printed(nullptr), QString());
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
};

QTEST_APPLESS_MAIN(TestExpressionTrees)
#include "tst_expressiontrees.moc"
