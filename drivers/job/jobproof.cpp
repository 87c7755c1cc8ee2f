#include "job/jobproof_p.h"

#include <QRandomGenerator>
#include <algorithm>

#include "encoder/commandbytes_p.h"

namespace printerslib::drivers {

namespace {

constexpr int counterModulus = 32;
/// The first may be the late answer to a question of a job before.
constexpr int cleanAnswers = 2;

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
    : m_kind(profile.confirmation()), m_dialect(profile.dialect()), m_dialogue(dialogue)
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

/// Star's counter begins anew with the power, so that the one mark behind the document would make
/// it 1, whatever it was. It is to be another number, and so it is counted on in front.
QByteArray JobProof::beginDocument(JobRecord &record)
{
    m_before = record.due;
    if (m_kind != Confirmation::StarCounter || m_counter < 0)
        return {};
    const int base = record.due > 0 && record.counter >= 0 ? record.counter : m_counter;
    const int marks = (base + 1) % counterModulus == 0 ? 2 : 1;
    m_expected = (base + marks + 1) % counterModulus;
    record.counter = (base + marks) % counterModulus;
    record.due = std::min(record.due + 1, JobRecord::mostDue);
    return m_mark.repeated(marks);
}

QByteArray JobProof::begin(JobRecord &record)
{
    m_isBegun = isPossible() && (m_kind != Confirmation::StarCounter || m_expected >= 0);
    switch (m_kind) {
        case Confirmation::None:
            return {};
        case Confirmation::SwecoinData:
            return poll();
        case Confirmation::ResponseId:
            m_id = randomId();
            return m_dialogue.askResponse(m_id);
        case Confirmation::StarCounter:
            if (m_expected < 0)
                return {};
            record.counter = m_expected;
            return m_mark;
        case Confirmation::Processed:
            break;
    }
    // Those that are due already aren't asked for again, but have to be expected.
    QByteArray question;
    for (m_awaited = 0; m_awaited <= m_before; ++m_awaited)
        question = m_dialogue.ask(StatusQuestion::BufferRead);
    record.due = std::min(m_before + 1, JobRecord::mostDue);
    return question;
}

QByteArray JobProof::poll()
{
    m_isUrgent = false;
    const bool asks = (m_kind == Confirmation::Processed && m_isRead) ||
                      m_kind == Confirmation::StarCounter || m_kind == Confirmation::SwecoinData;
    if (!asks || m_state != State::Open)
        return {};
    if (m_kind == Confirmation::SwecoinData && isStatusDue(m_dialogue, m_dialect))
        return {};
    return m_dialogue.askStatus();
}

void JobProof::take(const StatusAnswer &answer)
{
    if (m_state != State::Open)
        return;
    if (answer.question == StatusQuestion::BufferRead) {
        m_answered++;
        m_isRead = m_answered >= m_awaited;
        m_isUrgent = m_isRead;
    } else if (answer.question == StatusQuestion::Response) {
        if (answer.id == m_id)
            m_state = State::Proven;
    } else if (m_kind == Confirmation::StarCounter) {
        m_counter = answer.counter;
        if (m_counter >= 0 && m_counter == m_expected)
            m_state = State::Proven;
    } else if (!isStatusDue(m_dialogue, m_dialect)) {
        judgeStatus();
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
    else if (m_kind == Confirmation::Processed)
        record.due = std::clamp(m_before + 1 - m_answered, 0, JobRecord::mostDue);
}

void JobProof::settle(JobRecord &record)
{
    record.due = 0;
    record.counter = -1;
}

}  // namespace printerslib::drivers
