#pragma once

#include "pdf/annotations/VisibleAnnotations.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <optional>

namespace tallyfold::pdf {

/// What a markup annotation without an appearance of its own shows: highlight, underline, strike-out,
/// squiggly, square, circle, line, polygon, polyline, ink, free text and note (PDF 1.7, 12.5.6). The form is
/// in the coordinates of the page. Nothing for other types and for annotations that lack what it takes.
[[nodiscard]] std::optional<GeneratedForm> markupAppearance(QPDFObjectHandle annotation, TextFonts &fonts);

} // namespace tallyfold::pdf
