#include "printerdocs/document/zerobytes_p.h"

#include <array>
#include <cstddef>
#include <utility>

namespace documents {

namespace {

// One more than the characters of a usual line.
constexpr std::size_t sharedSizes = 65;

/// What QByteArrayLiteral makes of so many zeros.
template <std::size_t Size>
QByteArray zeroLiteral()
{
    static const QStaticByteArrayData<Size> zeros = {
        Q_STATIC_BYTE_ARRAY_DATA_HEADER_INITIALIZER(Size), {}};
    return QByteArray(QByteArrayDataPtr{zeros.data_ptr()});
}

template <std::size_t... Sizes>
std::array<QByteArray, sizeof...(Sizes)> zeroLiterals(std::index_sequence<Sizes...>)
{
    return {zeroLiteral<Sizes>()...};
}

}  // namespace

QByteArray zeroBytes(int count)
{
    static const auto shared = zeroLiterals(std::make_index_sequence<sharedSizes>());
    const auto size = static_cast<std::size_t>(count);
    return size < shared.size() ? shared[size] : QByteArray(count, '\0');
}

}  // namespace documents
