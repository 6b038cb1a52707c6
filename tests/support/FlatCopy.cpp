#include "tests/support/FlatCopy.h"

#include "files/MemorySink.h"
#include "pdf/copy/CopyWriter.h"
#include "pdf/source/Document.h"
#include "tests/support/PdfBuilder.h"

#include <cstdlib>
#include <iostream>
#include <utility>

namespace tallyfold::tests {

namespace {

using Step = pdf::CopyWriter::Step;

bool writePages(pdf::CopyWriter &writer)
{
    for (Step step = writer.nextPage(); step != Step::noMorePages; step = writer.nextPage()) {
        if (step != Step::done || writer.endPage({}) != Step::done) {
            return false;
        }
    }
    return writer.finish() == Step::done;
}

} // namespace

std::filesystem::path flatCopy(const std::filesystem::path &folder, std::string_view source)
{
    writeFile(folder / "original.pdf", source);
    pdf::Document::Opened opened = pdf::Document::open(folder / "original.pdf");
    auto *document = std::get_if<std::unique_ptr<pdf::Document>>(&opened);
    files::MemorySink sink;
    bool isWritten = false;
    if (document != nullptr) {
        pdf::CopyWriter writer(**document, sink);
        isWritten = writePages(writer);
    }
    if (!isWritten) {
        std::cerr << "No copy was written.\n";
        std::abort();
    }
    const std::vector<char> bytes = std::move(sink).bytes();
    writeFile(folder / "copy.pdf", std::string_view(bytes.data(), bytes.size()));
    return folder / "copy.pdf";
}

} // namespace tallyfold::tests
