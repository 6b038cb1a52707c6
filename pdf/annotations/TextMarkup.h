#pragma once

#include "pdf/annotations/VisibleAnnotations.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <optional>
#include <string>

namespace tallyfold::pdf {

/// The generated appearance of a highlight, underline, strike-out or squiggly annotation (PDF 1.7,
/// 12.5.6.10), by its `subtype`. Nothing for other types, and when it marks no text.
[[nodiscard]] std::optional<GeneratedForm> textMarkup(QPDFObjectHandle annotation,
                                                      const std::string &subtype);

} // namespace tallyfold::pdf
