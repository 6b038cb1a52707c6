#pragma once

#include "pdf/syntax/Geometry.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <optional>

namespace tallyfold::pdf {

/// The matrix in `array`; nothing unless it has six finite numbers.
[[nodiscard]] std::optional<Matrix> matrixFrom(QPDFObjectHandle array);

/// The entries of the appearance stream `stream` as a form XObject, which viewers check more strictly:
/// always `/Subtype/Form` and a box, a matrix only where it is valid. Viewers ignore an optional content
/// group of the stream itself, so that is left out; so is a transparency group unless it is a knockout one,
/// because viewers blend its contents with the page. The source is not changed.
[[nodiscard]] QPDFObjectHandle entriesAsForm(QPDFObjectHandle stream);

/// Whether the form `stream` paints other forms without opacity, mask or blend mode if it is painted so
/// itself: any of these needs a graphics state among its resources.
[[nodiscard]] bool paintsPlainly(QPDFObjectHandle stream);

/// The entries of the form `stream` where it is painted without opacity, mask or blend mode. A transparency
/// group that is neither isolated nor a knockout one has no effect then, except in viewers that composite
/// every group.
[[nodiscard]] QPDFObjectHandle entriesPaintedPlainly(QPDFObjectHandle stream);

} // namespace tallyfold::pdf
