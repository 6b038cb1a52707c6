#pragma once

#include <cstddef>

namespace tallyfold {

/// An sRGB colour of the stamp lines, each component meant to lie in 0…1.
/// Members may hold any value (a stored record is read as it is); `of` gives a clamped one.
struct StampColor {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    /// The colour of four components, each clamped to 0…1; one that is not finite becomes 0.
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
