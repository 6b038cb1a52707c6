#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace tallyfold::tests {

/// A colour as it is drawn.
struct Color {
    int red = 0;
    int green = 0;
    int blue = 0;

    /// Whether it is white.
    [[nodiscard]] bool isPaper() const;
    /// Whether no component is further than anti-aliasing goes from the other's.
    [[nodiscard]] bool isNear(const Color &other) const;
};

/// A page drawn by one of the tools that are not ours, at two pixels to the point.
class Picture {
public:
    enum class Tool { poppler, mupdf };

    /// The page `page`, counting from 1, of the PDF at `path`. Ends the test program when it is not drawn.
    static Picture of(const std::filesystem::path &path, Tool tool, int page = 1);

    /// Width and height in points.
    [[nodiscard]] double width() const;
    [[nodiscard]] double height() const;

    /// The colour at a point of the page, in points from its lower left corner.
    [[nodiscard]] Color at(double x, double y) const;

    /// Whether anything but paper is inside a rectangle of the page.
    [[nodiscard]] bool hasInk(double left, double bottom, double right, double top) const;

private:
    std::string m_pixels;
    int m_columns = 0;
    int m_rows = 0;
};

} // namespace tallyfold::tests
