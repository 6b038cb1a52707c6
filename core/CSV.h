#pragma once

#include <QString>
#include <QStringList>

#include <span>

/// Comma-separated values (RFC 4180), escaped so that spreadsheet programs do not evaluate a field as a
/// formula.
namespace tallyfold::CSV {

/// One field: prefixed with an apostrophe if a spreadsheet would take it for a formula, quoted if it contains
/// a comma, a quote or a line end. A CR LF pair counts as one character, as neither a CR nor a LF.
[[nodiscard]] QString cell(const QString &field);

/// Whether a spreadsheet would take `field` for a formula, so that `cell` guards it.
[[nodiscard]] bool needsGuard(const QString &field);

/// The whole table: fields joined by commas, every row, including the last, terminated by CR LF.
[[nodiscard]] QString text(std::span<const QStringList> rows);

} // namespace tallyfold::CSV
