#include "printerdocs/plan/linebyplan_p.h"

#include <QDateTime>
#include <algorithm>
#include <cmath>

#include "printerdocs/document/linepadding_p.h"
#include "printerdocs/template/charsearch_p.h"
#include "printerdocs/template/fillinglog_p.h"
#include "printerdocs/template/numbertext_p.h"
#include "printerdocs/template/substitutiontext_p.h"

namespace templates {

namespace {

/// Whether a value is more than text: a part of a tag or of a group, or of the layout.
bool isMarkupCharacter(QChar c)
{
    switch (c.unicode()) {
        case '<':
        case '>':
        case '[':
        case ']':
        case '\n':
        case '\t':
            return true;
        default:
            return false;
    }
}

}  // namespace

LineByPlan::LineByPlan(const TemplatePlan &plan, const Attributes &attributes, int margin)
    : m_attributes(attributes),
      m_plan(plan),
      m_values(plan.names(), m_attributes),
      m_margin(std::clamp(margin, 0, documents::longestPaddedLine)),
      m_text(m_margin)
{
    std::fill(m_text.begin(), m_text.end(), documents::blank);
}

LineByPlan::~LineByPlan()
{
    if (!m_expressions.empty())
        m_plan.giveBack(std::move(m_expressions));
}

Fallback LineByPlan::fill(const TemplatePlan::Line &line)
{
    const Shape &shape = *line.shape;
    m_text.resize(m_margin);
    m_lineSize = 0;
    m_used.clear();
    m_groups.resize(shape.groups().size());
    const int count = static_cast<int>(shape.steps().size());
    for (int at = 0; at < count; ++at) {
        const Shape::Step &step = shape.steps()[static_cast<std::size_t>(at)];
        m_text.append(shape.text().constData() + step.begin, step.size);
        m_lineSize += step.lineSize;
        if (step.mark == Shape::Mark::GroupBegin)
            m_groups[static_cast<std::size_t>(step.index)] = {m_text.size(), m_lineSize};
        if (step.mark != Shape::Mark::Value)
            continue;
        const Fallback fallback = fillTag(line, step.index, at);
        if (fallback != Fallback::None)
            return fallback;
    }
    return Fallback::None;
}

Fallback LineByPlan::takeEntry(QStringView entry, LineLook &look)
{
    m_text.resize(m_margin);
    m_lineSize = static_cast<int>(entry.size());
    m_used.clear();
    const int begin = m_text.size();
    const Fallback fallback = appendText(entry);
    if (fallback != Fallback::None)
        return fallback;
    const int edge = placeOf(QLatin1Char('='), text(), begin);
    look.alignment = edge < 0 ? AlignLeft : AlignJustify;
    look.carried.alignment = look.alignment;
    if (edge < 0)
        return Fallback::None;
    m_text[edge] = documents::tab;
    return placeOf(QLatin1Char('='), text(), edge) < 0 ? Fallback::None : Fallback::EntryOfMarkup;
}

/// @param step moves to the end of the tag's group if that vanishes
Fallback LineByPlan::fillTag(const TemplatePlan::Line &line, int tag, int &step)
{
    const Shape &shape = *line.shape;
    const Shape::Tag &wanted = shape.tags()[static_cast<std::size_t>(tag)];
    const int name = m_plan.namesOf(line)[wanted.firstName];
    const NamedValues::Value &value = m_values.of(name);
    const int begin = m_text.size();
    Fallback fallback = Fallback::MissingName;
    if (value.isReal) {
        m_used.push_back({name, false, 0});
        wanted.pattern.appendReal(m_text, value.real);
        fallback = Fallback::None;
    } else if (value.variant != nullptr) {
        m_used.push_back({name, false, 0});
        fallback = appendValue(wanted, *value.variant);
    } else if (!wanted.expression.isEmpty()) {
        fallback = appendExpression(line, tag);
    }
    if (fallback != Fallback::None)
        return fallback;
    const QStringView text = this->text().mid(begin);
    if (wanted.group >= 0 && vanishesWithItsGroup(text))
        return dropGroup(shape, wanted.group, m_lineSize, step);
    m_lineSize += static_cast<int>(text.size());
    return text.isEmpty() && shape.hasRanges() ? Fallback::EmptyAmongRanges : Fallback::None;
}

Fallback LineByPlan::appendExpression(const TemplatePlan::Line &line, int tag)
{
    const Shape::Tag &wanted = line.shape->tags()[static_cast<std::size_t>(tag)];
    const int *const names = m_plan.namesOf(line) + wanted.firstName;
    if (!m_namesInExpressions) {
        m_namesInExpressions.emplace(m_attributes);
        m_expressions = m_plan.takeExpressions();
    }
    if (!m_namesInExpressions->leave(m_plan.names().at(*names), wanted.hasWords))
        return Fallback::NamesElsewhere;
    auto &expression = m_expressions[static_cast<std::size_t>(line.firstExpression) +
                                     static_cast<std::size_t>(tag)];
    if (!expression)
        expression = std::make_unique<CompiledExpression>(wanted.expression, wanted.operands);
    for (int operand = 0; operand < wanted.operands; ++operand) {
        const NamedValues::Value &value = m_values.of(names[operand + 1]);
        double number = value.real;
        if (value.variant == nullptr)
            return Fallback::MissingName;
        if (value.isReal ? !std::isfinite(number) : !operandOf(*value.variant, number))
            return Fallback::TextInExpression;
        if (!m_namesInExpressions->leave(number))
            return Fallback::NamesElsewhere;
        expression->setOperand(operand, number);
    }
    const double value = expression->value();
    m_used.push_back({*names, true, value});
    wanted.pattern.appendReal(m_text, value);
    return Fallback::None;
}

/// The scan goes on as far to the right as the tag stood in its group, which must not be beyond the
/// next tag.
Fallback LineByPlan::dropGroup(const Shape &shape, int group, int tagBegin, int &step)
{
    const Shape::Group &dropped = shape.groups()[static_cast<std::size_t>(group)];
    if (dropped.isWholeLine) {
        m_text.resize(m_margin);
        m_lineSize = 0;
        step = static_cast<int>(shape.steps().size()) - 1;
        return Fallback::None;
    }
    if (!dropped.mayVanish)
        return Fallback::GroupOfMarkup;
    const Begin &begin = m_groups[static_cast<std::size_t>(group)];
    if (tagBegin - begin.line > dropped.room)
        return Fallback::GroupNearTag;
    m_text.resize(begin.text);
    m_lineSize = begin.line;
    step = dropped.endStep;
    return Fallback::None;
}

Fallback LineByPlan::appendValue(const Shape::Tag &tag, const QVariant &value)
{
    switch (static_cast<int>(value.type())) {
        case QVariant::Int:
        case QVariant::UInt:
        case QVariant::LongLong:
        case QVariant::ULongLong:
            tag.pattern.appendInteger(m_text, value.toLongLong());
            return Fallback::None;
        case QVariant::Double:
            tag.pattern.appendReal(m_text, *static_cast<const double *>(value.constData()));
            return Fallback::None;
        case QVariant::String: {
            const QString &text = *static_cast<const QString *>(value.constData());
            if (beginsLikeAWord(text))
                return appendText(text);
            const QVariant number = numberOrText(value);
            return number.type() == QVariant::String ? appendText(text) : appendValue(tag, number);
        }
        case QVariant::Bool:
            return appendText(value.toString());
        case QVariant::Date:
            return appendText(valueformat::ofDate(tag.format, value.toDate()));
        case QVariant::Time:
            return appendText(valueformat::ofTime(tag.format, value.toTime()));
        case QVariant::DateTime:
            return appendText(valueformat::ofDateTime(tag.format, value.toDateTime()));
        default:
            return Fallback::ForeignValue;
    }
}

Fallback LineByPlan::appendText(QStringView text)
{
    if (std::any_of(text.begin(), text.end(), isMarkupCharacter))
        return Fallback::MarkupInValue;
    if (!text.isEmpty())
        m_text.append(text.data(), static_cast<int>(text.size()));
    return Fallback::None;
}

void LineByPlan::log(DocumentValues &values)
{
    for (const Used &used : m_used) {
        const QStringView name = m_plan.names().at(used.name);
        m_logged.resize(0);
        m_logged.append(name.data(), static_cast<int>(name.size()));
        if (used.isExpression)
            values.logExpression(m_logged, used.value);
        else if (fillinglog::isOn())
            fillinglog::write(m_logged);
    }
}

}  // namespace templates
