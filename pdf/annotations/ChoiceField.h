#pragma once

#include "pdf/annotations/FieldText.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <QString>

namespace tallyfold::pdf {

/// What a choice field (PDF 1.7, 12.7.4.4) shows for its value: the display text of the chosen option, or the
/// value itself where it is none of the options; several are joined by commas. Without a value, the indices
/// of chosen options count.
[[nodiscard]] QString chosenText(QPDFObjectHandle widget);

/// Appends the options of a list box, one to a line from the first one in view, the chosen ones marked.
void appendOptions(ContentStream &content, QPDFObjectHandle widget, const TextBox &box, TextFonts &fonts);

} // namespace tallyfold::pdf
