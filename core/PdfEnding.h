#pragma once

#include <QString>

#include <string_view>

namespace tallyfold {

/// The end of a PDF file's name.
inline constexpr std::string_view pdfEnding = ".pdf";

/// Whether `name` ends so, in any letter case.
[[nodiscard]] bool hasPdfEnding(std::string_view name);
[[nodiscard]] bool hasPdfEnding(QStringView name);

} // namespace tallyfold
