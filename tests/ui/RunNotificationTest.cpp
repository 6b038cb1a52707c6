#include "ui/desktop/RunNotification.h"

#include "tests/ui/FakeServices.h"
#include "tests/ui/SessionBus.h"
#include "tests/ui/WindowFixture.h"

#include <QDBusArgument>

#include <optional>

namespace tallyfold {

namespace {

/// The application with a file to stamp, and servers of notifications on a bus of its own.
class RunNotificationTest : public tests::WindowFixture {
protected:
    RunNotificationTest()
    {
        EXPECT_TRUE(bus.isRunning());
        addPdfs({"private name.pdf"}, 2);
        model().setOutputFolder(output);
    }
    ~RunNotificationTest() override
    {
        notification.reset();
        QDBusConnection::disconnectFromBus(QStringLiteral("server"));
        QDBusConnection::disconnectFromBus(QStringLiteral("program"));
    }

    QDBusConnection server()
    {
        return bus.connection(QStringLiteral("server"));
    }
    void listen(RunNotification::Server kind)
    {
        notification.emplace(
            model(), *desktop, bus.connection(QStringLiteral("program")),
            RunNotification::Windows{[this] { return isInFront; },
                                     [this](const QString &token) { activated.append(token); }},
            kind);
    }
    void run()
    {
        model().stamp();
        EXPECT_TRUE(waitUntil([this] { return !model().isRunning(); }));
    }

    tests::SessionBus bus;
    bool isInFront = false;
    QStringList activated;
    std::optional<RunNotification> notification;
};

} // namespace

TEST_F(RunNotificationTest, ARunThatEndsUnseenIsToldWithoutNames)
{
    tests::FakeNotifications notifications;
    ASSERT_TRUE(notifications.takePlaceOn(server()));
    listen(RunNotification::Server::session);
    run();
    ASSERT_TRUE(waitUntil([&] { return notifications.shown.size() == 1; }));
    const auto &shown = notifications.shown.front();
    EXPECT_EQ(shown.title, QStringLiteral("Tallyfold"));
    EXPECT_EQ(shown.text.toStdString(), "Production written: 1 stamped copy (2 pages).");
    EXPECT_EQ(shown.actions, QStringList({QStringLiteral("default"), QStringLiteral("Tallyfold"),
                                          QStringLiteral("show"), QStringLiteral("Show in File Manager")}));
    EXPECT_EQ(shown.hints.value(QStringLiteral("desktop-entry")),
              QStringLiteral("example.tallyfold.Tallyfold"));
}

TEST_F(RunNotificationTest, ItsActionsShowTheFolderAndTheWindow)
{
    tests::FakeNotifications notifications;
    ASSERT_TRUE(notifications.takePlaceOn(server()));
    listen(RunNotification::Server::session);
    run();
    ASSERT_TRUE(waitUntil([&] { return notifications.shown.size() == 1; }));
    QTest::qWait(50);                                // The answer with its number.
    notifications.choose(2, QStringLiteral("show")); // Of another program.
    notifications.choose(1, QStringLiteral("show"));
    ASSERT_TRUE(waitUntil([this] { return !desktop->revealed.empty(); }));
    EXPECT_EQ(desktop->revealed, std::vector{output});
    EXPECT_TRUE(activated.isEmpty());
    notifications.choose(1, QStringLiteral("default"));
    EXPECT_TRUE(waitUntil([this] { return activated == QStringList(QStringLiteral("token")); }));
}

TEST_F(RunNotificationTest, InFrontTheWindowTellsItself)
{
    tests::FakeNotifications notifications;
    ASSERT_TRUE(notifications.takePlaceOn(server()));
    listen(RunNotification::Server::session);
    isInFront = true;
    run();
    QTest::qWait(100);
    EXPECT_TRUE(notifications.shown.empty());
}

TEST_F(RunNotificationTest, AFailureIsToldWithoutAFolderToShow)
{
    restart([](const ProductionPlan &, const std::filesystem::path &, const ProductionOptions &,
               const Production::OnPage &) -> ProductionResult {
        throw FileError{QStringLiteral("private name.pdf"), std::make_error_code(std::errc::io_error)};
    });
    addPdfs({"private name.pdf"});
    model().setOutputFolder(output);
    tests::FakeNotifications notifications;
    ASSERT_TRUE(notifications.takePlaceOn(server()));
    listen(RunNotification::Server::session);
    run();
    ASSERT_TRUE(waitUntil([&] { return notifications.shown.size() == 1; }));
    EXPECT_EQ(notifications.shown.front().text, QStringLiteral("The production couldn’t be written."));
    EXPECT_EQ(notifications.shown.front().actions.size(), 2);
}

TEST_F(RunNotificationTest, OutOfASandboxThePortalTells)
{
    tests::FakeNotificationPortal portal;
    ASSERT_TRUE(portal.takePlaceOn(server()));
    listen(RunNotification::Server::portal);
    run();
    ASSERT_TRUE(waitUntil([&] { return !portal.shown.isEmpty(); }));
    EXPECT_EQ(portal.shown.value(QStringLiteral("body")).toString().toStdString(),
              "Production written: 1 stamped copy (2 pages).");
    const auto buttons =
        qdbus_cast<QList<QVariantMap>>(portal.shown.value(QStringLiteral("buttons")).value<QDBusArgument>());
    ASSERT_EQ(buttons.size(), 1);
    EXPECT_EQ(buttons.front().value(QStringLiteral("label")), QStringLiteral("Show in File Manager"));
    portal.choose(buttons.front().value(QStringLiteral("action")).toString());
    EXPECT_TRUE(waitUntil([this] { return desktop->revealed == std::vector{output}; }));
}

TEST_F(RunNotificationTest, WithoutAServerARunEndsAllTheSame)
{
    listen(RunNotification::Server::session);
    run();
    EXPECT_TRUE(std::filesystem::exists(output / "private name.pdf"));
}

} // namespace tallyfold
