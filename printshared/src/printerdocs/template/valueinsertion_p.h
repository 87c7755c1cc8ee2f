#pragma once

#include <QString>
#include <QVector>
#include <vector>

#include "printerdocs/template/keytable_p.h"

namespace templates {

/// Puts the values of a document's attributes into expressions, in the places of their names: each
/// name in its turn, the longest first, is replaced by its value wherever it stands, also inside
/// values put in before.
///
/// A receipt has thousands of names and an expression holds two or three, so the names are looked
/// up at the places of the text. Texts and names are thinkable for which that costs far more than
/// to search for one name after the other, so it may look at a few characters for each name only;
/// the names that are left then have their turns as the rule says it. So no input costs much more
/// than the rule itself.
///
/// Refers to the map, which must neither change nor go as long as this is used.
class ValueInsertion
{
public:
    explicit ValueInsertion(const KeyTable::Attributes &attributes);

    const KeyTable &keys() const { return m_keys; }

    /// The expression with the values in it; null if they add more than 1 Mi characters.
    QString inserted(const QString &expression);

    /// How many characters of texts and names all calls together have looked at, each as often as
    /// they have. For the bound of what a call costs, and its test.
    qint64 looks() const { return m_looks; }

private:
    enum class Outcome { Done, OrderMatters, TooLong, TooCostly };

    Outcome insertByLookUp(QString &text, int &rank);
    Outcome insertAtOnce(QString &text, int keyLength, quint64 &lengths);
    Outcome insertOneByOne(QString &text, int keyLength, int &rank);
    Outcome insertInTurn(QString &text, int rank);
    bool isTooCostly() const { return m_looks > m_mostLooks; }
    bool replaceAll(QString &text, int rank);
    void findAll(const QString &text, const QString &key);
    void replaceFound(QString &text, int keyLength, const QString &value);
    bool holdsKey(const QString &text, int begin, int end, int keyLength);
    quint64 lengthsIn(const QString &text, int begin, int end);
    void notePresent(const QString &text);
    bool mayStand(const QString &key) const;
    void appendValueOfRank(QString &text, int rank) const;

    const KeyTable m_keys;
    qint64 m_longest = 0;         ///< characters that the text may have
    qint64 m_looks = 0;           ///< see looks()
    qint64 m_mostLooks = 0;       ///< what looks() may come to until names have their turns
    std::vector<bool> m_present;  ///< by code: may the text have it? None until names have turns
    // They keep their memory from name to name.
    QVector<int> m_found;
    QString m_replaced;
};

}  // namespace templates
