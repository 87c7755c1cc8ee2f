#include "printerdocs/documentvalues_p.h"

#include <QDebug>
#include <QLoggingCategory>
#include <QPair>
#include <QVector>
#include <algorithm>
#include <limits>

#include "log/loghelper.h"
#include "printerdocs/expressionevaluator.h"
#include "printerdocs/numbertext_p.h"
#include "printerdocs/valueformat_p.h"

namespace {

/// The lines below are written for every tag of every receipt: a client that switches the
/// category's warnings off must not pay for making them.
bool warningsAreOn()
{
    const QLoggingCategory *const category = QLoggingCategory::defaultCategory();
    return category && category->isWarningEnabled();
}

QString textOf(const QVariant &value, QStringView format)
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

DocumentValues::DocumentValues(const PrinterDocument &document)
    : m_document(document), m_attributes(document.attributes())
{
    constexpr int usualName = 64;
    m_name.reserve(usualName);
}

QString DocumentValues::text(QStringView name, QStringView format)
{
    m_name.resize(0);
    m_name.append(name.data(), static_cast<int>(name.size()));
    if (warningsAreOn())
        qWarning().noquote() << m_name;
    return m_name.isEmpty() ? QString() : textOfTag(format);
}

QString DocumentValues::textOfTag(QStringView format)
{
    const auto attribute = m_attributes.constFind(m_name);
    if (attribute == m_attributes.constEnd()) {
        const std::optional<double> value = evaluate(m_name);
        return value ? valueformat::ofReal(format, *value) : QString();
    }
    if (attribute->type() != QVariant::String)
        return textOf(*attribute, format);
    const QString text = attribute->toString();
    return beginsLikeAWord(text) ? text : textOf(numberOrText(*attribute), format);
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
QString DocumentValues::withValuesInserted(const QString &expression) const
{
    QString text = expression;
    auto key = m_longestFirst.cbegin();
    while (key != m_longestFirst.cend()) {
        const int length = key->size();
        text = withValuesOfLength(text, length, static_cast<int>(key - m_longestFirst.cbegin()));
        key = std::partition_point(key, m_longestFirst.cend(),
                                   [length](const QString &k) { return k.size() >= length; });
    }
    return text;
}

QString DocumentValues::withValuesOfLength(const QString &text, int keyLength, int firstRank) const
{
    QString result = text;
    if (keyLength == 0)
        return result.replace(QString(), valueOfRank(firstRank));
    return insertAtOnce(result, keyLength) ? result : insertOneByOne(text, keyLength, firstRank);
}

/// Replaces all keys of one length in one pass. That is only right if they don't overlap and if no
/// value completes another such key; otherwise the order of the keys matters, and the result is
/// false.
bool DocumentValues::insertAtOnce(QString &text, int keyLength) const
{
    QString result;
    int copied = 0;
    QVector<QPair<int, int>> inserted;  // from and to, in the result
    for (int place = 0; place + keyLength <= text.size(); ++place) {
        const int rank = rankAt(text, place, keyLength);
        if (rank < 0)
            continue;
        if (place < copied)
            return false;
        result.append(text.constData() + copied, place - copied);
        const QString value = valueOfRank(rank);
        inserted.append({result.size(), result.size() + value.size()});
        result += value;
        copied = place + keyLength;
    }
    result.append(text.constData() + copied, text.size() - copied);
    for (const auto &piece : qAsConst(inserted)) {
        if (holdsKey(result, piece.first - keyLength + 1, piece.second + keyLength - 1, keyLength))
            return false;
    }
    text = result;
    return true;
}

/// The same, one key after the other in the order of their ranks.
QString DocumentValues::insertOneByOne(QString text, int keyLength, int firstRank) const
{
    int rank = firstRank;
    while (true) {
        int lowest = -1;
        for (int place = 0; place + keyLength <= text.size(); ++place) {
            const int found = rankAt(text, place, keyLength);
            if (found >= rank && (lowest < 0 || found < lowest))
                lowest = found;
        }
        if (lowest < 0)
            return text;
        text.replace(m_longestFirst.at(lowest), valueOfRank(lowest));
        rank = lowest + 1;
    }
}

/// The rank of the key of this length that stands at the place; -1: none.
int DocumentValues::rankAt(const QString &text, int place, int keyLength) const
{
    if (!m_beginsKey.testBit(text.at(place).unicode()))
        return -1;
    return m_rankOf.value(QString::fromRawData(text.constData() + place, keyLength), -1);
}

bool DocumentValues::holdsKey(const QString &text, int begin, int end, int keyLength) const
{
    for (int place = qMax(begin, 0); place + keyLength <= qMin(end, text.size()); ++place) {
        if (rankAt(text, place, keyLength) >= 0)
            return true;
    }
    return false;
}

QString DocumentValues::valueOfRank(int rank) const
{
    return m_document.attributeValue(m_longestFirst.at(rank)).toString();
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
    m_beginsKey.resize(std::numeric_limits<ushort>::max() + 1);
    m_rankOf.reserve(m_longestFirst.size());
    for (int rank = 0; rank < m_longestFirst.size(); ++rank) {
        const QString &key = m_longestFirst.at(rank);
        m_rankOf.insert(key, rank);
        if (!key.isEmpty())
            m_beginsKey.setBit(key.at(0).unicode());
    }
}
