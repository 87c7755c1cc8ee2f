#include "printerdocs/expressionevaluator.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <new>
#include <vector>

#include "printerdocs/expression/expressionfunctions_p.h"

namespace {

using namespace expression;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

// Sums lean to the left as deep as they are long: below this depth a tree is evaluated with a stack
// on the heap.
constexpr int deepestRecursion = 64;

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
    static Node pair(const void *function, Node a, Node b)
    {
        const Node arguments[] = {a, b};
        return call(TE_FUNCTION2 | TE_FLAG_PURE, function, nullptr, arguments);
    }
    static void release(Node node) { te_free(node); }
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
    static Node pair(const void *function, Node a, Node b) { return callAs(function, a, b); }
    static void release(Node) {}
};

/// Reads an expression by the precedence of its operators. What waits for an operand waits on a
/// stack on the heap, so that no nesting takes up the thread's own.
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
    ~Parser()
    {
        for (; !m_operands.empty(); m_operands.pop_back())
            Builder::release(m_operands.back());
    }
    Parser(const Parser &) = delete;
    Parser &operator=(const Parser &) = delete;

    /// The whole text; a default node if it can't be read.
    Node read()
    {
        while (readOperand() && readBehindOperand()) {
        }
        if (m_state.type != TE_TOKEN_END)
            return Node();
        applyBinary(listLevel);
        if (!m_waiting.empty()) {
            m_state.type = TE_TOKEN_ERROR;
            return Node();
        }
        return takeOperand();
    }

    /// 0 if the whole text was read.
    int error() const
    {
        if (m_state.type == TE_TOKEN_END)
            return 0;
        return std::max(1, static_cast<int>(m_state.next - m_state.start));
    }

private:
    enum Level : unsigned char { listLevel, sumLevel, productLevel, powerLevel };

    enum Role : unsigned char {
        BinaryOperator,  ///< has its left operand
        PrefixCall,      ///< a sign, or a function without brackets of its own
        ArgumentList,    ///< a function and the bracket behind it
        Bracket
    };

    struct Waiting
    {
        const void *function;
        void *context;
        Role role;
        unsigned char type;
        unsigned char number;  ///< of an operator its level, of a prefix the nesting that it
                               ///< counts, of a list the arguments in front of the present one
    };

    static Level levelOf(const void *function)
    {
        if (function == addressOf(add) || function == addressOf(sub))
            return sumLevel;
        return function == addressOf(power) ? powerLevel : productLevel;
    }

    bool failed()
    {
        m_state.type = TE_TOKEN_ERROR;
        return false;
    }

    bool isSign() const
    {
        return m_state.type == TE_TOKEN_INFIX && levelOf(m_state.function) == sumLevel;
    }

    Node takeOperand()
    {
        const Node node = m_operands.back();
        m_operands.pop_back();
        return node;
    }

    /// Signs, functions and brackets up to a number, a variable or a function without arguments.
    /// @return whether there was an operand; else the token is an error
    bool readOperand()
    {
        readSigns();
        while (arityOf(m_state.type) > 0 || m_state.type == TE_TOKEN_OPEN) {
            if (!openNesting())
                return false;
            readSigns();
        }
        if (isCall(m_state.type))
            return readCallWithoutArguments();
        if (m_state.type == TE_TOKEN_NUMBER)
            m_operands.push_back(Builder::constant(m_state.value));
        else if (m_state.type == TE_TOKEN_VARIABLE)
            m_operands.push_back(Builder::variable(m_state.bound));
        else
            return failed();
        next_token(&m_state);
        applyPrefixes();
        return true;
    }

    void readSigns()
    {
        bool isNegative = false;
        for (; isSign(); next_token(&m_state))
            isNegative = isNegative != (m_state.function == addressOf(sub));
        if (isNegative)
            m_waiting.push_back(
                {addressOf(negate), nullptr, PrefixCall, TE_FUNCTION1 | TE_FLAG_PURE, 0});
    }

    Waiting waitingToken(Role role) const
    {
        return {m_state.function, m_state.context, role, static_cast<unsigned char>(m_state.type),
                0};
    }

    /// A bracket, or a function with arguments and its bracket, if it needs one.
    bool openNesting()
    {
        if (m_nesting == te_max_nesting)
            return failed();
        Waiting waiting = waitingToken(Bracket);
        if (isCall(m_state.type)) {
            const bool isPrefix = arityOf(m_state.type) == 1;
            waiting.role = isPrefix ? PrefixCall : ArgumentList;
            waiting.number = isPrefix ? 1 : 0;
            next_token(&m_state);
            if (waiting.role == ArgumentList && m_state.type != TE_TOKEN_OPEN)
                return failed();
        }
        if (waiting.role != PrefixCall)
            next_token(&m_state);
        ++m_nesting;
        m_waiting.push_back(waiting);
        return true;
    }

    bool readCallWithoutArguments()
    {
        const Waiting waiting = waitingToken(PrefixCall);
        next_token(&m_state);
        if (m_state.type == TE_TOKEN_OPEN) {
            next_token(&m_state);
            if (m_state.type != TE_TOKEN_CLOSE)
                return failed();
            next_token(&m_state);
        }
        apply(waiting);
        applyPrefixes();
        return true;
    }

    /// Closing brackets, and an operator or a comma behind them.
    /// @return whether there is one, so that another operand has to follow
    bool readBehindOperand()
    {
        while (m_state.type == TE_TOKEN_CLOSE) {
            if (!closeNesting())
                return false;
        }
        if (m_state.type == TE_TOKEN_INFIX)
            return waitForRightSide(m_state.function, levelOf(m_state.function));
        if (m_state.type != TE_TOKEN_SEPARATOR)
            return false;
        applyBinary(sumLevel);
        if (m_waiting.empty() || m_waiting.back().role != ArgumentList)
            return waitForRightSide(addressOf(comma), listLevel);
        Waiting &list = m_waiting.back();
        if (++list.number == arityOf(list.type))
            return failed();
        next_token(&m_state);
        return true;
    }

    bool waitForRightSide(const void *function, Level level)
    {
        applyBinary(level);
        m_waiting.push_back(
            {function, nullptr, BinaryOperator, TE_FUNCTION2 | TE_FLAG_PURE, level});
        next_token(&m_state);
        return true;
    }

    bool closeNesting()
    {
        applyBinary(listLevel);
        if (m_waiting.empty())
            return failed();
        const Waiting waiting = m_waiting.back();
        if (waiting.role == ArgumentList && waiting.number != arityOf(waiting.type) - 1)
            return failed();
        m_waiting.pop_back();
        --m_nesting;
        next_token(&m_state);
        if (waiting.role == ArgumentList)
            apply(waiting);
        applyPrefixes();
        return true;
    }

    /// The operators of this level and of those that bind tighter have both their sides.
    void applyBinary(Level level)
    {
        while (!m_waiting.empty() && m_waiting.back().role == BinaryOperator &&
               m_waiting.back().number >= level) {
            const Node right = takeOperand();
            Node &left = m_operands.back();
            left = Builder::pair(m_waiting.back().function, left, right);
            m_waiting.pop_back();
        }
    }

    void applyPrefixes()
    {
        while (!m_waiting.empty() && m_waiting.back().role == PrefixCall) {
            const Waiting waiting = m_waiting.back();
            m_waiting.pop_back();
            m_nesting -= waiting.number;
            apply(waiting);
        }
    }

    /// Replaces the arguments by the call.
    void apply(const Waiting &waiting)
    {
        const std::size_t front =
            m_operands.size() - static_cast<std::size_t>(arityOf(waiting.type));
        const Node node = Builder::call(waiting.type, waiting.function, waiting.context,
                                        m_operands.data() + front);
        m_operands.resize(front);
        m_operands.push_back(node);
    }

    te_state m_state;
    int m_nesting = 0;
    std::vector<Node> m_operands;
    std::vector<Waiting> m_waiting;
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

inline bool isNumber(const te_expr *node)
{
    return node && (kindOf(node->type) == TE_VARIABLE || kindOf(node->type) == TE_CONSTANT);
}

inline double numberOf(const te_expr *node)
{
    return kindOf(node->type) == TE_VARIABLE ? *node->bound : node->value;
}

[[gnu::noinline]] double evaluateOnHeap(const te_expr *root)
{
    std::vector<PendingCall> pending{{root, 0, {}}};
    while (true) {
        PendingCall &top = pending.back();
        if (top.evaluated < arityOf(top.node->type)) {
            const te_expr *const argument = parameterOf(top.node, top.evaluated);
            if (argument && isCall(argument->type))
                pending.push_back({argument, 0, {}});
            else
                top.arguments[top.evaluated++] =
                    isNumber(argument) ? numberOf(argument) : notANumber;
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

/// What formulas do most is done without a call.
inline double valueOf(const void *function, double a)
{
    constexpr double (*root)(double) = std::sqrt;
    return function == addressOf(root) ? std::sqrt(a) : callAs(function, a);
}

inline double valueOf(const void *function, double a, double b)
{
    if (function == addressOf(add))
        return a + b;
    if (function == addressOf(mul))
        return a * b;
    if (function == addressOf(power))
        return power(a, b);
    if (function == addressOf(sub))
        return a - b;
    return callAs(function, a, b);
}

double evaluateCall(const te_expr *node, int depth);

/// Numbers, and operators between numbers, are evaluated in place: most nodes are such.
inline double evaluate(const te_expr *node, int depth)
{
    if (isNumber(node))
        return numberOf(node);
    if (!node || !isCall(node->type))
        return notANumber;
    if (kindOf(node->type) == TE_FUNCTION2 && isNumber(parameterOf(node, 0)) &&
        isNumber(parameterOf(node, 1)))
        return valueOf(node->function, numberOf(parameterOf(node, 0)),
                       numberOf(parameterOf(node, 1)));
    return evaluateCall(node, depth);
}

/// Apart from the frequent arities, which need no array.
[[gnu::noinline]] double evaluateAnyCall(const te_expr *node, int depth)
{
    double arguments[mostArguments];
    for (int i = 0; i < arityOf(node->type); ++i)
        arguments[i] = evaluate(parameterOf(node, i), depth);
    return call(node->type, node->function, contextOf(node), arguments);
}

[[gnu::noinline]] double evaluateCall(const te_expr *node, int depth)
{
    if (depth == deepestRecursion)
        return evaluateOnHeap(node);
    switch (kindOf(node->type)) {
        case TE_FUNCTION1: {
            const double a = evaluate(parameterOf(node, 0), depth + 1);
            return valueOf(node->function, a);
        }
        case TE_FUNCTION2: {
            const double a = evaluate(parameterOf(node, 0), depth + 1);
            const double b = evaluate(parameterOf(node, 1), depth + 1);
            return valueOf(node->function, a, b);
        }
        default:
            return evaluateAnyCall(node, depth + 1);
    }
}

}  // namespace

double te_interp(const char *expression, int *error)
{
    Parser<ValueBuilder> parser(expression, nullptr, 0);
    const double value = parser.read();
    const int place = parser.error();
    if (error)
        *error = place;
    return place == 0 ? value : notANumber;
}

te_expr *te_compile(const char *expression, const te_variable *variables, int var_count, int *error)
{
    Parser<TreeBuilder> parser(expression, variables, var_count);
    te_expr *const root = parser.read();
    if (error)
        *error = parser.error();
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
