#pragma once

#include <QBitArray>
#include <QHash>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QStringView>
#include <QVariant>
#include <optional>

#include "printerdocs/printerdocument.h"

/// The values of one document as texts for its tags. What is needed of all attribute names together
/// is worked out once per document, at the first expression. The document must outlive this object.
class DocumentValues
{
public:
    explicit DocumentValues(const PrinterDocument &document);

    /// The text of an attribute, or else of an expression over the attributes; null for an empty
    /// name, an empty text for a name that is neither.
    QString text(QStringView name, QStringView format);

private:
    QString textOfTag(QStringView format);
    std::optional<double> evaluate(const QString &expression);
    QString withValuesInserted(const QString &expression) const;
    QString withValuesOfLength(const QString &text, int keyLength, int firstRank) const;
    bool insertAtOnce(QString &text, int keyLength) const;
    QString insertOneByOne(QString text, int keyLength, int firstRank) const;
    int rankAt(const QString &text, int place, int keyLength) const;
    bool holdsKey(const QString &text, int begin, int end, int keyLength) const;
    QString valueOfRank(int rank) const;
    void collectKeys();

    const PrinterDocument &m_document;
    const QMap<QString, QVariant> m_attributes;
    QString m_name;  ///< of the tag at hand; keeps its memory from tag to tag
    bool m_keysCollected = false;
    QStringList m_keys;          ///< in the map's order
    QStringList m_longestFirst;  ///< a key's place here is its rank
    QHash<QString, int> m_rankOf;
    QBitArray m_beginsKey;  ///< for each character whether a key begins with it
};
