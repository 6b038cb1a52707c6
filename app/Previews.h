#pragma once

#include "app/LooseTask.h"
#include "app/PreviewImages.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

namespace tallyfold {

/// A file to draw.
struct PreviewRequest {
    PlannedFile file;
    StampSettings settings;
    std::int64_t width = PreviewImages::pageWidth; ///< Of a page, in pixels.
};

/// Draws previews on other threads, after a delay in which further requests may come. At most one refresh is
/// current: a new one replaces one that is waiting, and the result of one that is being drawn is dropped
/// without waiting for it.
class Previews final : public QObject {
    Q_OBJECT
public:
    /// Time from the last request to the start of drawing, on a monotonic clock.
    static constexpr std::chrono::milliseconds delay{150};
    /// Maximum number of concurrent drawings, each with a thread and a reader: the current one and an
    /// outdated one. If another has to begin, the outdated one is stopped.
    static constexpr std::size_t mostDrawings = 2;

    /// Returns what to draw, called after the delay; nothing if there is nothing to draw.
    using Request = std::function<std::optional<PreviewRequest>()>;
    /// Draws, on another thread. A stop is requested when the result is no longer needed.
    using Draw = std::function<PreviewImages(const PreviewRequest &, const std::stop_token &)>;

    explicit Previews(Request request, Draw draw = systemDraw(), QObject *parent = nullptr);

    /// `PreviewImages::of`.
    [[nodiscard]] static Draw systemDraw();

    /// Requests a refresh.
    void refresh();

    /// Whether a refresh is waiting or being drawn.
    [[nodiscard]] bool isRefreshing() const;

Q_SIGNALS:
    /// A refresh has ended: `images` of the file `name`; no name if there was nothing to draw.
    void refreshed(const tallyfold::PreviewImages &images, const std::optional<QString> &name);

private:
    void begin();
    void draw(PreviewRequest request);
    void end(std::int64_t number, const PreviewImages &images, const QString &name);
    void forgetEnded();

    Request m_request;
    Draw m_draw;
    QTimer m_timer;
    std::int64_t m_drawn = 0;                          ///< Number of drawings begun.
    std::int64_t m_wanted = 0;                         ///< Number of the current drawing; 0 for none.
    bool m_isDue = false;                              ///< A refresh is waiting for a drawing to end.
    std::deque<std::unique_ptr<LooseTask>> m_drawings; ///< The oldest first.
};

} // namespace tallyfold
