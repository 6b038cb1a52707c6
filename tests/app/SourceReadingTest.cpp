#include "app/SourceReading.h"

#include "core/SourceCollector.h"
#include "tests/app/HeldReader.h"
#include "tests/support/Sample.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Waiting.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <iostream>
#include <thread>

namespace tallyfold {

namespace fs = std::filesystem;
using Paths = std::vector<fs::path>;
using Progress = SourceReading::Progress;

namespace {

/// A reader that opens nothing, for files that need not be there.
KnownSources::Reading named(const fs::path &location)
{
    SourceFile source;
    source.id = QUuid::createUuid();
    source.url = location;
    return {source, {}};
}

SourceReading::Find giving(const Paths &paths)
{
    return [paths](const std::stop_token &) { return paths; };
}

Paths locationsOf(const std::vector<KnownSources::Reading> &readings)
{
    Paths paths;
    for (const KnownSources::Reading &reading : readings) {
        paths.push_back(reading.source.url);
    }
    return paths;
}

Paths numbered(int count)
{
    Paths paths;
    for (int number = 1; number <= count; ++number) {
        paths.emplace_back(std::to_string(number) + ".pdf");
    }
    return paths;
}

void awaitThoseLeft()
{
    EXPECT_TRUE(tests::waitUntil([] { return !LooseTask::isAnyLeft(); }));
}

} // namespace

TEST(SourceReading, GivesWhatWasReadInTheOrderOfTheFiles)
{
    for (const int threads : {1, 2, 5}) {
        const Paths paths = numbered(500);
        SourceReading reading(giving(paths), named, threads);
        reading.wait();
        EXPECT_TRUE(reading.isOver());
        EXPECT_EQ(reading.progress(), (Progress{500, 500}));
        EXPECT_EQ(locationsOf(reading.take()), paths) << threads;
    }
    EXPECT_FALSE(LooseTask::isAnyLeft()) << "threads that have nothing left to do are waited for";
}

TEST(SourceReading, OfNoFilesIsOverOnceThatIsKnown)
{
    SourceReading reading(giving({}), named);
    reading.wait();
    EXPECT_EQ(reading.progress(), (Progress{0, 0}));
    EXPECT_TRUE(reading.take().empty());
}

TEST(SourceReading, ReadsTheNextFilesWhileOneTakesLong)
{
    tests::Gate gate;
    std::atomic<int> others = 0;
    SourceReading reading(
        giving(numbered(4)),
        [&](const fs::path &location) {
            location == "1.pdf" ? gate.pass() : void(++others);
            return named(location);
        },
        2);
    EXPECT_TRUE(tests::waitUntil([&] { return others == 3; }));
    EXPECT_FALSE(reading.isOver());
    EXPECT_EQ(reading.progress(), (Progress{4, 0})) << "the first is still to come";
    gate.open();
    reading.wait();
    EXPECT_EQ(locationsOf(reading.take()), numbered(4));
}

TEST(SourceReading, ThatIsStoppedGivesTheFirstFilesWithoutAGapAtOnce)
{
    tests::Gate gate;
    std::atomic<bool> isLastRead = false; // Like the gate, it outlives the thread that is left.
    {
        SourceReading reading(
            giving(numbered(5)),
            [&](const fs::path &location) {
                if (location == "3.pdf") {
                    gate.pass();
                }
                isLastRead = isLastRead || location == "5.pdf";
                return named(location);
            },
            2);
        EXPECT_TRUE(tests::waitUntil([&] { return isLastRead && reading.progress().read == 2; }));
        reading.stop();
        EXPECT_TRUE(reading.isOver());
        EXPECT_EQ(locationsOf(reading.take()), (Paths{"1.pdf", "2.pdf"}));
        EXPECT_EQ(reading.progress(), (Progress{5, 2}));
    }
    EXPECT_TRUE(LooseTask::isAnyLeft()) << "nobody waits for the one that is read";
    gate.open();
    awaitThoseLeft();
}

TEST(SourceReading, ReadsNothingMoreOnceItIsStopped)
{
    tests::Gate gate;
    std::atomic<int> begun = 0;
    {
        SourceReading reading(
            giving(numbered(100)),
            [&](const fs::path &location) {
                ++begun;
                gate.pass();
                return named(location);
            },
            2);
        gate.awaitArrival();
    }
    gate.open();
    awaitThoseLeft();
    EXPECT_LE(begun, 2);
}

TEST(SourceReading, ThatIsStoppedWhileFilesAreLookedForKnowsOfNone)
{
    tests::Gate gate;
    std::atomic<bool> wasToldToEnd = false;
    {
        SourceReading reading(
            [&](const std::stop_token &stopped) {
                gate.pass();
                wasToldToEnd = stopped.stop_requested();
                return numbered(3);
            },
            [](const fs::path &location) {
                ADD_FAILURE() << location << " is read";
                return named(location);
            });
        gate.awaitArrival();
        EXPECT_EQ(reading.progress(), (Progress{std::nullopt, 0}));
        EXPECT_FALSE(reading.waitFor(std::chrono::milliseconds(1)));
        reading.stop();
        EXPECT_TRUE(reading.isOver());
        EXPECT_TRUE(reading.take().empty());
    }
    gate.open();
    awaitThoseLeft();
    EXPECT_TRUE(wasToldToEnd);
}

TEST(SourceReading, UsesNoMoreThreadsThanThereAreProcessors)
{
    EXPECT_GE(SourceReading::usualThreads(), 1);
    EXPECT_LE(SourceReading::usualThreads(), 2);
    if (std::thread::hardware_concurrency() == 1) {
        EXPECT_EQ(SourceReading::usualThreads(), 1);
    }
}

TEST(SourceReading, TwoThreadsFindWhatOneFinds)
{
    const tests::TemporaryFolder folder;
    std::vector<std::string> names;
    for (int number = 0; number < 40; ++number) {
        names.push_back(std::to_string(number) + ".pdf");
    }
    (void)tests::writeSamples(folder.path(), names, 2);
    tests::writeFile(folder / "broken.pdf", "no PDF");
    Paths places{folder.path(), TALLYFOLD_SAMPLES};
    if (const char *corpus = std::getenv("TALLYFOLD_CORPUS")) {
        places.emplace_back(corpus);
    } else {
        std::cout << "TALLYFOLD_CORPUS is not set to a folder of PDF files: the samples alone are read.\n";
    }
    const Paths locations = collectPdfs(places).locations;
    ASSERT_GE(locations.size(), 45U);
    const auto readBy = [&](int threads) {
        SourceReading reading(giving(locations), KnownSources::read, threads);
        reading.wait();
        return reading.take();
    };
    const std::vector<KnownSources::Reading> alone = readBy(1);
    std::vector<KnownSources::Reading> together = readBy(2);
    ASSERT_EQ(alone.size(), locations.size());
    ASSERT_EQ(together.size(), locations.size());
    for (std::size_t place = 0; place < locations.size(); ++place) {
        EXPECT_NE(together[place].source.id, alone[place].source.id);
        together[place].source.id = alone[place].source.id;
        EXPECT_EQ(together[place].source, alone[place].source) << locations[place];
        EXPECT_EQ(together[place].state, alone[place].state) << locations[place];
    }
}

} // namespace tallyfold
