#include "pdf/AnnotationAppearance.h"

#include "pdf/PageGeometry.h"

#include <array>
#include <cmath>
#include <string>

namespace tallyfold::pdf {

namespace {

/// Bits of the annotation's `/F` (PDF 1.7, table 165).
constexpr long long hiddenFlag = 1U << 1U;
constexpr long long noRotateFlag = 1U << 4U;
constexpr long long noViewFlag = 1U << 5U;

long long flagsOf(QPDFObjectHandle annotation)
{
    QPDFObjectHandle flags = annotation.getKey("/F");
    return flags.isInteger() ? flags.getIntValue() : 0;
}

} // namespace

QPDFObjectHandle inheritedFieldValue(QPDFObjectHandle field, const char *key)
{
    constexpr int deepestField = 64; // Fields this deep do not occur, but loops do.
    for (int depth = 0; depth < deepestField && field.isDictionary(); ++depth) {
        QPDFObjectHandle value = field.getKey(key);
        if (!value.isNull()) {
            return value;
        }
        field = field.getKey("/Parent");
    }
    return QPDFObjectHandle::newNull();
}

std::string buttonState(QPDFObjectHandle annotation)
{
    QPDFObjectHandle state = annotation.getKey("/AS");
    if (state.isName()) {
        return state.getName();
    }
    QPDFObjectHandle value = inheritedFieldValue(annotation, "/V");
    return value.isName() ? value.getName() : "/Off";
}

bool isShown(QPDFObjectHandle annotation)
{
    if (!annotation.isDictionary() || (flagsOf(annotation) & (hiddenFlag | noViewFlag)) != 0) {
        return false;
    }
    QPDFObjectHandle subtype = annotation.getKey("/Subtype");
    return subtype.isName() && subtype.getName() != "/Popup" && subtype.getName() != "/Link";
}

QPDFObjectHandle normalAppearance(QPDFObjectHandle annotation)
{
    QPDFObjectHandle appearances = annotation.getKey("/AP");
    if (!appearances.isDictionary()) {
        return QPDFObjectHandle::newNull();
    }
    QPDFObjectHandle normal = appearances.getKey("/N");
    if (normal.isDictionary() && !normal.isStream()) {
        normal = normal.getKey(buttonState(annotation));
    }
    return normal.isStream() ? normal : QPDFObjectHandle::newNull();
}

bool hasNormalAppearance(QPDFObjectHandle annotation)
{
    QPDFObjectHandle appearances = annotation.getKey("/AP");
    if (!appearances.isDictionary()) {
        return false;
    }
    QPDFObjectHandle normal = appearances.getKey("/N");
    return normal.isStream() || normal.isDictionary();
}

Matrix matrixFrom(QPDFObjectHandle array)
{
    if (!array.isArray() || array.getArrayNItems() < 6) {
        return {};
    }
    std::array<double, 6> values{};
    for (int index = 0; index < 6; ++index) {
        QPDFObjectHandle item = array.getArrayItem(index);
        const double value = item.isNumber() ? item.getNumericValue() : NAN;
        if (!std::isfinite(value)) {
            return {};
        }
        values[static_cast<std::size_t>(index)] = value;
    }
    return {values[0], values[1], values[2], values[3], values[4], values[5]};
}

std::optional<Matrix> placementOf(QPDFObjectHandle annotation, const Rect &boundingBox,
                                  const Matrix &formMatrix, int rotation)
{
    const std::optional<Rect> rect = rectFrom(annotation.getKey("/Rect"));
    const Rect bounds = boundsOfTransformed(formMatrix, boundingBox);
    if (!rect || !(bounds.width() > 0) || !(bounds.height() > 0)) {
        return std::nullopt;
    }
    const double scaleX = rect->width() / bounds.width();
    const double scaleY = rect->height() / bounds.height();
    const Matrix fit{
        scaleX, 0, 0, scaleY, rect->minX - bounds.minX * scaleX, rect->minY - bounds.minY * scaleY};
    if (!std::isfinite(scaleX) || !std::isfinite(scaleY) || rect->width() <= 0 || rect->height() <= 0) {
        return std::nullopt;
    }
    if ((flagsOf(annotation) & noRotateFlag) == 0 || rotation == 0) {
        return fit;
    }
    // It stays upright on the turned page, hanging from its upper left corner.
    const Matrix toOrigin{1, 0, 0, 1, -rect->minX, -rect->maxY};
    const Matrix back{1, 0, 0, 1, rect->minX, rect->maxY};
    const Matrix turn = rotation == 90    ? Matrix{0, 1, -1, 0, 0, 0}
                        : rotation == 180 ? Matrix{-1, 0, 0, -1, 0, 0}
                                          : Matrix{0, -1, 1, 0, 0, 0};
    return concatenate(fit, concatenate(toOrigin, concatenate(turn, back)));
}

} // namespace tallyfold::pdf
