#include "printerdocs/plan/names_p.h"

#include <algorithm>
#include <cstring>

namespace templates {

namespace {

bool isSame(const QString &a, QStringView b)
{
    return a.size() == b.size() &&
           std::memcmp(a.constData(), b.data(),
                       sizeof(QChar) * static_cast<std::size_t>(a.size())) == 0;
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

NamedValues::NamedValues(const TemplateNames &names, const Attributes &attributes)
    : m_values(names.count())
{
    // What a look-up costs in steps through the map.
    constexpr int stepsOfALookUp = 8;
    if (attributes.size() <= stepsOfALookUp * m_values.size())
        walk(names, attributes);
    else
        lookUp(names, attributes);
}

/// A receipt uses nearly all that its document has: both are gone through side by side.
void NamedValues::walk(const TemplateNames &names, const Attributes &attributes)
{
    auto attribute = attributes.cbegin();
    const auto end = attributes.cend();
    const int count = names.count();
    for (int name = 0; attribute != end && name < count;) {
        const QStringView wanted = names.at(name);
        if (isSame(attribute.key(), wanted)) {
            m_values[name++] = valueOf(*attribute);
            ++attribute;
        } else if (QStringView(attribute.key()) < wanted) {
            ++attribute;
        } else {
            ++name;
        }
    }
}

void NamedValues::lookUp(const TemplateNames &names, const Attributes &attributes)
{
    for (int name = 0; name < names.count(); ++name) {
        const QStringView wanted = names.at(name);
        const auto attribute = attributes.constFind(
            QString::fromRawData(wanted.data(), static_cast<int>(wanted.size())));
        if (attribute != attributes.cend())
            m_values[name] = valueOf(*attribute);
    }
}

}  // namespace templates
