#pragma once

#include "app/Mailbox.h"

#include <functional>
#include <thread>

namespace tallyfold {

/// Work on a thread of its own, one at a time, that ends with something to do on the thread this lives on.
class BackgroundTask {
public:
    /// What is done in the end, on the thread the task lives on.
    using Ending = std::function<void()>;
    /// What is done on the other thread, which knows nothing of the one it was started from.
    using Work = std::function<Ending()>;

    BackgroundTask() = default;
    /// Waits for the work, whose ending is never done then.
    ~BackgroundTask();
    BackgroundTask(const BackgroundTask &) = delete;
    BackgroundTask &operator=(const BackgroundTask &) = delete;

    /// Starts `work`; called only when that before it has come to its ending.
    void start(Work work);

    /// Does `action` on the thread the task lives on, before the ending. Called by the work.
    void post(std::function<void()> action);

private:
    void join();

    Mailbox m_mailbox;
    std::thread m_thread;
};

} // namespace tallyfold
