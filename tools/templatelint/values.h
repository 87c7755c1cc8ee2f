#pragma once

#include <QHash>
#include <QMap>
#include <QString>
#include <QVariant>
#include <QVector>
#include <optional>

#include "printerdocs/printerdocument.h"
#include "printerdocs/printerdocumentformatter.h"

namespace templatelint {

/// An expression with the document's values put in, as far as it got.
struct Inserted
{
    QString text;
    /// For each character its index in the expression, of a value's standIn().
    QVector<int> origins;
    /// For each character of the expression the begin of the attribute's name that it belongs to;
    /// -1: none.
    QVector<int> keyBegin;
    QVector<int> keyEnd;
    bool isEndless = false;
};

/// A document's values as the library prints them, each worked out once.
class Values
{
public:
    explicit Values(const PrinterDocument &document);

    const PrinterDocument &document() const { return m_document; }
    QStringList names() const { return m_longestFirst; }
    bool has(const QString &name) const { return m_document.hasAttribute(name); }
    /// A value as it was handed over, which the library may read as another one.
    QVariant rawValue(const QString &name) const { return m_attributes.value(name); }
    /// The text of a tag; nothing if it would be too long to be worked out.
    std::optional<QString> ofTag(const QString &inner);
    /// Whether an expression over the attributes can be evaluated.
    bool evaluates(const QString &expression);
    /// What an expression over the attributes comes to; nothing if it has a mistake.
    std::optional<double> resultOf(const QString &expression);
    /// Whether the name of an attribute that holds no text stands in an expression.
    bool haveEmptyOneIn(const QString &expression) const;
    /// Whether a value holds a character that tags and groups are made of.
    bool holdMarkup() const { return m_holdMarkup; }
    /// Whether a value can lead to other values at all.
    bool leadOn() const { return m_holdTags || m_nameOthers; }
    /// The values put in one by one, the longest name first.
    Inserted insertedInto(const QString &expression) const;

private:
    std::optional<QString> textOf(const QString &name, const QString &format);
    void insertValue(const QString &name, int longest, Inserted &result) const;

    const PrinterDocument m_document;
    const QMap<QString, QVariant> m_attributes;
    const PrinterDocumentFormatter m_formatter;
    QStringList m_longestFirst;
    QHash<QString, std::optional<QString>> m_texts;
    QHash<QString, std::optional<double>> m_results;
    bool m_holdMarkup = false;
    bool m_holdTags = false;
    bool m_nameOthers = false;  ///< a value holds the name of an attribute
};

}  // namespace templatelint
