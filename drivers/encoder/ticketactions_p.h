#pragma once

#include "encoder/documentwriter_p.h"

namespace printerslib::drivers {

/// What a document asks for with the tickets, in the commands of a model's cutter and presenter.
class TicketActions
{
public:
    /// All outlive it.
    TicketActions(const PrintTarget &target, const PrintOptions &options, DocumentWriter &writer,
                  EncodedDocument &document);

    /// What is done with the ticket before, which may hang in the presenter still.
    void actOnPrevious(int actions);
    /// Feeds, cuts and hands out the ticket that was printed.
    /// @param seconds after which one that is held out is taken back; 0: never
    void end(int actions, int seconds);

private:
    enum Way { Leave, Eject, Hold };

    const PrinterProfile &profile() const { return m_target.profile(); }
    int endFeed(bool isCut) const;
    void cutAndCount();
    void handOut(Way way, int seconds);
    void takeBack();
    void eject();
    void setTimer(int seconds);
    void retractLater(int seconds);

    const PrintTarget &m_target;
    const PrintOptions &m_options;
    DocumentWriter &m_writer;
    EncodedDocument &m_document;
};

}  // namespace printerslib::drivers
