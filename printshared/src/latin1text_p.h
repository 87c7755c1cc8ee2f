#pragma once

#include <QLatin1String>
#include <cstddef>

namespace printshared {

/// A text, such as the key of a map form, as a compile-time constant; QLatin1String's own
/// constructor is one only with some compilers.
template <std::size_t Size>
constexpr QLatin1String latin1Text(const char (&text)[Size])
{
    return QLatin1String(text, static_cast<int>(Size) - 1);
}

}  // namespace printshared
