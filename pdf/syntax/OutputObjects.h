#pragma once

#include <string_view>

namespace tallyfold::pdf {

/// Where the indirect objects of a PDF file under construction go.
/// An object's number can be reserved, and referred to, long before the object is written.
class OutputObjects {
public:
    virtual ~OutputObjects() = default;

    /// A number no other object of this file has; its generation is 0.
    [[nodiscard]] virtual int reserve() = 0;

    /// Writes the object `number`, whose PDF syntax is `syntax` (anything but a stream).
    virtual void writeObject(int number, std::string_view syntax) = 0;

    /// Writes a stream, compressed here with Flate. `entries` are its dictionary's entries without
    /// the brackets, and without `/Length`, `/Filter` and `/DecodeParms`.
    virtual void writeStream(int number, std::string_view entries, std::string_view data) = 0;

    /// Writes a stream whose bytes are already encoded. `entries` as for `writeStream`, but with the
    /// stream's `/Filter` and `/DecodeParms`.
    virtual void writeEncodedStream(int number, std::string_view entries, std::string_view bytes) = 0;
};

} // namespace tallyfold::pdf
