#include "ui/updates/FeedClient.h"

#include "tests/support/Waiting.h"
#include "tests/ui/updates/FeedServer.h"

#include <gtest/gtest.h>

#include <optional>

namespace tallyfold {

using tests::FeedServer;
using tests::waitUntil;
using Reason = UpdateCheckFailed::Reason;

namespace {

const QString path = QStringLiteral("/feed.xml");

FeedAnswer failure(Reason reason)
{
    return UpdateCheckFailed{reason};
}

/// What comes of fetching `url`.
FeedAnswer fetched(const QUrl &url, const FeedLimits &limits = {},
                   Transport transport = Transport::alsoPlainLocal)
{
    std::optional<FeedAnswer> answer;
    int times = 0;
    QObject parent;
    fetchFeed({url, QStringLiteral("1.2"), transport, limits}, parent, [&](const FeedAnswer &told) {
        answer = told;
        ++times;
    });
    EXPECT_FALSE(answer);
    EXPECT_TRUE(waitUntil([&] { return parent.children().isEmpty(); }));
    EXPECT_EQ(times, 1);
    return answer.value_or(FeedAnswer());
}

} // namespace

TEST(FeedClient, AFeedIsFetched)
{
    FeedServer server;
    server.serve(path, "feed");
    EXPECT_EQ(fetched(server.url(path)), FeedAnswer("feed"));
}

TEST(FeedClient, ServersLearnTheVersionAndNoMore)
{
    FeedServer server;
    server.answer(path, "HTTP/1.1 200 OK\r\nConnection: close\r\nSet-Cookie: a=b; Path=/\r\n"
                        "Cache-Control: max-age=3600\r\nContent-Length: 4\r\n\r\nfeed");
    fetched(server.url(path));
    fetched(server.url(path));
    ASSERT_EQ(server.requests().size(), 2);
    for (const QString &request : server.requests()) {
        EXPECT_TRUE(request.contains(QStringLiteral("\r\nUser-Agent: Tallyfold/1.2\r\n")))
            << request.toStdString();
        EXPECT_FALSE(request.contains(QStringLiteral("cookie"), Qt::CaseInsensitive))
            << request.toStdString();
    }
}

TEST(FeedClient, UnencryptedAddressesAreNotAsked)
{
    FeedServer server;
    server.serve(path, "feed");
    EXPECT_EQ(fetched(server.url(path), {}, Transport::httpsOnly), failure(Reason::noFeed));
    for (const char *text : {"", "http://example.org/", "http://127.0.0.1.example.org/", "http://localhost/",
                             "http://192.168.0.1/", "ftp://127.0.0.1/", "https:///a", "file:///etc/hostname",
                             "data:text/xml,a", "feed.xml"}) {
        EXPECT_EQ(fetched(QUrl(QString::fromUtf8(text))), failure(Reason::noFeed)) << text;
    }
    EXPECT_TRUE(server.requests().isEmpty());
}

TEST(FeedClient, AFewRedirectsAreFollowed)
{
    FeedServer server;
    server.redirect(path, "/1");
    server.redirect(QStringLiteral("/1"), server.url(QStringLiteral("/2")).toEncoded());
    server.redirect(QStringLiteral("/2"), "3");
    server.serve(QStringLiteral("/3"), "feed");
    EXPECT_EQ(fetched(server.url(path)), FeedAnswer("feed"));
    EXPECT_EQ(server.requests().size(), 4);
}

TEST(FeedClient, ManyRedirectsAreRefused)
{
    FeedServer server;
    server.redirect(path, path.toLatin1());
    EXPECT_EQ(fetched(server.url(path)), failure(Reason::refusedRedirect));
    EXPECT_EQ(server.requests().size(), 4);
}

TEST(FeedClient, RedirectsToWhereWeMayNotAskAreRefused)
{
    FeedServer server;
    for (const QByteArray &target :
         {QByteArray("http://example.org/feed.xml"), QByteArray("file:///etc/hostname"),
          QByteArray("http://localhost/"), QByteArray("ftp://127.0.0.1/")}) {
        server.redirect(path, target);
        EXPECT_EQ(fetched(server.url(path)), failure(Reason::refusedRedirect)) << target.toStdString();
    }
}

TEST(FeedClient, ARedirectToNowhereIsRefused)
{
    FeedServer server;
    server.answer(path, "HTTP/1.1 302 Found\r\nConnection: close\r\nContent-Length: 0\r\n\r\n");
    EXPECT_EQ(fetched(server.url(path)), failure(Reason::refusedRedirect));
}

TEST(FeedClient, AFeedMayBeAsLargeAsTheLimitButNoLarger)
{
    FeedServer server;
    const QByteArray body(FeedLimits().bytes, 'x');
    server.serve(path, body);
    EXPECT_EQ(fetched(server.url(path)), FeedAnswer(body));
    server.serve(path, body + 'x');
    EXPECT_EQ(fetched(server.url(path)), failure(Reason::tooLarge));
}

TEST(FeedClient, ALargeFeedIsRefusedWhateverItsHeadersSay)
{
    FeedServer server;
    server.answer(path, "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n" + QByteArray(3'000'000, 'x'));
    EXPECT_EQ(fetched(server.url(path)), failure(Reason::tooLarge));
}

TEST(FeedClient, WhatIsPackedIsNotUnpacked)
{
    FeedServer server;
    const QByteArray packed = QByteArray::fromHex("1f8b0800000000000203cb48cdc9c9070086a6103605000000");
    server.answer(path, "HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Encoding: gzip\r\nContent-Length: " +
                            QByteArray::number(packed.size()) + "\r\n\r\n" + packed);
    EXPECT_EQ(fetched(server.url(path)), FeedAnswer(packed));
}

TEST(FeedClient, AServerThatNeverAnswersIsLeft)
{
    FeedServer server;
    const FeedLimits limits{std::chrono::milliseconds(100)};
    EXPECT_EQ(fetched(server.url(path), limits), failure(Reason::tooSlow));
}

TEST(FeedClient, AServerThatStopsInTheMiddleIsLeft)
{
    FeedServer server;
    server.stall(path, "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nfeed");
    const FeedLimits limits{std::chrono::milliseconds(100)};
    EXPECT_EQ(fetched(server.url(path), limits), failure(Reason::tooSlow));
}

TEST(FeedClient, AFeedThatBreaksOffIsNone)
{
    FeedServer server;
    server.answer(path, "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nfeed");
    EXPECT_EQ(fetched(server.url(path)), failure(Reason::noConnection));
}

TEST(FeedClient, WhereNobodyListensThereIsNoConnection)
{
    FeedServer server;
    server.stop();
    EXPECT_EQ(fetched(server.url(path)), failure(Reason::noConnection));
}

TEST(FeedClient, OtherAnswersAreErrorsOfTheServer)
{
    FeedServer server;
    for (const QByteArray &status : {QByteArray("404 Not Found"), QByteArray("500 Internal Server Error"),
                                     QByteArray("401 Unauthorized\r\nWWW-Authenticate: Basic realm=\"a\""),
                                     QByteArray("204 No Content"), QByteArray("304 Not Modified")}) {
        server.answer(path, "HTTP/1.1 " + status + "\r\nConnection: close\r\nContent-Length: 0\r\n\r\n");
        EXPECT_EQ(fetched(server.url(path)), failure(Reason::serverError)) << status.toStdString();
    }
}

TEST(FeedClient, WhoeverAsksMayGoAtAnyTime)
{
    FeedServer server;
    server.serve(path, "feed");
    bool isTold = false;
    auto parent = std::make_unique<QObject>();
    fetchFeed({server.url(QStringLiteral("/silent")), QStringLiteral("1.2"), Transport::alsoPlainLocal, {}},
              *parent, [&](const FeedAnswer &) { isTold = true; });
    ASSERT_TRUE(waitUntil([&server] { return server.requests().size() == 1; }));
    parent.reset();
    EXPECT_FALSE(isTold);

    parent = std::make_unique<QObject>();
    fetchFeed({server.url(path), QStringLiteral("1.2"), Transport::alsoPlainLocal, {}}, *parent,
              [&](const FeedAnswer &) { parent.release()->deleteLater(); });
    EXPECT_TRUE(waitUntil([&parent] { return parent == nullptr; }));
}

} // namespace tallyfold
