#pragma once

#include <QMap>
#include <QString>
#include <QVariant>
#include <vector>

#include "printerdocs/plan/templateplan_p.h"

namespace templates {

/// Fills lines of known shapes with the values of one document. What can't be foreseen of a line is
/// told before anything of it is written to the log.
class LineByPlan
{
public:
    using Attributes = NamedValues::Attributes;

    /// @param margin blanks in front of each line
    LineByPlan(const TemplateNames &names, const Attributes &attributes, int margin);

    /// Fills a line. @return why it has to go the general way; None: it is filled
    /// @param names those of the line's tags
    Fallback fill(const Shape &shape, const int *names);

    /// The line filled last, markup and all: true if nothing is left of it, so that it goes.
    bool isGone() const { return m_lineSize == 0; }
    /// Whether it has text; one of nothing but tags hasn't.
    bool hasText() const { return m_text.size() > m_margin; }
    const QString &text() const { return m_text; }
    /// Writes to the log what filling it in the general way writes.
    void log() const;

private:
    struct Begin
    {
        int text;
        int line;
    };

    Fallback fillTag(const Shape &shape, int tag, int name, int &step);
    Fallback appendValue(const Shape::Tag &tag, const QVariant &value);
    Fallback appendText(QStringView text);
    Fallback dropGroup(const Shape &shape, int group, int tagBegin, int &step);

    const Attributes m_attributes;
    const TemplateNames &m_names;
    const NamedValues m_values;
    const int m_margin;
    QString m_text;
    int m_lineSize = 0;  ///< of the filled line up to here
    std::vector<Begin> m_groups;
    std::vector<int> m_used;  ///< names whose values were taken, in their order
};

}  // namespace templates
