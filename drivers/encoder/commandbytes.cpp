#include "encoder/commandbytes_p.h"

#include <algorithm>
#include <array>

#include "commandsets/commandrows_p.h"

namespace printerslib::drivers {

namespace {

using RowsById = std::vector<const CommandRow *>;

RowsById rowsById(Dialect dialect, Vendor vendor)
{
    RowsById rows;
    for (const CommandRow *row : commandsOf(dialect, vendor)) {
        const auto number = size_t(row->id);
        if (number >= rows.size())
            rows.resize(number + 1, nullptr);
        const CommandRow *&kept = rows[number];
        if (kept == nullptr || (kept->selectorSize > 0 && row->selectorSize == 0))
            kept = row;
    }
    return rows;
}

const RowsById &rowsOf(Dialect dialect, Vendor vendor)
{
    static const auto tables = [] {
        std::array<std::array<RowsById, vendorCount>, dialectCount> made;
        for (int d = 0; d < dialectCount; ++d) {
            for (int v = 0; v < vendorCount; ++v)
                made[size_t(d)][size_t(v)] = rowsById(Dialect(d), Vendor(v));
        }
        return made;
    }();
    return tables[size_t(dialect)][size_t(vendor)];
}

}  // namespace

CommandBytes::CommandBytes(const PrinterProfile &profile, QByteArray &bytes)
    : m_dialect(profile.dialect()),
      m_vendor(profile.vendor()),
      m_rows(&rowsOf(m_dialect, m_vendor)),
      m_bytes(&bytes)
{}

const CommandRow *CommandBytes::chosenRow(CommandId id, char choice) const
{
    const QVector<const CommandRow *> &rows = commandsOf(m_dialect, m_vendor);
    const auto row = std::find_if(rows.begin(), rows.end(), [id, choice](const CommandRow *r) {
        return r->id == id && r->selectorSize > 0 && r->selector[0] == choice;
    });
    return row == rows.end() ? nullptr : *row;
}

void CommandBytes::write(const CommandRow *row, const char *values, int count)
{
    if (row == nullptr)
        return;
    constexpr int mostBytes = 40;
    Q_ASSERT(row->operandCount == count + row->selectorSize);
    Q_ASSERT(row->introducerSize + row->operandCount <= mostBytes);
    char command[mostBytes];
    char *end = std::copy(row->introducer, row->introducer + row->introducerSize, command);
    const int before = std::min<int>(count, row->selectorAt);
    end = std::copy(values, values + (row->selectorSize > 0 ? before : count), end);
    end = std::copy(row->selector, row->selector + row->selectorSize, end);
    if (row->selectorSize > 0)
        end = std::copy(values + before, values + count, end);
    m_bytes->append(command, int(end - command));
}

}  // namespace printerslib::drivers
