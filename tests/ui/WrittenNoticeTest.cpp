#include "ui/form/WrittenNotice.h"

#include "tests/ui/WindowFixture.h"

#include <QMenuBar>

#include <utility>

namespace tallyfold {

namespace {

/// A window after a production whose result was seen.
class WrittenNoticeTest : public tests::WindowFixture {
protected:
    WrittenNoticeTest()
    {
        addPdfs({"a.pdf", "b.pdf"}, 2);
        produce();
    }

    void produce()
    {
        model().setOutputFolder(output);
        model().stamp();
        EXPECT_TRUE(waitUntil([this] { return model().sheet() == Sheet::result; }));
        model().setSheet(std::nullopt);
    }
    bool isTold()
    {
        // The folder is looked at a moment after a change.
        QTest::qWait(200);
        return isShown("written");
    }

    const std::string inTheWay = "The output folder already has 3 of these files. Tallyfold never replaces "
                                 "files: choose another folder, or Start Next Production for new numbers.";
};

} // namespace

TEST_F(WrittenNoticeTest, WhatWasWrittenStandsAboveWhatIsInTheWay)
{
    EXPECT_TRUE(isTold());
    EXPECT_EQ(text("written"), "Production written: 2 stamped copies (4 pages).");
    EXPECT_EQ(text("writtenPlace"), output);
    EXPECT_EQ(text("blockingProblem"), inTheWay);
    const QPoint corner;
    EXPECT_LT(find<QWidget>("written")->mapToGlobal(corner).y(),
              find<QWidget>("blockingProblem")->mapToGlobal(corner).y());
    EXPECT_EQ(text("showWritten"), "Show in File Manager");
    click("showWritten");
    EXPECT_EQ(desktop->revealed, std::vector{output});
}

TEST_F(WrittenNoticeTest, NoFolderWidensTheBar)
{
    const auto isNarrow = [this] {
        auto *bar = find<QWidget>("stampBar");
        return bar->minimumSizeHint().width() <= find<QWidget>("stampForm")->minimumWidth();
    };
    EXPECT_TRUE(isNarrow());
    output = folder / std::string(200, 'W');
    std::filesystem::create_directory(output);
    produce();
    EXPECT_TRUE(isTold());
    EXPECT_TRUE(isNarrow());
}

TEST_F(WrittenNoticeTest, AnyChangeOfWhatIsPlannedTakesItAway)
{
    const StampSettings before = stamp();
    edit([](StampSettings &settings) { settings.suffix = QStringLiteral("X"); });
    EXPECT_FALSE(isTold());
    model().setStamp(before);
    EXPECT_TRUE(isTold()) << "all is as it was written";

    AppSettings settings = model().settings();
    settings.writePrivilegeLog = true;
    model().setSettings(settings);
    EXPECT_FALSE(isTold());
    settings.writePrivilegeLog = false;
    model().setSettings(settings);
    EXPECT_TRUE(isTold());

    addPdfs({"c.pdf"});
    EXPECT_FALSE(isTold());
    EXPECT_EQ(text("blockingProblem"), inTheWay);
}

TEST_F(WrittenNoticeTest, AnotherFolderTakesItAway)
{
    std::filesystem::create_directory(folder / "other");
    model().setOutputFolder(folder / "other");
    EXPECT_FALSE(isTold());
    model().setOutputFolder(output);
    EXPECT_TRUE(isTold());
    for (const auto &entry : std::filesystem::directory_iterator(output)) {
        std::filesystem::remove(entry.path());
    }
    model().setOutputFolder(folder / "other");
    model().setOutputFolder(output);
    EXPECT_FALSE(isTold()) << "what was written is not there any more";
}

TEST_F(WrittenNoticeTest, TheSameProductionWrittenAnewIsToldAsWell)
{
    std::filesystem::remove_all(output);
    std::filesystem::create_directory(output);
    produce();
    EXPECT_TRUE(isTold());
}

TEST_F(WrittenNoticeTest, ARunThatFailsIsNotToldAsWritten)
{
    bool isFirst = true;
    restart([this, &isFirst](const ProductionPlan &plan, const std::filesystem::path &into,
                             const ProductionOptions &options,
                             const Production::OnPage &onPage) -> ProductionResult {
        if (!std::exchange(isFirst, false)) {
            std::filesystem::create_directory(output / "a.pdf");
            throw FileError{QStringLiteral("a.pdf"), std::make_error_code(std::errc::io_error)};
        }
        return Production::write(plan, into, options, onPage);
    });
    std::filesystem::remove_all(output);
    std::filesystem::create_directory(output);
    addPdfs({"a.pdf"});
    produce();
    EXPECT_TRUE(isTold());
    std::filesystem::remove_all(output);
    std::filesystem::create_directory(output);
    model().stamp();
    EXPECT_TRUE(waitUntil([this] { return model().problem().has_value(); }));
    EXPECT_TRUE(waitUntil([] { return isShown("blockingProblem"); }));
    EXPECT_FALSE(isTold());
}

TEST_F(WrittenNoticeTest, TheNextProductionCanBeStartedFromTheBar)
{
    EXPECT_TRUE(isTold());
    EXPECT_EQ(text("startNextHere"), "Start Next Production");
    EXPECT_EQ(find<QWidget>("startNextHere")->toolTip(),
              QStringLiteral("Clears the list and sets the start number to ABC000005."));
    click("startNextHere");
    EXPECT_EQ(listed(), "");
    EXPECT_EQ(stamp().startNumber, 5);
    EXPECT_FALSE(isTold());
}

TEST_F(WrittenNoticeTest, TheNextProductionCanBeStartedFromTheMenu)
{
    QAction *command = nullptr;
    for (const QAction *menu : app->mainView().menuBar()->actions()) {
        for (QAction *entry : menu->menu()->actions()) {
            command = entry->objectName() == QStringLiteral("startNextProduction") ? entry : command;
        }
    }
    ASSERT_NE(command, nullptr);
    EXPECT_TRUE(command->isEnabled());
    command->trigger();
    EXPECT_EQ(listed(), "");
    EXPECT_EQ(stamp().startNumber, 5);
}

TEST_F(WrittenNoticeTest, WithoutAProductionThereIsNoNextOne)
{
    restart();
    addPdfs({"a.pdf"});
    model().setOutputFolder(output);
    EXPECT_TRUE(isShown("blockingProblem"));
    EXPECT_FALSE(isShown("startNextHere"));
    EXPECT_FALSE(isShown("written"));
}

} // namespace tallyfold
