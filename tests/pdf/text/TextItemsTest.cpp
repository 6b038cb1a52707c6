#include "pdf/text/TextItems.h"

#include "pdf/text/Graphemes.h"

#include <gtest/gtest.h>

#include <string>

namespace tallyfold::pdf {

namespace {

/// The items of `text`, from left to right, each with its direction.
std::string itemsOf(const QString &text)
{
    std::string items;
    for (const TextItem &item : itemize(text)) {
        items += (item.isRightToLeft ? "<" : ">") + text.sliced(item.start, item.length).toStdString() + "|";
    }
    return items;
}

} // namespace

TEST(TextItems, OneScriptIsOneItem)
{
    EXPECT_EQ(itemsOf(QStringLiteral("CONFIDENTIAL – Smith, 12")), ">CONFIDENTIAL – Smith, 12|");
}

TEST(TextItems, NothingIsOneItemOfNothing)
{
    EXPECT_EQ(itemsOf({}), ">|");
}

TEST(TextItems, ScriptsAreTakenApartAndSignsGoWithThem)
{
    EXPECT_EQ(itemsOf(QStringLiteral("abc где")), ">abc |>где|");
}

TEST(TextItems, ALineThatBeginsFromTheRightRunsFromTheRight)
{
    // The number stands left of the Arabic word it follows.
    EXPECT_EQ(itemsOf(QStringLiteral("سري 12")), ">12|<سري |");
}

TEST(TextItems, WordsFromTheRightInsideALineKeepTheirPlace)
{
    EXPECT_EQ(itemsOf(QStringLiteral("a סוד b")), ">a |<סוד|> b|");
}

TEST(TextItems, ClustersAreWhatUsersCallCharacters)
{
    const QString text = QStringLiteral("e\u0301👨‍👩‍👧x");
    const std::vector<qsizetype> ends = graphemeBoundaries(text, 0, text.size());
    EXPECT_EQ(ends, (std::vector<qsizetype>{0, 2, text.size() - 1, text.size()}));
}

} // namespace tallyfold::pdf
