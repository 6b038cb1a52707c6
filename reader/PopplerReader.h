#pragma once

#include "pdf/viewing/PageReader.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>

namespace tallyfold::reader {

/// A reader in this very process.
class LocalReader : public pdf::PageReader {
public:
    /// Draws the page as `render` does into `pixels`, which are as many as it needs; false when it cannot.
    [[nodiscard]] virtual bool renderInto(std::span<std::uint8_t> pixels, int pageIndex, int width,
                                          int height, double scale) = 0;
};

/// The bytes of a picture that `render` gives; nothing when there is no such picture.
[[nodiscard]] std::optional<std::size_t> pictureBytes(int width, int height);

/// A reader of the file at `path`; null when Poppler cannot read it or it needs a password.
[[nodiscard]] std::unique_ptr<LocalReader> openWithPoppler(const std::filesystem::path &path);

} // namespace tallyfold::reader
