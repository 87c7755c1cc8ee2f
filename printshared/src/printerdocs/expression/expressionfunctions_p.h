#pragma once

#include <cmath>

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

inline bool isClosure(int type)
{
    return kindOf(type) >= TE_CLOSURE0 && kindOf(type) <= TE_CLOSURE7;
}

inline bool isCall(int type)
{
    return kindOf(type) >= TE_FUNCTION0 && kindOf(type) <= TE_CLOSURE7;
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
double negate(double a);
double comma(double a, double b);

/// The mathematical library's pow(a, 2), mostly by a multiplication, which takes a tenth of the
/// time. Both give a double next to the square. pow() errs by up to 0.516 units of the last place
/// at this magnitude, so within 1/64 unit of the middle between two doubles it may take the farther
/// one, as of 95.97, and is asked. It is too where a client has set another rounding than to the
/// nearest: a margin then always moves the sum or the difference.
inline double squareOf(double a)
{
    static const volatile double exponent = 2;  // compilers multiply where they know it
    const double square = a * a;
    if (!(square > 0x1p-128 && square < 0x1p128))
        return std::pow(a, exponent);
    const double high = static_cast<float>(a);
    const double low = a - high;
    const double lost = (high * high - square) + low * (high + a);
    const double margin = std::fabs(lost) + square * 0x1p-58;
    return square + margin == square - margin ? square : std::pow(a, exponent);
}

inline double power(double a, double b)
{
    return b == 2 ? squareOf(a) : std::pow(a, b);
}

template <typename Function>
const void *addressOf(Function *function)
{
    return reinterpret_cast<const void *>(function);
}

}  // namespace expression
