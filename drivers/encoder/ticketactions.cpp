#include "encoder/ticketactions_p.h"

#include <algorithm>

#include "printerdocs/eprinterticketaction.h"

namespace printerslib::drivers {

namespace {

using Id = CommandId;

constexpr int cutBit = TicketActionEveryDocument;
constexpr int ejectBit = TicketActionBbCodeDocument;
constexpr int holdBit = TicketActionReceipt;

// Custom holds 12 steps out where nothing is said, as its own examples do.
constexpr int usualSteps = 12;
constexpr double millimetresPerStep = 7.3;
constexpr int usualMillimetres = 60;

int stepsOf(int millimetres)
{
    return millimetres <= 0 ? usualSteps
                            : std::clamp(qRound(millimetres / millimetresPerStep), 1, 255);
}

}  // namespace

TicketActions::TicketActions(const PrintTarget &target, const PrintOptions &options,
                             DocumentWriter &writer, EncodedDocument &document)
    : m_target(target), m_options(options), m_writer(writer), m_document(document)
{}

int TicketActions::endFeed(bool isCut) const
{
    const qint64 lines = qint64(m_options.emptyLinesAtEnd) * m_target.font(0).cell.height();
    const auto dots = int(qBound(qint64(0), lines, qint64(PrintLayout::longest)));
    return isCut ? std::max(dots, profile().dotsToCutter()) : dots;
}

void TicketActions::cutAndCount()
{
    m_writer.cut();
    ++m_document.pieces;
}

void TicketActions::actOnPrevious(int actions)
{
    const bool hasCutter = profile().cutCommand() != CutCommand::None;
    if ((actions & cutBit) != 0 && hasCutter) {
        m_writer.feed(profile().dotsToCutter());
        cutAndCount();
    }
    if ((actions & ejectBit) != 0)
        eject();
    if ((actions & holdBit) != 0)
        takeBack();
}

void TicketActions::end(int actions, int seconds)
{
    const bool wantsCut = m_target.wantsCut(actions);
    const bool hasCutter = profile().cutCommand() != CutCommand::None;
    m_writer.feed(endFeed(wantsCut && hasCutter));
    if (!wantsCut)
        return;
    if (!hasCutter) {
        m_writer.note(QStringLiteral("the model has no cutter"), false);
        return;
    }
    const Way way = (actions & ejectBit) != 0 ? Eject : (actions & holdBit) != 0 ? Hold : Leave;
    handOut(way, std::max(0, seconds));
}

void TicketActions::handOut(Way way, int seconds)
{
    switch (profile().presenter()) {
        case Presenter::None:
            cutAndCount();
            return;
        case Presenter::Citizen:
        case Presenter::Star:
            // These hold out what they cut, and take it back by themselves.
            if (way != Leave)
                setTimer(way == Hold ? seconds : 0);
            cutAndCount();
            return;
        case Presenter::Custom:
            cutAndCount();
            if (way == Eject)
                eject();
            if (way == Hold)
                m_writer.commands().putChosen(Id::EjectorPresent, 3, stepsOf(m_options.ticketMove));
            break;
        case Presenter::Swecoin:
            if (way == Eject) {
                m_writer.commands().put(Id::CutAndEject);
                ++m_document.pieces;
                return;
            }
            cutAndCount();
            if (way == Hold)
                m_writer.commands().put(
                    Id::EjectorPresent,
                    std::clamp(m_options.ticketMove > 0 ? m_options.ticketMove : usualMillimetres,
                               1, 255));
            break;
    }
    if (way == Hold && seconds > 0)
        retractLater(seconds);
}

/// Takes back what is held out.
void TicketActions::takeBack()
{
    constexpr int allBack = 255;
    switch (profile().presenter()) {
        case Presenter::None:
            return;
        case Presenter::Custom:
        case Presenter::Citizen:
            m_writer.commands().put(Id::EjectorRetract);
            return;
        case Presenter::Star:
            m_writer.commands().put(Id::Presenter, '0', 0);
            return;
        case Presenter::Swecoin:
            m_writer.commands().put(Id::EjectOrRetract, allBack);
            return;
    }
}

/// Hands out what is cut already. Citizen's and Star's presenters have done so with the cut.
void TicketActions::eject()
{
    if (profile().presenter() == Presenter::Custom)
        m_writer.commands().put(Id::EjectorEject);
    if (profile().presenter() == Presenter::Swecoin)
        m_writer.commands().put(Id::ClearPresenter);
}

/// Seconds after which the presenter takes a ticket back by itself; 0: never. What its timer
/// doesn't reach is the host's.
void TicketActions::setTimer(int seconds)
{
    constexpr int mostOfCitizen = 9;
    constexpr int mostOfStar = 255;
    const int most = profile().presenter() == Presenter::Star ? mostOfStar : mostOfCitizen;
    const int step = std::max(1, profile().presenterTimerStep());
    const bool hasTimer = profile().presenterTimerStep() > 0;
    const qint64 steps = (qint64(seconds) * 1000 + step - 1) / step;
    const int number = hasTimer && steps <= most ? int(steps) : 0;
    if (profile().presenter() == Presenter::Star)
        m_writer.commands().put(Id::Presenter, '1', number);
    else if (hasTimer)
        m_writer.commands().put(Id::EjectorTimer, number);
    if (seconds > 0 && number == 0)
        retractLater(seconds);
}

void TicketActions::retractLater(int seconds)
{
    const int size = m_document.bytes.size();
    takeBack();
    m_document.retraction = m_document.bytes.mid(size);
    m_document.bytes.truncate(size);
    m_document.retractAfterSeconds = m_document.retraction.isEmpty() ? 0 : seconds;
}

}  // namespace printerslib::drivers
