#include "job/jobproof_p.h"

#include <QRandomGenerator>
#include <algorithm>

#include "encoder/commandbytes_p.h"

namespace printerslib::drivers {

namespace {

constexpr int counterModulus = 32;
/// The first may be the late answer to a question of a job before.
constexpr int cleanAnswers = 2;
/// How often the macro is played in front of a document. Some printers also obey it while it is
/// defined: with two, each number of answers says whether they play it.
constexpr int rounds = 2;
constexpr int mostMacroAnswers = 1 + rounds;

QByteArray randomId()
{
    constexpr int size = 4;
    QByteArray id;
    for (int i = 0; i < size; ++i)
        id.append(char(QRandomGenerator::global()->bounded(0x21, 0x7F)));
    return id;
}

}  // namespace

JobProof::JobProof(const PrinterProfile &profile, StatusDialogue &dialogue)
    : m_profile(profile),
      m_kind(profile.confirmation()),
      m_dialect(profile.dialect()),
      m_dialogue(dialogue)
{
    CommandBytes(profile, m_mark).put(CommandId::EtbMark);
}

bool JobProof::isStatusDue(const StatusDialogue &dialogue, Dialect dialect)
{
    const QVector<StatusQuestion> due = dialogue.expected();
    return std::any_of(due.begin(), due.end(), [dialect](StatusQuestion question) {
        return question != StatusQuestion::BufferRead && question != StatusQuestion::Response &&
               (question != StatusQuestion::Automatic || dialect != Dialect::EscPos);
    });
}

PrintJobResult::Outcome JobProof::outcome() const
{
    return m_kind == Confirmation::Processed ? PrintJobResult::Outcome::Processed
                                             : PrintJobResult::Outcome::Printed;
}

QByteArray JobProof::endOfDefinition(const PrinterProfile &profile)
{
    QByteArray bytes;
    if (profile.keepsMacro())
        CommandBytes(profile, bytes).put(CommandId::MacroExecution, 0, 0, 0);
    return bytes;
}

/// Star's counter begins anew with the power, so that the one mark behind the document would make
/// it 1, whatever it was. It is to be another number, and so it is counted on in front.
QByteArray JobProof::beginDocument(JobRecord &record, const QByteArray &automatic)
{
    m_isDocumentBegun = true;
    m_before = record.due;
    // One that tells by itself already may do so again in front of the late answers.
    m_isOrderKnown = !automatic.isEmpty() && m_told == 0;
    m_told = 0;
    if (m_isOrderKnown && m_profile.keepsMacro() && isPossible()) {
        m_isMacroSent = true;
        recordDue(record, m_before + mostMacroAnswers);
        return automatic + macroBytes() + automatic;
    }
    if (m_kind != Confirmation::StarCounter || m_counter < 0)
        return automatic;
    const int base = record.due > 0 && record.counter >= 0 ? record.counter : m_counter;
    const int marks = (base + 1) % counterModulus == 0 ? 2 : 1;
    m_expected = (base + marks + 1) % counterModulus;
    record.counter = (base + marks) % counterModulus;
    record.due = std::min(record.due + 1, JobRecord::mostDue);
    return m_mark.repeated(marks);
}

QByteArray JobProof::macroBytes()
{
    m_id = randomId();
    QByteArray ends;
    CommandBytes(m_profile, ends).put(CommandId::MacroDefinition);
    QByteArray asked;
    for (int i = 0; i < m_before + mostMacroAnswers; ++i)
        asked = askOnce();
    return ends + asked + ends + playedMacro(rounds);
}

QByteArray JobProof::playedMacro(int times) const
{
    QByteArray bytes;
    CommandBytes(m_profile, bytes).put(CommandId::MacroExecution, times, 0, 0);
    return bytes;
}

QByteArray JobProof::askOnce()
{
    return m_kind == Confirmation::ResponseId ? m_dialogue.askResponse(m_id)
                                              : m_dialogue.ask(StatusQuestion::BufferRead);
}

QByteArray JobProof::begin(JobRecord &record)
{
    m_isBegun = isPossible() && (m_kind != Confirmation::StarCounter || m_expected >= 0);
    switch (m_kind) {
        case Confirmation::None:
            return {};
        case Confirmation::SwecoinData:
            return poll();
        case Confirmation::StarCounter:
            if (m_expected < 0)
                return {};
            record.counter = m_expected;
            return m_mark;
        case Confirmation::ResponseId:
        case Confirmation::Processed:
            break;
    }
    m_isDeferred = m_isMacroSent && !isInOrder();
    QByteArray asked = m_isDeferred ? QByteArray() : question();
    recordDue(record, m_isDeferred ? m_before + mostMacroAnswers : m_awaited);
    return asked;
}

/// Answers that may still come to a job behind this one. Those with an id are told apart.
void JobProof::recordDue(JobRecord &record, int due) const
{
    if (m_kind == Confirmation::Processed)
        record.due = std::clamp(due, 0, JobRecord::mostDue);
}

/// Behind the macro the same is asked once without it: answered alone, the macro has gone.
QByteArray JobProof::question()
{
    m_hasMacro = m_isMacroSent && m_played >= rounds;
    const QByteArray played = m_hasMacro ? playedMacro(1) : QByteArray();
    m_awaited = m_before + (m_hasMacro ? 2 : 1);
    m_answered = 0;
    if (m_hasMacro) {
        askOnce();
        m_lastId = randomId();
        if (m_kind == Confirmation::ResponseId)
            return played + m_dialogue.askResponse(m_lastId);
    }
    if (m_kind == Confirmation::ResponseId) {
        m_id = randomId();
        return askOnce();
    }
    // Those that are due already aren't asked for again, but have to be expected.
    QByteArray asked;
    for (int i = 0; i <= m_before; ++i)
        asked = askOnce();
    return played + asked;
}

QByteArray JobProof::poll()
{
    m_isUrgent = false;
    if (m_state != State::Open)
        return {};
    if (m_isDeferred) {
        m_isDeferred = !isInOrder();
        return m_isDeferred ? QByteArray() : question();
    }
    const bool asks = (m_kind == Confirmation::Processed && m_isRead) ||
                      m_kind == Confirmation::StarCounter || m_kind == Confirmation::SwecoinData;
    if (!asks || (m_kind == Confirmation::SwecoinData && isStatusDue(m_dialogue, m_dialect)))
        return {};
    return m_dialogue.askStatus();
}

void JobProof::take(const StatusAnswer &answer)
{
    if (m_state != State::Open)
        return;
    if (answer.counter >= 0)
        m_counter = answer.counter;
    if (answer.question == StatusQuestion::Automatic && m_dialect == Dialect::EscPos)
        hasTold();
    const bool confirms = answer.question == StatusQuestion::BufferRead ||
                          answer.question == StatusQuestion::Response;
    if (!m_isBegun || m_isDeferred)
        m_played += confirms && (answer.id.isEmpty() || answer.id == m_id) ? 1 : 0;
    else if (confirms)
        takeConfirmation(answer);
    else if (m_kind == Confirmation::StarCounter)
        m_state = m_counter >= 0 && m_counter == m_expected ? State::Proven : State::Open;
    else if (!isStatusDue(m_dialogue, m_dialect))
        judgeStatus();
}

/// Answers in front of the first automatic status aren't this job's.
void JobProof::hasTold()
{
    m_told++;
    const bool isFirst = m_isDocumentBegun && m_isOrderKnown && m_told == 1;
    if (isFirst)
        m_played = 0;
    if (isFirst && m_before > 0) {
        m_awaited -= m_before;
        m_before = 0;
        m_answered = 0;
        m_isRead = false;
        m_isUrgent = false;
    }
    m_isUrgent = m_isUrgent || (m_isDeferred && isInOrder());
}

void JobProof::takeConfirmation(const StatusAnswer &answer)
{
    if (answer.question == StatusQuestion::BufferRead) {
        m_answered++;
        m_isRead = m_answered >= m_awaited;
        m_isUrgent = m_isRead;
    } else if (answer.id == m_id) {
        m_state = State::Proven;
    } else if (m_hasMacro && answer.id == m_lastId) {
        m_answered++;
        m_state = State::Refuted;
    }
}

/// Behind the last answer to a question for the whole status.
void JobProof::judgeStatus()
{
    const PrinterStatus status = m_dialogue.status();
    if (m_kind == Confirmation::Processed && m_isRead) {
        m_state = status.canPrint() ? State::Proven : State::Refuted;
    } else if (m_kind == Confirmation::SwecoinData) {
        const bool isClean = status.canPrint() && !status.has(PrinterStatus::PrintDataExists);
        m_clean = isClean ? m_clean + 1 : 0;
        m_isUrgent = isClean;
        if (status.has(PrinterStatus::PowerWasOff) || status.has(PrinterStatus::DataLost))
            m_state = State::Refuted;
        else if (m_clean >= cleanAnswers)
            m_state = State::Proven;
    }
}

/// Answers that a job in front waited for in vain, and this one too, on a printer that is well,
/// were lost with its power. To go on waiting for them would spoil each job from now on.
void JobProof::giveUp(JobRecord &record, bool isHealthy) const
{
    if (!m_isBegun)
        return;
    const bool isStar = m_kind == Confirmation::StarCounter;
    if (m_before > 0 && isHealthy && (isStar || m_answered > 0))
        settle(record);
    else
        recordDue(record, (m_isDeferred ? m_before + mostMacroAnswers : m_awaited) - m_answered);
}

void JobProof::settle(JobRecord &record)
{
    record.due = 0;
    record.counter = -1;
}

}  // namespace printerslib::drivers
