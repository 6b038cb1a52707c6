#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

namespace tallyfold::pdf {

/// Expands what the Flate filter has compressed (PDF 1.7, 7.4.4), again and again with the same tables.
class Inflater {
public:
    Inflater();
    ~Inflater();
    Inflater(const Inflater &) = delete;
    Inflater &operator=(const Inflater &) = delete;

    /// Expands all of `data` into the `room` bytes at `out` and gives their number; -1 when it is damaged,
    /// cut, followed by something else, or larger than that.
    [[nodiscard]] std::ptrdiff_t expand(std::string_view data, char *out, std::size_t room);

private:
    struct Tables;
    std::unique_ptr<Tables> m_tables;
};

} // namespace tallyfold::pdf
