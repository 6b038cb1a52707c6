#pragma once

#include "pdf/syntax/Geometry.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <optional>
#include <string>

namespace tallyfold::pdf {

/// Whether a viewer shows `annotation` on a screen: it is neither hidden, nor only for print, nor a pop-up
/// (PDF 1.7, 12.5.3).
[[nodiscard]] bool isShown(QPDFObjectHandle annotation);

/// The name of the state `annotation` is in: its own, or when it does not say, that of the field's value if
/// there is an appearance for it. A button in a state that it has no appearance for is off, where it has any.
[[nodiscard]] std::string appearanceState(QPDFObjectHandle annotation);

/// The normal appearance stream of `annotation` in its current state (PDF 1.7, 12.5.5); null when it has
/// none.
[[nodiscard]] QPDFObjectHandle normalAppearance(QPDFObjectHandle annotation);

/// The matrix that puts a form with the given bounding box and matrix into the annotation's rectangle
/// (PDF 1.7, 12.5.5, algorithm 8.1), on a page turned by `rotation` degrees. A form without a box is put
/// into the lower left corner in its own size. Nothing when there is no place to put it, or nothing to see.
[[nodiscard]] std::optional<Matrix> placementOf(QPDFObjectHandle annotation,
                                                const std::optional<Rect> &boundingBox,
                                                const Matrix &formMatrix, int rotation);

/// The value of a key that a field may inherit from the fields above it (PDF 1.7, 12.7.3.1); null when none
/// has it.
[[nodiscard]] QPDFObjectHandle inheritedFieldValue(QPDFObjectHandle field, const char *key);

} // namespace tallyfold::pdf
