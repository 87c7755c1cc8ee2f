#pragma once

#include <printerslib/drivers/printerprofile.h>
#include <printerslib/drivers/streaminterpreter.h>
#include <printerslib/drivers/streamreader.h>

#include <QByteArray>
#include <QList>
#include <QStringList>
#include <QVector>
#include <memory>
#include <random>

#include "printerfault.h"
#include "printerside.h"
#include "statusbytes.h"

/// A receipt printer without its line: keeps what it is sent in a buffer, prints it as fast as its
/// head does, knows the state of its hardware, and answers what its model answers.
///
/// Commands that act at once (DLE EOT, Star's ESC ACK SOH) are answered as they come in, also from
/// within the data of others, while the printer is off line, and when the buffer is full. Swecoin's
/// ESC ENQ is, too, outside of data. All others are answered when their turn comes; those that say
/// what is on the paper (GS ( H, Star's ETB, Swecoin's ESC ACK) when the paper before them has
/// moved.
///
/// While the paper is out, the cover open, the cutter jammed or the printer off line, what is in
/// the buffer stays there, and goes on behind the repair. Power off loses it.
///
/// There are no globals: several may be used at once, each by one thread at a time.
class PrinterDevice : public PrinterSide
{
public:
    struct Options
    {
        int bufferBytes = 0;              ///< 0: the profile's, or `usualBuffer`
        double millimetresPerSecond = 0;  ///< of the head; 0: it takes no time
        unsigned seed = 1;                ///< of bytes that are changed
        printerslib::drivers::StreamInterpreter::Options print;
    };
    /// Of printers whose profile doesn't say.
    static constexpr int usualBuffer = 4096;

    explicit PrinterDevice(const printerslib::drivers::PrinterProfile &profile)
        : PrinterDevice(profile, Options())
    {}
    PrinterDevice(const printerslib::drivers::PrinterProfile &profile, const Options &options);

    void take(const QByteArray &bytes) override;
    int room() const override;
    QByteArray takeAnswers() override;
    void advanceTo(qint64 microseconds) override;
    qint64 nextEvent() const override;
    QStringList takeNotes() override;

    /// Whether it asks its host to wait: from 128 bytes of room on, until there are 256; of a
    /// buffer of less than 256 bytes 16 and 26. Only the buffer counts.
    bool isBusy() const { return m_isBusy; }
    qint64 now() const { return m_now; }

    void apply(const PrinterFault &fault);
    /// Does it by itself when its time comes; what is due already, at once.
    void plan(const PlannedFault &fault);
    const PrinterHardware &hardware() const { return m_hardware; }
    /// Whether a fault has ended the connection since the last call.
    bool takeReset();

    qint64 bytesReceived() const { return m_received; }
    /// Bytes for which the buffer had no room, over all.
    qint64 bytesLost() const { return m_lost; }
    /// Bytes that wait in the buffer.
    int bytesWaiting() const { return m_waiting; }
    /// Bytes of a command that isn't whole yet, the last that came.
    int bytesOfOpenCommand() const { return m_tail; }
    /// Whether all that came is on the paper.
    bool isIdle() const;
    /// The pieces that were cut off since the last call, and what power off left.
    QVector<printerslib::drivers::Paper> takePapers();
    /// The end: what hangs in the printer, too.
    QVector<printerslib::drivers::Paper> finish();

private:
    using StreamCommand = printerslib::drivers::StreamCommand;

    struct Waiting
    {
        StreamCommand command;
        int bytes = 0;  ///< of the buffer
    };
    struct Answer
    {
        qint64 due = 0;
        QByteArray bytes;
    };

    QByteArray spoil(const QByteArray &bytes);
    void takeArrived(const QByteArray &bytes);
    void accept(const QByteArray &bytes);
    void acceptPart(const QByteArray &bytes);
    void work();
    void execute(const Waiting &next);
    void answerAtOnce(const StreamCommand &command);
    void answerAsRead(const StreamCommand &command);
    void answerInTurn(const StreamCommand &command);
    void answerEscPos(const StreamCommand &command);
    void followMacro(const StreamCommand &command);
    void answerStar(const StreamCommand &command);
    void answer(const QByteArray &bytes);
    void recover(bool clearsBuffer);
    void clearBuffer();
    void applyToLine(const PrinterFault &fault);
    void switchOff();
    void setHardware(const PrinterHardware &hardware);
    void switchAutomaticStatus(int mode, const QByteArray &status);
    void tellChange();
    void updateRoom();
    void applyDue();
    bool hasPrintData() const;

    const printerslib::drivers::PrinterProfile m_profile;
    const Options m_options;
    const int m_bufferBytes;
    printerslib::drivers::StreamReader m_reader;
    printerslib::drivers::StreamInterpreter m_interpreter;
    QVector<printerslib::drivers::Paper> m_papers;
    PrinterHardware m_hardware;
    std::mt19937 m_random;

    QByteArray m_scanned;       ///< the last bytes, if they may begin what acts at once
    QList<Waiting> m_commands;  ///< whole ones, whose turn comes
    int m_tail = 0;             ///< bytes behind them, of a command that isn't whole
    int m_tailTaken = 0;        ///< of these, no longer in the buffer
    int m_waiting = 0;          ///< bytes in the buffer
    bool m_isBusy = false;
    bool m_isSelected = true;
    bool m_hasOpenLine = false;  ///< characters that wait for their line's end
    qint64 m_received = 0;
    qint64 m_lost = 0;
    qint64 m_lostUntold = 0;

    qint64 m_now = 0;        ///< microseconds
    qint64 m_freeAt = 0;     ///< when the head is done with what it does
    qint64 m_stillToDo = 0;  ///< of what it did as it was stopped
    QVector<PlannedFault> m_plan;
    QList<Answer> m_answers;
    bool m_isMute = false;
    int m_answersLate = 0;  ///< milliseconds
    int m_toSwallow = 0;
    int m_toChange = 0;
    bool m_hasReset = false;

    int m_automaticMode = 0;         ///< as GS a or ESC RS a has it
    QByteArray m_toldStatus;         ///< by itself
    int m_marks = 0;                 ///< of ETB
    QVector<StreamCommand> m_macro;  ///< what of GS : asks
    bool m_isMacroOpen = false;
    bool m_hasOverflown = false;
    bool m_wasOff = false;  ///< and nobody has been told
};
