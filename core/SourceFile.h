#pragma once

#include "files/FileStatus.h"

#include <QString>
#include <QUuid>

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>

namespace tallyfold {

/// Why a source cannot be stamped.
enum class SourceProblem {
    unreadable, ///< It could not be opened as a PDF.
    locked,     ///< It needs a password to open.
    encrypted,  ///< It opens, but its owner withholds printing, changing or copying.
    empty,      ///< It opens and has no pages.
};

inline constexpr std::array<SourceProblem, 4> allSourceProblems{
    SourceProblem::unreadable, SourceProblem::locked, SourceProblem::encrypted, SourceProblem::empty};

/// The name the problem is stored under: that of its case.
[[nodiscard]] QString keyOf(SourceProblem problem);
/// True for `locked` and `encrypted`.
[[nodiscard]] bool isPasswordProtected(SourceProblem problem);
/// The status of a source with this problem in the production index.
[[nodiscard]] QString indexStatus(SourceProblem problem);

/// Files that were written together are less than a millisecond apart, and are to be ordered all the same.
using FileDate = files::FileTime;

/// One input PDF as it was found when it was opened once.
struct SourceFile {
    QUuid id;                  ///< Fresh for every classification, also of the same location.
    std::filesystem::path url; ///< As given. Its bytes need not be valid text.
    QString name;              ///< Last component of `url`, shown as text.
    std::int64_t pageCount = 0;
    FileDate modified; ///< When its content was last changed; `distantPast()` when that cannot be read.
    std::optional<SourceProblem> problem;
    std::optional<QString> existingBates; ///< An earlier number near the edges of page 1.

    bool operator==(const SourceFile &) const = default;
};

/// Equal for equal sources.
[[nodiscard]] std::size_t hashValue(const SourceFile &source);

/// A date before that of any file.
[[nodiscard]] FileDate distantPast();

/// The last component of `path` as text; bytes that are not valid UTF-8 become replacement characters.
[[nodiscard]] QString displayName(const std::filesystem::path &path);
/// The whole of `path` as text, likewise.
[[nodiscard]] QString displayPath(const std::filesystem::path &path);

} // namespace tallyfold
