#pragma once

#include <QObject>

#include <deque>
#include <functional>
#include <mutex>

namespace tallyfold {

/// Accepts work from any thread and runs it on the thread of this object, in the order in which it was
/// posted. Work still pending at destruction does not run.
///
/// The closures are kept in a queue with its own mutex instead of the event queue of Qt, so that the thread
/// sanitizer, for which Qt is not instrumented, can check everything that passes between threads.
class Mailbox final : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Thread-safe.
    void post(std::function<void()> work);

protected:
    bool event(QEvent *event) override;

private:
    std::mutex m_lock;
    std::deque<std::function<void()>> m_waiting;
};

} // namespace tallyfold
