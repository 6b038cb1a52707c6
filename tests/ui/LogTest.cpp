#include "tests/support/HeardLog.h"
#include "tests/support/Waiting.h"
#include "tests/ui/SessionBus.h"
#include "ui/desktop/SystemDesktop.h"

#include <gtest/gtest.h>

namespace tallyfold {

using tests::heard;

namespace {

/// Shows a file where no file manager is on the bus.
void revealWithoutFileManager()
{
    const tests::SessionBus bus;
    ASSERT_TRUE(bus.isRunning());
    int opened = 0;
    {
        SystemDesktop desktop(bus.connection(QStringLiteral("log")), [&opened](const QUrl &) { ++opened; });
        desktop.reveal("/nowhere/secret.pdf");
        EXPECT_TRUE(tests::waitUntil([&] { return opened == 1; }));
    }
    QDBusConnection::disconnectFromBus(QStringLiteral("log"));
}

} // namespace

TEST(UiLog, TellsOfACallThatFailedAndNothingOfTheFile)
{
    EXPECT_EQ(heard(QStringLiteral("tallyfold.ui=true"), revealWithoutFileManager),
              QStringList(QStringLiteral("tallyfold.ui: showing a file in the file manager failed: "
                                         "org.freedesktop.DBus.Error.ServiceUnknown")));
}

TEST(UiLog, IsQuietUnlessAsked)
{
    EXPECT_EQ(heard(tests::nothingAsked, revealWithoutFileManager), QStringList());
}

} // namespace tallyfold
