#include "ui/text/RowText.h"

#include "tests/ui/Plans.h"

#include <gtest/gtest.h>

namespace tallyfold {

using tests::planned;
using tests::source;

namespace {

QStringList linesOf(const RowText &row)
{
    QStringList lines;
    for (const RowLine &line : row.lines) {
        lines.append(line.text);
    }
    return lines;
}

} // namespace

TEST(RowText, AFileShowsItsPagesAndItsNumbers)
{
    const RowText row = rowTextOf(planned(source(QStringLiteral("a.pdf"), 3)), {});
    EXPECT_EQ(row.symbol, RowSymbol::none);
    EXPECT_EQ(row.name, QStringLiteral("a.pdf"));
    EXPECT_EQ(linesOf(row),
              QStringList({QStringLiteral("3 pages"), QStringLiteral("ABC000001 – ABC000003")}));
    EXPECT_EQ(row.spoken(), QStringLiteral("a.pdf, 3 pages, ABC000001 – ABC000003"));
}

TEST(RowText, OnePageHasOneNumber)
{
    EXPECT_EQ(linesOf(rowTextOf(planned(source(QStringLiteral("a.pdf"), 1)), {})),
              QStringList({QStringLiteral("1 page"), QStringLiteral("ABC000001")}));
}

TEST(RowText, AProtectedFileShowsNeitherPagesNorNumbers)
{
    for (const SourceProblem problem : {SourceProblem::locked, SourceProblem::encrypted}) {
        const RowText row = rowTextOf(planned(source(QStringLiteral("a.pdf"), 4, problem)), {});
        EXPECT_EQ(row.symbol, RowSymbol::locked);
        EXPECT_EQ(linesOf(row), QStringList(QStringLiteral("Won’t be stamped: Password-protected")));
        EXPECT_TRUE(row.hasPasswordHelp);
    }
}

TEST(RowText, WhatCannotBeReadIsSkippedWithTheWholeReasonAsHelp)
{
    const RowText row = rowTextOf(planned(source(QStringLiteral("a.pdf"), 0, SourceProblem::unreadable)), {});
    EXPECT_EQ(row.symbol, RowSymbol::problem);
    EXPECT_EQ(linesOf(row), QStringList(QStringLiteral("Skipped: Can’t be read")));
    EXPECT_TRUE(row.lines[0].help.startsWith(QStringLiteral("This file isn’t a PDF")));
    EXPECT_FALSE(row.hasPasswordHelp);
    EXPECT_EQ(linesOf(rowTextOf(planned(source(QStringLiteral("a.pdf"), 0, SourceProblem::empty)), {})),
              QStringList(QStringLiteral("Skipped: No pages")));
}

TEST(RowText, ACoverAloneIsTold)
{
    StampSettings settings;
    settings.cover = CoverOption::skipKeepNumber;
    EXPECT_EQ(linesOf(rowTextOf(planned(source(QStringLiteral("a.pdf"), 1), settings), settings)),
              QStringList({QStringLiteral("1 page"), QStringLiteral("ABC000001"),
                           QStringLiteral("No visible stamp: its only page is the cover")}));
    settings.cover = CoverOption::skipNoNumber;
    const RowText row = rowTextOf(planned(source(QStringLiteral("a.pdf"), 1), settings), settings);
    EXPECT_EQ(linesOf(row),
              QStringList({QStringLiteral("1 page"),
                           QStringLiteral("Left out: its only page is a cover that isn’t counted")}));
    EXPECT_TRUE(row.lines[1].help.endsWith(QStringLiteral("Choose “Stamp every page” to number it.")));
}

TEST(RowText, AnEarlierNumberIsPointedOut)
{
    const RowText row = rowTextOf(
        planned(source(QStringLiteral("a.pdf"), 1, std::nullopt, QStringLiteral("ACME000017"))), {});
    EXPECT_EQ(row.lines.back().text, QStringLiteral("Already numbered? “ACME000017” near the edge"));
    EXPECT_EQ(row.lines.back().kind, RowLine::Kind::earlierNumber);
}

} // namespace tallyfold
