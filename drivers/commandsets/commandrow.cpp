#include "commandsets/commandrow_p.h"

#include <algorithm>
#include <array>

#include "commandsets/commandrows_p.h"

namespace printerslib::drivers {

namespace {

CommandRows tableOf(Dialect dialect)
{
    switch (dialect) {
        case Dialect::EscPos:
            return escPosRows();
        case Dialect::StarLine:
            return starLineRows();
        case Dialect::Swecoin:
            break;
    }
    return swecoinRows();
}

bool standForTheSame(const CommandRow &a, const CommandRow &b)
{
    return a.introducerSize == b.introducerSize && a.selectorSize == b.selectorSize &&
           a.selectorAt == b.selectorAt &&
           std::equal(a.introducer, a.introducer + a.introducerSize, b.introducer) &&
           std::equal(a.selector, a.selector + a.selectorSize, b.selector);
}

/// The vendor's own rows take the place of general ones.
QVector<const CommandRow *> rowsFor(Dialect dialect, Vendor vendor)
{
    QVector<const CommandRow *> found;
    const CommandRows rows = tableOf(dialect);
    for (const CommandRow *row = rows.first; row != rows.end; ++row) {
        if (row->vendor != Vendor::General && row->vendor != vendor)
            continue;
        const auto same = std::find_if(found.begin(), found.end(), [row](const CommandRow *other) {
            return standForTheSame(*row, *other);
        });
        if (same == found.end())
            found.append(row);
        else if (row->vendor != Vendor::General)
            *same = row;
    }
    return found;
}

using RowTables = std::array<std::array<QVector<const CommandRow *>, vendorCount>, dialectCount>;

RowTables allTables()
{
    RowTables tables;
    for (int dialect = 0; dialect < dialectCount; ++dialect) {
        for (int vendor = 0; vendor < vendorCount; ++vendor)
            tables[static_cast<std::size_t>(dialect)][static_cast<std::size_t>(vendor)] =
                rowsFor(static_cast<Dialect>(dialect), static_cast<Vendor>(vendor));
    }
    return tables;
}

}  // namespace

const QVector<const CommandRow *> &commandsOf(Dialect dialect, Vendor vendor)
{
    static const RowTables tables = allTables();
    return tables[static_cast<std::size_t>(dialect)][static_cast<std::size_t>(vendor)];
}

const CommandRow *commandOf(Dialect dialect, Vendor vendor, CommandId id)
{
    const QVector<const CommandRow *> &rows = commandsOf(dialect, vendor);
    const auto *const found = std::find_if(rows.cbegin(), rows.cend(),
                                           [id](const CommandRow *row) { return row->id == id; });
    return found == rows.cend() ? nullptr : *found;
}

}  // namespace printerslib::drivers
