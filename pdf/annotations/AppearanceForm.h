#pragma once

#include "pdf/syntax/Geometry.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <optional>

namespace tallyfold::pdf {

/// The six finite numbers of a form's `/Matrix`; nothing when `array` is anything else.
[[nodiscard]] std::optional<Matrix> matrixFrom(QPDFObjectHandle array);

/// The entries of the appearance stream `stream` as those of a form XObject, which viewers are stricter with.
/// It is a form even where it does not say so, has a box, and a matrix only where that is one. Viewers take
/// no notice of a layer that the stream itself belongs to, so it belongs to none; nor do most of its
/// transparency group, without which a blend mode in it is one with the page. The source stays as it is.
[[nodiscard]] QPDFObjectHandle entriesAsForm(QPDFObjectHandle stream);

/// Whether the form `stream` draws others, and paints them plainly if it is painted so itself: opaque, with
/// no mask and no blend mode, for which its own resources would have to name a graphics state.
[[nodiscard]] bool paintsPlainly(QPDFObjectHandle stream);

/// The entries of the form `stream` where it is painted plainly. A transparency group that is neither
/// isolated nor a knockout one makes no difference then, but to viewers that paint every group by itself.
[[nodiscard]] QPDFObjectHandle entriesPaintedPlainly(QPDFObjectHandle stream);

} // namespace tallyfold::pdf
