#pragma once

#include "pdf/syntax/Geometry.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <functional>
#include <string>
#include <variant>

namespace tallyfold::pdf {

class TextFonts;

/// A generated form XObject, for an annotation without an appearance.
struct GeneratedForm {
    std::string content; ///< The content stream, not compressed.
    Rect boundingBox;
    Matrix matrix;
    QPDFObjectHandle resources; ///< A direct dictionary, which may refer to objects of the source.
    bool usesTextFonts = false; ///< Whether the content uses the fonts of the output.
};

/// The appearance of an annotation and its position.
struct PlacedAppearance {
    std::variant<QPDFObjectHandle, GeneratedForm>
        form;                         ///< An appearance stream of the file, or a generated one.
    Matrix placement;                 ///< From the form to the source page, before `Do` (PDF 1.7, 12.5.5).
    QPDFObjectHandle optionalContent; ///< The annotation's `/OC`; null for none.
};

/// Calls `draw` for each annotation and form field of `page` that viewers show on a screen, in drawing order
/// and one by one, since a page may have very many. `acroForm` is the document's interactive form or null,
/// `rotation` that of the page. Pop-ups, links without an appearance and malformed annotations are left out.
/// May throw what the parser and `draw` throw.
void drawVisibleAnnotations(QPDFObjectHandle page, QPDFObjectHandle acroForm, int rotation, TextFonts &fonts,
                            const std::function<void(const PlacedAppearance &appearance)> &draw);

} // namespace tallyfold::pdf
