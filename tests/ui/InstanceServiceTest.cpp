#include "ui/shell/InstanceService.h"

#include "tests/ui/SessionBus.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

#include <gtest/gtest.h>

#include <memory>

namespace tallyfold {

namespace {

using Files = std::vector<std::filesystem::path>;

const QString id = QStringLiteral("example.tallyfold.Test");

/// Hands `files` over from a thread of its own, as another program does, while this one answers.
bool handOverFromElsewhere(const tests::SessionBus &bus, const Files &files)
{
    bool isAnswered = false;
    const std::unique_ptr<QThread> other(QThread::create([&] {
        InstanceService service(bus.connection(QStringLiteral("other")), id);
        EXPECT_EQ(service.role(), InstanceService::Role::other);
        isAnswered = service.handOver(files);
    }));
    other->start();
    QElapsedTimer timer;
    timer.start();
    while (!other->isFinished() && timer.elapsed() < 60'000) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    other->wait();
    QDBusConnection::disconnectFromBus(QStringLiteral("other"));
    return isAnswered;
}

class OneInstance : public testing::Test {
protected:
    OneInstance()
    {
        EXPECT_TRUE(bus.isRunning());
    }
    ~OneInstance() override
    {
        QDBusConnection::disconnectFromBus(QStringLiteral("first"));
    }

    tests::SessionBus bus;
};

} // namespace

TEST_F(OneInstance, ASecondStartHandsItsFilesToTheFirst)
{
    InstanceService first(bus.connection(QStringLiteral("first")), id);
    ASSERT_EQ(first.role(), InstanceService::Role::first);
    Files opened;
    QObject::connect(&first, &InstanceService::opened, [&](const Files &files) { opened = files; });
    const Files files{"/a b.pdf", "/names\xff\n.pdf"};
    EXPECT_TRUE(handOverFromElsewhere(bus, files));
    EXPECT_EQ(opened, files);
}

TEST_F(OneInstance, ASecondStartWithoutFilesBringsTheFirstForward)
{
    InstanceService first(bus.connection(QStringLiteral("first")), id);
    int activations = 0;
    QString seen;
    QObject::connect(&first, &InstanceService::activated, [&](const QString &token) {
        ++activations;
        seen = token;
    });
    qputenv("XDG_ACTIVATION_TOKEN", "let me");
    EXPECT_TRUE(handOverFromElsewhere(bus, {}));
    qunsetenv("XDG_ACTIVATION_TOKEN");
    EXPECT_EQ(activations, 1);
    EXPECT_EQ(seen, QStringLiteral("let me"));
}

TEST_F(OneInstance, AFirstThatIsGoneLeavesThePlaceToTheNext)
{
    {
        const InstanceService first(bus.connection(QStringLiteral("first")), id);
        EXPECT_EQ(first.role(), InstanceService::Role::first);
        QDBusConnection::disconnectFromBus(QStringLiteral("first"));
    }
    const InstanceService next(bus.connection(QStringLiteral("first")), id);
    EXPECT_EQ(next.role(), InstanceService::Role::first);
}

TEST(InstanceWithoutABus, RunsByItself)
{
    const InstanceService service(QDBusConnection(QStringLiteral("none")), id);
    EXPECT_EQ(service.role(), InstanceService::Role::alone);
}

} // namespace tallyfold
