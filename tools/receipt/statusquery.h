#pragma once

#include <printerslib/drivers/blockingtransport.h>
#include <printerslib/drivers/devicelock.h>
#include <printerslib/drivers/statusdialogue.h>

#include <QString>

#include "interrupt.h"

namespace tool {

/// What became of asking a printer how it is.
struct StatusResult
{
    printerslib::drivers::PrinterStatus status;  ///< as far as it was told
    bool isReached = false;                      ///< whether its line could be opened
    QString fault;                               ///< why it isn't whole; empty if it is
    QString note;                                ///< what else is to be said; mostly empty
};

/// Asks one printer how it is, once, when no other program prints on it. Each wait ends, and is cut
/// short by an interrupt.
class StatusQuery
{
public:
    /// @param milliseconds for each of turn, line and answer
    StatusQuery(const printerslib::drivers::PrinterAddress &address,
                const printerslib::drivers::PrinterProfile &profile, int milliseconds);

    /// Tells on standard error how many are in front, while others are.
    StatusResult run();

private:
    bool getTurn();
    bool openLine();
    bool ask();
    void askDetails();
    /// Whether all that was asked is answered.
    bool readAnswers(int milliseconds);
    bool mayGoOn();
    bool fail(const QString &fault);
    bool failOfLine();
    QString silenceText(const QByteArray &asked) const;

    const printerslib::drivers::PrinterAddress m_address;
    const printerslib::drivers::PrinterProfile m_profile;
    const int m_milliseconds;
    const Interrupt m_interrupt;
    printerslib::drivers::DeviceLock m_lock;
    printerslib::drivers::BlockingTransport m_transport;
    printerslib::drivers::StatusDialogue m_dialogue;
    StatusResult m_result;
};

}  // namespace tool
