#pragma once

#include <QMap>
#include <QString>
#include <QVariant>
#include <optional>
#include <vector>

#include "printerdocs/document/linepadding_p.h"
#include "printerdocs/plan/templateplan_p.h"
#include "printerdocs/template/documentvalues_p.h"

namespace templates {

/// Fills lines of known shapes with the values of one document. What can't be foreseen of a line is
/// told before anything of it is written to the log.
class LineByPlan
{
public:
    using Attributes = NamedValues::Attributes;

    /// @param margin blanks in front of each line
    LineByPlan(const TemplatePlan &plan, const Attributes &attributes, int margin);
    ~LineByPlan();
    LineByPlan(const LineByPlan &) = delete;
    LineByPlan &operator=(const LineByPlan &) = delete;

    /// Fills a line. @return why it has to go the general way; None: it is filled
    Fallback fill(const TemplatePlan::Line &line);
    /// Takes an entry for the line, as text with a "=" between its edges.
    /// @param look how it is printed
    Fallback takeEntry(QStringView entry, LineLook &look);

    /// The line filled last, markup and all: true if nothing is left of it, so that it goes.
    bool isGone() const { return m_lineSize == 0; }
    /// Whether it has text; one of nothing but tags hasn't.
    bool hasText() const { return m_text.size() > m_margin; }
    /// Valid up to the next line.
    QStringView text() const { return writtenFrom(0); }
    /// The same as it is printed in this width. The text is that from now on.
    QString padded(ETextAlignment alignment, int width)
    {
        documents::padLine(m_text, m_tab, alignment, width);
        return QString(m_text.constData(), m_text.size());
    }
    /// Whether filling it in the general way writes to the log.
    bool isLogged() const { return !m_used.empty(); }
    /// Writes to the log what filling it in the general way writes.
    void log(DocumentValues &values);

private:
    struct Begin
    {
        int text;
        int line;
    };

    struct Used
    {
        int name;
        bool isExpression;
        double value;
    };

    void beginLine();
    void appendPiece(const Shape::Step &step);
    const Shape::Step *fillTag(const TemplatePlan::Line &line, const int *names,
                               const Shape::Step &step);
    Fallback appendExpression(const TemplatePlan::Line &line, const int *names,
                              const Shape::Tag &wanted);
    Fallback appendValue(const Shape::Tag &tag, const NamedValues::Value &value);
    Fallback appendVariant(const Shape::Tag &tag, const QVariant &value);
    Fallback appendTextOrNumber(const Shape::Tag &tag, const QString &text);
    Fallback appendText(QStringView text);
    const Shape::Step *dropGroup(const Shape &shape, int group);
    const Shape::Step *giveUp(Fallback reason);
    QStringView writtenFrom(int begin) const
    {
        return QStringView(m_text.constData() + begin, m_text.size() - begin);
    }

    const Attributes m_attributes;
    const TemplatePlan &m_plan;
    std::unique_ptr<PlanRoom> m_room;
    NamedValues &m_values;
    const int m_margin;
    valueformat::TextBuffer m_text;
    int m_lineSize = 0;  ///< of the filled line up to here
    int m_tab = -1;      ///< where the text has it; -1: it has none
    bool m_logIsOn = false;
    Fallback m_fallback = Fallback::None;
    std::optional<NamesInExpressions> m_namesInExpressions;
    std::vector<Begin> m_groups;
    std::vector<Used> m_used;  ///< names whose values were taken, in their order, for the log
    QString m_logged;          ///< keeps its memory from line to line
};

}  // namespace templates
