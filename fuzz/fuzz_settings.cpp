// Any bytes as a settings document: what is read can be written and reads back the same.

#include "app/AppSettings.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

using namespace tallyfold;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const std::optional<AppSettings> settings = decodeAppSettings(bytes);
    if (!settings) {
        return 0;
    }
    const std::optional<QByteArray> document = encode(*settings);
    if (!document || decodeAppSettings(*document) != settings) {
        std::abort();
    }
    return 0;
}
