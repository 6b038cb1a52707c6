#pragma once

#include <string_view>

namespace tallyfold::pdf {

/// Receives the indirect objects of a PDF file under construction. The number of an object can be reserved,
/// and referred to, before the object is written.
class OutputObjects {
public:
    virtual ~OutputObjects() = default;

    /// A new object number; the generation is 0.
    [[nodiscard]] virtual int reserve() = 0;

    /// Writes the object `number`, any but a stream, in PDF syntax.
    virtual void writeObject(int number, std::string_view syntax) = 0;

    /// Writes a stream and compresses it with Flate. `entries` are those of its dictionary, without the
    /// brackets, `/Length`, `/Filter` and `/DecodeParms`.
    virtual void writeStream(int number, std::string_view entries, std::string_view data) = 0;

    /// Writes a stream whose bytes are encoded already. `entries` as for `writeStream`, with `/Filter` and
    /// `/DecodeParms`.
    virtual void writeEncodedStream(int number, std::string_view entries, std::string_view bytes) = 0;
};

} // namespace tallyfold::pdf
