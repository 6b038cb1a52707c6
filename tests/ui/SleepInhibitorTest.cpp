#include "ui/desktop/SleepInhibitor.h"

#include "tests/app/Gate.h"
#include "tests/ui/FakeServices.h"
#include "tests/ui/SessionBus.h"
#include "tests/ui/WindowFixture.h"

#include <optional>

namespace tallyfold {

namespace {

/// The application with a file to stamp, and a portal on a bus of its own.
class SleepInhibitorTest : public tests::WindowFixture {
protected:
    SleepInhibitorTest()
    {
        EXPECT_TRUE(bus.isRunning());
    }
    ~SleepInhibitorTest() override
    {
        inhibitor.reset();
        QDBusConnection::disconnectFromBus(QStringLiteral("portal"));
        QDBusConnection::disconnectFromBus(QStringLiteral("program"));
    }

    [[nodiscard]] bool hasPortal()
    {
        return portal.takePlaceOn(bus.connection(QStringLiteral("portal")));
    }
    void start()
    {
        addPdfs({"a.pdf"}, 2);
        model().setOutputFolder(output);
        inhibitor.emplace(model(), bus.connection(QStringLiteral("program")));
        model().stamp();
    }
    bool ends()
    {
        return waitUntil([this] { return !model().isRunning(); });
    }

    tests::SessionBus bus;
    tests::FakeInhibitPortal portal;
    std::optional<SleepInhibitor> inhibitor;
};

} // namespace

TEST_F(SleepInhibitorTest, SleepIsKeptOffFromTheStartOfARunToItsEnd)
{
    ASSERT_TRUE(hasPortal());
    tests::Gate gate;
    restart([&gate](const ProductionPlan &plan, const std::filesystem::path &into,
                    const ProductionOptions &options, const Production::OnPage &onPage) {
        gate.pass();
        return Production::write(plan, into, options, onPage);
    });
    start();
    ASSERT_TRUE(model().isRunning());
    EXPECT_TRUE(waitUntil([this] { return portal.held.size() == 1; }));
    EXPECT_EQ(portal.held.first().flags, 5U) << "suspending and logging out, and nothing else";
    EXPECT_EQ(portal.held.first().reason, QStringLiteral("A production is being written"));
    EXPECT_EQ(portal.closedCount, 0);
    gate.open();
    EXPECT_TRUE(ends());
    EXPECT_TRUE(waitUntil([this] { return portal.closedCount == 1; }));
    EXPECT_TRUE(portal.held.isEmpty());
}

TEST_F(SleepInhibitorTest, WhatIsGrantedAfterTheRunIsGivenBackAtOnce)
{
    ASSERT_TRUE(hasPortal());
    portal.answersLater = true;
    start();
    EXPECT_TRUE(ends());
    EXPECT_TRUE(waitUntil([this] { return portal.askedCount == 1; }));
    EXPECT_EQ(portal.closedCount, 0);
    portal.answerNow();
    EXPECT_TRUE(waitUntil([this] { return portal.closedCount == 1; }));
    EXPECT_TRUE(portal.held.isEmpty());
}

TEST_F(SleepInhibitorTest, ARunGoesOnWhereSleepCannotBeKeptOff)
{
    ASSERT_TRUE(hasPortal());
    portal.refuses = true;
    start();
    EXPECT_TRUE(ends());
    EXPECT_TRUE(waitUntil([this] { return portal.askedCount == 1; }));
    EXPECT_TRUE(std::filesystem::exists(output / "a.pdf"));
}

TEST_F(SleepInhibitorTest, ARunGoesOnWhereThereIsNoPortal)
{
    start();
    EXPECT_TRUE(ends());
    EXPECT_TRUE(std::filesystem::exists(output / "a.pdf"));
}

} // namespace tallyfold
