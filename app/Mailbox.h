#pragma once

#include <QObject>

#include <deque>
#include <functional>
#include <mutex>

namespace tallyfold {

/// Takes work from any thread and does it on the thread it lives on, in the order it was posted. Work that is
/// still waiting when the mailbox goes is never done.
///
/// The closures wait behind a lock of their own and not in the event queue: what passes between threads can
/// then be checked from end to end by the thread sanitizer, which does not see into the event queue.
class Mailbox final : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Called on any thread.
    void post(std::function<void()> work);

protected:
    bool event(QEvent *event) override;

private:
    std::mutex m_lock;
    std::deque<std::function<void()>> m_waiting;
};

} // namespace tallyfold
