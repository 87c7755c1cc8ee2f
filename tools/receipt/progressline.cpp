#include "progressline.h"

#include <unistd.h>

#include <cstdio>

namespace tool {

namespace {

constexpr qint64 patienceMilliseconds = 1000;
constexpr qint64 showEveryMilliseconds = 100;
constexpr qint64 percent = 100;

}  // namespace

ProgressLine::ProgressLine(const QString &what)
    : m_what(what), m_nextShow(patienceMilliseconds), m_isTerminal(::isatty(STDERR_FILENO) != 0)
{
    m_timer.start();
}

ProgressLine::~ProgressLine()
{
    clear();
}

void ProgressLine::clear()
{
    if (m_isShown)
        std::fputs("\r\x1B[K", stderr);
    m_isShown = false;
}

void ProgressLine::show(qint64 done, qint64 all)
{
    if (!m_isTerminal || m_timer.elapsed() < m_nextShow)
        return;
    m_nextShow = m_timer.elapsed() + showEveryMilliseconds;
    m_isShown = true;
    const QString line =
        QStringLiteral("\r\x1B[K%1: %2 %").arg(m_what).arg(done * percent / qMax<qint64>(1, all));
    std::fputs(line.toUtf8().constData(), stderr);
}

}  // namespace tool
