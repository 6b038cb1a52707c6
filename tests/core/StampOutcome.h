#pragma once

#include "core/SourceFile.h"

#include <filesystem>
#include <optional>
#include <string_view>

namespace tallyfold::tests {

/// The outcome for a file: rejected, failed, or a number of valid pages written.
struct StampOutcome {
    std::optional<SourceProblem> problem;
    bool hasFailed = false;
    int pages = 0;

    [[nodiscard]] bool isRefused() const
    {
        return problem || hasFailed;
    }
};

/// Classifies and stamps the file at `path`; the copy is "copy.pdf" in the same folder. Fails the test if the
/// copy is neither refused nor valid. Counts the hostile file.
[[nodiscard]] StampOutcome outcomeOfFile(const std::filesystem::path &path);
/// As above for a file with these bytes.
[[nodiscard]] StampOutcome outcomeOf(std::string_view bytes);

/// Writes a hostile file, and counts it.
void writeHostile(const std::filesystem::path &path, std::string_view bytes);

} // namespace tallyfold::tests
