#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>

#include "printerdocs/expression/expressionfunctions_p.h"

namespace expression {

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double largestArgument = std::numeric_limits<std::uint32_t>::max();

double e()
{
    return 2.718281828459045;
}

double pi()
{
    return 3.141592653589793;
}

bool overflows(std::uint64_t product, std::uint64_t factor)
{
    return product > std::numeric_limits<std::uint64_t>::max() / factor;
}

double fac(double a)
{
    if (!(a >= 0))
        return notANumber;
    if (a > largestArgument)
        return infinity;
    const auto last = static_cast<std::uint32_t>(a);
    std::uint64_t product = 1;
    for (std::uint64_t factor = 2; factor <= last; ++factor) {
        if (overflows(product, factor))
            return infinity;
        product *= factor;
    }
    return static_cast<double>(product);
}

/// Intended: an argument that is no number is neither negative nor too small, so beside one beyond
/// 32 bits the result is infinity; receipts print what they always did (test countingFunctions).
double ncr(double n, double r)
{
    if (n < 0 || r < 0 || r > n)
        return notANumber;
    if (n > largestArgument || r > largestArgument)
        return infinity;
    if (std::isnan(n) || std::isnan(r))
        return notANumber;
    const std::uint64_t all = static_cast<std::uint32_t>(n);
    std::uint64_t chosen = static_cast<std::uint32_t>(r);
    if (chosen > all / 2)
        chosen = all - chosen;
    std::uint64_t result = 1;
    for (std::uint64_t i = 1; i <= chosen; ++i) {
        const std::uint64_t factor = all - chosen + i;
        if (overflows(result, factor))
            return infinity;
        result = result * factor / i;
    }
    return static_cast<double>(result);
}

double npr(double n, double r)
{
    return ncr(n, r) * fac(r);
}

// The C library's functions have overloads for other types in C++.
using Unary = double (*)(double);
using Binary = double (*)(double, double);

const void *unary(Unary function)
{
    return addressOf(function);
}

const void *binary(Binary function)
{
    return addressOf(function);
}

// Sorted by name.
const Builtin builtins[] = {
    {"abs", unary(std::fabs), 1},     {"acos", unary(std::acos), 1},
    {"asin", unary(std::asin), 1},    {"atan", unary(std::atan), 1},
    {"atan2", binary(std::atan2), 2}, {"ceil", unary(std::ceil), 1},
    {"cos", unary(std::cos), 1},      {"cosh", unary(std::cosh), 1},
    {"e", addressOf(e), 0},           {"exp", unary(std::exp), 1},
    {"fac", unary(fac), 1},           {"floor", unary(std::floor), 1},
    {"ln", unary(std::log), 1},       {"log", unary(std::log10), 1},
    {"log10", unary(std::log10), 1},  {"ncr", binary(ncr), 2},
    {"npr", binary(npr), 2},          {"pi", addressOf(pi), 0},
    {"pow", binary(std::pow), 2},     {"sin", unary(std::sin), 1},
    {"sinh", unary(std::sinh), 1},    {"sqrt", unary(std::sqrt), 1},
    {"tan", unary(std::tan), 1},      {"tanh", unary(std::tanh), 1},
};

/// Calls with as many of the arguments as the arity says, behind what goes in front of them.
template <typename... Front>
double callWith(int arity, const void *function, const double *a, Front... front)
{
    switch (arity) {
        case 0:
            return callAs(function, front...);
        case 1:
            return callAs(function, front..., a[0]);
        case 2:
            return callAs(function, front..., a[0], a[1]);
        case 3:
            return callAs(function, front..., a[0], a[1], a[2]);
        case 4:
            return callAs(function, front..., a[0], a[1], a[2], a[3]);
        case 5:
            return callAs(function, front..., a[0], a[1], a[2], a[3], a[4]);
        case 6:
            return callAs(function, front..., a[0], a[1], a[2], a[3], a[4], a[5]);
        default:
            return callAs(function, front..., a[0], a[1], a[2], a[3], a[4], a[5], a[6]);
    }
}

}  // namespace

double add(double a, double b)
{
    return a + b;
}

double sub(double a, double b)
{
    return a - b;
}

double mul(double a, double b)
{
    return a * b;
}

double divide(double a, double b)
{
    // Division by zero gives infinity or no number, as the processor does; the language has both.
    if (b == 0) {
        if (a == 0 || std::isnan(a))
            return notANumber;
        return std::signbit(a) == std::signbit(b) ? infinity : -infinity;
    }
    return a / b;
}

double modulo(double a, double b)
{
    return std::fmod(a, b);
}

double negate(double a)
{
    return -a;
}

double comma(double, double b)
{
    return b;
}

double call(int type, const void *function, void *context, const double *arguments)
{
    return isClosure(type) ? callWith(arityOf(type), function, arguments, context)
                           : callWith(arityOf(type), function, arguments);
}

const Builtin *findBuiltin(const char *name, int length)
{
    const auto precedes = [length](const Builtin &builtin, const char *wanted) {
        return std::strncmp(builtin.name, wanted, static_cast<std::size_t>(length)) < 0;
    };
    const Builtin *found =
        std::lower_bound(std::begin(builtins), std::end(builtins), name, precedes);
    // Longer names with the same beginning stand behind the wanted one.
    const bool matches = found != std::end(builtins) &&
                         std::strncmp(found->name, name, static_cast<std::size_t>(length)) == 0 &&
                         found->name[length] == '\0';
    return matches ? found : nullptr;
}

}  // namespace expression
