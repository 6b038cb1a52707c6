#include "tests/support/Fonts.h"

#include <stdexcept>
#include <string>

namespace tallyfold::tests {

std::filesystem::path fontFile(std::string_view name)
{
    for (const auto &entry : std::filesystem::recursive_directory_iterator("/usr/share/fonts")) {
        if (entry.path().filename() == name) {
            return entry.path();
        }
    }
    throw std::runtime_error(std::string(name) + " is not installed: scripts/install-packages test");
}

} // namespace tallyfold::tests
