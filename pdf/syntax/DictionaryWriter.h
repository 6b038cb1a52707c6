#pragma once

#include "pdf/syntax/ArrayWriter.h"
#include "pdf/syntax/Geometry.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tallyfold::pdf {

class DictionaryWriter;

/// Appends entries of a dictionary (PDF 1.7, 7.3.7) to a string, which must outlive this: the text between
/// the brackets, which is what `OutputObjects` takes for a stream. Keys begin with their slash and are
/// written unchanged, except by `key`.
class EntryWriter {
public:
    explicit EntryWriter(std::string &out);

    /// "/Type/Page": `value` begins with its slash and is written unchanged.
    void name(std::string_view key, std::string_view value);
    /// "/Parent 4 0 R".
    void reference(std::string_view key, int number);
    /// "/Count 12".
    void integer(std::string_view key, std::int64_t value);
    /// "/ca 0.5", as `appendNumber` writes it.
    void number(std::string_view key, double value, int decimals = 4);
    /// "/BBox[0 0 612 792]".
    void rect(std::string_view key, const Rect &value);
    /// "/Matrix[1 0 0 1 0 0]".
    void matrix(std::string_view key, const Matrix &value);
    /// "/ActualText<FEFF0041>", as `appendTextString` writes it.
    void text(std::string_view key, std::u16string_view value);
    /// An entry whose value is PDF syntax already, with its separator from the key.
    void syntax(std::string_view key, std::string_view value);
    /// A dictionary as the value; it is closed when the returned writer is destroyed.
    [[nodiscard]] DictionaryWriter dictionary(std::string_view key);
    /// An array as the value; it is closed when the returned writer is destroyed.
    [[nodiscard]] ArrayWriter array(std::string_view key);

    /// Appends a key of any characters, as `appendName`, and a space; the value is appended to `out` by
    /// other means.
    void key(std::string_view name);
    /// The string that entries are appended to.
    [[nodiscard]] std::string &out();

private:
    std::string *m_out;
};

/// Appends a dictionary to a string: the constructor writes the opening brackets, the destructor the closing
/// ones.
class DictionaryWriter : public EntryWriter {
public:
    explicit DictionaryWriter(std::string &out);
    ~DictionaryWriter();
    DictionaryWriter(const DictionaryWriter &) = delete;
    DictionaryWriter &operator=(const DictionaryWriter &) = delete;
};

} // namespace tallyfold::pdf
