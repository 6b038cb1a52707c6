#include "core/check/CsvReader.h"

#include "core/CSV.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace tallyfold {

using namespace Qt::StringLiterals;

namespace {

std::vector<QStringList> rowsOf(QByteArrayView bytes)
{
    std::vector<QStringList> rows;
    auto reader = CSV::Reader::of(bytes);
    while (auto row = reader ? reader->next() : std::nullopt) {
        rows.push_back(std::move(*row));
    }
    return rows;
}

using Rows = std::vector<QStringList>;

} // namespace

TEST(CsvReader, ReadsWhatIsWritten)
{
    const Rows rows{{u"File"_s, u"Copy, stamped"_s, u""_s},
                    {u"a \"b\".pdf"_s, u"line\nbreak"_s, u"=1+1"_s},
                    {u"'quoted'"_s, u"-5"_s, u"\u00e9\U0001F4C4"_s}};
    EXPECT_EQ(rowsOf(CSV::text(rows).toUtf8()), rows);
}

TEST(CsvReader, ReadsAnyTableThatIsWritten)
{
    std::mt19937 random(20);
    const QString alphabet = u"ab\",\n\r=+-@\t' ;"_s;
    for (int attempt = 0; attempt < 2000; ++attempt) {
        Rows rows(1 + random() % 3);
        for (QStringList &row : rows) {
            for (int column = 0; column < 3; ++column) {
                QString field;
                for (auto length = random() % 5; length > 0; --length) {
                    field.append(alphabet[static_cast<qsizetype>(random() % 14)]);
                }
                // An apostrophe before a formula is written as it is, and taken for the guard.
                // A CR LF pair is not quoted.
                row.append(CSV::withoutGuard(field.replace(u"\r\n"_s, u"\n"_s)));
            }
        }
        rows.front() = {u"a"_s, u"b"_s, u"c"_s}; // Which tells what separates.
        const QString text = CSV::text(rows);
        ASSERT_EQ(rowsOf(text.toUtf8()), rows) << text.toStdString();
    }
}

TEST(CsvReader, TakesWhatSpreadsheetsMakeOfATable)
{
    const Rows rows{{u"File"_s, u"Pages"_s}, {u"a;b,c.pdf"_s, u"3"_s}};
    EXPECT_EQ(rowsOf("\xEF\xBB\xBF"
                     "File,Pages\r\n\"a;b,c.pdf\",3\r\n"),
              rows);
    EXPECT_EQ(rowsOf("File,Pages\n\"a;b,c.pdf\",3\n"), rows);
    EXPECT_EQ(rowsOf("File,Pages\r\"a;b,c.pdf\",3\r"), rows);
    EXPECT_EQ(rowsOf("File,Pages\n\"a;b,c.pdf\",3"), rows);
    EXPECT_EQ(rowsOf("\"File\",\"Pages\"\n\"a;b,c.pdf\",\"3\"\n"), rows);
    EXPECT_EQ(rowsOf("File;Pages\r\n\"a;b,c.pdf\";3\r\n"), rows);
    EXPECT_EQ(rowsOf("File\tPages\r\na;b,c.pdf\t3\r\n"), rows);
    EXPECT_EQ(rowsOf("sep=;\r\nFile;Pages\r\n\"a;b,c.pdf\";3\r\n"), rows);
}

TEST(CsvReader, CountsRowsAsASpreadsheetDoes)
{
    auto reader = CSV::Reader::of("a\n\"b\nb\"\n\nc\n");
    ASSERT_TRUE(reader);
    EXPECT_EQ(reader->next(), QStringList{u"a"_s});
    EXPECT_EQ(reader->row(), 1);
    EXPECT_EQ(reader->next(), QStringList{u"b\nb"_s});
    EXPECT_EQ(reader->row(), 2);
    EXPECT_EQ(reader->next(), QStringList{QString()});
    EXPECT_EQ(reader->next(), QStringList{u"c"_s});
    EXPECT_EQ(reader->row(), 4);
    EXPECT_EQ(reader->next(), std::nullopt);
}

TEST(CsvReader, ReadsNoBytesThatAreNoText)
{
    EXPECT_FALSE(CSV::Reader::of("File\n\xC4.pdf\n"));
}

TEST(CsvReader, TakesQuotesThatNeverCloseAsTheyStand)
{
    EXPECT_EQ(rowsOf("a,\"b\nc"), (Rows{{u"a"_s, u"b\nc"_s}}));
    EXPECT_EQ(rowsOf("\"a\"b,c"), (Rows{{u"ab"_s, u"c"_s}}));
}

TEST(CsvReader, TakesOnlyAGuardAway)
{
    EXPECT_EQ(CSV::withoutGuard(u"'=1"_s), u"=1"_s);
    EXPECT_EQ(CSV::withoutGuard(u"'a"_s), u"'a"_s);
    EXPECT_EQ(CSV::withoutGuard(u"'"_s), u"'"_s);
    EXPECT_EQ(CSV::withoutGuard(u"''=1"_s), u"''=1"_s);
}

} // namespace tallyfold
