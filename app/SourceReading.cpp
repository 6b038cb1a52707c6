#include "app/SourceReading.h"

#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <thread>
#include <utility>

namespace tallyfold {

/// What the threads have in common.
struct SourceReading::Shared {
    std::mutex lock;
    std::condition_variable changed;
    std::optional<std::vector<std::filesystem::path>> locations; ///< Once they were found.
    std::vector<std::optional<KnownSources::Reading>> readings;  ///< One for each of them.
    std::size_t next = 0;                                        ///< The one that is read next.
    std::size_t read = 0;                                        ///< How many were read, from the first on.
    bool isStopped = false;

    [[nodiscard]] bool isAllRead() const
    {
        return locations && read == locations->size();
    }
    [[nodiscard]] bool isOver() const
    {
        return isStopped || isAllRead();
    }

    void found(std::vector<std::filesystem::path> those)
    {
        const std::lock_guard guard(lock);
        if (!isStopped) { // Who stopped it knows what was found by then.
            readings.resize(those.size());
            locations = std::move(those);
        }
        changed.notify_all();
    }

    /// Reads files until there is none left. The lock is not held meanwhile.
    void work(const Read &readOne)
    {
        std::unique_lock guard(lock);
        changed.wait(guard, [this] { return isStopped || locations; });
        while (!isStopped && next < locations->size()) {
            const std::size_t place = next++;
            const std::filesystem::path location = (*locations)[place];
            guard.unlock();
            KnownSources::Reading reading = readOne(location);
            guard.lock();
            if (isStopped) {
                return;
            }
            readings[place] = std::move(reading);
            while (read < readings.size() && readings[read]) {
                ++read;
            }
            if (isOver()) {
                changed.notify_all();
            }
        }
    }
};

SourceReading::SourceReading(Find find, const Read &read, int threads) : m_shared(std::make_shared<Shared>())
{
    const auto nothingToDo = [] {};
    m_tasks.push_back(std::make_unique<LooseTask>(
        [=, shared = m_shared, find = std::move(find)](const std::stop_token &stopped) -> LooseTask::Ending {
            shared->found(find(stopped));
            shared->work(read);
            return nothingToDo;
        }));
    for (int thread = 1; thread < threads; ++thread) {
        m_tasks.push_back(
            std::make_unique<LooseTask>([=, shared = m_shared](const std::stop_token &) -> LooseTask::Ending {
                shared->work(read);
                return nothingToDo;
            }));
    }
}

SourceReading::~SourceReading()
{
    stop();
    const bool isAllRead = [this] {
        const std::lock_guard guard(m_shared->lock);
        return m_shared->isAllRead();
    }();
    if (isAllRead) { // The threads have nothing left to do.
        for (const auto &task : m_tasks) {
            task->wait();
        }
    }
}

int SourceReading::usualThreads()
{
    constexpr unsigned most = 2;
    return static_cast<int>(std::clamp(std::thread::hardware_concurrency(), 1U, most));
}

SourceReading::Progress SourceReading::progress() const
{
    const std::lock_guard guard(m_shared->lock);
    Progress progress;
    if (m_shared->locations) {
        progress.files = static_cast<std::int64_t>(m_shared->locations->size());
    }
    progress.read = static_cast<std::int64_t>(m_shared->read);
    return progress;
}

bool SourceReading::isOver() const
{
    return waitFor(std::chrono::nanoseconds(0));
}

bool SourceReading::waitFor(std::chrono::nanoseconds longest) const
{
    std::unique_lock guard(m_shared->lock);
    return m_shared->changed.wait_for(guard, longest, [this] { return m_shared->isOver(); });
}

void SourceReading::wait() const
{
    std::unique_lock guard(m_shared->lock);
    m_shared->changed.wait(guard, [this] { return m_shared->isOver(); });
}

void SourceReading::stop()
{
    for (const auto &task : m_tasks) {
        task->giveUp();
    }
    const std::lock_guard guard(m_shared->lock);
    m_shared->isStopped = true;
    m_shared->changed.notify_all();
}

std::vector<KnownSources::Reading> SourceReading::take()
{
    const std::lock_guard guard(m_shared->lock);
    std::vector<KnownSources::Reading> readings;
    readings.reserve(m_shared->read);
    for (std::size_t place = 0; place < m_shared->read; ++place) {
        readings.push_back(*std::exchange(m_shared->readings[place], std::nullopt));
    }
    m_shared->readings.clear();
    return readings;
}

} // namespace tallyfold
