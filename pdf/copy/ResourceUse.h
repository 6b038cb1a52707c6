#pragma once

#include <qpdf/QPDFObjectHandle.hh>

#include <string_view>

namespace tallyfold::pdf {

/// Whether `object` is drawn with resources (a form, a tiling pattern, a Type 3 font), has none of its own,
/// and its content names some. It then takes those of what draws it: the standard allows it for old files
/// (PDF 1.7, 7.8.3), and viewers look there for all. `isForm` says that it is drawn as a form, whatever its
/// dictionary says.
[[nodiscard]] bool borrowsResources(QPDFObjectHandle object, bool isForm);

/// Whether `content` names a resource. May take data of an inline image for a name, never a name for data.
[[nodiscard]] bool namesResources(std::string_view content);

} // namespace tallyfold::pdf
