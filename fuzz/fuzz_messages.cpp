// Any bytes as a message of the reader process: a text, numbers, an area, whatever is there or not.

#include "pdf/syntax/Geometry.h"
#include "pdf/viewing/ReaderMessages.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

using namespace tallyfold::pdf;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    ReaderMessages::Reader message(std::string_view(reinterpret_cast<const char *>(data), size));
    qsizetype length = 0;
    while (message.isSound()) {
        (void)message.take<ReaderMessages::Request>();
        (void)message.takeFlag();
        (void)message.take<int>();
        (void)message.take<Rect>();
        length += message.takeText().size();
    }
    if (length > static_cast<qsizetype>(size)) { // A text is never longer than the bytes it was sent in.
        std::abort();
    }
    return 0;
}
