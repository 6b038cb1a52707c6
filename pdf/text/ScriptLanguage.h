#pragma once

#include <QString>

#include <cstdint>
#include <string>

namespace tallyfold::pdf {

/// The language (RFC 3066) of the font for text of `script` (ISO 15924 tag) in the line `text`. Chinese
/// characters take Japanese or Korean forms beside letters of those languages.
[[nodiscard]] std::string languageFor(std::uint32_t script, const QString &text);

} // namespace tallyfold::pdf
