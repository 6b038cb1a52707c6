#include "core/StampColor.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace tallyfold {

namespace {

double component(double value)
{
    return std::isfinite(value) ? std::clamp(value, 0.0, 1.0) : 0.0;
}

} // namespace

StampColor StampColor::of(double red, double green, double blue, double alpha)
{
    return {component(red), component(green), component(blue), component(alpha)};
}

StampColor StampColor::black()
{
    return {0, 0, 0, 1};
}

StampColor StampColor::confidentialRed()
{
    return {0.78, 0.08, 0.10, 1};
}

StampColor StampColor::darkBlue()
{
    return {0.05, 0.20, 0.65, 1};
}

std::size_t hashValue(const StampColor &color)
{
    std::size_t hash = 0;
    for (const double value : {color.red, color.green, color.blue, color.alpha}) {
        hash = hash * 31 + std::hash<double>{}(value);
    }
    return hash;
}

} // namespace tallyfold
