#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "printerdocs/etextalignment.h"
#include "printerdocs/plan/fallback_p.h"
#include "printerdocs/plan/planexpression_p.h"
#include "printerdocs/template/printedline_p.h"
#include "printerdocs/template/valueformat_p.h"

namespace templates {

/// A line of a template taken apart: what its shape is made of, and its own names. Meant to be used
/// again for line after line.
class LineParts
{
public:
    struct Tag
    {
        QStringView format;
        int firstName;     ///< of what stands in the tag; those of its expression follow
        int operands = 0;  ///< of the expression
        int expressionBegin = 0;
        int expressionSize = 0;  ///< 0: it is none
    };

    /// The line must stay as long as names and formats are used.
    void read(const QString &line);

    /// Why there is no shape of it, whatever other lines of its key have.
    Fallback fallback() const { return m_fallback; }
    /// With a mark in the place of each attribute tag.
    const QString &line() const { return m_line; }
    const std::vector<Tag> &tags() const { return m_tags; }
    const std::vector<QStringView> &names() const { return m_names; }
    QString expressionOf(const Tag &tag) const
    {
        return m_rest.mid(tag.expressionBegin, tag.expressionSize);
    }
    /// What all lines of one shape have alike.
    const QString &key();

private:
    void takeTag(QStringView inner);

    Fallback m_fallback = Fallback::None;
    QString m_line;
    QString m_rest;  ///< of the key: formats and expressions
    QString m_key;
    std::vector<Tag> m_tags;
    std::vector<QStringView> m_names;
};

/// How a line is printed, whatever its text is.
struct LineLook
{
    ETextAlignment alignment = AlignLeft;
    int spacing = 0;
    bool isOfOneFormat = true;  ///< all characters have the same format and font
    char format = 0;
    char font = 0;
    CarriedStyle carried;  ///< what goes on behind the line
};

/// What lines of a template have in common that differ only in the names of their attributes: their
/// formats, and their text as the line markup leaves it, with gaps for the values.
class Shape
{
public:
    enum class Mark : unsigned char { End, Value, GroupBegin, GroupEnd };

    struct Tag
    {
        explicit Tag(const QString &tagFormat) : format(tagFormat), pattern(tagFormat) {}

        QString format;
        valueformat::NumberPattern pattern;
        int group = -1;         ///< the innermost around the tag; -1: none
        int firstName = 0;      ///< among those of the line
        QByteArray expression;  ///< over the names behind the first one; empty: none
        bool hasWords = false;  ///< names of functions in the expression
        int operands = 0;
    };
    /// A piece of text, and what comes behind it.
    struct Step
    {
        const QChar *text = nullptr;  ///< so much is behind it that it can be copied as a whole
        int size = 0;                 ///< of the text
        int lineSize = 0;             ///< of the text before its markup was read
        int tab = -1;                 ///< where it has one; -1: it has none
        Mark mark = Mark::End;
        int group = 0;             ///< that begins or ends
        int firstName = 0;         ///< of the tag, among those of the line
        const Tag *tag = nullptr;  ///< whose value comes
    };
    struct Group
    {
        bool isWholeLine = false;
        bool mayVanish = false;  ///< whether the rest of the line is known then
        int endStep = 0;         ///< the step at the end of which the group ends
        int room = 0;            ///< characters of the line from there up to the next tag
    };

    /// @param parts of a line that can have a shape
    explicit Shape(const LineParts &parts);
    Shape(const Shape &) = delete;
    Shape &operator=(const Shape &) = delete;

    /// Why lines of this shape go the general way; None: they don't.
    Fallback fallback() const { return m_fallback; }
    const std::vector<Step> &steps() const { return m_steps; }
    const std::vector<Tag> &tags() const { return m_tags; }
    const std::vector<Group> &groups() const { return m_groups; }
    const LineLook &look() const { return m_look; }
    bool hasExpressions() const;
    /// What it takes up of the memory, together with its expressions once they are compiled.
    std::size_t memory() const;
    /// Whether formats or fonts begin or end within the line; then a value may not be empty.
    bool hasRanges() const { return m_hasRanges; }

private:
    void readKinds(const QString &line);
    QString markGroups(const LineParts &parts);
    void readMarkup(const QString &line);
    void takeTags(const LineParts &parts);
    void takeExpression(Tag &tag, const QString &expression);
    void takeLook(const QString &line, const PrintedLine &printed, const CarriedStyle &carried);
    void takeSteps(const QString &line, const QString &printed);
    void numberSteps();
    void measureRooms();

    Fallback m_fallback = Fallback::None;
    QString m_text;  ///< that of all steps
    std::vector<Step> m_steps;
    std::vector<Tag> m_tags;
    std::vector<Group> m_groups;
    LineLook m_look;
    std::size_t m_memoryOfExpressions = 0;
    bool m_hasRanges = false;
};

}  // namespace templates
