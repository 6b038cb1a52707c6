#include "app/UriList.h"

#include <gtest/gtest.h>

namespace tallyfold {

namespace {

using Paths = std::vector<std::filesystem::path>;

} // namespace

TEST(UriList, NamesLocalFilesInItsOrder)
{
    EXPECT_EQ(localPathsIn("file:///b.pdf\r\nfile:///a%20b.pdf\r\n"), (Paths{"/b.pdf", "/a b.pdf"}));
}

TEST(UriList, LinesMayEndInALineFeedAlone)
{
    EXPECT_EQ(localPathsIn("file:///a.pdf\nfile:///b.pdf"), (Paths{"/a.pdf", "/b.pdf"}));
}

TEST(UriList, CommentsAndEmptyLinesArePassedOver)
{
    EXPECT_EQ(localPathsIn("# file:///x.pdf\r\n\r\nfile:///a.pdf\r\n"), Paths{"/a.pdf"});
}

TEST(UriList, ThisMachineMayBeNamedAndTheSchemeSpelledAnyWay)
{
    EXPECT_EQ(localPathsIn("FILE://localhost/a.pdf\nfile:/b.pdf"), (Paths{"/a.pdf", "/b.pdf"}));
}

TEST(UriList, OtherMachinesAndSchemesArePassedOver)
{
    EXPECT_TRUE(
        localPathsIn("file://server/a.pdf\nhttps://example.org/a.pdf\nsmb://s/a.pdf\na.pdf\n").empty());
}

TEST(UriList, PathsThatAreNotAbsoluteOrHoldNoNameArePassedOver)
{
    EXPECT_TRUE(localPathsIn("file:\nfile://\nfile:a.pdf\nfile:///a%00.pdf").empty());
}

TEST(UriList, BytesThatAreNoTextComeThrough)
{
    EXPECT_EQ(localPathsIn("file:///a%FF%0A%22.pdf"), Paths{"/a\xff\n\".pdf"});
}

TEST(UriList, APercentSignThatEncodesNothingIsOne)
{
    EXPECT_EQ(localPathsIn("file:///100%.pdf"), Paths{"/100%.pdf"});
}

TEST(UriList, EveryNameComesBackFromItsUri)
{
    Paths paths;
    for (int byte = 1; byte < 256; ++byte) {
        if (byte != '/') {
            paths.emplace_back(std::string("/folder/a") + static_cast<char>(byte) + "z.pdf");
        }
    }
    EXPECT_EQ(localPathsIn(uriListOf(paths)), paths);
}

TEST(UriList, AUriHasNothingButPlainCharacters)
{
    EXPECT_EQ(fileUri("/a b/ä#?.pdf"), QByteArray("file:///a%20b/%C3%A4%23%3F.pdf"));
}

TEST(UriList, APercentSignWithoutTwoDigitsIsOne)
{
    for (const char *path : {"/100%", "/a%4", "/a%4zb", "/a%z4b", "/a%zz", "/a%G1", "/a%1G"}) {
        EXPECT_EQ(localPathsIn(QByteArray("file://") + path), Paths{path}) << path;
    }
    EXPECT_EQ(localPathsIn("file:///%41%4a%4A%7e"), Paths{"/AJJ~"});
}

} // namespace tallyfold
