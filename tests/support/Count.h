#pragma once

#include <cstdint>

namespace tallyfold::tests {

/// Adds up what the tests of a program did. When the program ends, the sum becomes a line of the file that
/// the environment variable TALLYFOLD_COUNTS names; `./test` sums these lines up. Without the variable, or
/// with a sum of nothing, there is no line.
class Count {
public:
    /// `what` is counted, in a few words; a literal.
    explicit Count(const char *what) : m_what(what) {}
    ~Count();
    Count(const Count &) = delete;
    Count &operator=(const Count &) = delete;

    void add(std::int64_t count = 1)
    {
        m_sum += count;
    }

private:
    const char *m_what;
    std::int64_t m_sum = 0;
};

} // namespace tallyfold::tests
