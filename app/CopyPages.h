#pragma once

#include "app/LooseTask.h"

#include <QImage>
#include <QObject>
#include <QString>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>

namespace tallyfold {

/// Draws one page of a copy at a time, in the background: the one that was asked for last.
class CopyPages final : public QObject {
    Q_OBJECT
public:
    /// A page of a file, and how it is drawn.
    struct Wanted {
        std::filesystem::path folder;
        QString file;
        std::int64_t page = 1;
        std::int64_t width = 1; ///< Pixels.
        bool operator==(const Wanted &) const = default;
    };
    /// What came of it.
    struct Shown {
        Wanted wanted;
        std::optional<std::int64_t> pages; ///< How many the file has; nothing when it cannot be read.
        QImage picture;                    ///< In sRGB; null when it cannot be drawn.
    };

    using QObject::QObject;
    ~CopyPages() override;

    /// Has a page drawn, in the place of any that is drawn now.
    void show(const Wanted &wanted);

    [[nodiscard]] bool isDrawing() const;

Q_SIGNALS:
    /// The page that was asked for last is there, or cannot be had.
    void shown(const tallyfold::CopyPages::Shown &shown);

private:
    void begin();
    void end(const Shown &shown);

    std::optional<Wanted> m_wanted; ///< Until it is there.
    bool m_isGivenUp = false;       ///< Whether what is drawn now is not wanted any more.
    std::unique_ptr<LooseTask> m_task;
};

} // namespace tallyfold
