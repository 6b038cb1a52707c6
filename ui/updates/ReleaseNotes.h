#pragma once

#include <QString>

namespace tallyfold {

/// The text of `html` without markup: paragraphs, lines and list items remain separate, scripts and styles
/// are omitted, and nothing is loaded. Text without tags keeps its lines. The result is plain text and must
/// be shown as such, even if it looks like markup. Truncate untrusted input before: nested elements take
/// quadratic time.
[[nodiscard]] QString plainTextOfHtml(QString html);

} // namespace tallyfold
