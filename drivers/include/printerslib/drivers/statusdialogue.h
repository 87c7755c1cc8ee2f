#pragma once

#include <QByteArray>
#include <QScopedPointer>
#include <QVector>

#include "printerslib/drivers/drivers_export.h"
#include "printerslib/drivers/printerprofile.h"
#include "printerslib/drivers/printerstatus.h"
#include "printerslib/drivers/statusanswer.h"

namespace printerslib::drivers {

/// The questions to a printer, and its answers, picked out of all that it sends.
///
/// It sends nothing and waits for nothing: whoever has the line sends what the questions are, hands
/// in what comes, in pieces of any size, and calls giveUp() when its time is over. What is kept is
/// an answer that isn't whole yet, at most 96 bytes. One thread at a time.
///
/// Answers are told apart by the bits that the manuals fix. One of DLE EOT has no n in it, so they
/// are taken in the order of the questions. A byte that answers nothing is thrown away and counted.
class PRINTERSLIB_DRIVERS_EXPORT StatusDialogue
{
public:
    explicit StatusDialogue(const PrinterProfile &profile);  ///< for its dialect and vendor
    ~StatusDialogue();
    StatusDialogue(const StatusDialogue &) = delete;
    StatusDialogue &operator=(const StatusDialogue &) = delete;

    /// Whether the model's commands have a question. Not all have an answer from each printer.
    bool has(StatusQuestion question) const;
    /// The bytes to send for one question, which is due from now on; empty if there is none.
    /// Automatic switches the automatic status of an ESC/POS printer on.
    QByteArray ask(StatusQuestion question);
    /// The bytes to send for the whole status, by questions that act at once. Those that are still
    /// due aren't sent again, so that an answer isn't taken for another's; giveUp() comes before.
    QByteArray askStatus();
    /// The bytes by which an ESC/POS printer tells `id` when all before is printed: four bytes from
    /// 20 to 7E. Empty if it can't, or the id isn't one.
    QByteArray askResponse(const QByteArray &id);
    /// The bytes that switch the automatic status of an ESC/POS printer off; else empty.
    QByteArray automaticOff() const;

    /// Takes what came, and gives the answers that are whole by now.
    QVector<StatusAnswer> read(const QByteArray &bytes);
    /// The questions that have no answer yet, the oldest first.
    QVector<StatusQuestion> expected() const;
    /// The time is over: gives the questions without an answer, and expects none. What they told
    /// before counts no more. An answer that comes after all is thrown away as long as nothing is
    /// asked; so let the line be quiet before asking again.
    QVector<StatusQuestion> giveUp();
    /// Forgets the status too, as when the line was closed.
    void reset();

    /// What is known from all answers: known if the whole status was answered, or came by itself.
    PrinterStatus status() const;
    /// Bytes that answered nothing, since the beginning or reset().
    qint64 strayBytes() const;

private:
    class State;
    QScopedPointer<State> d;
};

}  // namespace printerslib::drivers
