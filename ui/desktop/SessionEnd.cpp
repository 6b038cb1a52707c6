#include "ui/desktop/SessionEnd.h"

#include <QGuiApplication>
#include <QSessionManager>

#include <utility>

namespace tallyfold {

SessionEnd::SessionEnd(AppModel &model, Ask ask) : m_model(&model), m_ask(std::move(ask))
{
    // Direct, since the session manager waits for the answer.
    connect(
        qGuiApp, &QGuiApplication::commitDataRequest, this,
        [this](QSessionManager &session) {
            const bool mayAsk = m_model->isRunning() && session.allowsInteraction();
            if (mayEnd(mayAsk)) {
                session.release();
            } else {
                session.cancel();
            }
        },
        Qt::DirectConnection);
}

bool SessionEnd::mayEnd(bool mayAsk) const
{
    if (!m_model->isRunning() || !mayAsk) {
        return true;
    }
    const bool isToStop = m_ask();
    if (isToStop) {
        m_model->cancelRun();
    }
    return isToStop;
}

} // namespace tallyfold
