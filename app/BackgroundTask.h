#pragma once

#include "app/Mailbox.h"

#include <functional>
#include <thread>

namespace tallyfold {

/// Runs work on another thread, one item at a time, and its result on the thread of this object.
class BackgroundTask {
public:
    /// Runs at the end, on the thread of the task.
    using Ending = std::function<void()>;
    /// Runs on the other thread.
    using Work = std::function<Ending()>;

    BackgroundTask() = default;
    /// Waits for the work. Its ending does not run.
    ~BackgroundTask();
    BackgroundTask(const BackgroundTask &) = delete;
    BackgroundTask &operator=(const BackgroundTask &) = delete;

    /// Starts `work`. Must not be called before the ending of earlier work has run.
    void start(Work work);

    /// Runs `action` on the thread of the task, before the ending. Called by the work.
    void post(std::function<void()> action);

private:
    void join();

    Mailbox m_mailbox;
    std::thread m_thread;
};

} // namespace tallyfold
