#include "ui/shell/CommandLine.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace tallyfold {

namespace {

using Task = CommandLine::Task;
using Files = std::vector<std::filesystem::path>;

CommandLine lineOf(std::initializer_list<const char *> arguments)
{
    return CommandLine::of(std::span(arguments.begin(), arguments.size()));
}

} // namespace

TEST(CommandLine, NamesAreFilesAndAbsolute)
{
    const CommandLine line = lineOf({"/a b.pdf", "c\xff.pdf"});
    EXPECT_EQ(line.task, Task::window);
    EXPECT_EQ(line.files, Files({"/a b.pdf", std::filesystem::current_path() / "c\xff.pdf"}));
    EXPECT_EQ(lineOf({}).task, Task::window);
    EXPECT_EQ(lineOf({}).files, Files());
}

TEST(CommandLine, NamesThatLookLikeOptionsFollowTwoDashes)
{
    const CommandLine line = lineOf({"--", "--help", "--", "-x"});
    const std::filesystem::path here = std::filesystem::current_path();
    EXPECT_EQ(line.task, Task::window);
    EXPECT_EQ(line.files, Files({here / "--help", here / "--", here / "-x"}));
}

TEST(CommandLine, OptionsAreKnown)
{
    EXPECT_EQ(lineOf({"--help"}).task, Task::help);
    EXPECT_EQ(lineOf({"-h"}).task, Task::help);
    EXPECT_EQ(lineOf({"--version"}).task, Task::version);
    EXPECT_EQ(lineOf({"-v"}).task, Task::version);
    EXPECT_EQ(lineOf({"--service"}).task, Task::service);
}

TEST(CommandLine, AnUnknownOptionIsNamedAndOpensNothing)
{
    const CommandLine line = lineOf({"--service", "--colour", "/a.pdf", "-x"});
    EXPECT_EQ(line.task, Task::usage);
    EXPECT_EQ(line.unknown, "--colour");
}

TEST(CommandLine, HelpAndVersionAreGivenWhateverElseIsThere)
{
    EXPECT_EQ(lineOf({"-platform", "offscreen", "--version", "--service"}).task, Task::version);
    EXPECT_EQ(lineOf({"--service", "/a.pdf", "--help", "--version"}).task, Task::help);
}

} // namespace tallyfold
