#include "printerdocs/expressionevaluator.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <new>
#include <vector>

#include "printerdocs/expressionevaluator_p.h"

namespace {

using namespace expression;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

// Sums lean to the left as deep as they are long: below this depth a tree is evaluated with a stack
// on the heap.
constexpr int deepestRecursion = 200;

te_expr *parameterOf(const te_expr *node, int index)
{
    return static_cast<te_expr *>(node->parameters[index]);
}

void *contextOf(const te_expr *node)
{
    return isClosure(node->type) ? node->parameters[arityOf(node->type)] : nullptr;
}

/// A node, zero-filled and exactly as large as its arguments and its context need.
te_expr *newNode(int type)
{
    const int pointers = arityOf(type) + (isClosure(type) ? 1 : 0);
    const std::size_t size =
        std::max(sizeof(te_expr), offsetof(te_expr, parameters) +
                                      sizeof(void *) * static_cast<std::size_t>(pointers));
    void *const memory = std::calloc(1, size);
    if (!memory)
        throw std::bad_alloc();
    auto *const node = static_cast<te_expr *>(memory);
    node->type = type;
    return node;
}

/// Builds the tree of an expression.
struct TreeBuilder
{
    using Node = te_expr *;

    static Node constant(double value)
    {
        te_expr *const node = newNode(TE_CONSTANT);
        node->value = value;
        return node;
    }
    static Node variable(const double *bound)
    {
        te_expr *const node = newNode(TE_VARIABLE);
        node->bound = bound;
        return node;
    }
    static Node call(int type, const void *function, void *context, const Node *arguments)
    {
        te_expr *const node = newNode(type);
        node->function = function;
        std::copy(arguments, arguments + arityOf(type), node->parameters);
        if (isClosure(type))
            node->parameters[arityOf(type)] = context;
        return node;
    }
};

/// Evaluates an expression while it is read: the same value without a tree.
struct ValueBuilder
{
    using Node = double;

    static Node constant(double value) { return value; }
    static Node variable(const double *bound) { return *bound; }
    static Node call(int type, const void *function, void *context, const Node *arguments)
    {
        return expression::call(type, function, context, arguments);
    }
};

/// Recursive descent, one operation for each rule; the three levels of binary operators share one.
template <typename Builder>
class Parser
{
public:
    using Node = typename Builder::Node;

    Parser(const char *text, const te_variable *variables, int count) : m_state()
    {
        m_state.start = text ? text : "";
        m_state.next = m_state.start;
        m_state.lookup = variables;
        m_state.lookup_len = count;
        next_token(&m_state);
    }

    Node list()
    {
        Node node = binary(sumLevel);
        while (m_state.type == TE_TOKEN_SEPARATOR) {
            next_token(&m_state);
            node = pair(addressOf(comma), node, binary(sumLevel));
        }
        return node;
    }

    /// 0 if the whole text was read.
    int error() const
    {
        if (m_state.type == TE_TOKEN_END)
            return 0;
        return std::max(1, static_cast<int>(m_state.next - m_state.start));
    }

private:
    enum Level { sumLevel, productLevel, powerLevel };

    static Node pair(const void *function, Node a, Node b)
    {
        const Node arguments[] = {a, b};
        return Builder::call(TE_FUNCTION2 | TE_FLAG_PURE, function, nullptr, arguments);
    }

    static int levelOf(const void *function)
    {
        if (function == addressOf(add) || function == addressOf(sub))
            return sumLevel;
        return function == addressOf(power) ? powerLevel : productLevel;
    }

    Node binary(int lowestLevel)
    {
        Node node = signedBase();
        while (m_state.type == TE_TOKEN_INFIX && levelOf(m_state.function) >= lowestLevel) {
            const void *const function = m_state.function;
            next_token(&m_state);
            node = pair(function, node, binary(levelOf(function) + 1));
        }
        return node;
    }

    Node signedBase()
    {
        bool isNegative = false;
        while (m_state.type == TE_TOKEN_INFIX && levelOf(m_state.function) == sumLevel) {
            if (m_state.function == addressOf(sub))
                isNegative = !isNegative;
            next_token(&m_state);
        }
        const Node node = base();
        return isNegative
                   ? Builder::call(TE_FUNCTION1 | TE_FLAG_PURE, addressOf(negate), nullptr, &node)
                   : node;
    }

    Node base()
    {
        if (isCall(m_state.type))
            return arityOf(m_state.type) == 0 ? callOfFunction() : nested(&Parser::callOfFunction);
        switch (m_state.type) {
            case TE_TOKEN_NUMBER: {
                const Node node = Builder::constant(m_state.value);
                next_token(&m_state);
                return node;
            }
            case TE_TOKEN_VARIABLE: {
                const Node node = Builder::variable(m_state.bound);
                next_token(&m_state);
                return node;
            }
            case TE_TOKEN_OPEN:
                return nested(&Parser::bracketed);
            default:
                return failed();
        }
    }

    Node nested(Node (Parser::*rule)())
    {
        if (m_nesting == te_max_nesting)
            return failed();
        ++m_nesting;
        const Node node = (this->*rule)();
        --m_nesting;
        return node;
    }

    Node failed()
    {
        m_state.type = TE_TOKEN_ERROR;
        return Builder::constant(notANumber);
    }

    Node bracketed()
    {
        next_token(&m_state);
        const Node node = list();
        expectClose();
        return node;
    }

    void expectClose()
    {
        if (m_state.type == TE_TOKEN_CLOSE)
            next_token(&m_state);
        else
            m_state.type = TE_TOKEN_ERROR;
    }

    Node callOfFunction()
    {
        const int type = m_state.type;
        const void *const function = m_state.function;
        void *const context = m_state.context;
        Node arguments[mostArguments] = {};
        next_token(&m_state);
        switch (arityOf(type)) {
            case 0:
                if (m_state.type == TE_TOKEN_OPEN) {
                    next_token(&m_state);
                    expectClose();
                }
                break;
            case 1:
                arguments[0] = signedBase();
                break;
            default:
                readArguments(arityOf(type), arguments);
        }
        return Builder::call(type, function, context, arguments);
    }

    void readArguments(int arity, Node *arguments)
    {
        if (m_state.type != TE_TOKEN_OPEN) {
            m_state.type = TE_TOKEN_ERROR;
            return;
        }
        int last = 0;
        for (;; ++last) {
            next_token(&m_state);
            arguments[last] = binary(sumLevel);
            if (m_state.type != TE_TOKEN_SEPARATOR || last == arity - 1)
                break;
        }
        if (last == arity - 1)
            expectClose();
        else
            m_state.type = TE_TOKEN_ERROR;
    }

    te_state m_state;
    int m_nesting = 0;
};

/// A node and its depth in the tree.
struct Visit
{
    te_expr *node;
    int depth;
};

/// The nodes of a tree, each in front of its arguments.
template <typename Descends>
std::vector<Visit> nodesOf(te_expr *root, Descends descends)
{
    std::vector<Visit> nodes;
    std::vector<Visit> open;
    if (root)
        open.push_back({root, 0});
    while (!open.empty()) {
        const Visit visit = open.back();
        open.pop_back();
        nodes.push_back(visit);
        if (!descends(visit.node))
            continue;
        for (int i = arityOf(visit.node->type); i-- > 0;) {
            if (te_expr *const parameter = parameterOf(visit.node, i))
                open.push_back({parameter, visit.depth + 1});
        }
    }
    return nodes;
}

bool always(const te_expr *)
{
    return true;
}

bool isPureCall(const te_expr *node)
{
    return isCall(node->type) && (node->type & TE_FLAG_PURE) != 0;
}

bool hasConstantArguments(const te_expr *node)
{
    for (int i = 0; i < arityOf(node->type); ++i) {
        if (parameterOf(node, i)->type != TE_CONSTANT)
            return false;
    }
    return true;
}

/// Folds pure calls of constants, arguments first. What lies below an impure call stays as it is.
void optimize(te_expr *root)
{
    const std::vector<Visit> nodes = nodesOf(root, isPureCall);
    for (auto visit = nodes.crbegin(); visit != nodes.crend(); ++visit) {
        te_expr *const node = visit->node;
        if (!isPureCall(node) || !hasConstantArguments(node))
            continue;
        const double value = te_eval(node);
        te_free_parameters(node);
        node->type = TE_CONSTANT;
        node->value = value;
    }
}

/// A call whose arguments are being evaluated.
struct PendingCall
{
    const te_expr *node;
    int evaluated;
    double arguments[mostArguments];
};

/// The value of a node that is no call; NaN for none at all.
double valueOfLeaf(const te_expr *node)
{
    if (!node)
        return notANumber;
    switch (kindOf(node->type)) {
        case TE_CONSTANT:
            return node->value;
        case TE_VARIABLE:
            return *node->bound;
        default:
            return notANumber;
    }
}

double evaluateOnHeap(const te_expr *root)
{
    std::vector<PendingCall> pending{{root, 0, {}}};
    while (true) {
        PendingCall &top = pending.back();
        if (top.evaluated < arityOf(top.node->type)) {
            const te_expr *const argument = parameterOf(top.node, top.evaluated);
            if (argument && isCall(argument->type))
                pending.push_back({argument, 0, {}});
            else
                top.arguments[top.evaluated++] = valueOfLeaf(argument);
            continue;
        }
        const double value =
            call(top.node->type, top.node->function, contextOf(top.node), top.arguments);
        pending.pop_back();
        if (pending.empty())
            return value;
        PendingCall &outer = pending.back();
        outer.arguments[outer.evaluated++] = value;
    }
}

double evaluate(const te_expr *node, int depth)
{
    if (!node || !isCall(node->type))
        return valueOfLeaf(node);
    if (depth == deepestRecursion)
        return evaluateOnHeap(node);
    double arguments[mostArguments];
    for (int i = 0; i < arityOf(node->type); ++i)
        arguments[i] = evaluate(parameterOf(node, i), depth + 1);
    return call(node->type, node->function, contextOf(node), arguments);
}

}  // namespace

double te_interp(const char *expression, int *error)
{
    Parser<ValueBuilder> parser(expression, nullptr, 0);
    const double value = parser.list();
    const int place = parser.error();
    if (error)
        *error = place;
    return place == 0 ? value : notANumber;
}

te_expr *te_compile(const char *expression, const te_variable *variables, int var_count, int *error)
{
    Parser<TreeBuilder> parser(expression, variables, var_count);
    te_expr *const root = parser.list();
    const int place = parser.error();
    if (error)
        *error = place;
    if (place != 0) {
        te_free(root);
        return nullptr;
    }
    optimize(root);
    return root;
}

double te_eval(const te_expr *n)
{
    return evaluate(n, 0);
}

void te_free_parameters(te_expr *n)
{
    if (!n)
        return;
    for (int i = 0; i < arityOf(n->type); ++i) {
        te_free(parameterOf(n, i));
        n->parameters[i] = nullptr;
    }
}

void te_free(te_expr *n)
{
    for (const Visit &visit : nodesOf(n, always))
        std::free(visit.node);
}

void te_print(const te_expr *n)
{
    for (const Visit &visit : nodesOf(const_cast<te_expr *>(n), always)) {
        const te_expr *const node = visit.node;
        std::printf("%*s", visit.depth, "");
        if (isCall(node->type)) {
            std::printf("f%d", arityOf(node->type));
            for (int i = 0; i < arityOf(node->type); ++i)
                std::printf(" %p", node->parameters[i]);
            std::printf("\n");
        } else if (kindOf(node->type) == TE_CONSTANT) {
            std::printf("%f\n", node->value);
        } else {
            std::printf("bound %p\n", static_cast<const void *>(node->bound));
        }
    }
}
