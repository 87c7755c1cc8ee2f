#include "printerdocs/documentvalues_p.h"

#include <QDebug>
#include <QLoggingCategory>
#include <algorithm>

#include "log/loghelper.h"
#include "printerdocs/expressionevaluator.h"
#include "printerdocs/valueformat_p.h"

namespace {

/// The lines below are written for every tag of every receipt: a client that switches the
/// category's warnings off must not pay for making them.
bool warningsAreOn()
{
    const QLoggingCategory *const category = QLoggingCategory::defaultCategory();
    return category && category->isWarningEnabled();
}

QString textOf(const QVariant &value, const QString &format)
{
    switch (static_cast<int>(value.type())) {
        case QVariant::Int:
        case QVariant::UInt:
        case QVariant::LongLong:
        case QVariant::ULongLong:
            return valueformat::ofInteger(format, value.toLongLong());
        case QVariant::Double:
            return valueformat::ofReal(format, value.toDouble());
        case QVariant::Date:
            return valueformat::ofDate(format, value.toDate());
        case QVariant::Time:
            return valueformat::ofTime(format, value.toTime());
        case QVariant::DateTime:
            return valueformat::ofDateTime(format, value.toDateTime());
        default:
            return value.toString();
    }
}

}  // namespace

DocumentValues::DocumentValues(const PrinterDocument &document) : m_document(document) {}

QString DocumentValues::text(const QString &name, const QString &format)
{
    if (warningsAreOn())
        qWarning().noquote() << name;
    if (name.isEmpty())
        return QString();
    if (!m_document.hasAttribute(name)) {
        if (const std::optional<double> value = evaluate(name))
            return valueformat::ofReal(format, *value);
    }
    return textOf(m_document.attributeValue(name), format);
}

std::optional<double> DocumentValues::evaluate(const QString &expression)
{
    collectKeys();
    const bool logs = warningsAreOn();
    if (logs) {
        qWarning().noquote() << loglist(m_keys);
        qWarning().noquote() << loglist(m_longestFirst);
    }
    int error = 0;
    const double value = te_interp(withValuesInserted(expression).toUtf8().constData(), &error);
    if (logs) {
        qWarning().noquote() << value;
        qWarning().noquote() << error;
    }
    return error == 0 ? std::optional<double>(value) : std::nullopt;
}

/// Each key, the longest first, is replaced by its value wherever it stands, also inside values put
/// in before. Only keys that occur are touched, since a receipt has thousands of them.
QString DocumentValues::withValuesInserted(const QString &expression)
{
    QString text = expression;
    int rank = 0;
    while (rank < m_longestFirst.size()) {
        const int length = m_longestFirst.at(rank).size();
        const int found = firstKeyIn(text, length, rank);
        if (found >= 0) {
            const QString &key = m_longestFirst.at(found);
            text.replace(key, m_document.attributeValue(key).toString());
            rank = found + 1;
            continue;
        }
        const auto nextLength =
            std::partition_point(m_longestFirst.cbegin() + rank, m_longestFirst.cend(),
                                 [length](const QString &key) { return key.size() >= length; });
        rank = static_cast<int>(nextLength - m_longestFirst.cbegin());
    }
    return text;
}

/// The lowest rank, from `fromRank` on, of the keys of this length that occur in the text; or -1.
int DocumentValues::firstKeyIn(const QString &text, int keyLength, int fromRank) const
{
    if (keyLength == 0)
        return fromRank;
    int lowest = -1;
    for (int i = 0; i + keyLength <= text.size(); ++i) {
        const int rank = m_rankOf.value(QString::fromRawData(text.constData() + i, keyLength), -1);
        if (rank >= fromRank && (lowest < 0 || rank < lowest))
            lowest = rank;
    }
    return lowest;
}

void DocumentValues::collectKeys()
{
    if (m_keysCollected)
        return;
    m_keysCollected = true;
    m_keys = m_document.attributes().keys();
    m_longestFirst = m_keys;
    std::stable_sort(m_longestFirst.begin(), m_longestFirst.end(),
                     [](const QString &a, const QString &b) { return a.size() > b.size(); });
    m_rankOf.reserve(m_longestFirst.size());
    for (int rank = 0; rank < m_longestFirst.size(); ++rank)
        m_rankOf.insert(m_longestFirst.at(rank), rank);
}
