#pragma once

#include "pdf/syntax/ContentStream.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <QString>

#include <string>

namespace tallyfold::pdf {

class TextFonts;

/// The text of a field's value or an annotation's contents: a text string, a text stream or a name; empty
/// for anything else. Excessive text is truncated.
[[nodiscard]] QString fieldText(QPDFObjectHandle value);

/// The values of a default appearance string (PDF 1.7, 12.7.3.3).
struct DefaultAppearance {
    std::string fontName; ///< Resource name, with its slash; empty for none.
    double size = 0;      ///< In points; 0 for automatic.
    DeviceColor color;
};

[[nodiscard]] DefaultAppearance parseDefaultAppearance(const std::string &text);

/// The PostScript name of the font with the resource name `fontName` in `resources` (a form's `/DR`); the
/// customary meaning of the name where it is not there.
[[nodiscard]] QString fontNamed(const std::string &fontName, QPDFObjectHandle resources);

/// The position and style of text.
struct TextBox {
    Rect area;
    double padding = 2; ///< Space around the text, in points.
    int quadding = 0;   ///< 0 left, 1 centred, 2 right.
    double size = 12;   ///< Points.
    QString fontName;   ///< PostScript name.
    DeviceColor color;
};

/// Shows `text` in lines that fit the width of the box, from its top, clipped to it.
void appendWrappedText(ContentStream &content, const QString &text, const TextBox &box, TextFonts &fonts);

/// The height of wrapped `text` in points.
[[nodiscard]] double heightOfWrappedText(const QString &text, const TextBox &box, TextFonts &fonts);

/// Shows `text` as one line, vertically centred in the box and clipped to it.
void appendSingleLine(ContentStream &content, const QString &text, const TextBox &box, TextFonts &fonts);

/// Shows one grapheme cluster of `text` in each of `cells` equal cells.
void appendComb(ContentStream &content, const QString &text, int cells, const TextBox &box, TextFonts &fonts);

} // namespace tallyfold::pdf
