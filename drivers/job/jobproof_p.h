#pragma once

#include "job/jobrecord_p.h"
#include "printerslib/drivers/printerprofile.h"
#include "printerslib/drivers/printjobresult.h"
#include "printerslib/drivers/statusdialogue.h"

namespace printerslib::drivers {

/// The confirmation of one job, in the way of its model. Answers that jobs before it didn't wait
/// for come first, as printers answer in the order in which they are asked.
class JobProof
{
public:
    enum class State {
        Open,     ///< not known yet
        Proven,   ///< outcome() holds
        Refuted,  ///< the printer read all, and has an error behind it
    };

    /// @param dialogue outlives this
    JobProof(const PrinterProfile &profile, StatusDialogue &dialogue);

    /// Whether an answer of the status is to come. What a printer tells by itself, and what it
    /// confirms, comes when it comes.
    static bool isStatusDue(const StatusDialogue &dialogue, Dialect dialect);

    bool isPossible() const { return m_kind != Confirmation::None; }
    PrintJobResult::Outcome outcome() const;
    State state() const { return m_state; }

    /// What the printer has counted before the job.
    void noteCounter(int counter) { m_counter = counter; }
    /// The bytes in front of the document, of which the end will tell whether the printer was off
    /// in between. The record is that of jobs before, and tells of these then.
    QByteArray beginDocument(JobRecord &record);
    /// The bytes that ask, behind the last byte. The record is that of jobs before, and tells of
    /// this one then.
    QByteArray begin(JobRecord &record);
    void take(const StatusAnswer &answer);
    /// What is to be asked next; empty if nothing is.
    QByteArray poll();
    /// Whether that is to be asked at once.
    bool isUrgent() const { return m_isUrgent; }
    bool isBegun() const { return m_isBegun; }
    /// What of the record holds when the time is over.
    /// @param isHealthy whether the printer says that it can print
    void giveUp(JobRecord &record, bool isHealthy) const;
    static void settle(JobRecord &record);

private:
    void judgeStatus();

    Confirmation m_kind;
    Dialect m_dialect;
    StatusDialogue &m_dialogue;
    QByteArray m_mark;  ///< of Star
    State m_state = State::Open;
    QByteArray m_id;
    int m_counter = -1;   ///< as last told
    int m_expected = -1;  ///< of Star
    int m_awaited = 0;    ///< answers of GS r
    int m_answered = 0;   ///< any of them
    int m_before = 0;     ///< that were due before, from beginDocument() on
    int m_clean = 0;      ///< answers in a row without data
    bool m_isBegun = false;
    bool m_isRead = false;
    bool m_isUrgent = false;
};

}  // namespace printerslib::drivers
