#include "printerdocs/documentvalues_p.h"

#include <QDebug>
#include <QLoggingCategory>
#include <QPair>
#include <QStringList>
#include <QVarLengthArray>

#include "log/loghelper.h"
#include "printerdocs/expressionevaluator.h"
#include "printerdocs/numbertext_p.h"
#include "printerdocs/valueformat_p.h"

namespace {

constexpr char warningsCategory[] = "default";

/// The lines below are written for every tag of every receipt: a client that switches the
/// category's warnings off must not pay for making them.
bool warningsAreOn()
{
    const QLoggingCategory *const category = QLoggingCategory::defaultCategory();
    return category && category->isWarningEnabled();
}

/// What qWarning() would write of the text, without the cost of a stream for each of the lines.
void logLine(const QString &text)
{
    qt_message_output(QtWarningMsg,
                      QMessageLogContext(QT_MESSAGELOG_FILE, QT_MESSAGELOG_LINE, QT_MESSAGELOG_FUNC,
                                         warningsCategory),
                      text);
}

/// A list as the log shows it.
QString lineOf(const QStringList &items)
{
    QString line;
    QDebug(&line).noquote().nospace() << loglist(items);
    return line;
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
    : m_attributes(document.attributes())
{
    constexpr int usualName = 64;
    m_name.reserve(usualName);
}

QString DocumentValues::text(QStringView name, QStringView format)
{
    m_name.resize(0);
    m_name.append(name.data(), static_cast<int>(name.size()));
    if (warningsAreOn())
        logLine(m_name);
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
    if (!m_keys)
        m_keys.emplace(m_attributes);
    const bool logs = warningsAreOn();
    if (logs)
        logKeys();
    int error = 0;
    const double value = te_interp(withValuesInserted(expression).toUtf8().constData(), &error);
    if (logs) {
        qWarning().noquote() << value;
        qWarning().noquote() << error;
    }
    return error == 0 ? std::optional<double>(value) : std::nullopt;
}

void DocumentValues::logKeys()
{
    if (!m_hasKeyLines) {
        QStringList ranked;
        ranked.reserve(m_keys->size());
        for (int rank = 0; rank < m_keys->size(); ++rank)
            ranked.append(m_keys->keyOfRank(rank));
        m_keyLine = lineOf(m_attributes.keys());
        m_rankedKeyLine = lineOf(ranked);
        m_hasKeyLines = true;
    }
    logLine(m_keyLine);
    logLine(m_rankedKeyLine);
}

/// Each key, the longest first, is replaced by its value wherever it stands, also inside values put
/// in before.
QString DocumentValues::withValuesInserted(const QString &expression) const
{
    QString text = expression;
    quint64 lengths = m_keys->lengthsIn(text);
    for (const KeyTable::Length &length : m_keys->lengths()) {
        if (!KeyTable::mayHold(lengths, length.characters))
            continue;
        const QString filled = withValuesOfLength(text, length);
        if (filled.constData() == text.constData())
            continue;
        text = filled;
        lengths = m_keys->lengthsIn(text);
    }
    return text;
}

/// The text itself if there is no such key.
QString DocumentValues::withValuesOfLength(const QString &text,
                                           const KeyTable::Length &length) const
{
    QString result = text;
    if (length.characters == 0)
        return result.replace(QString(), valueOfRank(length.firstRank));
    return insertAtOnce(result, length.characters) ? result : insertOneByOne(text, length);
}

/// Replaces all keys of one length in one pass. That is only right if they don't overlap and if no
/// value completes another such key; otherwise the order of the keys matters, and the result is
/// false.
bool DocumentValues::insertAtOnce(QString &text, int keyLength) const
{
    QString result;
    int copied = 0;
    QVarLengthArray<QPair<int, int>, 8> inserted;  // from and to, in the result
    for (int place = 0; place + keyLength <= text.size(); ++place) {
        const int rank = m_keys->rankAt(text, place, keyLength);
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
    if (inserted.isEmpty())
        return true;
    result.append(text.constData() + copied, text.size() - copied);
    for (const auto &piece : inserted) {
        if (holdsKey(result, piece.first - keyLength + 1, piece.second + keyLength - 1, keyLength))
            return false;
    }
    text = result;
    return true;
}

/// The same, one key after the other in the order of their ranks.
QString DocumentValues::insertOneByOne(QString text, const KeyTable::Length &length) const
{
    int rank = length.firstRank;
    while (true) {
        int lowest = -1;
        for (int place = 0; place + length.characters <= text.size(); ++place) {
            const int found = m_keys->rankAt(text, place, length.characters);
            if (found >= rank && (lowest < 0 || found < lowest))
                lowest = found;
        }
        if (lowest < 0)
            return text;
        text.replace(m_keys->keyOfRank(lowest), valueOfRank(lowest));
        rank = lowest + 1;
    }
}

bool DocumentValues::holdsKey(const QString &text, int begin, int end, int keyLength) const
{
    for (int place = qMax(begin, 0); place + keyLength <= qMin(end, text.size()); ++place) {
        if (m_keys->rankAt(text, place, keyLength) >= 0)
            return true;
    }
    return false;
}

QString DocumentValues::valueOfRank(int rank) const
{
    const QVariant &value = m_keys->valueOfRank(rank);
    return value.type() == QVariant::String ? numberOrText(value).toString() : value.toString();
}
