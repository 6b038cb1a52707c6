#include "app/BackgroundTask.h"

#include <utility>

namespace tallyfold {

BackgroundTask::~BackgroundTask()
{
    join();
}

void BackgroundTask::start(Work work)
{
    join(); // The thread of earlier work, which has finished.
    m_thread = std::thread([this, work = std::move(work)] { m_mailbox.post(work()); });
}

void BackgroundTask::post(std::function<void()> action)
{
    m_mailbox.post(std::move(action));
}

void BackgroundTask::join()
{
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

} // namespace tallyfold
