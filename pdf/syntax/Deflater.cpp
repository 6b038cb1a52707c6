#include "pdf/syntax/Deflater.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>
#include <zlib.h>

namespace tallyfold::pdf {

namespace {

/// The tables of one zlib stream.
class Stream {
public:
    Stream(int windowBits, int memoryLevel)
    {
        if (deflateInit2(&m_stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, windowBits, memoryLevel,
                         Z_DEFAULT_STRATEGY) != Z_OK) {
            throw std::bad_alloc(); // The only failure with fixed parameters.
        }
    }
    ~Stream()
    {
        deflateEnd(&m_stream);
    }
    Stream(const Stream &) = delete;
    Stream &operator=(const Stream &) = delete;

    z_stream &get()
    {
        return m_stream;
    }

private:
    z_stream m_stream{};
};

/// Data up to this size uses the small tables, which are cleared sixteen times as fast.
constexpr std::size_t smallData = 4096;

} // namespace

struct Deflater::Tables {
    Stream large{15, 8};
    Stream small{12, 4};
};

std::unique_ptr<Deflater::Tables> &Deflater::spareTables()
{
    thread_local std::unique_ptr<Tables> spare;
    return spare;
}

Deflater::Deflater() : m_tables(std::move(spareTables()))
{
    if (!m_tables) {
        m_tables = std::make_unique<Tables>();
    }
}

Deflater::~Deflater()
{
    spareTables() = std::move(m_tables);
}

std::string_view Deflater::compress(std::string_view data)
{
    z_stream &stream = (data.size() <= smallData ? m_tables->small : m_tables->large).get();
    deflateReset(&stream);
    constexpr std::size_t maxPieceSize = std::numeric_limits<uInt>::max() / 2;
    std::size_t taken = 0;
    std::size_t made = 0;
    int result = Z_OK;
    m_output.resize(std::max(m_output.capacity(), std::size_t{1024}));
    while (result != Z_STREAM_END) {
        const std::size_t piece = std::min(data.size() - taken, maxPieceSize);
        if (m_output.size() - made < 1024) {
            m_output.resize(m_output.size() * 2);
        }
        const std::size_t room = std::min(m_output.size() - made, maxPieceSize);
        // zlib takes its input as non-const but only reads it.
        stream.next_in = const_cast<Bytef *>(reinterpret_cast<const Bytef *>(data.data() + taken));
        stream.avail_in = static_cast<uInt>(piece);
        stream.next_out = reinterpret_cast<Bytef *>(m_output.data() + made);
        stream.avail_out = static_cast<uInt>(room);
        result = deflate(&stream, taken + piece == data.size() ? Z_FINISH : Z_NO_FLUSH);
        taken += piece - stream.avail_in;
        made += room - stream.avail_out;
    }
    return std::string_view(m_output).substr(0, made);
}

std::string withUpPredictor(std::string_view rows, std::size_t rowLength)
{
    constexpr char upPredictor = 2;
    std::string predicted;
    predicted.reserve(rows.size() + rows.size() / rowLength);
    for (std::size_t start = 0; start + rowLength <= rows.size(); start += rowLength) {
        predicted.push_back(upPredictor);
        for (std::size_t index = start; index < start + rowLength; ++index) {
            const char above = start == 0 ? '\0' : rows[index - rowLength];
            predicted.push_back(static_cast<char>(static_cast<unsigned char>(rows[index]) -
                                                  static_cast<unsigned char>(above)));
        }
    }
    return predicted;
}

} // namespace tallyfold::pdf
