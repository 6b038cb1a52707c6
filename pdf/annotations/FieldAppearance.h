#pragma once

#include "pdf/annotations/VisibleAnnotations.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <optional>

namespace tallyfold::pdf {

/// Whether what `widget`, a form field's annotation, shows has to be made from the field's value: it has no
/// appearance of its own for its state, or one that the form `acroForm` (null for none) declares out of date
/// (PDF 1.7, 12.7.2, `NeedAppearances`). Buttons keep theirs then, unless nothing can be drawn of it.
[[nodiscard]] bool needsFieldAppearance(QPDFObjectHandle widget, QPDFObjectHandle acroForm);

/// What `widget` shows by the value of its field (PDF 1.7, 12.7.3.3 and 12.7.4): text, chosen options, a
/// button's mark or caption, on its background and in its border. Its lower left corner is the origin.
/// Nothing for signatures, and for fields of no known type.
[[nodiscard]] std::optional<GeneratedForm> fieldAppearance(QPDFObjectHandle widget, QPDFObjectHandle acroForm,
                                                           TextFonts &fonts);

} // namespace tallyfold::pdf
