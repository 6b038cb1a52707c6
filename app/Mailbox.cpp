#include "app/Mailbox.h"

#include <QCoreApplication>
#include <QEvent>

#include <memory>
#include <utility>

namespace tallyfold {

namespace {

const QEvent::Type somethingWaits = static_cast<QEvent::Type>(QEvent::registerEventType());

} // namespace

void Mailbox::post(std::function<void()> work)
{
    auto event = std::make_unique<QEvent>(somethingWaits);
    {
        const std::lock_guard guard(m_lock);
        m_waiting.push_back(std::move(work));
    }
    QCoreApplication::postEvent(this, event.release());
}

bool Mailbox::event(QEvent *event)
{
    std::function<void()> work;
    {
        const std::lock_guard guard(
            m_lock); // Before the event is accessed, which comes from the other thread as well.
        if (event->type() == somethingWaits && !m_waiting.empty()) {
            work = std::move(m_waiting.front());
            m_waiting.pop_front();
        }
    }
    if (!work) {
        return QObject::event(event);
    }
    work();
    return true;
}

} // namespace tallyfold
