#include "pdf/source/PageGeometry.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tallyfold::pdf {

namespace {

/// No viewer shows anything beyond it, and products of coordinates lose their last digits.
constexpr double maxCoordinate = 1e7;

constexpr Rect letterPage{0, 0, 612, 792};

Rect intersection(const Rect &one, const Rect &other)
{
    return {std::max(one.minX, other.minX), std::max(one.minY, other.minY), std::min(one.maxX, other.maxX),
            std::min(one.maxY, other.maxY)};
}

bool hasArea(const Rect &rect)
{
    return rect.width() > 0 && rect.height() > 0;
}

int rotationFrom(QPDFObjectHandle value)
{
    if (!value.isNumber()) {
        return 0;
    }
    const double degrees = std::fmod(value.getNumericValue(), 360.0);
    const double positive = degrees < 0 ? degrees + 360.0 : degrees;
    for (const int quarter : {90, 180, 270}) {
        if (positive == quarter) {
            return quarter;
        }
    }
    return 0;
}

double userUnitFrom(QPDFObjectHandle value)
{
    const double unit = value.isNumber() ? value.getNumericValue() : 1.0;
    return std::isfinite(unit) && unit > 0 && unit < maxCoordinate ? unit : 1.0;
}

} // namespace

Size PageGeometry::uprightSize() const
{
    const bool isTurned = rotation == 90 || rotation == 270;
    return isTurned ? Size{visibleBox.height(), visibleBox.width()}
                    : Size{visibleBox.width(), visibleBox.height()};
}

Size PageGeometry::displaySize() const
{
    const Size size = uprightSize();
    return {size.width * userUnit, size.height * userUnit};
}

Matrix PageGeometry::toUpright() const
{
    switch (rotation) {
    case 90:
        return {0, -1, 1, 0, -visibleBox.minY, visibleBox.maxX};
    case 180:
        return {-1, 0, 0, -1, visibleBox.maxX, visibleBox.maxY};
    case 270:
        return {0, 1, -1, 0, visibleBox.maxY, -visibleBox.minX};
    default:
        return {1, 0, 0, 1, -visibleBox.minX, -visibleBox.minY};
    }
}

PageGeometry geometryOf(const SourcePage &page)
{
    const std::optional<Rect> media = rectFrom(page.mediaBox);
    const Rect mediaBox = media && hasArea(*media) ? *media : letterPage;
    const std::optional<Rect> crop = rectFrom(page.cropBox);
    const Rect visible = crop && hasArea(*crop) ? intersection(mediaBox, *crop) : mediaBox;
    QPDFObjectHandle dictionary = page.dictionary;
    return {hasArea(visible) ? visible : mediaBox, rotationFrom(page.rotate),
            userUnitFrom(dictionary.getKey("/UserUnit"))};
}

std::optional<Rect> rectFrom(QPDFObjectHandle array)
{
    if (!array.isArray() || array.getArrayNItems() < 4) {
        return std::nullopt;
    }
    std::array<double, 4> values{};
    for (int index = 0; index < 4; ++index) {
        QPDFObjectHandle item = array.getArrayItem(index);
        if (!item.isNumber()) {
            return std::nullopt;
        }
        const double value = item.getNumericValue();
        if (!std::isfinite(value) || std::abs(value) > maxCoordinate) {
            return std::nullopt;
        }
        values[static_cast<std::size_t>(index)] = value;
    }
    return Rect{std::min(values[0], values[2]), std::min(values[1], values[3]),
                std::max(values[0], values[2]), std::max(values[1], values[3])};
}

} // namespace tallyfold::pdf
