#include "commandsets/commandtree_p.h"

#include <algorithm>
#include <array>

#include "commandsets/commandlength_p.h"
#include "commandsets/commandrows_p.h"

namespace printerslib::drivers {

namespace {

constexpr int longestIntroducer = sizeof CommandRow::introducer;

std::string_view introducerOf(const CommandRow &row)
{
    return {row.introducer, row.introducerSize};
}

std::string_view selectorOf(const CommandRow &row)
{
    return {row.selector, row.selectorSize};
}

}  // namespace

CommandTree::CommandTree(const QVector<const CommandRow *> &rows)
{
    m_nodes.emplace_back();
    for (const CommandRow *row : rows) {
        insert(*row);
        if ((row->traits & CommandRow::ActsAtOnce) != 0)
            m_immediateLead = row->introducer[0];
    }
    for (Node &node : m_nodes)
        std::stable_sort(node.rows.begin(), node.rows.end(),
                         [](const CommandRow *a, const CommandRow *b) {
                             return a->selectorSize > b->selectorSize;
                         });
}

void CommandTree::insert(const CommandRow &row)
{
    std::size_t at = 0;
    for (const char c : introducerOf(row)) {
        const auto byte = static_cast<unsigned char>(c);
        std::vector<Edge> &edges = m_nodes[at].edges;
        const auto place =
            std::lower_bound(edges.begin(), edges.end(), byte,
                             [](const Edge &edge, unsigned char b) { return edge.byte < b; });
        if (place != edges.end() && place->byte == byte) {
            at = place->node;
            continue;
        }
        const std::size_t next = m_nodes.size();
        edges.insert(place, {byte, static_cast<quint16>(next)});
        m_nodes.emplace_back();
        at = next;
    }
    m_nodes[at].rows.push_back(&row);
}

const CommandTree::Node *CommandTree::child(const Node &node, char c) const
{
    const auto byte = static_cast<unsigned char>(c);
    const auto place =
        std::lower_bound(node.edges.begin(), node.edges.end(), byte,
                         [](const Edge &edge, unsigned char b) { return edge.byte < b; });
    return place == node.edges.end() || place->byte != byte ? nullptr : &m_nodes[place->node];
}

const CommandTree &CommandTree::of(Dialect dialect, Vendor vendor)
{
    static const std::vector<CommandTree> trees = [] {
        constexpr int count = dialectCount * vendorCount;
        std::vector<CommandTree> made;
        made.reserve(count);
        for (int i = 0; i < count; ++i)
            made.push_back(CommandTree(commandsOf(static_cast<Dialect>(i / vendorCount),
                                                  static_cast<Vendor>(i % vendorCount))));
        return made;
    }();
    const int index = static_cast<int>(dialect) * vendorCount + static_cast<int>(vendor);
    return trees[static_cast<std::size_t>(index)];
}

/// Of the rows with the introducer that ends at `depth` the one whose selector stands there.
CommandTree::Match CommandTree::choose(const Node &node, int depth, std::string_view bytes,
                                       bool isRaster, bool isAtEnd)
{
    int told = 0;
    for (const CommandRow *row : node.rows) {
        if ((row->traits & CommandRow::InRasterMode) != 0 && !isRaster)
            continue;
        const std::string_view selector = selectorOf(*row);
        const std::size_t at = static_cast<std::size_t>(depth) + row->selectorAt;
        const std::string_view there = bytes.substr(std::min(at, bytes.size()), selector.size());
        const auto differing = std::mismatch(there.begin(), there.end(), selector.begin());
        if (!selector.empty() && !selectorIsCounted(*row, bytes))
            continue;
        if (differing.first != there.end()) {
            told = std::max(
                told, static_cast<int>(at) + 1 + static_cast<int>(differing.first - there.begin()));
            continue;
        }
        if (there.size() == selector.size())
            return {Match::Found, depth, row};
        if (!isAtEnd)
            return {Match::NeedsMore, static_cast<int>(at + there.size()), row};
    }
    return {Match::Nothing, told, nullptr};
}

CommandTree::Match CommandTree::match(std::string_view bytes, bool isRaster, bool isAtEnd) const
{
    std::array<const Node *, longestIntroducer + 1> path{};
    int depth = 0;
    const Node *node = &m_nodes.front();
    for (const char byte : bytes) {
        const Node *next = child(*node, byte);
        if (next == nullptr)
            break;
        node = next;
        path[static_cast<std::size_t>(++depth)] = node;
    }
    const auto size = static_cast<int>(bytes.size());
    if (depth == size && !node->edges.empty() && !isAtEnd)
        return {Match::NeedsMore, size, node->rows.empty() ? nullptr : node->rows.front()};
    int told = node->edges.empty() ? depth : depth + 1;
    for (int i = depth; i > 0; --i) {
        const Match match = choose(*path[static_cast<std::size_t>(i)], i, bytes, isRaster, isAtEnd);
        if (match.state != Match::Nothing)
            return match;
        told = std::max(told, match.size);
    }
    return {Match::Nothing, std::clamp(told, 1, std::max(size, 1)), nullptr};
}

std::size_t CommandTree::findImmediate(std::string_view bytes, std::size_t from) const
{
    return m_immediateLead == 0 ? std::string_view::npos : bytes.find(m_immediateLead, from);
}

const CommandRow *CommandTree::immediate(std::string_view bytes) const
{
    const Match found = match(bytes, false, true);
    const bool isWhole =
        found.state == Match::Found && (found.row->traits & CommandRow::ActsAtOnce) != 0 &&
        bytes.size() >= std::size_t(found.row->introducerSize + found.row->operandCount);
    return isWhole ? found.row : nullptr;
}

}  // namespace printerslib::drivers
