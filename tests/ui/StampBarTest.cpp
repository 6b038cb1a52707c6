#include "ui/form/StampBar.h"

#include "tests/ui/HeldWriter.h"
#include "tests/ui/WindowFixture.h"

#include <QProgressBar>

namespace tallyfold {

using StampBarTest = tests::WindowFixture;

TEST_F(StampBarTest, AnEmptyListHasNothingToStampAndNothingToChoose)
{
    EXPECT_EQ(text("status"), "No PDFs yet");
    EXPECT_FALSE(isShown("chooseFirst"));
    EXPECT_TRUE(find<QPushButton>("stamp")->isEnabled());
}

TEST_F(StampBarTest, TheStatusCountsFilesAndNumberedPages)
{
    addPdfs({"a.pdf", "b.pdf"}, 2);
    EXPECT_EQ(text("status"), "2 files, 4 pages ready");
    EXPECT_EQ(text("chooseFirst"), "Choose an output folder first.");
    EXPECT_TRUE(isShown("chooseFirst"));
    model().setOutputFolder(output);
    EXPECT_FALSE(isShown("chooseFirst"));
}

TEST_F(StampBarTest, AListOfProtectedFilesHasNothingToStamp)
{
    addSamples({"Sealed letter.pdf", "Term sheet.pdf"});
    EXPECT_EQ(text("status"), "Nothing to stamp: the PDFs are password-protected");
}

TEST_F(StampBarTest, AFolderThatBlocksWritingIsToldWithAWayOut)
{
    addPdfs({"a.pdf"});
    pdf("../output/a.pdf");
    EXPECT_FALSE(isShown("blockingProblem"));
    model().setOutputFolder(output);
    EXPECT_EQ(text("blockingProblem"),
              "The output folder already has one of these files. Tallyfold never replaces "
              "files: choose another folder, or Start Next Production for new numbers.");
    std::filesystem::create_directory(folder / "other");
    panels->answer = {folder / "other"};
    EXPECT_EQ(text("chooseAnother"), "Choose Another Folder…");
    click("chooseAnother");
    EXPECT_FALSE(isShown("blockingProblem"));
}

TEST_F(StampBarTest, AnEmptyListIsNotTheFoldersFault)
{
    model().setOutputFolder(output);
    EXPECT_TRUE(isShown("folderProblem"));
    EXPECT_FALSE(isShown("blockingProblem"));
}

TEST_F(StampBarTest, StampWithoutAFolderAsksForOne)
{
    addPdfs({"a.pdf"});
    click("stamp");
    ASSERT_EQ(panels->asked.size(), 1U);
    EXPECT_EQ(panels->asked.front(), OpenPanel::forOutputFolder());
    EXPECT_FALSE(model().isRunning());
}

TEST_F(StampBarTest, ARunIsFollowedAndStoppedWithEscape)
{
    tests::Gate gate;
    restart(tests::writerHeldAt(gate));
    addPdfs({"a.pdf"}, 12);
    model().setOutputFolder(output);
    find<QPushButton>("stamp")->setFocus();
    click("stamp");
    EXPECT_EQ(text("progressText"), "Stamping… 0 of 12 pages");
    EXPECT_FALSE(isShown("stamp"));
    gate.awaitArrival();
    EXPECT_TRUE(waitUntil([this] { return text("progressText") == "Stamping… 5 of 12 pages"; }));
    EXPECT_GT(find<QProgressBar>("progress")->value(), 0);
    model().removeAll(); // What is listed may change; what is written does not.
    EXPECT_EQ(text("progressText"), "Stamping… 5 of 12 pages");
    EXPECT_EQ(QApplication::focusWidget(), find<QPushButton>("cancel"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    gate.open();
    EXPECT_TRUE(waitUntil([this] { return !model().isRunning(); }));
    EXPECT_TRUE(isShown("stamp"));
    ASSERT_TRUE(model().summary());
    EXPECT_TRUE(model().summary()->cancelled);
}

} // namespace tallyfold
