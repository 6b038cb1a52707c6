#pragma once

#include <QString>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <system_error>
#include <variant>

namespace tallyfold::check {

/// The index names it, and it is not in the folder.
struct CopyMissing {
    bool operator==(const CopyMissing &) const = default;
};
struct CopyUnreadable {
    bool operator==(const CopyUnreadable &) const = default;
};
struct PageCountDiffers {
    std::int64_t inIndex = 0;
    std::int64_t inCopy = 0;
    bool operator==(const PageCountDiffers &) const = default;
};
struct NumberMissing {
    QString number;
    bool operator==(const NumberMissing &) const = default;
};
struct OtherNumber {
    QString number;
    QString found;
    bool operator==(const OtherNumber &) const = default;
};
/// The page could not be read, or not in time.
struct PageNotChecked {
    bool operator==(const PageNotChecked &) const = default;
};
/// Numbers so short that they are on any page: none of the copy was looked for.
struct NumbersTooShort {
    bool operator==(const NumbersTooShort &) const = default;
};
/// No copy has these numbers, which would come before those of the copy.
struct NumberGap {
    QString first;
    QString last;
    bool operator==(const NumberGap &) const = default;
};
/// Another copy has these numbers as well.
struct NumberTwice {
    QString first;
    QString last;
    std::size_t otherFolder = 0;
    QString otherCopy;
    bool operator==(const NumberTwice &) const = default;
};
/// A PDF file in the folder that the index does not name.
struct NotInIndex {
    bool operator==(const NotInIndex &) const = default;
};
/// What a production leaves behind that was killed.
struct Leftover {
    bool operator==(const Leftover &) const = default;
};
/// Of the folder, or of its index when there is one that cannot be read.
struct FolderUnreadable {
    std::error_code error;
    bool operator==(const FolderUnreadable &) const = default;
};
struct IndexMissing {
    bool operator==(const IndexMissing &) const = default;
};
struct IndexUnreadable {
    std::error_code error;
    bool operator==(const IndexUnreadable &) const = default;
};
struct RowNotUnderstood {
    std::int64_t row = 0; ///< From 1, the header.
    bool operator==(const RowNotUnderstood &) const = default;
};
/// The first page of no copy shows its number: they are covers. Nothing is wrong.
struct CoversWithoutNumber {
    std::int64_t copies = 0;
    bool operator==(const CoversWithoutNumber &) const = default;
};
/// It is not the file that the hash list tells of.
struct Changed {
    bool operator==(const Changed &) const = default;
};
struct NotInHashList {
    bool operator==(const NotInHashList &) const = default;
};
/// Line `line` of the hash list is none, or the list cannot be read at all.
struct HashListNotUnderstood {
    std::int64_t line = 0; ///< From 1; 0 for the whole list.
    bool operator==(const HashListNotUnderstood &) const = default;
};

/// Something that a check has to tell.
struct Finding {
    using What = std::variant<CopyMissing, CopyUnreadable, PageCountDiffers, NumberMissing, OtherNumber,
                              PageNotChecked, NumbersTooShort, NumberGap, NumberTwice, NotInIndex, Leftover,
                              FolderUnreadable, IndexMissing, IndexUnreadable, RowNotUnderstood,
                              CoversWithoutNumber, Changed, NotInHashList, HashListNotUnderstood>;

    std::size_t folder = 0;           ///< Among those that were checked.
    QString file;                     ///< Its name in the folder; empty for what concerns the folder.
    std::optional<std::int64_t> page; ///< From 1.
    What what;

    bool operator==(const Finding &) const = default;
};

/// How bad a finding is.
enum class Weight {
    remark,     ///< Nothing is wrong.
    notChecked, ///< Nobody knows.
    fault,
};

[[nodiscard]] Weight weightOf(const Finding &finding);

} // namespace tallyfold::check
