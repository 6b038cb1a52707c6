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

/// What is to be drawn.
struct PreviewRequest {
    PlannedFile file;
    StampSettings settings;
    std::int64_t width = PreviewImages::pageWidth; ///< Of a page, in pixels.
};

/// Draws previews off the main thread, a moment after the last of many requests. One refresh is alive at
/// most: a new one takes the place of one that waits, and makes the result of one that draws worthless. It
/// does not wait for that one, which runs out unheard.
class Previews final : public QObject {
    Q_OBJECT
public:
    /// How long after the last request drawing begins, on a clock that nobody sets.
    static constexpr std::chrono::milliseconds delay{150};
    /// So many drawings are under way at most, each with a thread and a reader: the one that is wanted and
    /// one that runs out. Where that one has not ended before another has to, it is given up.
    static constexpr std::size_t mostDrawings = 2;

    /// Gives what to draw when the time has come; nothing when there is nothing.
    using Request = std::function<std::optional<PreviewRequest>()>;
    /// Draws on a thread that nobody waits for. A stop is requested when it is given up.
    using Draw = std::function<PreviewImages(const PreviewRequest &, const std::stop_token &)>;

    explicit Previews(Request request, Draw draw = systemDraw(), QObject *parent = nullptr);

    /// `PreviewImages::of`.
    [[nodiscard]] static Draw systemDraw();

    /// Asks for a refresh.
    void refresh();

    /// Whether a refresh waits or draws.
    [[nodiscard]] bool isRefreshing() const;

Q_SIGNALS:
    /// A refresh came to its end: what was drawn, of the file `name`; nothing of no file.
    void refreshed(const tallyfold::PreviewImages &images, const std::optional<QString> &name);

private:
    void begin();
    void draw(PreviewRequest request);
    void end(std::int64_t number, const PreviewImages &images, const QString &name);
    void forgetEnded();

    Request m_request;
    Draw m_draw;
    QTimer m_timer;
    std::int64_t m_drawn = 0;  ///< How many drawings were begun.
    std::int64_t m_wanted = 0; ///< Which of them is of the latest refresh; 0 for none.
    bool m_isDue = false;      ///< A refresh is to begin as soon as there is room for a drawing.
    std::deque<std::unique_ptr<LooseTask>> m_drawings; ///< The oldest first.
};

} // namespace tallyfold
