#include "core/Production.h"

#include "core/ProductionIndex.h"
#include "core/SourceClassifier.h"
#include "tests/support/Count.h"
#include "tests/support/FaultyCalls.h"
#include "tests/support/Sample.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <map>
#include <new>
#include <set>
#include <unistd.h>
#include <variant>

namespace tallyfold {

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;
using tests::FaultyCalls;
using tests::FileCall;
using tests::readFile;
using tests::TemporaryFolder;
using tests::writeFile;
using tests::writeSample;

namespace {

using Rule = std::function<int(const FileCall &)>;
using Names = std::set<std::string>;
/// The result of a production, or the error that it threw.
using Outcome = std::variant<ProductionResult, ProductionError, FileError>;

const Production::OnPage goOn = [](std::int64_t) { return true; };
constexpr const char *indexName = "Production Index.csv";
tests::Count faultsMade("faults made");

/// File systems, with the calls that each does not support.
const std::map<std::string, Rule> fileSystems{
    {"renames", [](const FileCall &) { return 0; }},
    {"renames, copies nothing by itself",
     [](const FileCall &call) { return call.kind == "copy" ? EXDEV : 0; }},
    {"links", [](const FileCall &call) { return call.kind == "rename" ? EINVAL : 0; }},
    {"copies", [](const FileCall &call) {
         return call.kind == "rename" ? EINVAL : call.kind == "link" ? EPERM : 0;
     }}};

/// Three sources of two pages, their plan, and their copies without faults.
class Sources {
public:
    Sources() : m_plan(planned())
    {
        const fs::path out = m_folder / "sound";
        fs::create_directory(out);
        (void)Production::write(m_plan, out, {}, goOn);
        for (const char *name : {"a.pdf", "b.pdf", "c.pdf"}) {
            m_sources[name] = readFile(m_folder / "in" / name);
            m_modified[name] = fs::last_write_time(m_folder / "in" / name);
            m_copies[name] = readFile(out / name);
        }
    }

    [[nodiscard]] const ProductionPlan &plan() const
    {
        return m_plan;
    }
    [[nodiscard]] fs::path folder() const
    {
        return m_folder / "in";
    }
    /// Expects the sources to be unchanged.
    void expectUntouched() const
    {
        for (const auto &[name, bytes] : m_sources) {
            EXPECT_EQ(readFile(m_folder / "in" / name), bytes);
            EXPECT_EQ(fs::last_write_time(m_folder / "in" / name), m_modified.at(name));
        }
    }
    [[nodiscard]] const std::map<std::string, std::string> &copies() const
    {
        return m_copies;
    }

private:
    [[nodiscard]] ProductionPlan planned() const
    {
        fs::create_directory(m_folder / "in");
        std::vector<SourceFile> sources;
        for (const char *name : {"a.pdf", "b.pdf", "c.pdf"}) {
            // One page is large enough to be copied by copy_file_range.
            const std::string padding(std::string_view(name) == "b.pdf" ? 100'000 : 0, ' ');
            writeSample(m_folder / "in" / name, 2, std::string("Original ") + name + ") Tj" + padding + "(");
            sources.push_back(classify(m_folder / "in" / name));
        }
        return {sources, {}};
    }

    TemporaryFolder m_folder;
    ProductionPlan m_plan;
    std::map<std::string, std::string> m_sources;
    std::map<std::string, fs::file_time_type> m_modified;
    std::map<std::string, std::string> m_copies;
};

Outcome outcomeOf(const ProductionPlan &plan, const fs::path &folder, files::FileCalls &calls,
                  const Production::OnPage &onPage = goOn)
{
    try {
        return Production::write(plan, folder, {}, onPage, calls);
    } catch (const ProductionError &error) {
        return error;
    } catch (const FileError &error) {
        return error;
    }
}

Names namesIn(const fs::path &folder)
{
    Names names;
    for (const fs::directory_entry &entry : fs::directory_iterator(folder)) {
        names.insert(entry.path().filename());
    }
    return names;
}

/// Expects the invariants of every production: only complete copies under their own names, no hidden files,
/// files of others unchanged, and a result and an index that match the folder.
void expectHonest(const Sources &sources, const fs::path &out, const Outcome &outcome)
{
    sources.expectUntouched();
    EXPECT_EQ(readFile(out / "stranger.txt"), "kept");
    Names names = namesIn(out);
    names.erase("stranger.txt");
    const bool hasIndex = names.erase(indexName) == 1;
    for (const std::string &name : names) {
        ASSERT_TRUE(sources.copies().contains(name)) << name;
        EXPECT_EQ(readFile(out / name), sources.copies().at(name)) << name;
    }
    QSet<QString> missing;
    for (const auto &[name, bytes] : sources.copies()) {
        if (!names.contains(name)) {
            missing.insert(QString::fromStdString(name));
        }
    }
    if (hasIndex) {
        EXPECT_EQ(readFile(out / indexName), ProductionIndex::csv(sources.plan(), missing).toStdString());
    }
    if (const auto *result = std::get_if<ProductionResult>(&outcome)) {
        Names written;
        for (const fs::path &path : result->written) {
            written.insert(path.filename());
        }
        EXPECT_EQ(written, names);
        EXPECT_EQ(QSet<QString>(result->failures.keyBegin(), result->failures.keyEnd()), missing);
        EXPECT_TRUE(hasIndex);
        EXPECT_EQ(result->index, out / indexName);
    }
}

/// The one hidden file in `folder`.
fs::path hiddenFileIn(const fs::path &folder)
{
    for (const fs::directory_entry &entry : fs::directory_iterator(folder)) {
        if (entry.path().filename().native().starts_with(".tallyfold-")) {
            return entry.path();
        }
    }
    ADD_FAILURE() << "there is no hidden file";
    return {};
}

int openDescriptors()
{
    const fs::directory_iterator list("/proc/self/fd");
    return static_cast<int>(std::distance(begin(list), end(list)));
}

/// Runs the production with the faults of `rule` in addition to those of the file system. Returns the number
/// of calls.
int runWith(const Sources &sources, const Rule &fileSystem, const Rule &rule)
{
    const TemporaryFolder folder;
    writeFile(folder / "stranger.txt", "kept");
    FaultyCalls calls;
    calls.rule = [&](const FileCall &call) {
        const int refused = fileSystem(call);
        const int fault = refused != 0 ? 0 : rule(call);
        faultsMade.add(fault != 0 ? 1 : 0);
        return refused != 0 ? refused : fault;
    };
    const int descriptors = openDescriptors();
    const Outcome outcome = outcomeOf(sources.plan(), folder.path(), calls);
    EXPECT_EQ(openDescriptors(), descriptors);
    expectHonest(sources, folder.path(), outcome);
    return static_cast<int>(calls.calls().size());
}

} // namespace

TEST(ProductionFault, TheSystemIsAskedToCopyWhatIsLargeAndOnlyThat)
{
    const Sources sources;
    const TemporaryFolder folder;
    FaultyCalls calls;
    (void)outcomeOf(sources.plan(), folder.path(), calls);
    EXPECT_EQ(std::ranges::count(calls.calls(), "copy", &FileCall::kind), 2); // Both pages of one source.
}

TEST(ProductionFault, WhicheverCallFailsOnceTheFolderTellsTheTruth)
{
    const Sources sources;
    for (const auto &[name, fileSystem] : fileSystems) {
        int count = runWith(sources, fileSystem, [](const FileCall &) { return 0; });
        for (const int error : {ENOSPC, EDQUOT, EIO}) {
            for (int place = 0; place < count; ++place) {
                SCOPED_TRACE(name + ", call " + std::to_string(place) + ", error " + std::to_string(error));
                runWith(sources, fileSystem, [&](const FileCall &call) {
                    return call.place == place && call.kind != "unlink" ? error : 0;
                });
            }
        }
    }
}

TEST(ProductionFault, WhereverTheDiskFillsUpForGoodTheFolderTellsTheTruth)
{
    const Sources sources;
    for (const auto &[name, fileSystem] : fileSystems) {
        const int count = runWith(sources, fileSystem, [](const FileCall &) { return 0; });
        for (const int error : {ENOSPC, EIO}) {
            for (int place = 0; place < count; ++place) {
                SCOPED_TRACE(name + ", call " + std::to_string(place) + ", error " + std::to_string(error));
                // Files can be deleted even from a full or faulty disk.
                runWith(sources, fileSystem, [&](const FileCall &call) {
                    return call.place >= place && call.kind != "unlink" ? error : 0;
                });
            }
        }
    }
}

TEST(ProductionFault, SignalsChangeNothing)
{
    const Sources sources;
    for (const auto &[name, fileSystem] : fileSystems) {
        SCOPED_TRACE(name);
        const TemporaryFolder folder;
        FaultyCalls calls;
        bool isInterrupted = false;
        calls.rule = [&](const FileCall &call) {
            const int refused = fileSystem(call);
            isInterrupted = refused == 0 && !isInterrupted;
            return isInterrupted ? EINTR : refused;
        };
        const Outcome outcome = outcomeOf(sources.plan(), folder.path(), calls);
        ASSERT_TRUE(std::holds_alternative<ProductionResult>(outcome));
        EXPECT_EQ(std::get<ProductionResult>(outcome).written.size(), 3U);
        EXPECT_EQ(namesIn(folder.path()), (Names{indexName, "a.pdf", "b.pdf", "c.pdf"}));
    }
}

TEST(ProductionFault, OneFullMomentFailsOneFileByItsName)
{
    const Sources sources;
    const TemporaryFolder folder;
    FaultyCalls calls;
    int writes = 0;
    calls.rule = [&](const FileCall &call) { return call.kind == "write" && ++writes == 2 ? ENOSPC : 0; };
    const Outcome outcome = outcomeOf(sources.plan(), folder.path(), calls);
    const auto &result = std::get<ProductionResult>(outcome);
    EXPECT_EQ(result.failures,
              (QMap<QString, StampError>{{u"b.pdf"_s, StampError::cannotWrite(u"b.pdf"_s)}}));
    EXPECT_EQ(result.written, (std::vector<fs::path>{folder / "a.pdf", folder / "c.pdf"}));
    EXPECT_NE(readFile(folder / indexName).find("b.pdf,,,,2,failed\r\n"), std::string::npos);
}

TEST(ProductionFault, WhatIsDamagedOnTheDiskFailsOneFileByItsName)
{
    const Sources sources;
    const std::map<std::string, std::function<void(const fs::path &)>> damages{
        {"emptied", [](const fs::path &path) { fs::resize_file(path, 0); }},
        {"cut", [](const fs::path &path) { fs::resize_file(path, fs::file_size(path) - 1); }},
        {"longer", [](const fs::path &path) { fs::resize_file(path, fs::file_size(path) + 1); }},
        {"never written",
         [](const fs::path &path) {
             writeFile(path, std::string(static_cast<std::size_t>(fs::file_size(path)), '\0'));
         }},
        {"end never written",
         [](const fs::path &path) {
             const std::uintmax_t size = fs::file_size(path);
             fs::resize_file(path, size - 100);
             fs::resize_file(path, size);
         }},
        {"gone", [](const fs::path &path) { fs::remove(path); }}};
    for (const auto &[fileSystemName, fileSystem] : fileSystems) {
        for (const auto &[name, damage] : damages) {
            SCOPED_TRACE(fileSystemName + ", " + name);
            const TemporaryFolder folder;
            writeFile(folder / "stranger.txt", "kept");
            FaultyCalls calls;
            int syncs = 0;
            calls.rule = [&](const FileCall &call) {
                if (call.kind == "syncData" && ++syncs == (fileSystemName == "copies" ? 3 : 2)) {
                    damage(hiddenFileIn(folder.path()));
                }
                return fileSystem(call);
            };
            const Outcome outcome = outcomeOf(sources.plan(), folder.path(), calls);
            expectHonest(sources, folder.path(), outcome);
            const auto &result = std::get<ProductionResult>(outcome);
            EXPECT_EQ(result.failures,
                      (QMap<QString, StampError>{{u"b.pdf"_s, StampError::cannotWrite(u"b.pdf"_s)}}));
            EXPECT_EQ(namesIn(folder.path()), (Names{indexName, "a.pdf", "c.pdf", "stranger.txt"}));
        }
    }
}

TEST(ProductionFault, ACopyThatCannotBeReadBackFailsAlone)
{
    const Sources sources;
    const TemporaryFolder folder;
    writeFile(folder / "stranger.txt", "kept");
    FaultyCalls calls;
    int copies = 0;
    calls.rule = [&](const FileCall &call) {
        copies += call.kind == "syncData" ? 1 : 0;
        return copies == 2 && call.kind == "readAt" ? EIO : 0;
    };
    const Outcome outcome = outcomeOf(sources.plan(), folder.path(), calls);
    expectHonest(sources, folder.path(), outcome);
    EXPECT_EQ(std::get<ProductionResult>(outcome).failures.keys(), QStringList{u"b.pdf"_s});
}

TEST(ProductionFault, AReadOnlyFolderFailsEveryFileAndTheIndex)
{
    // Simulated, since root may write to read-only folders.
    const Sources sources;
    const TemporaryFolder folder;
    FaultyCalls calls;
    calls.rule = [](const FileCall &call) { return call.kind == "open" && call.place > 0 ? EROFS : 0; };
    const Outcome outcome = outcomeOf(sources.plan(), folder.path(), calls);
    EXPECT_EQ(std::get<FileError>(outcome),
              (FileError{QString::fromLatin1(indexName), std::error_code(EROFS, std::generic_category())}));
    EXPECT_EQ(namesIn(folder.path()), Names());
}

TEST(ProductionFault, AnIndexThatCannotBeWrittenIsToldAndTheCopiesStay)
{
    const Sources sources;
    const TemporaryFolder folder;
    FaultyCalls calls;
    int syncs = 0;
    calls.rule = [&](const FileCall &call) { return call.kind == "syncData" && ++syncs == 4 ? ENOSPC : 0; };
    const Outcome outcome = outcomeOf(sources.plan(), folder.path(), calls);
    EXPECT_EQ(std::get<FileError>(outcome).code, std::errc::no_space_on_device);
    EXPECT_EQ(namesIn(folder.path()), (Names{"a.pdf", "b.pdf", "c.pdf"}));
}

TEST(ProductionFault, TheIndexComesAfterTheNamesOfTheCopiesAreOnTheDisk)
{
    const Sources sources;
    const TemporaryFolder folder;
    FaultyCalls calls;
    (void)outcomeOf(sources.plan(), folder.path(), calls);
    std::vector<std::string> order;
    for (const FileCall &call : calls.calls()) {
        if (call.kind == "rename" || call.kind == "sync" || call.name == indexName) {
            order.push_back(call.kind + " " + call.name);
        }
    }
    EXPECT_EQ(order, (std::vector<std::string>{"rename a.pdf", "rename b.pdf", "rename c.pdf", "sync ",
                                               std::string("rename ") + indexName, "sync "}));
}

TEST(ProductionFault, StoppingBringsTheNamesOfTheFinishedCopiesToTheDisk)
{
    const Sources sources;
    for (const int error : {0, EIO}) {
        const TemporaryFolder folder;
        FaultyCalls calls;
        calls.rule = [error](const FileCall &call) { return call.kind == "sync" ? error : 0; };
        const Outcome outcome =
            outcomeOf(sources.plan(), folder.path(), calls, [](std::int64_t pages) { return pages < 3; });
        EXPECT_EQ(std::get<ProductionError>(outcome),
                  ProductionError{ProductionError::Cancelled{{folder / "a.pdf"}}});
        EXPECT_EQ(namesIn(folder.path()), (Names{"a.pdf"}));
        EXPECT_TRUE(std::any_of(calls.calls().begin(), calls.calls().end(),
                                [](const FileCall &call) { return call.kind == "sync"; }));
    }
}

TEST(ProductionFault, AFolderThatVanishesMeanwhileFailsTheRest)
{
    const Sources sources;
    const TemporaryFolder folder;
    fs::create_directory(folder / "out");
    const Outcome outcome =
        outcomeOf(sources.plan(), folder / "out", files::FileCalls::system(), [&](std::int64_t pages) {
            if (pages == 3) {
                fs::remove_all(folder / "out");
            }
            return true;
        });
    EXPECT_EQ(std::get<FileError>(outcome).code, std::errc::no_such_file_or_directory);
    EXPECT_FALSE(fs::exists(folder / "out"));
    sources.expectUntouched();
}

TEST(ProductionFault, AFolderThatVanishesRightAfterTheCheckIsToldAsSuch)
{
    const Sources sources;
    const TemporaryFolder folder;
    FaultyCalls calls;
    calls.rule = [](const FileCall &call) { return call.place == 0 ? ENOENT : 0; };
    const Outcome outcome = outcomeOf(sources.plan(), folder.path(), calls);
    EXPECT_EQ(std::get<FileError>(outcome).code, std::errc::no_such_file_or_directory);
    EXPECT_EQ(namesIn(folder.path()), Names());
}

TEST(ProductionFault, ASourceThatCannotBeOpenedIsReportedEvenIfTheFolderFailsToo)
{
    const Sources sources;
    fs::remove(sources.folder() / "b.pdf");
    const TemporaryFolder folder;
    FaultyCalls calls;
    int made = 0;
    calls.rule = [&made](const FileCall &call) {
        // The hidden files of "a.pdf" and "c.pdf", and then that of the index.
        const bool isMade = call.kind == "open" && call.name.ends_with(".pdf") && ++made <= 3;
        return isMade ? ENOSPC : 0;
    };
    const Outcome outcome = outcomeOf(sources.plan(), folder.path(), calls);
    const auto &failures = std::get<ProductionResult>(outcome).failures;
    EXPECT_EQ(failures.keys(), (QStringList{u"a.pdf"_s, u"b.pdf"_s, u"c.pdf"_s}));
    EXPECT_EQ(failures.value(u"b.pdf"_s), StampError::unreadable(u"b.pdf"_s));
    EXPECT_TRUE(failures.value(u"c.pdf"_s).is<StampError::CannotWrite>());
    EXPECT_EQ(made, 2) << "nothing is made for a source that cannot be opened";
}

TEST(ProductionFault, APlantedLinkIsNotFollowed)
{
    const Sources sources;
    const TemporaryFolder folder;
    const fs::path victim = sources.folder() / "a.pdf";
    for (const auto &[name, fileSystem] : fileSystems) {
        SCOPED_TRACE(name);
        const fs::path out = folder / name;
        fs::create_directory(out);
        FaultyCalls calls;
        calls.rule = fileSystem;
        const Outcome outcome = outcomeOf(sources.plan(), out, calls, [&](std::int64_t pages) {
            if (pages == 3) {
                fs::create_symlink(victim, out / "b.pdf");
                fs::create_symlink("nowhere", out / "c.pdf");
            }
            return true;
        });
        const auto &result = std::get<ProductionResult>(outcome);
        EXPECT_EQ(result.failures.keys(), (QStringList{u"b.pdf"_s, u"c.pdf"_s}));
        EXPECT_EQ(namesIn(out), (Names{indexName, "a.pdf", "b.pdf", "c.pdf"}));
        EXPECT_TRUE(fs::is_symlink(out / "b.pdf"));
        EXPECT_TRUE(fs::is_symlink(out / "c.pdf"));
        EXPECT_FALSE(fs::exists(out / "nowhere"));
        sources.expectUntouched();
    }
}

TEST(ProductionFault, ASourceThatIsReplacedByADamagedOneMeanwhileFailsAlone)
{
    const TemporaryFolder folder;
    fs::create_directory(folder / "out");
    std::vector<SourceFile> found;
    for (const char *name : {"a.pdf", "b.pdf", "c.pdf"}) {
        writeSample(folder / name, 2);
        found.push_back(classify(folder / name));
    }
    const Outcome outcome = outcomeOf(ProductionPlan(found, {}), folder / "out", files::FileCalls::system(),
                                      [&](std::int64_t pages) {
                                          if (pages == 2) {
                                              writeFile(folder / "b.pdf", "no longer a document");
                                          }
                                          return true;
                                      });
    const auto &result = std::get<ProductionResult>(outcome);
    EXPECT_EQ(result.failures, (QMap<QString, StampError>{{u"b.pdf"_s, StampError::unreadable(u"b.pdf"_s)}}));
    EXPECT_EQ(namesIn(folder / "out"), (Names{indexName, "a.pdf", "c.pdf"}));
    EXPECT_EQ(result.pages, 4);
}

TEST(ProductionFault, WithoutACallbackTheProductionRunsToItsEnd)
{
    const Sources sources;
    const TemporaryFolder folder;
    const Outcome outcome = outcomeOf(sources.plan(), folder.path(), files::FileCalls::system(), {});
    EXPECT_EQ(std::get<ProductionResult>(outcome).pages, 6);
}

TEST(ProductionFault, ACopyThatThereIsNoMemoryForFailsAlone)
{
    const TemporaryFolder folder;
    writeSample(folder / "a.pdf", 1);
    writeSample(folder / "b.pdf", 1);
    fs::create_directory(folder / "out");
    const ProductionPlan plan({classify(folder / "a.pdf"), classify(folder / "b.pdf")}, StampSettings());
    FaultyCalls calls;
    int opened = 0;
    calls.rule = [&opened](const FileCall &call) {
        if (call.kind == "open" && ++opened == 2) { // The folder is the first.
            throw std::bad_alloc();
        }
        return 0;
    };
    const ProductionResult result = Production::write(plan, folder / "out", {}, goOn, calls);
    EXPECT_EQ(result.failures,
              (QMap<QString, StampError>{{u"a.pdf"_s, StampError::cannotWrite(u"a.pdf"_s)}}));
    EXPECT_EQ(result.written, (std::vector<fs::path>{folder / "out" / "b.pdf"}));
}

} // namespace tallyfold
