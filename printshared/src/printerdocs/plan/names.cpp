#include "printerdocs/plan/names_p.h"

#include <algorithm>
#include <cstring>

namespace templates {

namespace {

/// How a map orders two names: below 0, 0 or above. They have some seven characters, and are
/// compared before a call of a function for that has begun.
int order(const QString &a, QStringView b)
{
    constexpr int atOnce = sizeof(quint64) / sizeof(QChar);
    const int common = static_cast<int>(qMin<qsizetype>(a.size(), b.size()));
    const QChar *const inA = a.constData();
    const QChar *const inB = b.data();
    int at = 0;
    for (; at + atOnce <= common; at += atOnce) {
        quint64 partOfA = 0;
        quint64 partOfB = 0;
        std::memcpy(&partOfA, inA + at, sizeof(partOfA));
        std::memcpy(&partOfB, inB + at, sizeof(partOfB));
        if (partOfA != partOfB)
            break;
    }
    for (; at < common; ++at) {
        if (inA[at] != inB[at])
            return inA[at].unicode() - inB[at].unicode();
    }
    return a.size() - static_cast<int>(b.size());
}

/// The first characters of a name as a number that sorts like them, as far as they tell.
quint64 packedBegin(QStringView name)
{
    constexpr int bits = 8;
    constexpr int characters = 8;
    constexpr quint64 last = 0xFF;  // of itself and all beyond: what follows isn't looked at
    quint64 packed = 0;
    int left = characters;
    for (auto c = name.begin(); c != name.end() && left > 0; ++c) {
        packed |= qMin<quint64>(c->unicode(), last) << static_cast<unsigned>(--left * bits);
        if (c->unicode() >= last)
            break;
    }
    return packed;
}

struct SortedName
{
    quint64 begin;
    QStringView text;
    int place;

    bool operator<(const SortedName &other) const
    {
        return begin != other.begin ? begin < other.begin : text < other.text;
    }
};

NamedValues::Value valueOf(const QVariant &variant)
{
    switch (variant.userType()) {
        case QMetaType::Double:
            return *static_cast<const double *>(variant.constData());
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::LongLong:
            return qint64(variant.toLongLong());
        case QMetaType::QString:
            return static_cast<const QString *>(variant.constData());
        default:
            return &variant;
    }
}

}  // namespace

std::vector<int> TemplateNames::take(const std::vector<QStringView> &names)
{
    std::vector<SortedName> sorted;
    sorted.reserve(names.size());
    for (const QStringView name : names)
        sorted.push_back({packedBegin(name), name, static_cast<int>(sorted.size())});
    std::sort(sorted.begin(), sorted.end());
    std::vector<int> numbers(names.size());
    m_ends.reserve(names.size() + 1);
    for (const SortedName &name : sorted) {
        if (count() == 0 || at(count() - 1) != name.text) {
            m_text.append(name.text.data(), static_cast<int>(name.text.size()));
            m_ends.push_back(m_text.size());
        }
        numbers[static_cast<std::size_t>(name.place)] = count() - 1;
    }
    m_text.squeeze();
    m_ends.shrink_to_fit();
    return numbers;
}

void NamedValues::read(const TemplateNames &names, const Attributes &attributes, Others others)
{
    m_values.resize(static_cast<std::size_t>(names.count()));
    // What a look-up costs in steps through the map.
    constexpr std::size_t stepsOfALookUp = 8;
    if (others == Others::Gathered ||
        static_cast<std::size_t>(attributes.size()) <= stepsOfALookUp * m_values.size())
        walk(names, attributes, others);
    else
        lookUp(names, attributes);
}

void NamedValues::forget()
{
    m_values.clear();
    m_others.clear();
    // A document may have any number of them.
    if (m_others.capacity() > m_values.capacity())
        std::vector<const QString *>().swap(m_others);
}

/// A receipt uses nearly all that its document has: both are gone through side by side.
void NamedValues::walk(const TemplateNames &names, const Attributes &attributes, Others others)
{
    auto attribute = attributes.cbegin();
    const auto end = attributes.cend();
    int name = 0;
    for (Value *value = m_values.data(); attribute != end && name < names.count();) {
        const int found = order(attribute.key(), names.at(name));
        if (found == 0)
            *value = valueOf(*attribute);
        else if (found < 0 && others == Others::Gathered)
            m_others.push_back(&attribute.key());
        if (found >= 0) {
            ++value;
            ++name;
        }
        if (found <= 0)
            ++attribute;
    }
    if (others == Others::Ignored)
        return;
    for (; attribute != end; ++attribute)
        m_others.push_back(&attribute.key());
}

void NamedValues::lookUp(const TemplateNames &names, const Attributes &attributes)
{
    for (int name = 0; name < names.count(); ++name) {
        const QStringView wanted = names.at(name);
        const auto attribute = attributes.constFind(
            QString::fromRawData(wanted.data(), static_cast<int>(wanted.size())));
        if (attribute != attributes.cend())
            m_values[static_cast<std::size_t>(name)] = valueOf(*attribute);
    }
}

}  // namespace templates
