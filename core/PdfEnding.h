#pragma once

#include <QString>

#include <string_view>

namespace tallyfold {

/// The extension of PDF file names.
inline constexpr std::string_view pdfEnding = ".pdf";

/// Whether `name` ends with the extension, in any letter case.
[[nodiscard]] bool hasPdfEnding(std::string_view name);
[[nodiscard]] bool hasPdfEnding(QStringView name);

} // namespace tallyfold
