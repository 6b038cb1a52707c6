#include "pdf/annotations/VisibleAnnotations.h"

#include "pdf/annotations/AnnotationAppearance.h"
#include "pdf/annotations/AppearanceForm.h"
#include "pdf/annotations/FieldAppearance.h"
#include "pdf/annotations/MarkupAppearance.h"
#include "pdf/source/FailureLog.h"
#include "pdf/source/PageGeometry.h"

#include <exception>
#include <new>
#include <optional>

namespace tallyfold::pdf {

namespace {

/// The file's own appearance of `annotation`.
std::optional<PlacedAppearance> ownAppearance(QPDFObjectHandle annotation, int rotation)
{
    QPDFObjectHandle stream = normalAppearance(annotation);
    if (!stream.isStream()) {
        return std::nullopt;
    }
    QPDFObjectHandle form = stream.getDict();
    QPDFObjectHandle box = form.getKey("/BBox");
    const std::optional<Rect> boundingBox = rectFrom(box);
    if (!boundingBox && !box.isNull()) {
        return std::nullopt;
    }
    const std::optional<Matrix> placement =
        placementOf(annotation, boundingBox, matrixFrom(form.getKey("/Matrix")).value_or(Matrix{}), rotation);
    if (!placement) {
        return std::nullopt;
    }
    return PlacedAppearance{stream, *placement, annotation.getKey("/OC")};
}

/// The generated appearance of the field of `widget`.
std::optional<PlacedAppearance> generatedField(QPDFObjectHandle widget, QPDFObjectHandle acroForm,
                                               int rotation, TextFonts &fonts)
{
    std::optional<GeneratedForm> form = fieldAppearance(widget, acroForm, fonts);
    if (!form) {
        return std::nullopt;
    }
    const std::optional<Matrix> placement = placementOf(widget, form->boundingBox, form->matrix, rotation);
    if (!placement) {
        return std::nullopt;
    }
    return PlacedAppearance{std::move(*form), *placement, widget.getKey("/OC")};
}

std::optional<PlacedAppearance> appearanceOf(QPDFObjectHandle annotation, QPDFObjectHandle acroForm,
                                             int rotation, TextFonts &fonts)
{
    if (annotation.getKey("/Subtype").isNameAndEquals("/Widget")) {
        return needsFieldAppearance(annotation, acroForm)
                   ? generatedField(annotation, acroForm, rotation, fonts)
                   : ownAppearance(annotation, rotation);
    }
    if (normalAppearance(annotation).isStream()) {
        return ownAppearance(annotation, rotation);
    }
    std::optional<GeneratedForm> form = markupAppearance(annotation, fonts);
    if (!form) {
        return std::nullopt;
    }
    return PlacedAppearance{std::move(*form), {}, annotation.getKey("/OC")};
}

} // namespace

void drawVisibleAnnotations(QPDFObjectHandle page, QPDFObjectHandle acroForm, int rotation, TextFonts &fonts,
                            const std::function<void(const PlacedAppearance &appearance)> &draw)
{
    QPDFObjectHandle annotations = page.getKey("/Annots");
    for (int index = 0, count = annotations.isArray() ? annotations.getArrayNItems() : 0; index < count;
         ++index) {
        QPDFObjectHandle annotation = annotations.getArrayItem(index);
        if (!isShown(annotation)) {
            continue;
        }
        std::optional<PlacedAppearance> appearance;
        try {
            appearance = appearanceOf(annotation, acroForm, rotation, fonts);
        } catch (const std::bad_alloc &) {
            throw; // Out of memory is not malformed.
        } catch (const std::exception &failure) {
            logFailure("drawing an annotation", failure);
            continue; // A malformed annotation is left out alone.
        }
        if (appearance) {
            draw(*appearance);
        }
    }
}

} // namespace tallyfold::pdf
