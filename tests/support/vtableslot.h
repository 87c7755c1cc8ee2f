#pragma once

#include <cstddef>
#include <cstring>

/// Where a virtual operation stands in its class's table, the destructor's two entries being 0 and
/// 1. Clients that were compiled against the interface call by this number. The C++ ABI of Linux
/// keeps it in the member pointer as 1 + the offset in bytes.
template <typename Operation>
int vtableSlot(Operation operation)
{
    std::ptrdiff_t offset = 0;
    static_assert(sizeof(operation) >= sizeof(offset));
    std::memcpy(&offset, &operation, sizeof(offset));
    return int((offset - 1) / std::ptrdiff_t(sizeof(void *)));
}
