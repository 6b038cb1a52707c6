#pragma once

#include "app/BackgroundTask.h"
#include "app/PreviewImages.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>

namespace tallyfold {

/// What is to be drawn.
struct PreviewRequest {
    PlannedFile file;
    StampSettings settings;
};

/// Draws previews off the main thread, a moment after the last of many requests. One refresh is alive at
/// most: a new one takes the place of one that waits, and makes the result of one that draws worthless.
class Previews final : public QObject {
    Q_OBJECT
public:
    /// How long after the last request drawing begins, on a clock that nobody sets.
    static constexpr std::chrono::milliseconds delay{150};

    /// `request` gives what to draw when the time has come; nothing when there is nothing.
    explicit Previews(std::function<std::optional<PreviewRequest>()> request, QObject *parent = nullptr);

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

    std::function<std::optional<PreviewRequest>()> m_request;
    QTimer m_timer;
    bool m_isWanted = false; ///< The drawing in progress, if any, is of the latest refresh.
    bool m_isDue = false;    ///< A refresh is to begin as soon as the drawing in progress ends.
    BackgroundTask m_drawing;
};

} // namespace tallyfold
