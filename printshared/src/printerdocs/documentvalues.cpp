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
// Characters that values may add to one expression. Those of a receipt have some dozens; it keeps
// values that name others, each many times, from taking the machine's memory.
constexpr int mostGrowthOfExpression = 1 << 20;

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

/// @return false, and the text as it is, if it would become longer than that
bool replaceAll(QString &text, const QString &key, const QString &value, qint64 longest)
{
    if (text.size() + qint64(text.count(key)) * (value.size() - key.size()) > longest)
        return false;
    text.replace(key, value);
    return true;
}

}  // namespace

DocumentValues::DocumentValues(const PrinterDocument &document)
    : m_attributes(document.attributes())
{
    constexpr int usualLength = 64;
    m_name.reserve(usualLength);
    m_value.reserve(usualLength);
    m_foundBefore.fill(m_attributes.cend());
}

QStringView DocumentValues::text(QStringView name, QStringView format)
{
    m_name.resize(0);
    m_name.append(name.data(), static_cast<int>(name.size()));
    if (warningsAreOn())
        logLine(m_name);
    return m_name.isEmpty() ? QStringView() : textOfName(format);
}

QStringView DocumentValues::textOfName(QStringView format)
{
    const auto attribute = findAttribute();
    if (attribute == m_attributes.cend()) {
        const std::optional<double> value = evaluate(m_name);
        return value ? textOfNumber(*value, format) : QStringView();
    }
    if (attribute->type() != QVariant::String)
        return textOf(*attribute, format);
    const QString &text = *static_cast<const QString *>(attribute->constData());
    return beginsLikeAWord(text) ? QStringView(text) : textOf(numberOrText(*attribute), format);
}

/// The lines of a receipt count their names up ("PRICE17", "PRICE18"), so the name of a tag often
/// stands right behind that of the tag at the same place of the line before. To look there first
/// saves most of the search through thousands of names.
DocumentValues::Attributes::const_iterator DocumentValues::findAttribute()
{
    constexpr int nearby = 3;
    auto &found = m_foundBefore[m_tagOfLine++ % m_foundBefore.size()];
    auto next = found;
    for (int i = 0; i < nearby && next != m_attributes.cend(); ++i, ++next) {
        if (next.key() == m_name) {
            found = next;
            return found;
        }
    }
    const auto attribute = m_attributes.constFind(m_name);
    if (attribute != m_attributes.cend())
        found = attribute;
    return attribute;
}

QStringView DocumentValues::textOf(const QVariant &value, QStringView format)
{
    m_value.resize(0);
    switch (static_cast<int>(value.type())) {
        case QVariant::Int:
        case QVariant::UInt:
        case QVariant::LongLong:
        case QVariant::ULongLong:
            valueformat::appendInteger(m_value, format, value.toLongLong());
            break;
        case QVariant::Double:
            valueformat::appendReal(m_value, format, value.toDouble());
            break;
        case QVariant::Date:
            m_value += valueformat::ofDate(format, value.toDate());
            break;
        case QVariant::Time:
            m_value += valueformat::ofTime(format, value.toTime());
            break;
        case QVariant::DateTime:
            m_value += valueformat::ofDateTime(format, value.toDateTime());
            break;
        default:
            m_value += value.toString();
            break;
    }
    return m_value;
}

QStringView DocumentValues::textOfNumber(double value, QStringView format)
{
    m_value.resize(0);
    valueformat::appendReal(m_value, format, value);
    return m_value;
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
/// @return null if the values add more than 1 Mi characters
QString DocumentValues::withValuesInserted(const QString &expression) const
{
    const qint64 longest = qint64(expression.size()) + mostGrowthOfExpression;
    QString text = expression;
    quint64 lengths = m_keys->lengthsIn(text, 0, text.size());
    for (const KeyTable::Length &length : m_keys->lengths()) {
        if (!KeyTable::mayHold(lengths, length.characters))
            continue;
        const Insertion insertion = insertAtOnce(text, length.characters, longest, lengths);
        if (insertion == Insertion::Done)
            continue;
        if (insertion == Insertion::TooLong || !insertOneByOne(text, length, longest))
            return QString();
        lengths = m_keys->lengthsIn(text, 0, text.size());
    }
    return text;
}

/// Replaces all keys of one length in one pass. That is only right if they don't overlap and if no
/// value completes another such key; otherwise the order of the keys matters, the text stays as it
/// is, and the result is OrderMatters.
/// @param lengths takes up the lengths of the keys that can begin in the values
DocumentValues::Insertion DocumentValues::insertAtOnce(QString &text, int keyLength, qint64 longest,
                                                       quint64 &lengths) const
{
    if (keyLength == 0)
        return Insertion::OrderMatters;
    QString result;
    int copied = 0;
    QVarLengthArray<QPair<int, int>, 8> inserted;  // from and to, in the result
    for (int place = 0; place + keyLength <= text.size(); ++place) {
        const int rank = m_keys->rankAt(text, place, keyLength);
        if (rank < 0)
            continue;
        if (place < copied)
            return Insertion::OrderMatters;
        if (inserted.isEmpty())
            result.reserve(2 * text.size());
        result.append(text.constData() + copied, place - copied);
        const int begin = result.size();
        appendValueOfRank(result, rank);
        if (result.size() > longest)
            return Insertion::TooLong;
        inserted.append({begin, result.size()});
        copied = place + keyLength;
    }
    if (inserted.isEmpty())
        return Insertion::Done;
    result.append(text.constData() + copied, text.size() - copied);
    for (const auto &[begin, end] : inserted) {
        if (holdsKey(result, begin - keyLength + 1, end + keyLength - 1, keyLength))
            return Insertion::OrderMatters;
        lengths |= m_keys->lengthsIn(result, begin, end);
    }
    text.swap(result);
    return text.size() > longest ? Insertion::TooLong : Insertion::Done;
}

/// The same, one key after the other in the order of their ranks. The empty key stands everywhere.
/// @return false if the text became too long
bool DocumentValues::insertOneByOne(QString &text, const KeyTable::Length &length,
                                    qint64 longest) const
{
    if (length.characters == 0)
        return replaceAll(text, QString(), valueOfRank(length.firstRank), longest);
    int rank = length.firstRank;
    while (true) {
        int lowest = -1;
        for (int place = 0; place + length.characters <= text.size(); ++place) {
            const int found = m_keys->rankAt(text, place, length.characters);
            if (found >= rank && (lowest < 0 || found < lowest))
                lowest = found;
        }
        if (lowest < 0)
            return true;
        if (!replaceAll(text, m_keys->keyOfRank(lowest), valueOfRank(lowest), longest))
            return false;
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

void DocumentValues::appendValueOfRank(QString &text, int rank) const
{
    const QVariant &value = m_keys->valueOfRank(rank);
    if (value.type() == QVariant::Double)
        valueformat::appendShortest(text, value.toDouble());
    else
        text +=
            value.type() == QVariant::String ? numberOrText(value).toString() : value.toString();
}

QString DocumentValues::valueOfRank(int rank) const
{
    QString text;
    appendValueOfRank(text, rank);
    return text;
}
