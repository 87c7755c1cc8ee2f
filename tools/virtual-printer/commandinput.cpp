#include "commandinput.h"

#include <unistd.h>

namespace {

constexpr int longestLine = 4096;  // what is longer is cut into several

/// Reading a terminal from the background stops the program.
bool mayRead()
{
    return ::isatty(STDIN_FILENO) == 0 || ::tcgetpgrp(STDIN_FILENO) == ::getpgrp();
}

}  // namespace

CommandInput::CommandInput() : m_notifier(STDIN_FILENO, QSocketNotifier::Read)
{
    connect(&m_notifier, &QSocketNotifier::activated, this, [this] { read(); });
    look();
}

void CommandInput::look()
{
    m_notifier.setEnabled(!m_hasEnded && mayRead());
}

void CommandInput::read()
{
    if (!mayRead()) {
        m_notifier.setEnabled(false);
        return;
    }
    char buffer[longestLine];
    const ssize_t count = ::read(STDIN_FILENO, buffer, sizeof buffer);
    if (count <= 0) {
        m_hasEnded = true;
        m_notifier.setEnabled(false);
        tellLine();
        return;
    }
    for (ssize_t i = 0; i < count; ++i) {
        if (buffer[i] == '\n' || m_line.size() == longestLine)
            tellLine();
        if (buffer[i] != '\n')
            m_line.append(buffer[i]);
    }
}

void CommandInput::tellLine()
{
    const QString line = QString::fromUtf8(m_line).trimmed();
    m_line.clear();
    if (!line.isEmpty())
        Q_EMIT lineRead(line);
}
