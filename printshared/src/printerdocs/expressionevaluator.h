#pragma once

#include "printerslib_export.h"

/// @file
/// A small compiler and interpreter of arithmetic expressions over doubles. It works on 8-bit,
/// zero-terminated text and keeps no state between calls: calls on distinct trees may run in
/// parallel.
///
/// Operators "+ - * / % ^" (all left-associative; signs bind tighter than "^"), brackets, "," (the
/// value is that of its right side), numbers as strtod() reads them in the C locale, and functions:
/// abs acos asin atan atan2 ceil cos cosh e exp fac floor ln log log10 ncr npr pi pow sin sinh sqrt
/// tan tanh. `log` is the logarithm to base 10. Names are lower case.
///
/// Nesting goes te_max_nesting deep, where each pair of brackets counts one and each function with
/// arguments one ("abs(1)" is two deep, "pow(1,2)" one); beyond it there is a parse error. No
/// nesting takes up the thread's stack.

#ifdef __cplusplus
extern "C" {
#endif

/// Kinds of a node, the low 5 bits of te_expr::type and te_variable::type. A function or closure
/// adds its arity, 0 to 7, to the first of its kinds.
enum {
    TE_VARIABLE = 0,   ///< `bound` points to the value
    TE_CONSTANT = 1,   ///< `value` holds it
    TE_FUNCTION0 = 8,  ///< takes and returns doubles
    TE_FUNCTION1,
    TE_FUNCTION2,
    TE_FUNCTION3,
    TE_FUNCTION4,
    TE_FUNCTION5,
    TE_FUNCTION6,
    TE_FUNCTION7,
    TE_CLOSURE0 = 16,  ///< like a function, whose first argument is a context pointer
    TE_CLOSURE1,
    TE_CLOSURE2,
    TE_CLOSURE3,
    TE_CLOSURE4,
    TE_CLOSURE5,
    TE_CLOSURE6,
    TE_CLOSURE7,
    TE_FLAG_PURE = 32  ///< the same arguments give the same value: calls of constants are folded
};

/// Kinds of token that are no kinds of node.
enum {
    TE_TOKEN_NONE = 24,
    TE_TOKEN_ERROR,
    TE_TOKEN_END,
    TE_TOKEN_SEPARATOR,
    TE_TOKEN_OPEN,
    TE_TOKEN_CLOSE,
    TE_TOKEN_NUMBER,
    TE_TOKEN_VARIABLE,
    TE_TOKEN_INFIX
};

/// Levels of nesting that an expression may have.
enum { te_max_nesting = 2000 };

/// A node of a compiled expression. Owned by who called te_compile(), freed with te_free().
typedef struct te_expr
{
    int type;  ///< kind of the node
    union {
        double value;
        const double *bound;
        const void *function;
    };
    void *parameters[1];  ///< a node for each argument; of a closure, and its context behind them
} te_expr;

/// A name that the caller gives to te_compile().
typedef struct te_variable
{
    const char *name;     ///< zero-terminated: a lower-case letter, then such letters, digits, "_"
    const void *address;  ///< of a double, or of a function; a null one is a parse error
    int type;             ///< TE_VARIABLE, or a function or closure kind, perhaps with TE_FLAG_PURE
    void *context;        ///< first argument of a closure
} te_variable;

/// Where the scanner of an expression stands.
typedef struct te_state
{
    const char *start;  ///< of the current token
    const char *next;   ///< the next unread character
    int type;           ///< kind of the current token
    union {
        double value;
        const double *bound;
        const void *function;
    };
    void *context;              ///< of the current token's closure
    const te_variable *lookup;  ///< the names that the caller gave
    int lookup_len;             ///< how many there are
} te_state;

/// Parses and evaluates an expression without variables. A null text counts as an empty one.
/// @param error 0 on success; else the number of characters up to the next unread one when parsing
///              stopped, at least 1. May be null.
/// @return the value; NaN on a parse error. Division by zero and domain errors are no parse errors.
PRINTERSLIB_EXPORT double te_interp(const char *expression, int *error);

/// Parses an expression over variables.
/// @return a tree that the caller frees with te_free(), or null on a parse error. The variables'
///         addresses must stay valid as long as the tree is evaluated; the list itself need not.
PRINTERSLIB_EXPORT te_expr *te_compile(const char *expression, const te_variable *variables,
                                       int var_count, int *error);

/// The value of a tree; NaN for a null one.
PRINTERSLIB_EXPORT double te_eval(const te_expr *n);

/// Writes a tree to standard output, for diagnosis.
PRINTERSLIB_EXPORT void te_print(const te_expr *n);

/// Frees a tree. Null is allowed.
PRINTERSLIB_EXPORT void te_free(te_expr *n);

/// Frees the arguments of a node and forgets them; the node itself stays. Null is allowed.
PRINTERSLIB_EXPORT void te_free_parameters(te_expr *n);

/// Reads the next token. At the end of the text it is TE_TOKEN_END again and again; a point without
/// digits is an error that reads nothing.
PRINTERSLIB_EXPORT void next_token(te_state *s);

#ifdef __cplusplus
}
#endif
