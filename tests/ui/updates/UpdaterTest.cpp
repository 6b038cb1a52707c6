#include "ui/updates/Updater.h"

#include "tests/support/Waiting.h"
#include "tests/ui/updates/FeedServer.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <optional>
#include <vector>

namespace tallyfold {

using tests::FeedServer;
using tests::feedWith;
using tests::release;
using tests::waitUntil;
using Reason = UpdateCheckFailed::Reason;

namespace {

const QString path = QStringLiteral("/feed.xml");
const QDateTime start(QDate(2024, 5, 6), QTime(7, 8, 9), Qt::UTC);

NewerVersion newer(const QString &version)
{
    return {version, QStringLiteral("What is new in ") + version,
            QUrl(QStringLiteral("https://example.org/") + version)};
}

class UpdaterOfAProgram : public testing::Test {
protected:
    UpdaterOfAProgram()
    {
        useFeed(server.url(path));
    }

    /// Starts anew with a version 1.2 that looks for newer ones at `feed`.
    void useFeed(const QUrl &feed)
    {
        UpdaterOptions options;
        options.transport = Transport::alsoPlainLocal;
        options.settingsPath = settingsPath();
        options.now = [this] { return now; };
        updater = std::make_unique<Updater>(
            FeedSettings{feed, AppVersion::parse(u"1.2").value_or(AppVersion())}, options);
        QObject::connect(updater.get(), &Updater::checkingChanged, updater.get(),
                         [this] { checking.push_back(updater->isChecking()); });
        QObject::connect(updater.get(), &Updater::finished, updater.get(),
                         [this](const UpdateOutcome &outcome) {
                             EXPECT_FALSE(updater->isChecking());
                             outcomes.push_back(outcome);
                         });
        QObject::connect(updater.get(), &Updater::newerFound, updater.get(),
                         [this](const NewerVersion &version) { found.push_back(version); });
    }

    [[nodiscard]] QString settingsPath() const
    {
        return folder.filePath(QStringLiteral("settings.ini"));
    }

    /// When the program last checked by itself, as its settings file says; not valid for never.
    [[nodiscard]] QDateTime lastCheck() const
    {
        const UserSettings settings(settingsPath());
        return QDateTime::fromString(settings.value(QStringLiteral("lastUpdateCheck")).toString(),
                                     Qt::ISODate);
    }

    void setLastCheck(const QString &text)
    {
        UserSettings settings(settingsPath());
        settings.setValue(QStringLiteral("lastUpdateCheck"), text);
    }

    /// What comes of a check that the user starts.
    UpdateOutcome outcomeOfCheck()
    {
        outcomes.clear();
        updater->checkForUpdates();
        EXPECT_TRUE(outcomes.empty());
        EXPECT_TRUE(waitUntil([this] { return !outcomes.empty(); }));
        return outcomes.empty() ? UpdateOutcome() : outcomes.front();
    }

    /// Lets the program check by itself, if it wants to, and gives how often the server was asked so far.
    qsizetype requestsAfterQuietCheck()
    {
        updater->checkQuietlyIfDue();
        EXPECT_TRUE(waitUntil([this] { return !updater->isCheckingQuietly(); }));
        return server.requests().size();
    }

    QTemporaryDir folder;
    FeedServer server;
    QDateTime now = start;
    std::vector<bool> checking; ///< What the property was at each change of it.
    std::vector<UpdateOutcome> outcomes;
    std::vector<NewerVersion> found;
    std::unique_ptr<Updater> updater;
};

} // namespace

TEST_F(UpdaterOfAProgram, TheSameVersionIsUpToDate)
{
    server.serve(path, feedWith(release("1.2")));
    EXPECT_EQ(outcomeOfCheck(), UpdateOutcome(UpToDate{}));
}

TEST_F(UpdaterOfAProgram, AnOlderVersionIsUpToDate)
{
    server.serve(path, feedWith(release("1.1")));
    EXPECT_EQ(outcomeOfCheck(), UpdateOutcome(UpToDate{}));
}

TEST_F(UpdaterOfAProgram, TheNewestOfSeveralIsTold)
{
    server.serve(path, feedWith(release("1.3") + release("1.10") + release("1.1")));
    EXPECT_EQ(outcomeOfCheck(), UpdateOutcome(newer(QStringLiteral("1.10"))));
    EXPECT_TRUE(found.empty());
}

TEST_F(UpdaterOfAProgram, FailuresAreTold)
{
    server.serve(path, "garbage");
    EXPECT_EQ(outcomeOfCheck(), UpdateOutcome(UpdateCheckFailed{Reason::badFeed}));
    server.answer(path, "HTTP/1.1 404 Not Found\r\nConnection: close\r\nContent-Length: 0\r\n\r\n");
    EXPECT_EQ(outcomeOfCheck(), UpdateOutcome(UpdateCheckFailed{Reason::serverError}));
    server.stop();
    EXPECT_EQ(outcomeOfCheck(), UpdateOutcome(UpdateCheckFailed{Reason::noConnection}));
}

TEST_F(UpdaterOfAProgram, CheckingIsToldWhileItLasts)
{
    server.serve(path, feedWith(release("1.2")));
    EXPECT_FALSE(updater->isChecking());
    updater->checkForUpdates();
    EXPECT_TRUE(updater->isChecking());
    EXPECT_TRUE(updater->property("checking").toBool());
    ASSERT_TRUE(waitUntil([this] { return !outcomes.empty(); }));
    EXPECT_EQ(checking, (std::vector<bool>{true, false}));
}

TEST_F(UpdaterOfAProgram, ASecondCheckMeanwhileDoesNothing)
{
    server.serve(path, feedWith(release("1.2")));
    updater->checkForUpdates();
    updater->checkForUpdates();
    updater->checkQuietlyIfDue();
    ASSERT_TRUE(waitUntil([this] { return !updater->isChecking(); }));
    EXPECT_EQ(outcomes.size(), 1U);
    EXPECT_EQ(checking, (std::vector<bool>{true, false}));
    EXPECT_EQ(server.requests().size(), 1);
    EXPECT_FALSE(lastCheck().isValid());
}

TEST_F(UpdaterOfAProgram, WithoutAFeedThereIsNoneToAsk)
{
    useFeed(QUrl());
    updater->checkQuietlyIfDue();
    EXPECT_FALSE(lastCheck().isValid());
    EXPECT_EQ(outcomeOfCheck(), UpdateOutcome(UpdateCheckFailed{Reason::noFeed}));
    EXPECT_EQ(checking, (std::vector<bool>{true, false}));
    EXPECT_TRUE(found.empty());
}

TEST_F(UpdaterOfAProgram, AQuietCheckTellsOfSomethingNewer)
{
    server.serve(path, feedWith(release("2.0")));
    EXPECT_EQ(requestsAfterQuietCheck(), 1);
    EXPECT_EQ(found, std::vector<NewerVersion>{newer(QStringLiteral("2.0"))});
    EXPECT_TRUE(outcomes.empty());
    EXPECT_TRUE(checking.empty());
}

TEST_F(UpdaterOfAProgram, AQuietCheckIsSilentOtherwise)
{
    for (const QByteArray &body : {feedWith(release("1.2")), QByteArray("garbage")}) {
        server.serve(path, body);
        setLastCheck({});
        requestsAfterQuietCheck();
    }
    server.stop();
    setLastCheck({});
    EXPECT_EQ(requestsAfterQuietCheck(), 2);
    EXPECT_TRUE(found.empty());
    EXPECT_TRUE(outcomes.empty());
    EXPECT_TRUE(checking.empty());
}

TEST_F(UpdaterOfAProgram, QuietChecksAreMadeOnceADay)
{
    server.serve(path, feedWith(release("1.2")));
    EXPECT_EQ(requestsAfterQuietCheck(), 1);
    EXPECT_EQ(lastCheck(), start);
    EXPECT_EQ(requestsAfterQuietCheck(), 1);
    now = start.addSecs(86'399);
    EXPECT_EQ(requestsAfterQuietCheck(), 1);
    EXPECT_EQ(lastCheck(), start);
    useFeed(server.url(path));
    EXPECT_EQ(requestsAfterQuietCheck(), 1);
    now = start.addSecs(86'400);
    EXPECT_EQ(requestsAfterQuietCheck(), 2);
    EXPECT_EQ(lastCheck(), now);
}

TEST_F(UpdaterOfAProgram, AFailedQuietCheckIsNotRepeatedEither)
{
    server.serve(path, "garbage");
    EXPECT_EQ(requestsAfterQuietCheck(), 1);
    EXPECT_EQ(requestsAfterQuietCheck(), 1);
}

TEST_F(UpdaterOfAProgram, AClockThatWasAheadDoesNotEndQuietChecks)
{
    server.serve(path, feedWith(release("1.2")));
    setLastCheck(start.addYears(50).toString(Qt::ISODate));
    EXPECT_EQ(requestsAfterQuietCheck(), 1);
    EXPECT_EQ(lastCheck(), start);
    EXPECT_EQ(requestsAfterQuietCheck(), 1);
}

TEST_F(UpdaterOfAProgram, ATimeThatCannotBeReadWasNever)
{
    server.serve(path, feedWith(release("1.2")));
    setLastCheck(QStringLiteral("soon"));
    EXPECT_EQ(requestsAfterQuietCheck(), 1);
    EXPECT_EQ(lastCheck(), start);
}

TEST_F(UpdaterOfAProgram, TheUsersChecksAreNotHeldUpByQuietOnes)
{
    server.serve(path, feedWith(release("1.2")));
    EXPECT_EQ(requestsAfterQuietCheck(), 1);
    EXPECT_EQ(outcomeOfCheck(), UpdateOutcome(UpToDate{}));
    EXPECT_EQ(server.requests().size(), 2);
}

TEST_F(UpdaterOfAProgram, AQuietCheckUnderWayBecomesTheUsers)
{
    server.serve(path, feedWith(release("2.0")));
    updater->checkQuietlyIfDue();
    EXPECT_TRUE(updater->isCheckingQuietly());
    EXPECT_EQ(outcomeOfCheck(), UpdateOutcome(newer(QStringLiteral("2.0"))));
    EXPECT_EQ(checking, (std::vector<bool>{true, false}));
    EXPECT_TRUE(found.empty());
    EXPECT_EQ(server.requests().size(), 1);
}

TEST(FeedSettings, TheProgramKnowsItsOwnVersion)
{
    EXPECT_GT(FeedSettings::ours().current, AppVersion());
}

} // namespace tallyfold
