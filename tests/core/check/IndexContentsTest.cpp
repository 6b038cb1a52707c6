#include "core/check/IndexContents.h"

#include <gtest/gtest.h>

namespace tallyfold::check {

using namespace Qt::StringLiterals;

namespace {

constexpr const char *header = "File,Stamped Copy,First Bates,Last Bates,Pages,Status\r\n";

IndexContents contentsOf(const QByteArray &rows)
{
    return IndexContents::of(header + rows);
}

} // namespace

TEST(IndexContents, AreTheCopiesThatItNames)
{
    const IndexContents contents = contentsOf("a.pdf,a.pdf,ABC000001,ABC000003,3,stamped\r\n"
                                              "b.pdf,,,,0,\"skipped: no pages\"\r\n"
                                              "c.pdf,c.pdf,ABC000004,ABC000005,3,stamped\r\n"
                                              "d.pdf,d.pdf,ABC000006,ABC000006,1,"
                                              "\"copied: cover page only, number not shown\"\r\n");
    ASSERT_EQ(contents.copies.size(), 3);
    EXPECT_TRUE(contents.rowsNotUnderstood.empty());
    EXPECT_EQ(contents.copies[0].row, 2);
    EXPECT_EQ(contents.copies[0].numbers.firstPage, 1);
    EXPECT_FALSE(contents.copies[0].isCoverOnly);
    EXPECT_EQ(contents.copies[1].row, 4);
    EXPECT_EQ(contents.copies[1].name, u"c.pdf"_s);
    EXPECT_EQ(contents.copies[1].numbers.firstPage, 2);
    EXPECT_TRUE(contents.copies[2].isCoverOnly);
}

TEST(IndexContents, TellOfRowsThatAreNotUnderstood)
{
    const IndexContents contents = contentsOf("a,a.pdf,ABC1,ABC3,2,stamped\r\n"
                                              "a,a.pdf,ABC1,ABC3,three,stamped\r\n"
                                              "a,a.pdf,,,3,stamped\r\n"
                                              "a,a.pdf,ABC1,ABC3,3,stamped,more\r\n"
                                              "a,a.pdf,ABC1\r\n");
    EXPECT_TRUE(contents.copies.empty());
    EXPECT_EQ(contents.rowsNotUnderstood, (std::vector<std::int64_t>{2, 3, 4, 5, 6}));
}

TEST(IndexContents, LeadOutOfTheFolderNowhere)
{
    const IndexContents contents = contentsOf("a,../a.pdf,ABC1,ABC1,1,stamped\r\n"
                                              "a,/etc/a.pdf,ABC1,ABC1,1,stamped\r\n"
                                              "a,..,ABC1,ABC1,1,stamped\r\n");
    EXPECT_TRUE(contents.copies.empty());
    EXPECT_EQ(contents.rowsNotUnderstood.size(), 3);
}

TEST(IndexContents, TakeMoreAndFewerColumnsWhereTheyAreEmpty)
{
    const IndexContents contents = contentsOf("b.pdf\r\n\r\n,,,,,,,\r\na,a.pdf,ABC1,ABC1,1,stamped,,\r\n");
    EXPECT_EQ(contents.copies.size(), 1);
    EXPECT_TRUE(contents.rowsNotUnderstood.empty());
}

TEST(IndexContents, NeedTheHeader)
{
    for (const char *bytes : {"", "a,a.pdf,ABC1,ABC1,1,stamped\r\n", "\xFF\xFE"}) {
        const IndexContents contents = IndexContents::of(bytes);
        EXPECT_TRUE(contents.copies.empty());
        EXPECT_EQ(contents.rowsNotUnderstood, std::vector<std::int64_t>{1}) << bytes;
    }
    EXPECT_EQ(
        IndexContents::of("\"FILE\";\"stamped copy\";\"First Bates\";\"Last Bates\";\"Pages\";\"Status\"\n"
                          "a;a.pdf;ABC1;ABC1;1;stamped\n")
            .copies.size(),
        1);
}

} // namespace tallyfold::check
