#pragma once

#include "core/ProductionPlan.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tallyfold::tests {

/// The plan of a production made anew, as slowly and plainly as it can be said. It shares nothing with
/// `ProductionPlan` but the settings, which are normalised, and the comparison of two names.
class SlowPlan {
public:
    SlowPlan(const std::vector<SourceFile> &sources, const StampSettings &normalized);

    struct File {
        SourceFile source;
        std::vector<PlannedPage> pages;
        std::string outputName;

        [[nodiscard]] bool isStampable() const;
        /// Whether any page is stamped.
        [[nodiscard]] bool showsStamp() const;
        /// Whether it gets a copy.
        [[nodiscard]] bool isWritten() const;
    };
    std::vector<File> files;

    /// All numbers of the copies, in their order.
    [[nodiscard]] std::vector<std::int64_t> numbers() const;
    /// Names of copies that are also those of others but for letter case, each as first spelled.
    [[nodiscard]] std::vector<std::string> duplicates() const;
    [[nodiscard]] std::string bates(std::int64_t number) const;

private:
    [[nodiscard]] std::string nameOf(const File &file) const;

    StampSettings m_settings;
};

} // namespace tallyfold::tests
