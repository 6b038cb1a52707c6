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
    unreadable, ///< It is not a readable PDF.
    locked,     ///< It requires a password to open.
    encrypted,  ///< It opens without a password, but printing, changing or copying is not permitted.
    empty,      ///< It has no pages.
};

inline constexpr std::array<SourceProblem, 4> allSourceProblems{
    SourceProblem::unreadable, SourceProblem::locked, SourceProblem::encrypted, SourceProblem::empty};

/// The name of the case, under which the problem is stored.
[[nodiscard]] QString keyOf(SourceProblem problem);
/// True for `locked` and `encrypted`.
[[nodiscard]] bool isPasswordProtected(SourceProblem problem);
/// The status of a source with this problem in the production index.
[[nodiscard]] QString indexStatus(SourceProblem problem);

/// A date in nanoseconds: files written together may differ by less than a millisecond.
using FileDate = files::FileTime;

/// An input PDF, with its properties at the time of classification.
struct SourceFile {
    QUuid id;                  ///< New for every classification, even of the same location.
    std::filesystem::path url; ///< As given. Need not be valid UTF-8.
    QString name;              ///< Last component of `url` as text.
    std::int64_t pageCount = 0;
    FileDate modified; ///< Last modification; `distantPast()` if unknown.
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
/// All of `path` as text, likewise.
[[nodiscard]] QString displayPath(const std::filesystem::path &path);

} // namespace tallyfold
