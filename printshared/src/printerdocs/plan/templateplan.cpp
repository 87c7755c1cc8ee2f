#include "printerdocs/plan/templateplan_p.h"

#include <QHash>
#include <QMutex>
#include <algorithm>

#include "printerdocs/plan/planmemory_p.h"
#include "printerdocs/template/keyword_p.h"
#include "printerdocs/template/removal_p.h"
#include "printerdocs/template/symbolsline_p.h"

namespace templates {

namespace {

/// The plans that formatters have at the moment, by the hash of their lines. A plan goes with the
/// last formatter that has it, and its row with the next plan that is made.
class PlanTable
{
public:
    /// It stays up to the very end: a client's global object may print while statics go.
    static PlanTable &instance()
    {
        static auto *const table = new PlanTable;
        return *table;
    }

    std::shared_ptr<const TemplatePlan> find(uint hash, const QStringList &lines)
    {
        const QMutexLocker locker(&m_mutex);
        for (auto row = m_plans.constFind(hash); row != m_plans.cend() && row.key() == hash;
             ++row) {
            auto plan = row->lock();
            if (plan && plan->templateLines() == lines)
                return plan;
        }
        return nullptr;
    }

    void add(uint hash, const std::shared_ptr<const TemplatePlan> &plan)
    {
        const QMutexLocker locker(&m_mutex);
        for (auto row = m_plans.begin(); row != m_plans.end();)
            row = row->expired() ? m_plans.erase(row) : std::next(row);
        if (m_plans.size() < mostPlans)
            m_plans.insert(hash, plan);
    }

private:
    // What is beyond that isn't shared.
    static constexpr int mostPlans = 64;

    QMutex m_mutex;
    QMultiHash<uint, std::weak_ptr<const TemplatePlan>> m_plans;
};

uint hashOf(const QStringList &lines)
{
    return qHashRange(lines.cbegin(), lines.cend());
}

}  // namespace

/// Makes a plan line by line.
class TemplatePlan::Builder
{
public:
    Builder(TemplatePlan &plan, int lines) : m_plan(plan), m_memory(lines)
    {
        // What each line takes up by itself, and a plan without any.
        m_memory.take((sizeof(Line) + sizeof(QString)) * static_cast<std::size_t>(lines) +
                      ofAnEmptyPlan);
    }

    void add(const QString &text)
    {
        Line line;
        if (text.isEmpty())
            line.kind = LineKind::Blank;
        else if (holdsEntries(text))
            line.kind =
                text.size() == entriesTag.size() ? LineKind::EntriesAlone : LineKind::Entries;
        else
            takeShape(line, text);
        m_plan.m_hasEntries = m_plan.m_hasEntries || line.kind == LineKind::Entries ||
                              line.kind == LineKind::EntriesAlone;
        m_plan.m_isUsable = m_plan.m_isUsable && !holdsRemovals(text);
        m_plan.m_lines.push_back(line);
        m_plan.m_texts.append(text);
    }

    /// The names of all tags, line after line.
    const std::vector<QStringView> &names() const { return m_names; }

private:
    static constexpr std::size_t ofAnEmptyPlan = 1024;

    struct Known
    {
        bool isRead = false;
        Fallback fallback = Fallback::None;
        const Shape *shape = nullptr;
        int firstExpression = 0;
    };

    void takeShape(Line &line, const QString &text)
    {
        m_parts.read(text);
        line.fallback = m_parts.fallback();
        if (line.fallback != Fallback::None)
            return;
        Known &known = knownOf(m_parts.key());
        if (!known.isRead)
            known = readShape();
        line.fallback = known.fallback;
        if (line.fallback == Fallback::None && !m_memory.take(memoryOfNames(m_parts.names())))
            line.fallback = Fallback::Memory;
        if (line.fallback != Fallback::None)
            return;
        line.kind = LineKind::OfShape;
        line.shape = known.shape;
        line.firstExpression = known.firstExpression;
        line.firstName = static_cast<int>(m_names.size());
        m_names.insert(m_names.end(), m_parts.names().begin(), m_parts.names().end());
    }

    /// That of the line at hand.
    Known readShape()
    {
        auto shape = std::make_unique<const Shape>(m_parts);
        Known known{true, shape->fallback(), shape.get(), static_cast<int>(m_plan.m_tagCount)};
        if (known.fallback == Fallback::None && !m_memory.take(memoryOf(*shape)))
            known.fallback = Fallback::Memory;
        if (known.fallback != Fallback::None)
            return known;
        m_plan.m_tagCount += shape->tags().size();
        m_plan.m_hasExpressions = m_plan.m_hasExpressions || shape->hasExpressions();
        m_plan.m_shapes.push_back(std::move(shape));
        return known;
    }

    /// With its place in the lists of shapes and of expressions.
    static std::size_t memoryOf(const Shape &shape)
    {
        return shape.memory() + sizeof(std::unique_ptr<const Shape>) +
               shape.tags().size() * sizeof(ExpressionSet::value_type);
    }

    /// As if no other line had them: it is known in the end which do. A name of several tags is
    /// mostly near to itself.
    static std::size_t memoryOfNames(const std::vector<QStringView> &names)
    {
        constexpr std::ptrdiff_t near = 8;
        std::size_t size = sizeof(int) * names.size();
        for (auto name = names.cbegin(); name != names.cend(); ++name) {
            const auto first = name - std::min(near, name - names.cbegin());
            if (std::find(first, name, *name) == name)
                size += TemplateNames::memoryOf(*name) + NamedValues::memoryOfAName;
        }
        return size;
    }

    /// The key is copied only if it is a new one: its memory is used again.
    Known &knownOf(const QString &key)
    {
        const auto known = m_shapes.find(key);
        return known != m_shapes.end() ? *known : m_shapes[QString(key.constData(), key.size())];
    }

    LineParts m_parts;
    std::vector<QStringView> m_names;
    TemplatePlan &m_plan;
    PlanMemory m_memory;
    QHash<QString, Known> m_shapes;
};

TemplatePlan::TemplatePlan(const QStringList &lines) : m_templateLines(lines)
{
    m_lines.reserve(static_cast<std::size_t>(lines.size()));
    m_texts.reserve(lines.size());
    const int copyNumber = lineOfCopyNumber(lines);
    Builder builder(*this, lines.size());
    for (int place = 0; place < lines.size(); ++place) {
        if (isSymbolsLine(lines.at(place)) && !holdsEntries(lines.at(place)))
            m_symbolsLines.append(lines.at(place));
        else
            builder.add(lines.at(place));
        if (place == copyNumber)
            m_linesBeforeCopyMark = static_cast<int>(m_lines.size());
    }
    m_shapes.shrink_to_fit();
    m_lineNames = m_names.take(builder.names());
    if (m_hasExpressions)
        m_notedNames = NamesInExpressions::notedNames(m_names);
}

TemplatePlan::~TemplatePlan()
{
    delete m_room.load();
}

std::unique_ptr<PlanRoom> TemplatePlan::takeRoom() const
{
    std::unique_ptr<PlanRoom> room(m_room.exchange(nullptr));
    if (room)
        return room;
    room = std::make_unique<PlanRoom>();
    room->expressions.resize(m_hasExpressions ? m_tagCount : 0);
    return room;
}

void TemplatePlan::giveBack(std::unique_ptr<PlanRoom> room) const
{
    delete m_room.exchange(room.release());
}

std::shared_ptr<const TemplatePlan> TemplatePlan::found(const QStringList &lines)
{
    return PlanTable::instance().find(hashOf(lines), lines);
}

std::shared_ptr<const TemplatePlan> TemplatePlan::shared(const QStringList &lines)
{
    const uint hash = hashOf(lines);
    auto plan = PlanTable::instance().find(hash, lines);
    if (plan)
        return plan;
    plan = std::make_shared<const TemplatePlan>(lines);
    PlanTable::instance().add(hash, plan);
    return plan;
}

}  // namespace templates
