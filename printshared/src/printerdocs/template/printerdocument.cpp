#include "printerdocs/printerdocument.h"

#include "printerdocs/template/numbertext_p.h"

namespace {

// From these lengths on a text of digits stays text: it may not survive as a number.
constexpr int tooLongForWhole = 19;
constexpr int tooLongForReal = 16;

}  // namespace

QVariant numberOrText(const QVariant &value)
{
    const QString text = value.toString();
    if (beginsLikeAWord(text))
        return value;
    bool ok = false;
    const qlonglong whole = text.toLongLong(&ok);
    if (ok && text.size() < tooLongForWhole)
        return QVariant(whole);
    double real = text.toDouble(&ok);
    if (ok && text.size() < tooLongForReal)
        return QVariant(real);
    if (!text.contains(QLatin1Char(',')))
        return value;
    QString pointed = text;
    pointed.replace(QLatin1Char(','), QLatin1Char('.'));
    real = pointed.toDouble(&ok);
    if (ok && pointed.size() < tooLongForReal)
        return QVariant(real);
    return value;
}

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
    return numberOrText(*found);
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
