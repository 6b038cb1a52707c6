#include "tests/support/PdfBuilder.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <utility>

namespace tallyfold::tests {

int PdfBuilder::add(std::string syntax)
{
    m_objects.push_back(std::move(syntax));
    return static_cast<int>(m_objects.size());
}

int PdfBuilder::addStream(std::string_view entries, std::string_view data)
{
    std::string syntax = "<<";
    syntax.append(entries).append("/Length ").append(std::to_string(data.size())).append(">>stream\n");
    syntax.append(data).append("\nendstream");
    return add(std::move(syntax));
}

int PdfBuilder::reserve()
{
    return add("null");
}

void PdfBuilder::set(int number, std::string syntax)
{
    m_objects.at(static_cast<std::size_t>(number) - 1) = std::move(syntax);
}

int PdfBuilder::addPage(std::string_view entries)
{
    if (m_tree == 0) {
        m_tree = reserve();
    }
    std::string syntax = "<</Type/Page/Parent " + reference(m_tree);
    syntax.append(entries).append(">>");
    m_pages.push_back(add(std::move(syntax)));
    return m_pages.back();
}

void PdfBuilder::inherit(std::string_view entries)
{
    m_inherited.append(entries);
}

void PdfBuilder::addToCatalog(std::string_view entries)
{
    m_catalog.append(entries);
}

std::string PdfBuilder::file()
{
    if (m_tree == 0) {
        m_tree = reserve();
    }
    std::string kids;
    for (const int page : m_pages) {
        kids.append(reference(page)).push_back(' ');
    }
    set(m_tree,
        "<</Type/Pages/Kids[" + kids + "]/Count " + std::to_string(m_pages.size()) + m_inherited + ">>");
    const int catalog = add("<</Type/Catalog/Pages " + reference(m_tree) + m_catalog + ">>");

    std::string file = "%PDF-1.7\n";
    std::vector<std::size_t> offsets;
    for (std::size_t index = 0; index < m_objects.size(); ++index) {
        offsets.push_back(file.size());
        file.append(std::to_string(index + 1))
            .append(" 0 obj\n")
            .append(m_objects[index])
            .append("\nendobj\n");
    }
    const std::size_t table = file.size();
    file.append("xref\n0 ").append(std::to_string(m_objects.size() + 1)).append("\n0000000000 65535 f \n");
    for (const std::size_t offset : offsets) {
        char line[24];
        std::snprintf(line, sizeof line, "%010zu 00000 n \n", offset);
        file.append(line);
    }
    file.append("trailer\n<</Size ").append(std::to_string(m_objects.size() + 1)).append("/Root ");
    file.append(reference(catalog))
        .append(">>\nstartxref\n")
        .append(std::to_string(table))
        .append("\n%%EOF\n");
    return file;
}

std::string reference(int number)
{
    return std::to_string(number) + " 0 R";
}

void writeFile(const std::filesystem::path &path, std::string_view bytes)
{
    std::ofstream out(path, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (!out) {
        std::fprintf(stderr, "cannot write %s\n", path.c_str());
        std::abort();
    }
}

std::string readFile(const std::filesystem::path &path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

} // namespace tallyfold::tests
