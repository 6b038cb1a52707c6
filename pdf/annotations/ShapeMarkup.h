#pragma once

#include "pdf/annotations/VisibleAnnotations.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <optional>
#include <string>

namespace tallyfold::pdf {

/// What a drawing annotation (PDF 1.7, 12.5.6.7 to 12.5.6.9 and 12.5.6.13) of type `subtype` shows: square,
/// circle, line, polygon, polyline or ink. Nothing when it lacks what it takes.
[[nodiscard]] std::optional<GeneratedForm> shapeMarkup(QPDFObjectHandle annotation,
                                                       const std::string &subtype);

} // namespace tallyfold::pdf
