#include "printerdevice.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "clockunits.h"
#include "commandsets/commandrow_p.h"

using printerslib::drivers::CommandId;
using printerslib::drivers::CommandRow;
using printerslib::drivers::Confirmation;
using printerslib::drivers::Dialect;
using printerslib::drivers::Paper;
using printerslib::drivers::PrinterProfile;
using printerslib::drivers::StreamCommand;
using printerslib::drivers::StreamReader;

namespace {

constexpr char dle = 0x10;
constexpr char esc = 0x1B;
constexpr char eot = 0x04;
// DLE DC4 8 is the longest of those that act at once.
constexpr int longestAtOnce = 10;
constexpr int marksOfEtb = 32;
constexpr double millimetresPerInch = 25.4;

/// Room that makes a printer busy, and that which ends it.
struct BusyLimits
{
    int busy;
    int free;
};

constexpr BusyLimits limitsOf(int bufferBytes)
{
    constexpr int smallBuffer = 256;
    return bufferBytes > smallBuffer ? BusyLimits{128, 256} : BusyLimits{16, 26};
}

bool actsAtOnce(const StreamCommand &command)
{
    return command.row != nullptr && (command.row->traits & CommandRow::ActsAtOnce) != 0;
}

// What is answered as soon as the buffer is read up to it, be the head busy or not.
constexpr CommandId questionsAhead[] = {
    CommandId::Identification,  CommandId::TransmitStatus,  CommandId::PaperStatus,
    CommandId::DrawerStatus,    CommandId::AutomaticStatus, CommandId::StatusRequest,
    CommandId::ParameterStatus,
};

bool runsAhead(const StreamCommand &command)
{
    return command.kind == StreamCommand::Command &&
           (actsAtOnce(command) || std::find(std::begin(questionsAhead), std::end(questionsAhead),
                                             command.row->id) != std::end(questionsAhead));
}

/// Ends what is being defined, and defines nothing.
QByteArray noMacro()
{
    return QByteArray("\x1D^\0\0\0\x1D:\x1D:", 9);
}

/// The command that acts at once at the beginning of some bytes. Nothing, and `waits`, if they may
/// become one.
std::optional<StreamCommand> commandAtOnce(const QByteArray &bytes, const PrinterProfile &profile,
                                           bool *waits)
{
    const StreamCommand command = StreamReader::commandsOf(bytes, profile).value(0);
    *waits = false;
    if (command.kind == StreamCommand::Command && actsAtOnce(command))
        return command;
    *waits = command.kind == StreamCommand::Incomplete && bytes.size() < longestAtOnce &&
             (command.row == nullptr || actsAtOnce(command));
    return std::nullopt;
}

QByteArray resetOf(Dialect dialect)
{
    return dialect == Dialect::Swecoin ? QByteArray("\x1B?") : QByteArray("\x1B@");
}

QByteArray masked(const QByteArray &bytes, const QByteArray &mask)
{
    QByteArray result = bytes;
    for (int i = 0; i < result.size() && i < mask.size(); ++i)
        result[i] = static_cast<char>(result.at(i) & mask.at(i));
    return result;
}

}  // namespace

PrinterDevice::PrinterDevice(const PrinterProfile &profile, const Options &options)
    : m_profile(profile),
      m_options(options),
      m_bufferBytes(options.bufferBytes > 0     ? options.bufferBytes
                    : profile.bufferBytes() > 0 ? profile.bufferBytes()
                                                : usualBuffer),
      m_reader(profile),
      m_interpreter(profile, options.print),
      m_random(options.seed)
{}

// What comes in.

void PrinterDevice::take(const QByteArray &bytes)
{
    for (int at = 0; at < bytes.size();) {
        qint64 part = bytes.size() - at;
        for (const PlannedFault &planned : qAsConst(m_plan)) {
            if (planned.clock == PlannedFault::Bytes)
                part = std::min(part, planned.at - m_received);
        }
        const QByteArray arrived = bytes.mid(at, static_cast<int>(part));
        at += arrived.size();
        m_received += arrived.size();
        const QByteArray read = spoil(arrived);
        if (m_hardware.isPowered)
            takeArrived(read);
        applyDue();
    }
}

/// What becomes of bytes on the line.
QByteArray PrinterDevice::spoil(const QByteArray &bytes)
{
    std::uniform_int_distribution<int> flippedBits(1, 255);
    const int swallowed = std::min(m_toSwallow, bytes.size());
    m_toSwallow -= swallowed;
    QByteArray read = bytes.mid(swallowed);
    const int changed = std::min(m_toChange, read.size());
    m_toChange -= changed;
    for (int i = 0; i < changed; ++i)
        read[i] = static_cast<char>(read.at(i) ^ flippedBits(m_random));
    return read;
}

/// Finds what acts at once, wherever it stands; all bytes go to the buffer, too.
void PrinterDevice::takeArrived(const QByteArray &bytes)
{
    const char introducer = m_profile.dialect() == Dialect::StarLine ? esc : dle;
    int accepted = m_scanned.size();
    m_scanned += bytes;
    // What is done at once may end what is scanned here.
    const QByteArray scanned = m_scanned;
    const bool hasNone = m_profile.dialect() == Dialect::Swecoin;
    int at = hasNone ? -1 : scanned.indexOf(introducer);
    while (at >= 0) {
        bool waits = false;
        const auto command = commandAtOnce(scanned.mid(at, longestAtOnce), m_profile, &waits);
        if (waits)
            break;
        int next = at + 1;
        if (command) {
            next = at + command->bytes.size();
            accept(scanned.mid(accepted, std::max(0, at - accepted)));
            accepted = std::max(accepted, at);
            answerAtOnce(*command);
            accept(scanned.mid(accepted, next - accepted));
            accepted = next;
        }
        at = scanned.indexOf(introducer, next);
    }
    accept(scanned.mid(accepted));
    m_scanned = at >= 0 ? scanned.mid(at) : QByteArray();
}

/// What doesn't fit is thrown away, as soon as the head can't make room at once.
void PrinterDevice::accept(const QByteArray &bytes)
{
    for (int at = 0; at < bytes.size();) {
        const int part = std::min(room(), bytes.size() - at);
        if (part <= 0) {
            m_lost += bytes.size() - at;
            m_lostUntold += bytes.size() - at;
            m_hasOverflown = true;
            break;
        }
        acceptPart(bytes.mid(at, part));
        at += part;
    }
    updateRoom();
}

void PrinterDevice::acceptPart(const QByteArray &bytes)
{
    m_tail += bytes.size();
    m_waiting += bytes.size();
    const QVector<StreamCommand> commands = m_reader.read(bytes);
    for (const StreamCommand &command : commands) {
        const int size = command.bytes.size();
        m_tail -= size;
        m_commands.append({command, size - m_tailTaken});
        m_tailTaken = 0;
        work();
        answerAsRead(command);
    }
    work();
}

int PrinterDevice::room() const
{
    return m_bufferBytes - m_waiting;
}

void PrinterDevice::updateRoom()
{
    const BusyLimits limits = limitsOf(m_bufferBytes);
    m_isBusy = room() <= (m_isBusy ? limits.free - 1 : limits.busy);
}

// What becomes of it.

void PrinterDevice::work()
{
    while (!m_commands.isEmpty() && !m_hardware.isStopped() &&
           (m_freeAt <= m_now || runsAhead(m_commands.constFirst().command)))
        execute(m_commands.takeFirst());
    // The data of a command is taken up as it comes in.
    if (m_commands.isEmpty() && !m_hardware.isStopped() && m_freeAt <= m_now) {
        m_waiting -= m_tail - m_tailTaken;
        m_tailTaken = m_tail;
    }
    updateRoom();
}

void PrinterDevice::execute(const Waiting &next)
{
    const StreamCommand &command = next.command;
    m_waiting -= next.bytes;
    if (command.kind == StreamCommand::Command)
        answerInTurn(command);
    const qint64 before = m_interpreter.dotsFed();
    m_papers += m_interpreter.read(command.bytes);
    const qint64 dots = qAbs(m_interpreter.dotsFed() - before);
    if (command.kind == StreamCommand::Text && m_isSelected)
        m_hasOpenLine = true;
    if (dots == 0)
        return;
    m_hasOpenLine = false;
    if (m_options.millimetresPerSecond > 0)
        m_freeAt = std::max(m_freeAt, m_now) +
                   qRound64(double(dots) * clockunits::perSecond * millimetresPerInch /
                            (m_profile.dotsPerInch() * m_options.millimetresPerSecond));
}

bool PrinterDevice::hasPrintData() const
{
    return m_hasOpenLine || m_tail > 0 || m_freeAt > m_now || m_stillToDo > 0 ||
           std::any_of(m_commands.begin(), m_commands.end(),
                       [](const Waiting &waiting) { return !runsAhead(waiting.command); });
}

bool PrinterDevice::isIdle() const
{
    return !hasPrintData() && m_commands.isEmpty();
}

QVector<Paper> PrinterDevice::takePapers()
{
    QVector<Paper> papers;
    papers.swap(m_papers);
    return papers;
}

QVector<Paper> PrinterDevice::finish()
{
    m_papers += m_interpreter.finish();
    return takePapers();
}

void PrinterDevice::clearBuffer()
{
    m_commands.clear();
    m_reader.finish();
    m_tail = 0;
    m_tailTaken = 0;
    m_waiting = 0;
    updateRoom();
}

// Answers.

void PrinterDevice::answer(const QByteArray &bytes)
{
    if (!bytes.isEmpty() && !m_isMute && m_hardware.isPowered)
        m_answers.append({m_now + clockunits::perMillisecond * m_answersLate, bytes});
}

QByteArray PrinterDevice::takeAnswers()
{
    QByteArray bytes;
    while (!m_answers.isEmpty() && m_answers.constFirst().due <= m_now)
        bytes += m_answers.takeFirst().bytes;
    return bytes;
}

void PrinterDevice::answerAtOnce(const StreamCommand &command)
{
    constexpr int fullStatusNumber = 20;
    const bool asks = command.row->id == CommandId::RealTimeStatus;
    if (asks && m_profile.dialect() == Dialect::StarLine)
        answer(statusbytes::starStatus(m_hardware, m_marks, m_hasOverflown));
    else if (asks && command.bytes.at(1) == eot && command.operand(0) == fullStatusNumber)
        answer(statusbytes::fullStatus(m_hardware));
    else if (asks && command.bytes.at(1) == eot)
        answer(statusbytes::realTimeStatus(command.operand(0), m_hardware));
    else if (command.row->id == CommandId::RealTimeRequest && command.operand(0) != 0)
        recover(command.operand(0) == 2);
    else if (command.row->id == CommandId::RealTimeClear) {
        clearBuffer();
        answer(QByteArray("\x37\x25\x00", 3));
    }
}

/// DLE ENQ: ends the error of the cutter, and nothing else.
void PrinterDevice::recover(bool clearsBuffer)
{
    if (!m_hardware.isCutterJammed)
        return;
    if (clearsBuffer)
        clearBuffer();
    apply({PrinterFault::CutterRepaired, 0});
}

/// Swecoin's printers answer ahead of what waits.
void PrinterDevice::answerAsRead(const StreamCommand &command)
{
    if (command.kind != StreamCommand::Command || command.row->id != CommandId::StatusRequest ||
        m_profile.dialect() != Dialect::Swecoin)
        return;
    switch (command.operand(0)) {
        case 1:
            answer(statusbytes::swecoinError(m_hardware));
            return;
        case 2:
            answer(QByteArray(1, m_hardware.seesNearEnd() ? '\x01' : '\x00'));
            return;
        case 6:
            answer(statusbytes::swecoinStatus(m_hardware, hasPrintData(), m_wasOff));
            m_wasOff = false;
            return;
        case 7:
            answer(QByteArray("\x01\x0C", 2));
            return;
        default:
            return;
    }
}

void PrinterDevice::answerInTurn(const StreamCommand &command)
{
    if (command.row->id == CommandId::PrinterSelect)
        m_isSelected = command.row->operandCount == 0 || (command.operand(0) & 1) != 0;
    else if (command.row->id == CommandId::PrinterDeselect)
        m_isSelected = false;
    if (!m_isSelected)
        return;
    switch (m_profile.dialect()) {
        case Dialect::EscPos:
            answerEscPos(command);
            followMacro(command);
            return;
        case Dialect::StarLine:
            answerStar(command);
            return;
        case Dialect::Swecoin:
            if (command.row->id == CommandId::Acknowledge)
                answer(command.bytes.right(1));
            return;
    }
}

void PrinterDevice::answerEscPos(const StreamCommand &command)
{
    constexpr int statusOperands = 4;  // in front of the job's number
    constexpr int numberBytes = 4;
    const int choice = command.operand(0) & 0x0F;
    switch (command.row->id) {
        case CommandId::Identification:
            answer(statusbytes::identification(command.operand(0), m_profile));
            return;
        case CommandId::TransmitStatus:
            if (command.row->operandCount > 0 && (choice == 1 || choice == 2))
                answer(choice == 1 ? statusbytes::paperStatus(m_hardware) : QByteArray(1, '\0'));
            return;
        case CommandId::PaperStatus:
            answer(statusbytes::paperStatus(m_hardware));
            return;
        case CommandId::DrawerStatus:
            answer(QByteArray(1, '\0'));
            return;
        case CommandId::AutomaticStatus:
            switchAutomaticStatus(command.operand(0), statusbytes::automaticStatus(m_hardware));
            return;
        case CommandId::RequestResponse:
            if (m_profile.confirmation() == Confirmation::ResponseId)
                answer("\x37\x22" +
                       command.bytes.mid(command.operandsBegin + statusOperands, numberBytes) +
                       '\0');
            return;
        case CommandId::Initialize:
            m_automaticMode = 0;
            m_hasOpenLine = false;
            return;
        default:
            return;
    }
}

/// The questions of a macro are answered while it is being defined, and when it is played.
void PrinterDevice::followMacro(const StreamCommand &command)
{
    const CommandId id = command.row->id;
    if (id == CommandId::MacroDefinition) {
        m_isMacroOpen = !m_isMacroOpen;
        if (m_isMacroOpen)
            m_macro.clear();
    } else if (id == CommandId::MacroExecution && m_isMacroOpen) {
        m_isMacroOpen = false;
        m_macro.clear();
    } else if (id == CommandId::MacroExecution) {
        for (int i = 0; i < command.operand(0) * m_macro.size(); ++i)
            answerEscPos(m_macro.at(i % m_macro.size()));
    } else if (m_isMacroOpen &&
               (id == CommandId::TransmitStatus || id == CommandId::RequestResponse)) {
        m_macro.append(command);
    }
}

void PrinterDevice::answerStar(const StreamCommand &command)
{
    switch (command.row->id) {
        case CommandId::StatusRequest:
            answer(QByteArray(1, '\0'));
            return;
        case CommandId::AutomaticStatus:
            switchAutomaticStatus(command.operand(0) & 1,
                                  statusbytes::starStatus(m_hardware, m_marks, m_hasOverflown));
            return;
        case CommandId::EtbMark:
            m_marks = (m_marks + 1) % marksOfEtb;
            tellChange();
            return;
        case CommandId::EtbReset:
        case CommandId::CancelData:
            m_marks = 0;
            m_toldStatus = statusbytes::starStatus(m_hardware, m_marks, m_hasOverflown);
            return;
        case CommandId::Initialize:
            m_hasOpenLine = false;
            return;
        default:
            return;
    }
}

void PrinterDevice::switchAutomaticStatus(int mode, const QByteArray &status)
{
    m_automaticMode = mode;
    if (mode == 0)
        return;
    m_toldStatus = status;
    answer(status);
}

/// The automatic status, if what it tells of has changed.
void PrinterDevice::tellChange()
{
    if (m_automaticMode == 0)
        return;
    const bool isStar = m_profile.dialect() == Dialect::StarLine;
    const QByteArray status = isStar ? statusbytes::starStatus(m_hardware, m_marks, m_hasOverflown)
                                     : statusbytes::automaticStatus(m_hardware);
    const QByteArray mask = isStar ? QByteArray(status.size(), '\xFF')
                                   : statusbytes::automaticStatusMask(m_automaticMode);
    const bool hasChanged = masked(status, mask) != masked(m_toldStatus, mask);
    m_toldStatus = status;
    if (hasChanged)
        answer(status);
}

// Time.

void PrinterDevice::advanceTo(qint64 microseconds)
{
    applyDue();
    work();
    qint64 next = nextEvent();
    while (next >= 0 && next <= microseconds && next > m_now) {
        m_now = next;
        applyDue();
        work();
        next = nextEvent();
    }
    m_now = std::max(m_now, microseconds);
}

qint64 PrinterDevice::nextEvent() const
{
    qint64 next = -1;
    const auto consider = [&next](qint64 time) { next = next < 0 ? time : std::min(next, time); };
    if (m_freeAt > m_now && !m_hardware.isStopped())
        consider(m_freeAt);
    for (const Answer &answer : m_answers) {
        if (answer.due > m_now)
            consider(answer.due);
    }
    for (const PlannedFault &planned : m_plan) {
        if (planned.clock == PlannedFault::Microseconds)
            consider(planned.at);
    }
    return next;
}

// Faults.

void PrinterDevice::plan(const PlannedFault &fault)
{
    m_plan.append(fault);
    applyDue();
}

void PrinterDevice::applyDue()
{
    const auto isDue = [this](const PlannedFault &planned) {
        return planned.at <= (planned.clock == PlannedFault::Bytes ? m_received : m_now);
    };
    auto due = std::find_if(m_plan.begin(), m_plan.end(), isDue);
    while (due != m_plan.end()) {
        const PrinterFault fault = due->fault;
        m_plan.erase(due);
        apply(fault);
        due = std::find_if(m_plan.begin(), m_plan.end(), isDue);
    }
}

void PrinterDevice::apply(const PrinterFault &fault)
{
    PrinterHardware hardware = m_hardware;
    switch (fault.kind) {
        case PrinterFault::PaperOut:
            hardware.hasPaper = false;
            break;
        case PrinterFault::PaperBack:
            hardware.hasPaper = true;
            hardware.isNearEnd = false;
            break;
        case PrinterFault::NearEnd:
            hardware.isNearEnd = true;
            break;
        case PrinterFault::CoverOpen:
        case PrinterFault::CoverClosed:
            hardware.isCoverOpen = fault.kind == PrinterFault::CoverOpen;
            break;
        case PrinterFault::CutterError:
        case PrinterFault::CutterRepaired:
            hardware.isCutterJammed = fault.kind == PrinterFault::CutterError;
            break;
        case PrinterFault::OffLine:
        case PrinterFault::OnLine:
            hardware.isSwitchedOffLine = fault.kind == PrinterFault::OffLine;
            break;
        case PrinterFault::PowerOff:
            switchOff();
            return;
        case PrinterFault::PowerOn:
            hardware.isPowered = true;
            break;
        default:
            applyToLine(fault);
            return;
    }
    setHardware(hardware);
}

void PrinterDevice::applyToLine(const PrinterFault &fault)
{
    switch (fault.kind) {
        case PrinterFault::ResetConnection:
            m_hasReset = true;
            return;
        case PrinterFault::AnswersLate:
            m_answersLate = fault.value;
            return;
        case PrinterFault::AnswersNever:
            m_isMute = true;
            m_answers.clear();
            return;
        case PrinterFault::AnswersAgain:
            m_isMute = false;
            m_answersLate = 0;
            return;
        case PrinterFault::Swallow:
            m_toSwallow = fault.value;
            return;
        case PrinterFault::Change:
            m_toChange = fault.value;
            return;
        default:
            return;
    }
}

void PrinterDevice::setHardware(const PrinterHardware &hardware)
{
    const bool wasStopped = m_hardware.isStopped();
    m_hardware = hardware;
    if (!wasStopped && m_hardware.isStopped())
        m_stillToDo = std::max<qint64>(0, m_freeAt - m_now);
    if (wasStopped && !m_hardware.isStopped()) {
        m_freeAt = m_now + m_stillToDo;
        m_stillToDo = 0;
    }
    tellChange();
    work();
}

/// What hangs in the printer then is a piece of its own.
void PrinterDevice::switchOff()
{
    if (!m_hardware.isPowered)
        return;
    clearBuffer();
    m_scanned.clear();
    m_papers += m_interpreter.read(resetOf(m_profile.dialect()));
    if (m_profile.dialect() == Dialect::EscPos)
        m_papers += m_interpreter.read(noMacro());
    m_macro.clear();
    m_isMacroOpen = false;
    m_papers += m_interpreter.finish();
    m_hardware.isPowered = false;
    m_hardware.isSwitchedOffLine = false;
    m_answers.clear();
    m_automaticMode = 0;
    m_marks = 0;
    m_hasOverflown = false;
    m_hasOpenLine = false;
    m_isSelected = true;
    m_wasOff = true;
    m_freeAt = m_now;
    m_stillToDo = 0;
}

bool PrinterDevice::takeReset()
{
    return std::exchange(m_hasReset, false);
}

QStringList PrinterDevice::takeNotes()
{
    QStringList notes;
    if (m_lostUntold > 0)
        notes.append(QStringLiteral("lost: %1 bytes, as the buffer of %2 was full")
                         .arg(m_lostUntold)
                         .arg(m_bufferBytes));
    m_lostUntold = 0;
    return notes;
}
