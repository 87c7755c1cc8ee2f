#include "interrupt.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <csignal>

namespace {

constexpr int endingSignals[] = {SIGINT, SIGTERM, SIGHUP};

int interruptPipe[2] = {-1, -1};

void noteInterrupt(int)
{
    const char byte = 0;
    const ssize_t written = ::write(interruptPipe[1], &byte, 1);
    Q_UNUSED(written)
}

}  // namespace

Interrupt::Interrupt()
{
    if (::pipe2(interruptPipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(interruptPipe[0], QSocketNotifier::Read);
    struct sigaction action = {};
    action.sa_handler = noteInterrupt;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int signal : endingSignals) {
        struct sigaction before = {};
        // What nohup has switched off stays off.
        const bool isOff =
            ::sigaction(signal, nullptr, &before) == 0 && before.sa_handler == SIG_IGN;
        if (signal != SIGHUP || !isOff)
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
