#include "app/Mailbox.h"

#include <QCoreApplication>
#include <QEvent>

#include <utility>

namespace tallyfold {

namespace {

const QEvent::Type somethingWaits = static_cast<QEvent::Type>(QEvent::registerEventType());

} // namespace

void Mailbox::post(std::function<void()> work)
{
    {
        const std::lock_guard guard(m_lock);
        m_waiting.push_back(std::move(work));
    }
    QCoreApplication::postEvent(this, new QEvent(somethingWaits)); // NOLINT(cppcoreguidelines-owning-memory)
}

bool Mailbox::event(QEvent *event)
{
    if (event->type() != somethingWaits) {
        return QObject::event(event);
    }
    std::function<void()> work;
    {
        const std::lock_guard guard(m_lock);
        if (m_waiting.empty()) {
            return true;
        }
        work = std::move(m_waiting.front());
        m_waiting.pop_front();
    }
    work();
    return true;
}

} // namespace tallyfold
