#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tallyfold::tests {

/// Puts a PDF file together from objects written by hand, with a correct cross-reference table.
class PdfBuilder {
public:
    /// Adds an object and gives its number, counting from 1.
    int add(std::string syntax);
    /// Adds a stream; `entries` are the entries of its dictionary without `/Length`.
    int addStream(std::string_view entries, std::string_view data);
    /// A number to refer to before `set` gives the object.
    int reserve();
    void set(int number, std::string syntax);

    /// Adds a page of the tree that `file` writes; `entries` without `/Type` and `/Parent`.
    int addPage(std::string_view entries);
    /// Entries that all pages inherit.
    void inherit(std::string_view entries);
    /// Entries of the catalog besides `/Type` and `/Pages`.
    void addToCatalog(std::string_view entries);

    /// The whole file.
    [[nodiscard]] std::string file();

private:
    std::vector<std::string> m_objects;
    std::vector<int> m_pages;
    std::string m_inherited;
    std::string m_catalog;
    int m_tree = 0;
};

/// "12 0 R".
[[nodiscard]] std::string reference(int number);

/// Writes `bytes` to `path`; ends the test program when that fails.
void writeFile(const std::filesystem::path &path, std::string_view bytes);
/// The bytes of the file at `path`.
[[nodiscard]] std::string readFile(const std::filesystem::path &path);

} // namespace tallyfold::tests
