#pragma once

#include <array>
#include <cstddef>

namespace tallyfold::pdf {

/// Whether stroking or nonstroking operations are meant.
enum class Paint { stroke, fill };

/// A colour in DeviceGray, DeviceRGB or DeviceCMYK (PDF 1.7, 8.6.4), according to the number of components,
/// each 0…1; black by default.
struct DeviceColor {
    std::array<double, 4> components{};
    std::size_t count = 1; ///< 1, 3 or 4.
    bool operator==(const DeviceColor &) const = default;

    [[nodiscard]] static constexpr DeviceColor gray(double level)
    {
        return {{level}, 1};
    }
    [[nodiscard]] static constexpr DeviceColor rgb(double red, double green, double blue)
    {
        return {{red, green, blue}, 3};
    }
};

} // namespace tallyfold::pdf
