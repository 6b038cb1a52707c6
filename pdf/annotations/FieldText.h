#pragma once

#include "pdf/syntax/ContentStream.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <QString>

#include <string>

namespace tallyfold::pdf {

class TextFonts;

/// The text of a field's value or an annotation's contents: a string in any of the PDF encodings, a stream,
/// or a name. Empty for anything else; what is far too long is cut.
[[nodiscard]] QString fieldText(QPDFObjectHandle value);

/// What a default appearance string asks for (PDF 1.7, 12.7.3.3).
struct DefaultAppearance {
    std::string fontName; ///< Name of the font resource, with its slash; empty when there is none.
    double size = 0;      ///< Points; 0 for a size that fits.
    DeviceColor color;
};

[[nodiscard]] DefaultAppearance parseDefaultAppearance(const std::string &text);

/// The PostScript name of the font that the resource name `fontName` stands for in the resources `resources`
/// (a form's `/DR`); the customary meaning of the name where they do not say.
[[nodiscard]] QString fontNamed(const std::string &fontName, QPDFObjectHandle resources);

/// Where and how text is set.
struct TextBox {
    Rect area;
    double padding = 2; ///< Between the edges of the area and the text, points.
    int quadding = 0;   ///< 0 left, 1 centred, 2 right.
    double size = 12;   ///< Points.
    QString fontName;   ///< PostScript name.
    DeviceColor color;
};

/// Appends `text` in lines that fit the width of the box, from its top, clipped to it.
void appendWrappedText(ContentStream &content, const QString &text, const TextBox &box, TextFonts &fonts);

/// Height in points that `text` takes when it is set in the box.
[[nodiscard]] double heightOfWrappedText(const QString &text, const TextBox &box, TextFonts &fonts);

/// Appends `text` as one line, in the middle of the height of the box, clipped to it.
void appendSingleLine(ContentStream &content, const QString &text, const TextBox &box, TextFonts &fonts);

/// Appends `text` one character to a cell, the width of the box divided into `cells`.
void appendComb(ContentStream &content, const QString &text, int cells, const TextBox &box, TextFonts &fonts);

} // namespace tallyfold::pdf
