#pragma once

#include "job/jobrecord_p.h"
#include "printerslib/drivers/printerprofile.h"
#include "printerslib/drivers/printjobresult.h"
#include "printerslib/drivers/statusdialogue.h"

namespace printerslib::drivers {

/// The confirmation of one job, in the way of its model. Answers that jobs before it didn't wait
/// for come first, as printers answer in the order in which they are asked: behind the automatic
/// status that is asked for in front of the document, none of them can come any more.
///
/// Printers of ESC/POS that keep a macro until they are switched off are given one which asks for
/// the confirmation. It is played at the end, so that one which was off in between can't answer.
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
    /// Ends a macro's definition in which a job was cut off.
    static QByteArray endOfDefinition(const PrinterProfile &profile);

    bool isPossible() const { return m_kind != Confirmation::None; }
    PrintJobResult::Outcome outcome() const;
    State state() const { return m_state; }
    /// Whether being proven also says that the printer wasn't off since the document's begin.
    bool hasMacro() const { return m_hasMacro; }
    /// Whether it has answered, but not by the macro: it was off.
    bool hasLostMacro() const { return m_hasMacro && m_answered > 0 && !m_isRead; }

    /// The bytes in front of the document, of which the end will tell whether the printer was off
    /// in between. The record is that of jobs before, and tells of these then.
    /// @param automatic the bytes that switch the automatic status on; empty: it isn't
    QByteArray beginDocument(JobRecord &record, const QByteArray &automatic);
    /// The bytes that ask, behind the last byte; empty if it can't be asked, or only later by
    /// poll(). The record is that of jobs before, and tells of this one then.
    QByteArray begin(JobRecord &record);
    /// Any answer from the beginning of the job on.
    void take(const StatusAnswer &answer);
    /// What is to be asked next; empty if nothing is.
    QByteArray poll();
    /// Whether that is to be asked at once.
    bool isUrgent() const { return m_isUrgent; }
    bool isBegun() const { return m_isBegun; }
    /// Whether all in front of the question is read.
    bool isRead() const { return m_isRead; }
    /// What of the record holds when the time is over.
    /// @param isHealthy whether the printer says that it can print
    void giveUp(JobRecord &record, bool isHealthy) const;
    static void settle(JobRecord &record);

private:
    QByteArray macroBytes();
    QByteArray playedMacro(int times) const;
    QByteArray askOnce();
    QByteArray question();
    void recordDue(JobRecord &record, int due) const;
    bool isInOrder() const { return m_told > (m_isMacroSent ? 1 : 0); }
    void hasTold();
    void takeConfirmation(const StatusAnswer &answer);
    void judgeStatus();

    const PrinterProfile m_profile;
    Confirmation m_kind;
    Dialect m_dialect;
    StatusDialogue &m_dialogue;
    QByteArray m_mark;  ///< of Star
    State m_state = State::Open;
    QByteArray m_id;
    QByteArray m_lastId;  ///< of the question behind the macro
    int m_counter = -1;   ///< as last told
    int m_expected = -1;  ///< of Star
    int m_awaited = 0;    ///< answers
    int m_answered = 0;   ///< any of them
    int m_before = 0;     ///< that were due before, from beginDocument() on
    int m_clean = 0;      ///< answers in a row without data
    int m_told = 0;       ///< automatic statuses that were asked for
    int m_played = 0;     ///< answers to the macro in front of the document
    bool m_isDocumentBegun = false;
    bool m_isOrderKnown = false;  ///< by the automatic status
    bool m_isMacroSent = false;
    bool m_hasMacro = false;  ///< and the printer plays it
    bool m_isBegun = false;
    bool m_isDeferred = false;  ///< the question waits for the macro's answers
    bool m_isRead = false;
    bool m_isUrgent = false;
};

}  // namespace printerslib::drivers
