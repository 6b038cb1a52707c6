#pragma once

#include "pdf/annotations/VisibleAnnotations.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <optional>

namespace tallyfold::pdf {

/// Whether the appearance of `widget`, the annotation of a form field, is generated from the field's value:
/// it has none for its state, or the form `acroForm` (null for none) declares appearances out of date (PDF
/// 1.7, 12.7.2, `NeedAppearances`). A button keeps its own then, unless that cannot be drawn.
[[nodiscard]] bool needsFieldAppearance(QPDFObjectHandle widget, QPDFObjectHandle acroForm);

/// The generated appearance of `widget` (PDF 1.7, 12.7.3.3 and 12.7.4): text, selected options, the mark or
/// caption of a button, with background and border. Its lower left corner is the origin. Nothing for
/// signatures and unknown types of fields.
[[nodiscard]] std::optional<GeneratedForm> fieldAppearance(QPDFObjectHandle widget, QPDFObjectHandle acroForm,
                                                           TextFonts &fonts);

} // namespace tallyfold::pdf
