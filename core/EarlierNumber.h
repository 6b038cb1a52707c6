#pragma once

#include "pdf/syntax/Geometry.h"

#include <QString>

#include <array>
#include <optional>

namespace tallyfold {

/// The strips along the page edges that are searched for a stamp, in search order: bottom, top, left, right.
/// Each is 90 points deep, or half the page if the page is smaller than that.
[[nodiscard]] std::array<pdf::Rect, 4> earlierNumberStrips(const pdf::Rect &cropBox);

/// The first part of `text` that looks like a Bates number: a capital letter, up to eleven capitals or
/// digits, optionally "-", "_" or a space, then four to twelve digits beginning with 0, or six to twelve
/// digits that do not. Matches only at word boundaries (UAX #29) and grapheme cluster boundaries. "EX-0001"
/// and "DEF 1234567" match; "Page 12" and "2023" do not.
[[nodiscard]] std::optional<QString> earlierNumberIn(const QString &text);

} // namespace tallyfold
