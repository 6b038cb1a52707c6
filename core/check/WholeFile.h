#pragma once

#include <QByteArray>

#include <cstdint>
#include <filesystem>
#include <system_error>
#include <variant>

namespace tallyfold::check {

/// The bytes of the regular file at `path`, at most `maxSize` of them, or why it cannot be read: a larger one
/// is `file_too_large`. Never waits, whatever is at `path`.
[[nodiscard]] std::variant<QByteArray, std::error_code> wholeFile(const std::filesystem::path &path,
                                                                  std::int64_t maxSize);

} // namespace tallyfold::check
