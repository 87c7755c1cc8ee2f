#include "printerslib/drivers/streamreader.h"

#include <algorithm>

#include "commandsets/commandlength_p.h"
#include "commandsets/commandtree_p.h"
#include "commandsets/printerselection_p.h"

namespace printerslib::drivers {

namespace {

constexpr unsigned char firstPrintable = 0x20;
// No printer has commands of such a size, 64 MiB: what announces more is given up.
constexpr int longestCommand = 64 * 1024 * 1024;

std::string_view viewOf(const QByteArray &bytes)
{
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

bool isPrintable(char byte)
{
    return static_cast<unsigned char>(byte) >= firstPrintable;
}

}  // namespace

class StreamReader::State
{
public:
    explicit State(const CommandTree &tree) : m_tree(&tree) {}

    QVector<StreamCommand> read(const QByteArray &bytes);
    QVector<StreamCommand> finish();

private:
    void readAll(QVector<StreamCommand> &commands);
    bool readOne(QVector<StreamCommand> &commands);
    bool readText(QVector<StreamCommand> &commands);
    bool readKnown(const CommandRow &row, QVector<StreamCommand> &commands);
    void readIncomplete(QVector<StreamCommand> &commands);
    const CommandRow *incompleteRow() const;
    StreamCommand takeIncomplete(const CommandRow *row, qint64 size, const CommandLength &length);
    void waitFor(qint64 size, const CommandRow *row);
    StreamCommand take(StreamCommand::Kind kind, const CommandRow *row, qint64 size);
    void findImmediate(StreamCommand &command) const;
    void follow(StreamCommand &command);
    void switchImmediate(const StreamCommand &command);
    bool isSwitchedOff(const CommandRow *row) const;
    std::string_view rest() const { return viewOf(m_bytes).substr(std::size_t(m_at)); }

    const CommandTree *m_tree;
    QByteArray m_bytes;   ///< what came in, from the last incomplete command on
    int m_at = 0;         ///< of `m_bytes`: what stands before it has been read
    qint64 m_offset = 0;  ///< of the stream, at `m_at`
    qint64 m_needed = 1;  ///< bytes from `m_at` on before there is anything to read
    const CommandRow *m_waiting = nullptr;  ///< the command that waits for them, if it is known
    bool m_isRaster = false;
    bool m_isSelected = true;
    bool m_isPulseOn = true;
    bool m_isPowerOffOn = false;
};

QVector<StreamCommand> StreamReader::State::read(const QByteArray &bytes)
{
    QVector<StreamCommand> commands;
    const bool isCallers = m_bytes.isEmpty();
    if (isCallers)
        m_bytes = bytes;
    else
        m_bytes += bytes;
    readAll(commands);
    if (m_at > 0 || isCallers)
        m_bytes = QByteArray(m_bytes.constData() + m_at, m_bytes.size() - m_at);
    m_at = 0;
    return commands;
}

void StreamReader::State::readAll(QVector<StreamCommand> &commands)
{
    while (m_bytes.size() - m_at >= m_needed && readOne(commands)) {
    }
}

/// False if the bytes end before the command does.
bool StreamReader::State::readOne(QVector<StreamCommand> &commands)
{
    if (m_waiting != nullptr)
        return readKnown(*m_waiting, commands);
    if (!m_isRaster && isPrintable(m_bytes.at(m_at)))
        return readText(commands);
    const CommandTree::Match match = m_tree->match(rest(), m_isRaster, false);
    switch (match.state) {
        case CommandTree::Match::Found:
            return readKnown(*match.row, commands);
        case CommandTree::Match::NeedsMore:
            waitFor(match.size + 1, nullptr);
            return false;
        case CommandTree::Match::Nothing:
            break;
    }
    commands.append(take(StreamCommand::Unknown, nullptr, match.size));
    return true;
}

bool StreamReader::State::readText(QVector<StreamCommand> &commands)
{
    const auto begin = m_bytes.cbegin() + m_at;
    const auto end = std::find_if_not(begin, m_bytes.cend(), isPrintable);
    commands.append(take(StreamCommand::Text, nullptr, end - begin));
    return true;
}

bool StreamReader::State::readKnown(const CommandRow &row, QVector<StreamCommand> &commands)
{
    const std::string_view bytes = rest();
    // Where a mark ends the command, all but the newest bytes have been looked at.
    const qint64 searchedTo = m_waiting == nullptr ? 0 : m_needed - 1;
    const CommandLength length = lengthOfCommand(row, bytes, searchedTo);
    const qint64 needed = std::min<qint64>(length.bytes, longestCommand);
    if (needed > qint64(bytes.size())) {
        waitFor(needed, &row);
        return false;
    }
    if (!length.isKnown || length.bytes > longestCommand) {
        commands.append(takeIncomplete(&row, needed, length));
        return true;
    }
    const bool isSkipped = (row.traits & CommandRow::Family) != 0;
    StreamCommand command =
        take(isSkipped ? StreamCommand::Skipped : StreamCommand::Command, &row, length.bytes);
    findImmediate(command);
    follow(command);
    commands.append(command);
    return true;
}

void StreamReader::State::waitFor(qint64 size, const CommandRow *row)
{
    m_needed = size;
    m_waiting = row;
}

StreamCommand StreamReader::State::take(StreamCommand::Kind kind, const CommandRow *row,
                                        qint64 size)
{
    StreamCommand command;
    command.kind = kind;
    command.offset = m_offset;
    command.bytes = QByteArray(m_bytes.constData() + m_at, static_cast<int>(size));
    command.row = row;
    if (row != nullptr) {
        const int taken = command.bytes.size();
        command.operandsBegin = std::min<int>(row->introducerSize, taken);
        command.payloadBegin = std::min(row->introducerSize + row->operandCount, taken);
    }
    m_at += static_cast<int>(size);
    m_offset += size;
    waitFor(1, nullptr);
    return command;
}

void StreamReader::State::findImmediate(StreamCommand &command) const
{
    const std::string_view bytes = viewOf(command.bytes);
    std::size_t at = m_tree->findImmediate(bytes, std::size_t(command.payloadBegin));
    while (at != std::string_view::npos) {
        const CommandRow *row = m_tree->immediate(bytes.substr(at));
        int size = 1;
        if (row != nullptr) {
            size = row->introducerSize + row->operandCount;
            command.realTime.append({command.offset + qint64(at), row,
                                     command.bytes.mid(int(at), size), isSwitchedOff(row)});
        }
        at = m_tree->findImmediate(bytes, at + std::size_t(size));
    }
}

/// What a command changes in how the next ones are read.
void StreamReader::State::follow(StreamCommand &command)
{
    const CommandRow &row = *command.row;
    command.isSwitchedOff = isSwitchedOff(&row);
    m_isSelected = selectionBy(command).value_or(m_isSelected);
    if (!m_isSelected)
        return;
    if ((row.traits & CommandRow::EntersRaster) != 0)
        m_isRaster = true;
    if ((row.traits & CommandRow::LeavesRaster) != 0)
        m_isRaster = false;
    if (row.id == CommandId::RealTimeSwitch)
        switchImmediate(command);
    if (row.id == CommandId::Initialize || row.id == CommandId::ResetPrinter) {
        m_isRaster = false;
        m_isPulseOn = true;
        m_isPowerOffOn = false;
    }
}

/// Pairs of a function and whether it works.
void StreamReader::State::switchImmediate(const StreamCommand &command)
{
    const QByteArray pairs = command.payload();
    for (int i = 0; i + 1 < pairs.size(); i += 2) {
        const bool isOn = (pairs.at(i + 1) & 1) != 0;
        if (pairs.at(i) == 1)
            m_isPulseOn = isOn;
        if (pairs.at(i) == 2)
            m_isPowerOffOn = isOn;
    }
}

bool StreamReader::State::isSwitchedOff(const CommandRow *row) const
{
    return (row->id == CommandId::RealTimePulse && !m_isPulseOn) ||
           (row->id == CommandId::RealTimePowerOff && !m_isPowerOffOn);
}

/// The command that the rest begins, as far as it can be told.
const CommandRow *StreamReader::State::incompleteRow() const
{
    if (m_waiting != nullptr)
        return m_waiting;
    const CommandRow *row = m_tree->match(rest(), m_isRaster, false).row;
    return row != nullptr ? row : m_tree->match(rest(), m_isRaster, true).row;
}

/// Takes all that is left. Where operands may be left out, it may be a whole command.
void StreamReader::State::readIncomplete(QVector<StreamCommand> &commands)
{
    const std::string_view bytes = rest();
    const auto size = static_cast<qint64>(bytes.size());
    const CommandTree::Match match = m_tree->match(bytes, m_isRaster, true);
    if (m_waiting == nullptr && match.state == CommandTree::Match::Found &&
        lengthOfCommand(*match.row, bytes, 0).bytes == size) {
        commands.append(take(StreamCommand::Command, match.row, size));
        return;
    }
    const CommandRow *row = incompleteRow();
    const CommandLength length = row == nullptr ? CommandLength() : lengthOfCommand(*row, bytes, 0);
    commands.append(takeIncomplete(row, size, length));
}

StreamCommand StreamReader::State::takeIncomplete(const CommandRow *row, qint64 size,
                                                  const CommandLength &length)
{
    StreamCommand command = take(StreamCommand::Incomplete, row, size);
    command.bytesExpected = length.isKnown ? length.bytes : 0;
    if (row != nullptr)
        findImmediate(command);
    return command;
}

QVector<StreamCommand> StreamReader::State::finish()
{
    QVector<StreamCommand> commands;
    if (!m_bytes.isEmpty())
        readIncomplete(commands);
    *this = State(*m_tree);
    return commands;
}

StreamReader::StreamReader(const PrinterProfile &profile)
    : d(new State(CommandTree::of(profile.dialect(), profile.vendor())))
{}

StreamReader::~StreamReader() = default;

QVector<StreamCommand> StreamReader::read(const QByteArray &bytes)
{
    return d->read(bytes);
}

QVector<StreamCommand> StreamReader::finish()
{
    return d->finish();
}

QVector<StreamCommand> StreamReader::commandsOf(const QByteArray &stream,
                                                const PrinterProfile &profile)
{
    StreamReader reader(profile);
    QVector<StreamCommand> commands = reader.read(stream);
    commands += reader.finish();
    return commands;
}

}  // namespace printerslib::drivers
