#pragma once

#include <QString>

#include <cstdint>
#include <string>

namespace tallyfold::pdf {

/// The language for which fonts are asked when text of `script` (ISO 15924 tag) in the line `text` needs
/// another font. Chinese characters take Japanese or Korean forms beside the letters of those languages.
[[nodiscard]] std::string languageFor(std::uint32_t script, const QString &text);

} // namespace tallyfold::pdf
