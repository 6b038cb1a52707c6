#pragma once

#include "pdf/annotations/VisibleAnnotations.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <optional>

namespace tallyfold::pdf {

/// The generated appearance of a markup annotation: highlight, underline, strike-out, squiggly, square,
/// circle, line, polygon, polyline, ink, free text and note (PDF 1.7, 12.5.6), in page coordinates. Nothing
/// for other types, and without the entries that it needs.
[[nodiscard]] std::optional<GeneratedForm> markupAppearance(QPDFObjectHandle annotation, TextFonts &fonts);

} // namespace tallyfold::pdf
