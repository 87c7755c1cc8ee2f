// Arithmetic expressions, against muParser. "short" is three expressions of a receipt's lines,
// "sum" is a sum of 20 terms, "root" that of two squares. The parser of muParser is made once and
// used again, as its documentation advises, and both have the values of variables by their
// addresses.
//
//   interp_short, interp_sum            te_interp(): parsing and evaluating
//   muparser_parsing_short, ..._sum     the same by muParser
//   eval_short, eval_sum, eval_root     te_eval() of what te_compile() has made, over variables
//   muparser_compiled_short, ...        the same by muParser

#include <muParser.h>

#include <array>
#include <memory>

#include "frame.h"
#include "printerdocs/expressionevaluator.h"

namespace {

constexpr int terms = 20;
using Texts = std::vector<std::string>;

const Texts shortTexts{"2.5*12.9-3.23", "(17.25+4.8)*20/120", "3*1.99"};
const Texts shortFormulas{"a*b-c", "(b+c)*a/d", "a*d"};
const Texts rootFormula{"sqrt(a^2+b^2)"};

Texts sumOfNumbers()
{
    std::string text = "12.05";
    for (int i = 1; i < terms; ++i)
        text += '+' + std::to_string(i) + '.' + std::to_string(10 + i);
    return {text};
}

std::string variable(int index)
{
    return std::string(1, static_cast<char>('a' + index));
}

Texts sumOfVariables()
{
    std::string text = variable(0);
    for (int i = 1; i < terms; ++i)
        text += '+' + variable(i);
    return {text};
}

/// Evaluates texts by the library.
struct Ours
{
    static double value(const std::string &text) { return te_interp(text.c_str(), nullptr); }
};

/// Evaluates texts by muParser.
class Theirs
{
public:
    double value(const std::string &text)
    {
        m_parser.SetExpr(text);
        return m_parser.Eval();
    }

private:
    mu::Parser m_parser;
};

/// The values that the formulas' variables have.
class Variables
{
public:
    Variables()
    {
        for (int i = 0; i < terms; ++i) {
            values[i] = 1.25 + i;
            names[i] = variable(i);
        }
    }

    std::array<double, terms> values{};
    std::array<std::string, terms> names;
};

class OurFormula
{
public:
    OurFormula(const std::string &text, const Variables &variables)
    {
        std::vector<te_variable> list;
        list.reserve(terms);
        for (int i = 0; i < terms; ++i)
            list.push_back(
                {variables.names[i].c_str(), &variables.values[i], TE_VARIABLE, nullptr});
        m_tree.reset(te_compile(text.c_str(), list.data(), terms, nullptr));
    }
    double value() const { return te_eval(m_tree.get()); }

private:
    struct Free
    {
        void operator()(te_expr *tree) const { te_free(tree); }
    };
    std::unique_ptr<te_expr, Free> m_tree;
};

class TheirFormula
{
public:
    TheirFormula(const std::string &text, Variables &variables)
        : m_parser(std::make_unique<mu::Parser>())
    {
        for (int i = 0; i < terms; ++i)
            m_parser->DefineVar(variables.names[i], &variables.values[i]);
        m_parser->SetExpr(text);
    }
    double value() const { return m_parser->Eval(); }

private:
    std::unique_ptr<mu::Parser> m_parser;
};

template <typename Evaluator>
QByteArray valuesOf(const Texts &texts)
{
    Evaluator evaluator;
    QByteArray result;
    for (const std::string &text : texts)
        result += QByteArray::number(evaluator.value(text), 'g', 15) + '\n';
    return result;
}

template <typename Formula>
QByteArray valuesOfFormulas(const Texts &texts)
{
    Variables variables;
    QByteArray result;
    for (const std::string &text : texts)
        result += QByteArray::number(Formula(text, variables).value(), 'g', 15) + '\n';
    return result;
}

template <typename Evaluator>
void addParsing(const char *name, const Texts &texts)
{
    frame::add(name, [texts](benchmark::State &state) {
        Evaluator evaluator;
        for (auto _ : state) {
            for (const std::string &text : texts)
                benchmark::DoNotOptimize(evaluator.value(text));
        }
    });
}

template <typename Formula>
void addCompiled(const char *name, const Texts &texts)
{
    frame::add(name, [texts](benchmark::State &state) {
        Variables variables;
        std::vector<Formula> formulas;
        for (const std::string &text : texts)
            formulas.emplace_back(text, variables);
        for (auto _ : state) {
            for (const Formula &formula : formulas)
                benchmark::DoNotOptimize(formula.value());
        }
    });
}

}  // namespace

int main(int argc, char **argv)
{
    addParsing<Ours>("interp_short", shortTexts);
    addParsing<Theirs>("muparser_parsing_short", shortTexts);
    addParsing<Ours>("interp_sum", sumOfNumbers());
    addParsing<Theirs>("muparser_parsing_sum", sumOfNumbers());
    addCompiled<OurFormula>("eval_short", shortFormulas);
    addCompiled<TheirFormula>("muparser_compiled_short", shortFormulas);
    addCompiled<OurFormula>("eval_sum", sumOfVariables());
    addCompiled<TheirFormula>("muparser_compiled_sum", sumOfVariables());
    addCompiled<OurFormula>("eval_root", rootFormula);
    addCompiled<TheirFormula>("muparser_compiled_root", rootFormula);
    return frame::run(
        argc, argv,
        {{"short expressions", valuesOf<Theirs>(shortTexts), valuesOf<Ours>(shortTexts)},
         {"sum of numbers", valuesOf<Theirs>(sumOfNumbers()), valuesOf<Ours>(sumOfNumbers())},
         {"short formulas", valuesOfFormulas<TheirFormula>(shortFormulas),
          valuesOfFormulas<OurFormula>(shortFormulas)},
         {"sum of variables", valuesOfFormulas<TheirFormula>(sumOfVariables()),
          valuesOfFormulas<OurFormula>(sumOfVariables())},
         {"root of squares", valuesOfFormulas<TheirFormula>(rootFormula),
          valuesOfFormulas<OurFormula>(rootFormula)}});
}
