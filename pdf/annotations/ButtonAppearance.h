#pragma once

#include "pdf/annotations/FieldText.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <QString>

namespace tallyfold::pdf {

/// Whether a button field with the flags `/Ff` (PDF 1.7, table 226) is a push-button or one of a set of radio
/// buttons; else it is a check box.
[[nodiscard]] bool isPushButton(long long flags);
[[nodiscard]] bool isRadioButton(long long flags);

/// What shows that a button is on.
enum class ButtonMark { check, disc, cross, diamond, square, star };

/// The mark that the caption of `widget` stands for as a character of ZapfDingbats; the one usual for the
/// kind of button otherwise.
[[nodiscard]] ButtonMark buttonMark(QPDFObjectHandle widget);

/// The caption of `widget`: the words on a push-button, the mark of others.
[[nodiscard]] QString buttonCaption(QPDFObjectHandle widget);

/// Appends the mark of `widget`, in the middle of the box, when the button is on.
void appendButtonMark(ContentStream &content, QPDFObjectHandle widget, const TextBox &box);

} // namespace tallyfold::pdf
