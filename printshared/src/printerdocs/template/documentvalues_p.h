#pragma once

#include <QMap>
#include <QString>
#include <QStringView>
#include <QVariant>
#include <optional>

#include "printerdocs/printerdocument.h"
#include "printerdocs/template/valueinsertion_p.h"

namespace templates {

/// The values of one document as texts for its tags. What is needed of all attribute names together
/// is worked out once per document, at the first expression.
class DocumentValues
{
public:
    explicit DocumentValues(const PrinterDocument &document);

    /// The text of an attribute, or else of an expression over the attributes; empty for a name
    /// that is neither, and for an empty one. Valid up to the next call.
    QStringView text(QStringView name, QStringView format);

    /// Lets the log go without what is filled from now on, or writes it again.
    void setMute(bool isMute) { m_isMute = isMute; }

    /// Writes what text() writes of an expression of this value.
    void logExpression(const QString &expression, double value);

private:
    bool logs() const;
    QStringView textOfName(QStringView format);
    QStringView textOf(const QVariant &value, QStringView format);
    QStringView textOfNumber(double value, QStringView format);
    std::optional<double> evaluate(const QString &expression);
    void logKeys();
    static void logResult(double value, int error);

    const QMap<QString, QVariant> m_attributes;
    // Those of the tag at hand; they keep their memory from tag to tag.
    QString m_name;
    QString m_value;
    std::optional<ValueInsertion> m_insertion;
    bool m_isMute = false;
    // What the log says of the names at each expression.
    bool m_hasKeyLines = false;
    QString m_keyLine;
    QString m_rankedKeyLine;
};

}  // namespace templates
