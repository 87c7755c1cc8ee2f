#pragma once

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

/// Runs each of the functions on a thread of its own, and returns when all have ended. None begins
/// before all threads are there, so that they meet even if each takes no time.
inline void runTogether(const std::vector<std::function<void()>> &functions)
{
    std::atomic<std::size_t> arrived{0};
    std::vector<std::thread> threads;
    threads.reserve(functions.size());
    for (const std::function<void()> &function : functions) {
        threads.emplace_back([&arrived, &function, count = functions.size()] {
            ++arrived;
            while (arrived < count)
                std::this_thread::yield();
            function();
        });
    }
    for (std::thread &thread : threads)
        thread.join();
}

/// Runs the function on `count` threads at once; it is told the number of its thread, from 0.
inline void runOnThreads(int count, const std::function<void(int thread)> &function)
{
    std::vector<std::function<void()>> functions;
    for (int thread = 0; thread < count; ++thread)
        functions.emplace_back([&function, thread] { function(thread); });
    runTogether(functions);
}
