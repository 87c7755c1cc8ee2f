#include "printerdocs/plan/linebyplan_p.h"

#include <QDateTime>
#include <algorithm>
#include <array>
#include <cmath>

#include "printerdocs/document/linepadding_p.h"
#include "printerdocs/template/charsearch_p.h"
#include "printerdocs/template/fillinglog_p.h"
#include "printerdocs/template/numbertext_p.h"
#include "printerdocs/template/substitutiontext_p.h"

namespace templates {

namespace {

/// Characters by which a value is more than text, a part of a tag or of a group or of the layout,
/// by their codes. The last code stands for all beyond.
constexpr std::array<unsigned char, 128> makeMarkupCharacters()
{
    std::array<unsigned char, 128> all{};
    for (const unsigned char c : {'<', '>', '[', ']', '\n', '\t'})
        all[c] = 1;
    return all;
}
constexpr std::array<unsigned char, 128> markupCharacters = makeMarkupCharacters();

}  // namespace

LineByPlan::LineByPlan(const TemplatePlan &plan, const Attributes &attributes, int margin)
    : m_attributes(attributes),
      m_plan(plan),
      m_room(plan.takeRoom()),
      m_values(m_room->values),
      m_margin(std::clamp(margin, 0, documents::longestPaddedLine))
{
    using Others = NamedValues::Others;
    m_values.read(plan.names(), m_attributes,
                  plan.hasExpressions() ? Others::Gathered : Others::Ignored);
    m_text.append(documents::blank, m_margin);
}

LineByPlan::~LineByPlan()
{
    m_values.forget();
    m_plan.giveBack(std::move(m_room));
}

void LineByPlan::beginLine()
{
    m_text.truncate(m_margin);
    m_lineSize = 0;
    m_tab = -1;
    m_used.clear();
    m_logIsOn = fillinglog::isOn();
    m_fallback = Fallback::None;
}

Fallback LineByPlan::fill(const TemplatePlan::Line &line)
{
    const Shape &shape = *line.shape;
    const int *const names = m_plan.namesOf(line);
    beginLine();
    for (const Shape::Step *step = shape.steps().data();; ++step) {
        appendPiece(*step);
        switch (step->mark) {
            case Shape::Mark::Value:
                step = fillTag(line, names + step->firstName, *step);
                if (step == nullptr || step->mark == Shape::Mark::End)
                    return m_fallback;
                break;
            case Shape::Mark::GroupBegin:
                if (m_groups.size() < shape.groups().size())
                    m_groups.resize(shape.groups().size());
                m_groups[static_cast<std::size_t>(step->group)] = {m_text.size(), m_lineSize};
                break;
            case Shape::Mark::GroupEnd:
                break;
            case Shape::Mark::End:
                return Fallback::None;
        }
    }
}

inline void LineByPlan::appendPiece(const Shape::Step &step)
{
    if (step.tab >= 0)
        m_tab = m_text.size() + step.tab;
    m_text.appendPiece(step.text, step.size);
    m_lineSize += step.lineSize;
}

Fallback LineByPlan::takeEntry(QStringView entry, LineLook &look)
{
    beginLine();
    m_lineSize = static_cast<int>(entry.size());
    const Fallback fallback = appendText(entry);
    if (fallback != Fallback::None)
        return fallback;
    m_tab = placeOf(QLatin1Char('='), writtenFrom(0), m_margin);
    look.alignment = m_tab < 0 ? AlignLeft : AlignJustify;
    look.carried.alignment = look.alignment;
    if (m_tab < 0)
        return Fallback::None;
    m_text.data()[m_tab] = documents::tab;
    return placeOf(QLatin1Char('='), writtenFrom(0), m_tab) < 0 ? Fallback::None
                                                                : Fallback::EntryOfMarkup;
}

/// @param names those of the tag
/// @return where the line goes on: behind this step; null: it doesn't
inline const Shape::Step *LineByPlan::fillTag(const TemplatePlan::Line &line, const int *names,
                                              const Shape::Step &step)
{
    const Shape &shape = *line.shape;
    const Shape::Tag &wanted = *step.tag;
    const NamedValues::Value &value = m_values.of(*names);
    const int begin = m_text.size();
    const bool isThere = value.index() != 0;
    if (isThere && m_logIsOn)
        m_used.push_back({*names, false, 0});
    const Fallback fallback =
        isThere ? appendValue(wanted, value) : appendExpression(line, names, wanted);
    if (fallback != Fallback::None)
        return giveUp(fallback);
    if (wanted.group >= 0 && vanishesWithItsGroup(writtenFrom(begin)))
        return dropGroup(shape, wanted.group);
    m_lineSize += m_text.size() - begin;
    return m_text.size() == begin && shape.hasRanges() ? giveUp(Fallback::EmptyAmongRanges) : &step;
}

const Shape::Step *LineByPlan::giveUp(Fallback reason)
{
    m_fallback = reason;
    return nullptr;
}

Fallback LineByPlan::appendExpression(const TemplatePlan::Line &line, const int *names,
                                      const Shape::Tag &wanted)
{
    if (wanted.expression.isEmpty())
        return Fallback::MissingName;
    if (!m_namesInExpressions)
        m_namesInExpressions.emplace(m_plan.names(), m_plan.namesNotedInExpressions(), m_values);
    if (!m_namesInExpressions->leave(m_plan.names().at(*names), wanted.hasWords))
        return Fallback::NamesElsewhere;
    const auto tag = &wanted - line.shape->tags().data();
    auto &expression = m_room->expressions[static_cast<std::size_t>(line.firstExpression + tag)];
    if (!expression)
        expression = std::make_unique<CompiledExpression>(wanted.expression, wanted.operands);
    for (int operand = 0; operand < wanted.operands; ++operand) {
        const NamedValues::Value &value = m_values.of(names[operand + 1]);
        double number = 0;
        if (value.index() == 0)
            return Fallback::MissingName;
        if (!operandOf(value, number))
            return Fallback::TextInExpression;
        if (!m_namesInExpressions->leave(number))
            return Fallback::NamesElsewhere;
        expression->setOperand(operand, number);
    }
    const double value = expression->value();
    if (m_logIsOn)
        m_used.push_back({*names, true, value});
    wanted.pattern.appendReal(m_text, value);
    return Fallback::None;
}

/// The scan goes on as far to the right as the tag stood in its group, which must not be beyond the
/// next tag. @return as fillTag()
const Shape::Step *LineByPlan::dropGroup(const Shape &shape, int group)
{
    const Shape::Group &dropped = shape.groups()[static_cast<std::size_t>(group)];
    if (dropped.isWholeLine) {
        m_text.truncate(m_margin);
        m_lineSize = 0;
        m_tab = -1;
        return &shape.steps().back();
    }
    if (!dropped.mayVanish)
        return giveUp(Fallback::GroupOfMarkup);
    const Begin &begin = m_groups[static_cast<std::size_t>(group)];
    if (m_lineSize - begin.line > dropped.room)
        return giveUp(Fallback::GroupNearTag);
    m_text.truncate(begin.text);
    m_lineSize = begin.line;
    if (m_tab >= begin.text)
        m_tab = -1;
    return &shape.steps()[static_cast<std::size_t>(dropped.endStep)];
}

inline Fallback LineByPlan::appendValue(const Shape::Tag &tag, const NamedValues::Value &value)
{
    if (const auto *const real = std::get_if<double>(&value)) {
        tag.pattern.appendReal(m_text, *real);
        return Fallback::None;
    }
    if (const auto *const text = std::get_if<const QString *>(&value))
        return beginsLikeAWord(**text) ? appendText(**text) : appendTextOrNumber(tag, **text);
    if (const auto *const whole = std::get_if<qint64>(&value)) {
        tag.pattern.appendInteger(m_text, *whole);
        return Fallback::None;
    }
    return appendVariant(tag, *std::get<const QVariant *>(value));
}

Fallback LineByPlan::appendTextOrNumber(const Shape::Tag &tag, const QString &text)
{
    const NumberInText number = numberIn(text);
    switch (number.kind) {
        case NumberInText::Kind::None:
            return appendText(text);
        case NumberInText::Kind::Whole:
            tag.pattern.appendInteger(m_text, number.whole);
            break;
        case NumberInText::Kind::Real:
            tag.pattern.appendReal(m_text, number.real);
            break;
    }
    return Fallback::None;
}

Fallback LineByPlan::appendVariant(const Shape::Tag &tag, const QVariant &value)
{
    switch (static_cast<int>(value.type())) {
        case QVariant::ULongLong:
            tag.pattern.appendInteger(m_text, value.toLongLong());
            return Fallback::None;
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
    const QChar *const from = text.data();
    const int size = static_cast<int>(text.size());
    QChar *const to = m_text.room(size);
    // Without a branch for each character, as nobody can guess what comes next in a text.
    unsigned found = 0;
    for (int place = 0; place < size; ++place) {
        const QChar c = from[place];
        to[place] = c;
        found |= markupCharacters[qMin<unsigned>(c.unicode(), markupCharacters.size() - 1)];
    }
    if (found != 0)
        return Fallback::MarkupInValue;
    m_text.endAt(to + size);
    return Fallback::None;
}

void LineByPlan::log(DocumentValues &values)
{
    for (const Used &used : m_used) {
        const QStringView name = m_plan.names().at(used.name);
        m_logged.resize(static_cast<int>(name.size()));
        std::copy(name.begin(), name.end(), m_logged.begin());
        if (used.isExpression)
            values.logExpression(m_logged, used.value);
        else if (fillinglog::isOn())
            fillinglog::write(m_logged);
    }
}

}  // namespace templates
