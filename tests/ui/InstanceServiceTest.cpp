#include "ui/desktop/InstanceService.h"

#include "tests/support/Waiting.h"
#include "tests/ui/SessionBus.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QSemaphore>
#include <QThread>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace tallyfold {

namespace {

using Files = std::vector<std::filesystem::path>;

const QString id = QStringLiteral("example.tallyfold.Test");

/// Hands `files` over from a thread of its own, as another program does, while this one answers.
bool handOverFromElsewhere(
    const tests::SessionBus &bus, const Files &files, const std::function<void()> &whenAnswered = [] {})
{
    bool isAnswered = false;
    const std::unique_ptr<QThread> other(QThread::create([&] {
        InstanceService service(bus.connection(QStringLiteral("other")), id);
        EXPECT_EQ(service.role(), InstanceService::Role::other);
        isAnswered = service.handOver(files);
        whenAnswered();
    }));
    other->start();
    EXPECT_TRUE(tests::waitUntil([&] { return other->isFinished(); }));
    other->wait();
    QDBusConnection::disconnectFromBus(QStringLiteral("other"));
    return isAnswered;
}

/// Asks the program for `method` as a desktop does, and gives the type of the answer.
QDBusMessage::MessageType askAsADesktop(const tests::SessionBus &bus, const QString &method,
                                        const QVariantList &arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(id, QStringLiteral("/example/tallyfold/Test"),
                                                       QStringLiteral("org.freedesktop.Application"), method);
    call.setArguments(arguments);
    const QDBusPendingCall answer = bus.connection(QStringLiteral("desktop")).asyncCall(call);
    EXPECT_TRUE(tests::waitUntil([&] { return answer.isFinished(); }));
    QDBusConnection::disconnectFromBus(QStringLiteral("desktop"));
    return answer.reply().type();
}

const QVariantMap withToken{{QStringLiteral("desktop-startup-id"), QStringLiteral("some id")},
                            {QStringLiteral("activation-token"), QStringLiteral("let me")}};

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
    EXPECT_TRUE(tests::waitUntil([&] { return !opened.empty(); }));
    EXPECT_EQ(opened, files);
}

TEST_F(OneInstance, ASecondStartIsAnsweredBeforeItsFilesAreRead)
{
    InstanceService first(bus.connection(QStringLiteral("first")), id);
    QSemaphore answered;
    bool wasAnswered = false;
    QObject::connect(&first, &InstanceService::opened,
                     [&] { wasAnswered = answered.tryAcquire(1, 60'000); }); // Reads for a long time.
    EXPECT_TRUE(handOverFromElsewhere(bus, {"/a.pdf"}, [&] { answered.release(); }));
    EXPECT_TRUE(tests::waitUntil([&] { return wasAnswered; }));
}

TEST_F(OneInstance, ADesktopOpensFiles)
{
    InstanceService first(bus.connection(QStringLiteral("first")), id);
    Files opened;
    QString seen;
    QObject::connect(&first, &InstanceService::opened, [&](const Files &files, const QString &token) {
        opened = files;
        seen = token;
    });
    const QStringList uris{QStringLiteral("file:///a%20b.pdf"), QStringLiteral("https://example.org/c.pdf"),
                           QStringLiteral("file:///%FF.pdf")};
    EXPECT_EQ(askAsADesktop(bus, QStringLiteral("Open"), {uris, withToken}), QDBusMessage::ReplyMessage);
    EXPECT_TRUE(tests::waitUntil([&] { return !opened.empty(); }));
    EXPECT_EQ(opened, Files({"/a b.pdf", "/\xff.pdf"}));
    EXPECT_EQ(seen, QStringLiteral("let me"));
}

TEST_F(OneInstance, ADesktopActivatesTheProgramAndItsActions)
{
    InstanceService first(bus.connection(QStringLiteral("first")), id);
    QStringList tokens;
    QObject::connect(&first, &InstanceService::activated,
                     [&](const QString &token) { tokens.append(token); });
    EXPECT_EQ(askAsADesktop(bus, QStringLiteral("Activate"), {QVariantMap()}), QDBusMessage::ReplyMessage);
    EXPECT_EQ(askAsADesktop(bus, QStringLiteral("ActivateAction"),
                            {QStringLiteral("some"), QVariantList{QStringLiteral("one")}, withToken}),
              QDBusMessage::ReplyMessage);
    EXPECT_TRUE(tests::waitUntil([&] { return tokens.size() == 2; }));
    EXPECT_EQ(tokens, QStringList({QString(), QStringLiteral("let me")}));
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
    EXPECT_TRUE(tests::waitUntil([&] { return activations > 0; }));
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

TEST_F(OneInstance, OneThatEndsGivesItsPlaceBackWhileItIsStillThere)
{
    InstanceService first(bus.connection(QStringLiteral("first")), id);
    ASSERT_EQ(first.role(), InstanceService::Role::first);
    first.giveBack();
    EXPECT_EQ(first.role(), InstanceService::Role::alone);
    const InstanceService next(bus.connection(QStringLiteral("next")), id);
    EXPECT_EQ(next.role(), InstanceService::Role::first);
    first.giveBack(); // It has nothing any more that it could give back.
    const InstanceService third(bus.connection(QStringLiteral("third")), id);
    EXPECT_EQ(third.role(), InstanceService::Role::other);
    QDBusConnection::disconnectFromBus(QStringLiteral("next"));
    QDBusConnection::disconnectFromBus(QStringLiteral("third"));
}

TEST_F(OneInstance, AStartThatMeetsOneThatEndsTakesItsPlace)
{
    InstanceService first(bus.connection(QStringLiteral("first")), id);
    InstanceService other(bus.connection(QStringLiteral("other")), id);
    ASSERT_EQ(other.role(), InstanceService::Role::other);
    first.giveBack(); // Between its start and its handing over.
    EXPECT_FALSE(other.handOver({"/a.pdf"}));
    EXPECT_EQ(other.role(), InstanceService::Role::first);
    const InstanceService third(bus.connection(QStringLiteral("third")), id);
    EXPECT_EQ(third.role(), InstanceService::Role::other) << "there are not two";
    QDBusConnection::disconnectFromBus(QStringLiteral("other"));
    QDBusConnection::disconnectFromBus(QStringLiteral("third"));
}

TEST(InstanceWithoutABus, RunsByItself)
{
    const InstanceService service(QDBusConnection(QStringLiteral("none")), id);
    EXPECT_EQ(service.role(), InstanceService::Role::alone);
}

} // namespace tallyfold
