#pragma once

#include "tests/support/PdfBuilder.h"

#include <filesystem>
#include <string>
#include <vector>

namespace tallyfold::tests {

/// Writes a document of `pages` letter pages, each with a line of text, to `path`.
void writeSample(const std::filesystem::path &path, int pages,
                 const std::string &text = "Page of the original");

/// Writes a document of `pages` pages for each of `names`, which may name folders too, below `folder`; their
/// paths.
[[nodiscard]] std::vector<std::filesystem::path>
writeSamples(const std::filesystem::path &folder, const std::vector<std::string> &names, int pages);

/// Encrypts the PDF at `from` into `to` with the passwords and options of the tool `qpdf --encrypt`.
void encrypt(const std::filesystem::path &from, const std::filesystem::path &to, const std::string &options);

/// What pdftotext finds on one page of the PDF at `path`, lines in reading order.
[[nodiscard]] std::string textOfPage(const std::filesystem::path &path, int page);

/// The decoded content stream of one page of the PDF at `path`.
[[nodiscard]] std::string contentOfPage(const std::filesystem::path &path, int page);

/// Number of pages of the PDF at `path`, and that it is sound; -1 when it is not.
[[nodiscard]] int soundPages(const std::filesystem::path &path);

} // namespace tallyfold::tests
