#include "tests/ui/WindowFixture.h"

#include <QTimer>

namespace tallyfold {

namespace {

/// The program as the session starts it when something is asked of it.
class StartedByTheSession : public tests::WindowFixture {
protected:
    StartedByTheSession()
    {
        makeApp();
    }
    ~StartedByTheSession() override
    {
        qunsetenv("XDG_ACTIVATION_TOKEN");
    }

    static int windowCount()
    {
        int count = 0;
        for (const QWidget *window : QApplication::topLevelWidgets()) {
            count += window->isVisible() ? 1 : 0;
        }
        return count;
    }
};

constexpr std::chrono::minutes patience{1};

} // namespace

TEST_F(StartedByTheSession, OpensItsWindowWhenItIsAskedToAndNotTwice)
{
    app->awaitRequest(patience);
    QCoreApplication::processEvents();
    EXPECT_EQ(windowCount(), 0);
    app->reopen({});
    EXPECT_EQ(windowCount(), 1);
    EXPECT_TRUE(app->mainView().isVisible());
    app->reopen({});
    EXPECT_EQ(windowCount(), 1);
}

TEST_F(StartedByTheSession, OpensItsWindowWithTheFilesItIsHanded)
{
    app->awaitRequest(patience);
    app->reopen({pdf("a.pdf")});
    EXPECT_TRUE(app->mainView().isVisible());
    EXPECT_TRUE(waitUntil([this] { return listed() == "a.pdf"; }));
    EXPECT_EQ(windowCount(), 1);
}

TEST_F(StartedByTheSession, GreetsAFirstLaunch)
{
    AppSettings settings = model().settings();
    settings.onboardingDone = false;
    model().setSettings(settings);
    app->awaitRequest(patience);
    EXPECT_EQ(model().sheet(), std::nullopt);
    app->reopen({});
    EXPECT_EQ(model().sheet(), Sheet::welcome);
}

TEST_F(StartedByTheSession, EndsWhenNobodyAsks)
{
    app->awaitRequest(std::chrono::milliseconds(0));
    QTimer::singleShot(patience, app.get(), [] { QCoreApplication::exit(1); });
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_EQ(windowCount(), 0);
}

TEST_F(StartedByTheSession, StaysOnceItWasAsked)
{
    app->setReachable(true);
    app->awaitRequest(std::chrono::milliseconds(0));
    app->reopen({});
    QTimer::singleShot(0, app.get(), [] { QCoreApplication::exit(1); }); // After the other timer.
    EXPECT_EQ(QApplication::exec(), 1);
    EXPECT_TRUE(app->mainView().isVisible());
}

TEST_F(StartedByTheSession, PassesTheTokenToItsWindow)
{
    app->reopen({}, QStringLiteral("let me"));
    EXPECT_EQ(qEnvironmentVariable("XDG_ACTIVATION_TOKEN"), QStringLiteral("let me"));
    app->reopen({}, {});
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
}

} // namespace tallyfold
