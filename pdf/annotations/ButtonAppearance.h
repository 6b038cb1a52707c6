#pragma once

#include "pdf/annotations/FieldText.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <QString>

namespace tallyfold::pdf {

/// Whether a button field with the flags `/Ff` (PDF 1.7, table 226) is a push-button or a radio button;
/// otherwise it is a check box.
[[nodiscard]] bool isPushButton(long long flags);
[[nodiscard]] bool isRadioButton(long long flags);

/// The mark of a button that is on.
enum class ButtonMark { check, disc, cross, diamond, square, star };

/// The mark that the caption of `widget` selects as a character of ZapfDingbats; otherwise the usual one of
/// that kind of button.
[[nodiscard]] ButtonMark buttonMark(QPDFObjectHandle widget);

/// The caption of `widget` (`/CA`): the text of a push-button, the mark of others.
[[nodiscard]] QString buttonCaption(QPDFObjectHandle widget);

/// Draws the mark of `widget` in the middle of the box if the button is on.
void appendButtonMark(ContentStream &content, QPDFObjectHandle widget, const TextBox &box);

} // namespace tallyfold::pdf
