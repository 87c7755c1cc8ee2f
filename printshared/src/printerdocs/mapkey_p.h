#pragma once

#include <QLatin1String>
#include <cstddef>

/// A key of a map form as a compile-time constant; QLatin1String's own constructor is one only with
/// some compilers.
template <std::size_t Size>
constexpr QLatin1String mapKey(const char (&text)[Size])
{
    return QLatin1String(text, static_cast<int>(Size) - 1);
}
