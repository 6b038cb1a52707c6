#pragma once

#include "files/Descriptor.h"

#include <cstdint>
#include <filesystem>
#include <system_error>

namespace tallyfold::check {

/// A regular file, open for reading. Opening never waits, whatever is at a path: there may be a pipe of the
/// name of a copy.
class RegularFile {
public:
    /// Not open when `error` says why.
    RegularFile(const std::filesystem::path &path, std::error_code &error);

    [[nodiscard]] int descriptor() const;
    /// In bytes, when it was opened.
    [[nodiscard]] std::int64_t size() const;

private:
    files::Descriptor m_descriptor;
    std::int64_t m_size = 0;
};

} // namespace tallyfold::check
