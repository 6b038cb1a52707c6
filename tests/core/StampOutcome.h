#pragma once

#include "core/SourceFile.h"

#include <filesystem>
#include <optional>
#include <string_view>

namespace tallyfold::tests {

/// What came of a file: it was found unfit, or failed, or so many sound pages were written.
struct StampOutcome {
    std::optional<SourceProblem> problem;
    bool hasFailed = false;
    int pages = 0;

    [[nodiscard]] bool isRefused() const
    {
        return problem || hasFailed;
    }
};

/// Classifies and stamps the file at `path`, whose copy then lies beside it as "copy.pdf". An error of the
/// test where a copy is neither refused nor sound. Adds to the count of hostile files.
[[nodiscard]] StampOutcome outcomeOfFile(const std::filesystem::path &path);
/// The same for a file of these bytes.
[[nodiscard]] StampOutcome outcomeOf(std::string_view bytes);

/// Writes a file that is meant to do harm, and counts it.
void writeHostile(const std::filesystem::path &path, std::string_view bytes);

} // namespace tallyfold::tests
