#pragma once

#include "core/FileError.h"
#include "core/ProductionPlan.h"
#include "core/StampError.h"
#include "files/FileCalls.h"

#include <QMap>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <variant>
#include <vector>

namespace tallyfold {

/// What a production writes beside its copies.
struct ProductionOptions {
    bool writeIndex = true;
    bool writePrivilegeLog = false;

    static inline const QString indexName = QStringLiteral("Production Index.csv");
    static inline const QString privilegeLogName = QStringLiteral("Privilege Log.csv");

    bool operator==(const ProductionOptions &) const = default;
};

/// A reason why a production cannot be written at all, found before anything is.
struct ProductionConflict {
    enum class Kind {
        exists,               ///< Something of the name `name` is in the output folder.
        duplicate,            ///< More than one copy would be called `name`.
        wouldReplaceOriginal, ///< The copy called `name` would land on a source.
        nothingToStamp,       ///< No file would be written. No name.
        folderMissing,        ///< The output folder is not there, or is not a folder. No name.
    };
    Kind kind = Kind::nothingToStamp;
    QString name;

    bool operator==(const ProductionConflict &) const = default;
};

/// How a production ended early. Thrown by `Production::write`.
struct ProductionError {
    /// The check found `conflicts`; nothing was written.
    struct Conflicts {
        std::vector<ProductionConflict> conflicts;
        bool operator==(const Conflicts &) const = default;
    };
    /// The caller asked to stop; `written` are the copies that were finished, and stay.
    struct Cancelled {
        std::vector<std::filesystem::path> written;
        bool operator==(const Cancelled &) const = default;
    };

    std::variant<Conflicts, Cancelled> value;

    bool operator==(const ProductionError &) const = default;
};

/// What a production came to.
struct ProductionResult {
    std::vector<std::filesystem::path> written;        ///< The finished copies, in production order.
    std::optional<std::filesystem::path> index;        ///< Absent when none was asked for.
    std::optional<std::filesystem::path> privilegeLog; ///< Absent when none was asked for.
    std::int64_t pages = 0;             ///< Pages drawn, those of files that failed later included.
    QMap<QString, StampError> failures; ///< By the source's name; each with its cause.

    bool operator==(const ProductionResult &) const = default;
};

/// Equal for equal values.
[[nodiscard]] std::size_t hashValue(const ProductionConflict &conflict);
[[nodiscard]] std::size_t hashValue(const ProductionResult &result);

/// Writes whole productions. Nothing in the output folder is ever replaced, no original is touched, and only
/// finished copies have a name. Stateless; works on the calling thread.
namespace Production {

/// Why `plan` cannot be written into `folder`, in a fixed order: nothing to stamp, a missing folder, names
/// that two copies share, copies that would land on a source or on something that is there, the index and log
/// likewise. Only reads.
[[nodiscard]] std::vector<ProductionConflict> findConflicts(const ProductionPlan &plan,
                                                            const std::filesystem::path &folder,
                                                            const ProductionOptions &options);

/// Takes the count of pages finished so far; false stops the production after this page.
using OnPage = std::function<bool(std::int64_t pages)>;

/// Writes every copy of `plan` into `folder`, then the index and the log as `options` say. A file that fails
/// is noted and the rest goes on. Throws `ProductionError`, or `FileError` when the index or the log cannot
/// be written or the folder's list of names (then called ".") not be brought to the disk; the copies stay
/// then.
[[nodiscard]] ProductionResult write(const ProductionPlan &plan, const std::filesystem::path &folder,
                                     const ProductionOptions &options, const OnPage &onPage);

/// The same with the file calls it is given, which tests let fail.
[[nodiscard]] ProductionResult write(const ProductionPlan &plan, const std::filesystem::path &folder,
                                     const ProductionOptions &options, const OnPage &onPage,
                                     files::FileCalls &calls);

} // namespace Production

} // namespace tallyfold
