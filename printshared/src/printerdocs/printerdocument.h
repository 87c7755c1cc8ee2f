#pragma once

#include <QMap>
#include <QString>
#include <QVariant>

#include "printerslib_export.h"

/// The values of one receipt, or of any other printed document: named attributes, a free list of
/// entry lines, and the mark that this print is a copy. It knows nothing of templates;
/// PrinterDocumentFormatter reads it.
///
/// A plain value: copies are cheap (the text and the map are implicitly shared) and independent.
/// One object is used by one thread at a time. No operation fails.
class PRINTERSLIB_EXPORT PrinterDocument
{
public:
    /// An empty document that is no copy.
    PrinterDocument() = default;

    /// Whether this is a repeat print; the template engine then adds the copy line.
    bool isCopy() const;
    void setIsCopy(bool isCopy);

    /// The entry lines in one text, separated by tab characters, each a name and a value joined by
    /// "=". A template's `<ENTRIES>` unpacks them.
    QString entries() const;
    void setEntries(const QString &entries);

    /// All attributes as they were set, with no conversion of any value.
    QMap<QString, QVariant> attributes() const;
    /// Replaces the whole map; nothing is merged.
    void setAttributes(const QMap<QString, QVariant> &attributes);

    /// Whether there is an attribute of exactly this name; names are case-sensitive.
    bool hasAttribute(const QString &name) const;

    /// The attribute's value, where text that reads as a number comes back as one: a LongLong if it
    /// is a whole number of fewer than 19 characters, else a Double if it is a number of fewer than
    /// 16 characters, where a "," may stand for the decimal point. So "007" is 7, and longer digit
    /// strings (card numbers, fiscal signs) stay text and print digit for digit. The stored map
    /// does not change. A missing name gives a null text, not an invalid variant.
    QVariant attributeValue(const QString &name) const;

    /// Always true: the parts of a template that are marked for removal never print.
    bool removeFiscalAttrs() const;

    /// Compares all fields.
    bool operator==(const PrinterDocument &other) const;
    bool operator!=(const PrinterDocument &other) const;

private:
    bool m_isCopy = false;
    QString m_entries;
    QMap<QString, QVariant> m_attributes;
};
