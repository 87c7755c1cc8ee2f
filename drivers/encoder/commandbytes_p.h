#pragma once

#include <QByteArray>
#include <vector>

#include "commandsets/commandrow_p.h"

namespace printerslib::drivers {

/// Puts the commands of a model behind each other. Their bytes are those of the rows; operands
/// that a row names by their value are filled in.
class CommandBytes
{
public:
    CommandBytes(const PrinterProfile &profile, QByteArray &bytes);

    /// Whether the dialect has a command.
    bool has(CommandId id) const { return rowOf(id) != nullptr; }
    /// A command with its operands, but for those that the row names. Nothing if the dialect hasn't
    /// got it.
    template <typename... Operands>
    void put(CommandId id, Operands... operands)
    {
        const char values[] = {static_cast<char>(operands)..., '\0'};
        write(rowOf(id), values, int(sizeof...(operands)));
    }
    /// The same of several rows: that of which the first named operand is `choice`.
    template <typename... Operands>
    void putChosen(CommandId id, int choice, Operands... operands)
    {
        const char values[] = {static_cast<char>(operands)..., '\0'};
        write(chosenRow(id, static_cast<char>(choice)), values, int(sizeof...(operands)));
    }
    void putText(const char *text, int size) { m_bytes->append(text, size); }
    void putData(const QByteArray &data) { m_bytes->append(data); }
    /// How many bytes there are, and what they are.
    int size() const { return m_bytes->size(); }
    const QByteArray &bytes() const { return *m_bytes; }
    /// Takes back what stands behind so many bytes.
    void chopTo(int size) { m_bytes->resize(size); }

private:
    const CommandRow *rowOf(CommandId id) const
    {
        return size_t(id) < m_rows->size() ? (*m_rows)[size_t(id)] : nullptr;
    }
    const CommandRow *chosenRow(CommandId id, char choice) const;
    void write(const CommandRow *row, const char *values, int count);

    Dialect m_dialect;
    Vendor m_vendor;
    const std::vector<const CommandRow *> *m_rows;  ///< by number: the first that names no operand
    QByteArray *m_bytes;
};

/// The two bytes of a number, the low one first.
constexpr char lowByte(int number)
{
    return static_cast<char>(number & 0xFF);
}
constexpr char highByte(int number)
{
    return static_cast<char>((number >> 8) & 0xFF);
}

}  // namespace printerslib::drivers
