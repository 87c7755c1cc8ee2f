#pragma once

#include <QHash>
#include <QMap>
#include <QString>
#include <QVariant>
#include <vector>

namespace templates {

/// The names that a template asks for, each once, in the order of a document's map.
class TemplateNames
{
public:
    /// Takes a name up. @return its number up to sort()
    int add(const QString &name);
    /// Ends the taking up. @return the number of each name from then on
    std::vector<int> sort();

    const std::vector<QString> &inOrder() const { return m_names; }

private:
    QHash<QString, int> m_numbers;
    std::vector<QString> m_names;
};

/// The values that a document has for a template's names.
class NamedValues
{
public:
    using Attributes = QMap<QString, QVariant>;

    /// Refers to the attributes, which must neither change nor go as long as this is used.
    NamedValues(const TemplateNames &names, const Attributes &attributes);

    /// Null: the document has no such name.
    const QVariant *of(int name) const { return m_values[static_cast<std::size_t>(name)]; }

private:
    void walk(const std::vector<QString> &names, const Attributes &attributes);
    void lookUp(const std::vector<QString> &names, const Attributes &attributes);

    std::vector<const QVariant *> m_values;
};

}  // namespace templates
