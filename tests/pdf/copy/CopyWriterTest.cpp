#include "pdf/copy/CopyWriter.h"

#include "files/FileSink.h"
#include "pdf/source/Document.h"
#include "tests/support/Fonts.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sample.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Tool.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace tallyfold {

using namespace Qt::StringLiterals;
using tests::TemporaryFolder;

namespace {

using Step = pdf::CopyWriter::Step;

/// A copy under construction.
class NewCopy {
public:
    explicit NewCopy(std::string_view source, pdf::FontCatalog &catalog = pdf::FontCatalog::installed())
        : m_source(opened(m_folder / "source.pdf", source)),
          m_sink(created(path())),
          m_writer(*m_source, *m_sink, catalog)
    {
    }

    pdf::CopyWriter *operator->()
    {
        return &m_writer;
    }

    /// Goes to the next page and writes it.
    [[nodiscard]] Step addPage(std::string_view overlay)
    {
        const Step reached = m_writer.nextPage();
        return reached == Step::done ? m_writer.endPage(overlay) : reached;
    }

    [[nodiscard]] std::filesystem::path path() const
    {
        return m_folder / "copy.pdf";
    }

    /// The finished copy with all its objects readable.
    [[nodiscard]] std::string syntax() const
    {
        return tests::runTool({"qpdf", "--qdf", "--object-streams=disable", path(), "-"}).output;
    }

private:
    static std::unique_ptr<pdf::Document> opened(const std::filesystem::path &path, std::string_view bytes)
    {
        tests::writeFile(path, bytes);
        return std::get<std::unique_ptr<pdf::Document>>(pdf::Document::open(path));
    }

    static std::unique_ptr<files::FileSink> created(const std::filesystem::path &path)
    {
        std::error_code error;
        return files::FileSink::create(path, error);
    }

    TemporaryFolder m_folder;
    std::unique_ptr<pdf::Document> m_source;
    std::unique_ptr<files::FileSink> m_sink;
    pdf::CopyWriter m_writer;
};

/// A file of empty pages with these entries.
std::string emptyPages(int count, std::string_view entries = "/MediaBox[0 0 612 792]")
{
    tests::PdfBuilder builder;
    for (int page = 0; page < count; ++page) {
        builder.addPage(entries);
    }
    return builder.file();
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
    NewCopy copy(emptyPages(3));
    std::string word;
    pdf::ContentStream content(word);
    copy->fonts().show(copy->fonts().shape(u"SHARED"_s, u"Helvetica"_s, 12), 0, 0, content);
    const std::string form(copy->overlayForm({0, -20, 200, 20}, word));
    EXPECT_EQ(copy->overlayForm({0, 0, 1, 1}, "another"), form) << "one form serves the whole copy";
    for (const char *placement : {"q 1 0 0 1 20 60 cm ", "q 1 0 0 1 20 90 cm ", ""}) {
        const std::string place = placement;
        ASSERT_EQ(copy.addPage(place.empty() ? place : place + form + " Do Q\n"), Step::done);
    }
    ASSERT_EQ(copy->finish(), Step::done);

    EXPECT_EQ(tests::soundPages(copy.path()), 3);
    for (int page = 1; page <= 3; ++page) {
        EXPECT_EQ(count(tests::textOfPage(copy.path(), page), "SHARED"), page < 3 ? 1U : 0U) << page;
    }
}

TEST(CopyWriter, SaysThatThereIsNoFurtherPageAsOftenAsItIsAsked)
{
    NewCopy copy(emptyPages(1));
    ASSERT_EQ(copy.addPage({}), Step::done);
    EXPECT_EQ(copy->nextPage(), Step::noMorePages);
    EXPECT_EQ(copy->nextPage(), Step::noMorePages);
    EXPECT_EQ(copy->finish(), Step::done);
    EXPECT_EQ(tests::soundPages(copy.path()), 1);
}

TEST(CopyWriter, ShowsThePageUprightAndItsOverlayInPoints)
{
    NewCopy copy(emptyPages(1, "/MediaBox[10 20 110 220]/Rotate 90/UserUnit 2"));
    ASSERT_EQ(copy->nextPage(), Step::done);
    EXPECT_EQ(copy->pageSize(), (pdf::Size{400, 200}));
    ASSERT_EQ(copy->endPage("0 0 400 200 re f\n"), Step::done);
    ASSERT_EQ(copy->finish(), Step::done);
    EXPECT_EQ(tests::contentOfPage(copy.path(), 1), "/P Do\nq 0.5 0 0 0.5 0 0 cm 0 0 400 200 re f\nQ\n");
    EXPECT_EQ(tests::soundPages(copy.path()), 1);
}

TEST(CopyWriter, WithoutAnOverlayDrawsThePageAlone)
{
    NewCopy copy(emptyPages(1));
    (void)copy->overlayForm({0, 0, 9, 9}, "0 0 9 9 re f\n");
    ASSERT_EQ(copy.addPage({}), Step::done);
    ASSERT_EQ(copy->finish(), Step::done);
    EXPECT_EQ(tests::contentOfPage(copy.path(), 1), "/P Do\n");
    EXPECT_EQ(count(copy.syntax(), "/F "), 0U);
}

TEST(CopyWriter, OneOpacityServesTheWholeCopy)
{
    NewCopy copy(emptyPages(2));
    for (const double alpha : {0.5, 0.25}) {
        EXPECT_EQ(copy->overlayState(alpha), "/G");
        ASSERT_EQ(copy.addPage("/G gs "), Step::done);
    }
    ASSERT_EQ(copy->finish(), Step::done);
    const std::string syntax = copy.syntax();
    EXPECT_EQ(count(syntax, "/ca 0.5"), 1U);
    EXPECT_EQ(count(syntax, "/ca "), 1U);
}

TEST(CopyWriter, AnAppearanceInALayerStaysInIt)
{
    tests::PdfBuilder builder;
    const std::string layer = tests::reference(builder.add("<</Type/OCG/Name(l)>>"));
    const std::string form =
        tests::reference(builder.addStream("/Subtype/Form/BBox[0 0 10 10]", "0 0 10 10 re f"));
    const std::string annotation = "<</Subtype/Stamp/Rect[20 30 30 40]/AP<</N " + form + ">>";
    builder.addPage("/MediaBox[0 0 99 99]/Annots[" + annotation + "/OC " + layer + ">>" + annotation + ">>]");
    NewCopy copy(builder.file());
    ASSERT_EQ(copy.addPage({}), Step::done);
    ASSERT_EQ(copy->finish(), Step::done);
    EXPECT_EQ(tests::contentOfPage(copy.path(), 1),
              "/P Do\n/OC /O0 BDC q 1 0 0 1 20 30 cm /A0 Do Q EMC\nq 1 0 0 1 20 30 cm /A1 Do Q\n");
    EXPECT_EQ(tests::soundPages(copy.path()), 1);
}

TEST(CopyWriter, ShowsTextWithFontsOfTheGivenCatalogueAlone)
{
    pdf::FontCatalog catalog(std::vector{tests::fontFile("NotoSansHebrew-Regular.ttf")});
    NewCopy copy(emptyPages(1), catalog);
    std::string overlay;
    pdf::ContentStream content(overlay);
    copy->fonts().show(copy->fonts().shape(u"\u05d0\u05d1"_s, u"Helvetica"_s, 12), 100, 100, content);
    ASSERT_EQ(copy.addPage(overlay), Step::done);
    ASSERT_EQ(copy->finish(), Step::done);
    EXPECT_EQ(count(tests::runTool({"pdffonts", copy.path()}).output, "+NotoSansHebrew-Regular"), 1U);
}

TEST(CopyWriter, SaysThatTheOutputTakesNothingMore)
{
    /// Takes the header of a file and no more.
    class FullSink final : public files::ByteSink {
    public:
        bool write(std::span<const char> /*bytes*/) override
        {
            return ++m_writes < 3;
        }

        bool finish() override
        {
            return true;
        }

    private:
        int m_writes = 0;
    };
    const TemporaryFolder folder;
    tests::writeSample(folder / "letter.pdf", 1);
    pdf::Document::Opened opened = pdf::Document::open(folder / "letter.pdf");
    FullSink sink;
    pdf::CopyWriter copy(*std::get<std::unique_ptr<pdf::Document>>(opened), sink);
    ASSERT_EQ(copy.nextPage(), Step::done);
    EXPECT_EQ(copy.endPage({}), Step::cannotWrite);
    EXPECT_EQ(copy.finish(), Step::cannotWrite);
}

} // namespace tallyfold
