#pragma once

#include "pdf/viewing/Bitmap.h"

#include <QString>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <stop_token>

namespace tallyfold::check {

/// A page of a copy as it is looked at, and how many there are.
struct CopyPage {
    std::int64_t pages = 0;
    std::optional<pdf::Bitmap> picture; ///< Absent when there is no such page, or it cannot be drawn.
};

/// Draws page `page`, from 1, of the file called `name` in `folder`, `width` pixels wide. Nothing when there
/// is no such file, or it cannot be read. A stop that is requested meanwhile, on any thread, ends it soon.
[[nodiscard]] std::optional<CopyPage> copyPage(const std::filesystem::path &folder, const QString &name,
                                               std::int64_t page, std::int64_t width,
                                               const std::stop_token &givenUp = {});

} // namespace tallyfold::check
