#pragma once

#include "pdf/annotations/VisibleAnnotations.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <optional>
#include <string>

namespace tallyfold::pdf {

/// What a text markup annotation (PDF 1.7, 12.5.6.10) of type `subtype` shows: highlight, underline,
/// strike-out or squiggly. Nothing when it marks no text.
[[nodiscard]] std::optional<GeneratedForm> textMarkup(QPDFObjectHandle annotation,
                                                      const std::string &subtype);

} // namespace tallyfold::pdf
