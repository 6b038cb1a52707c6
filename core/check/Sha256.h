#pragma once

#include <QByteArrayView>
#include <QString>

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <stop_token>
#include <system_error>
#include <variant>

namespace tallyfold::check {

/// A SHA-256 digest (FIPS 180-4).
using Sha256 = std::array<std::uint8_t, 32>;

/// A file's digest and its size.
struct HashedFile {
    Sha256 digest{};
    std::int64_t size = 0; ///< Bytes.
    bool operator==(const HashedFile &) const = default;
};

/// Reads the regular file at `path` to its end. An error where it cannot be read, and `operation_canceled`
/// once a stop is requested. Never waits, whatever is at `path`.
[[nodiscard]] std::variant<HashedFile, std::error_code> sha256Of(const std::filesystem::path &path,
                                                                 const std::stop_token &givenUp = {});

/// 64 lower-case hexadecimal digits.
[[nodiscard]] QByteArray hexadecimal(const Sha256 &digest);

} // namespace tallyfold::check
