#include "ui/updates/Transport.h"

#include <gtest/gtest.h>

namespace tallyfold {

namespace {

QUrl url(const char *text)
{
    return QUrl(QString::fromUtf8(text));
}

} // namespace

TEST(Transport, OnlyHttpsMayBeAsked)
{
    EXPECT_TRUE(mayAsk(url("https://example.org/feed.xml"), Transport::httpsOnly));
    for (const char *text :
         {"", "http://example.org/", "http://127.0.0.1/", "ftp://example.org/", "https:///a",
          "file:///etc/passwd", "data:text/xml,a", "feed.xml", "qrc:/feed.xml"}) {
        EXPECT_FALSE(mayAsk(url(text), Transport::httpsOnly)) << text;
    }
}

TEST(Transport, PlainHttpMayBeAskedOfThisComputerInTests)
{
    EXPECT_TRUE(mayAsk(url("https://example.org/"), Transport::alsoPlainLocal));
    EXPECT_TRUE(mayAsk(url("http://127.0.0.1:8080/"), Transport::alsoPlainLocal));
    EXPECT_TRUE(mayAsk(url("http://[::1]/"), Transport::alsoPlainLocal));
    for (const char *text : {"http://example.org/", "http://127.0.0.1.example.org/", "http://localhost/",
                             "http://192.168.0.1/", "ftp://127.0.0.1/", "file:///etc/passwd"}) {
        EXPECT_FALSE(mayAsk(url(text), Transport::alsoPlainLocal)) << text;
    }
}

TEST(Transport, RedirectsLeadOnlyToWhereWeMayAsk)
{
    const QUrl from = url("https://example.org/a/feed.xml");
    EXPECT_EQ(nextHop(from, url("https://example.net/b"), Transport::httpsOnly),
              url("https://example.net/b"));
    EXPECT_EQ(nextHop(from, url("other.xml"), Transport::httpsOnly), url("https://example.org/a/other.xml"));
    EXPECT_EQ(nextHop(from, url("//example.net/"), Transport::httpsOnly), url("https://example.net/"));
    for (const char *text : {"", "http://example.org/", "http://example.org/a/feed.xml", "http://127.0.0.1/",
                             "file:///etc/passwd", "data:text/xml,a"}) {
        EXPECT_EQ(nextHop(from, url(text), Transport::httpsOnly), std::nullopt) << text;
    }
}

} // namespace tallyfold
