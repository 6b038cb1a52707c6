#pragma once

#include "core/ProductionPlan.h"

#include <QImage>
#include <QList>
#include <QString>

#include <cstdint>
#include <optional>
#include <stop_token>

namespace tallyfold {

/// The stamped first pages of one file.
struct PreviewImages {
    /// How many pages are drawn at most, and how wide, in pixels.
    static constexpr std::int64_t mostPages = 3;
    static constexpr std::int64_t pageWidth = 1200;
    /// How wide at most, for a screen that shows them wider than that.
    static constexpr std::int64_t mostPageWidth = 2400;

    QList<QImage> pages;           ///< In sRGB, a pixel to the point.
    std::optional<QImage> closeUp; ///< The stamped edge of the first page, two pixels to the point.

    /// Draws those of `file`, `width` pixels wide; none when it cannot be drawn. Works on the calling thread
    /// and takes its time. A stop that is requested meanwhile ends it soon, with any of them or none.
    [[nodiscard]] static PreviewImages of(const PlannedFile &file, const StampSettings &settings,
                                          std::int64_t width = pageWidth,
                                          const std::stop_token &givenUp = {});
};

/// The band of `page`, the picture of a page `pageWidth` points wide, at the edge that bears the stamp: the
/// one that bears the Bates number where lines stand at both. Nothing when the band is less than a pixel
/// high.
[[nodiscard]] std::optional<QImage> closeUpOf(const QImage &page, double pageWidth,
                                              const StampSettings &settings);

} // namespace tallyfold
