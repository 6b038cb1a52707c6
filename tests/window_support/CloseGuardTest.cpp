#include "window_support/CloseGuard.h"

#include <gtest/gtest.h>

namespace tallyfold {

TEST(CloseGuard, LetsAWindowCloseUntilToldOtherwise)
{
    CloseGuard guard;
    QWidget window;
    guard.install(&window);
    EXPECT_EQ(guard.main(), &window);
    window.show();
    EXPECT_TRUE(window.close());
    EXPECT_FALSE(window.isVisible());
}

TEST(CloseGuard, KeepsAWindowOpenThatMayNotClose)
{
    CloseGuard guard;
    int asked = 0;
    guard.shouldClose = [&asked] {
        ++asked;
        return false;
    };
    QWidget window;
    guard.install(&window);
    window.show();
    EXPECT_FALSE(window.close());
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(window.isEnabled());
    EXPECT_EQ(asked, 1);
}

TEST(CloseGuard, InstalledTwiceAsksOnce)
{
    CloseGuard guard;
    int asked = 0;
    guard.shouldClose = [&asked] {
        ++asked;
        return true;
    };
    QWidget window;
    guard.install(&window);
    guard.install(&window);
    window.show();
    EXPECT_TRUE(window.close());
    EXPECT_EQ(asked, 1);
}

TEST(CloseGuard, AWindowThatIsGoneIsForgotten)
{
    CloseGuard guard;
    {
        QWidget window;
        guard.install(&window);
    }
    EXPECT_EQ(guard.main(), nullptr);
}

TEST(CloseGuard, ThereIsOneForTheProgram)
{
    EXPECT_EQ(&CloseGuard::shared(), &CloseGuard::shared());
    EXPECT_TRUE(CloseGuard::shared().shouldClose());
}

} // namespace tallyfold
