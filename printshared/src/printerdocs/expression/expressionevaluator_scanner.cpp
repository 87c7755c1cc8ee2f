#include <locale.h>
#include <charconv>
#include <clocale>
#include <cstdlib>
#include <cstring>

#include "printerdocs/expression/expressionfunctions_p.h"

namespace {

using namespace expression;

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isLower(char c)
{
    return c >= 'a' && c <= 'z';
}

/// The locale in which numbers have a decimal point, whatever the process has set.
class CLocale
{
public:
    CLocale() : m_locale(newlocale(LC_ALL_MASK, "C", nullptr)) {}
    ~CLocale() { freelocale(m_locale); }
    CLocale(const CLocale &) = delete;
    CLocale &operator=(const CLocale &) = delete;
    locale_t get() const { return m_locale; }

private:
    locale_t m_locale;
};

// At file scope, so that it outlives the static objects of clients.
const CLocale cLocale;  // clazy:exclude=non-pod-global-static

double readByStrtod(const char *text, const char **end)
{
    char *stop = nullptr;
    const double value = strtod_l(text, &stop, cLocale.get());
    *end = stop;
    return value;
}

/// The longest stretch that a decimal number could take up.
const char *decimalEnd(const char *c)
{
    while (isDigit(*c) || *c == '.')
        ++c;
    if (*c != 'e' && *c != 'E')
        return c;
    ++c;
    if (*c == '+' || *c == '-')
        ++c;
    while (isDigit(*c))
        ++c;
    return c;
}

/// What strtod() does in the C locale. Hexadecimal numbers and those beyond the range of a double
/// are left to it; all others are read by faster functions.
double readNumber(const char *text, const char **end)
{
    const bool isHexadecimal = text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    double value = 0;
    if (!isHexadecimal) {
        const auto result = std::from_chars(text, decimalEnd(text), value);
        if (result.ec == std::errc()) {
            *end = result.ptr;
            return value;
        }
    }
    return readByStrtod(text, end);
}

/// A point without digits is no number: an error that reads nothing.
void readNumberToken(te_state *s)
{
    const char *const begin = s->next;
    s->value = readNumber(begin, &s->next);
    s->type = s->next == begin ? TE_TOKEN_ERROR : TE_TOKEN_NUMBER;
}

const te_variable *findVariable(const te_state *s, const char *name, int length)
{
    for (int i = 0; i < s->lookup_len; ++i) {
        const te_variable &variable = s->lookup[i];
        if (variable.name &&
            std::strncmp(variable.name, name, static_cast<std::size_t>(length)) == 0 &&
            variable.name[length] == '\0')
            return &variable;
    }
    return nullptr;
}

void takeVariable(te_state *s, const te_variable &variable)
{
    if (!variable.address) {
        s->type = TE_TOKEN_ERROR;
        return;
    }
    if (kindOf(variable.type) == TE_VARIABLE) {
        s->type = TE_TOKEN_VARIABLE;
        s->bound = static_cast<const double *>(variable.address);
        return;
    }
    s->type = isCall(variable.type) ? variable.type : TE_TOKEN_ERROR;
    s->function = variable.address;
    s->context = isClosure(variable.type) ? variable.context : nullptr;
}

void readName(te_state *s)
{
    const char *const name = s->next;
    while (isLower(*s->next) || isDigit(*s->next) || *s->next == '_')
        ++s->next;
    const int length = static_cast<int>(s->next - name);
    if (const te_variable *const variable = findVariable(s, name, length)) {
        takeVariable(s, *variable);
    } else if (const Builtin *const builtin = findBuiltin(name, length)) {
        s->type = (TE_FUNCTION0 + builtin->arity) | TE_FLAG_PURE;
        s->function = builtin->function;
    } else {
        s->type = TE_TOKEN_ERROR;
    }
}

void takeInfix(te_state *s, const void *function)
{
    s->type = TE_TOKEN_INFIX;
    s->function = function;
}

void readSign(te_state *s)
{
    switch (*s->next++) {
        case '+':
            return takeInfix(s, addressOf(add));
        case '-':
            return takeInfix(s, addressOf(sub));
        case '*':
            return takeInfix(s, addressOf(mul));
        case '/':
            return takeInfix(s, addressOf(divide));
        case '%':
            return takeInfix(s, addressOf(modulo));
        case '^':
            return takeInfix(s, addressOf(power));
        case '(':
            s->type = TE_TOKEN_OPEN;
            return;
        case ')':
            s->type = TE_TOKEN_CLOSE;
            return;
        case ',':
            s->type = TE_TOKEN_SEPARATOR;
            return;
        case ' ':
        case '\t':
        case '\n':
        case '\r':
            return;
        default:
            s->type = TE_TOKEN_ERROR;
    }
}

}  // namespace

void next_token(te_state *s)
{
    s->type = TE_TOKEN_NONE;
    do {
        if (*s->next == '\0') {
            s->type = TE_TOKEN_END;
        } else if (isDigit(*s->next) || *s->next == '.') {
            readNumberToken(s);
        } else if (isLower(*s->next)) {
            readName(s);
        } else {
            readSign(s);
        }
    } while (s->type == TE_TOKEN_NONE);
}
