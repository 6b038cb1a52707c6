#pragma once

#include "pdf/annotations/VisibleAnnotations.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <optional>
#include <string>

namespace tallyfold::pdf {

/// The generated appearance of a square, circle, line, polygon, polyline or ink annotation (PDF 1.7,
/// 12.5.6.7 to 12.5.6.9 and 12.5.6.13), by its `subtype`. Nothing for other types, and without the entries
/// that it needs.
[[nodiscard]] std::optional<GeneratedForm> shapeMarkup(QPDFObjectHandle annotation,
                                                       const std::string &subtype);

} // namespace tallyfold::pdf
