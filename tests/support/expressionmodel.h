#pragma once

#include <algorithm>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>

/// The grammar of expressions once more, as plain as can be: recursive descent, one operation for
/// each rule, and the value worked out on the way. It shares nothing with the library. The C locale
/// has to be the process's, and the stack deep enough for 2000 levels.
class ExpressionModel
{
public:
    explicit ExpressionModel(const char *text) : m_start(text), m_next(text)
    {
        advance();
        m_value = list();
        if (m_token != end)
            m_value = notANumber();
    }

    double value() const { return m_value; }
    int error() const { return m_token == end ? 0 : std::max(1, int(m_next - m_start)); }

private:
    // Tokens that are one character are that character.
    enum Token { end = 0, number = 1, name = 2, failed = 3 };

    static double notANumber() { return std::numeric_limits<double>::quiet_NaN(); }

    static int arityOf(const std::string &function)
    {
        for (const char *known : {"e", "pi"}) {
            if (function == known)
                return 0;
        }
        for (const char *known : {"atan2", "ncr", "npr", "pow"}) {
            if (function == known)
                return 2;
        }
        for (const char *known :
             {"abs", "acos", "asin", "atan", "ceil", "cos", "cosh", "exp", "fac", "floor", "ln",
              "log", "log10", "sin", "sinh", "sqrt", "tan", "tanh"}) {
            if (function == known)
                return 1;
        }
        return -1;
    }

    void advance()
    {
        while (*m_next != '\0' && std::strchr(" \t\n\r", *m_next))
            ++m_next;
        const char c = *m_next;
        if (c == '\0') {
            m_token = end;
        } else if ((c >= '0' && c <= '9') || c == '.') {
            char *stop = nullptr;
            m_number = std::strtod(m_next, &stop);
            m_token = stop == m_next ? failed : number;
            m_next = stop;
        } else if (c >= 'a' && c <= 'z') {
            const std::size_t length = std::strspn(m_next, "abcdefghijklmnopqrstuvwxyz0123456789_");
            m_name.assign(m_next, length);
            m_next += length;
            m_token = arityOf(m_name) < 0 ? failed : name;
        } else {
            ++m_next;
            m_token = std::strchr("+-*/%^(),", c) ? c : int(failed);
        }
    }

    bool is(const char *tokens) const { return m_token > failed && std::strchr(tokens, m_token); }

    double list()
    {
        double value = sum();
        while (is(",")) {
            advance();
            value = sum();
        }
        return value;
    }

    double sum()
    {
        double value = term();
        while (is("+-")) {
            const int sign = m_token;
            advance();
            const double other = term();
            value = sign == '+' ? value + other : value - other;
        }
        return value;
    }

    double term()
    {
        double value = factor();
        while (is("*/%")) {
            const int sign = m_token;
            advance();
            const double other = factor();
            value = sign == '*' ? value * other
                                : (sign == '/' ? quotient(value, other) : std::fmod(value, other));
        }
        return value;
    }

    double factor()
    {
        double value = power();
        while (is("^")) {
            advance();
            value = std::pow(value, power());
        }
        return value;
    }

    double power()
    {
        bool isNegative = false;
        for (; is("+-"); advance())
            isNegative = isNegative != (m_token == '-');
        const double value = base();
        return isNegative ? -value : value;
    }

    double base()
    {
        if (m_token == number) {
            const double value = m_number;
            advance();
            return value;
        }
        const int arity = m_token == name ? arityOf(m_name) : -1;
        if (arity == 0)
            return constant();
        if ((arity < 0 && !is("(")) || m_nesting == 2000)
            return fail();
        ++m_nesting;
        const double value = arity < 0 ? bracketed() : (arity == 1 ? unary() : binary());
        --m_nesting;
        return value;
    }

    double fail()
    {
        m_token = failed;
        return notANumber();
    }

    void close()
    {
        if (is(")"))
            advance();
        else
            m_token = failed;
    }

    double bracketed()
    {
        advance();
        const double value = list();
        close();
        return value;
    }

    double constant()
    {
        const bool isPi = m_name == "pi";
        advance();
        if (is("(")) {
            advance();
            close();
        }
        return isPi ? 3.141592653589793 : 2.718281828459045;
    }

    double unary()
    {
        const std::string function = m_name;
        advance();
        return called(function, power());
    }

    double binary()
    {
        const std::string function = m_name;
        advance();
        if (!is("("))
            return fail();
        advance();
        const double a = sum();
        if (!is(","))
            return fail();
        advance();
        const double b = sum();
        close();
        return called(function, a, b);
    }

    static double quotient(double a, double b)
    {
        if (b != 0)
            return a / b;
        const double infinite = std::numeric_limits<double>::infinity();
        if (a == 0 || std::isnan(a))
            return notANumber();
        return std::signbit(a) == std::signbit(b) ? infinite : -infinite;
    }

    static double called(const std::string &f, double a)
    {
        using Function = double (*)(double);
        static const struct
        {
            const char *name;
            Function function;
        } table[] = {{"abs", std::fabs},    {"acos", std::acos}, {"asin", std::asin},
                     {"atan", std::atan},   {"ceil", std::ceil}, {"cos", std::cos},
                     {"cosh", std::cosh},   {"exp", std::exp},   {"fac", factorial},
                     {"floor", std::floor}, {"ln", std::log},    {"log", std::log10},
                     {"log10", std::log10}, {"sin", std::sin},   {"sinh", std::sinh},
                     {"sqrt", std::sqrt},   {"tan", std::tan},   {"tanh", std::tanh}};
        for (const auto &row : table) {
            if (f == row.name)
                return row.function(a);
        }
        return notANumber();
    }

    static double called(const std::string &f, double a, double b)
    {
        if (f == "atan2")
            return std::atan2(a, b);
        if (f == "pow")
            return std::pow(a, b);
        return f == "ncr" ? combinations(a, b) : combinations(a, b) * factorial(b);
    }

    static double factorial(double a)
    {
        if (!(a >= 0))
            return notANumber();
        // 20! is the last that 64 bits hold.
        double product = 1;
        for (double factor = 2; factor <= std::floor(a); ++factor) {
            if (factor > 20)
                return std::numeric_limits<double>::infinity();
            product *= factor;
        }
        return product;
    }

    static double combinations(double n, double r)
    {
        if (n < 0 || r < 0 || r > n)
            return notANumber();
        if (n > 4294967295.0 || r > 4294967295.0)
            return std::numeric_limits<double>::infinity();
        if (std::isnan(n) || std::isnan(r))
            return notANumber();
        const auto all = static_cast<std::uint64_t>(n);
        auto chosen = static_cast<std::uint64_t>(r);
        chosen = std::min(chosen, all - chosen);
        std::uint64_t result = 1;
        for (std::uint64_t i = 1; i <= chosen; ++i) {
            const std::uint64_t factor = all - chosen + i;
            if (result > std::numeric_limits<std::uint64_t>::max() / factor)
                return std::numeric_limits<double>::infinity();
            result = result * factor / i;
        }
        return static_cast<double>(result);
    }

    const char *m_start;
    const char *m_next;
    int m_token = end;
    double m_number = 0;
    std::string m_name;
    double m_value = 0;
    int m_nesting = 0;
};
