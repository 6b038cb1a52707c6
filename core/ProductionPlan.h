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

/// One page of a source, as the production will number it.
/// A counted page may go unstamped: a cover page takes a number it does not show.
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

    /// The numbers of the first and the last page that have one.
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

/// `sources` in production order. Sources that the order does not tell apart keep theirs.
[[nodiscard]] std::vector<SourceFile> ordered(const std::vector<SourceFile> &sources, FileOrder order);

/// Which file gets which numbers, which pages are stamped and how the copies are called: a function of the
/// sources and the settings alone, so that what is shown beforehand is what is written.
class ProductionPlan {
public:
    ProductionPlan(const std::vector<SourceFile> &sources, const StampSettings &settings);

    NormalizedSettings settings;
    std::vector<PlannedFile>
        files; ///< One per source, in production order, those with problems in their place.

    /// The files that get a copy. The pointers are into `files`.
    [[nodiscard]] std::vector<const PlannedFile *> stampedFiles() const;
    /// The stampable files none of whose pages is stamped.
    [[nodiscard]] std::vector<const PlannedFile *> coverOnlyFiles() const;
    /// The stampable files none of whose pages is stamped or numbered.
    [[nodiscard]] std::vector<const PlannedFile *> skippedFiles() const;
    /// The files whose source is locked or encrypted.
    [[nodiscard]] std::vector<const PlannedFile *> passwordProtectedFiles() const;

    /// First and last number of the whole production; absent when no page is numbered.
    [[nodiscard]] std::optional<std::int64_t> firstNumber() const;
    [[nodiscard]] std::optional<std::int64_t> lastNumber() const;
    /// The number a following production goes on with.
    [[nodiscard]] std::int64_t nextNumber() const;
    /// "first – last", also when both are the same; absent when no page is numbered.
    [[nodiscard]] std::optional<QString> rangeText() const;
    /// The same of two numbers.
    [[nodiscard]] QString rangeText(std::int64_t first, std::int64_t last) const;
    /// Count of decimal digits of the largest number.
    [[nodiscard]] std::int64_t digitsNeeded() const;
    /// Whether some numbers print wider than the others.
    [[nodiscard]] bool outgrowsDigits() const;
    /// Names that more than one copy would get when letter case does not count, each once, as first spelled.
    [[nodiscard]] QStringList duplicateOutputNames() const;
    /// The notice about password-protected sources; absent when there are none.
    [[nodiscard]] std::optional<PasswordNotice> passwordNotice() const;

    bool operator==(const ProductionPlan &) const = default;
};

/// Equal for equal values.
[[nodiscard]] std::size_t hashValue(const PlannedFile &file);
[[nodiscard]] std::size_t hashValue(const ProductionPlan &plan);

} // namespace tallyfold
