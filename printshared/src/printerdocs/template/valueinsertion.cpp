#include "printerdocs/template/valueinsertion_p.h"

#include <QPair>
#include <QStringMatcher>
#include <QVarLengthArray>
#include <limits>

#include "printerdocs/template/numbertext_p.h"
#include "printerdocs/template/valueformat_p.h"

namespace templates {

namespace {

// Characters that values may add to one expression. Those of a receipt have some dozens; it keeps
// values that name others, each many times, from taking the machine's memory.
constexpr int mostGrowthOfExpression = 1 << 20;

// Characters that looking up may look at in one expression, and for each name of the document. To
// search for a name takes longer than to look at so many characters, even if the text is short.
constexpr int looksForExpression = 1024;
constexpr int looksForName = 16;

}  // namespace

ValueInsertion::ValueInsertion(const KeyTable::Attributes &attributes) : m_keys(attributes) {}

QString ValueInsertion::inserted(const QString &expression)
{
    m_longest = qint64(expression.size()) + mostGrowthOfExpression;
    const qint64 allowance = looksForExpression + qint64(looksForName) * m_keys.size();
    m_mostLooks = m_looks + allowance;
    QString text = expression;
    int rank = 0;
    Outcome outcome = Outcome::TooCostly;
    if (!m_keys.isCrowded() && text.size() <= allowance)
        outcome = insertByLookUp(text, rank);
    if (outcome == Outcome::TooCostly)
        outcome = insertInTurn(text, rank);
    return outcome == Outcome::Done ? text : QString();
}

/// @param rank if it becomes too costly: the first of the names that haven't been put in
ValueInsertion::Outcome ValueInsertion::insertByLookUp(QString &text, int &rank)
{
    quint64 lengths = lengthsIn(text, 0, text.size());
    for (const KeyTable::Length &length : m_keys.lengths()) {
        if (!KeyTable::mayHold(lengths, length.characters))
            continue;
        rank = length.firstRank;
        Outcome outcome = insertAtOnce(text, length.characters, lengths);
        if (outcome == Outcome::OrderMatters) {
            outcome = insertOneByOne(text, length.characters, rank);
            lengths = lengthsIn(text, 0, text.size());
        }
        if (outcome != Outcome::Done)
            return outcome;
    }
    return Outcome::Done;
}

/// Replaces all keys of one length in one pass. That is only right if they don't overlap and if no
/// value completes another such key; otherwise the order of the keys matters, the text stays as it
/// is, and the result is OrderMatters.
/// @param lengths takes up the lengths of the keys that can begin in the values
ValueInsertion::Outcome ValueInsertion::insertAtOnce(QString &text, int keyLength, quint64 &lengths)
{
    if (keyLength == 0)
        return Outcome::OrderMatters;
    QString result;
    int copied = 0;
    QVarLengthArray<QPair<int, int>, 8> inserted;  // from and to, in the result
    m_looks += text.size();
    for (int place = 0; place + keyLength <= text.size() && !isTooCostly(); ++place) {
        const int rank = m_keys.rankAt(text, place, keyLength, m_looks);
        if (rank < 0)
            continue;
        if (place < copied)
            return Outcome::OrderMatters;
        if (inserted.isEmpty())
            result.reserve(2 * text.size());
        result.append(text.constData() + copied, place - copied);
        const int begin = result.size();
        appendValueOfRank(result, rank);
        if (result.size() > m_longest)
            return Outcome::TooLong;
        inserted.append({begin, result.size()});
        copied = place + keyLength;
    }
    if (isTooCostly())
        return Outcome::TooCostly;
    if (inserted.isEmpty())
        return Outcome::Done;
    result.append(text.constData() + copied, text.size() - copied);
    for (const auto &[begin, end] : inserted) {
        const bool isCompleted =
            holdsKey(result, begin - keyLength + 1, end + keyLength - 1, keyLength);
        if (isTooCostly())
            return Outcome::TooCostly;
        if (isCompleted)
            return Outcome::OrderMatters;
        lengths |= lengthsIn(result, begin, end);
    }
    text.swap(result);
    return text.size() > m_longest ? Outcome::TooLong : Outcome::Done;
}

/// The same, one key after the other in the order of their ranks. The empty key stands everywhere.
/// @param rank the first of these keys; if it becomes too costly, the first that hasn't been put in
ValueInsertion::Outcome ValueInsertion::insertOneByOne(QString &text, int keyLength, int &rank)
{
    if (keyLength == 0)
        return replaceAll(text, rank) ? Outcome::Done : Outcome::TooLong;
    while (true) {
        int lowest = -1;
        m_looks += text.size();
        for (int place = 0; place + keyLength <= text.size() && !isTooCostly(); ++place) {
            const int found = m_keys.rankAt(text, place, keyLength, m_looks);
            if (found >= rank && (lowest < 0 || found < lowest))
                lowest = found;
        }
        if (isTooCostly())
            return Outcome::TooCostly;
        if (lowest < 0)
            return Outcome::Done;
        if (!replaceAll(text, lowest))
            return Outcome::TooLong;
        rank = lowest + 1;
    }
}

/// The rule itself, for the names from one rank on.
ValueInsertion::Outcome ValueInsertion::insertInTurn(QString &text, int rank)
{
    m_present.assign(std::numeric_limits<ushort>::max() + 1, false);
    notePresent(text);
    for (; rank < m_keys.size(); ++rank) {
        if (mayStand(m_keys.keyOfRank(rank)) && !replaceAll(text, rank))
            return Outcome::TooLong;
    }
    return Outcome::Done;
}

/// @return false, and the text as it is, if it would become too long
bool ValueInsertion::replaceAll(QString &text, int rank)
{
    const QString &key = m_keys.keyOfRank(rank);
    findAll(text, key);
    if (m_found.isEmpty())
        return true;
    QString value;
    appendValueOfRank(value, rank);
    if (text.size() + qint64(m_found.size()) * (value.size() - key.size()) > m_longest)
        return false;
    if (!m_present.empty())
        notePresent(value);
    replaceFound(text, key.size(), value);
    return true;
}

/// Notes where a key stands in a text, without overlapping itself. The empty one stands in front of
/// each character and at the end.
void ValueInsertion::findAll(const QString &text, const QString &key)
{
    m_looks += text.size();
    m_found.resize(0);
    const QStringMatcher matcher(key);
    const int step = qMax(1, key.size());
    for (int place = matcher.indexIn(text); place >= 0; place = matcher.indexIn(text, place + step))
        m_found.append(place);
}

/// Puts the value in the places of the key that were noted.
void ValueInsertion::replaceFound(QString &text, int keyLength, const QString &value)
{
    if (m_found.size() == 1) {
        text.replace(m_found.first(), keyLength, value);
        return;
    }
    m_replaced.resize(0);
    m_replaced.reserve(text.size() + m_found.size() * (value.size() - keyLength));
    int copied = 0;
    for (const int place : qAsConst(m_found)) {
        m_replaced.append(text.constData() + copied, place - copied).append(value);
        copied = place + keyLength;
    }
    m_replaced.append(text.constData() + copied, text.size() - copied);
    text.swap(m_replaced);
}

/// False also if it becomes too costly to tell.
bool ValueInsertion::holdsKey(const QString &text, int begin, int end, int keyLength)
{
    const int last = qMin(end, text.size()) - keyLength;
    m_looks += end - begin;
    for (int place = qMax(begin, 0); place <= last && !isTooCostly(); ++place) {
        if (m_keys.rankAt(text, place, keyLength, m_looks) >= 0)
            return true;
    }
    return false;
}

quint64 ValueInsertion::lengthsIn(const QString &text, int begin, int end)
{
    m_looks += end - begin;
    return m_keys.lengthsIn(text, begin, end);
}

void ValueInsertion::notePresent(const QString &text)
{
    m_looks += text.size();
    for (const QChar c : text)
        m_present[c.unicode()] = true;
}

/// Whether the characters at both ends of a key are in the text at all, as far as that is known.
bool ValueInsertion::mayStand(const QString &key) const
{
    return key.isEmpty() || (m_present[key.front().unicode()] && m_present[key.back().unicode()]);
}

void ValueInsertion::appendValueOfRank(QString &text, int rank) const
{
    const QVariant &value = m_keys.valueOfRank(rank);
    if (value.type() == QVariant::Double)
        valueformat::appendShortest(text, value.toDouble());
    else
        text +=
            value.type() == QVariant::String ? numberOrText(value).toString() : value.toString();
}

}  // namespace templates
