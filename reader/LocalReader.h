#pragma once

#include "pdf/viewing/PageReader.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace tallyfold::reader {

/// A reader in this process, which draws into memory of the caller.
class LocalReader : public pdf::PageReader {
public:
    /// Draws the page as `render` does into `pixels`, of the size `pictureBytes` gives; false when it cannot.
    [[nodiscard]] virtual bool renderInto(std::span<std::uint8_t> pixels, int pageIndex, int width,
                                          int height, double scale) = 0;
};

/// The size of a picture in bytes; nothing for one that `render` does not make.
[[nodiscard]] std::optional<std::size_t> pictureBytes(int width, int height);

} // namespace tallyfold::reader
