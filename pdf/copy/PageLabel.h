#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tallyfold::pdf {

/// What viewers call a page, in their page box and beside its thumbnail.
struct PageLabel {
    std::u16string prefix;
    /// Written after the prefix in decimal digits without zeros before it; 1 or more.
    std::optional<std::int64_t> number;

    [[nodiscard]] bool isEmpty() const;
    bool operator==(const PageLabel &) const = default;
};

} // namespace tallyfold::pdf
