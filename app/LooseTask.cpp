#include "app/LooseTask.h"

#include <utility>
#include <vector>

namespace tallyfold {

/// The threads of abandoned tasks.
class LooseTask::Left {
public:
    static Left &threads()
    {
        static Left left;
        return left;
    }

    ~Left()
    {
        for (Thread &left : m_threads) {
            left.thread.join();
        }
    }

    void take(std::thread thread, std::shared_ptr<const Shared> shared)
    {
        forgetEnded(); // So that they do not accumulate.
        m_threads.push_back({std::move(thread), std::move(shared)});
    }

    [[nodiscard]] bool isAny()
    {
        forgetEnded();
        return !m_threads.empty();
    }

private:
    struct Thread {
        std::thread thread;
        std::shared_ptr<const Shared> shared;
    };

    void forgetEnded()
    {
        std::erase_if(m_threads, [](Thread &left) {
            const bool isOver = left.shared->isOver;
            if (isOver) {
                left.thread.join(); // Returns at once: its work is done.
            }
            return isOver;
        });
    }

    std::vector<Thread> m_threads;
};

LooseTask::LooseTask(Work work) : m_shared(std::make_shared<Shared>())
{
    m_shared->way = &m_mailbox;
    m_thread =
        std::thread([this, shared = m_shared, givenUp = m_givenUp.get_token(), work = std::move(work)] {
            Ending ending = work(givenUp);
            const std::lock_guard guard(shared->lock);
            if (shared->way != nullptr) {
                shared->way->post([this, ending = std::move(ending)] {
                    m_isRunning = false;
                    ending();
                });
            }
            shared->isOver = true;
        });
}

LooseTask::~LooseTask()
{
    {
        const std::lock_guard guard(m_shared->lock);
        m_shared->way = nullptr;
    }
    giveUp();
    if (m_isRunning && m_thread.joinable()) {
        Left::threads().take(std::move(m_thread), m_shared);
    } else {
        wait(); // It has nothing left to do.
    }
}

bool LooseTask::isRunning() const
{
    return m_isRunning;
}

void LooseTask::wait()
{
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

void LooseTask::giveUp()
{
    m_givenUp.request_stop();
}

bool LooseTask::isAnyLeft()
{
    return Left::threads().isAny();
}

} // namespace tallyfold
