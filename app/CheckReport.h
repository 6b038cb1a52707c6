#pragma once

#include "app/CheckModel.h"

#include <QByteArray>
#include <QString>

#include <filesystem>
#include <optional>

namespace tallyfold {

/// What is told of a check outside of the program: when it was, of which folders, the verdict, and every
/// finding.
struct CheckReport {
    CheckResult result;
    QString program; ///< Name and version.

    /// As a table: first what the report is of, then an empty row, a header, and a row for each finding.
    [[nodiscard]] QByteArray csv() const;
    /// As a page that needs nothing else.
    [[nodiscard]] QString html() const;
    /// As pages to be printed, of the size that the user's locale sets.
    [[nodiscard]] QByteArray pdf() const;
};

/// Why a report was not saved.
struct ReportFailure {
    enum class Kind {
        inProduction, ///< It would lie in a folder that was checked, which nothing is written into.
        notWritten,
    };

    Kind kind = Kind::notWritten;
    QString cause; ///< The system's words for it, where it was not written.

    bool operator==(const ReportFailure &) const = default;
};

/// Writes `report` to `path`, as a table where that ends in ".csv", as a page of the web for ".html" or
/// ".htm", otherwise as a PDF. All of it is there in the end, or what was there before; a file of that name
/// is replaced. Nothing when it went well.
[[nodiscard]] std::optional<ReportFailure> saveReport(const CheckReport &report,
                                                      const std::filesystem::path &path);

/// A name for a report, without an ending: with the day, so that those of several days lie side by side.
[[nodiscard]] QString reportName(const CheckResult &result);

} // namespace tallyfold
