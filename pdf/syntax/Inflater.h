#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

namespace tallyfold::pdf {

/// Decompresses Flate data (PDF 1.7, 7.4.4) and reuses its tables.
class Inflater {
public:
    Inflater();
    ~Inflater();
    Inflater(const Inflater &) = delete;
    Inflater &operator=(const Inflater &) = delete;

    /// Decompresses all of `data` into the `room` bytes at `out` and gives their number; -1 when the data is
    /// damaged, truncated, followed by something else, or larger than that.
    [[nodiscard]] std::ptrdiff_t expand(std::string_view data, char *out, std::size_t room);

private:
    struct Tables;
    std::unique_ptr<Tables> m_tables;
};

} // namespace tallyfold::pdf
