// An expression: interpreted, compiled and evaluated, and read by a plain model.
#include <cmath>
#include <memory>

#include "fuzzing.h"
#include "printerdocs/expressionevaluator.h"
#include "support/expressionmodel.h"

using fuzzing::equal;
using fuzzing::holds;

namespace {

double product(double a, double b)
{
    return a * b;
}

double scaled(void *factor, double a)
{
    return *static_cast<double *>(factor) * a;
}

double one()
{
    return 1;
}

template <class Function>
const void *addressOf(Function *function)
{
    return reinterpret_cast<const void *>(function);
}

using Tree = std::unique_ptr<te_expr, decltype(&te_free)>;

/// Bit for bit but for the sign and payload of NaN.
QByteArray bitsOf(double value)
{
    if (std::isnan(value))
        value = std::numeric_limits<double>::quiet_NaN();
    return QByteArray(reinterpret_cast<const char *>(&value), sizeof value).toHex();
}

void interpretedAsCompiled(const char *text)
{
    int error = -1;
    const double value = te_interp(text, &error);
    int compileError = -1;
    const Tree tree(te_compile(text, nullptr, 0, &compileError), te_free);
    equal("both roads stop alike", error, compileError);
    equal("a tree if there is no error", tree != nullptr, error == 0);
    equal("both roads give one value", bitsOf(value), bitsOf(te_eval(tree.get())));
    ExpressionModel model(text);
    equal("the value of the grammar", bitsOf(value), bitsOf(model.value()));
    equal("the error of the grammar", error, model.error());
}

/// Without constants to fold: the tree stays as deep as the text.
void evaluatedTwice(const char *text, double x)
{
    double factor = 3;
    const te_variable variables[] = {{"x", &x, TE_VARIABLE, nullptr},
                                     {"one", addressOf(one), TE_FUNCTION0, nullptr},
                                     {"mul", addressOf(product), TE_FUNCTION2, nullptr},
                                     {"by", addressOf(scaled), TE_CLOSURE1, &factor}};
    int error = -1;
    const Tree tree(te_compile(text, variables, 4, &error), te_free);
    equal("a tree if there is no error", tree != nullptr, error == 0);
    holds("the error lies in the text", error <= std::max(1, int(qstrlen(text))));
    equal("two evaluations", bitsOf(te_eval(tree.get())), bitsOf(te_eval(tree.get())));
}

/// The scanner comes to the end of every text in no more steps than it has characters.
void scannerMovesOn(const char *text)
{
    te_state state{};
    state.start = state.next = text;
    const int length = int(qstrlen(text));
    for (int step = 0; step <= length; ++step) {
        const char *const before = state.next;
        next_token(&state);
        if (state.type == TE_TOKEN_END || state.next == before)
            return;
    }
    fuzzing::fail("the scanner ends", QString::number(state.next - text), QString::number(length));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedDataProvider input(data, size);
    const double x = input.ConsumeFloatingPointInRange<double>(-10, 10);
    const int nesting = input.ConsumeBool() ? input.ConsumeIntegralInRange<int>(0, 2100) : 0;
    const std::string inner = input.ConsumeRemainingBytesAsString();
    const std::string text =
        std::string(size_t(nesting), '(') + inner.c_str() + std::string(size_t(nesting), ')');
    interpretedAsCompiled(text.c_str());
    evaluatedTwice(text.c_str(), x);
    scannerMovesOn(text.c_str());
    return 0;
}
