#pragma once

#include <condition_variable>
#include <mutex>

namespace tallyfold::tests {

/// Blocks a run on its thread until the test opens the gate.
class Gate {
public:
    void pass()
    {
        std::unique_lock lock(m_lock);
        m_isReached = true;
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return m_isOpen; });
    }

    void awaitArrival()
    {
        std::unique_lock lock(m_lock);
        m_changed.wait(lock, [this] { return m_isReached; });
    }

    void open()
    {
        const std::lock_guard lock(m_lock);
        m_isOpen = true;
        m_changed.notify_all();
    }

private:
    std::mutex m_lock;
    std::condition_variable m_changed;
    bool m_isReached = false;
    bool m_isOpen = false;
};

} // namespace tallyfold::tests
