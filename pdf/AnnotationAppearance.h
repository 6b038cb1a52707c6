#pragma once

#include "pdf/Geometry.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <optional>
#include <string>

namespace tallyfold::pdf {

/// Whether a viewer shows `annotation` on a screen: it is not hidden, not only for print, and neither a link
/// nor a pop-up (PDF 1.7, 12.5.3).
[[nodiscard]] bool isShown(QPDFObjectHandle annotation);

/// The name of the state `annotation` is in: its own, or that of the field's value when it does not say.
[[nodiscard]] std::string buttonState(QPDFObjectHandle annotation);

/// The normal appearance stream of `annotation` in its current state (PDF 1.7, 12.5.5); null when it has
/// none.
[[nodiscard]] QPDFObjectHandle normalAppearance(QPDFObjectHandle annotation);

/// Whether `annotation` has any normal appearance, be it one for another state than its own.
[[nodiscard]] bool hasNormalAppearance(QPDFObjectHandle annotation);

/// The matrix that puts a form with the given bounding box and matrix into the annotation's rectangle
/// (PDF 1.7, 12.5.5, algorithm 8.1), on a page turned by `rotation` degrees. Nothing when there is no place
/// to put it.
[[nodiscard]] std::optional<Matrix> placementOf(QPDFObjectHandle annotation, const Rect &boundingBox,
                                                const Matrix &formMatrix, int rotation);

/// Six finite numbers as a matrix; the identity when `array` is anything else.
[[nodiscard]] Matrix matrixFrom(QPDFObjectHandle array);

/// The value of a key that a field may inherit from the fields above it (PDF 1.7, 12.7.3.1); null when none
/// has it.
[[nodiscard]] QPDFObjectHandle inheritedFieldValue(QPDFObjectHandle field, const char *key);

} // namespace tallyfold::pdf
