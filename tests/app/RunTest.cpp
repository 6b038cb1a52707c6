#include "tests/app/ModelFixture.h"

#include "tests/app/Gate.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sample.h"

#include <QGuiApplication>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <system_error>
#include <thread>

namespace tallyfold {

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;

using Counts = std::map<std::string, int>;
using Names = std::vector<std::string>;

namespace {

using tests::Gate;

/// A model with a writer that the test controls.
class Run : public tests::ModelFixture {
protected:
    /// Replaces the model by one with `writer`.
    void writeWith(AppModel::Writer writer)
    {
        counts.reset();
        model = std::make_unique<AppModel>(
            std::make_unique<SettingsStore>(QString::fromStdString(folder / "settings.ini")), panels,
            std::move(writer));
        model->setUndoManager(&undo);
        counts = std::make_unique<tests::SignalCounts>(*model);
    }

    /// A writer that calls `atPage` after every page, on the thread of the run.
    static AppModel::Writer writerWith(std::function<void(std::int64_t)> atPage)
    {
        return
            [atPage = std::move(atPage)](const ProductionPlan &plan, const fs::path &folder,
                                         const ProductionOptions &options, const Production::OnPage &onPage) {
                return Production::write(plan, folder, options, [&](std::int64_t pages) {
                    atPage(pages);
                    return onPage(pages);
                });
            };
    }

    /// A writer that deletes the sources `names` first.
    AppModel::Writer writerAfterRemoving(const Names &names)
    {
        return [this, names](const ProductionPlan &plan, const fs::path &into,
                             const ProductionOptions &options, const Production::OnPage &onPage) {
            for (const std::string &name : names) {
                fs::remove(folder / "sources" / name);
            }
            return Production::write(plan, into, options, onPage);
        };
    }

    static AppModel::Writer writerThatThrows(const std::function<void()> &thrower)
    {
        return [thrower](const ProductionPlan &, const fs::path &, const ProductionOptions &,
                         const Production::OnPage &) -> ProductionResult {
            thrower();
            return {};
        };
    }

    void setStart(std::int64_t number)
    {
        StampSettings stamp = model->settings().stamp;
        stamp.startNumber = number;
        model->setStamp(stamp);
    }
};

} // namespace

TEST_F(Run, AProductionIsWrittenAndSummedUp)
{
    addPdfs({"a.pdf", "b.pdf"}, 2);
    AppSettings settings = model->settings();
    settings.writePrivilegeLog = true;
    model->setSettings(settings);
    counts->take();
    stampAndWait();
    EXPECT_EQ(written(), (Names{"Privilege Log.csv", "Production Index.csv", "a.pdf", "b.pdf"}));
    const RunSummary summary{2,
                             4,
                             QStringLiteral("ABC000001 – ABC000004"),
                             5,
                             QStringLiteral("ABC000005"),
                             output,
                             output / "Production Index.csv",
                             output / "Privilege Log.csv",
                             {},
                             false,
                             {}};
    EXPECT_EQ(model->summary(), summary);
    EXPECT_EQ(model->sheet(), Sheet::result);
    EXPECT_FALSE(model->problem());
    Counts told = counts->take();
    for (const char *preview : {"previews", "closeUp", "previewFileName"}) {
        told.erase(preview); // Emitted at any time.
    }
    EXPECT_EQ(told, (Counts{{"outputFolder", 1}, {"running", 2}, {"summary", 1}, {"sheet", 1}}));
}

TEST_F(Run, WithoutAFolderThePanelAsks)
{
    addPdfs({"a.pdf"});
    counts->take();
    model->stamp();
    ASSERT_EQ(panels.asked.size(), 1U);
    EXPECT_EQ(panels.asked[0], OpenPanel::forOutputFolder());
    EXPECT_EQ(counts->take(), Counts());
    panels.answer = {output};
    model->stamp();
    EXPECT_TRUE(waitUntil([this] { return !model->isRunning(); }));
    EXPECT_EQ(model->summary()->files, 1);
}

TEST_F(Run, ConflictsAreToldAndNothingIsWritten)
{
    addPdfs({"a.pdf", "b.pdf"});
    tests::writeFile(output / "a.pdf", "there");
    stampAndWait();
    EXPECT_EQ(model->problem(), QStringLiteral("Nothing was written: fix the items under Output first."));
    EXPECT_EQ(written(), (Names{"a.pdf"}));
    EXPECT_FALSE(model->summary());
    EXPECT_FALSE(model->sheet());
    EXPECT_EQ(model->existingFilesMessage(),
              QStringLiteral(
                  "The output folder already has one of these files. Tallyfold never replaces files: choose "
                  "another folder, or Start Next Production for new numbers."));
    tests::writeFile(output / "b.pdf", "there");
    EXPECT_EQ(model->existingFilesMessage(),
              QStringLiteral(
                  "The output folder already has 2 of these files. Tallyfold never replaces files: choose "
                  "another folder, or Start Next Production for new numbers."));
}

TEST_F(Run, WithoutAFolderOrNamesInItThereIsNoMessageAboutFiles)
{
    addPdfs({"a.pdf"});
    EXPECT_FALSE(model->existingFilesMessage());
    model->setOutputFolder(output);
    EXPECT_FALSE(model->existingFilesMessage());
}

TEST_F(Run, ProtectedFilesAreAskedAboutOnce)
{
    addPdfs({"a.pdf"});
    tests::encrypt(pdf("plain.pdf"), folder / "sources" / "locked.pdf", "secret owner 256");
    model->add(std::vector{folder / "sources" / "locked.pdf"});
    counts->take();
    stampAndWait();
    EXPECT_TRUE(model->isConfirmingProtected());
    EXPECT_TRUE(written().empty());
    model->setConfirmingProtected(false);
    EXPECT_TRUE(written().empty());
    model->stamp();
    EXPECT_TRUE(model->isConfirmingProtected());
    model->stampOthers();
    EXPECT_FALSE(model->isConfirmingProtected());
    EXPECT_TRUE(waitUntil([this] { return !model->isRunning(); }));
    EXPECT_EQ(written(), (Names{"Production Index.csv", "a.pdf"}));
    EXPECT_EQ(counts->take()["confirmingProtected"], 4);
}

TEST_F(Run, ProgressIsToldInStepsOfFive)
{
    addPdfs({"a.pdf"}, 12);
    std::vector<std::int64_t> told;
    QObject::connect(model.get(), &AppModel::progressPagesChanged, model.get(),
                     [&] { told.push_back(model->progressPages()); });
    stampAndWait();
    EXPECT_EQ(told, (std::vector<std::int64_t>{5, 10, 0}));
}

TEST_F(Run, ASmallProductionShowsNoProgress)
{
    addPdfs({"a.pdf"}, 4);
    counts->take();
    stampAndWait();
    EXPECT_EQ(counts->take().count("progressPages"), 0U);
}

TEST_F(Run, AFileThatFailsIsNamedAndTheOthersAreWritten)
{
    writeWith(writerAfterRemoving({"b.pdf"}));
    addPdfs({"a.pdf", "b.pdf", "c.pdf"});
    stampAndWait();
    EXPECT_EQ(model->summary()->failures, QStringList(QStringLiteral("b.pdf")));
    EXPECT_EQ(model->summary()->files, 2);
    EXPECT_FALSE(model->summary()->cancelled);
    EXPECT_EQ(written(), (Names{"Production Index.csv", "a.pdf", "c.pdf"}));
}

TEST_F(Run, FailuresAreInProductionOrder)
{
    writeWith(writerAfterRemoving({"c.pdf", "a.pdf"}));
    addPdfs({"c.pdf", "b.pdf", "a.pdf"});
    StampSettings stamp = model->settings().stamp;
    stamp.order = FileOrder::manual;
    model->setStamp(stamp);
    stampAndWait();
    EXPECT_EQ(model->summary()->failures, QStringList({QStringLiteral("c.pdf"), QStringLiteral("a.pdf")}));
}

TEST_F(Run, AFileThatTurnsUpDuringTheRunIsNotReplaced)
{
    writeWith(writerWith([this](std::int64_t pages) {
        if (pages == 1) {
            tests::writeFile(output / "b.pdf", "somebody else's");
        }
    }));
    addPdfs({"a.pdf", "b.pdf"});
    stampAndWait();
    EXPECT_EQ(tests::readFile(output / "b.pdf"), "somebody else's");
    EXPECT_EQ(model->summary()->failures, QStringList(QStringLiteral("b.pdf")));
    EXPECT_EQ(written(), (Names{"Production Index.csv", "a.pdf", "b.pdf"}));
}

TEST_F(Run, AFileThatTurnsUpBeforeTheWriterLooksIsTold)
{
    writeWith([](const ProductionPlan &plan, const fs::path &into, const ProductionOptions &options,
                 const Production::OnPage &onPage) {
        tests::writeFile(into / "a.pdf", "somebody else's");
        return Production::write(plan, into, options, onPage);
    });
    addPdfs({"a.pdf"});
    stampAndWait();
    EXPECT_EQ(model->problem(),
              QStringLiteral(
                  "The output folder already has one of these files. Tallyfold never replaces files: choose "
                  "another folder, or Start Next Production for new numbers."));
    EXPECT_EQ(written(), (Names{"a.pdf"}));
    EXPECT_FALSE(model->sheet());
}

TEST_F(Run, OtherConflictsDuringTheRunHaveTheirOwnWords)
{
    writeWith(writerThatThrows([] {
        throw ProductionError{
            ProductionError::Conflicts{{{ProductionConflict::Kind::duplicate, QStringLiteral("a.pdf")}}}};
    }));
    addPdfs({"a.pdf"});
    stampAndWait();
    EXPECT_EQ(model->problem(),
              QStringLiteral("Some files in the output folder have the same names. Nothing was written; "
                             "choose another folder or another naming style."));
}

TEST_F(Run, AnIndexThatCannotBeWrittenIsTold)
{
    writeWith(writerThatThrows([] {
        throw FileError{ProductionOptions::indexName, std::make_error_code(std::errc::no_space_on_device)};
    }));
    addPdfs({"a.pdf"});
    stampAndWait();
    ASSERT_TRUE(model->problem());
    EXPECT_EQ(model->problem(),
              QStringLiteral("The production couldn’t be written: No space left on the disk. Make room, or "
                             "choose a folder on another disk."));
    EXPECT_FALSE(model->summary());
}

TEST_F(Run, AFileIsNamedWhereOnlyTheSystemsWordsSayWhyItCouldNotBeWritten)
{
    writeWith(writerThatThrows([] {
        throw FileError{ProductionOptions::indexName, std::make_error_code(std::errc::io_error)};
    }));
    addPdfs({"a.pdf"});
    stampAndWait();
    ASSERT_TRUE(model->problem());
    EXPECT_EQ(model->problem(),
              QStringLiteral("The production couldn’t be written: “Production Index.csv”: ") +
                  QString::fromLocal8Bit(strerror(EIO)));
}

TEST_F(Run, TheReasonsOfFailuresAreToldTheCommonestFirst)
{
    writeWith([this, write = writerAfterRemoving({"b.pdf", "c.pdf"})](
                  const ProductionPlan &plan, const fs::path &into, const ProductionOptions &options,
                  const Production::OnPage &onPage) {
        tests::writeFile(folder / "sources" / "a.pdf", "not a PDF");
        return write(plan, into, options, onPage);
    });
    addPdfs({"a.pdf", "b.pdf", "c.pdf", "d.pdf"});
    stampAndWait();
    ASSERT_TRUE(model->summary());
    const std::vector<FailureReason> &reasons = model->summary()->reasons;
    ASSERT_EQ(reasons.size(), 2U);
    EXPECT_EQ(reasons[0].files, 2);
    EXPECT_EQ(reasons[0].example.cause, (FailureCause{FailureCause::During::openingSource,
                                                      std::error_code(ENOENT, std::generic_category())}));
    EXPECT_EQ(reasons[1].files, 1);
    EXPECT_EQ(reasons[1].example.cause,
              (FailureCause{FailureCause::During::openingSource, FailureCause::Finding::damaged}));
}

TEST_F(Run, RunningOutOfMemoryIsTold)
{
    writeWith(writerThatThrows([] { throw std::bad_alloc(); }));
    addPdfs({"a.pdf"});
    stampAndWait();
    ASSERT_TRUE(model->problem());
    EXPECT_TRUE(model->problem()->startsWith(QStringLiteral("The production couldn’t be written: ")));
    EXPECT_FALSE(model->isRunning());
}

/// Three files of 2, 2 and 3 pages, stopped after each of their seven pages.
TEST_F(Run, CanBeStoppedAfterEveryPage)
{
    for (std::int64_t last = 1; last <= 7; ++last) {
        fs::remove_all(output);
        fs::create_directory(output);
        writeWith(writerWith([this, last](std::int64_t pages) {
            if (pages == last) {
                model->cancelRun();
            }
        }));
        model->add(std::vector{pdf("a.pdf", 2), pdf("b.pdf", 2), pdf("c.pdf", 3)});
        stampAndWait();
        const std::int64_t finished = last <= 2   ? 0
                                      : last <= 4 ? 1
                                                  : 2; // The file in progress is never finished.
        ASSERT_TRUE(model->summary()) << last;
        EXPECT_TRUE(model->summary()->cancelled) << last;
        EXPECT_EQ(model->summary()->files, finished) << last;
        EXPECT_EQ(model->summary()->pages, 2 * finished) << last;
        EXPECT_EQ(model->summary()->range, finished == 0   ? std::nullopt
                                           : finished == 1 ? std::optional(u"ABC000001 – ABC000002"_s)
                                                           : std::optional(u"ABC000001 – ABC000004"_s))
            << last;
        EXPECT_EQ(model->summary()->nextNumber, 8) << last;
        EXPECT_EQ(model->summary()->nextBates, QStringLiteral("ABC000008")) << last;
        EXPECT_FALSE(model->summary()->index) << last;
        EXPECT_EQ(model->sheet(), Sheet::result) << last;
        EXPECT_EQ(written(), (finished == 0   ? Names{}
                              : finished == 1 ? Names{"a.pdf"}
                                              : Names{"a.pdf", "b.pdf"}))
            << last;
    }
}

TEST_F(Run, AStoppedRunTellsNoNumbersOfCopiesThatHaveNone)
{
    StampSettings stamp = model->settings().stamp;
    stamp.cover = CoverOption::skipNoNumber;
    stamp.legend = u"CONFIDENTIAL"_s;
    model->setStamp(stamp);
    writeWith(writerWith([this](std::int64_t pages) {
        if (pages == 6) {
            model->cancelRun();
        }
    }));
    model->add(std::vector{pdf("a.pdf", 3), pdf("b.pdf", 2), pdf("c.pdf", 3)});
    stampAndWait();
    ASSERT_TRUE(model->summary());
    EXPECT_EQ(model->summary()->files, 2);
    EXPECT_EQ(model->summary()->range, u"ABC000001 – ABC000003"_s);
}

TEST_F(Run, AStopOfOneRunDoesNotStopTheNext)
{
    addPdfs({"a.pdf"});
    model->cancelRun();
    stampAndWait();
    EXPECT_FALSE(model->summary()->cancelled);
}

TEST_F(Run, WhatChangesMeanwhileChangesNothingOfIt)
{
    Gate gate;
    int runs = 0;
    writeWith(writerWith([&](std::int64_t pages) {
        if (pages == 1) {
            ++runs;
            gate.pass();
        }
    }));
    addPdfs({"a.pdf", "b.pdf"}, 2);
    model->setOutputFolder(output);
    model->stamp();
    gate.awaitArrival();
    EXPECT_TRUE(model->isRunning());
    model->removeAll();
    setStart(900);
    model->setOutputFolder(folder / "elsewhere");
    counts->take();
    model->stamp();
    model->stamp(true);
    EXPECT_EQ(counts->take(), Counts());
    gate.open();
    EXPECT_TRUE(waitUntil([this] { return !model->isRunning(); }));
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(written(), (Names{"Production Index.csv", "a.pdf", "b.pdf"}));
    EXPECT_EQ(model->summary()->range, QStringLiteral("ABC000001 – ABC000004"));
    EXPECT_EQ(model->summary()->folder, output);
    EXPECT_NE(tests::textOfPage(output / "b.pdf", 2).find("ABC000004"), std::string::npos);
}

TEST_F(Run, QuittingStopsItAndLeavesNothingHalfWritten)
{
    Gate gate;
    writeWith(writerWith([&](std::int64_t pages) {
        if (pages == 3) {
            gate.pass();
        }
    }));
    addPdfs({"a.pdf", "b.pdf"}, 2);
    model->setOutputFolder(output);
    model->stamp();
    gate.awaitArrival();
    EXPECT_EQ(written().size(), 2U); // The first copy, and the hidden file of the second.
    Q_EMIT qGuiApp->aboutToQuit({});
    gate.open();
    counts.reset();
    model.reset();
    EXPECT_EQ(written(), (Names{"a.pdf"}));
}

TEST_F(Run, IsStoppedByAModelThatGoesAndByQuitting)
{
    for (const bool isQuitting : {false, true}) {
        bool isStopped = false;
        writeWith([&isStopped](const ProductionPlan &, const fs::path &, const ProductionOptions &,
                               const Production::OnPage &onPage) -> ProductionResult {
            constexpr int most = 2000; // Limits the test if nothing stops the run.
            for (int page = 1; page <= most && !isStopped; ++page) {
                isStopped = !onPage(page);
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
            return {};
        });
        addPdfs({"a.pdf"});
        model->setOutputFolder(output);
        model->stamp();
        if (isQuitting) {
            Q_EMIT qGuiApp->aboutToQuit({});
            EXPECT_TRUE(waitUntil([this] { return !model->isRunning(); }));
        }
        counts.reset();
        model.reset();
        EXPECT_TRUE(isStopped) << (isQuitting ? "by quitting" : "by going");
    }
}

TEST_F(Run, AFileThatFailsTwiceIsNamedOnce)
{
    std::vector<SourceFile> sources(2);
    for (SourceFile &source : sources) {
        source.id = QUuid::createUuid();
        source.name = QStringLiteral("a.pdf");
        source.pageCount = 1;
    }
    ProductionResult result;
    result.failures.insert(QStringLiteral("a.pdf"), StampError::unreadable(QStringLiteral("a.pdf")));
    EXPECT_EQ(RunSummary::of(result, ProductionPlan(sources, {}), output).failures,
              QStringList(QStringLiteral("a.pdf")));
}

TEST_F(Run, TheNextProductionNeedsNoUndo)
{
    EXPECT_EQ(model->undoManager(), &undo);
    model->setUndoManager(nullptr);
    EXPECT_EQ(model->undoManager(), nullptr);
    addPdfs({"a.pdf"});
    stampAndWait();
    model->startNextProduction();
    EXPECT_TRUE(model->sources().empty());
    EXPECT_EQ(undo.count(), 0);
}

TEST_F(Run, TheNextProductionGoesOnWithTheNumbers)
{
    addPdfs({"a.pdf"}, 12);
    model->setSelection({idOf("a.pdf")});
    setStart(109);
    stampAndWait();
    ASSERT_EQ(model->summary()->nextNumber, 121);
    const int undoSteps = undo.count();
    const std::int64_t check = model->folderCheck();
    model->startNextProduction();
    EXPECT_EQ(model->settings().stamp.startNumber, 121);
    EXPECT_EQ(anotherModel()->settings().stamp.startNumber, 121);
    EXPECT_TRUE(model->sources().empty());
    EXPECT_TRUE(model->selection().isEmpty());
    EXPECT_EQ(model->folderCheck(), check + 1);
    EXPECT_EQ(undo.count(), undoSteps);
    EXPECT_TRUE(model->summary());
}

TEST_F(Run, AFullSeriesDoesNotGoOn)
{
    for (const auto &[start, isFull] :
         {std::pair{999'999'997, false}, {999'999'998, true}, {999'999'999, true}}) {
        addPdfs({"a.pdf"}, 2);
        setStart(start);
        fs::remove_all(output);
        fs::create_directory(output);
        stampAndWait();
        ASSERT_EQ(model->summary()->nextNumber, start + 2);
        EXPECT_EQ(model->summary()->isSeriesFull(), isFull);
        ASSERT_TRUE(waitUntil([this] { return !model->hasPreviewTask(); }));
        model->startNextProduction();
        EXPECT_TRUE(model->hasPreviewTask());
        EXPECT_EQ(model->settings().stamp.startNumber, isFull ? start : start + 2);
        EXPECT_TRUE(model->sources().empty());
    }
}

TEST_F(Run, WithoutASummaryThereIsNoNextProduction)
{
    addPdfs({"a.pdf"});
    counts->take();
    model->startNextProduction();
    EXPECT_EQ(counts->take(), Counts());
}

} // namespace tallyfold
