// Any bytes as what another program drops on the window: the files it names can be named to others again.

#include "app/UriList.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

using namespace tallyfold;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView list(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const std::vector<std::filesystem::path> paths = localPathsIn(list);
    for (const std::filesystem::path &path : paths) {
        if (!path.is_absolute() || path.native().find('\0') != std::string::npos) {
            std::abort();
        }
    }
    if (localPathsIn(uriListOf(paths)) != paths) {
        std::abort();
    }
    return 0;
}
