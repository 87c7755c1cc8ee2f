#pragma once

#include <QHash>
#include <QString>
#include <optional>

#include "tags.h"
#include "templatelint.h"
#include "values.h"

namespace templatelint {

/// What is wrong with an attribute tag.
struct TagVerdict
{
    enum Fault {
        None,
        UnknownAttribute,
        BadExpression,
        CutExpression,
        NotFinite,
        Misspelt,
        Misformatted,
        DateLetters,
        CommaInFormat,
        Guessed
    };
    Fault fault = None;
    int index = 0;  ///< of the mistake, counted from the "<"
    QString message;
    std::optional<Severity> lesser{};  ///< where it isn't that of its rule
    bool isFineInGroup = false;        ///< with this document the group goes, as its author wants
    QString messageInGroup{};          ///< of an attribute that may well be missing there
};

/// Tells what is wrong with attribute tags, of each tag once.
class TagJudge
{
public:
    /// @param values null without a document
    explicit TagJudge(Values *values) : m_values(values) {}
    TagVerdict verdictOf(const AttributeTag &tag);

private:
    TagVerdict judged(const AttributeTag &tag);
    TagVerdict judgedByFormat(const AttributeTag &tag, const QVariant &value);
    TagVerdict judgedByComma(const AttributeTag &tag) const;
    TagVerdict judgedByGuess(const AttributeTag &tag);
    TagVerdict judgedByName(const AttributeTag &tag);
    TagVerdict judgedByShape(const AttributeTag &tag) const;
    TagVerdict judgedByValues(const AttributeTag &tag);
    TagVerdict unknownWord(const QString &name, bool hasValue);
    TagVerdict badExpression(const QString &name) const;
    TagVerdict notFinite(const AttributeTag &tag, const QString &printed) const;
    QString hintFor(const QString &name);
    TagVerdict unknown(const QString &word, int index, const QString &hint, bool hasValue);
    QString slipHint(const QString &word);

    Values *const m_values;
    QHash<QString, TagVerdict> m_verdicts;
    int m_hints = 0;
};

/// A text for a message, cut if it is long.
QString clipped(const QString &text);

}  // namespace templatelint
