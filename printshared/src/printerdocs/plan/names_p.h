#pragma once

#include <QMap>
#include <QString>
#include <QStringView>
#include <QVariant>
#include <variant>
#include <vector>

namespace templates {

/// The names that a template asks for, each once, in the order of a document's map.
class TemplateNames
{
public:
    /// Takes names up. @return for each its number in that order
    std::vector<int> take(const std::vector<QStringView> &names);

    /// What a name takes up of the memory at most, with its number, which others may note.
    static std::size_t memoryOf(QStringView name)
    {
        return 2 * sizeof(int) + sizeof(QChar) * static_cast<std::size_t>(name.size());
    }

    int count() const { return static_cast<int>(m_ends.size()) - 1; }
    /// A name by its number in their order; valid as long as these names.
    QStringView at(int number) const
    {
        const int begin = m_ends[static_cast<std::size_t>(number)];
        return QStringView(m_text.constData() + begin,
                           m_ends[static_cast<std::size_t>(number) + 1] - begin);
    }

private:
    QString m_text;  ///< all names: they are read one after the other
    std::vector<int> m_ends{0};
};

/// The values that a document has for a template's names. It keeps its memory from document to
/// document, and nothing else.
class NamedValues
{
public:
    using Attributes = QMap<QString, QVariant>;

    /// What a document has for a name: nothing, a real number, a whole one that 64 bits with a sign
    /// hold, a text, or something else.
    using Value = std::variant<std::monostate, double, qint64, const QString *, const QVariant *>;

    /// Whether the document's other names are wanted.
    enum class Others { Ignored, Gathered };

    /// What a name takes up of the memory that is kept, at most.
    static constexpr std::size_t memoryOfAName = sizeof(Value) + sizeof(void *);

    /// Reads a document's. Refers to the attributes, which must neither change nor go until
    /// forget() is called.
    void read(const TemplateNames &names, const Attributes &attributes, Others others);
    void forget();

    bool has(int name) const { return of(name).index() != 0; }
    const Value &of(int name) const { return m_values[static_cast<std::size_t>(name)]; }
    /// Those names of the document that the template hasn't.
    const std::vector<const QString *> &others() const { return m_others; }

private:
    void walk(const TemplateNames &names, const Attributes &attributes, Others others);
    void lookUp(const TemplateNames &names, const Attributes &attributes);

    std::vector<Value> m_values;
    std::vector<const QString *> m_others;
};

}  // namespace templates
