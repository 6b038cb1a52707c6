#include "pdf/VisibleAnnotations.h"

#include "pdf/AnnotationAppearance.h"
#include "pdf/PageGeometry.h"

namespace tallyfold::pdf {

namespace {

/// The file's own appearance of `annotation`, in its place.
std::optional<PlacedAppearance> ownAppearance(QPDFObjectHandle annotation, int rotation)
{
    QPDFObjectHandle stream = normalAppearance(annotation);
    if (!stream.isStream()) {
        return std::nullopt;
    }
    QPDFObjectHandle form = stream.getDict();
    const std::optional<Rect> box = rectFrom(form.getKey("/BBox"));
    if (!box) {
        return std::nullopt;
    }
    const std::optional<Matrix> placement =
        placementOf(annotation, *box, matrixFrom(form.getKey("/Matrix")), rotation);
    if (!placement) {
        return std::nullopt;
    }
    return PlacedAppearance{stream, *placement, annotation.getKey("/OC")};
}

} // namespace

std::vector<PlacedAppearance> visibleAnnotations(QPDFObjectHandle page, QPDFObjectHandle acroForm,
                                                 int rotation, TextFonts &fonts)
{
    std::vector<PlacedAppearance> appearances;
    QPDFObjectHandle annotations = page.getKey("/Annots");
    for (int index = 0, count = annotations.isArray() ? annotations.getArrayNItems() : 0; index < count;
         ++index) {
        QPDFObjectHandle annotation = annotations.getArrayItem(index);
        if (!isShown(annotation)) {
            continue;
        }
        if (auto appearance = ownAppearance(annotation, rotation)) {
            appearances.push_back(std::move(*appearance));
        }
    }
    (void)acroForm;
    (void)fonts;
    return appearances;
}

} // namespace tallyfold::pdf
