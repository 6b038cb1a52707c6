#include "ui/desktop/SystemDesktop.h"

#include "tests/support/TemporaryFolder.h"
#include "tests/support/Waiting.h"
#include "tests/ui/FakeServices.h"
#include "tests/ui/SessionBus.h"

#include <gtest/gtest.h>

#include <fstream>

namespace tallyfold {

namespace {

using tests::FakeFileManager;

/// What opens nothing, but notes it.
class Revealing : public testing::Test {
protected:
    Revealing()
    {
        EXPECT_TRUE(bus.isRunning());
    }
    ~Revealing() override
    {
        QDBusConnection::disconnectFromBus(QStringLiteral("manager"));
        QDBusConnection::disconnectFromBus(QStringLiteral("program"));
    }

    SystemDesktop desktopOn(const QDBusConnection &connection)
    {
        return {connection, [this](const QUrl &url) { opened.push_back(url.toEncoded()); }};
    }
    SystemDesktop desktop()
    {
        return desktopOn(bus.connection(QStringLiteral("program")));
    }
    [[nodiscard]] bool hasFileManager()
    {
        return manager.takePlaceOn(bus.connection(QStringLiteral("manager")));
    }
    /// A file of that name in the folder, and the name of its folder as a URI.
    std::filesystem::path file(const std::string &name)
    {
        std::filesystem::create_directories((folder / name).parent_path());
        std::ofstream(folder / name) << "content";
        return folder / name;
    }
    [[nodiscard]] QByteArray uriOf(const char *encoded) const
    {
        return "file://" + QByteArray::fromStdString(folder.path().native()) + encoded;
    }
    QStringList shown(const char *encoded)
    {
        return {QString::fromLatin1(uriOf(encoded))};
    }

    tests::TemporaryFolder folder;
    tests::SessionBus bus;
    FakeFileManager manager;
    QList<QByteArray> opened;
};

} // namespace

TEST_F(Revealing, TheFileManagerShowsTheItem)
{
    ASSERT_TRUE(hasFileManager());
    SystemDesktop program = desktop();
    program.reveal(file("a b#c?d%20é.pdf"));
    EXPECT_TRUE(tests::waitUntil([&] { return !manager.shown.isEmpty(); }));
    EXPECT_EQ(manager.shown, shown("/a%20b%23c%3Fd%2520%C3%A9.pdf"));
    // The second answer comes after the first.
    program.reveal(folder / "other");
    EXPECT_TRUE(tests::waitUntil([&] { return manager.shown.size() == 2; }));
    EXPECT_TRUE(opened.isEmpty());
}

TEST_F(Revealing, ANameIsBytes)
{
    ASSERT_TRUE(hasFileManager());
    SystemDesktop program = desktop();
    program.reveal(file("\xff\xfe\n.pdf"));
    EXPECT_TRUE(tests::waitUntil([&] { return !manager.shown.isEmpty(); }));
    EXPECT_EQ(manager.shown, shown("/%FF%FE%0A.pdf"));
}

TEST_F(Revealing, WithoutAFileManagerTheFolderIsOpened)
{
    SystemDesktop program = desktop();
    program.reveal(file("deep er/a.pdf"));
    EXPECT_TRUE(tests::waitUntil([&] { return !opened.isEmpty(); }));
    EXPECT_EQ(opened, QList({uriOf("/deep%20er")}));
}

TEST_F(Revealing, AFolderWithoutAFileManagerIsOpenedItself)
{
    SystemDesktop program = desktop();
    file("\xff deeper/a.pdf");
    program.reveal(folder / "\xff deeper");
    EXPECT_TRUE(tests::waitUntil([&] { return !opened.isEmpty(); }));
    EXPECT_EQ(opened, QList({uriOf("/%FF%20deeper")}));
}

TEST_F(Revealing, AFileManagerThatRefusesLeavesTheFolder)
{
    ASSERT_TRUE(hasFileManager());
    manager.answer = FakeFileManager::Answer::error;
    SystemDesktop program = desktop();
    program.reveal(file("deeper/a.pdf"));
    EXPECT_TRUE(tests::waitUntil([&] { return !opened.isEmpty(); }));
    EXPECT_EQ(opened, QList({uriOf("/deeper")}));
    EXPECT_EQ(manager.shown, shown("/deeper/a.pdf"));
}

TEST_F(Revealing, AFileManagerThatHangsLeavesTheFolder)
{
    ASSERT_TRUE(hasFileManager());
    manager.answer = FakeFileManager::Answer::none;
    SystemDesktop program = desktop();
    program.reveal(file("deeper/a.pdf"));
    EXPECT_TRUE(tests::waitUntil([&] { return !opened.isEmpty(); }));
    EXPECT_EQ(opened, QList({uriOf("/deeper")}));
}

TEST_F(Revealing, WithoutABusTheFolderIsOpenedAtOnce)
{
    SystemDesktop program = desktopOn(QDBusConnection(QStringLiteral("none")));
    program.reveal(file("deeper/a.pdf"));
    EXPECT_EQ(opened, QList({uriOf("/deeper")}));
}

TEST_F(Revealing, PagesAndMessagesGoToTheirPrograms)
{
    SystemDesktop program = desktop();
    program.open(QUrl(QStringLiteral("mailto:someone@example.org?subject=A%20question")));
    EXPECT_EQ(opened, QList<QByteArray>({"mailto:someone@example.org?subject=A%20question"}));
}

} // namespace tallyfold
