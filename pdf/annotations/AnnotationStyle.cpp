#include "pdf/annotations/AnnotationStyle.h"

#include "pdf/syntax/NumberFormat.h"

#include <algorithm>
#include <cmath>

namespace tallyfold::pdf {

namespace {

constexpr double widestBorder = 144;

double borderWidthFrom(QPDFObjectHandle value, double otherwise)
{
    const double width = value.isNumber() ? value.getNumericValue() : otherwise;
    return std::isfinite(width) ? std::clamp(width, 0.0, widestBorder) : otherwise;
}

/// Dashes that draw something: a pattern of nothing but zeros is not allowed.
std::vector<double> dashesFrom(QPDFObjectHandle array)
{
    std::vector<double> dashes = numbersIn(array, 16);
    const bool isUsable = std::all_of(dashes.begin(), dashes.end(), [](double dash) { return dash >= 0; }) &&
                          std::any_of(dashes.begin(), dashes.end(), [](double dash) { return dash > 0; });
    return isUsable ? dashes : std::vector<double>();
}

} // namespace

std::vector<double> numbersIn(QPDFObjectHandle array, int most)
{
    std::vector<double> numbers;
    const int count = array.isArray() ? array.getArrayNItems() : 0;
    for (int index = 0; index < std::min(count, most); ++index) {
        QPDFObjectHandle item = array.getArrayItem(index);
        const double value = item.isNumber() ? item.getNumericValue() : NAN;
        if (!std::isfinite(value)) {
            return {};
        }
        numbers.push_back(value);
    }
    return numbers;
}

void appendNumbers(std::string &out, std::initializer_list<double> numbers)
{
    for (const double number : numbers) {
        appendNumber(out, number);
        out.push_back(' ');
    }
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

std::string colorOperators(QPDFObjectHandle components, Paint paint)
{
    const std::vector<double> values = numbersIn(components, 5);
    const bool isStroke = paint == Paint::stroke;
    std::string operators;
    for (const double value : values) {
        appendNumber(operators, std::clamp(value, 0.0, 1.0));
        operators.push_back(' ');
    }
    switch (values.size()) {
    case 1:
        return operators + (isStroke ? "G " : "g ");
    case 3:
        return operators + (isStroke ? "RG " : "rg ");
    case 4:
        return operators + (isStroke ? "K " : "k ");
    default:
        return {};
    }
}

std::string lineOperators(const BorderStyle &style)
{
    std::string operators;
    appendNumber(operators, style.width);
    operators.append(" w ");
    if (!style.dashes.empty()) {
        operators.push_back('[');
        for (const double dash : style.dashes) {
            appendNumbers(operators, {dash});
        }
        operators.append("] 0 d ");
    }
    return operators;
}

double opacityOf(QPDFObjectHandle annotation)
{
    QPDFObjectHandle value = annotation.getKey("/CA");
    const double opacity = value.isNumber() ? value.getNumericValue() : 1;
    return std::isfinite(opacity) ? std::clamp(opacity, 0.0, 1.0) : 1;
}

} // namespace tallyfold::pdf
