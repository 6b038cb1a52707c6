#include "pdf/annotations/AnnotationStyle.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace tallyfold::pdf {

namespace {

constexpr double maxBorderWidth = 144;

double borderWidthFrom(QPDFObjectHandle value, double otherwise)
{
    const double width = value.isNumber() ? value.getNumericValue() : otherwise;
    return std::isfinite(width) ? std::clamp(width, 0.0, maxBorderWidth) : otherwise;
}

/// The dash pattern in `array`; empty when it is invalid, as one of zeros only.
std::vector<double> dashesFrom(QPDFObjectHandle array)
{
    std::vector<double> dashes = numbersIn(array, 16);
    const bool isUsable = std::all_of(dashes.begin(), dashes.end(), [](double dash) { return dash >= 0; }) &&
                          std::any_of(dashes.begin(), dashes.end(), [](double dash) { return dash > 0; });
    return isUsable ? dashes : std::vector<double>();
}

} // namespace

std::vector<double> numbersIn(QPDFObjectHandle array, int maxCount)
{
    std::vector<double> numbers;
    const int count = array.isArray() ? array.getArrayNItems() : 0;
    for (int index = 0; index < std::min(count, maxCount); ++index) {
        QPDFObjectHandle item = array.getArrayItem(index);
        const double value = item.isNumber() ? item.getNumericValue() : NAN;
        if (!std::isfinite(value)) {
            return {};
        }
        numbers.push_back(value);
    }
    return numbers;
}

BorderStyle borderStyleOf(QPDFObjectHandle annotation)
{
    BorderStyle style;
    QPDFObjectHandle dictionary = annotation.getKey("/BS");
    if (dictionary.isDictionary()) {
        style.width = borderWidthFrom(dictionary.getKey("/W"), 1);
        QPDFObjectHandle kind = dictionary.getKey("/S");
        const std::string name = kind.isName() ? kind.getName() : "/S";
        if (name == "/D") {
            style.kind = BorderStyle::Kind::dashed;
            style.dashes = dashesFrom(dictionary.getKey("/D"));
            if (style.dashes.empty()) {
                style.dashes = {3};
            }
        } else if (name == "/B") {
            style.kind = BorderStyle::Kind::beveled;
        } else if (name == "/I") {
            style.kind = BorderStyle::Kind::inset;
        } else if (name == "/U") {
            style.kind = BorderStyle::Kind::underline;
        }
        return style;
    }
    QPDFObjectHandle border = annotation.getKey("/Border");
    if (border.isArray() && border.getArrayNItems() >= 3) {
        style.width = borderWidthFrom(border.getArrayItem(2), 1);
        if (border.getArrayNItems() >= 4) {
            style.dashes = dashesFrom(border.getArrayItem(3));
            style.kind = style.dashes.empty() ? BorderStyle::Kind::solid : BorderStyle::Kind::dashed;
        }
    }
    return style;
}

std::optional<DeviceColor> colorFrom(QPDFObjectHandle components)
{
    const std::vector<double> values = numbersIn(components, 5);
    if (values.size() != 1 && values.size() != 3 && values.size() != 4) {
        return std::nullopt;
    }
    DeviceColor color;
    color.count = values.size();
    std::transform(values.begin(), values.end(), color.components.begin(),
                   [](double value) { return std::clamp(value, 0.0, 1.0); });
    return color;
}

void setLineStyle(ContentStream &content, const BorderStyle &style)
{
    content.setLineWidth(style.width);
    if (!style.dashes.empty()) {
        content.setLineDash(style.dashes);
    }
}

double opacityOf(QPDFObjectHandle annotation)
{
    QPDFObjectHandle value = annotation.getKey("/CA");
    const double opacity = value.isNumber() ? value.getNumericValue() : 1;
    return std::isfinite(opacity) ? std::clamp(opacity, 0.0, 1.0) : 1;
}

} // namespace tallyfold::pdf
