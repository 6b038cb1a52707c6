// Adding files that takes its time.

#include "app/LooseTask.h"
#include "app/ReadingPanel.h"
#include "tests/app/HeldReader.h"
#include "tests/app/ModelFixture.h"
#include "tests/support/Sample.h"
#include "tests/support/UnreadableFolder.h"

namespace tallyfold {

namespace fs = std::filesystem;

namespace {

/// Does what a test says while files are read.
class FakeReadingPanel final : public ReadingPanel {
public:
    std::function<void(SourceReading &)> meanwhile = [](SourceReading &reading) { reading.wait(); };
    int awaited = 0;

    void await(SourceReading &reading) override
    {
        ++awaited;
        const auto now = meanwhile; // Which may say what is done next.
        now(reading);
    }
};

class Adding : public tests::ModelFixture {
protected:
    Adding()
    {
        counts.reset();
        model = std::make_unique<AppModel>(
            std::make_unique<SettingsStore>(QString::fromStdString(folder / "settings.ini")), panels,
            AppModel::systemWriter(), tests::readerHeldAt(gate, "held.pdf"));
        model->setUndoManager(&undo);
        model->setReadingPanel(&panel);
    }
    ~Adding() override
    {
        gate.open();
        counts.reset();
        model.reset(); // With the previews that are being drawn.
        EXPECT_TRUE(waitUntil([] { return !LooseTask::isAnyLeft(); }));
    }

    /// Stops the reading once so many were read.
    void stopAfter(std::int64_t read)
    {
        panel.meanwhile = [this, read](SourceReading &reading) {
            EXPECT_TRUE(waitUntil([&] { return reading.progress().read == read; }));
            reading.stop();
        };
    }

    FakeReadingPanel panel;
    tests::Gate gate;
};

} // namespace

TEST_F(Adding, IsTold)
{
    std::vector<bool> told;
    QObject::connect(model.get(), &AppModel::readingChanged, model.get(),
                     [&] { told.push_back(model->isReading()); });
    bool wasReading = false;
    QObject::connect(model.get(), &AppModel::sourcesChanged, model.get(),
                     [&] { wasReading = model->isReading(); });
    addPdfs({"a.pdf"});
    EXPECT_TRUE(wasReading) << "the list takes its time as well";
    EXPECT_EQ(told, (std::vector{true, false}));
    EXPECT_FALSE(model->isReading());
    EXPECT_EQ(panel.awaited, 1);
}

TEST_F(Adding, WithoutAPanelIsWaitedFor)
{
    model->setReadingPanel(nullptr);
    addPdfs({"b.pdf", "a.pdf"});
    EXPECT_EQ(listed(), "b.pdf a.pdf");
    EXPECT_EQ(panel.awaited, 0);
}

TEST_F(Adding, ThatIsStoppedKeepsTheFirstFilesAsOneStep)
{
    addPdfs({"0.pdf"});
    stopAfter(2);
    addPdfs({"2.pdf", "1.pdf", "held.pdf", "3.pdf"});
    EXPECT_EQ(listed(), "0.pdf 2.pdf 1.pdf");
    ASSERT_EQ(undo.count(), 2);
    EXPECT_EQ(undo.undoText(), QStringLiteral("Add Files"));
    undo.undo();
    EXPECT_EQ(listed(), "0.pdf");
    undo.redo();
    EXPECT_EQ(listed(), "0.pdf 2.pdf 1.pdf");
}

TEST_F(Adding, AgainGoesOnWhereItWasStopped)
{
    const std::vector<std::string> names{"1.pdf", "2.pdf", "held.pdf", "3.pdf", "4.pdf"};
    stopAfter(2);
    addPdfs(names);
    EXPECT_EQ(listed(), "1.pdf 2.pdf");
    gate.open();
    panel.meanwhile = [](SourceReading &reading) {
        reading.wait();
        EXPECT_EQ(reading.progress().files, 3);
    };
    addPdfs(names);
    EXPECT_EQ(listed(), "1.pdf 2.pdf held.pdf 3.pdf 4.pdf");
}

TEST_F(Adding, ThatIsStoppedBeforeTheFirstChangesNothing)
{
    stopAfter(0);
    addPdfs({"held.pdf", "1.pdf"});
    EXPECT_EQ(listed(), "");
    EXPECT_EQ(undo.count(), 0);
    EXPECT_EQ(model->problem(), std::nullopt);
}

TEST_F(Adding, ThatNobodyWaitsForAnyMoreIsStopped)
{
    panel.meanwhile = [this](SourceReading &reading) {
        EXPECT_TRUE(waitUntil([&] { return reading.progress().read == 1; }));
    };
    addPdfs({"1.pdf", "held.pdf"});
    EXPECT_EQ(listed(), "1.pdf");
}

TEST_F(Adding, ThatIsStoppedStillNamesTheFoldersThatCouldNotBeRead)
{
    (void)pdf("1.pdf");
    (void)pdf("held.pdf");
    tests::makeUnreadableFolder(folder / "sources" / "deep");
    stopAfter(1);
    model->add(std::vector{folder / "sources"});
    EXPECT_EQ(listed(), "1.pdf");
    ASSERT_TRUE(model->problem());
    EXPECT_TRUE(model->problem()->contains(QStringLiteral("to its end")));
}

TEST_F(Adding, WhileOthersAreReadIsPutOffAndNotForgotten)
{
    panel.meanwhile = [this](SourceReading &reading) {
        panel.meanwhile = [](SourceReading &later) { later.wait(); };
        model->add(std::vector{pdf("second.pdf")});
        model->add(std::vector{pdf("third.pdf")});
        EXPECT_EQ(listed(), "");
        EXPECT_EQ(panel.awaited, 1) << "one at a time";
        reading.wait();
    };
    addPdfs({"first.pdf"});
    EXPECT_EQ(listed(), "first.pdf") << "who asked for it gets it, and nothing else";
    EXPECT_TRUE(waitUntil([this] { return listed() == "first.pdf second.pdf third.pdf"; }));
    EXPECT_EQ(undo.count(), 3);
    undo.undo();
    EXPECT_EQ(listed(), "first.pdf second.pdf");
}

TEST_F(Adding, WhatWasPutOffIsAddedAlsoWhenTheFirstIsStopped)
{
    panel.meanwhile = [this](SourceReading &reading) {
        panel.meanwhile = [](SourceReading &later) { later.wait(); };
        model->add(std::vector{pdf("second.pdf")});
        reading.stop();
    };
    addPdfs({"held.pdf"});
    EXPECT_TRUE(waitUntil([this] { return listed() == "second.pdf"; }));
}

TEST_F(Adding, AModelThatGoesForgetsWhatWasPutOff)
{
    panel.meanwhile = [this](SourceReading &reading) {
        model->add(std::vector{pdf("second.pdf")});
        reading.wait();
    };
    addPdfs({"first.pdf"});
    model.reset();
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(panel.awaited, 1);
}

TEST_F(Adding, NothingIsStampedMeanwhile)
{
    addPdfs({"1.pdf"});
    model->setOutputFolder(output);
    panel.meanwhile = [this](SourceReading &reading) {
        model->stamp();
        EXPECT_FALSE(model->isRunning());
        reading.wait();
    };
    addPdfs({"2.pdf"});
    EXPECT_EQ(written(), std::vector<std::string>{});
}

TEST_F(Adding, WhatChangedIsReadAnewTheSameWay)
{
    addPdfs({"1.pdf", "2.pdf", "3.pdf"}, 2);
    for (const char *name : {"1.pdf", "2.pdf", "3.pdf"}) {
        (void)pdf(name, 3);
    }
    const std::vector<SourceFile> before = model->sources();
    int read = 0;
    panel.meanwhile = [&](SourceReading &reading) {
        EXPECT_TRUE(model->isReading());
        reading.wait();
        read = static_cast<int>(reading.progress().read);
    };
    stampAndWait();
    EXPECT_EQ(read, 3);
    for (std::size_t place = 0; place < before.size(); ++place) {
        EXPECT_EQ(model->sources()[place].id, before[place].id);
        EXPECT_EQ(model->sources()[place].pageCount, 3);
    }
    EXPECT_TRUE(model->problem()) << "which is told first";
}

TEST_F(Adding, StampIsGivenUpWhereReadingAnewIsStopped)
{
    addPdfs({"1.pdf", "2.pdf"}, 2);
    fs::rename(pdf("held.pdf", 3), folder / "sources" / "2.pdf");
    (void)pdf("1.pdf", 3);
    panel.meanwhile = [](SourceReading &reading) { reading.stop(); };
    stampAndWait();
    EXPECT_EQ(model->problem(), std::nullopt);
    EXPECT_EQ(written(), std::vector<std::string>{});
    panel.meanwhile = [](SourceReading &reading) { reading.wait(); };
    stampAndWait();
    ASSERT_TRUE(model->problem()) << "what was not read then is read now";
    EXPECT_TRUE(model->problem()->contains(QStringLiteral("2 files")));
    stampAndWait();
    EXPECT_EQ(model->summary()->pages, 6);
}

TEST_F(Adding, FilesAddedWhileTheListIsReadAnewForStampAreNotStamped)
{
    addPdfs({"1.pdf"});
    (void)pdf("1.pdf", 1);
    tests::writeSample(folder / "sources" / "1.pdf", 1, "Something else");
    panel.meanwhile = [this](SourceReading &reading) {
        panel.meanwhile = [](SourceReading &later) { later.wait(); };
        model->add(std::vector{pdf("2.pdf")});
        reading.wait();
    };
    stampAndWait();
    EXPECT_EQ(written(), (std::vector<std::string>{"1.pdf", "Production Index.csv"}));
    EXPECT_TRUE(waitUntil([this] { return listed() == "1.pdf 2.pdf"; }));
}

} // namespace tallyfold
