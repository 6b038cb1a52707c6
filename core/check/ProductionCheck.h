#pragma once

#include "core/check/Finding.h"
#include "core/check/NumberSeries.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <span>
#include <stop_token>
#include <vector>

namespace tallyfold::check {

/// How far a check is.
struct Progress {
    QString reading;               ///< The copy that is read.
    std::int64_t pages = 0;        ///< Finished.
    std::int64_t plannedPages = 0; ///< As many as the indexes tell of.
};

/// Called on any thread, never on two at once.
using ShowProgress = std::function<void(const Progress &)>;

/// What a check came to.
struct Outcome {
    std::vector<Finding> findings;          ///< By folder, in the order of the index, by page.
    std::int64_t copies = 0;                ///< That the indexes name.
    std::int64_t pages = 0;                 ///< Of these copies, as the indexes tell.
    std::vector<NumberSeries::Run> numbers; ///< That the indexes name, in order.
    bool isStopped = false;                 ///< Whether there may be more findings.

    /// The worst of what was found.
    [[nodiscard]] Weight weight() const;
    /// Whether everything was looked at and nothing is wrong.
    [[nodiscard]] bool isWhole() const;
};

/// Says of finished productions whether they are whole: each folder's index against the copies beside it, and
/// the numbers of all folders against each other. Reads alone. Copies are read by reader processes, as many
/// at once as there are cores, at most two. A stop that is requested meanwhile, on any thread, ends it after
/// the pages in progress. Never throws.
[[nodiscard]] Outcome checkProductions(std::span<const std::filesystem::path> folders,
                                       const ShowProgress &show = {}, const std::stop_token &givenUp = {});

} // namespace tallyfold::check
