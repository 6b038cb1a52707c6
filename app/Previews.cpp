#include "app/Previews.h"

#include <utility>

namespace tallyfold {

Previews::Previews(Request request, Draw draw, QObject *parent)
    : QObject(parent), m_request(std::move(request)), m_draw(std::move(draw))
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.setInterval(delay);
    connect(&m_timer, &QTimer::timeout, this, &Previews::begin);
}

Previews::Draw Previews::systemDraw()
{
    return [](const PreviewRequest &request, const std::stop_token &givenUp) {
        return PreviewImages::of(request.file, request.settings, request.width, givenUp);
    };
}

void Previews::refresh()
{
    m_wanted = 0;
    m_isDue = false;
    m_timer.start();
}

bool Previews::isRefreshing() const
{
    return m_timer.isActive() || m_isDue || m_wanted != 0;
}

void Previews::begin()
{
    m_isDue = false;
    std::optional<PreviewRequest> request = m_request();
    if (!request) {
        Q_EMIT refreshed({}, std::nullopt);
        return;
    }
    forgetEnded();
    if (m_drawings.size() < mostDrawings) {
        draw(std::move(*request));
    } else {
        m_isDue = true;
        m_drawings.front()->giveUp();
    }
}

void Previews::draw(PreviewRequest request)
{
    const std::int64_t number = ++m_drawn;
    m_wanted = number;
    m_drawings.push_back(
        std::make_unique<LooseTask>([this, number, draw = m_draw, request = std::move(request)](
                                        const std::stop_token &givenUp) -> LooseTask::Ending {
            return [this, number, images = draw(request, givenUp), name = request.file.source.name] {
                end(number, images, name);
            };
        }));
}

void Previews::end(std::int64_t number, const PreviewImages &images, const QString &name)
{
    if (number == m_wanted) {
        m_wanted = 0;
        Q_EMIT refreshed(images, name);
    } else if (m_isDue) {
        // Deferred: `begin` destroys the drawing that has ended, whose ending is running.
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (m_isDue) {
                    begin();
                }
            },
            Qt::QueuedConnection);
    }
}

void Previews::forgetEnded()
{
    std::erase_if(m_drawings,
                  [](const std::unique_ptr<LooseTask> &drawing) { return !drawing->isRunning(); });
}

} // namespace tallyfold
