#include "printerdocs/keytable_p.h"

#include <QHash>
#include <functional>
#include <map>
#include <utility>

KeyTable::KeyTable(const Attributes &attributes)
{
    rank(attributes);
    enter();
}

/// Sorts by counting: names differ in a few lengths only.
void KeyTable::rank(const Attributes &attributes)
{
    std::map<int, int, std::greater<>> countOf;
    for (auto attribute = attributes.cbegin(); attribute != attributes.cend(); ++attribute)
        ++countOf[attribute.key().size()];
    int rank = 0;
    for (auto &[characters, count] : countOf) {
        m_lengths.push_back({characters, rank});
        rank += std::exchange(count, rank);
    }
    m_ranks.resize(static_cast<std::size_t>(rank));
    for (auto attribute = attributes.cbegin(); attribute != attributes.cend(); ++attribute)
        m_ranks[index(countOf[attribute.key().size()]++)] = attribute;
}

void KeyTable::enter()
{
    constexpr std::size_t slotsPerKey = 2;
    std::size_t slots = 1;
    while (slots < slotsPerKey * m_ranks.size() + 1)
        slots *= 2;
    m_slots.resize(slots);
    for (int rank = 0; rank < size(); ++rank) {
        const QString &key = keyOfRank(rank);
        const uint hash = hashOf(key);
        std::size_t slot = hash & (slots - 1);
        while (m_slots[slot].rank >= 0)
            slot = (slot + 1) & (slots - 1);
        m_slots[slot] = {hash, rank};
        if (!key.isEmpty())
            m_lengthsByFirst[key.at(0).unicode() % m_lengthsByFirst.size()] |= bit(key.size());
    }
}

quint64 KeyTable::lengthsIn(const QString &text) const
{
    quint64 lengths = bit(0);  // an empty name stands everywhere
    for (const QChar c : text)
        lengths |= m_lengthsByFirst[c.unicode() % m_lengthsByFirst.size()];
    return lengths;
}

int KeyTable::find(QStringView key) const
{
    const std::size_t last = m_slots.size() - 1;
    const uint hash = hashOf(key);
    for (std::size_t slot = hash & last; m_slots[slot].rank >= 0; slot = (slot + 1) & last) {
        const Slot &found = m_slots[slot];
        if (found.hash == hash && QStringView(keyOfRank(found.rank)) == key)
            return found.rank;
    }
    return -1;
}

/// Names that count up have neighbouring hashes by themselves; these are scattered.
uint KeyTable::hashOf(QStringView key)
{
    constexpr quint64 scatter = 0x9E3779B97F4A7C15;  // 2^64 by the golden ratio
    return static_cast<uint>((qHash(key) * scatter) >> 32U);
}
