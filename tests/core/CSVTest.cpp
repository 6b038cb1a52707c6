#include "core/CSV.h"

#include <gtest/gtest.h>

#include <vector>

namespace tallyfold {

TEST(CSV, PlainFieldsAreWrittenAsTheyAre)
{
    EXPECT_EQ(CSV::cell(QStringLiteral("Report 1.pdf")), QStringLiteral("Report 1.pdf"));
    EXPECT_EQ(CSV::cell({}), QString());
}

TEST(CSV, FormulasGetAnApostrophe)
{
    for (const char *field : {"=1", "+1", "-1", "@x", "\tx"}) {
        const QString text = QString::fromLatin1(field);
        EXPECT_EQ(CSV::cell(text), u'\'' + text) << field;
    }
    EXPECT_EQ(CSV::cell(QStringLiteral("a=1")), QStringLiteral("a=1"));
}

TEST(CSV, TheGuardComesBeforeTheQuotes)
{
    EXPECT_EQ(CSV::cell(QStringLiteral("=a,b")), QStringLiteral("\"'=a,b\""));
    EXPECT_EQ(CSV::cell(QStringLiteral("\rx")), QStringLiteral("\"'\rx\""));
}

TEST(CSV, CommasQuotesAndLineEndsAreQuoted)
{
    EXPECT_EQ(CSV::cell(QStringLiteral("a,b")), QStringLiteral("\"a,b\""));
    EXPECT_EQ(CSV::cell(QStringLiteral("a\"b")), QStringLiteral("\"a\"\"b\""));
    EXPECT_EQ(CSV::cell(QStringLiteral("a\nb")), QStringLiteral("\"a\nb\""));
    EXPECT_EQ(CSV::cell(QStringLiteral("a\rb")), QStringLiteral("\"a\rb\""));
}

TEST(CSV, ACrLfPairIsOneCharacterThatNeedsNoQuotes)
{
    EXPECT_EQ(CSV::cell(QStringLiteral("a\r\nb")), QStringLiteral("a\r\nb"));
    EXPECT_EQ(CSV::cell(QStringLiteral("a\r\n")), QStringLiteral("a\r\n"));
    EXPECT_EQ(CSV::cell(QStringLiteral("a\r")), QStringLiteral("\"a\r\""));
    EXPECT_EQ(CSV::cell(QStringLiteral("\r\nb")), QStringLiteral("\r\nb"));
    EXPECT_EQ(CSV::cell(QStringLiteral("a\n\r\nb")), QStringLiteral("\"a\n\r\nb\""));
    EXPECT_EQ(CSV::cell(QStringLiteral("a\r\r\nb")), QStringLiteral("\"a\r\r\nb\""));
}

TEST(CSV, EveryRowEndsWithCrLf)
{
    const std::vector<QStringList> rows{{QStringLiteral("a"), QString(), QStringLiteral("b")},
                                        {QStringLiteral("c")}};
    EXPECT_EQ(CSV::text(rows), QStringLiteral("a,,b\r\nc\r\n"));
    EXPECT_EQ(CSV::text({}), QStringLiteral("\r\n"));
}

} // namespace tallyfold
