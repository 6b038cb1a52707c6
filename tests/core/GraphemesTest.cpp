#include "core/Graphemes.h"

#include <gtest/gtest.h>

namespace tallyfold {

TEST(Graphemes, CharactersAreCountedAsPeopleSeeThem)
{
    EXPECT_EQ(firstGraphemes(QStringLiteral("a\u0301bc"), 2), QStringLiteral("a\u0301b"));
    EXPECT_EQ(firstGraphemes(QStringLiteral("\U0001F1E9\U0001F1EA\U0001F1EB\U0001F1F7"), 1),
              QStringLiteral("\U0001F1E9\U0001F1EA"));
    EXPECT_EQ(firstGraphemes(QStringLiteral("abc"), 5), QStringLiteral("abc"));
    EXPECT_EQ(firstGraphemes(QStringLiteral("abc"), 0), QString());
}

TEST(Graphemes, ATextOfFewerCharactersThanUnitsIsCutByCharacters)
{
    const QString text = QStringLiteral("e\u0301").repeated(3);
    for (const int count : {3, 4, 5, 6, 7}) {
        EXPECT_EQ(firstGraphemes(text, count), text) << count;
    }
    EXPECT_EQ(firstGraphemes(text, 2), QStringLiteral("e\u0301").repeated(2));
    EXPECT_EQ(firstGraphemes(text, -1), QString());
}

TEST(Graphemes, BoundariesIncludeTheEnd)
{
    EXPECT_EQ(graphemeBoundaries(QStringLiteral("ab")), (std::vector<qsizetype>{0, 1, 2}));
    EXPECT_EQ(graphemeBoundaries(QStringLiteral("\r\nx")), (std::vector<qsizetype>{0, 2, 3}));
}

} // namespace tallyfold
