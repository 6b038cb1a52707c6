#pragma once

#include "app/Mailbox.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <stop_token>
#include <thread>

namespace tallyfold {

/// Work on a thread of its own that nobody has to wait for: one that is given up runs out unheard, as soon as
/// it looks at its stop token. What it works on is its own, so that it may outlive everything else. Its
/// ending is done on the thread the task lives on.
class LooseTask {
public:
    /// What is done in the end, on the thread the task lives on, which it must not destroy.
    using Ending = std::function<void()>;
    /// What is done on the other thread. A stop is requested when the result is not wanted any more.
    using Work = std::function<Ending(const std::stop_token &givenUp)>;

    /// Starts `work`.
    explicit LooseTask(Work work);
    /// Gives the work up and does not wait for it. Its ending is not done any more.
    ~LooseTask();
    LooseTask(const LooseTask &) = delete;
    LooseTask &operator=(const LooseTask &) = delete;

    /// Whether the ending is still to come.
    [[nodiscard]] bool isRunning() const;

    /// Waits for the end of the work. Its ending is still to come.
    void wait();

    /// Asks the work to come to its end soon. The ending is done even so.
    void giveUp();

    /// Whether work still runs whose task is gone. A process that ends by the way of its static objects waits
    /// for it; one that does not want to leaves by `std::_Exit`. Called on the main thread.
    [[nodiscard]] static bool isAnyLeft();

private:
    /// What both threads have.
    struct Shared {
        std::mutex lock;
        Mailbox *way = nullptr; ///< Where endings go; null when nobody hears them any more.
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
