#include <QtTest>
#include <cmath>
#include <limits>
#include <memory>

#include "arbitrary.h"
#include "expressionmodel.h"
#include "printerdocs/expressionevaluator.h"

namespace {

/// An expression of this depth, mostly a right one.
rc::Gen<std::string> expression(int depth)
{
    const auto number = rc::gen::map(rc::gen::inRange(0, 2000), [](int value) {
        return value % 3 == 0 ? std::to_string(value / 100.0) : std::to_string(value);
    });
    if (depth == 0)
        return rc::gen::weightedOneOf<std::string>(
            {{6, number},
             {1, rc::gen::element<std::string>("pi", "e", "pi()", "", "x", "1.", ".")}});
    return rc::gen::exec([depth] {
        const std::string a = *expression(depth - 1);
        switch (*rc::gen::inRange(0, 9)) {
            case 0:
                return "(" + a + ")";
            case 1:
                return "-" + a;
            case 2:
                return *rc::gen::element<std::string>("abs", "sin ", "sqrt", "fac", "log") + "(" +
                       a + ")";
            case 3:
                return *rc::gen::element<std::string>("pow", "atan2", "ncr") + "(" + a + "," +
                       *expression(depth - 1) + ")";
            case 4:
                return "ln " + a;
            default:
                return a +
                       *rc::gen::element<std::string>("+", "-", "*", "/", "%", "^", ",", " + ") +
                       *expression(depth - 1);
        }
    });
}

rc::Gen<std::string> anyExpression()
{
    return rc::gen::mapcat(rc::gen::inRange(0, 6), expression);
}

/// One whose value may stand in brackets in another.
std::string rightExpression()
{
    const std::string text = *anyExpression();
    int error = 0;
    te_interp(text.c_str(), &error);
    RC_PRE(error == 0);
    return text;
}

bool same(double a, double b)
{
    return (std::isnan(a) && std::isnan(b)) || (a == b && std::signbit(a) == std::signbit(b));
}

double value(const std::string &text)
{
    int error = 0;
    const double result = te_interp(text.c_str(), &error);
    RC_ASSERT(error == 0);
    return result;
}

}  // namespace

class TestExpressionLaws : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void valueAndErrorAreThoseOfTheGrammar()
    {
        VERIFY_LAW([] {
            const std::string text = *anyExpression();
            int error = -1;
            const double result = te_interp(text.c_str(), &error);
            const ExpressionModel model(text.c_str());
            RC_ASSERT(error == model.error());
            RC_ASSERT(same(result, model.value()));
        });
    }

    void anyTextIsReadAsTheGrammarSays()
    {
        VERIFY_LAW([] {
            const auto character =
                rc::gen::elementOf(std::string("0123456789.e+-*/%^(),x pislnqrtowa\t"));
            const std::string text = *rc::gen::container<std::string>(character);
            int error = -1;
            const double result = te_interp(text.c_str(), &error);
            const ExpressionModel model(text.c_str());
            RC_ASSERT(error == model.error());
            RC_ASSERT(same(result, model.value()));
        });
    }

    void interpretingIsCompilingAndEvaluating()
    {
        VERIFY_LAW([] {
            const std::string text = *anyExpression();
            int error = -1;
            int compileError = -1;
            const double result = te_interp(text.c_str(), &error);
            const std::unique_ptr<te_expr, decltype(&te_free)> tree(
                te_compile(text.c_str(), nullptr, 0, &compileError), te_free);
            RC_ASSERT(error == compileError);
            RC_ASSERT(same(result, te_eval(tree.get())));
        });
    }

    void foldingChangesNoValue()
    {
        VERIFY_LAW([](int number) {
            const std::string text = rightExpression();
            const double x = number;
            const te_variable variable{"y", &x, TE_VARIABLE, nullptr};
            const std::string withVariable = "(" + text + ")*y";
            const std::unique_ptr<te_expr, decltype(&te_free)> tree(
                te_compile(withVariable.c_str(), &variable, 1, nullptr), te_free);
            RC_ASSERT(tree != nullptr);
            RC_ASSERT(same(te_eval(tree.get()), value(text) * x));
        });
    }

    void bracketsAndBlanksAroundChangeNothing()
    {
        VERIFY_LAW([] {
            const std::string text = rightExpression();
            RC_ASSERT(same(value("(" + text + ")"), value(text)));
            RC_ASSERT(same(value(" \t" + text + "\n "), value(text)));
            RC_ASSERT(same(value("--(" + text + ")"), value(text)));
        });
    }

    void operatorsAreThoseOfDoubles()
    {
        VERIFY_LAW([] {
            const std::string left = rightExpression();
            const std::string right = rightExpression();
            const auto both = [&](const char *sign) {
                return value("(" + left + ")" + sign + "(" + right + ")");
            };
            const double a = value(left);
            const double b = value(right);
            RC_ASSERT(same(both("+"), a + b));
            RC_ASSERT(same(both("-"), a - b));
            RC_ASSERT(same(both("*"), a * b));
            RC_ASSERT(same(both("%"), std::fmod(a, b)));
            RC_ASSERT(same(both("^"), std::pow(a, b)));
            RC_ASSERT(same(both(","), b));
            if (b != 0)
                RC_ASSERT(same(both("/"), a / b));
            RC_ASSERT(same(both("+"), value("(" + right + ")+(" + left + ")")));
        });
    }

    void numberIsReadToItsNearestDouble()
    {
        VERIFY_LAW([](double number) {
            RC_PRE(std::isfinite(number) && !std::signbit(number));
            for (const char format : {'g', 'f', 'e'}) {
                const int digits = *rc::gen::inRange(0, 18);
                const QByteArray text = QByteArray::number(number, format, digits);
                RC_ASSERT(same(value(text.toStdString()), std::strtod(text.constData(), nullptr)));
            }
            const QByteArray exact = QByteArray::number(number, 'g', 17);
            RC_ASSERT(same(value(exact.toStdString()), number));
        });
    }

    void shortNumberIsReadToItsNearestDouble()
    {
        VERIFY_LAW([] {
            const auto digits =
                rc::gen::container<std::string>(rc::gen::elementOf(std::string("0123456789")));
            const std::string text = *digits + "." + *digits;
            RC_PRE(text.size() > 1);
            RC_ASSERT(same(value(text), std::strtod(text.c_str(), nullptr)));
        });
    }
};

QTEST_APPLESS_MAIN(TestExpressionLaws)
#include "tst_expression_laws.moc"
