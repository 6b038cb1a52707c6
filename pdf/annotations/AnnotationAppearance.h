#pragma once

#include "pdf/syntax/Geometry.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <optional>
#include <string>

namespace tallyfold::pdf {

/// Whether a viewer shows `annotation` on a screen: it is neither hidden nor for print only nor a pop-up
/// (PDF 1.7, 12.5.3).
[[nodiscard]] bool isShown(QPDFObjectHandle annotation);

/// The appearance state of `annotation`: its own, or else the field's value if there is an appearance for
/// it. A button whose state has no appearance, while others have one, is off.
[[nodiscard]] std::string appearanceState(QPDFObjectHandle annotation);

/// The normal appearance stream of `annotation` in its current state (PDF 1.7, 12.5.5); null without one.
[[nodiscard]] QPDFObjectHandle normalAppearance(QPDFObjectHandle annotation);

/// The matrix that maps a form with the given bounding box and matrix to the annotation's rectangle (PDF
/// 1.7, 12.5.5, algorithm 8.1), on a page rotated by `rotation` degrees. A form without a box keeps its size
/// and is placed in the lower left corner. Nothing when the rectangle or the form has no area.
[[nodiscard]] std::optional<Matrix> placementOf(QPDFObjectHandle annotation,
                                                const std::optional<Rect> &boundingBox,
                                                const Matrix &formMatrix, int rotation);

/// The value of an inheritable key of a field (PDF 1.7, 12.7.3.1); null when no ancestor has it.
[[nodiscard]] QPDFObjectHandle inheritedFieldValue(QPDFObjectHandle field, const char *key);

} // namespace tallyfold::pdf
