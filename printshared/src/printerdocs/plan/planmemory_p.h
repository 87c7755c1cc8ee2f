#pragma once

#include <QByteArray>
#include <QString>
#include <algorithm>
#include <cstddef>
#include <vector>

namespace templates {

/// What a block of so many bytes takes up of the heap: malloc() writes its size in front of it, and
/// rounds up.
constexpr std::size_t heapSize(std::size_t bytes)
{
    constexpr std::size_t step = 16;
    constexpr std::size_t ownSize = sizeof(std::size_t);
    constexpr std::size_t smallest = 32;
    return bytes == 0 ? 0 : std::max(smallest, (bytes + ownSize + step - 1) / step * step);
}

template <typename Item>
std::size_t heapSize(const std::vector<Item> &items)
{
    return heapSize(items.capacity() * sizeof(Item));
}

inline std::size_t heapSize(const QString &text)
{
    const auto characters = static_cast<std::size_t>(text.capacity());
    return characters == 0 ? 0 : heapSize(sizeof(QStringData) + (characters + 1) * sizeof(QChar));
}

inline std::size_t heapSize(const QByteArray &bytes)
{
    const auto size = static_cast<std::size_t>(bytes.capacity());
    return size == 0 ? 0 : heapSize(sizeof(QByteArrayData) + size + 1);
}

/// How much a plan may take up, together with what documents find in place: so much for each line
/// of the template, however unlike its lines are.
class PlanMemory
{
public:
    explicit PlanMemory(int lines)
        : m_left(ofALine * static_cast<std::size_t>(std::max(lines, fewestLines)))
    {}

    /// @return whether there was so much left
    bool take(std::size_t bytes)
    {
        if (bytes > m_left)
            return false;
        m_left -= bytes;
        return true;
    }

    static constexpr std::size_t ofALine = 1024;
    // Shorter templates may have what one of so many lines has.
    static constexpr int fewestLines = 16;

private:
    std::size_t m_left;
};

}  // namespace templates
