#pragma once

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QtGlobal>
#include <functional>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool memoryCanBeMeasured = false;  // a sanitizer takes more of it than the code
#else
constexpr bool memoryCanBeMeasured = true;
#endif

/// The most memory, in bytes, that a process has had which did nothing else; -1 if it failed.
inline qint64 peakOfProcess(const std::function<void()> &work)
{
    const pid_t child = fork();
    if (child == 0) {
        work();
        _exit(0);
    }
    int status = -1;
    rusage usage{};
    if (child < 0 || wait4(child, &status, 0, &usage) != child || status != 0)
        return -1;
    constexpr qint64 kibibyte = 1024;
    return usage.ru_maxrss * kibibyte;
}

/// What the work takes at its peak beyond what the process has anyway; -1 if it failed.
inline qint64 peakMemoryOf(const std::function<void()> &work)
{
    const qint64 before = peakOfProcess([] {});
    const qint64 peak = peakOfProcess(work);
    return before < 0 || peak < 0 ? -1 : peak - before;
}
