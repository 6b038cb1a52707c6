#pragma once

#include "pdf/annotations/FieldText.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <QString>

namespace tallyfold::pdf {

/// The text that a choice field (PDF 1.7, 12.7.4.4) shows: the display text of the selected option, or the
/// value itself where it is no option; several are separated by commas. Without a value, the indices of
/// selected options count.
[[nodiscard]] QString chosenText(QPDFObjectHandle widget);

/// Draws the options of a list box, one a line from the first visible one, the selected ones highlighted.
void appendOptions(ContentStream &content, QPDFObjectHandle widget, const TextBox &box, TextFonts &fonts);

} // namespace tallyfold::pdf
