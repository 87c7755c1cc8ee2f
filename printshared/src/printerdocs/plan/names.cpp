#include "printerdocs/plan/names_p.h"

#include <algorithm>
#include <numeric>

namespace templates {

namespace {

/// Neighbours in a map are alike at their beginning.
bool isSame(const QString &a, const QString &b)
{
    return a.size() == b.size() && std::equal(a.crbegin(), a.crend(), b.crbegin());
}

}  // namespace

int TemplateNames::add(const QString &name)
{
    const auto known = m_numbers.constFind(name);
    if (known != m_numbers.cend())
        return *known;
    m_names.push_back(name);
    return *m_numbers.insert(name, static_cast<int>(m_names.size()) - 1);
}

std::vector<int> TemplateNames::sort()
{
    std::sort(m_names.begin(), m_names.end());
    std::vector<int> sorted(m_names.size());
    for (std::size_t place = 0; place < m_names.size(); ++place)
        sorted[static_cast<std::size_t>(m_numbers.value(m_names[place]))] = static_cast<int>(place);
    m_numbers = {};
    return sorted;
}

NamedValues::NamedValues(const TemplateNames &names, const Attributes &attributes)
    : m_values(names.inOrder().size(), nullptr)
{
    // What a look-up costs in steps through the map.
    constexpr std::size_t stepsOfALookUp = 8;
    if (static_cast<std::size_t>(attributes.size()) <= stepsOfALookUp * m_values.size())
        walk(names.inOrder(), attributes);
    else
        lookUp(names.inOrder(), attributes);
}

/// A receipt uses nearly all that its document has: both are gone through side by side.
void NamedValues::walk(const std::vector<QString> &names, const Attributes &attributes)
{
    auto attribute = attributes.cbegin();
    const auto end = attributes.cend();
    std::size_t name = 0;
    while (attribute != end && name < names.size()) {
        if (isSame(attribute.key(), names[name])) {
            m_values[name++] = &*attribute++;
        } else if (attribute.key() < names[name]) {
            ++attribute;
        } else {
            ++name;
        }
    }
}

void NamedValues::lookUp(const std::vector<QString> &names, const Attributes &attributes)
{
    for (std::size_t name = 0; name < names.size(); ++name) {
        const auto attribute = attributes.constFind(names[name]);
        if (attribute != attributes.cend())
            m_values[name] = &*attribute;
    }
}

}  // namespace templates
