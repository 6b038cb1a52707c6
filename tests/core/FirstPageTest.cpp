#include "core/SourceClassifier.h"
#include "core/Stamper.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace tallyfold {

using tests::PdfBuilder;
using tests::TemporaryFolder;
using tests::writeFile;

namespace {

SourceFile sourceWith(const TemporaryFolder &folder, const std::vector<std::string> &pages)
{
    PdfBuilder builder;
    for (const std::string &page : pages) {
        builder.addPage(page);
    }
    writeFile(folder / "a.pdf", builder.file());
    return classify(folder / "a.pdf");
}

} // namespace

TEST(FirstPage, ItsSizeIsTheOneOnPaper)
{
    const TemporaryFolder folder;
    const SourceFile source = sourceWith(
        folder, {"/MediaBox[0 0 300 400]/CropBox[0 0 200 100]/Rotate 90/UserUnit 2", "/MediaBox[0 0 10 10]"});
    EXPECT_EQ(Stamper::firstPageSize(source), (pdf::Size{200, 400}));
}

TEST(FirstPage, OfAFileWithoutPagesThereIsNoSize)
{
    const TemporaryFolder folder;
    const SourceFile source = sourceWith(folder, {});
    try {
        (void)Stamper::firstPageSize(source);
        ADD_FAILURE() << "nothing was thrown";
    } catch (const StampError &error) {
        EXPECT_EQ(error, StampError::unreadable(QStringLiteral("a.pdf")));
    }
}

TEST(FirstPage, OfAFileThatIsGoneThereIsNoSize)
{
    const TemporaryFolder folder;
    const SourceFile source = sourceWith(folder, {"/MediaBox[0 0 300 400]"});
    std::filesystem::remove(source.url);
    EXPECT_THROW((void)Stamper::firstPageSize(source), StampError);
}

} // namespace tallyfold
