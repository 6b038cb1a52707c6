#pragma once

#include "pdf/syntax/Geometry.h"

#include <QString>

#include <array>
#include <optional>

namespace tallyfold {

/// The strips along the edges of a page where stamps stand, in the order in which they are searched: bottom,
/// top, left, right. Each is 90 points deep, or half the page where it is narrower.
[[nodiscard]] std::array<pdf::Rect, 4> earlierNumberStrips(const pdf::Rect &cropBox);

/// The first text in `text` that looks like a Bates number: a capital, up to eleven capitals or digits,
/// perhaps one of
/// "-", "_" and a space, then four to twelve digits that begin with 0 or six to twelve that do not, as whole
/// words (UAX #29) and whole user-perceived characters. "EX-0001" and "DEF 1234567" do; "Page 12" and "2023"
/// do not.
[[nodiscard]] std::optional<QString> earlierNumberIn(const QString &text);

} // namespace tallyfold
