#pragma once

#include <string_view>
#include <vector>

#include "commandsets/commandrow_p.h"

namespace printerslib::drivers {

/// Finds the row of a command by its first bytes. Built once for a vendor's variant of a dialect;
/// any thread may look up.
class CommandTree
{
public:
    struct Match
    {
        enum State {
            Found,      ///< `row` stands for the bytes
            NeedsMore,  ///< more than `size` bytes have to be there; `row` if its introducer is
                        ///< clear
            Nothing,    ///< the first `size` bytes begin nothing known
        };
        State state = Nothing;
        int size = 0;
        const CommandRow *row = nullptr;
    };

    static const CommandTree &of(Dialect dialect, Vendor vendor);

    /// @param isRaster in the raster mode, in which text is none
    /// @param isAtEnd nothing will follow the bytes
    Match match(std::string_view bytes, bool isRaster, bool isAtEnd) const;
    /// The command at the head of bytes if it acts at once and is whole; else null.
    const CommandRow *immediate(std::string_view bytes) const;
    /// The first place of a text where a command may begin that acts at once.
    std::size_t findImmediate(std::string_view bytes, std::size_t from) const;

private:
    struct Edge
    {
        unsigned char byte;
        quint16 node;
    };
    struct Node
    {
        std::vector<Edge> edges;               ///< in the order of their bytes
        std::vector<const CommandRow *> rows;  ///< those with long selectors first
    };

    explicit CommandTree(const QVector<const CommandRow *> &rows);
    void insert(const CommandRow &row);
    const Node *child(const Node &node, char byte) const;
    static Match choose(const Node &node, int depth, std::string_view bytes, bool isRaster,
                        bool isAtEnd);

    std::vector<Node> m_nodes;
    char m_immediateLead = 0;  ///< the byte that those which act at once begin with; 0: none do
};

}  // namespace printerslib::drivers
