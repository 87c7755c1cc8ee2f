#include "printerdocs/plan/names_p.h"

#include <QStringList>
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

NamedValues::Value valueOf(const QVariant &variant)
{
    if (variant.userType() != QMetaType::Double)
        return {&variant, false, 0};
    return {&variant, true, *static_cast<const double *>(variant.constData())};
}

}  // namespace

int TemplateNames::add(const QString &name)
{
    const auto known = m_numbers.constFind(name);
    return known != m_numbers.cend() ? *known : *m_numbers.insert(name, m_numbers.size());
}

std::vector<int> TemplateNames::sort()
{
    QStringList names = m_numbers.keys();
    std::sort(names.begin(), names.end());
    std::vector<int> sorted(static_cast<std::size_t>(names.size()));
    for (int place = 0; place < names.size(); ++place) {
        sorted[static_cast<std::size_t>(m_numbers.value(names.at(place)))] = place;
        m_text += names.at(place);
        m_ends.push_back(m_text.size());
    }
    m_text.squeeze();
    m_ends.shrink_to_fit();
    m_numbers = {};
    return sorted;
}

NamedValues::NamedValues(const TemplateNames &names, const Attributes &attributes)
    : m_values(static_cast<std::size_t>(names.count()))
{
    // What a look-up costs in steps through the map.
    constexpr std::size_t stepsOfALookUp = 8;
    if (static_cast<std::size_t>(attributes.size()) <= stepsOfALookUp * m_values.size())
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
            m_values[static_cast<std::size_t>(name++)] = valueOf(*attribute);
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
            m_values[static_cast<std::size_t>(name)] = valueOf(*attribute);
    }
}

}  // namespace templates
