#pragma once

#include <QString>
#include <QStringList>
#include <atomic>
#include <memory>
#include <vector>

#include "printerdocs/plan/names_p.h"
#include "printerdocs/plan/shape_p.h"

namespace templates {

/// What one document's way through a plan writes to, and the next one's finds in place.
struct PlanRoom
{
    NamedValues values;
    ExpressionSet
        expressions;  ///< a row for each tag of each shape; empty until they are asked for
};

/// What can be known of a template without a document: the shapes of its lines, their names, and
/// where the copy mark, the entries and the special symbols stand. It doesn't change, and threads
/// may share it.
class TemplatePlan
{
public:
    enum class LineKind : unsigned char { Blank, General, Entries, EntriesAlone, OfShape };

    struct Line
    {
        LineKind kind = LineKind::General;
        Fallback fallback = Fallback::None;  ///< of a general line
        const Shape *shape = nullptr;        ///< of a line of one
        int firstName = 0;                   ///< of its tags
        int firstExpression = 0;             ///< of its shape's tags
    };

    explicit TemplatePlan(const QStringList &lines);
    ~TemplatePlan();
    TemplatePlan(const TemplatePlan &) = delete;
    TemplatePlan &operator=(const TemplatePlan &) = delete;

    /// The plan of such lines, which all templates of these lines share.
    static std::shared_ptr<const TemplatePlan> shared(const QStringList &lines);
    /// One that is there already; null: none.
    static std::shared_ptr<const TemplatePlan> found(const QStringList &lines);

    const QStringList &templateLines() const { return m_templateLines; }
    /// False for a template that removes what its lines hold: then lines aren't for themselves.
    bool isUsable() const { return m_isUsable; }
    /// For each line of the template without those of the special symbols.
    const std::vector<Line> &lines() const { return m_lines; }
    /// The line of the template that this one is.
    const QString &text(std::size_t line) const { return m_texts[static_cast<int>(line)]; }
    /// The numbers of the names of a line's tags.
    const int *namesOf(const Line &line) const { return m_lineNames.data() + line.firstName; }
    const TemplateNames &names() const { return m_names; }
    bool hasExpressions() const { return m_hasExpressions; }
    /// See NamesInExpressions; empty without expressions.
    const std::vector<int> &namesNotedInExpressions() const { return m_notedNames; }
    /// Lends what a document's way through the plan writes to. Whoever comes while it is lent gets
    /// a room of his own.
    std::unique_ptr<PlanRoom> takeRoom() const;
    void giveBack(std::unique_ptr<PlanRoom> room) const;

    /// How many lines stand in front of the mark of a copy; -1: there is none.
    int linesBeforeCopyMark() const { return m_linesBeforeCopyMark; }
    const QStringList &symbolsLines() const { return m_symbolsLines; }
    bool hasEntries() const { return m_hasEntries; }

private:
    class Builder;

    QStringList m_templateLines;
    QStringList m_texts;
    QStringList m_symbolsLines;
    std::vector<Line> m_lines;
    TemplateNames m_names;
    std::vector<int> m_lineNames;
    std::vector<int> m_notedNames;
    std::vector<std::unique_ptr<const Shape>> m_shapes;
    std::size_t m_tagCount = 0;  ///< of all shapes
    mutable std::atomic<PlanRoom *> m_room{nullptr};
    int m_linesBeforeCopyMark = -1;
    bool m_isUsable = true;
    bool m_hasEntries = false;
    bool m_hasExpressions = false;
};

}  // namespace templates
