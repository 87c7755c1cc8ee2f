#pragma once

#include "printerdocs/expressionevaluator.h"

/// What the scanner, the parser and the evaluation of expressions share.
namespace expression {

constexpr int kindMask = 0x1F;
constexpr int arityMask = 0x07;
constexpr int mostArguments = 7;

inline int kindOf(int type)
{
    return type & kindMask;
}

inline bool isFunction(int type)
{
    return kindOf(type) >= TE_FUNCTION0 && kindOf(type) <= TE_FUNCTION7;
}

inline bool isClosure(int type)
{
    return kindOf(type) >= TE_CLOSURE0 && kindOf(type) <= TE_CLOSURE7;
}

inline bool isCall(int type)
{
    return isFunction(type) || isClosure(type);
}

inline int arityOf(int type)
{
    return isCall(type) ? type & arityMask : 0;
}

/// Calls a function of so many arguments, as which its address has to have been taken.
template <typename... Arguments>
double callAs(const void *function, Arguments... arguments)
{
    return reinterpret_cast<double (*)(Arguments...)>(const_cast<void *>(function))(arguments...);
}

/// Calls the function of such a type.
double call(int type, const void *function, void *context, const double *arguments);

/// A function that the language has by itself.
struct Builtin
{
    const char *name;
    const void *function;
    int arity;
};

/// The function of that name, or null. The name need not be terminated.
const Builtin *findBuiltin(const char *name, int length);

/// Functions behind the operators; they are told apart by their addresses.
double add(double a, double b);
double sub(double a, double b);
double mul(double a, double b);
double divide(double a, double b);
double modulo(double a, double b);
double power(double a, double b);
double negate(double a);
double comma(double a, double b);

template <typename Function>
const void *addressOf(Function *function)
{
    return reinterpret_cast<const void *>(function);
}

}  // namespace expression
