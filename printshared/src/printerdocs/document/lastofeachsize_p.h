#pragma once

#include <QByteArray>
#include <array>
#include <cstddef>

namespace documents {

/// What is made of arrays, of which equal ones are mostly made once: the formats of a receipt's
/// lines differ in little but their number.
template <typename Value>
class LastOfEachSize
{
public:
    /// @param make gives an array's value, which isn't null
    template <typename Make>
    const Value &of(const QByteArray &bytes, Make make)
    {
        Known &known = m_known[static_cast<std::size_t>(bytes.size()) % m_known.size()];
        if (known.value.isNull() || known.bytes != bytes)
            known = {bytes, make(bytes)};
        return known.value;
    }

private:
    struct Known
    {
        QByteArray bytes;
        Value value;
    };
    std::array<Known, 64> m_known;  ///< the last of each size, or of one that leaves the same
};

}  // namespace documents
