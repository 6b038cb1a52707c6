#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tallyfold::pdf {

/// Appends an array (PDF 1.7, 7.3.6) to a string, which must outlive this: the constructor writes the opening
/// bracket, the destructor the closing one. Items are separated by a space where their syntax needs one.
class ArrayWriter {
public:
    explicit ArrayWriter(std::string &out);
    ~ArrayWriter();
    ArrayWriter(const ArrayWriter &) = delete;
    ArrayWriter &operator=(const ArrayWriter &) = delete;

    /// "4 0 R".
    void reference(int number);
    /// "12".
    void integer(std::int64_t value);
    /// "0.5", as `appendNumber` writes it.
    void number(double value, int decimals = 4);

    /// Appends a space unless this is the first item, which is appended to `out` by other means.
    void item();
    /// The string that items are appended to.
    [[nodiscard]] std::string &out();

private:
    void separate();

    std::string *m_out;
};

} // namespace tallyfold::pdf
