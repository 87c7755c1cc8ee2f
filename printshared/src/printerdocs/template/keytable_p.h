#pragma once

#include <QMap>
#include <QString>
#include <QStringView>
#include <QVariant>
#include <array>
#include <vector>

namespace templates {

/// The attribute names of a document as expressions need them: what names stand in a text, the
/// longest first. A receipt has thousands of names and an expression holds two or three, so a text
/// is searched for the few lengths and places at which a name can stand at all.
///
/// Refers to the map, which must neither change nor go as long as the table is used.
class KeyTable
{
public:
    using Attributes = QMap<QString, QVariant>;

    /// All names of one length.
    struct Length
    {
        int characters;
        int firstRank;
    };

    explicit KeyTable(const Attributes &attributes);

    /// The names' lengths, the longest first.
    const std::vector<Length> &lengths() const { return m_lengths; }
    /// Names by rank: the longest first, and those of one length in the map's order.
    int size() const { return static_cast<int>(m_ranks.size()); }
    const QString &keyOfRank(int rank) const { return m_ranks[index(rank)].key(); }
    const QVariant &valueOfRank(int rank) const { return m_ranks[index(rank)].value(); }

    /// A bit for each length that a name could have that begins in this part of a text; see
    /// mayHold().
    quint64 lengthsIn(const QString &text, int begin, int end) const;
    /// Whether that says that there may be a name of so many characters.
    static bool mayHold(quint64 lengths, int characters)
    {
        return (lengths & bit(characters)) != 0;
    }
    /// Whether so many names have like hashes that the table was given up; there is no rankAt()
    /// then. Ordinary names never do.
    bool isCrowded() const { return m_slots.empty(); }
    /// The rank of the name of so many characters that stands at the place; -1: none.
    /// @param looks is raised by the characters and slots looked at, but for that at the place
    int rankAt(const QString &text, int place, int characters, qint64 &looks) const
    {
        return mayHold(lengthsOf(text.at(place)), characters)
                   ? find(QStringView(text).mid(place, characters), looks)
                   : -1;
    }

private:
    struct Slot
    {
        uint hash = 0;
        int rank = -1;  ///< -1: free
    };

    static std::size_t index(int number) { return static_cast<std::size_t>(number); }
    quint64 lengthsOf(QChar first) const
    {
        return m_lengthsByFirst[first.unicode() % m_lengthsByFirst.size()];
    }
    static quint64 bit(int characters) { return quint64(1) << qMin(characters, 63); }
    static uint hashOf(QStringView key);
    int find(QStringView key, qint64 &looks) const;
    void rank(const Attributes &attributes);
    void enter();

    std::vector<Attributes::const_iterator> m_ranks;
    std::vector<Length> m_lengths;
    std::vector<Slot> m_slots;                    ///< a hash table with room to spare, or empty
    std::array<quint64, 256> m_lengthsByFirst{};  ///< by the low byte of a name's first character
};

}  // namespace templates
