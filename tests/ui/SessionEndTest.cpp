#include "ui/desktop/SessionEnd.h"

#include "tests/app/Gate.h"
#include "tests/ui/WindowFixture.h"
#include "ui/sheets/Alert.h"

#include <QTimer>

namespace tallyfold {

namespace {

/// The application in the middle of a production.
class SessionEndTest : public tests::WindowFixture {
protected:
    SessionEndTest()
    {
        restart([](const ProductionPlan &, const std::filesystem::path &, const ProductionOptions &,
                   const Production::OnPage &onPage) -> ProductionResult {
            while (onPage(1)) {
            }
            throw ProductionError{ProductionError::Cancelled{}};
        });
        addPdfs({"a.pdf"});
        model().setOutputFolder(output);
        model().stamp();
    }
    void answer(const QString &title)
    {
        QTimer::singleShot(0, app.get(), [this, title] { clickTitled(find<Alert>("sessionAlert"), title); });
    }
};

} // namespace

TEST_F(SessionEndTest, TheUserKeepsWriting)
{
    const SessionEnd end(model(), [this] { return app->askToStopForSession(); });
    answer(QStringLiteral("Keep Writing"));
    EXPECT_FALSE(end.mayEnd(true));
    EXPECT_TRUE(model().isRunning());
}

TEST_F(SessionEndTest, TheUserStopsAndTheRunEnds)
{
    const SessionEnd end(model(), [this] { return app->askToStopForSession(); });
    answer(QStringLiteral("Stop and Log Out"));
    EXPECT_TRUE(end.mayEnd(true));
    EXPECT_TRUE(waitUntil([this] { return !model().isRunning(); }));
}

TEST_F(SessionEndTest, NobodyIsAskedWhoMayNotBeOrNeedNotBe)
{
    int asked = 0;
    const SessionEnd end(model(), [&asked] {
        ++asked;
        return false;
    });
    EXPECT_TRUE(end.mayEnd(false));
    EXPECT_TRUE(model().isRunning()) << "the session may go on after all";
    model().cancelRun();
    EXPECT_TRUE(waitUntil([this] { return !model().isRunning(); }));
    EXPECT_TRUE(end.mayEnd(true));
    EXPECT_EQ(asked, 0);
}

} // namespace tallyfold
