#pragma once

#include <QString>

#include <cstdint>
#include <optional>

namespace tallyfold::check {

/// The numbers of the pages of one copy, as the index tells them: prefix, a number that goes up by one from
/// page to page, suffix.
struct NumberedPages {
    QString prefix;
    QString suffix;
    qsizetype digits = 1;       ///< Least width of the number.
    std::int64_t first = 0;     ///< The number of the first numbered page.
    std::int64_t count = 0;     ///< Numbered pages, at least 1.
    std::int64_t firstPage = 1; ///< The first numbered page: 1, or 2 where page 1 is not counted.

    /// From the texts of the first and the last number and the count of pages; nothing where they do not go
    /// together. Several ways to cut a text into prefix, number and suffix may give the same numbers.
    [[nodiscard]] static std::optional<NumberedPages> of(const QString &firstText, const QString &lastText,
                                                         std::int64_t pages);

    /// The number of the numbered page with this 0-based index, as it is printed.
    [[nodiscard]] QString text(std::int64_t index) const;

    /// The last number.
    [[nodiscard]] std::int64_t last() const;
};

} // namespace tallyfold::check
