#include "pdf/viewing/ReaderProcess.h"

#include "pdf/viewing/ReaderMessages.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <future>
#include <stop_token>
#include <thread>
#include <unistd.h>

namespace tallyfold::pdf {

namespace fs = std::filesystem;
using tests::TemporaryFolder;

namespace {

/// Long enough for a shell to start on a busy machine, short where the test is that nothing comes.
constexpr std::chrono::milliseconds patient{30'000};
constexpr std::chrono::milliseconds brief{50};

/// A reader that is a shell script. The socket is its standard input, for reading and writing.
ReaderProcess::Program script(const TemporaryFolder &folder, const std::string &commands,
                              std::chrono::milliseconds maxAnswerTime = patient)
{
    const fs::path path = folder / "reader";
    tests::writeFile(path, "#!/bin/sh\n" + commands + "\n");
    fs::permissions(path, fs::perms::owner_all);
    return {path, maxAnswerTime};
}

/// What the reader answers; nothing when there is no answer.
std::string answerOf(ReaderProcess &process, const std::string &request = "question")
{
    return process.ask(request, -1).value_or("none");
}

constexpr const char *echo = "exec cat <&0 >&0";

} // namespace

TEST(ReaderProcess, AnAnswerComesBack)
{
    const TemporaryFolder folder;
    ReaderProcess process(script(folder, echo));
    EXPECT_EQ(answerOf(process, "one"), "one");
    EXPECT_EQ(answerOf(process, std::string(300'000, 'x')).size(), 300'000U);
}

TEST(ReaderProcess, AProgramThatIsMissingGivesNoAnswer)
{
    ReaderProcess process({"/nowhere/reader", patient});
    EXPECT_EQ(answerOf(process), "none");
    EXPECT_EQ(answerOf(process), "none");
}

TEST(ReaderProcess, OneThatCrashesIsStartedAnewForTheNextQuestion)
{
    const TemporaryFolder folder;
    const std::string marker = (folder / "crashed").string();
    ReaderProcess process(
        script(folder, "if [ ! -e " + marker + " ]; then : > " + marker + "; kill -SEGV $$; fi\n" + echo));
    EXPECT_EQ(answerOf(process), "none");
    EXPECT_TRUE(fs::exists(marker));
    EXPECT_EQ(answerOf(process, "again"), "again");
}

TEST(ReaderProcess, OneThatHangsIsEndedInTime)
{
    const TemporaryFolder folder;
    const std::string marker = (folder / "identity").string();
    ReaderProcess process(script(folder, "echo $$ > " + marker + "\nexec sleep 1000", brief));
    // The first question may run out of time before the script has written who it is.
    while (!fs::exists(marker) || fs::file_size(marker) == 0) {
        EXPECT_EQ(answerOf(process), "none");
    }
    const int identity = std::stoi(tests::readFile(marker));
    EXPECT_EQ(::kill(identity, 0), -1) << "it still runs";
}

TEST(ReaderProcess, OneThatIsGivenUpIsEndedAtOnceAndStartedAnew)
{
    const TemporaryFolder folder;
    const std::string marker = (folder / "identity").string();
    ReaderProcess process(script(folder,
                                 "if [ -e " + marker + " ]; then " + echo + "; fi\necho $$ > " + marker +
                                     ".new\nmv " + marker + ".new " + marker + "\nexec sleep 1000",
                                 std::chrono::hours(1)));
    std::stop_source givenUp;
    auto asked =
        std::async(std::launch::async, [&] { return process.ask("question", -1, givenUp.get_token()); });
    while (!fs::exists(marker)) {
        std::this_thread::yield();
    }
    const int identity = std::stoi(tests::readFile(marker));
    givenUp.request_stop();
    const bool hasEnded = asked.wait_for(patient) == std::future_status::ready;
    EXPECT_TRUE(hasEnded);
    if (!hasEnded) {
        ::kill(identity, SIGKILL);
    }
    EXPECT_FALSE(asked.get());
    EXPECT_EQ(::kill(identity, 0), -1) << "it still runs";
    EXPECT_FALSE(process.ask("question", -1, givenUp.get_token())) << "nobody wants to know";
    EXPECT_EQ(answerOf(process, "again"), "again");
}

TEST(ReaderProcess, AStopAfterTheAnswerTakesNothingBack)
{
    const TemporaryFolder folder;
    ReaderProcess process(script(folder, echo));
    std::stop_source givenUp;
    EXPECT_EQ(process.ask("one", -1, givenUp.get_token()), "one");
    givenUp.request_stop();
    EXPECT_EQ(answerOf(process, "two"), "two") << "by the same process";
}

TEST(ReaderProcess, AnAnswerThatBreaksOffIsNone)
{
    const TemporaryFolder folder;
    ReaderProcess process(script(folder, "printf '\\010\\000\\000\\000four' >&0"));
    EXPECT_EQ(answerOf(process), "none");
}

TEST(ReaderProcess, AnAnswerThatSaysItIsEndlessIsNone)
{
    const TemporaryFolder folder;
    ReaderProcess process(script(folder, "printf '\\377\\377\\377\\377' >&0; exec sleep 1000"));
    EXPECT_EQ(answerOf(process), "none"); // At once: nobody waits for four gigabytes.
}

TEST(ReaderProcess, AnOpenFileGoesAlong)
{
    const TemporaryFolder folder;
    ReaderProcess process(script(folder, echo));
    tests::writeFile(folder / "file", "content");
    const int file = ::open((folder / "file").c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_GE(file, 0);
    EXPECT_EQ(process.ask("with a file", file), "with a file");
    EXPECT_EQ(::close(file), 0);
}

TEST(ReaderProgram, IsTheOneBesideTheProgramElseTheOneInstalledWithIt)
{
    const TemporaryFolder folder;
    const fs::path program = folder / "usr/bin/program";
    const fs::path beside = folder / "usr/bin/tallyfold-reader";
    const fs::path helper =
        (folder / "usr/bin" / TALLYFOLD_READER_FROM_PROGRAM / "tallyfold-reader").lexically_normal();
    for (const fs::path &path : {beside, helper}) {
        fs::create_directories(path.parent_path());
        tests::writeFile(path, "");
    }
    EXPECT_NE(beside, helper);
    EXPECT_EQ(ReaderProcess::Program::of(program).path, beside);
    fs::remove(beside);
    EXPECT_EQ(ReaderProcess::Program::of(program).path, helper);
}

TEST(ReaderMessages, WhatIsPutIsTaken)
{
    ReaderMessages::Writer writer;
    writer.put(42);
    writer.putText(QStringLiteral("Łódź 🔒"));
    writer.put(1.5);
    ReaderMessages::Reader reader(writer.bytes());
    EXPECT_EQ(reader.take<int>(), 42);
    EXPECT_EQ(reader.takeText(), QStringLiteral("Łódź 🔒"));
    EXPECT_EQ(reader.take<double>(), 1.5);
    EXPECT_TRUE(reader.isSound());
}

TEST(ReaderMessages, WhatIsNotThereIsNoticed)
{
    ReaderMessages::Writer writer;
    writer.putText(QStringLiteral("some text"));
    for (std::size_t size = 0; size < writer.bytes().size(); ++size) {
        ReaderMessages::Reader reader(writer.bytes().substr(0, size));
        EXPECT_TRUE(reader.takeText().isEmpty()) << size;
        EXPECT_FALSE(reader.isSound()) << size;
    }
    ReaderMessages::Reader empty({});
    EXPECT_EQ(empty.take<int>(), 0);
    EXPECT_FALSE(empty.isSound());
}

} // namespace tallyfold::pdf
