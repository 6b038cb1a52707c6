#include "app/CheckModel.h"

#include "app/HashListWriting.h"
#include "tests/app/FinishedProduction.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Waiting.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <atomic>
#include <fstream>
#include <thread>

namespace tallyfold {

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;
using Folders = std::vector<fs::path>;

namespace {

class CheckModelTest : public testing::Test {
protected:
    CheckModelTest()
    {
        tests::makeProduction(m_folder / "out", {{"a.pdf", 3}, {"b.pdf", 2}});
        fs::create_directory(m_folder / "other");
    }

    bool runToEnd(CheckModel &model)
    {
        model.start();
        return tests::waitUntil([&] { return !model.isRunning() && model.result(); });
    }

    tests::TemporaryFolder m_folder;
};

/// What a check that waits for its end shares with its test.
struct Held {
    std::atomic<bool> isLetGo = false;
    std::atomic<bool> isOver = false;

    /// Checks nothing; comes to its end when it is let go, or given up.
    static CheckModel::Checker checker(const std::shared_ptr<Held> &held)
    {
        return [held](std::span<const fs::path>, const check::ShowProgress &show,
                      const std::stop_token &givenUp) {
            show({u"a.pdf"_s, 2, 5});
            while (!held->isLetGo && !givenUp.stop_requested()) {
                std::this_thread::yield();
            }
            check::Outcome outcome;
            outcome.isStopped = givenUp.stop_requested();
            outcome.findings.push_back({0, u"a.pdf"_s, std::nullopt, check::CopyMissing{}});
            held->isOver = true;
            return outcome;
        };
    }
};

} // namespace

TEST_F(CheckModelTest, TellsOfAWholeProductionThatItIsWhole)
{
    CheckModel model;
    const QSignalSpy results(&model, &CheckModel::resultChanged);
    const QSignalSpy running(&model, &CheckModel::runningChanged);
    model.add(Folders{m_folder / "out"});
    ASSERT_TRUE(runToEnd(model));
    EXPECT_TRUE(model.result()->outcome.isWhole());
    EXPECT_EQ(model.result()->outcome.copies, 2);
    EXPECT_EQ(model.result()->folders, Folders{m_folder / "out"});
    EXPECT_LT(model.result()->ended.secsTo(QDateTime::currentDateTime()), 60);
    EXPECT_EQ(results.count(), 1);
    EXPECT_EQ(running.count(), 2);
    EXPECT_EQ(model.progress().pages, 5);
    EXPECT_EQ(model.progress().plannedPages, 5);
}

TEST_F(CheckModelTest, FindsACopyThatIsGone)
{
    fs::remove(m_folder / "out" / "b.pdf");
    CheckModel model;
    model.add(Folders{m_folder / "out"});
    ASSERT_TRUE(runToEnd(model));
    ASSERT_EQ(model.result()->outcome.findings.size(), 1U);
    EXPECT_EQ(model.result()->outcome.findings.front(),
              (check::Finding{0, u"b.pdf"_s, std::nullopt, check::CopyMissing{}}));
}

TEST_F(CheckModelTest, AFolderThatVanishedIsToldOf)
{
    CheckModel model;
    model.add(Folders{m_folder / "out"});
    fs::remove_all(m_folder / "out");
    ASSERT_TRUE(runToEnd(model));
    ASSERT_EQ(model.result()->outcome.findings.size(), 1U);
    EXPECT_TRUE(
        std::holds_alternative<check::FolderUnreadable>(model.result()->outcome.findings.front().what));
}

TEST_F(CheckModelTest, TakesAFolderOnceByWhateverPath)
{
    fs::create_directory_symlink(m_folder / "out", m_folder / "link");
    CheckModel model;
    const QSignalSpy told(&model, &CheckModel::foldersChanged);
    model.add(Folders{m_folder / "out", m_folder / "out/", m_folder / "other" / ".." / "out",
                      m_folder / "link", m_folder / "out" / "a.pdf"});
    EXPECT_EQ(model.folders(), Folders{m_folder / "out"});
    model.add(Folders{m_folder / "out"});
    EXPECT_EQ(told.count(), 1);
    model.add(Folders{m_folder / "other" / ""});
    EXPECT_EQ(model.folders(), (Folders{m_folder / "out", m_folder / "other"}));
}

TEST_F(CheckModelTest, AFileStandsForItsFolder)
{
    CheckModel model;
    model.add(Folders{m_folder / "out" / "Production Index.csv"});
    EXPECT_EQ(model.folders(), Folders{m_folder / "out"});
}

TEST_F(CheckModelTest, RemovesFoldersByTheirIndexes)
{
    CheckModel model;
    model.add(Folders{m_folder / "out", m_folder / "other"});
    const QSignalSpy told(&model, &CheckModel::foldersChanged);
    model.remove({});
    EXPECT_EQ(told.count(), 0);
    model.remove({0});
    EXPECT_EQ(model.folders(), Folders{m_folder / "other"});
    EXPECT_EQ(told.count(), 1);
}

TEST_F(CheckModelTest, NothingIsCheckedWithoutFolders)
{
    CheckModel model;
    model.start();
    EXPECT_FALSE(model.isRunning());
}

TEST_F(CheckModelTest, AStoppedCheckKeepsWhatItFound)
{
    const auto held = std::make_shared<Held>();
    CheckModel model(Held::checker(held));
    model.add(Folders{m_folder / "out"});
    model.start();
    EXPECT_TRUE(tests::waitUntil([&] { return model.progress().pages == 2; }));
    EXPECT_EQ(model.progress().reading, u"a.pdf"_s);
    EXPECT_TRUE(model.isRunning());
    EXPECT_FALSE(model.isStopping());
    model.stop();
    EXPECT_TRUE(model.isStopping());
    ASSERT_TRUE(tests::waitUntil([&] { return !model.isRunning(); }));
    EXPECT_FALSE(model.isStopping());
    EXPECT_TRUE(model.result()->outcome.isStopped);
    EXPECT_EQ(model.result()->outcome.findings.size(), 1U);
}

TEST_F(CheckModelTest, FoldersStayWhileACheckRuns)
{
    const auto held = std::make_shared<Held>();
    CheckModel model(Held::checker(held));
    model.add(Folders{m_folder / "out"});
    model.start();
    model.add(Folders{m_folder / "other"});
    model.remove({0});
    EXPECT_EQ(model.folders(), Folders{m_folder / "out"});
    held->isLetGo = true;
    ASSERT_TRUE(tests::waitUntil([&] { return !model.isRunning(); }));
}

TEST_F(CheckModelTest, AResultOfOtherFoldersSaysSo)
{
    CheckModel model;
    EXPECT_FALSE(model.isResultOfOthers());
    model.add(Folders{m_folder / "out"});
    ASSERT_TRUE(runToEnd(model));
    EXPECT_FALSE(model.isResultOfOthers());
    model.add(Folders{m_folder / "other"});
    EXPECT_TRUE(model.isResultOfOthers());
    model.remove({1});
    EXPECT_FALSE(model.isResultOfOthers());
}

TEST_F(CheckModelTest, ASecondCheckTakesThePlaceOfTheFirst)
{
    CheckModel model;
    model.add(Folders{m_folder / "out"});
    ASSERT_TRUE(runToEnd(model));
    fs::remove(m_folder / "out" / "a.pdf");
    const auto first = model.result();
    model.start();
    ASSERT_TRUE(tests::waitUntil([&] { return !model.isRunning(); }));
    EXPECT_NE(model.result(), first);
    EXPECT_EQ(model.result()->outcome.findings.size(), 1U);
}

TEST_F(CheckModelTest, AModelThatGoesWaitsForNothing)
{
    const auto held = std::make_shared<Held>();
    {
        CheckModel model(Held::checker(held));
        model.add(Folders{m_folder / "out"});
        model.start();
        ASSERT_TRUE(tests::waitUntil([&] { return model.progress().pages == 2; }));
    }
    EXPECT_TRUE(tests::waitUntil([&] { return held->isOver.load(); }));
    EXPECT_TRUE(tests::waitUntil([] { return !LooseTask::isAnyLeft(); }));
}

TEST_F(CheckModelTest, NothingInTheFolderIsChanged)
{
    std::ofstream(m_folder / "out" / "a.pdf", std::ios::trunc) << "no PDF any more";
    const auto listed = [this] {
        std::map<fs::path, std::pair<std::uintmax_t, fs::file_time_type>> found;
        for (const auto &entry : fs::directory_iterator(m_folder / "out")) {
            found[entry.path()] = {entry.file_size(), entry.last_write_time()};
        }
        return found;
    };
    const auto before = listed();
    CheckModel model;
    model.add(Folders{m_folder / "out"});
    ASSERT_TRUE(runToEnd(model));
    EXPECT_FALSE(model.result()->outcome.isWhole());
    EXPECT_EQ(listed(), before);
}

TEST_F(CheckModelTest, AHashListIsWrittenInTheBackground)
{
    std::optional<check::HashesOutcome> outcome;
    HashListWriting writing(m_folder / "out");
    QObject::connect(&writing, &HashListWriting::ended, &writing,
                     [&](const check::HashesOutcome &told) { outcome = told; });
    ASSERT_TRUE(tests::waitUntil([&] { return outcome.has_value(); }));
    EXPECT_EQ(*outcome, check::HashesOutcome(check::HashesWritten{3, {}, {}}));
    EXPECT_TRUE(fs::exists(m_folder / "out" / "Production Hashes.sha256"));
    EXPECT_EQ(writing.progress().plannedPages, 3);
}

TEST_F(CheckModelTest, AHashListThatIsNotWantedAnyMoreLeavesNothing)
{
    const auto entries = [this] {
        return std::distance(fs::directory_iterator(m_folder / "out"), fs::directory_iterator());
    };
    const auto before = entries();
    {
        HashListWriting writing(m_folder / "out");
        writing.stop();
    }
    EXPECT_LE(entries(), before + 1) << "there is a list of all files, or none";
    for (const auto &entry : fs::directory_iterator(m_folder / "out")) {
        EXPECT_NE(entry.path().filename().string().front(), '.');
    }
}

} // namespace tallyfold
