#pragma once

#include "app/Mailbox.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <stop_token>
#include <thread>

namespace tallyfold {

/// Work on another thread that can be abandoned without waiting for it: it then ends, without a result, as
/// soon as it checks its stop token. It owns all its data, so that it may outlive all other objects. Its
/// ending runs on the thread of the task.
class LooseTask {
public:
    /// Runs at the end, on the thread of the task. Must not destroy the task.
    using Ending = std::function<void()>;
    /// Runs on the other thread. A stop is requested when the result is no longer needed.
    using Work = std::function<Ending(const std::stop_token &givenUp)>;

    /// Starts `work`.
    explicit LooseTask(Work work);
    /// Abandons the work without waiting for it. Its ending does not run.
    ~LooseTask();
    LooseTask(const LooseTask &) = delete;
    LooseTask &operator=(const LooseTask &) = delete;

    /// Whether the ending has not run yet.
    [[nodiscard]] bool isRunning() const;

    /// Waits for the end of the work. Its ending is still to come.
    void wait();

    /// Requests a stop. The ending still runs.
    void giveUp();

    /// Whether abandoned work is still running. Destructors of static objects wait for it; a process that
    /// must not wait ends with `std::_Exit`. Called on the main thread.
    [[nodiscard]] static bool isAnyLeft();

private:
    /// State shared by both threads.
    struct Shared {
        std::mutex lock;
        Mailbox *way = nullptr; ///< Receives the ending; null once the task is destroyed.
        std::atomic<bool> isOver = false;
    };
    class Left;

    Mailbox m_mailbox;
    std::shared_ptr<Shared> m_shared;
    std::stop_source m_givenUp;
    std::thread m_thread;
    bool m_isRunning = true;
};

} // namespace tallyfold
