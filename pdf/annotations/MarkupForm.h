#pragma once

#include "pdf/annotations/AnnotationStyle.h"
#include "pdf/annotations/VisibleAnnotations.h"
#include "pdf/syntax/Geometry.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <string>

namespace tallyfold::pdf {

/// The bounding box of points.
class Extent {
public:
    void add(double x, double y);

    /// The bounding box, extended by `room` on every side.
    [[nodiscard]] Rect with(double room) const;

private:
    Rect m_bounds;
    bool m_isEmpty = true;
};

/// The blend mode of a form.
enum class Blending { normal, multiply };

/// A form in page coordinates that draws `content` with the opacity of `annotation`.
[[nodiscard]] GeneratedForm markupForm(QPDFObjectHandle annotation, const std::string &content,
                                       const Rect &bounds, Blending blending = Blending::normal);

/// The colour under `key` of `annotation`, or `otherwise` when it has none.
[[nodiscard]] DeviceColor colorOr(QPDFObjectHandle annotation, const char *key, const DeviceColor &otherwise);

} // namespace tallyfold::pdf
