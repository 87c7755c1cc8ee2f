#include "printerdocs/template/keytable_p.h"

#include <QHash>
#include <utility>

namespace templates {

KeyTable::KeyTable(const Attributes &attributes)
{
    rank(attributes);
    enter();
}

/// Sorts by counting the names of each length.
void KeyTable::rank(const Attributes &attributes)
{
    std::vector<int> countOf;
    for (auto attribute = attributes.cbegin(); attribute != attributes.cend(); ++attribute) {
        const std::size_t characters = index(attribute.key().size());
        if (characters >= countOf.size())
            countOf.resize(characters + 1);
        ++countOf[characters];
    }
    int rank = 0;
    for (std::size_t characters = countOf.size(); characters-- > 0;) {
        if (countOf[characters] > 0)
            m_lengths.push_back({static_cast<int>(characters), rank});
        rank += std::exchange(countOf[characters], rank);
    }
    m_ranks.resize(index(rank));
    for (auto attribute = attributes.cbegin(); attribute != attributes.cend(); ++attribute)
        m_ranks[index(countOf[index(attribute.key().size())]++)] = attribute;
}

void KeyTable::enter()
{
    constexpr std::size_t slotsPerKey = 2;
    constexpr std::size_t mostTriesPerKey = 16;
    std::size_t triesLeft = mostTriesPerKey * (m_ranks.size() + 1);
    std::size_t slots = 1;
    while (slots < slotsPerKey * m_ranks.size() + 1)
        slots *= 2;
    m_slots.resize(slots);
    for (int rank = 0; rank < size(); ++rank) {
        const QString &key = keyOfRank(rank);
        const uint hash = hashOf(key);
        std::size_t slot = hash & (slots - 1);
        while (m_slots[slot].rank >= 0 && triesLeft > 0) {
            slot = (slot + 1) & (slots - 1);
            --triesLeft;
        }
        if (triesLeft == 0) {
            m_slots.clear();
            return;
        }
        m_slots[slot] = {hash, rank};
        if (!key.isEmpty())
            m_lengthsByFirst[key.at(0).unicode() % m_lengthsByFirst.size()] |= bit(key.size());
    }
}

quint64 KeyTable::lengthsIn(const QString &text, int begin, int end) const
{
    quint64 lengths = bit(0);  // an empty name stands everywhere
    for (int place = begin; place < end; ++place)
        lengths |= lengthsOf(text.at(place));
    return lengths;
}

int KeyTable::find(QStringView key, qint64 &looks) const
{
    looks += key.size();
    const std::size_t last = m_slots.size() - 1;
    const uint hash = hashOf(key);
    for (std::size_t slot = hash & last; m_slots[slot].rank >= 0; slot = (slot + 1) & last) {
        const Slot &found = m_slots[slot];
        ++looks;
        if (found.hash != hash)
            continue;
        looks += key.size();
        if (QStringView(keyOfRank(found.rank)) == key)
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

}  // namespace templates
