#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QStringView>
#include <QVariant>
#include <memory>
#include <vector>

#include "printerdocs/expressionevaluator.h"
#include "printerdocs/plan/names_p.h"

namespace templates {

/// Reads what stands in a tag as an expression over attributes.
/// @param text     takes the expression over the variables a0, a1, ... behind what it has
/// @param operands take their names, in their order
/// @return whether it is one as far as its words tell; else text and operands stay as they were
bool readExpression(QStringView inner, QString &text, std::vector<QStringView> &operands);

/// Whether there are names of functions in an expression over such variables.
bool hasFunctions(const QString &expression);

/// An expression that was compiled. Its operands are set before it is evaluated.
class CompiledExpression
{
public:
    CompiledExpression(const QByteArray &text, int operands);

    bool isValid() const { return m_tree != nullptr; }
    void setOperand(int number, double value)
    {
        m_values[static_cast<std::size_t>(number)] = value;
    }
    double value() const { return te_eval(m_tree.get()); }
    /// What it takes up of the memory.
    std::size_t memory() const;

private:
    std::vector<double> m_values;
    std::unique_ptr<te_expr, void (*)(te_expr *)> m_tree;
};

/// The compiled expressions of a plan, for one thread at a time.
using ExpressionSet = std::vector<std::unique_ptr<CompiledExpression>>;

/// The rule of expressions is that every name of the document is replaced wherever it stands, the
/// longest first. Whether that comes to the same as to put the values in the places of the operands
/// depends on all names of the document: whether one could stand elsewhere in the expression.
class NamesInExpressions
{
public:
    /// @param noted those numbers of the names that notedNames() gives
    NamesInExpressions(const TemplateNames &names, const std::vector<int> &noted,
                       const NamedValues &values);

    /// Of a template's names those that matter here if a document has them.
    static std::vector<int> notedNames(const TemplateNames &names);

    /// Whether only the operands can be replaced.
    bool leave(QStringView expression, bool hasWords) const;
    /// Whether a value of this size can be put in: its text has no letter that is a name.
    bool leave(double value) const;

private:
    void add(QStringView name);
    bool mayStand(const QString &name, QStringView expression) const;

    bool m_hasEmpty = false;
    bool m_hasLowerCase = false;  ///< such as could stand in a function's name
    bool m_hasExponent = false;   ///< that which could stand in a value
    QStringList m_oddNames;       ///< other than a letter with letters and digits
};

/// The number that a value is in an expression. @return false: it isn't one
bool operandOf(const NamedValues::Value &value, double &number);

}  // namespace templates
