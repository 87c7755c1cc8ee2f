#include "answerinput.h"

#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>

namespace tool {

std::optional<QString> AnswerInput::ask(const QString &prompt)
{
    std::fputs(prompt.toUtf8().constData(), stderr);
    std::fflush(stderr);
    while (!m_read.contains('\n') && !m_isAtEnd) {
        if (!readMore())
            return std::nullopt;
    }
    if (m_read.isEmpty())
        return std::nullopt;
    const int end = m_read.indexOf('\n');
    const QByteArray line = end < 0 ? m_read : m_read.left(end);
    m_read = end < 0 ? QByteArray() : m_read.mid(end + 1);
    return QString::fromUtf8(line).trimmed();
}

/// Gives false behind an interrupt.
bool AnswerInput::readMore()
{
    constexpr int step = 100;  // milliseconds between two looks for an interrupt
    pollfd input{STDIN_FILENO, POLLIN, 0};
    const int ready = ::poll(&input, 1, step);
    if (isInterrupted())
        return false;
    if (ready <= 0)
        return true;
    std::array<char, 4096> bytes = {};
    const ssize_t count = ::read(STDIN_FILENO, bytes.data(), bytes.size());
    if (count > 0)
        m_read.append(bytes.data(), static_cast<int>(count));
    m_isAtEnd = count == 0 || (count < 0 && errno != EINTR && errno != EAGAIN);
    return true;
}

}  // namespace tool
