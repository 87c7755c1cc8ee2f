#pragma once

#include <QSocketNotifier>
#include <memory>

/// Turns an interrupt, a hang-up of the terminal, a request to end and the end of who reads the
/// output into an event. The second one of the first three ends the program as ever. One object at
/// a time.
class Interrupt
{
public:
    enum Kind {
        OfPeopleAndReaders,
        OfPeople,  ///< that nobody reads the output any more changes nothing
    };
    explicit Interrupt(Kind kind = OfPeopleAndReaders);
    ~Interrupt();
    Interrupt(const Interrupt &) = delete;
    Interrupt &operator=(const Interrupt &) = delete;

    /// Activated by the first; null if the system has no pipe left.
    QSocketNotifier *notifier() const { return m_notifier.get(); }
    /// Whether there has been one by now.
    bool hasCome() const;

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};
