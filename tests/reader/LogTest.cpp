#include "pdf/viewing/ReaderMessages.h"
#include "pdf/viewing/ReaderProcess.h"
#include "reader/PopplerReader.h"
#include "tests/support/HeardLog.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <string>
#include <unistd.h>

namespace tallyfold::reader {

namespace {

/// What the reader process that is installed prints where it is to open what is no PDF and the program's
/// logging rules are `rules`.
std::string printedByProcess(const char *rules)
{
    std::array<int, 2> ends{};
    EXPECT_EQ(::pipe(ends.data()), 0);
    const int before = ::dup(STDERR_FILENO);
    ::dup2(ends[1], STDERR_FILENO);
    ::setenv("QT_LOGGING_RULES", rules, 1);
    pdf::ReaderMessages::Writer request;
    request.put(pdf::ReaderMessages::Request::open);
    request.put(0);
    {
        pdf::ReaderProcess process;
        EXPECT_TRUE(process.ask(request.bytes(), ends[0])); // A pipe is no file that could be opened.
    }
    ::unsetenv("QT_LOGGING_RULES");
    ::dup2(before, STDERR_FILENO);
    ::close(before);
    ::close(ends[1]);
    std::string printed;
    std::array<char, 1000> piece{};
    for (ssize_t count = 0; (count = ::read(ends[0], piece.data(), piece.size())) > 0;) {
        printed.append(piece.data(), static_cast<std::size_t>(count));
    }
    ::close(ends[0]);
    return printed;
}

void openNothing()
{
    EXPECT_EQ(openWithPoppler("/nowhere/secret.pdf"), nullptr);
}

} // namespace

TEST(ReaderLog, TellsWhyNothingIsRead)
{
    EXPECT_EQ(tests::heard(QStringLiteral("tallyfold.reader=true"), openNothing),
              QStringList(QStringLiteral("tallyfold.reader: Poppler cannot open a document")));
    EXPECT_EQ(tests::heard(tests::nothingAsked, openNothing), QStringList());
}

TEST(ReaderLog, IsHeardFromInsideOfTheSandbox)
{
    EXPECT_EQ(printedByProcess("tallyfold.reader=true"),
              "tallyfold.reader: Poppler cannot open a document\n");
    EXPECT_EQ(printedByProcess(""), "");
}

} // namespace tallyfold::reader
