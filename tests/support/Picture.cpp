#include "tests/support/Picture.h"

#include "tests/support/Tool.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iostream>
#include <sstream>

namespace tallyfold::tests {

namespace {

constexpr int pixelsPerPoint = 2;

} // namespace

bool Color::isPaper() const
{
    constexpr int white = 250;
    return red >= white && green >= white && blue >= white;
}

bool Color::isNear(const Color &other) const
{
    constexpr int tolerance = 24;
    return std::abs(red - other.red) <= tolerance && std::abs(green - other.green) <= tolerance &&
           std::abs(blue - other.blue) <= tolerance;
}

Picture Picture::of(const std::filesystem::path &path, Tool tool, int page)
{
    const std::string number = std::to_string(page);
    const std::string resolution = std::to_string(72 * pixelsPerPoint);
    const ToolResult drawn =
        tool == Tool::poppler
            ? runTool({"pdftoppm", "-r", resolution, "-f", number, "-l", number, path.string()})
            : runTool({"mutool", "draw", "-q", "-c", "rgb", "-F", "ppm", "-r", resolution, "-o", "-",
                       path.string(), number});
    Picture picture;
    std::istringstream header(drawn.output);
    std::string kind;
    int most = 0;
    header >> kind;
    while (header >> std::ws && header.peek() == '#') {
        std::string comment;
        std::getline(header, comment);
    }
    header >> picture.m_columns >> picture.m_rows >> most;
    const auto size =
        static_cast<std::size_t>(picture.m_columns) * static_cast<std::size_t>(picture.m_rows) * 3;
    const auto start = static_cast<std::size_t>(header.tellg()) + 1;
    if (kind != "P6" || most != 255 || drawn.output.size() < start + size) {
        std::cerr << "The page is not drawn: " << drawn.errors << '\n';
        std::abort();
    }
    picture.m_pixels = drawn.output.substr(start, size);
    return picture;
}

double Picture::width() const
{
    return static_cast<double>(m_columns) / pixelsPerPoint;
}

double Picture::height() const
{
    return static_cast<double>(m_rows) / pixelsPerPoint;
}

Color Picture::at(double x, double y) const
{
    const int column = std::clamp(static_cast<int>(std::floor(x * pixelsPerPoint)), 0, m_columns - 1);
    const int row = std::clamp(m_rows - 1 - static_cast<int>(std::floor(y * pixelsPerPoint)), 0, m_rows - 1);
    const std::size_t place = (static_cast<std::size_t>(row) * static_cast<std::size_t>(m_columns) +
                               static_cast<std::size_t>(column)) *
                              3;
    const auto component = [&](std::size_t index) {
        return static_cast<unsigned char>(m_pixels[place + index]);
    };
    return {component(0), component(1), component(2)};
}

bool Picture::hasInk(double left, double bottom, double right, double top) const
{
    constexpr double step = 1.0 / pixelsPerPoint;
    for (double y = bottom; y < top; y += step) {
        for (double x = left; x < right; x += step) {
            if (!at(x, y).isPaper()) {
                return true;
            }
        }
    }
    return false;
}

} // namespace tallyfold::tests
