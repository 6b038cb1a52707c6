#include "app/Previews.h"

#include <utility>

namespace tallyfold {

Previews::Previews(std::function<std::optional<PreviewRequest>()> request, QObject *parent)
    : QObject(parent), m_request(std::move(request))
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.setInterval(delay);
    connect(&m_timer, &QTimer::timeout, this, &Previews::begin);
}

void Previews::refresh()
{
    m_isWanted = false;
    m_isDue = false;
    m_timer.start();
}

bool Previews::isRefreshing() const
{
    return m_timer.isActive() || m_isDue || (m_isWanted && m_drawing.isRunning());
}

void Previews::begin()
{
    if (m_drawing.isRunning()) {
        m_isDue = true;
        return;
    }
    m_isDue = false;
    if (std::optional<PreviewRequest> request = m_request()) {
        draw(std::move(*request));
    } else {
        Q_EMIT refreshed({}, std::nullopt);
    }
}

void Previews::draw(PreviewRequest request)
{
    m_isWanted = true;
    m_drawing.start([this, request = std::move(request)]() -> BackgroundTask::Ending {
        return [this, images = PreviewImages::of(request.file, request.settings),
                name = request.file.source.name] {
            if (m_isWanted) {
                m_isWanted = false;
                Q_EMIT refreshed(images, name);
            } else if (m_isDue) {
                begin();
            }
        };
    });
}

} // namespace tallyfold
