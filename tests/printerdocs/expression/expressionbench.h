#pragma once

#include <unistd.h>

#include <QTemporaryFile>
#include <QtTest>
#include <cmath>
#include <limits>
#include <memory>
#include <vector>

#include "printerdocs/expressionevaluator.h"

Q_DECLARE_METATYPE(const void *)

/// Compiled expressions that are freed, their nodes, and functions to bind.
namespace expressionbench {

inline const double notANumber = std::numeric_limits<double>::quiet_NaN();

using Tree = std::unique_ptr<te_expr, decltype(&te_free)>;

/// The same number, bit for bit but for the payload of NaN.
inline bool same(double a, double b)
{
    if (std::isnan(a) || std::isnan(b))
        return std::isnan(a) && std::isnan(b);
    return a == b && std::signbit(a) == std::signbit(b);
}

inline Tree compiled(const QByteArray &text, const std::vector<te_variable> &variables = {},
                     int *error = nullptr)
{
    int ignored = -1;
    return Tree(te_compile(text.constData(), variables.data(), int(variables.size()),
                           error ? error : &ignored),
                te_free);
}

template <class Function>
const void *address(Function *function)
{
    return reinterpret_cast<const void *>(function);
}

/// What te_print writes to the standard output.
inline QString printed(const te_expr *tree)
{
    QTemporaryFile file;
    if (!file.open())
        return QStringLiteral("no temporary file");
    fflush(stdout);
    const int before = dup(STDOUT_FILENO);
    dup2(file.handle(), STDOUT_FILENO);
    te_print(tree);
    fflush(stdout);
    dup2(before, STDOUT_FILENO);
    close(before);
    file.seek(0);
    return QString::fromUtf8(file.readAll());
}

inline QString pointer(const void *p)
{
    return QString::asprintf("%p", p);
}

inline int calls = 0;

inline double seven()
{
    return 7;
}

inline double counted(double a)
{
    ++calls;
    return a + 1;
}

inline double sum3(double a, double b, double c)
{
    return a + 2 * b + 3 * c;
}

inline double context1(void *context, double a)
{
    return *static_cast<double *>(context) - a;
}

/// The arguments as the digits of a number.
template <typename... Doubles>
double digits(Doubles... arguments)
{
    double number = 0;
    ((number = number * 10 + arguments), ...);
    return number;
}

/// Compares what te_interp and a compiled tree give with a value and the place of an error.
inline void compareBothRoads(const QByteArray &text, double value, int error)
{
    int position = -1;
    const double direct = te_interp(text.constData(), &position);
    QVERIFY2(same(direct, value), qPrintable(QString("%1 is %2").arg(QString(text)).arg(direct)));
    QCOMPARE(position, error);
    position = -1;
    const Tree tree = compiled(text, {}, &position);
    QCOMPARE(position, error);
    QCOMPARE(tree != nullptr, error == 0);
    QVERIFY(same(te_eval(tree.get()), value));
}

}  // namespace expressionbench
