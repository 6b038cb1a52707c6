#pragma once

#include "pdf/syntax/Geometry.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <functional>
#include <string>
#include <variant>

namespace tallyfold::pdf {

class TextFonts;

/// A form XObject made here because the file has none for what a viewer shows.
struct GeneratedForm {
    std::string content; ///< The content stream, not compressed.
    Rect boundingBox;
    Matrix matrix;
    QPDFObjectHandle resources; ///< A direct dictionary; what is in it may refer into the source.
    bool usesTextFonts = false; ///< Whether the content shows text with the output's own fonts.
};

/// What one annotation shows, and where.
struct PlacedAppearance {
    std::variant<QPDFObjectHandle, GeneratedForm>
        form;                         ///< The file's own appearance stream, or one made here.
    Matrix placement;                 ///< From the form to the source page, before `Do` (PDF 1.7, 12.5.5).
    QPDFObjectHandle optionalContent; ///< The layer the annotation belongs to; null for none.
};

/// Gives `draw` what a viewer shows of the annotations and form fields of `page` on a screen, in drawing
/// order and one by one: a page may have very many. `acroForm` is the document's interactive form or null,
/// `rotation` the page's turn for display. Pop-ups are not shown, nor are links without an appearance. What
/// is malformed shows nothing. May throw what the parser and `draw` throw.
void drawVisibleAnnotations(QPDFObjectHandle page, QPDFObjectHandle acroForm, int rotation, TextFonts &fonts,
                            const std::function<void(const PlacedAppearance &appearance)> &draw);

} // namespace tallyfold::pdf
