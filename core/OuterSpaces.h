#pragma once

#include <QString>

namespace tallyfold {

/// `text` without spaces (of any width) and tabs at its ends; line breaks stay.
[[nodiscard]] QString withoutOuterSpaces(const QString &text);

} // namespace tallyfold
