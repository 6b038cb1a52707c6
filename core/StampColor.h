#pragma once

#include <cstddef>

namespace tallyfold {

/// An sRGB colour with components from 0 to 1. Stored records are not clamped and may hold any value; `of`
/// clamps.
struct StampColor {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    /// The colour with each component clamped to 0…1; a component that is not finite becomes 0.
    [[nodiscard]] static StampColor of(double red, double green, double blue, double alpha = 1);
    [[nodiscard]] static StampColor black();
    /// The red of the confidential preset.
    [[nodiscard]] static StampColor confidentialRed();
    [[nodiscard]] static StampColor darkBlue();

    bool operator==(const StampColor &) const = default;
};

/// Equal for equal colours, 0.0 and −0.0 included.
[[nodiscard]] std::size_t hashValue(const StampColor &color);

} // namespace tallyfold
