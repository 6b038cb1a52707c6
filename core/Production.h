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

/// The tables that a production writes in addition to its copies.
struct ProductionOptions {
    bool writeIndex = true;
    bool writePrivilegeLog = false;

    static inline const QString indexName = QStringLiteral("Production Index.csv");
    static inline const QString privilegeLogName = QStringLiteral("Privilege Log.csv");

    bool operator==(const ProductionOptions &) const = default;
};

/// A reason not to start a production, found before anything is written.
struct ProductionConflict {
    enum class Kind {
        exists,               ///< The output folder already contains `name`.
        duplicate,            ///< More than one copy would have the name `name`.
        wouldReplaceOriginal, ///< The copy `name` would overwrite a source.
        nothingToStamp,       ///< No file would be written. `name` is empty.
        folderMissing,        ///< The output folder does not exist or is not a folder. `name` is empty.
    };
    Kind kind = Kind::nothingToStamp;
    QString name;

    bool operator==(const ProductionConflict &) const = default;
};

/// Why a production ended early. Thrown by `Production::write`.
struct ProductionError {
    /// The check found `conflicts`; nothing was written.
    struct Conflicts {
        std::vector<ProductionConflict> conflicts;
        bool operator==(const Conflicts &) const = default;
    };
    /// The caller requested a stop; `written` are the finished copies, which are kept.
    struct Cancelled {
        std::vector<std::filesystem::path> written;
        bool operator==(const Cancelled &) const = default;
    };

    std::variant<Conflicts, Cancelled> value;

    bool operator==(const ProductionError &) const = default;
};

/// The result of a production.
struct ProductionResult {
    std::vector<std::filesystem::path> written;        ///< The finished copies, in production order.
    std::optional<std::filesystem::path> index;        ///< Absent when none was asked for.
    std::optional<std::filesystem::path> privilegeLog; ///< Absent when none was asked for.
    std::int64_t pages = 0; ///< Number of pages drawn, including those of files that failed later.
    QMap<QString, StampError> failures; ///< By the name of the source.

    bool operator==(const ProductionResult &) const = default;
};

/// Equal for equal values.
[[nodiscard]] std::size_t hashValue(const ProductionConflict &conflict);
[[nodiscard]] std::size_t hashValue(const ProductionResult &result);

/// Writes productions. Existing files are never replaced, sources are never modified, and only finished
/// copies get their names. Stateless; works on the calling thread.
namespace Production {

/// The reasons why `plan` cannot be written to `folder`, in a fixed order: nothing to stamp, missing folder,
/// names shared by copies, copies that would overwrite a source or an existing file, then the index and the
/// log. Does not write anything.
[[nodiscard]] std::vector<ProductionConflict> findConflicts(const ProductionPlan &plan,
                                                            const std::filesystem::path &folder,
                                                            const ProductionOptions &options);

/// Receives the number of pages finished so far; returning false stops the production after this page.
using OnPage = std::function<bool(std::int64_t pages)>;

/// Writes every copy of `plan` to `folder`, then the index and the log according to `options`. A file that
/// fails is recorded, and the production continues. Throws `ProductionError`, or `FileError` if the index or
/// the log cannot be written or the directory (with the name ".") cannot be flushed; the copies are kept in
/// that case.
[[nodiscard]] ProductionResult write(const ProductionPlan &plan, const std::filesystem::path &folder,
                                     const ProductionOptions &options, const OnPage &onPage);

/// As above, through `calls`, which can fail in tests.
[[nodiscard]] ProductionResult write(const ProductionPlan &plan, const std::filesystem::path &folder,
                                     const ProductionOptions &options, const OnPage &onPage,
                                     files::FileCalls &calls);

} // namespace Production

} // namespace tallyfold
