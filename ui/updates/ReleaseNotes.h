#pragma once

#include <QString>

namespace tallyfold {

/// What `html` says, without its markup: paragraphs, lines and list entries stay apart, scripts and styles
/// are left out, and nothing is ever loaded. Text without any tag keeps its lines. The result is plain text
/// and to be shown as such, even where it looks like markup. Cut what is not trusted first: elements within
/// elements take time that grows with the square of their number.
[[nodiscard]] QString plainTextOfHtml(QString html);

} // namespace tallyfold
