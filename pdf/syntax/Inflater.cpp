#include "pdf/syntax/Inflater.h"

#include <limits>
#include <new>
#include <zlib.h>

namespace tallyfold::pdf {

struct Inflater::Tables {
    Tables()
    {
        if (inflateInit(&stream) != Z_OK) {
            throw std::bad_alloc(); // The only failure.
        }
    }
    ~Tables()
    {
        inflateEnd(&stream);
    }
    Tables(const Tables &) = delete;
    Tables &operator=(const Tables &) = delete;

    z_stream stream{};
};

Inflater::Inflater() : m_tables(std::make_unique<Tables>()) {}

Inflater::~Inflater() = default;

std::ptrdiff_t Inflater::expand(std::string_view data, char *out, std::size_t room)
{
    constexpr std::size_t most = std::numeric_limits<uInt>::max();
    if (data.size() > most || room > most) {
        return -1;
    }
    z_stream &stream = m_tables->stream;
    inflateReset(&stream);
    // zlib takes its input as non-const but only reads it.
    stream.next_in = const_cast<Bytef *>(reinterpret_cast<const Bytef *>(data.data()));
    stream.avail_in = static_cast<uInt>(data.size());
    stream.next_out = reinterpret_cast<Bytef *>(out);
    stream.avail_out = static_cast<uInt>(room);
    const bool isWhole = inflate(&stream, Z_FINISH) == Z_STREAM_END && stream.avail_in == 0;
    return isWhole ? static_cast<std::ptrdiff_t>(room - stream.avail_out) : -1;
}

} // namespace tallyfold::pdf
