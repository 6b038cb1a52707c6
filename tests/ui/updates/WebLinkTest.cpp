#include "ui/updates/WebLink.h"

#include <gtest/gtest.h>

namespace tallyfold {

TEST(WebLink, HttpsAddressesAreTaken)
{
    EXPECT_EQ(webLinkOf(u" https://example.org/a?b=c#d\n"),
              QUrl(QStringLiteral("https://example.org/a?b=c#d")));
    EXPECT_FALSE(webLinkOf(u"HTTPS://example.org").isEmpty());
}

TEST(WebLink, OthersAreDropped)
{
    for (const char *text :
         {"", "http://example.org", "file:///etc/passwd", "javascript:alert(1)", "example.org",
          "//example.org", "https:", "https:///a", "https://", "https://you@example.org/", "https://a b/",
          "mailto:a@example.org", "https://exa mple.org/%"}) {
        EXPECT_TRUE(webLinkOf(QString::fromUtf8(text)).isEmpty()) << text;
    }
}

} // namespace tallyfold
