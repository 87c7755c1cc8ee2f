#pragma once

#include <QMap>
#include <QString>
#include <QStringView>
#include <QVariant>
#include <optional>

#include "printerdocs/keytable_p.h"
#include "printerdocs/printerdocument.h"

/// The values of one document as texts for its tags. What is needed of all attribute names together
/// is worked out once per document, at the first expression.
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
    QString withValuesOfLength(const QString &text, const KeyTable::Length &length) const;
    bool insertAtOnce(QString &text, int keyLength) const;
    QString insertOneByOne(QString text, const KeyTable::Length &length) const;
    bool holdsKey(const QString &text, int begin, int end, int keyLength) const;
    QString valueOfRank(int rank) const;
    void logKeys();

    const QMap<QString, QVariant> m_attributes;
    QString m_name;  ///< of the tag at hand; keeps its memory from tag to tag
    std::optional<KeyTable> m_keys;
    // What the log says of the names at each expression.
    bool m_hasKeyLines = false;
    QString m_keyLine;
    QString m_rankedKeyLine;
};
