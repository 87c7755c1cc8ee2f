#pragma once

#include <QFlags>

/// What the printer is to do with a ticket, as bits; any combination is legal. The printer driver
/// gives the bits their meaning, so each is named after the documents that carry it.
enum EPrinterTicketAction : int {
    TicketActionNone = 0,
    TicketActionEveryDocument = 1,   ///< on the ticket of every document made here
    TicketActionBbCodeDocument = 4,  ///< on BBCode's own ticket and on the one before it
    TicketActionReceipt = 8,         ///< on the ticket of a receipt made from a template
};

Q_DECLARE_OPERATORS_FOR_FLAGS(QFlags<EPrinterTicketAction>)
