#pragma once

#include <QString>
#include <QStringList>

#include <span>

/// Comma-separated values as spreadsheet programs read them (RFC 4180), guarded against being read as
/// formulas.
namespace tallyfold::CSV {

/// One field: an apostrophe goes in front of a field that a spreadsheet would take for a formula; a field
/// with a comma, a quote or a line end is quoted. A CR LF pair is one character and neither a CR nor a LF.
[[nodiscard]] QString cell(const QString &field);

/// Whether a spreadsheet would take `field` for a formula, so that `cell` guards it.
[[nodiscard]] bool needsGuard(const QString &field);

/// The whole text: fields joined with commas, every row ended by CR LF, the last one included.
[[nodiscard]] QString text(std::span<const QStringList> rows);

} // namespace tallyfold::CSV
