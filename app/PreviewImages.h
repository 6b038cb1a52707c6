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
    /// Maximum number of pages, and their width in pixels.
    static constexpr std::int64_t mostPages = 3;
    static constexpr std::int64_t pageWidth = 1200;
    /// Maximum width in pixels, for screens with more pixels.
    static constexpr std::int64_t mostPageWidth = 2400;

    QList<QImage> pages;           ///< In sRGB, with a device pixel ratio of 1.
    std::optional<QImage> closeUp; ///< The stamped edge of the first page, with a device pixel ratio of 2.

    /// The images of `file`, `width` pixels wide; none if it cannot be drawn. Blocks the calling thread.
    /// After a stop request it returns early, with some of the images or none.
    [[nodiscard]] static PreviewImages of(const PlannedFile &file, const StampSettings &settings,
                                          std::int64_t width = pageWidth,
                                          const std::stop_token &givenUp = {});
};

/// The stamped edge of `page`, the image of a page `pageWidth` points wide: the edge with the Bates number if
/// both edges have stamp lines. Nothing if it would be less than a pixel high.
[[nodiscard]] std::optional<QImage> closeUpOf(const QImage &page, double pageWidth,
                                              const StampSettings &settings);

} // namespace tallyfold
