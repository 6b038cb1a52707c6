#include "tests/support/Sample.h"

#include "tests/support/Tool.h"

#include <cstdio>
#include <cstdlib>

namespace tallyfold::tests {

void writeSample(const std::filesystem::path &path, int pages, const std::string &text)
{
    PdfBuilder builder;
    const int font = builder.add("<</Type/Font/Subtype/Type1/BaseFont/Helvetica/Encoding/WinAnsiEncoding>>");
    builder.inherit("/MediaBox[0 0 612 792]/Resources<</Font<</F1 " + reference(font) + ">>>>");
    for (int page = 1; page <= pages; ++page) {
        const int content =
            builder.addStream("", "BT /F1 12 Tf 72 400 Td (" + text + " " + std::to_string(page) + ") Tj ET");
        builder.addPage("/Contents " + reference(content));
    }
    writeFile(path, builder.file());
}

std::vector<std::filesystem::path> writeSamples(const std::filesystem::path &folder,
                                                const std::vector<std::string> &names, int pages)
{
    std::vector<std::filesystem::path> paths;
    for (const std::string &name : names) {
        paths.push_back(folder / name);
        std::filesystem::create_directories(paths.back().parent_path());
        writeSample(paths.back(), pages);
    }
    return paths;
}

void encrypt(const std::filesystem::path &from, const std::filesystem::path &to, const std::string &options)
{
    const ToolResult result = runTool(
        {"/bin/sh", "-c", "qpdf --encrypt " + options + " -- '" + from.native() + "' '" + to.native() + "'"});
    if (result.exitCode != 0) {
        std::fprintf(stderr, "qpdf: %s\n", result.errors.c_str());
        std::abort();
    }
}

std::string textOfPage(const std::filesystem::path &path, int page)
{
    const std::string number = std::to_string(page);
    return runTool({"pdftotext", "-f", number, "-l", number, path, "-"}).output;
}

std::string contentOfPage(const std::filesystem::path &path, int page)
{
    const std::string pages = runTool({"qpdf", "--show-pages", path}).output;
    const std::size_t at = pages.find("page " + std::to_string(page) + ":");
    const std::size_t content = pages.find("content:", at);
    const std::size_t start = pages.find_first_of("0123456789", content);
    if (at == std::string::npos || start == std::string::npos) {
        return {};
    }
    const std::string number = pages.substr(start, pages.find(' ', start) - start);
    return runTool({"qpdf", "--show-object=" + number, "--filtered-stream-data", path}).output;
}

int soundPages(const std::filesystem::path &path)
{
    const ToolResult check = runTool({"qpdf", "--check", path});
    if (check.exitCode != 0) {
        std::fprintf(stderr, "%s%s", check.output.c_str(), check.errors.c_str());
        return -1;
    }
    return std::atoi(runTool({"qpdf", "--show-npages", path}).output.c_str());
}

} // namespace tallyfold::tests
