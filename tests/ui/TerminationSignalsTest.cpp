#include "ui/desktop/TerminationSignals.h"

#include "tests/support/Waiting.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <csignal>
#include <memory>

namespace tallyfold {

namespace {

/// What this process does when `signal` comes.
auto handlerOf(int signal)
{
    struct sigaction action {};
    EXPECT_EQ(::sigaction(signal, nullptr, &action), 0);
    return action.sa_handler;
}

/// The requests to end, and how many were received.
struct Received {
    std::unique_ptr<TerminationSignals> signals = std::make_unique<TerminationSignals>();
    int count = 0;

    Received()
    {
        QObject::connect(signals.get(), &TerminationSignals::received, [this] { ++count; });
    }
};

} // namespace

TEST(TerminationSignals, EachOfThreeIsToldWhenTheProgramLooks)
{
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        Received received;
        ASSERT_EQ(::raise(signal), 0);
        EXPECT_EQ(received.count, 0) << "not in the middle of whatever is done";
        EXPECT_TRUE(tests::waitUntil([&] { return received.count > 0; })) << signal;
        EXPECT_EQ(received.count, 1);
        ASSERT_EQ(::raise(signal), 0);
        EXPECT_TRUE(tests::waitUntil([&] { return received.count > 1; })) << "a second one is told as well";
    }
}

TEST(TerminationSignals, MoreThanAnybodyCouldNoteHoldNothingUp)
{
    Received received;
    for (int time = 0; time < 200'000; ++time) {
        ASSERT_EQ(::raise(SIGTERM), 0);
    }
    EXPECT_TRUE(tests::waitUntil([&] { return received.count > 0; }));
    EXPECT_EQ(received.count, 1);
}

TEST(TerminationSignals, WhenTheyAreGoneTheSystemDoesWhatItDid)
{
    Received received;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        EXPECT_NE(handlerOf(signal), SIG_DFL);
    }
    received.signals.reset();
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        EXPECT_EQ(handlerOf(signal), SIG_DFL);
    }
}

} // namespace tallyfold
