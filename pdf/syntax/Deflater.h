#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace tallyfold::pdf {

/// Compresses for the Flate filter (PDF 1.7, 7.4.4), again and again with the same tables, which threads keep
/// from one file to the next: setting them up costs more than compressing a small file does.
class Deflater {
public:
    Deflater();
    ~Deflater();
    Deflater(const Deflater &) = delete;
    Deflater &operator=(const Deflater &) = delete;

    /// `data` compressed; valid until the next call. The same data gives the same bytes.
    [[nodiscard]] std::string_view compress(std::string_view data);

private:
    struct Tables;
    [[nodiscard]] static std::unique_ptr<Tables> &spareTables();

    std::unique_ptr<Tables> m_tables;
    std::string m_output;
};

/// `rows` of `rowLength` bytes each, every row replaced by its difference from the one above
/// and led by the mark of the PNG "up" predictor (PDF 1.7, 7.4.4.4).
[[nodiscard]] std::string withUpPredictor(std::string_view rows, std::size_t rowLength);

} // namespace tallyfold::pdf
