#pragma once

#include "core/NormalizedSettings.h"
#include "core/PasswordNotice.h"
#include "core/SourceFile.h"

#include <QString>
#include <QStringList>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace tallyfold {

/// One page of a source, as the production will number it. A counted page need not be stamped: a cover page
/// may have a number that it does not show.
struct PlannedPage {
    std::optional<std::int64_t> number; ///< Absent when the page is not counted.
    bool stamped = false;               ///< Whether any stamp line is drawn on it.
    bool operator==(const PlannedPage &) const = default;
};

/// One source with the numbers of its pages and the name of its copy.
struct PlannedFile {
    SourceFile source;
    std::vector<PlannedPage> pages; ///< In page order; empty for a source that cannot be stamped.
    QString outputName;             ///< Always ends in ".pdf", in any letter case.

    /// The numbers of the first and the last numbered page.
    [[nodiscard]] std::optional<std::int64_t> firstNumber() const;
    [[nodiscard]] std::optional<std::int64_t> lastNumber() const;

    /// Whether the source could be stamped: no problem, and at least one page.
    [[nodiscard]] bool isStampable() const;
    /// Whether pages are planned and none of them is stamped.
    [[nodiscard]] bool isCoverOnly() const;
    /// Whether pages are planned and none of them is stamped or numbered: such a file gets no copy.
    [[nodiscard]] bool isSkipped() const;

    bool operator==(const PlannedFile &) const = default;
};

/// `sources` in production order. The sort is stable.
[[nodiscard]] std::vector<SourceFile> ordered(const std::vector<SourceFile> &sources, FileOrder order);

/// The numbers of all files, the pages that are stamped and the names of the copies. Depends only on the
/// sources and the settings, so that a preview shows exactly what will be written.
class ProductionPlan {
public:
    ProductionPlan(const std::vector<SourceFile> &sources, const StampSettings &settings);

    NormalizedSettings settings;
    std::vector<PlannedFile> files; ///< One per source, in production order, including sources with problems.

    /// The files that get a copy, as pointers into `files`.
    [[nodiscard]] std::vector<const PlannedFile *> stampedFiles() const;
    /// The stampable files without a stamped page.
    [[nodiscard]] std::vector<const PlannedFile *> coverOnlyFiles() const;
    /// The stampable files without a stamped or numbered page.
    [[nodiscard]] std::vector<const PlannedFile *> skippedFiles() const;
    /// The files whose source is locked or encrypted.
    [[nodiscard]] std::vector<const PlannedFile *> passwordProtectedFiles() const;

    /// First and last number of the whole production; absent when no page is numbered.
    [[nodiscard]] std::optional<std::int64_t> firstNumber() const;
    [[nodiscard]] std::optional<std::int64_t> lastNumber() const;
    /// The first number of a production that continues this one.
    [[nodiscard]] std::int64_t nextNumber() const;
    /// "first – last", even if both are the same; absent if no page is numbered.
    [[nodiscard]] std::optional<QString> rangeText() const;
    /// The same for two numbers.
    [[nodiscard]] QString rangeText(std::int64_t first, std::int64_t last) const;
    /// Number of decimal digits of the largest number.
    [[nodiscard]] std::int64_t digitsNeeded() const;
    /// Whether some numbers print wider than the others.
    [[nodiscard]] bool outgrowsDigits() const;
    /// Names that more than one copy would get, ignoring letter case; each once, as first spelled.
    [[nodiscard]] QStringList duplicateOutputNames() const;
    /// The notice about password-protected sources; absent when there are none.
    [[nodiscard]] std::optional<PasswordNotice> passwordNotice() const;

    bool operator==(const ProductionPlan &) const = default;
};

/// Equal for equal values.
[[nodiscard]] std::size_t hashValue(const PlannedFile &file);
[[nodiscard]] std::size_t hashValue(const ProductionPlan &plan);

} // namespace tallyfold
