#include "pdf/annotations/AnnotationAppearance.h"

#include "pdf/source/PageGeometry.h"

#include <cmath>
#include <string>

namespace tallyfold::pdf {

namespace {

/// Bits of the annotation's `/F` (PDF 1.7, table 165).
constexpr long long hiddenFlag = 1U << 1U;
constexpr long long noRotateFlag = 1U << 4U;
constexpr long long noViewFlag = 1U << 5U;

/// The normal appearance of `annotation`: a stream, a dictionary of streams by state, or anything else.
QPDFObjectHandle normalEntry(QPDFObjectHandle annotation)
{
    QPDFObjectHandle appearances = annotation.getKey("/AP");
    return appearances.isDictionary() ? appearances.getKey("/N") : QPDFObjectHandle::newNull();
}

long long flagsOf(QPDFObjectHandle annotation)
{
    QPDFObjectHandle flags = annotation.getKey("/F");
    if (flags.isReal()) { // Some writers write all numbers as reals.
        constexpr double limit = 1U << 31U;
        const double value = flags.getNumericValue();
        return value >= 0 && value < limit ? static_cast<long long>(value) : 0;
    }
    return flags.isInteger() ? flags.getIntValue() : 0;
}

} // namespace

QPDFObjectHandle inheritedFieldValue(QPDFObjectHandle field, const char *key)
{
    constexpr int maxFieldDepth = 64; // Real fields are not this deep, but loops occur.
    for (int depth = 0; depth < maxFieldDepth && field.isDictionary(); ++depth) {
        QPDFObjectHandle value = field.getKey(key);
        if (!value.isNull()) {
            return value;
        }
        field = field.getKey("/Parent");
    }
    return QPDFObjectHandle::newNull();
}

std::string appearanceState(QPDFObjectHandle annotation)
{
    constexpr const char *off = "/Off";
    QPDFObjectHandle states = normalEntry(annotation);
    const bool hasStates = states.isDictionary() && !states.getKeys().empty();
    QPDFObjectHandle state = annotation.getKey("/AS");
    if (state.isName()) {
        const bool isUnknown = hasStates && !states.hasKey(state.getName());
        return isUnknown && inheritedFieldValue(annotation, "/FT").isNameAndEquals("/Btn") ? off
                                                                                           : state.getName();
    }
    QPDFObjectHandle value = inheritedFieldValue(annotation, "/V");
    return value.isName() && hasStates && states.hasKey(value.getName()) ? value.getName() : off;
}

bool isShown(QPDFObjectHandle annotation)
{
    return annotation.isDictionary() && (flagsOf(annotation) & (hiddenFlag | noViewFlag)) == 0 &&
           !annotation.getKey("/Subtype").isNameAndEquals("/Popup");
}

QPDFObjectHandle normalAppearance(QPDFObjectHandle annotation)
{
    QPDFObjectHandle normal = normalEntry(annotation);
    if (normal.isDictionary()) {
        normal = normal.getKey(appearanceState(annotation));
    }
    return normal.isStream() ? normal : QPDFObjectHandle::newNull();
}

std::optional<Matrix> placementOf(QPDFObjectHandle annotation, const std::optional<Rect> &boundingBox,
                                  const Matrix &formMatrix, int rotation)
{
    const std::optional<Rect> rect = rectFrom(annotation.getKey("/Rect"));
    const Rect bounds = boundsOfTransformed(formMatrix, boundingBox.value_or(Rect{}));
    const bool isFlat = formMatrix.a * formMatrix.d == formMatrix.b * formMatrix.c;
    if (!rect || isFlat) {
        return std::nullopt;
    }
    const double scaleX = boundingBox ? rect->width() / bounds.width() : 1;
    const double scaleY = boundingBox ? rect->height() / bounds.height() : 1;
    const Matrix fit{
        scaleX, 0, 0, scaleY, rect->minX - bounds.minX * scaleX, rect->minY - bounds.minY * scaleY};
    // A box of no area cannot be scaled to one.
    if (!std::isfinite(scaleX) || !std::isfinite(scaleY) || rect->width() <= 0 || rect->height() <= 0) {
        return std::nullopt;
    }
    if ((flagsOf(annotation) & noRotateFlag) == 0 || rotation == 0) {
        return fit;
    }
    // It stays upright on the rotated page, with its upper left corner in place.
    const Matrix toOrigin{1, 0, 0, 1, -rect->minX, -rect->maxY};
    const Matrix back{1, 0, 0, 1, rect->minX, rect->maxY};
    const Matrix turn = rotation == 90    ? Matrix{0, 1, -1, 0, 0, 0}
                        : rotation == 180 ? Matrix{-1, 0, 0, -1, 0, 0}
                                          : Matrix{0, -1, 1, 0, 0, 0};
    return concatenate(fit, concatenate(toOrigin, concatenate(turn, back)));
}

} // namespace tallyfold::pdf
