#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace tallyfold::pdf {

/// Compresses with Flate (PDF 1.7, 7.4.4) and reuses the tables of zlib, which threads keep from file to
/// file: setting them up takes longer than compressing a small file.
class Deflater {
public:
    Deflater();
    ~Deflater();
    Deflater(const Deflater &) = delete;
    Deflater &operator=(const Deflater &) = delete;

    /// `data` compressed; valid until the next call. Equal data gives equal bytes.
    [[nodiscard]] std::string_view compress(std::string_view data);

private:
    struct Tables;
    [[nodiscard]] static std::unique_ptr<Tables> &spareTables();

    std::unique_ptr<Tables> m_tables;
    std::string m_output;
};

/// `rows` of `rowLength` bytes with the PNG "up" predictor (PDF 1.7, 7.4.4.4): each row is the difference
/// from the one above, after a byte with the number of the predictor.
[[nodiscard]] std::string withUpPredictor(std::string_view rows, std::size_t rowLength);

} // namespace tallyfold::pdf
