#include "ui/updates/Appcast.h"

#include "tests/ui/updates/FeedServer.h"

#include <gtest/gtest.h>

namespace tallyfold {

using tests::feedWith;
using tests::release;

namespace {

std::vector<AppcastItem> itemsIn(const QByteArray &bytes)
{
    const auto items = parseAppcast(bytes);
    EXPECT_TRUE(items);
    return items.value_or(std::vector<AppcastItem>());
}

AppcastItem itemIn(const QByteArray &content)
{
    const std::vector<AppcastItem> items = itemsIn(feedWith("<item>" + content + "</item>"));
    EXPECT_EQ(items.size(), 1U);
    return items.empty() ? AppcastItem() : items.front();
}

} // namespace

TEST(Appcast, EverythingAnItemTellsIsRead)
{
    const AppcastItem item =
        itemIn("<title> Version\n 1.2 </title><sparkle:version> 42 </sparkle:version>"
               "<sparkle:shortVersionString>1.2</sparkle:shortVersionString><sparkle:os>linux</sparkle:os>"
               "<link>https://example.org/1.2</link>"
               "<description><![CDATA[<!DOCTYPE html><p>Faster &amp; "
               "<b>better</b></p><ul><li>a</li></ul>]]></description>"
               "<pubDate>Mon, 05 Oct 2015 19:20:11 +0000</pubDate>");
    EXPECT_EQ(item, (AppcastItem{
                        AppVersion::parse(u"1.2"), QUrl(QStringLiteral("https://example.org/1.2")),
                        QStringLiteral("<!DOCTYPE html><p>Faster &amp; <b>better</b></p><ul><li>a</li></ul>"),
                        QStringLiteral("linux")}));
}

TEST(Appcast, AnEnclosureTellsWhatElementsDoNot)
{
    const QByteArray enclosure = "<enclosure url='https://example.org/a.zip' sparkle:version='42' "
                                 "sparkle:shortVersionString='1.2' sparkle:os='linux' length='1'/>"
                                 "<enclosure url='https://example.org/b.zip' sparkle:version='43'/>";
    EXPECT_EQ(itemIn(enclosure), (AppcastItem{AppVersion::parse(u"1.2"),
                                              QUrl(QStringLiteral("https://example.org/a.zip")),
                                              {},
                                              QStringLiteral("linux")}));
    EXPECT_EQ(itemIn(enclosure + "<sparkle:shortVersionString>1.3</sparkle:shortVersionString>"
                                 "<link>https://example.org/</link>"),
              (AppcastItem{AppVersion::parse(u"1.3"),
                           QUrl(QStringLiteral("https://example.org/")),
                           {},
                           QStringLiteral("linux")}));
}

TEST(Appcast, ItemsStayInOrderAndApart)
{
    const std::vector<AppcastItem> items = itemsIn(feedWith(release("1.0") + "<item/>" + release("2.0")));
    ASSERT_EQ(items.size(), 3U);
    EXPECT_EQ(items[0].version, AppVersion::parse(u"1.0"));
    EXPECT_EQ(items[1], AppcastItem());
    EXPECT_EQ(items[2].version, AppVersion::parse(u"2.0"));
    EXPECT_TRUE(itemsIn(feedWith({})).empty());
}

TEST(Appcast, TheNamespaceCountsAndNotItsPrefix)
{
    const QByteArray start = "<rss><channel><item><a:version xmlns:a='";
    const QByteArray end = "'>7</a:version></item></channel></rss>";
    EXPECT_EQ(itemsIn(start + "http://www.andymatuschak.org/xml-namespaces/sparkle" + end).front().version,
              AppVersion::parse(u"7"));
    EXPECT_EQ(itemsIn(start + "http://example.org/" + end).front().version, std::nullopt);
}

TEST(Appcast, ReleasesOfAChannelAreLeftOut)
{
    EXPECT_TRUE(itemsIn(feedWith("<item><sparkle:channel>beta</sparkle:channel></item>")).empty());
}

TEST(Appcast, OnlyTheFirstElementOfANameCounts)
{
    EXPECT_EQ(itemIn("<description>one</description><description xml:lang='de'>eins</description>").notes,
              QStringLiteral("one"));
}

TEST(Appcast, TextInFurtherElementsBelongsToIt)
{
    EXPECT_EQ(itemIn("<description>one <b>two</b> three</description>").notes,
              QStringLiteral("one two three"));
    EXPECT_EQ(itemIn("<other><description>no</description></other>").notes, QString());
}

TEST(Appcast, LinksThatAreNotHttpsAreDropped)
{
    EXPECT_TRUE(itemIn("<link>http://example.org/</link>").link.isEmpty());
    EXPECT_TRUE(
        itemIn("<link>file:///etc/passwd</link><enclosure url='ftp://example.org/'/>").link.isEmpty());
    EXPECT_EQ(itemIn("<link>http://example.org/</link><enclosure url='https://example.org/'/>").link,
              QUrl(QStringLiteral("https://example.org/")));
}

TEST(Appcast, AByteOrderMarkDoesNoHarm)
{
    EXPECT_EQ(itemsIn("\xEF\xBB\xBF" + feedWith(release("1"))).size(), 1U);
}

TEST(Appcast, BytesThatAreNoXmlAreMalformed)
{
    const QByteArray feed = feedWith(release("1.2"));
    for (const QByteArray &bytes :
         {QByteArray(), QByteArray("garbage"), QByteArray("\0\0\0\0", 4), QByteArray("\xFF\xFE<\0r\0", 6),
          QByteArray("<rss><channel>"), QByteArray("<rss><channel></rss></channel>"),
          QByteArray("<rss><channel>&bomb;</channel></rss>"), QByteArray("<rss><channel a='1' a='2'/></rss>"),
          QByteArray("<rss><channel>\xC3\x28</channel></rss>"), feed + "more", feed + feed,
          feed.chopped(8)}) {
        EXPECT_FALSE(parseAppcast(bytes)) << bytes.toStdString();
    }
}

TEST(Appcast, NoPieceOfAFeedIsMoreThanAFault)
{
    const QByteArray feed = feedWith(release("1.2") + "<item><enclosure url='https://example.org/'/></item>");
    for (qsizetype length = 0; length < feed.trimmed().size(); ++length) {
        EXPECT_FALSE(parseAppcast(feed.first(length))) << length;
    }
}

TEST(Appcast, OtherXmlIsNoAppcast)
{
    EXPECT_FALSE(parseAppcast("<feed/>"));
    EXPECT_FALSE(parseAppcast("<html><body/></html>"));
    EXPECT_FALSE(parseAppcast("<rss/>"));
    EXPECT_FALSE(parseAppcast("<rss xmlns='http://example.org/'><channel/></rss>"));
}

TEST(Appcast, ADocumentTypeIsRefused)
{
    EXPECT_FALSE(parseAppcast("<!DOCTYPE rss>" + feedWith({})));
    EXPECT_FALSE(parseAppcast(
        "<!DOCTYPE rss [<!ENTITY a 'aaaa'><!ENTITY b '&a;&a;'>]><rss><channel>&b;</channel></rss>"));
    EXPECT_FALSE(parseAppcast("<!DOCTYPE rss SYSTEM 'file:///etc/passwd'><rss><channel/></rss>"));
}

TEST(Appcast, DeepNestingIsRefused)
{
    const auto nested = [](int depth) {
        return feedWith("<item>" + QByteArray("<a>").repeated(depth) + QByteArray("</a>").repeated(depth) +
                        "</item>");
    };
    constexpr int around = 3; // The feed, its channel, the item.
    EXPECT_EQ(itemsIn(nested(maxAppcastDepth - around)).size(), 1U);
    EXPECT_FALSE(parseAppcast(nested(maxAppcastDepth - around + 1)));
    EXPECT_FALSE(parseAppcast(nested(100'000)));
}

TEST(Appcast, ManyItemsAreRefused)
{
    const auto items = [](std::size_t count) {
        return feedWith(release("1").repeated(static_cast<qsizetype>(count)));
    };
    EXPECT_EQ(itemsIn(items(maxAppcastItems)).size(), maxAppcastItems);
    EXPECT_FALSE(parseAppcast(items(maxAppcastItems + 1)));
}

TEST(Appcast, LongNotesAreCut)
{
    const auto item = [](const QByteArray &name, qsizetype length) {
        return feedWith("<item><" + name + ">" + QByteArray(length, 'x') + "</" + name + "></item>");
    };
    EXPECT_EQ(itemsIn(item("other", 500'000)).size(), 1U);
    EXPECT_EQ(itemsIn(item("description", 500'000)).front().notes.size(), maxAppcastNotes);
}

TEST(Appcast, OnlyAddressesForABrowserAreLinks)
{
    EXPECT_EQ(itemIn("<link> https://example.org/a?b=c#d\n</link>").link,
              QUrl(QStringLiteral("https://example.org/a?b=c#d")));
    EXPECT_FALSE(itemIn("<link>HTTPS://example.org</link>").link.isEmpty());
    for (const char *text :
         {"", "http://example.org", "file:///etc/passwd", "javascript:alert(1)", "example.org",
          "//example.org", "https:", "https:///a", "https://", "https://you@example.org/", "https://a b/",
          "mailto:a@example.org", "https://exa mple.org/%"}) {
        EXPECT_TRUE(itemIn("<link>" + QByteArray(text) + "</link>").link.isEmpty()) << text;
    }
}

} // namespace tallyfold
