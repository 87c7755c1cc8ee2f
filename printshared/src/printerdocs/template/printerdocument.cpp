#include "printerdocs/printerdocument.h"

#include "printerdocs/template/numbertext_p.h"

bool PrinterDocument::isCopy() const
{
    return m_isCopy;
}

void PrinterDocument::setIsCopy(bool isCopy)
{
    m_isCopy = isCopy;
}

QString PrinterDocument::entries() const
{
    return m_entries;
}

void PrinterDocument::setEntries(const QString &entries)
{
    m_entries = entries;
}

QMap<QString, QVariant> PrinterDocument::attributes() const
{
    return m_attributes;
}

void PrinterDocument::setAttributes(const QMap<QString, QVariant> &attributes)
{
    m_attributes = attributes;
}

bool PrinterDocument::hasAttribute(const QString &name) const
{
    return m_attributes.contains(name);
}

QVariant PrinterDocument::attributeValue(const QString &name) const
{
    const auto found = m_attributes.constFind(name);
    if (found == m_attributes.constEnd())
        return QVariant(QString());
    if (found->type() != QVariant::String)
        return *found;
    return templates::numberOrText(*found);
}

bool PrinterDocument::removeFiscalAttrs() const
{
    return true;
}

bool PrinterDocument::operator==(const PrinterDocument &other) const
{
    return m_isCopy == other.m_isCopy && m_entries == other.m_entries &&
           m_attributes == other.m_attributes;
}

bool PrinterDocument::operator!=(const PrinterDocument &other) const
{
    return !(*this == other);
}
