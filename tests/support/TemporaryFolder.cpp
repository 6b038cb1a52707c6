#include "tests/support/TemporaryFolder.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <system_error>

namespace tallyfold::tests {

TemporaryFolder::TemporaryFolder()
{
    std::string name = (std::filesystem::temp_directory_path() / "tallyfold-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        std::perror("mkdtemp");
        std::abort();
    }
    m_path = std::filesystem::canonical(name);
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

const std::filesystem::path &TemporaryFolder::path() const
{
    return m_path;
}

std::filesystem::path TemporaryFolder::operator/(const std::filesystem::path &name) const
{
    return m_path / name;
}

} // namespace tallyfold::tests
