#pragma once

#include <QObject>
#include <QTimer>
#include <memory>
#include <optional>

#include "job/jobend_p.h"
#include "job/jobproof_p.h"
#include "job/jobrecord_p.h"
#include "job/jobrepair_p.h"
#include "job/jobstream_p.h"
#include "printerslib/drivers/devicelock.h"
#include "printerslib/drivers/printjoboptions.h"
#include "printerslib/drivers/printjobresult.h"
#include "printerslib/drivers/transport.h"

namespace printerslib::drivers {

/// The steps of a job. What it tells comes out of the event loop, so that no step goes on behind a
/// slot that has deleted it.
class JobRun : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        EncodedDocument document;
        PrinterProfile profile;
        PrintJobOptions options;
        std::unique_ptr<Transport> transport;
        std::unique_ptr<DeviceLock> lock;
        int second = 1000;
    };

    explicit JobRun(Parts parts);
    ~JobRun() override;

    void start();
    void cancel();
    bool isFinished() const { return m_step >= Step::Finished; }
    bool isRetracting() const { return m_step > Step::Finished; }
    PrintJobResult result() const { return m_result; }

Q_SIGNALS:
    void waiting(int ahead);
    void progress(qint64 sent, qint64 total);
    void statusChanged(const printerslib::drivers::PrinterStatus &status);
    void note(const QString &text);
    void finished(const printerslib::drivers::PrintJobResult &result);
    void retracted(bool isDone);

private:
    using Outcome = PrintJobResult::Outcome;
    enum class Step {
        New,
        Locking,
        Opening,
        Repairing,
        Asking,    ///< for the status, also again while the printer is waited for
        Resting,   ///< between two questions
        Probing,   ///< whether the printer obeys commands
        Allowing,  ///< asks whoever wants to know in front of the first byte
        Sending,
        Stopping,    ///< up to the end of the command under way
        Closing,     ///< reset and cut behind that
        Confirming,  ///< waits for the proof
        AskingWhy,   ///< the proof doesn't come
        Finished,
        Holding,
        LockingAgain,
        OpeningAgain,
        Retracting,
    };

    void connectLock();
    void connectTransport();
    void lockIsHeld();
    void lineIsOpen();
    void lineHasTaken(qint64 total);
    void lineHasFailed(const TransportError &error);
    void hasReceived(const QByteArray &bytes);
    void timeIsOver();
    void lineIsStuck();
    void waitIsOver();
    void pollAgain();

    void repair();
    void repaired();
    bool isLineSerial() const;
    int statusPatience() const;
    void probe();
    void probeIsAnswered();
    void probeIsSilent();
    void fillUp();
    void ask();
    void statusIsComplete();
    void goOnByStatus();
    void beginToWait();
    void startWaitTimer();
    bool isAllowed();
    void beginSending();
    void handOver();
    void recordRange();
    bool takesMore(qint64 total);
    void sendingTook();
    void watchWhileSending(bool isByItself);
    void decidePause(bool isByItself);
    void pause();
    void pollWhilePaused();
    void giveUpStatus();
    bool isSettled();
    void stop();
    void close();
    void closed();
    void confirm();
    void followProof();
    void proofIsComplete();
    void askNext();
    void askWhy();
    void whyIsAnswered();
    void whyIsUnknown();
    void endUnproven(const JobEnd &end);
    void retract();
    void endRetraction(bool isDone);

    bool canAsk() const;
    bool isStatusDue() const;
    bool isBlocked() const;
    bool isResting() const;
    void write(const QByteArray &bytes);
    bool hasTakenAll() const;
    bool mayBeLost() const;
    void updateStatus(const PrinterStatus &status);
    void keepRecord();
    void restartStuckTimer();
    void stopTimers();
    void endEarly(const JobEnd &end);
    void finish(Outcome outcome, const JobEnd &end = {});
    template <typename Signal>
    void tell(Signal signal);
    void tellNote(const QString &text);
    void tellProgress();

    Parts m_parts;
    JobStream m_stream;
    StatusDialogue m_dialogue;
    JobProof m_proof;
    JobRecord m_record;
    JobRepair m_repair;
    PrintJobResult m_result;
    Step m_step = Step::New;
    const QString m_id;
    QByteArray m_automaticOff;
    qint64 m_base = 0;    ///< bytes that the line had taken before the stream
    qint64 m_handed = 0;  ///< of the stream
    qint64 m_taken = 0;   ///< of the stream
    qint64 m_limit = 0;   ///< of the stream: no more is handed over
    bool m_isPaused = false;
    bool m_isWaiting = false;    ///< for a printer that can't print
    bool m_isDelivered = false;  ///< the printer has answered what was asked behind the document
    /// Answers may belong to questions that were given up: of DLE EOT they have no number.
    bool m_isAnswerUnsure = false;
    bool m_isSettling = false;  ///< waits whether the line is quiet behind the whole status
    qint64 m_straysBefore = 0;
    bool m_hasOldQuestions = false;  ///< without an answer, from a pause
    bool m_mayHaveBeenOff = false;   ///< it came back, and hasn't told so by itself
    bool m_isUnrecorded = false;
    bool m_isNearEndTold = false;
    bool m_isProgressTold = true;
    QTimer m_timer{this};
    QTimer m_pollTimer{this};
    QTimer m_stuckTimer{this};
    QTimer m_waitTimer{this};
};

}  // namespace printerslib::drivers
