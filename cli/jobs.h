// SPDX-FileCopyrightText: Aerolith developers
// Independent jobs on several threads, with their results in order.
#pragma once

#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <vector>

namespace cli {

/// Calls @p work for 0, 1, ... @p count - 1 on @p threads threads. Calls @p take on this thread for
/// each result, in that order. At most four results per thread are pending, so that memory does not
/// grow with the number of jobs. If the system refuses threads, fewer are used, or only this one.
/// @param work called on several threads at the same time; does not throw
/// @param take returns whether to continue
template<typename Result>
void run_in_order(std::size_t count, int threads, const std::function<Result(std::size_t)>& work,
                  const std::function<bool(std::size_t, Result&)>& take) {
    const auto alone = [&] {
        for (std::size_t i = 0; i < count; ++i) {
            Result result = work(i);
            if (!take(i, result))
                return;
        }
    };
    const std::size_t workers = std::min(count, std::size_t(std::max(threads, 1)));
    if (workers <= 1)
        return alone();

    const std::size_t window = 4 * workers;
    std::vector<std::optional<Result>> results(window);
    std::mutex mutex;
    std::condition_variable changed;
    std::size_t next = 0;
    std::size_t taken = 0;
    bool stopped = false;

    const auto serve = [&] {
        std::unique_lock<std::mutex> lock(mutex);
        while (true) {
            changed.wait(lock, [&] { return stopped || next == count || next < taken + window; });
            if (stopped || next == count)
                return;
            const std::size_t i = next++;
            lock.unlock();
            Result result = work(i);
            lock.lock();
            results[i % window] = std::move(result);
            changed.notify_all();
        }
    };

    std::vector<std::thread> pool;
    pool.reserve(workers);
    try {
        while (pool.size() < workers)
            pool.emplace_back(serve);
    } catch (const std::system_error&) {
        if (pool.empty())
            return alone();
    }

    while (taken < count && !stopped) {
        std::unique_lock<std::mutex> lock(mutex);
        std::optional<Result>& place = results[taken % window];
        changed.wait(lock, [&] { return place.has_value(); });
        Result result = std::move(*place);
        place.reset();
        lock.unlock();
        const bool go_on = take(taken, result);
        lock.lock();
        ++taken;
        stopped = !go_on;
        changed.notify_all();
    }
    for (std::thread& thread : pool)
        thread.join();
}

} // namespace cli
