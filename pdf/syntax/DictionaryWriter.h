#pragma once

#include "pdf/syntax/Geometry.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tallyfold::pdf {

class DictionaryWriter;

/// Appends entries of a dictionary (PDF 1.7, 7.3.7) to a string, which must outlive it: what stands between
/// the brackets, and all that `OutputObjects` takes of a stream's dictionary. Keys begin with their slash and
/// are written as they stand, but for `key`.
class EntryWriter {
public:
    explicit EntryWriter(std::string &out);

    /// "/Type/Page": `value` begins with its slash and is written as it stands.
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
    /// An entry whose value is spelled already, with what keeps it apart from the key.
    void syntax(std::string_view key, std::string_view value);
    /// A dictionary as the value, which is complete when what this gives goes.
    [[nodiscard]] DictionaryWriter dictionary(std::string_view key);

    /// Appends a key of any characters, as `appendName` does, and a space, for a value of any kind that is
    /// appended to `out` by other means.
    void key(std::string_view name);
    /// What the entries are appended to.
    [[nodiscard]] std::string &out();

private:
    std::string *m_out;
};

/// Appends a whole dictionary to a string: its brackets stand around what is written while it lives.
class DictionaryWriter : public EntryWriter {
public:
    explicit DictionaryWriter(std::string &out);
    ~DictionaryWriter();
    DictionaryWriter(const DictionaryWriter &) = delete;
    DictionaryWriter &operator=(const DictionaryWriter &) = delete;
};

} // namespace tallyfold::pdf
