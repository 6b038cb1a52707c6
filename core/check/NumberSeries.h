#pragma once

#include <QString>

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tallyfold::check {

/// The numbers of one copy: the texts of the first and the last, and how many there are.
struct NumberRange {
    QString first;
    QString last;
    std::int64_t count = 0;
};

/// How the numbers of many copies follow each other, in whatever order they are given.
struct NumberSeries {
    /// Consecutive numbers of one prefix and suffix.
    struct Run {
        QString first;
        QString last;
        std::int64_t count = 0; ///< Of different numbers.
        bool operator==(const Run &) const = default;
    };
    /// Numbers between two runs of one prefix and suffix that no copy has.
    struct Gap {
        QString first;
        QString last;
        std::size_t before = 0; ///< The range that follows it, by its index among those given.
        bool operator==(const Gap &) const = default;
    };
    /// Numbers that two copies have.
    struct Overlap {
        QString first;
        QString last;
        std::size_t range = 0; ///< Both by their index among those given.
        std::size_t other = 0;
        bool operator==(const Overlap &) const = default;
    };

    std::vector<Run> runs;
    std::vector<Gap> gaps;
    std::vector<Overlap> overlaps;

    /// Of texts one cannot tell what is prefix, number and suffix: "A1-0001-2". Taken as the number is what
    /// leaves the fewest gaps and overlaps.
    [[nodiscard]] static NumberSeries of(std::span<const NumberRange> ranges);
};

} // namespace tallyfold::check
