#pragma once

#include <QString>

#include <cstdint>

namespace tallyfold {

/// What is counted.
enum class Counted { files, pages, stampedCopies };

/// The count with its word, such as "3 files", by the translation's plural forms.
[[nodiscard]] QString countText(std::int64_t count, Counted counted);

} // namespace tallyfold
