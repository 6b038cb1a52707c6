#pragma once

#include <qpdf/QPDFObjectHandle.hh>

#include <string_view>

namespace tallyfold::pdf {

/// Whether `object` needs the resources of the content that draws it: it is a form, tiling pattern or Type 3
/// font without resources of its own, and its content names some. PDF 1.7, 7.8.3 allows it for old files,
/// and viewers support it for all. `isForm` says that it is drawn as a form, whatever its dictionary says.
[[nodiscard]] bool borrowsResources(QPDFObjectHandle object, bool isForm);

/// Whether `content` names a resource. Data of an inline image may be taken for a name.
[[nodiscard]] bool namesResources(std::string_view content);

} // namespace tallyfold::pdf
