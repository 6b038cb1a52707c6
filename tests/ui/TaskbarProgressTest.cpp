#include "ui/desktop/TaskbarProgress.h"

#include "tests/ui/HeldWriter.h"
#include "tests/ui/SessionBus.h"
#include "tests/ui/WindowFixture.h"

#include <QDBusMessage>

#include <optional>

namespace tallyfold {

namespace {

/// A taskbar that notes what programs tell it.
class Taskbar final : public QObject {
    Q_OBJECT
public:
    explicit Taskbar(QDBusConnection bus)
    {
        EXPECT_TRUE(bus.connect(QString(), QString(), QStringLiteral("com.canonical.Unity.LauncherEntry"),
                                QStringLiteral("Update"), this, SLOT(hear(QString, QVariantMap))));
    }

    QString entry;
    std::vector<QVariantMap> told;

    [[nodiscard]] bool isShown() const
    {
        return !told.empty() && told.back().value(QStringLiteral("progress-visible")).toBool();
    }
    [[nodiscard]] double progress() const
    {
        return told.empty() ? -1 : told.back().value(QStringLiteral("progress")).toDouble();
    }

private Q_SLOTS:
    void hear(const QString &uri, const QVariantMap &state)
    {
        entry = uri;
        told.push_back(state);
    }
};

using TaskbarProgressTest = tests::WindowFixture;

} // namespace

TEST_F(TaskbarProgressTest, ARunIsFollowedFromItsStartToItsEnd)
{
    const tests::SessionBus bus;
    ASSERT_TRUE(bus.isRunning());
    tests::Gate gate;
    restart(tests::writerHeldAt(gate));
    {
        const Taskbar taskbar(bus.connection(QStringLiteral("taskbar")));
        const TaskbarProgress progress(model(), app->environment().plan,
                                       bus.connection(QStringLiteral("program")));
        addPdfs({"a.pdf"}, 20);
        model().setOutputFolder(output);
        model().stamp();
        gate.awaitArrival();
        EXPECT_TRUE(waitUntil([&] { return taskbar.isShown() && taskbar.progress() == 0.25; }));
        EXPECT_EQ(taskbar.entry, QStringLiteral("application://example.tallyfold.Tallyfold.desktop"));
        gate.open();
        EXPECT_TRUE(waitUntil([this] { return !model().isRunning(); }));
        EXPECT_TRUE(waitUntil([&] { return !taskbar.isShown(); }));
    }
    QDBusConnection::disconnectFromBus(QStringLiteral("taskbar"));
    QDBusConnection::disconnectFromBus(QStringLiteral("program"));
}

} // namespace tallyfold

#include "TaskbarProgressTest.moc"
