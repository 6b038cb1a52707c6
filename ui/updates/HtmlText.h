#pragma once

#include <QString>
#include <QStringView>

namespace tallyfold {

/// What `html` says, without its markup: paragraphs, lines and list entries stay apart, scripts and styles
/// are left out, and nothing is ever loaded. Text without any tag keeps its lines. Any text will do, in time
/// proportional to its length; the result is plain text and to be shown as such, even where it looks like
/// markup.
[[nodiscard]] QString plainTextOfHtml(QStringView html);

} // namespace tallyfold
