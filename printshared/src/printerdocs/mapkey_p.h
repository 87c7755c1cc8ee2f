#pragma once

#include "printerdocs/latin1text_p.h"

/// A key of a map form as a compile-time constant.
template <std::size_t Size>
constexpr QLatin1String mapKey(const char (&text)[Size])
{
    return latin1Text(text);
}
