#pragma once

#include <array>
#include <string_view>

/// The syntax of the files written here where PDF leaves a choice, shared by the writer and by
/// `CopyVerifier`, which accepts nothing else.
namespace tallyfold::pdf::spelling {

inline constexpr std::string_view fileStart = "%PDF-1.7\n";
/// Before and after the offset of the cross-reference stream.
inline constexpr std::string_view crossReferenceStart = "startxref\n";
inline constexpr std::string_view fileEnd = "\n%%EOF\n";

inline constexpr std::string_view dictionaryStart = "<<";
inline constexpr std::string_view dictionaryEnd = ">>";

inline constexpr std::string_view objectStart = " 0 obj\n"; ///< After the object's number.
inline constexpr std::string_view objectEnd = "\nendobj\n";
inline constexpr std::string_view referenceEnd = " 0 R"; ///< After the object's number.

inline constexpr std::string_view dataStart =
    ">>stream\n"; ///< After the last entry of a stream's dictionary.
inline constexpr std::string_view dataEnd = "\nendstream\nendobj\n";
inline constexpr std::string_view compressed = "/Filter/FlateDecode";

/// Widths in bytes of the three fields of a cross-reference stream (PDF 1.7, 7.5.8.2), and the value of its
/// `/W`.
inline constexpr std::array<unsigned, 3> columns{1, 5, 2};
inline constexpr std::string_view columnWidths = "[1 5 2]";
inline constexpr unsigned rowLength = columns[0] + columns[1] + columns[2];

} // namespace tallyfold::pdf::spelling
