#include "pdf/copy/CopyWriter.h"

#include "files/FileSink.h"
#include "pdf/source/Document.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sample.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Tool.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <variant>

namespace tallyfold {

using namespace Qt::StringLiterals;
using tests::TemporaryFolder;

namespace {

using Step = pdf::CopyWriter::Step;

std::unique_ptr<pdf::Document> opened(const std::filesystem::path &path)
{
    return std::get<std::unique_ptr<pdf::Document>>(pdf::Document::open(path));
}

std::size_t count(const std::string &text, const std::string &part)
{
    std::size_t found = 0;
    for (std::size_t place = text.find(part); place != std::string::npos;
         place = text.find(part, place + 1)) {
        ++found;
    }
    return found;
}

} // namespace

TEST(CopyWriter, WritesACopyWithTextOnEveryPage) // The example of the rooms' description.
{
    const TemporaryFolder folder;
    tests::writeSample(folder / "letter.pdf", 3);
    pdf::Document::Opened opened = pdf::Document::open(folder / "letter.pdf");
    const auto &source = std::get<std::unique_ptr<pdf::Document>>(opened);
    std::error_code error;
    const std::unique_ptr<files::FileSink> sink = files::FileSink::create(folder / "copy.pdf", error);
    pdf::CopyWriter copy(*source, *sink);
    while (copy.nextPage() == pdf::CopyWriter::Step::done) {
        const pdf::ShapedLine line = copy.fonts().shape(u"COPY"_s, u"Helvetica"_s, 12);
        std::string overlay;
        copy.fonts().show(line, copy.pageSize().width - 18 - line.width, 18, overlay);
        if (copy.endPage(overlay) != pdf::CopyWriter::Step::done) {
            break;
        }
    }
    const bool isWritten = copy.finish() == pdf::CopyWriter::Step::done;

    EXPECT_TRUE(isWritten);
    EXPECT_EQ(tests::soundPages(folder / "copy.pdf"), 3);
    for (int page = 1; page <= 3; ++page) {
        EXPECT_NE(tests::textOfPage(folder / "copy.pdf", page).find("COPY"), std::string::npos) << page;
    }
}

TEST(CopyWriter, DrawsTheFormOfTheOverlaysWhereverOneNamesIt)
{
    const TemporaryFolder folder;
    tests::writeSample(folder / "letter.pdf", 3);
    const auto source = opened(folder / "letter.pdf");
    std::error_code error;
    const std::unique_ptr<files::FileSink> sink = files::FileSink::create(folder / "copy.pdf", error);
    pdf::CopyWriter copy(*source, *sink);
    std::string word;
    copy.fonts().show(copy.fonts().shape(u"SHARED"_s, u"Helvetica"_s, 12), 0, 0, word);
    const std::string form(copy.overlayForm({0, -20, 200, 20}, word));
    EXPECT_EQ(copy.overlayForm({0, 0, 1, 1}, "another"), form) << "one form serves the whole copy";
    for (const char *placement : {"q 1 0 0 1 20 60 cm ", "q 1 0 0 1 20 90 cm ", ""}) {
        ASSERT_EQ(copy.nextPage(), Step::done);
        const std::string place = placement;
        ASSERT_EQ(copy.endPage(place.empty() ? place : place + form + " Do Q\n"), Step::done);
    }
    ASSERT_EQ(copy.finish(), Step::done);

    EXPECT_EQ(tests::soundPages(folder / "copy.pdf"), 3);
    for (int page = 1; page <= 3; ++page) {
        EXPECT_EQ(count(tests::textOfPage(folder / "copy.pdf", page), "SHARED"), page < 3 ? 1U : 0U) << page;
    }
}

TEST(CopyWriter, SaysThatThereIsNoFurtherPageAsOftenAsItIsAsked)
{
    const TemporaryFolder folder;
    tests::writeSample(folder / "letter.pdf", 1);
    const auto source = opened(folder / "letter.pdf");
    std::error_code error;
    const std::unique_ptr<files::FileSink> sink = files::FileSink::create(folder / "copy.pdf", error);
    pdf::CopyWriter copy(*source, *sink);
    ASSERT_EQ(copy.nextPage(), Step::done);
    ASSERT_EQ(copy.endPage({}), Step::done);
    EXPECT_EQ(copy.nextPage(), Step::noMorePages);
    EXPECT_EQ(copy.nextPage(), Step::noMorePages);
    EXPECT_EQ(copy.finish(), Step::done);
    EXPECT_EQ(tests::soundPages(folder / "copy.pdf"), 1);
}

} // namespace tallyfold
