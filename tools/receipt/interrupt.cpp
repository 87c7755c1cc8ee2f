#include "interrupt.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <csignal>

namespace {

constexpr int endingSignals[] = {SIGINT, SIGTERM, SIGHUP, SIGPIPE};

bool isFromAPerson(int signal)
{
    return signal == SIGINT || signal == SIGTERM;
}

int interruptPipe[2] = {-1, -1};

void noteInterrupt(int)
{
    const char byte = 0;
    const ssize_t written = ::write(interruptPipe[1], &byte, 1);
    Q_UNUSED(written)
}

}  // namespace

Interrupt::Interrupt(Kind kind)
{
    if (::pipe2(interruptPipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(interruptPipe[0], QSocketNotifier::Read);
    struct sigaction action = {};
    action.sa_handler = noteInterrupt;
    for (const int signal : endingSignals) {
        if (signal == SIGPIPE && kind == OfPeople) {
            std::signal(SIGPIPE, SIG_IGN);
            continue;
        }
        // Each line to a reader that has gone gives another one.
        action.sa_flags = signal == SIGPIPE ? 0 : static_cast<int>(SA_RESETHAND);
        struct sigaction before = {};
        // What nohup or the parent has switched off stays off.
        const bool isOff =
            ::sigaction(signal, nullptr, &before) == 0 && before.sa_handler == SIG_IGN;
        if (isFromAPerson(signal) || !isOff)
            ::sigaction(signal, &action, nullptr);
    }
}

// The pipe stays, as a signal may be on its way.
Interrupt::~Interrupt() = default;

bool Interrupt::hasCome() const
{
    pollfd pipe{interruptPipe[0], POLLIN, 0};
    return interruptPipe[0] >= 0 && ::poll(&pipe, 1, 0) == 1;
}
