#include "ui/updates/Judgement.h"

#include "tests/ui/updates/FeedServer.h"

#include <gtest/gtest.h>

namespace tallyfold {

using tests::feedWith;
using tests::release;

namespace {

UpdateOutcome judged(const QByteArray &items)
{
    return judge(feedWith(items), AppVersion::parse(u"1.2").value_or(AppVersion()));
}

UpdateOutcome newer(const QString &version)
{
    return NewerVersion{version, QStringLiteral("What is new in ") + version,
                        QUrl(QStringLiteral("https://example.org/") + version)};
}

QByteArray releaseFor(const QByteArray &os, const QByteArray &version)
{
    return release(version).replace("</item>", "<sparkle:os>" + os + "</sparkle:os></item>");
}

const UpdateOutcome badFeed = UpdateCheckFailed{UpdateCheckFailed::Reason::badFeed};

} // namespace

TEST(Judgement, TheSameAndOlderVersionsAreUpToDate)
{
    EXPECT_EQ(judged(release("1.2")), UpdateOutcome(UpToDate{}));
    EXPECT_EQ(judged(release("1.2.0")), UpdateOutcome(UpToDate{}));
    EXPECT_EQ(judged(release("1.1.9")), UpdateOutcome(UpToDate{}));
    EXPECT_EQ(judged(release("1.2-beta2")), UpdateOutcome(UpToDate{}));
}

TEST(Judgement, TheNewestCountsWhereverItStands)
{
    EXPECT_EQ(judged(release("1.2.1")), newer(QStringLiteral("1.2.1")));
    EXPECT_EQ(judged(release("1.9") + release("1.10") + release("1.3") + release("1.10-rc1")),
              newer(QStringLiteral("1.10")));
    EXPECT_EQ(judged(release("unknown") + release("1.3")), newer(QStringLiteral("1.3")));
}

TEST(Judgement, WhatUsersCallAVersionIsCompared)
{
    EXPECT_EQ(judged("<item><sparkle:version>4711</sparkle:version>"
                     "<sparkle:shortVersionString>1.2</sparkle:shortVersionString></item>"),
              UpdateOutcome(UpToDate{}));
    EXPECT_EQ(judged("<item><sparkle:version>1.3</sparkle:version>"
                     "<sparkle:shortVersionString>One Three</sparkle:shortVersionString></item>"),
              UpdateOutcome(NewerVersion{QStringLiteral("1.3"), {}, {}}));
}

#ifdef Q_OS_LINUX
TEST(Judgement, ReleasesForOtherSystemsDoNotCount)
{
    EXPECT_EQ(judged(releaseFor("macos", "3.0")), UpdateOutcome(UpToDate{}));
    EXPECT_EQ(judged(releaseFor("windows", "3.0") + releaseFor("Linux", "2.0")),
              newer(QStringLiteral("2.0")));
}
#endif

TEST(Judgement, AFeedWithoutReleasesIsUpToDate)
{
    EXPECT_EQ(judged({}), UpdateOutcome(UpToDate{}));
}

TEST(Judgement, WhatCannotBeReadIsABadFeed)
{
    EXPECT_EQ(judged("<item/>"), badFeed);
    EXPECT_EQ(judged(release("unknown")), badFeed);
    EXPECT_EQ(judge("garbage", AppVersion()), badFeed);
}

} // namespace tallyfold
