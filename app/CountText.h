#pragma once

#include <QString>

#include <cstdint>

namespace tallyfold {

/// The kind of thing that is counted.
enum class Counted { files, pages, stampedCopies, copies, findings };

/// The count with its noun, for example "3 files", in the plural form of the translation.
[[nodiscard]] QString countText(std::int64_t count, Counted counted);

} // namespace tallyfold
