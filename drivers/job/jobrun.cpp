#include "job/jobrun_p.h"

#include <QPointer>
#include <QUuid>
#include <algorithm>

namespace printerslib::drivers {

namespace {

/// What may have been taken and yet be lost, as in the buffers of an adapter or of a host that
/// resets the connection. A serial line has none.
constexpr qint64 uncertainBytes = 64LL * 1024;
/// More than any question of a job has.
constexpr int questionFill = 16;
constexpr int leastStep = 512;
constexpr int mostStep = 65536;

/// What a printer doesn't get over by itself within a moment.
constexpr PrinterStatus::Flags blockingFlags = PrinterStatus::Flags(
    PrinterStatus::PaperOut | PrinterStatus::CoverOpen | PrinterStatus::CutterError |
    PrinterStatus::UnrecoverableError | PrinterStatus::DataLost);
/// What goes by without anybody's hand, as the heat of the head does, or by a button.
constexpr PrinterStatus::Flags restingFlags =
    PrinterStatus::Flags(PrinterStatus::OffLine | PrinterStatus::RecoverableError);

/// Whether it tells how the printer is.
bool tellsStatus(const StatusAnswer &answer)
{
    return answer.question != StatusQuestion::BufferRead &&
           answer.question != StatusQuestion::Response && answer.question != StatusQuestion::Text;
}

bool isInTurn(const StatusAnswer &answer)
{
    return answer.question == StatusQuestion::BufferRead;
}

}  // namespace

JobRun::JobRun(Parts parts)
    : m_parts(std::move(parts)),
      m_stream(m_parts.document, m_parts.profile),
      m_dialogue(m_parts.profile),
      m_proof(m_parts.profile, m_dialogue),
      m_repair(m_parts.profile, m_record),
      m_id(QUuid::createUuid().toString(QUuid::WithoutBraces))
{
    PrintJobOptions &options = m_parts.options;
    options.stepBytes = std::clamp(options.stepBytes, leastStep, mostStep);
    for (int *time : {&options.statusMilliseconds, &options.confirmMilliseconds,
                      &options.pollMilliseconds, &options.cancelMilliseconds})
        *time = std::max(1, *time);
    m_result.totalBytes = m_parts.document.bytes.size();
    for (QTimer *timer : {&m_timer, &m_pollTimer, &m_stuckTimer, &m_waitTimer})
        timer->setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &JobRun::timeIsOver);
    connect(&m_pollTimer, &QTimer::timeout, this, &JobRun::pollAgain);
    connect(&m_stuckTimer, &QTimer::timeout, this, &JobRun::lineIsStuck);
    connect(&m_waitTimer, &QTimer::timeout, this, &JobRun::waitIsOver);
    connectLock();
    connectTransport();
}

JobRun::~JobRun()
{
    m_parts.transport->disconnect(this);
    m_parts.transport->close();
}

void JobRun::connectLock()
{
    const DeviceLock *const lock = m_parts.lock.get();
    connect(lock, &DeviceLock::acquired, this, &JobRun::lockIsHeld);
    connect(lock, &DeviceLock::waiting, this, [this](int ahead) {
        if (m_step == Step::Locking)
            tell([this, ahead] { Q_EMIT waiting(ahead); });
    });
    connect(lock, &DeviceLock::failed, this, [this](const QString &fault) {
        if (m_step == Step::LockingAgain)
            endRetraction(false);
        else if (m_step == Step::Locking)
            finish(Outcome::NotBegun, JobEnd::noLock(fault));
    });
}

void JobRun::connectTransport()
{
    const Transport *const line = m_parts.transport.get();
    connect(line, &Transport::opened, this, &JobRun::lineIsOpen);
    connect(line, &Transport::written, this, &JobRun::lineHasTaken);
    connect(line, &Transport::received, this, &JobRun::hasReceived);
    connect(line, &Transport::failed, this, &JobRun::lineHasFailed);
    connect(line, &Transport::lost, this, &JobRun::lineHasFailed);
}

void JobRun::start()
{
    if (m_step != Step::New)
        return;
    m_step = Step::Locking;
    const EncodedDocument &document = m_parts.document;
    if (!document.error.isEmpty() || document.bytes.isEmpty())
        finish(Outcome::NotBegun, JobEnd::badDocument(document.error));
    else
        m_parts.lock->acquire();
}

void JobRun::cancel()
{
    switch (m_step) {
        case Step::New:
        case Step::Locking:
        case Step::Opening:
        case Step::Repairing:
        case Step::Asking:
        case Step::Resting:
        case Step::Allowing:
        case Step::Probing:
            endEarly(JobEnd::cancelled());
            return;
        case Step::Sending:
            stop();
            return;
        case Step::Confirming:
        case Step::AskingWhy:
            endUnproven(JobEnd::cancelledUnconfirmed());
            return;
        case Step::Holding:
        case Step::LockingAgain:
        case Step::OpeningAgain:
            endRetraction(false);
            return;
        case Step::Stopping:
        case Step::Closing:
        case Step::Finished:
        case Step::Retracting:
            return;
    }
}

// ---- Turn and line

void JobRun::lockIsHeld()
{
    const bool isAgain = m_step == Step::LockingAgain;
    if (!isAgain && m_step != Step::Locking)
        return;
    m_record = JobRecord::fromBytes(m_parts.lock->record());
    if (isAgain && (m_record.isOpen || m_record.last != m_id)) {
        tellNote(QStringLiteral("another job has printed since: its ticket stays"));
        endRetraction(false);
        return;
    }
    m_step = isAgain ? Step::OpeningAgain : Step::Opening;
    m_parts.transport->open();
}

void JobRun::lineIsOpen()
{
    if (m_step == Step::OpeningAgain)
        retract();
    else if (m_step == Step::Opening)
        repair();
}

void JobRun::repair()
{
    if (!m_repair.isDue()) {
        ask();
        return;
    }
    m_step = Step::Repairing;
    const QString text = m_repair.textInFront(m_parts.transport->address());
    if (!text.isEmpty())
        tellNote(text);
    write(m_repair.bytes());
    restartStuckTimer();
}

void JobRun::repaired()
{
    m_stuckTimer.stop();
    tellNote(m_repair.text());
    m_repair.hasGone();
    ask();
}

bool JobRun::isLineSerial() const
{
    return m_parts.transport->address().kind() == PrinterAddress::Kind::Serial;
}

void JobRun::lineHasTaken(qint64 total)
{
    switch (m_step) {
        case Step::Repairing:
            if (hasTakenAll())
                repaired();
            else
                restartStuckTimer();
            return;
        case Step::Sending:
        case Step::Stopping:
            if (takesMore(total) || !m_isPaused)
                sendingTook();
            return;
        case Step::Closing:
            restartStuckTimer();
            if (hasTakenAll())
                closed();
            return;
        case Step::Confirming:
            if (!m_proof.isBegun() && hasTakenAll())
                finish(Outcome::Sent);
            return;
        case Step::Retracting:
            if (hasTakenAll())
                endRetraction(true);
            return;
        default:
            return;
    }
}

void JobRun::lineHasFailed(const TransportError &error)
{
    if (m_step == Step::OpeningAgain || m_step == Step::Retracting) {
        endRetraction(false);
        return;
    }
    m_result.error = error;
    if (m_step == Step::Confirming || m_step == Step::AskingWhy) {
        // What the line took may have gone with it.
        m_record.isOpen = true;
        finish(Outcome::Sent, JobEnd::lineFailed(error));
    } else if (m_step < Step::Finished) {
        endEarly(JobEnd::lineFailed(error));
    }
}

void JobRun::hasReceived(const QByteArray &bytes)
{
    if (isFinished())
        return;
    const QVector<StatusAnswer> answers = m_dialogue.read(bytes);
    for (const StatusAnswer &answer : answers)
        m_proof.take(answer);
    if (answers.isEmpty())
        return;
    if (m_dialogue.status().isKnown())
        updateStatus(m_dialogue.status());
    if (m_step == Step::Asking && !isStatusDue())
        statusIsComplete();
    else if (m_step == Step::Probing && std::any_of(answers.begin(), answers.end(), isInTurn))
        probeIsAnswered();
    else if (m_step == Step::Sending && std::any_of(answers.begin(), answers.end(), tellsStatus))
        watchWhileSending(std::any_of(answers.begin(), answers.end(), [](const StatusAnswer &one) {
            return one.question == StatusQuestion::Automatic;
        }));
    else if (m_step == Step::Confirming || m_step == Step::AskingWhy)
        followProof();
}

// ---- Before the job

bool JobRun::canAsk() const
{
    return m_parts.options.asks &&
           m_parts.transport->address().kind() != PrinterAddress::Kind::File;
}

bool JobRun::isStatusDue() const
{
    return JobProof::isStatusDue(m_dialogue, m_parts.profile.dialect());
}

void JobRun::ask()
{
    if (!canAsk()) {
        beginSending();
        return;
    }
    m_step = Step::Asking;
    m_straysBefore = m_dialogue.strayBytes();
    // A zero byte is nothing, and ends a question that a job before was cut off in.
    write(QByteArray(1, '\0') + m_dialogue.askStatus());
    m_timer.start(statusPatience());
}

/// What fills a printer up may still be on its way in a network, to an adapter of 9600 baud with a
/// byte in a millisecond.
int JobRun::statusPatience() const
{
    const bool isUnderWay = m_repair.fill() > 0 && !isLineSerial();
    return m_parts.options.statusMilliseconds + (isUnderWay ? m_repair.fill() : 0);
}

void JobRun::statusIsComplete()
{
    m_timer.stop();
    if (m_isAnswerUnsure) {
        m_step = Step::Resting;
        m_isSettling = true;
        m_pollTimer.start(m_parts.options.pollMilliseconds);
        return;
    }
    goOnByStatus();
}

/// Whether nothing came behind the whole status that would have been its end, had it begun with a
/// late answer.
bool JobRun::isSettled()
{
    const bool wasSettling = std::exchange(m_isSettling, false);
    if (!wasSettling || m_dialogue.strayBytes() != m_straysBefore)
        return false;
    m_isAnswerUnsure = false;
    return true;
}

void JobRun::goOnByStatus()
{
    // It was asked behind that.
    if (m_repair.settle())
        keepRecord();
    if (m_dialogue.status().canPrint()) {
        m_waitTimer.stop();
        if (m_repair.isProbeDue())
            probe();
        else
            beginSending();
        return;
    }
    if (m_parts.options.waitMilliseconds == 0) {
        endEarly(JobEnd::cannotPrint(m_result.status));
        return;
    }
    beginToWait();
}

/// Bytes that got lost or were changed on the line may have left the printer within a command,
/// where it still tells how it is. What it answers in its turn says that it isn't.
void JobRun::probe()
{
    m_step = Step::Probing;
    m_repair.beginProbe();
    if (m_parts.profile.dialect() != Dialect::EscPos) {
        fillUp();
        return;
    }
    write(m_dialogue.ask(StatusQuestion::BufferRead));
    m_timer.start(m_parts.options.statusMilliseconds);
}

void JobRun::probeIsAnswered()
{
    m_timer.stop();
    m_repair.obeys();
    beginSending();
}

void JobRun::probeIsSilent()
{
    m_dialogue.giveUp();
    m_record.due = std::min(m_record.due + 1, JobRecord::mostDue);
    fillUp();
}

void JobRun::fillUp()
{
    m_repair.fillUp();
    keepRecord();
    repair();
}

void JobRun::beginToWait()
{
    m_step = Step::Resting;
    m_isWaiting = true;
    startWaitTimer();
    m_pollTimer.start(m_parts.options.pollMilliseconds);
}

/// Goes on with a wait that has begun.
void JobRun::startWaitTimer()
{
    if (m_parts.options.waitMilliseconds > 0 && !m_waitTimer.isActive())
        m_waitTimer.start(m_parts.options.waitMilliseconds);
}

void JobRun::timeIsOver()
{
    if (m_step == Step::Confirming && !m_proof.isBegun()) {
        finish(Outcome::Sent);
    } else if (m_step == Step::Confirming) {
        askWhy();
    } else if (m_step == Step::AskingWhy) {
        whyIsUnknown();
    } else if (m_step == Step::Sending) {
        giveUpStatus();
    } else if (m_step == Step::Probing) {
        probeIsSilent();
    } else if (m_step == Step::Asking) {
        giveUpStatus();
        updateStatus(m_dialogue.status().with(PrinterStatus::NoAnswer));
        // One that is switched off to change its paper is waited for, but one that never answered
        // isn't.
        if (m_isWaiting)
            beginToWait();
        else
            endEarly(JobEnd::noAnswer(statusPatience()));
    } else if (m_step == Step::Holding) {
        m_step = Step::LockingAgain;
        m_parts.lock->acquire();
    }
}

void JobRun::giveUpStatus()
{
    m_dialogue.giveUp();
    m_isAnswerUnsure = m_parts.profile.dialect() == Dialect::EscPos;
    m_isSettling = false;
}

void JobRun::pollAgain()
{
    if (m_step == Step::Resting) {
        if (isSettled())
            goOnByStatus();
        else
            ask();
    } else if (m_step == Step::Sending) {
        pollWhilePaused();
    } else if (m_step == Step::Confirming) {
        write(m_proof.poll());
        m_pollTimer.start(m_parts.options.pollMilliseconds);
    }
}

void JobRun::waitIsOver()
{
    // It is mended, and only whether its answers are those to the last questions isn't known yet.
    if (m_isSettling && m_dialogue.status().canPrint())
        return;
    const JobEnd end = JobEnd::cannotPrint(m_result.status);
    if (m_step == Step::Confirming || m_step == Step::AskingWhy)
        endUnproven(end);
    else if (m_step < Step::Finished)
        endEarly(end);
}

// ---- The document

/// False if this is at its end then, or gone.
bool JobRun::isAllowed()
{
    const std::function<bool()> ask = m_parts.options.beforeSending;
    if (!ask)
        return true;
    m_step = Step::Allowing;
    const QPointer<JobRun> self(this);
    const bool isYes = ask();
    if (!self || m_step != Step::Allowing)
        return false;
    if (!isYes)
        endEarly(JobEnd::refused());
    return isYes;
}

void JobRun::beginSending()
{
    if (!isAllowed())
        return;
    m_step = Step::Sending;
    m_isPaused = false;
    QByteArray ownBytes;
    if (canAsk() && m_parts.profile.dialect() == Dialect::EscPos) {
        ownBytes = m_dialogue.ask(StatusQuestion::Automatic);
        m_automaticOff = m_dialogue.automaticOff();
    }
    if (canAsk() && m_parts.options.confirms)
        ownBytes = m_proof.beginDocument(m_record, ownBytes);
    m_stream.insert(ownBytes);
    m_base = m_parts.transport->bytesWritten() + m_parts.transport->bytesToWrite();
    m_limit = m_stream.size();
    handOver();
}

/// As much as is to be in front of the line. The record tells of it before it goes.
void JobRun::handOver()
{
    const qint64 step = m_parts.options.stepBytes;
    while (!m_isPaused && m_handed < m_limit && m_handed - m_taken <= step) {
        const qint64 begin = m_handed;
        m_handed = m_stream.pieceEnd(begin, std::min(m_limit, begin + step));
        recordRange();
        if (!m_parts.transport->write(m_stream.part(begin, m_handed))) {
            m_handed = begin;
            m_record.isOpen = begin > 0;
            keepRecord();
            break;
        }
        m_result.mostBytes = m_stream.documentBytes(m_handed);
        m_result.outcome = Outcome::PartlySent;
    }
    // What the record takes on a busy disk isn't the line's.
    restartStuckTimer();
}

void JobRun::recordRange()
{
    const qint64 begin = isLineSerial() ? m_taken : std::max<qint64>(0, m_taken - uncertainBytes);
    m_record.isOpen = true;
    m_record.fill = std::max(m_repair.fill(), m_stream.fillBetween(begin, m_handed));
    m_record.last = m_id;
    const bool isKept = m_parts.lock->setRecord(m_record.toBytes());
    if (!isKept && !m_isUnrecorded)
        tellNote(QStringLiteral("what a crash would leave can't be recorded"));
    m_isUnrecorded = !isKept;
}

/// Not if it took a question alone.
bool JobRun::takesMore(qint64 total)
{
    const qint64 before = m_taken;
    m_taken = std::clamp<qint64>(total - m_base, m_taken, m_handed);
    return m_taken > before;
}

void JobRun::sendingTook()
{
    const qint64 before = m_result.sentBytes;
    m_result.sentBytes = m_stream.documentBytes(m_taken);
    if (m_result.sentBytes != before)
        tellProgress();
    if (m_taken < m_limit) {
        handOver();
        return;
    }
    m_stuckTimer.stop();
    if (m_step == Step::Stopping)
        close();
    else
        confirm();
}

bool JobRun::isBlocked() const
{
    return (m_dialogue.status().flags() & blockingFlags) != PrinterStatus::Flags();
}

/// Whether it is to be waited for a moment, as no bytes should go where they may get lost.
bool JobRun::isResting() const
{
    return (m_dialogue.status().flags() & restingFlags) != PrinterStatus::Flags();
}

/// @param isByItself whether the printer has told, and wasn't asked
void JobRun::watchWhileSending(bool isByItself)
{
    if (m_dialogue.status().has(PrinterStatus::DataLost)) {
        endEarly(JobEnd::cannotPrint(m_result.status));
        return;
    }
    if (isByItself) {
        decidePause(true);
        return;
    }
    if (isStatusDue())
        return;
    m_timer.stop();
    m_isSettling = m_isAnswerUnsure;
    if (!m_isSettling)
        decidePause(false);
}

void JobRun::decidePause(bool isByItself)
{
    const bool isBlockedNow = isBlocked();
    if (isBlockedNow && m_parts.options.waitMilliseconds == 0) {
        endEarly(JobEnd::cannotPrint(m_result.status));
        return;
    }
    const bool pausesNow = isBlockedNow || isResting();
    if (pausesNow == m_isPaused)
        return;
    if (pausesNow) {
        pause();
        return;
    }
    m_isPaused = false;
    m_mayHaveBeenOff = m_mayHaveBeenOff || !isByItself;
    m_timer.stop();
    m_pollTimer.stop();
    m_waitTimer.stop();
    handOver();
}

void JobRun::pause()
{
    m_isPaused = true;
    startWaitTimer();
    m_pollTimer.start(m_parts.options.pollMilliseconds);
    restartStuckTimer();
}

/// That the printer is mended it tells by itself, unless it was switched off meanwhile.
void JobRun::pollWhilePaused()
{
    if (!m_isPaused)
        return;
    if (isSettled())
        decidePause(false);
    if (!m_isPaused || isFinished())
        return;
    startWaitTimer();
    m_pollTimer.start(m_parts.options.pollMilliseconds);
    // Within a command's data, a question would be a part of it.
    if (m_stream.commandEnd(m_handed) != m_handed || isStatusDue())
        return;
    m_straysBefore = m_dialogue.strayBytes();
    const QByteArray question = m_dialogue.askStatus();
    m_base += question.size();
    write(question);
    m_timer.start(m_parts.options.statusMilliseconds);
}

void JobRun::restartStuckTimer()
{
    const bool isStopping = m_step == Step::Stopping || m_step == Step::Closing;
    const int time = isStopping ? m_parts.options.cancelMilliseconds
                                : m_parts.options.transport.writeMilliseconds;
    if (time > 0)
        m_stuckTimer.start(time);
    else
        m_stuckTimer.stop();
}

void JobRun::lineIsStuck()
{
    if (m_step == Step::Sending && m_isPaused) {
        if (m_parts.options.waitMilliseconds == 0)
            endEarly(JobEnd::cannotPrint(m_result.status));
        else
            restartStuckTimer();
    } else if (m_step == Step::Stopping || m_step == Step::Closing) {
        endEarly(JobEnd::cancelledOnStuckLine(m_parts.options.cancelMilliseconds));
    } else if (m_step == Step::Retracting) {
        endRetraction(false);
    } else if (m_step < Step::Finished) {
        lineHasFailed(JobEnd::stuckLine(m_parts.transport->address(),
                                        m_parts.options.transport.writeMilliseconds));
    }
}

// ---- Cancelled in its middle

void JobRun::stop()
{
    if (m_handed == 0) {
        endEarly(JobEnd::cancelled());
        return;
    }
    m_step = Step::Stopping;
    m_isPaused = false;
    m_waitTimer.stop();
    m_limit = m_stream.commandEnd(m_handed);
    if (m_taken >= m_limit)
        sendingTook();
    else
        handOver();
}

void JobRun::close()
{
    m_step = Step::Closing;
    const bool isAll = m_limit == m_stream.size();
    const QByteArray closing = isAll ? m_automaticOff : JobStream::closing(m_parts.profile);
    if (closing.isEmpty()) {
        closed();
        return;
    }
    m_record.fill = std::max<int>(m_record.fill, questionFill);
    keepRecord();
    write(closing);
    restartStuckTimer();
}

void JobRun::closed()
{
    m_record.isOpen = mayBeLost();
    endEarly(m_limit == m_stream.size() ? JobEnd::cancelledWhenSent() : JobEnd::cancelled());
}

// ---- What is known of it

void JobRun::confirm()
{
    m_step = Step::Confirming;
    m_result.outcome = Outcome::Sent;
    const bool isAsked = canAsk() && m_parts.options.confirms && m_proof.isPossible();
    const QByteArray question = isAsked ? m_proof.begin(m_record) : QByteArray();
    if (question.isEmpty() && !m_proof.isBegun()) {
        m_record.isOpen = false;
        // The line is let go when it has taken that, too.
        write(m_automaticOff);
        m_timer.start(m_parts.options.statusMilliseconds);
        if (isAsked)
            endUnproven(JobEnd::notCounting());
        else if (m_automaticOff.isEmpty() || hasTakenAll())
            finish(Outcome::Sent);
        return;
    }
    m_hasOldQuestions = isStatusDue();
    m_record.fill = std::max<int>(m_record.fill, questionFill);
    keepRecord();
    write(m_automaticOff + question);
    m_timer.start(m_parts.options.confirmMilliseconds);
    m_pollTimer.start(m_parts.options.pollMilliseconds);
}

void JobRun::followProof()
{
    switch (m_proof.state()) {
        case JobProof::State::Proven:
        case JobProof::State::Refuted:
            proofIsComplete();
            return;
        case JobProof::State::Open:
            break;
    }
    // The answer that comes in front of the one which came won't come any more.
    if (m_proof.hasLostMacro() && m_timer.remainingTime() > m_parts.options.statusMilliseconds)
        m_timer.start(m_parts.options.statusMilliseconds);
    if (m_dialogue.status().canPrint())
        m_waitTimer.stop();
    if (m_proof.isUrgent())
        askNext();
    else if (m_step == Step::AskingWhy && !isStatusDue())
        whyIsAnswered();
    else if (m_step == Step::Confirming && isBlocked() && m_parts.options.waitMilliseconds == 0)
        endUnproven(JobEnd::cannotPrint(m_result.status));
}

/// Questions of a pause that have no answer behind one in its turn won't get any.
void JobRun::askNext()
{
    if (m_hasOldQuestions && m_proof.isRead()) {
        m_hasOldQuestions = false;
        m_dialogue.giveUp();
    }
    write(m_proof.poll());
}

void JobRun::proofIsComplete()
{
    JobProof::settle(m_record);
    m_repair.obeys();
    const bool isProven = m_proof.state() == JobProof::State::Proven;
    const bool mayHaveBeenOff = m_mayHaveBeenOff && !m_proof.hasMacro();
    m_record.isOpen = !isProven || mayHaveBeenOff;
    if (m_proof.hasLostMacro() && !isProven)
        finish(Outcome::Sent, JobEnd::wasOff());
    else if (!isProven)
        finish(Outcome::Sent, JobEnd::cannotPrint(m_result.status));
    else if (mayHaveBeenOff)
        finish(Outcome::Sent, JobEnd::mayHaveBeenOff());
    else
        finish(m_proof.outcome());
}

/// No confirmation within its time: a printer that is out of paper says so, and may be waited for.
void JobRun::askWhy()
{
    m_step = Step::AskingWhy;
    write(m_dialogue.askStatus());
    m_timer.start(m_parts.options.statusMilliseconds);
}

void JobRun::whyIsAnswered()
{
    m_timer.stop();
    m_isDelivered = true;
    if (m_dialogue.status().canPrint()) {
        m_proof.giveUp(m_record, true);
        m_repair.isUnconfirmed(m_proof.hasLostMacro());
        // Of one that never confirms it says nothing.
        m_record.isOpen = mayBeLost() || m_record.reading != JobRecord::Deaf;
        finish(Outcome::Sent, m_proof.hasLostMacro()
                                  ? JobEnd::wasOff()
                                  : JobEnd::unconfirmed(m_parts.options.confirmMilliseconds));
        return;
    }
    if (m_parts.options.waitMilliseconds == 0) {
        endUnproven(JobEnd::cannotPrint(m_result.status));
        return;
    }
    startWaitTimer();
    m_step = Step::Confirming;
    m_timer.start(m_parts.options.confirmMilliseconds);
    m_pollTimer.start(m_parts.options.pollMilliseconds);
}

void JobRun::whyIsUnknown()
{
    updateStatus(m_result.status.with(PrinterStatus::NoAnswer));
    endUnproven(JobEnd::unconfirmedAndSilent(m_parts.options.confirmMilliseconds));
}

/// A printer that was off has lost what it held, with the cut: the next job makes up for that.
void JobRun::endUnproven(const JobEnd &end)
{
    m_proof.giveUp(m_record, false);
    m_record.isOpen = mayBeLost() || m_proof.isBegun();
    finish(Outcome::Sent, end);
}

// ---- Ends

void JobRun::endEarly(const JobEnd &end)
{
    const bool isAll = m_result.sentBytes == m_result.totalBytes && m_result.totalBytes > 0;
    const Outcome outcome = m_handed == 0 ? Outcome::NotBegun
                            : isAll       ? Outcome::Sent
                                          : Outcome::PartlySent;
    finish(outcome, end);
}

void JobRun::finish(Outcome outcome, const JobEnd &end)
{
    m_step = Step::Finished;
    stopTimers();
    m_parts.transport->close();
    m_result.outcome = outcome;
    m_result.reason = end.reason;
    m_result.text = end.text;
    if (outcome == Outcome::PartlySent) {
        const EncodedDocument::Mark place = m_stream.place(m_result.sentBytes);
        m_result.block = place.block;
        m_result.line = place.line;
    }
    if (m_handed > 0)
        keepRecord();
    m_parts.lock->release();
    const EncodedDocument &document = m_parts.document;
    if (m_result.isSent() && document.retractAfterSeconds > 0 && !document.retraction.isEmpty()) {
        m_step = Step::Holding;
        constexpr int mostSeconds = 86400;
        m_timer.start(std::min(document.retractAfterSeconds, mostSeconds) * m_parts.second);
    }
    tell([this] { Q_EMIT finished(PrintJobResult(m_result)); });
}

void JobRun::retract()
{
    m_step = Step::Retracting;
    write(m_parts.document.retraction);
    restartStuckTimer();
}

void JobRun::endRetraction(bool isDone)
{
    m_step = Step::Finished;
    stopTimers();
    m_parts.transport->close();
    m_parts.lock->release();
    tell([this, isDone] { Q_EMIT retracted(isDone); });
}

// ---- Small things

void JobRun::write(const QByteArray &bytes)
{
    if (!bytes.isEmpty())
        m_parts.transport->write(bytes);
}

bool JobRun::hasTakenAll() const
{
    return m_parts.transport->bytesToWrite() == 0;
}

/// Whether what the line has taken may not come to the printer. A network that is left with bytes
/// that the printer hasn't fetched throws them away as soon as the printer says something.
bool JobRun::mayBeLost() const
{
    const bool isFile = m_parts.transport->address().kind() == PrinterAddress::Kind::File;
    return !hasTakenAll() || !(m_isDelivered || isLineSerial() || isFile);
}

void JobRun::keepRecord()
{
    if (m_parts.lock->isHeld())
        m_parts.lock->setRecord(m_record.toBytes());
}

void JobRun::updateStatus(const PrinterStatus &status)
{
    if (status.has(PrinterStatus::PaperNearEnd) && !m_isNearEndTold) {
        m_isNearEndTold = true;
        tellNote(QStringLiteral("the paper is near its end"));
    }
    if (status == m_result.status)
        return;
    m_result.status = status;
    tell([this, status] { Q_EMIT statusChanged(status); });
}

void JobRun::stopTimers()
{
    for (QTimer *timer : {&m_timer, &m_pollTimer, &m_stuckTimer, &m_waitTimer})
        timer->stop();
}

/// Out of the event loop, one signal at a time, and none any more once a slot has deleted this.
template <typename Signal>
void JobRun::tell(Signal signal)
{
    QMetaObject::invokeMethod(this, std::move(signal), Qt::QueuedConnection);
}

void JobRun::tellNote(const QString &text)
{
    tell([this, text] { Q_EMIT note(text); });
}

void JobRun::tellProgress()
{
    if (!m_isProgressTold)
        return;
    m_isProgressTold = false;
    tell([this] {
        m_isProgressTold = true;
        Q_EMIT progress(m_result.sentBytes, m_result.totalBytes);
    });
}

}  // namespace printerslib::drivers
