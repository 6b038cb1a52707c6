#include "pdf/copy/CopyWriter.h"

#include "files/FileSink.h"
#include "pdf/source/Document.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sample.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Tool.h"

#include <gtest/gtest.h>
#include <qpdf/QPDF.hh>

#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

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
        pdf::ContentStream content(overlay);
        copy.fonts().show(line, copy.pageSize().width - 18 - line.width, 18, content);
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
    pdf::ContentStream content(word);
    copy.fonts().show(copy.fonts().shape(u"SHARED"_s, u"Helvetica"_s, 12), 0, 0, content);
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

TEST(CopyWriter, KeepsTheUnitOfAPageAndDrawsTheOverlayInPoints)
{
    const TemporaryFolder folder;
    tests::PdfBuilder builder;
    const int mark = builder.addStream("/Subtype/Form/BBox[0 0 9 9]", "0 0 9 9 re f");
    const std::string stamp =
        "/Annots[<</Subtype/Stamp/Rect[20 30 29 39]/AP<</N " + tests::reference(mark) + ">>>>]";
    builder.addPage("/MediaBox[0 0 200 100]/UserUnit 2" + stamp);
    builder.addPage("/MediaBox[0 0 200 100]/UserUnit 0.123456" + stamp);
    builder.addPage("/MediaBox[0 0 200 100]" + stamp);
    tests::writeFile(folder / "a.pdf", builder.file());
    const auto source = opened(folder / "a.pdf");
    const std::unique_ptr<files::FileSink> sink = files::FileSink::create(folder / "copy.pdf");
    pdf::CopyWriter copy(*source, *sink);
    (void)copy.overlayForm({0, 0, 9, 9}, {});
    for (const double unit : {2.0, 0.123456, 1.0}) {
        ASSERT_EQ(copy.nextPage(), Step::done);
        EXPECT_EQ(copy.pageSize(), (pdf::Size{200 * unit, 100 * unit}));
        ASSERT_EQ(copy.endPage("1 0 0 rg 0 0 9 9 re f\n"), Step::done);
    }
    ASSERT_EQ(copy.finish(), Step::done);

    QPDF written;
    written.processFile((folder / "copy.pdf").c_str());
    const std::vector<QPDFObjectHandle> pages = written.getAllPages();
    ASSERT_EQ(pages.size(), 3U);
    const auto contentOf = [](QPDFObjectHandle page) {
        const auto data = page.getKey("/Contents").getStreamData();
        return std::string(reinterpret_cast<const char *>(data->getBuffer()), data->getSize());
    };
    const std::string drawn = "/P Do\nq 1 0 0 1 20 30 cm /A0 Do Q\n";
    EXPECT_EQ(contentOf(pages[0]), drawn + "q 0.5 0 0 0.5 0 0 cm 1 0 0 rg 0 0 9 9 re f\nQ\n");
    EXPECT_EQ(contentOf(pages[2]), drawn + "q 1 0 0 rg 0 0 9 9 re f\nQ\n");
    const auto entry = [](QPDFObjectHandle page, const char *key) { return page.getKey(key).unparse(); };
    EXPECT_EQ(entry(pages[0], "/UserUnit"), "2");
    EXPECT_EQ(entry(pages[1], "/UserUnit"), "0.123456");
    EXPECT_EQ(entry(pages[2], "/UserUnit"), "null");
    for (QPDFObjectHandle page : pages) {
        EXPECT_EQ(entry(page, "/Type"), "/Page");
        EXPECT_EQ(entry(page, "/MediaBox"), "[ 0 0 200 100 ]");
        for (const char *name : {"/P", "/F"}) {
            QPDFObjectHandle form = page.getKey("/Resources").getKey("/XObject").getKey(name).getDict();
            EXPECT_EQ(entry(form, "/Type"), "/XObject") << name;
            EXPECT_EQ(entry(form, "/Subtype"), "/Form") << name;
        }
    }
}

TEST(CopyWriter, CopiesDataThatIsTooLargeToBeHeld)
{
    const TemporaryFolder folder;
    std::string data(5 * 1024 * 1024, ' ');
    std::mt19937 noise(7);
    for (char &byte : data) {
        byte = static_cast<char>(noise());
    }
    tests::PdfBuilder builder;
    const int picture = builder.addStream("/Subtype/Image/Width 2048/Height 2560/BitsPerComponent 8", data);
    builder.addPage("/MediaBox[0 0 9 9]/Resources<</XObject<</I " + tests::reference(picture) + ">>>>");
    tests::writeFile(folder / "plain.pdf", builder.file());
    // What is encrypted has to pass through the parser, some at a time.
    tests::encrypt(folder / "plain.pdf", folder / "a.pdf", "'' owner 256");
    const auto source = opened(folder / "a.pdf");
    const std::unique_ptr<files::FileSink> sink = files::FileSink::create(folder / "copy.pdf");
    pdf::CopyWriter copy(*source, *sink);
    ASSERT_EQ(copy.nextPage(), Step::done);
    ASSERT_EQ(copy.endPage({}), Step::done);
    ASSERT_EQ(copy.finish(), Step::done);
    QPDF written;
    written.processFile((folder / "copy.pdf").c_str());
    QPDFObjectHandle page = written.getAllPages().at(0);
    QPDFObjectHandle form = page.getKey("/Resources").getKey("/XObject").getKey("/P");
    QPDFObjectHandle copied = form.getDict().getKey("/Resources").getKey("/XObject").getKey("/I");
    const auto bytes = copied.getStreamData();
    EXPECT_TRUE(std::string_view(reinterpret_cast<const char *>(bytes->getBuffer()), bytes->getSize()) ==
                data);
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
