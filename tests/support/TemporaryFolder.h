#pragma once

#include <filesystem>

namespace tallyfold::tests {

/// An empty folder that is gone, with all that is in it, when this goes out of scope.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;

    [[nodiscard]] const std::filesystem::path &path() const;
    /// `name` inside the folder.
    [[nodiscard]] std::filesystem::path operator/(const std::filesystem::path &name) const;

private:
    std::filesystem::path m_path;
};

} // namespace tallyfold::tests
