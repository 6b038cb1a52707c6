#pragma once

#include "core/check/NumberedPages.h"
#include "pdf/syntax/Geometry.h"

#include <QString>

#include <array>
#include <span>

namespace tallyfold::check {

/// What stands where a stamp may stand.
struct NumberOnPage {
    enum class Kind {
        expected,
        other, ///< Another number of the same prefix, width and suffix.
        none,
    };
    Kind kind = Kind::none;
    QString text; ///< The other number, without white space.
    bool operator==(const NumberOnPage &) const = default;
};

/// Along the top and the bottom of a page, where the six places of a stamp are: as deep as the widest margin
/// with a line of the largest size above it, or half the page where that is less. Points, as the crop box.
[[nodiscard]] std::array<pdf::Rect, 2> stampStrips(const pdf::Rect &cropBox);

/// `text` without white space and with its characters composed, in the form in which numbers are compared.
[[nodiscard]] QString withoutSpace(const QString &text);

/// Whether a number is too short to mean anything: any text has it.
[[nodiscard]] bool isTooShort(const QString &number);

/// Looks for the number with the 0-based index `index` of `numbers` in `texts`, in which it may be broken by
/// white space. It does not stand in the middle of more digits.
[[nodiscard]] NumberOnPage numberIn(std::span<const QString> texts, const NumberedPages &numbers,
                                    std::int64_t index);

} // namespace tallyfold::check
