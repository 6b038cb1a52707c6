#include "core/SourceClassifier.h"

#include "tests/support/Sample.h"
#include "tests/support/SmallPdf.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <fcntl.h>
#include <sys/stat.h>

namespace tallyfold {

using tests::encrypt;
using tests::PdfBuilder;
using tests::reference;
using tests::TemporaryFolder;
using tests::writeFile;
using tests::writeSample;

namespace {

/// A document of one page with these entries, with `text` at `x`, `y`.
std::string pageShowing(const std::string &text, int x, int y, const std::string &entries)
{
    PdfBuilder builder;
    const int font = builder.add("<</Type/Font/Subtype/Type1/BaseFont/Helvetica/Encoding/WinAnsiEncoding>>");
    const int content = builder.addStream("", "BT /F1 10 Tf " + std::to_string(x) + " " + std::to_string(y) +
                                                  " Td (" + text + ") Tj ET");
    builder.addPage(entries + "/Resources<</Font<</F1 " + reference(font) + ">>>>/Contents " +
                    reference(content));
    return builder.file();
}

std::optional<QString> earlierNumber(const std::string &file)
{
    const TemporaryFolder folder;
    writeFile(folder / "a.pdf", file);
    return classify(folder / "a.pdf").existingBates;
}

const std::string letter = "/MediaBox[0 0 612 792]";

} // namespace

TEST(SourceClassifier, AnOrdinaryFileHasItsPagesAndItsDate)
{
    const TemporaryFolder folder;
    writeSample(folder / "a b.pdf", 3);
    const SourceFile source = classify(folder / "a b.pdf");
    EXPECT_EQ(source.name, QStringLiteral("a b.pdf"));
    EXPECT_EQ(source.url, folder / "a b.pdf");
    EXPECT_EQ(source.pageCount, 3);
    EXPECT_FALSE(source.problem);
    EXPECT_FALSE(source.existingBates);
    EXPECT_NE(source.id, classify(folder / "a b.pdf").id);
}

TEST(SourceClassifier, TheDateIsThatOfTheContentToTheNanosecond)
{
    const TemporaryFolder folder;
    writeSample(folder / "a.pdf", 1);
    for (const FileDate &date : {FileDate{1'234'567'890, 123'456'789},
                                 {1'234'567'890, 123'456'790},
                                 {-86'400, 999'999'999},
                                 {1, 0}}) {
        // The access time differs.
        const std::array<timespec, 2> times{{{1'000'000'000, 0}, {date.seconds, date.nanoseconds}}};
        ASSERT_EQ(::utimensat(AT_FDCWD, (folder / "a.pdf").c_str(), times.data(), 0), 0);
        EXPECT_EQ(classify(folder / "a.pdf").modified, date);
    }
    std::filesystem::create_symlink("a.pdf", folder / "link.pdf");
    EXPECT_EQ(classify(folder / "link.pdf").modified, (FileDate{1, 0}))
        << "that of the file, not of the link";
}

TEST(SourceClassifier, WhatCannotBeOpenedIsUnreadable)
{
    const TemporaryFolder folder;
    writeFile(folder / "text.pdf", "no PDF");
    std::filesystem::create_directory(folder / "folder.pdf");
    for (const char *name : {"text.pdf", "folder.pdf", "missing.pdf"}) {
        const SourceFile source = classify(folder / name);
        EXPECT_EQ(source.problem, SourceProblem::unreadable) << name;
        EXPECT_EQ(source.pageCount, 0);
    }
    EXPECT_EQ(classify(folder / "missing.pdf").modified, distantPast());
}

TEST(SourceClassifier, APasswordToOpenLocksAFile)
{
    const TemporaryFolder folder;
    writeSample(folder / "a.pdf", 2);
    encrypt(folder / "a.pdf", folder / "locked.pdf", "secret owner 256");
    const SourceFile source = classify(folder / "locked.pdf");
    EXPECT_EQ(source.problem, SourceProblem::locked);
    EXPECT_EQ(source.pageCount, 0);
}

TEST(SourceClassifier, AnyOfThreeRestrictionsMakesAFileEncrypted)
{
    const TemporaryFolder folder;
    writeSample(folder / "a.pdf", 2);
    for (const char *restriction : {"--extract=n", "--print=none", "--modify=none"}) {
        const std::filesystem::path path = folder / (std::string(restriction + 2) + ".pdf");
        encrypt(folder / "a.pdf", path, std::string("'' owner 256 ") + restriction);
        const SourceFile source = classify(path);
        EXPECT_EQ(source.problem, SourceProblem::encrypted) << restriction;
        EXPECT_EQ(source.pageCount, 2) << restriction;
    }
}

TEST(SourceClassifier, AnEarlierNumberIsSearchedOnlyInFilesThatCanBeStamped)
{
    const TemporaryFolder folder;
    writeFile(folder / "a.pdf", pageShowing("ABC000045", 400, 20, letter));
    const auto numberOf = [&](const char *options) {
        encrypt(folder / "a.pdf", folder / "b.pdf", options);
        return classify(folder / "b.pdf").existingBates;
    };
    EXPECT_EQ(numberOf("'' owner 256"), QStringLiteral("ABC000045")) << "of a file that withholds nothing";
    for (const char *restricted : {"'' owner 256 --extract=n", "'' owner 256 --print=none",
                                   "'' owner 256 --modify=none", "secret owner 256"}) {
        EXPECT_EQ(numberOf(restricted), std::nullopt) << restricted;
    }
    EXPECT_EQ(classify(folder / "a.pdf", EarlierNumbers::leaveOut).existingBates, std::nullopt);
}

TEST(SourceClassifier, EncryptionThatWithholdsNothingIsNoProblem)
{
    const TemporaryFolder folder;
    writeSample(folder / "a.pdf", 2);
    encrypt(folder / "a.pdf", folder / "open.pdf", "'' owner 256");
    EXPECT_FALSE(classify(folder / "open.pdf").problem);
}

TEST(SourceClassifier, AFileWithoutPagesIsEmpty)
{
    const TemporaryFolder folder;
    writeFile(folder / "a.pdf", PdfBuilder().file());
    EXPECT_EQ(classify(folder / "a.pdf").problem, SourceProblem::empty);
}

TEST(SourceClassifier, WhatIsCutShortWhileItsPagesAreCountedIsUnreadable)
{
    PdfBuilder builder;
    constexpr int depth = 20'000; // Lengths that refer to each other, deeper than any stack.
    const std::string letterPage = "<</Type/Page/MediaBox[0 0 612 792]>>";
    const int tree = builder.reserve();
    builder.set(tree, "<</Type/Pages/Count 2/Kids[" + reference(builder.add(letterPage)) + ' ' +
                          reference(tree + 2) + "]>>");
    for (int stream = tree + 2; stream < tree + depth; ++stream) {
        builder.add("<</Length " + reference(stream + 1) + ">>stream\nq Q\nendstream");
    }
    builder.addToCatalog("/Pages " + reference(tree));
    const TemporaryFolder folder;
    writeFile(folder / "a.pdf", builder.file());
    const SourceFile source = classify(folder / "a.pdf");
    EXPECT_EQ(source.problem, SourceProblem::unreadable);
    EXPECT_EQ(source.pageCount, 0);
}

TEST(SourceClassifier, ANameThatIsNotTextIsShownWithReplacementCharacters)
{
    const TemporaryFolder folder;
    const std::filesystem::path path = folder / std::filesystem::path("caf\xE9.pdf");
    writeSample(path, 1);
    const SourceFile source = classify(path);
    EXPECT_EQ(source.name, QStringLiteral("caf\uFFFD.pdf"));
    EXPECT_EQ(source.pageCount, 1);
}

TEST(SourceClassifier, AnEarlierNumberIsFoundNearEveryEdge)
{
    EXPECT_EQ(earlierNumber(pageShowing("CONFIDENTIAL ABC000045", 400, 20, letter)),
              QStringLiteral("ABC000045"));
    EXPECT_EQ(earlierNumber(pageShowing("DEF 1234567", 72, 760, letter)), QStringLiteral("DEF 1234567"));
    EXPECT_EQ(earlierNumber(pageShowing("EX-0001", 20, 400, letter)), QStringLiteral("EX-0001"));
    EXPECT_EQ(earlierNumber(pageShowing("EX-0002", 550, 400, letter)), QStringLiteral("EX-0002"));
}

TEST(SourceClassifier, EdgesAreSearchedInTheOrderBottomTopLeftRight)
{
    // Each is within its strip and no other; the last is the longest.
    std::vector<tests::SmallPage> page{{""}};
    const std::vector<std::pair<std::string, std::string>> numbers{
        {tests::showText(530, 400, "RIGHT000000004"), "RIGHT000000004"},
        {tests::showText(10, 400, "LEFT000003"), "LEFT000003"},
        {tests::showText(280, 760, "TOP00002"), "TOP00002"},
        {tests::showText(280, 20, "BTM0001"), "BTM0001"}};
    for (const auto &[content, number] : numbers) {
        page.front().content = content + page.front().content;
        EXPECT_EQ(earlierNumber(tests::smallPdf(page)), QString::fromStdString(number));
    }
}

TEST(SourceClassifier, OnlyTheFirstPageIsLookedAt)
{
    const std::string numbered = tests::showText(280, 20, "ABC000045");
    EXPECT_EQ(earlierNumber(tests::smallPdf({{""}, {numbered}, {numbered}})), std::nullopt);
    EXPECT_EQ(earlierNumber(tests::smallPdf({{numbered}, {""}})), QStringLiteral("ABC000045"));
}

TEST(SourceClassifier, ANumberInTheMiddleOfThePageIsNone)
{
    EXPECT_EQ(earlierNumber(pageShowing("ABC000045", 280, 400, letter)), std::nullopt);
}

TEST(SourceClassifier, TheEdgesAreThoseOfTheCropBoxWhereverItLies)
{
    EXPECT_EQ(earlierNumber(pageShowing("ABC000045", 280, 310, letter + "/CropBox[0 300 612 792]")),
              QStringLiteral("ABC000045"));
    EXPECT_EQ(earlierNumber(pageShowing("ABC000045", -100, -180, "/MediaBox[-306 -200 306 592]")),
              QStringLiteral("ABC000045"));
}

TEST(SourceClassifier, TurnedPagesAreSearchedAsWell)
{
    for (const char *rotate : {"90", "180", "270", "-90", "450"}) {
        EXPECT_EQ(earlierNumber(pageShowing("ABC000045", 280, 20, letter + "/Rotate " + rotate)),
                  QStringLiteral("ABC000045"))
            << rotate;
        EXPECT_EQ(earlierNumber(pageShowing("ABC000045", 280, 400, letter + "/Rotate " + rotate)),
                  std::nullopt)
            << rotate;
    }
}

} // namespace tallyfold
