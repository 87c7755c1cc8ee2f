#include "printerdocs/plan/shape_p.h"

#include <algorithm>
#include <limits>

#include "printerdocs/document/linepadding_p.h"
#include "printerdocs/plan/planmemory_p.h"
#include "printerdocs/template/attributetag_p.h"
#include "printerdocs/template/linemarkup_p.h"
#include "printerdocs/template/printedline_p.h"
#include "printerdocs/template/templatetags_p.h"

namespace templates {

namespace {

// They stand for what isn't known of a line. No text has them: they are no characters.
constexpr QChar valueMark(0xFDD0);
constexpr QChar groupBeginMark(0xFDD1);
constexpr QChar groupEndMark(0xFDD2);
constexpr QChar keySeparator(0xFDD3);

bool isMark(QChar c)
{
    return c >= valueMark && c <= keySeparator;
}

bool holdsBracket(QStringView text)
{
    return std::any_of(text.begin(), text.end(), [](QChar c) {
        return c == QLatin1Char('<') || c == QLatin1Char('[') || c == QLatin1Char(']');
    });
}

/// For each "[" and "]" of a line the place of its partner; -1: none.
std::vector<int> bracketPartners(const QString &line)
{
    std::vector<int> partners(static_cast<std::size_t>(line.size()), -1);
    std::vector<int> open;
    for (int place = 0; place < line.size(); ++place) {
        if (line.at(place) == QLatin1Char('[')) {
            open.push_back(place);
        } else if (line.at(place) == QLatin1Char(']') && !open.empty()) {
            partners[static_cast<std::size_t>(place)] = open.back();
            partners[static_cast<std::size_t>(open.back())] = place;
            open.pop_back();
        }
    }
    return partners;
}

/// Whether each tag that is taken out as a text stands there but once.
bool hitsOnce(const QString &line)
{
    const auto isOnce = [&line](QLatin1String text) { return line.count(text) <= 1; };
    return line.count(QLatin1Char('[')) <= 1 && line.count(QLatin1Char(']')) <= 1 &&
           std::all_of(std::begin(plainTags), std::end(plainTags),
                       [&](const PlainTag &tag) { return isOnce(tag.text); }) &&
           std::all_of(std::begin(rangeOrder), std::end(rangeOrder),
                       [&](const FormatTag &tag) { return isOnce(tag.wholeLine); });
}

Shape::Mark markOf(QChar c)
{
    switch (c.unicode()) {
        case valueMark.unicode():
            return Shape::Mark::Value;
        case groupBeginMark.unicode():
            return Shape::Mark::GroupBegin;
        case groupEndMark.unicode():
            return Shape::Mark::GroupEnd;
        default:
            return Shape::Mark::End;
    }
}

int endOfPiece(const QString &text, int begin)
{
    return static_cast<int>(std::find_if(text.cbegin() + begin, text.cend(), isMark) -
                            text.cbegin());
}

}  // namespace

void LineParts::read(const QString &line)
{
    m_fallback =
        std::any_of(line.cbegin(), line.cend(), isMark) ? Fallback::MarkCharacter : Fallback::None;
    m_line.resize(0);
    m_rest.resize(0);
    m_tags.clear();
    m_names.clear();
    int done = 0;
    for (AttributeTag tag = AttributeTag::find(line.constData(), 0, line.size()); tag.begin >= 0;
         tag = AttributeTag::find(line.constData(), done, line.size())) {
        m_line.append(line.constData() + done, tag.begin - done).append(valueMark);
        takeTag(QStringView(line).mid(tag.begin + 1, tag.end - tag.begin - 1));
        done = tag.end + 1;
    }
    m_line.append(line.constData() + done, line.size() - done);
}

void LineParts::takeTag(QStringView inner)
{
    const TagParts parts = TagParts::of(inner);
    if (holdsBracket(inner))
        m_fallback = Fallback::BracketInTag;
    if (parts.name.isEmpty())
        m_fallback = Fallback::NamelessTag;
    Tag tag{parts.format, static_cast<int>(m_names.size())};
    m_names.push_back(parts.name);
    m_rest.append(keySeparator).append(parts.format.data(), static_cast<int>(parts.format.size()));
    m_rest.append(keySeparator);
    tag.expressionBegin = m_rest.size();
    if (readExpression(parts.name, m_rest, m_names)) {
        tag.operands = static_cast<int>(m_names.size()) - tag.firstName - 1;
        tag.expressionSize = m_rest.size() - tag.expressionBegin;
    }
    m_tags.push_back(tag);
}

const QString &LineParts::key()
{
    m_key.resize(0);
    return m_key.append(m_line).append(m_rest);
}

Shape::Shape(const LineParts &parts)
{
    readKinds(parts.line());
    if (m_fallback != Fallback::None)
        return;
    takeTags(parts);
    readMarkup(markGroups(parts));
}

bool Shape::hasExpressions() const
{
    return std::any_of(m_tags.cbegin(), m_tags.cend(),
                       [](const Tag &tag) { return !tag.expression.isEmpty(); });
}

std::size_t Shape::memory() const
{
    std::size_t size = heapSize(sizeof(*this)) + heapSize(m_text) + heapSize(m_steps) +
                       heapSize(m_tags) + heapSize(m_groups) + m_memoryOfExpressions;
    for (const Tag &tag : m_tags)
        size += heapSize(tag.format) + heapSize(tag.expression);
    return size;
}

void Shape::takeTags(const LineParts &parts)
{
    m_tags.reserve(parts.tags().size());
    for (const LineParts::Tag &read : parts.tags()) {
        Tag tag(read.format.toString());
        tag.firstName = read.firstName;
        tag.operands = read.operands;
        takeExpression(tag, parts.expressionOf(read));
        m_tags.push_back(tag);
    }
}

void Shape::takeExpression(Tag &tag, const QString &expression)
{
    if (expression.isEmpty())
        return;
    const QByteArray text = expression.toLatin1();
    const CompiledExpression compiled(text, tag.operands);
    if (!compiled.isValid())
        return;
    tag.expression = text;
    tag.hasWords = hasFunctions(expression);
    m_memoryOfExpressions += compiled.memory();
}

void Shape::readKinds(const QString &line)
{
    const quint32 kinds = tagKindsOf(line);
    m_hasRanges = (kinds & (allRanges | FontTag)) != 0;
    if (kinds == EveryTag)
        m_fallback = Fallback::LooseBracket;
    else if ((kinds & CodeTag) != 0)
        m_fallback = Fallback::CodeTag;
    else if (line.count(tabTag) + line.count(QLatin1Char('\t')) > 1)
        m_fallback = Fallback::TwoTabs;
}

/// The line with marks around its groups. Among ranges a mark would part what the markup takes
/// together; there no group but the whole line may vanish.
QString Shape::markGroups(const LineParts &parts)
{
    const QString &line = parts.line();
    const std::vector<int> partners = bracketPartners(line);
    QString marked;
    m_groups.reserve(static_cast<std::size_t>(line.count(QLatin1Char('['))));
    std::vector<int> around;
    std::size_t tag = 0;
    for (int place = 0; place < line.size(); ++place) {
        const int partner = partners[static_cast<std::size_t>(place)];
        const bool opens = partner > place;
        if (opens) {
            Group group;
            group.isWholeLine = place == 0 && partner == line.size() - 1;
            group.mayVanish =
                !m_hasRanges &&
                !QStringView(line).mid(place, partner - place).contains(QLatin1Char('<'));
            around.push_back(static_cast<int>(m_groups.size()));
            m_groups.push_back(group);
        }
        if (opens && !m_hasRanges)
            marked += groupBeginMark;
        marked += line.at(place);
        if (line.at(place) == valueMark)
            m_tags[tag++].group = around.empty() ? -1 : around.back();
        if (partner < 0 || opens)
            continue;
        around.pop_back();
        if (!m_hasRanges)
            marked += groupEndMark;
    }
    return marked;
}

void Shape::readMarkup(const QString &line)
{
    CarriedStyle carried;
    const PrintedLine printed = printedLine(line, carried, 0, 0);
    if (!printed.isValid) {
        m_fallback = Fallback::NoText;
        return;
    }
    takeLook(line, printed, carried);
    takeSteps(line, printed.text);
    measureRooms();
}

/// What the line markup makes of formats is known if no tag of a line hits twice: then bytes and
/// characters stay in step, however long the values are.
void Shape::takeLook(const QString &line, const PrintedLine &printed, const CarriedStyle &carried)
{
    m_look.alignment = printed.alignment;
    m_look.spacing = printed.spacing;
    m_look.carried = carried;
    m_look.format = printed.formats.at(0);
    m_look.font = printed.fonts.at(0);
    m_look.isOfOneFormat = hitsOnce(line) && printed.formats.size() == printed.text.size() &&
                           printed.fonts.size() == printed.text.size() &&
                           printed.formats.count(m_look.format) == printed.formats.size() &&
                           printed.fonts.count(m_look.font) == printed.fonts.size();
}

/// Cuts the line and its printed text at their marks, which are the same ones.
void Shape::takeSteps(const QString &line, const QString &printed)
{
    m_steps.reserve(
        static_cast<std::size_t>(std::count_if(printed.cbegin(), printed.cend(), isMark)) + 1);
    m_text.reserve(printed.size() + valueformat::TextBuffer::readable);
    int inLine = 0;
    for (int begin = 0;;) {
        const int end = endOfPiece(printed, begin);
        const int endInLine = endOfPiece(line, inLine);
        Step step;
        step.size = end - begin;
        step.lineSize = endInLine - inLine;
        step.tab = placeOf(documents::tab, QStringView(printed).mid(begin, step.size));
        step.mark = end < printed.size() ? markOf(printed.at(end)) : Mark::End;
        m_text.append(printed.constData() + begin, step.size);
        m_steps.push_back(step);
        if (step.mark == Mark::End)
            break;
        begin = end + 1;
        inLine = endInLine + 1;
    }
    m_text.append(QString(valueformat::TextBuffer::readable, documents::blank));
    numberSteps();
}

/// Which tags and groups their marks are of.
void Shape::numberSteps()
{
    const QChar *text = m_text.constData();
    const Tag *tag = m_tags.data();
    int nextGroup = 0;
    std::vector<int> around;
    for (std::size_t at = 0; at < m_steps.size(); ++at) {
        Step &step = m_steps[at];
        step.text = text;
        text += step.size;
        if (step.mark == Mark::Value) {
            step.firstName = tag->firstName;
            step.tag = tag++;
        } else if (step.mark == Mark::GroupBegin) {
            step.group = nextGroup++;
            around.push_back(step.group);
        } else if (step.mark == Mark::GroupEnd) {
            step.group = around.back();
            around.pop_back();
            m_groups[static_cast<std::size_t>(step.group)].endStep = static_cast<int>(at);
        }
    }
}

void Shape::measureRooms()
{
    for (Group &group : m_groups) {
        group.room = 0;
        for (auto step = m_steps.cbegin() + group.endStep + 1; step != m_steps.cend(); ++step) {
            group.room += step->lineSize;
            if (step->mark == Mark::Value)
                break;
            if (step->mark == Mark::End)
                group.room = std::numeric_limits<int>::max();
        }
    }
}

}  // namespace templates
